#include "core/uiutil.h"
#include <cctype>

namespace ui {

// Equal bytes are equal in any case, and ASCII characters that differ in more than the case bit are
// never the same letter: only the rest is left to std::tolower (and the locale).
bool equalNoCaseFull(const char* a, const char* b) {
    if (!a || !b) return a == b;
    for (;; ++a, ++b) {
        const unsigned char ca = static_cast<unsigned char>(*a), cb = static_cast<unsigned char>(*b);
        if (ca == cb) {
            if (!ca) return true;
            continue;
        }
        if (!ca || !cb) return false;
        if (ca < 0x80 && cb < 0x80 && (ca | 0x20) != (cb | 0x20)) return false;
        if (std::tolower(ca) != std::tolower(cb)) return false;
    }
}

} // namespace ui
