#include "text/uipaddedtext.h"
#include "core/uinumeric.h"
#include "gfxsubsystem.h"

namespace ui {
namespace {

int charWidth(int font, unsigned int code) {
    int w = 0, h = 0;
    if (!g_gfx || !g_gfx->getCharDimensions(font, 0, code, &w, &h)) return 0;
    return w;
}

int length(const unsigned int* text) {
    int n = 0;
    while (text[n])
        ++n;
    return n;
}

PaddedChar leftPlaced(int font, const unsigned int* text, int padding, int i) {
    const int w = charWidth(font, text[i]);
    const int anchor = clampedProduct(clampedSum(padding, w), i);
    return {text[i], anchor, 0, anchor, clampedSum(anchor, w)};
}

} // namespace

void layoutPaddedText(int font, const unsigned int* text, int padding, unsigned int justify,
                      void (*visit)(const PaddedChar& c, void* context), void* context) {
    const int n = length(text);
    if (justify == 0) {
        for (int i = 0; i < n; ++i)
            visit(leftPlaced(font, text, padding, i), context);
        return;
    }
    if (justify == 1) {
        // Mirrored: the character d places from the end steps by the width of the character at index d.
        for (int d = n - 1; d >= 0; --d) {
            const unsigned int code = text[n - 1 - d];
            const int anchor = clampedProduct(clampedSum(padding, charWidth(font, text[d])), -d);
            visit({code, anchor, 1, clampedDiff(anchor, charWidth(font, code)), anchor}, context);
        }
        return;
    }
    int minLeft = 0, maxRight = 0;
    for (int i = 0; i < n; ++i) {
        const PaddedChar c = leftPlaced(font, text, padding, i);
        if (i == 0 || c.left < minLeft) minLeft = c.left;
        if (i == 0 || c.right > maxRight) maxRight = c.right;
    }
    const long long shift = -(static_cast<long long>(minLeft) + maxRight) / 2;
    for (int i = 0; i < n; ++i) {
        PaddedChar c = leftPlaced(font, text, padding, i);
        c.anchor = clampedSum(c.anchor, shift);
        c.left = clampedSum(c.left, shift);
        c.right = clampedSum(c.right, shift);
        visit(c, context);
    }
}

} // namespace ui
