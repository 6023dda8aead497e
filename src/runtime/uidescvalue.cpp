#include "runtime/uidescvalue.h"
#include "logger.h"
#include "parser.h"

namespace ui {

namespace {

void logExpected(const char* expectedForm) {
    Logger::log(2, "...expected: \"^C00FF00%s^c\"\f", expectedForm);
}

} // namespace

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

} // namespace ui
