#include "core/uiutil.h"
#include <cctype>

namespace ui {

bool equalNoCase(const char* a, const char* b) {
    if (!a || !b) return a == b;
    for (; *a && *b; ++a, ++b)
        if (std::tolower(static_cast<unsigned char>(*a)) != std::tolower(static_cast<unsigned char>(*b)))
            return false;
    return *a == *b;
}

} // namespace ui
