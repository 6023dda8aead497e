// The one reader of whole numbers in description text: the tokenizer's INT and UNSIGNED values and the
// integer values that widget classes read themselves.
#pragma once

namespace ui {

// Decimal, or hexadecimal after "0x"; an optional sign in front; the whole token must be the number.
// An unsigned hexadecimal number is a 32-bit pattern, so colours like 0xFF0000FF fit an int. False (and
// *out untouched) for anything else or a value beyond the type.
bool parseInt32(const char* token, int* out);
bool parseUInt32(const char* token, unsigned int* out);

} // namespace ui
