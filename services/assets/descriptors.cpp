#include "descriptors.h"
#include <algorithm>
#include "assetfiles.h"

namespace assets {

namespace {

constexpr const char* kSystemFonts = "/usr/share/fonts/truetype/dejavu";

bool endsWith(const std::string& s, const char* tail) {
    const size_t n = std::char_traits<char>::length(tail);
    return s.size() >= n && s.compare(s.size() - n, n, tail) == 0;
}

} // namespace

bool readSheetLayout(const std::string& assetDir, const std::string& name, SheetLayout& layout) {
    layout.image = name;
    if (endsWith(name, ".png")) return true;
    std::vector<DescriptorLine> lines;
    if (!readDescriptor(joinPath(assetDir, name + ".sprite"), lines)) {
        layout.image = name + ".png";
        return true;
    }
    layout.image.clear();
    for (const auto& line : lines) {
        if (line[0] == "image" && line.size() > 1)
            layout.image = line[1];
        else if (line[0] == "frame") {
            layout.frameW = static_cast<int>(numberAt(line, 0, 0));
            layout.frameH = static_cast<int>(numberAt(line, 1, 0));
        } else if (line[0] == "anim") {
            layout.anims.emplace_back(static_cast<int>(numberAt(line, 0, 0)),
                                      std::max(1, static_cast<int>(numberAt(line, 1, 1))));
        }
    }
    return !layout.image.empty();
}

void completeSheetLayout(SheetLayout& layout, int imageW, int imageH) {
    if (layout.frameW <= 0 || layout.frameH <= 0) {
        layout.frameW = imageW;
        layout.frameH = imageH;
    }
    if (layout.anims.empty()) layout.anims.emplace_back(0, std::max(1, imageW / std::max(1, layout.frameW)));
}

int frameCount(const SheetLayout& layout, int anim) {
    if (anim < 0 || static_cast<size_t>(anim) >= layout.anims.size()) return 1;
    return layout.anims[static_cast<size_t>(anim)].second;
}

Rect frameRect(const SheetLayout& layout, int anim, int frame) {
    const auto& a = layout.anims[anim >= 0 && static_cast<size_t>(anim) < layout.anims.size() ? anim : 0];
    const int column = ((frame % a.second) + a.second) % a.second;
    return Rect{column * layout.frameW, a.first * layout.frameH, layout.frameW, layout.frameH};
}

void clipToFrame(const Rect& frame, int& x, int& y, int srcX, int srcY, int& w, int& h, Rect& src) {
    if (srcX < 0) {
        x -= srcX;
        w += srcX;
        srcX = 0;
    }
    if (srcY < 0) {
        y -= srcY;
        h += srcY;
        srcY = 0;
    }
    w = std::min(w, frame.w - srcX);
    h = std::min(h, frame.h - srcY);
    src = Rect{frame.x + srcX, frame.y + srcY, w, h};
}

bool readFontDescriptor(const std::string& assetDir, const std::string& name, FontDescriptor& font) {
    std::vector<DescriptorLine> lines;
    if (!readDescriptor(joinPath(assetDir, name + ".font"), lines)) return false;
    std::string file = "DejaVuSans.ttf";
    for (const auto& line : lines) {
        if (line[0] == "file" && line.size() > 1)
            file = line[1];
        else if (line[0] == "size")
            font.size = static_cast<int>(numberAt(line, 0, 16));
        else if (line[0] == "color") {
            font.r = static_cast<unsigned char>(numberAt(line, 0, 255));
            font.g = static_cast<unsigned char>(numberAt(line, 1, 255));
            font.b = static_cast<unsigned char>(numberAt(line, 2, 255));
        }
    }
    font.path = joinPath(assetDir, file);
    if (!fileExists(font.path)) font.path = joinPath(kSystemFonts, file);
    return true;
}

std::vector<unsigned int> decodeUtf8(const char* text) {
    std::vector<unsigned int> codes;
    const auto* s = reinterpret_cast<const unsigned char*>(text);
    while (*s) {
        // Lead bytes give the length, following bytes add their low six bits.
        int more = *s >= 0xFC ? 5 : *s >= 0xF8 ? 4 : *s >= 0xF0 ? 3 : *s >= 0xE0 ? 2 : *s >= 0xC0 ? 1 : 0;
        unsigned int code = *s & (more ? 0x3Fu >> more : 0x7Fu);
        for (++s; more > 0 && *s; --more, ++s)
            code = (code << 6) | (*s & 0x3Fu);
        codes.push_back(code);
    }
    codes.push_back(0);
    return codes;
}

} // namespace assets
