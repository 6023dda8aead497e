// Decoding of 8-bit texts into 32-bit character codes by their lead bytes alone (nothing is validated).
#pragma once
#include <cstddef>

namespace ui {

// Decodes until the terminating 0 or until `capacity - 1` codes are written; the output always ends
// with a 0 entry and the rest of the array is zero-filled.
void decodeUtf8(const unsigned char* text, unsigned int* out, std::size_t capacity);

} // namespace ui
