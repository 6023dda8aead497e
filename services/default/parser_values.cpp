// The "key = value" readers of the tokenizer and the number forms they accept.
#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <type_traits>
#include "core/uiutil.h"
#include "logger.h"
#include "parser.h"

namespace {

// Decimal, or hexadecimal after "0x"; an optional sign in front. The whole token must be the number.
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

bool parseFloat32(const char* s, float* out) {
    char* end = nullptr;
    float v = std::strtof(s, &end);
    if (end == s || *end != '\0' || !std::isfinite(v)) return false;
    *out = v;
    return true;
}

bool parseBoolean(const char* s, bool* out) {
    static const char* const kTrue[] = {"true", "1", "yes", "on"};
    static const char* const kFalse[] = {"false", "0", "no", "off"};
    for (int i = 0; i < 4; ++i) {
        if (ui::equalNoCase(s, kTrue[i]) || ui::equalNoCase(s, kFalse[i])) {
            *out = ui::equalNoCase(s, kTrue[i]);
            return true;
        }
    }
    return false;
}

// Reads "= a" (or "= a b" for a pair). Values are stored only when all of them parse; otherwise one error
// names the key, the line and the expected form, and the values keep what they held.
template <class T, class Parse>
bool readParam(Parser& parser, const char* key, const char* name, const char* form, Parse parse, T* a,
               typename std::common_type<T>::type* b, bool pair) {
    if (!ui::equalNoCase(key, name)) return false;
    T values[2] = {};
    bool ok = parser.GetEqualsToken();
    for (int i = 0; ok && i < (pair ? 2 : 1); ++i) {
        const char* token = parser.GetToken(" ");
        ok = token && parse(token, &values[i]);
    }
    if (!ok) {
        Logger::log(2, "...line %d: expected: ^C00FF00%s = %s^c\f", parser.GetLineNumber(), key, form);
        return true;
    }
    if (a) *a = values[0];
    if (b) *b = values[1];
    return true;
}

} // namespace

bool Parser::ParamEqualsInt32(const char* key, const char* name, int* value) {
    return readParam(*this, key, name, "INT", parseInt32, value, nullptr, false);
}

bool Parser::ParamEqualsUInt32(const char* key, const char* name, unsigned int* value) {
    return readParam(*this, key, name, "UNSIGNED", parseUInt32, value, nullptr, false);
}

bool Parser::ParamEqualsFloat32(const char* key, const char* name, float* value) {
    return readParam(*this, key, name, "FLOAT", parseFloat32, value, nullptr, false);
}

bool Parser::ParamEqualsBoolean(const char* key, const char* name, bool* value) {
    return readParam(*this, key, name, "BOOLEAN", parseBoolean, value, nullptr, false);
}

bool Parser::ParamEqualsInt32_2(const char* key, const char* name, int* a, int* b) {
    return readParam(*this, key, name, "INT INT", parseInt32, a, b, true);
}

bool Parser::ParamEqualsFloat32_2(const char* key, const char* name, float* a, float* b) {
    return readParam(*this, key, name, "FLOAT FLOAT", parseFloat32, a, b, true);
}
