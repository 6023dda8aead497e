// What the sprite and font descriptor files of an asset directory say, read the same way by every
// graphics service:
//   NAME.sprite   image FILE.png / frame W H / anim ROW FRAMES (one line per animation, in order)
//   NAME.font     file FILE.ttf / size POINTS / color R G B
// A sprite without a descriptor is the picture NAME.png (or NAME itself when it ends in .png), one frame.
#pragma once
#include <string>
#include <utility>
#include <vector>

namespace assets {

struct SheetLayout {
    std::string image; // file of the picture, relative to the asset directory
    int frameW = 0, frameH = 0;
    std::vector<std::pair<int, int>> anims; // row and frame count of each animation
};

// The layout of sprite `name`; false when its descriptor names no picture.
bool readSheetLayout(const std::string& assetDir, const std::string& name, SheetLayout& layout);
// Once the picture is loaded: a missing frame size is the whole picture, a missing animation is the
// first row with as many frames as fit.
void completeSheetLayout(SheetLayout& layout, int imageW, int imageH);

// Frames of animation `anim`; 1 for an unknown animation.
int frameCount(const SheetLayout& layout, int anim);

struct Rect {
    int x, y, w, h;
};

// The source rectangle of (anim, frame): an unknown animation shows the first one; frames wrap around
// the animation's count.
Rect frameRect(const SheetLayout& layout, int anim, int frame);
// Part (srcX, srcY, w, h) of `frame` drawn at (x, y): the source stays inside the frame, and what is cut
// on the left or top moves the destination too. The result's w or h is <= 0 when nothing is left.
void clipToFrame(const Rect& frame, int& x, int& y, int srcX, int srcY, int& w, int& h, Rect& src);

struct FontDescriptor {
    std::string path; // the TrueType file: in the asset directory, else among the system fonts
    int size = 16;
    unsigned char r = 255, g = 255, b = 255;
};

// Reads NAME.font; false when there is no such descriptor.
bool readFontDescriptor(const std::string& assetDir, const std::string& name, FontDescriptor& font);

// 8-bit texts are UTF-8: the characters, ending in a 0.
std::vector<unsigned int> decodeUtf8(const char* text);

constexpr unsigned int kJustifyRight = 1;
constexpr unsigned int kJustifyCentre = 2;
// Left edge of a line `width` wide drawn at x with the justification flags.
inline int justifiedLeft(unsigned int justify, int x, int width) {
    return justify & kJustifyRight ? x - width : justify & kJustifyCentre ? x - width / 2 : x;
}

} // namespace assets
