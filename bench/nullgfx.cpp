#include "nullgfx.h"

namespace bench {

void NullGfx::getFontDimensions(int, int* widths, int* height) {
    for (int i = 0; i < 256; ++i)
        widths[i] = 8;
    *height = 16;
}

bool NullGfx::getCharDimensions(int, int, unsigned int, int* w, int* h) {
    *w = 8;
    *h = 16;
    return true;
}

void NullGfx::getTextRect(int, unsigned int, int x, int y, const unsigned int*, int* x1, int* y1, int* x2,
                          int* y2) {
    *x1 = x;
    *y1 = y;
    *x2 = x;
    *y2 = y + 16;
}

} // namespace bench
