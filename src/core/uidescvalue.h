// Reading "key = value" lines of descriptions: the checks that the keys of every widget class share.
#pragma once

class Parser;

namespace ui {

// Consumes the "=" after a key; without one, logs `...expected: "<expectedForm>"` (the form in green).
bool expectEquals(Parser* parser, const char* expectedForm);

// The word after "=" on the rest of the line; without "=" or without a word, logs as expectEquals and
// returns null.
const char* nameAfterEquals(Parser* parser, const char* expectedForm);

// Logs `...expected: "<expectedForm>"` for a key whose value is missing or malformed.
void logExpected(const char* expectedForm);

} // namespace ui
