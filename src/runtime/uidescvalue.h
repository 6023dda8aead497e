// Reading "key = value" lines of descriptions for the dialog classes.
#pragma once

class Parser;

namespace ui {

// Consumes the "=" after a key; without one, logs `...expected: "<expectedForm>"` (the form in green).
bool expectEquals(Parser* parser, const char* expectedForm);

// The name after "=" on the rest of the line; without "=" or without a name, logs as expectEquals and
// returns null.
const char* nameAfterEquals(Parser* parser, const char* expectedForm);

} // namespace ui
