#include "core/uinumber.h"
#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>

namespace ui {

namespace {

bool readMagnitude(const char* s, bool* negative, bool* hex, unsigned long long* magnitude) {
    *negative = *s == '-';
    if (*s == '-' || *s == '+') ++s;
    *hex = s[0] == '0' && (s[1] == 'x' || s[1] == 'X');
    if (*hex) s += 2;
    if (!(*hex ? std::isxdigit(static_cast<unsigned char>(*s))
               : std::isdigit(static_cast<unsigned char>(*s))))
        return false;
    char* end = nullptr;
    errno = 0;
    *magnitude = std::strtoull(s, &end, *hex ? 16 : 10);
    return *end == '\0' && errno != ERANGE;
}

} // namespace

bool parseInt32(const char* s, int* out) {
    bool negative, hex;
    unsigned long long m;
    if (!readMagnitude(s, &negative, &hex, &m)) return false;
    // Unsigned hexadecimal is a 32-bit pattern, so colours like 0xFF0000FF fit an int.
    if (hex && !negative && m <= 0xFFFFFFFFull) {
        *out = static_cast<int>(static_cast<unsigned int>(m));
        return true;
    }
    if (m > 0x80000000ull) return false;
    long long v = negative ? -static_cast<long long>(m) : static_cast<long long>(m);
    if (v > INT_MAX) return false;
    *out = static_cast<int>(v);
    return true;
}

bool parseUInt32(const char* s, unsigned int* out) {
    bool negative, hex;
    unsigned long long m;
    if (!readMagnitude(s, &negative, &hex, &m) || negative || m > UINT_MAX) return false;
    *out = static_cast<unsigned int>(m);
    return true;
}

} // namespace ui
