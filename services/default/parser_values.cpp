// The "key = value" readers of the tokenizer and the number forms they accept.
#include <cmath>
#include <cstdlib>
#include <type_traits>
#include "core/uinumber.h"
#include "core/uiutil.h"
#include "logger.h"
#include "parser.h"

namespace {

bool parseFloat32(const char* s, float* out) {
    char* end = nullptr;
    float v = std::strtof(s, &end);
    if (end == s || *end != '\0' || !std::isfinite(v)) return false;
    *out = v;
    return true;
}

// The one grammar of description booleans, the widgets' own: true or false, in any case.
bool parseBoolean(const char* s, bool* out) {
    if (!ui::equalNoCase(s, "true") && !ui::equalNoCase(s, "false")) return false;
    *out = ui::equalNoCase(s, "true");
    return true;
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
        Logger::log(Logger::kError, "...line %d: expected: ^C00FF00%s = %s^c\f", parser.GetLineNumber(), key,
                    form);
        return true;
    }
    if (a) *a = values[0];
    if (b) *b = values[1];
    return true;
}

} // namespace

bool Parser::ParamEqualsInt32(const char* key, const char* name, int* value) {
    return readParam(*this, key, name, "INT", ui::parseInt32, value, nullptr, false);
}

bool Parser::ParamEqualsUInt32(const char* key, const char* name, unsigned int* value) {
    return readParam(*this, key, name, "UNSIGNED", ui::parseUInt32, value, nullptr, false);
}

bool Parser::ParamEqualsFloat32(const char* key, const char* name, float* value) {
    return readParam(*this, key, name, "FLOAT", parseFloat32, value, nullptr, false);
}

bool Parser::ParamEqualsBoolean(const char* key, const char* name, bool* value) {
    return readParam(*this, key, name, "BOOLEAN", parseBoolean, value, nullptr, false);
}

bool Parser::ParamEqualsInt32_2(const char* key, const char* name, int* a, int* b) {
    return readParam(*this, key, name, "INT INT", ui::parseInt32, a, b, true);
}

bool Parser::ParamEqualsFloat32_2(const char* key, const char* name, float* a, float* b) {
    return readParam(*this, key, name, "FLOAT FLOAT", parseFloat32, a, b, true);
}
