#include "core/uidescvalue.h"
#include "core/uinumeric.h"
#include "logger.h"
#include "parser.h"

namespace ui {

void logExpected(const char* expectedForm, bool quoted) {
    const char* quote = quoted ? "\"" : "";
    Logger::log(Logger::kError, "...expected: %s^C00FF00%s^c%s\f", quote, expectedForm, quote);
}

bool expectEquals(Parser* parser, const char* expectedForm) {
    if (parser->GetEqualsToken()) return true;
    logExpected(expectedForm);
    return false;
}

const char* nameAfterEquals(Parser* parser, const char* expectedForm) {
    if (!expectEquals(parser, expectedForm)) return nullptr;
    const char* value = parser->GetToken(" ");
    if (!value) logExpected(expectedForm);
    return value;
}

int inRange(const Parser* parser, const char* name, int value, int low, int high) {
    const int kept = value < low ? low : value > high ? high : value;
    if (kept != value)
        Logger::log(Logger::kWarning, "...line %d: %s = %d is out of range, %d used\f",
                    parser->GetLineNumber(), name, value, kept);
    return kept;
}

int coordInRange(const Parser* parser, const char* name, int value) {
    return inRange(parser, name, value, -kCoordLimit, kCoordLimit);
}

bool coordParam(Parser* parser, const char* key, const char* name, int* value) {
    if (!parser->ParamEqualsInt32(key, name, value)) return false;
    *value = coordInRange(parser, name, *value);
    return true;
}

} // namespace ui
