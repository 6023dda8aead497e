// Character-by-character layout of a padded text: each character steps by its own width plus the
// padding. Drawing and the text rectangle both follow it, so what is measured is what is drawn.
#pragma once

namespace ui {

// One placed character: the point its one-character text is printed at, the justification that print
// passes, and the character's box, all relative to the text's origin.
struct PaddedChar {
    unsigned int code;
    int anchor;
    unsigned int justify;
    int left, right;
};

// Visits the characters in drawing order. Justify 0 steps to the right from the origin; 1 (right) ends
// at the origin and grows to the left; every other value centres the left-justified layout on the
// origin. A character the font cannot measure counts as 0 wide.
void layoutPaddedText(int font, const unsigned int* text, int padding, unsigned int justify,
                      void (*visit)(const PaddedChar& c, void* context), void* context);

} // namespace ui
