// WebGfx text: TrueType fonts rasterised glyph by glyph into pictures in the font's colour, with the
// metrics of the SDL services (ascent and height rounded up, advances rounded).
#include <cmath>
#include <fstream>
#include <iterator>
#include "webgfx.h"
#define STB_TRUETYPE_IMPLEMENTATION
#include <stb_truetype.h>

websvc::Face::Face() : info(std::make_unique<stbtt_fontinfo>()) {}
websvc::Face::~Face() = default;

bool WebGfx::_openFont(const assets::FontDescriptor& descriptor, Font& font) {
    websvc::Face& face = font.face;
    std::ifstream in(descriptor.path, std::ios::binary);
    face.file.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (face.file.empty() || !stbtt_InitFont(face.info.get(), face.file.data(), 0)) return false;
    face.r = descriptor.r;
    face.g = descriptor.g;
    face.b = descriptor.b;
    face.scale = stbtt_ScaleForMappingEmToPixels(face.info.get(), static_cast<float>(descriptor.size));
    int ascent = 0, descent = 0, gap = 0;
    stbtt_GetFontVMetrics(face.info.get(), &ascent, &descent, &gap);
    face.ascent = static_cast<int>(std::ceil(static_cast<float>(ascent) * face.scale));
    font.height = static_cast<int>(std::ceil(static_cast<float>(ascent - descent) * face.scale));
    return true;
}

bool WebGfx::_provides(Font& font, unsigned int character) {
    return stbtt_FindGlyphIndex(font.face.info.get(), static_cast<int>(character)) != 0;
}

// Rounding an advance needs the glyph's metrics, which come with its picture.
int WebGfx::_advance(Font& font, unsigned int character) {
    return _glyph(font, character).advance;
}

WebGfx::Glyph WebGfx::_renderGlyph(Font& font, unsigned int character) {
    const websvc::Face& face = font.face;
    Glyph glyph;
    const int index = stbtt_FindGlyphIndex(face.info.get(), static_cast<int>(character));
    int advance = 0, bearing = 0;
    stbtt_GetGlyphHMetrics(face.info.get(), index, &advance, &bearing);
    glyph.advance = static_cast<int>(std::floor(static_cast<float>(advance) * face.scale + 0.5f));
    int w = 0, h = 0;
    unsigned char* coverage =
        stbtt_GetGlyphBitmap(face.info.get(), face.scale, face.scale, index, &w, &h, &glyph.left, &glyph.top);
    if (coverage && w > 0 && h > 0) {
        std::vector<unsigned char> rgba(static_cast<size_t>(w) * h * 4);
        for (size_t i = 0; i < static_cast<size_t>(w) * h; ++i) {
            rgba[i * 4] = face.r;
            rgba[i * 4 + 1] = face.g;
            rgba[i * 4 + 2] = face.b;
            rgba[i * 4 + 3] = coverage[i];
        }
        glyph.image = std::make_shared<websvc::Image>(std::move(rgba), w, h);
        glyph.top += face.ascent; // from the baseline to the line's top
    }
    stbtt_FreeBitmap(coverage, nullptr);
    return glyph;
}
