// WebGfx text: TrueType fonts by descriptor, rasterised glyph by glyph into pictures in the font's colour,
// with the metrics of the SDL services (ascent and height rounded up, advances rounded).
#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include "assetfiles.h"
#include "logger.h"
#include "webgfx.h"
#define STB_TRUETYPE_IMPLEMENTATION
#include <stb_truetype.h>

WebGfx::Font::Font() : info(std::make_unique<stbtt_fontinfo>()) {}
WebGfx::Font::~Font() = default;

bool WebGfx::_loadFont(const std::string& name, Font& font) {
    assets::FontDescriptor d;
    if (!assets::readFontDescriptor(m_assetDir, name, d)) return false;
    std::ifstream in(d.path, std::ios::binary);
    font.file.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (font.file.empty() || !stbtt_InitFont(font.info.get(), font.file.data(), 0)) return false;
    font.r = d.r;
    font.g = d.g;
    font.b = d.b;
    font.scale = stbtt_ScaleForMappingEmToPixels(font.info.get(), static_cast<float>(d.size));
    int ascent = 0, descent = 0, gap = 0;
    stbtt_GetFontVMetrics(font.info.get(), &ascent, &descent, &gap);
    font.ascent = static_cast<int>(std::ceil(static_cast<float>(ascent) * font.scale));
    font.height = static_cast<int>(std::ceil(static_cast<float>(ascent - descent) * font.scale));
    return true;
}

int WebGfx::createFont(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    return assets::acquireByName(m_fonts, name, [&](Font& font) {
        if (_loadFont(name, font)) return true;
        Logger::log(Logger::kWarning, "WebGfx: could not load font: \"%s\"\f", name);
        return false;
    });
}

WebGfx::Font* WebGfx::_font(int font) {
    if (font < 0 || static_cast<size_t>(font) >= m_fonts.size()) return nullptr;
    return m_fonts[static_cast<size_t>(font)].get();
}

void WebGfx::releaseFont(int font) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    if (f && --f->refs <= 0) m_fonts[static_cast<size_t>(font)].reset();
}

const char* WebGfx::getFontName(int font) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Font* f = _font(font);
    return f ? f->name.c_str() : nullptr;
}

int WebGfx::getFontHeight(int font) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Font* f = _font(font);
    return f ? f->height : 0;
}

bool WebGfx::_provides(Font& font, unsigned int character) {
    return stbtt_FindGlyphIndex(font.info.get(), static_cast<int>(character)) != 0;
}

const WebGfx::Glyph& WebGfx::_glyph(Font& font, unsigned int character) {
    auto found = font.glyphs.find(character);
    if (found != font.glyphs.end()) return found->second;
    Glyph& glyph = font.glyphs[character];
    const int index = stbtt_FindGlyphIndex(font.info.get(), static_cast<int>(character));
    int advance = 0, bearing = 0;
    stbtt_GetGlyphHMetrics(font.info.get(), index, &advance, &bearing);
    glyph.advance = static_cast<int>(std::floor(static_cast<float>(advance) * font.scale + 0.5f));
    int w = 0, h = 0;
    unsigned char* coverage =
        stbtt_GetGlyphBitmap(font.info.get(), font.scale, font.scale, index, &w, &h, &glyph.left, &glyph.top);
    if (coverage && w > 0 && h > 0) {
        std::vector<unsigned char> rgba(static_cast<size_t>(w) * h * 4);
        for (size_t i = 0; i < static_cast<size_t>(w) * h; ++i) {
            rgba[i * 4] = font.r;
            rgba[i * 4 + 1] = font.g;
            rgba[i * 4 + 2] = font.b;
            rgba[i * 4 + 3] = coverage[i];
        }
        glyph.image = std::make_shared<websvc::Image>(std::move(rgba), w, h);
        glyph.top += font.ascent; // from the baseline to the line's top
    }
    stbtt_FreeBitmap(coverage, nullptr);
    return glyph;
}

int WebGfx::_lineWidth(Font& font, const unsigned int* text) {
    int width = 0;
    for (; *text && *text != '\n'; ++text)
        width += _glyph(font, *text).advance;
    return width;
}

void WebGfx::getFontDimensions(int font, int* widths, int* height) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    for (unsigned int c = 0; widths && c < 256; ++c)
        widths[c] = f && _provides(*f, c) ? _glyph(*f, c).advance : 0;
    if (height) *height = f ? f->height : 0;
}

bool WebGfx::getCharDimensions(int font, int set, unsigned int character, int* w, int* h) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    const bool known = f && _provides(*f, character);
    if (w) *w = known ? _glyph(*f, character).advance : 0;
    if (h) *h = f ? f->height : 0;
    return known;
}

bool WebGfx::testFontChar(int font, unsigned int character) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    return f && _provides(*f, character);
}

void WebGfx::getTextRect(int font, unsigned int justify, int x, int y, const unsigned int* text, int* x1,
                         int* y1, int* x2, int* y2) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    int width = 0, lines = 0;
    for (const unsigned int* line = text; f && line; ++lines) {
        width = std::max(width, _lineWidth(*f, line));
        while (*line && *line != '\n')
            ++line;
        line = *line ? line + 1 : nullptr;
    }
    const int left = assets::justifiedLeft(justify, x, width);
    if (x1) *x1 = left;
    if (y1) *y1 = y;
    if (x2) *x2 = left + width;
    if (y2) *y2 = y + (f ? lines * f->height : 0);
}

void WebGfx::print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight,
                   int alpha, const unsigned int* text) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    ++m_frameTexts;
    Font* f = _font(font);
    if (!f || !text) return;
    for (const unsigned int* line = text; line; y += f->height) {
        int pen = assets::justifiedLeft(justify, x, _lineWidth(*f, line));
        for (; *line && *line != '\n'; ++line) {
            const Glyph& glyph = _glyph(*f, *line);
            if (glyph.image) {
                // A clip height cuts the line's pictures that far below its top.
                const int bottom = clipHeight < 0 ? f->height : std::min(clipHeight, f->height);
                const int h = std::min(glyph.image->height(), bottom - glyph.top);
                _queue(depth, 0, glyph.image, assets::Rect{0, 0, glyph.image->width(), h},
                       assets::Rect{pen + glyph.left, y + glyph.top, glyph.image->width(), h}, alpha);
            }
            pen += glyph.advance;
        }
        line = *line ? line + 1 : nullptr;
    }
}

void WebGfx::print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight,
                   int alpha, const char* text) {
    if (text) print(depth, font, set, justify, x, y, clipHeight, alpha, assets::decodeUtf8(text).data());
}
