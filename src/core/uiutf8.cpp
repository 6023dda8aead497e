#include "core/uiutf8.h"

namespace ui {

void decodeUtf8(const unsigned char* text, unsigned int* out, std::size_t capacity) {
    if (capacity == 0) return;
    std::size_t n = 0;
    while (n + 1 < capacity && *text) {
        const unsigned char lead = *text++;
        unsigned int value;
        int follow;
        if (lead < 0xC0) {
            value = lead & 0x7F;
            follow = 0;
        } else if (lead < 0xE0) {
            value = lead & 0x1F;
            follow = 1;
        } else if (lead < 0xF0) {
            value = lead & 0x0F;
            follow = 2;
        } else if (lead < 0xF8) {
            value = lead & 0x07;
            follow = 3;
        } else if (lead < 0xFC) {
            value = lead & 0x03;
            follow = 4;
        } else {
            value = lead & 0x01;
            follow = 5;
        }
        // A text cut inside a character ends there rather than reading past its terminator.
        for (; follow > 0 && *text; --follow)
            value = (value << 6) + (*text++ & 0x3F);
        out[n++] = value;
    }
    while (n < capacity)
        out[n++] = 0;
}

} // namespace ui
