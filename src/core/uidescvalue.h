// Reading "key = value" lines of descriptions: the checks that the keys of every widget class share.
#pragma once

class Parser;

namespace ui {

// Consumes the "=" after a key; without one, logs `...expected: "<expectedForm>"` (the form in green).
bool expectEquals(Parser* parser, const char* expectedForm);

// The word after "=" on the rest of the line; without "=" or without a word, logs as expectEquals and
// returns null.
const char* nameAfterEquals(Parser* parser, const char* expectedForm);

// A value read from key `name`, brought within [low, high] with a warning naming the line when it was
// beyond.
int inRange(const Parser* parser, const char* name, int value, int low, int high);

// A position or size read from key `name`, brought within the coordinate range, so that no sum of widget
// offsets leaves the int range.
int coordInRange(const Parser* parser, const char* name, int value);

// A position or size key (ParamEqualsInt32) whose value goes through coordInRange.
bool coordParam(Parser* parser, const char* key, const char* name, int* value);

// Logs `...expected: "<expectedForm>"` for a key whose value is missing or malformed; unquoted, as
// uiWidget::_parseError has it, `...expected: <expectedForm>`.
void logExpected(const char* expectedForm, bool quoted = true);

} // namespace ui
