// TextGfx's members, for the one source file of each service that instantiates it.
#pragma once
#include <algorithm>
#include "logger.h"
#include "spritegfx_impl.h"
#include "textgfx.h"

namespace assets {

template <class Image, class Face> int TextGfx<Image, Face>::createFont(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    return acquireByName(m_fonts, name, [&](Font& font) {
        FontDescriptor descriptor;
        if (readFontDescriptor(this->m_assetDir, name, descriptor) && _openFont(descriptor, font))
            return true;
        Logger::log(Logger::kWarning, "%s: could not load font: \"%s\"\f", this->m_service, name);
        return false;
    });
}

template <class Image, class Face>
typename TextGfx<Image, Face>::Font* TextGfx<Image, Face>::_font(int font) {
    if (font < 0 || static_cast<size_t>(font) >= m_fonts.size()) return nullptr;
    return m_fonts[static_cast<size_t>(font)].get();
}

template <class Image, class Face> void TextGfx<Image, Face>::releaseFont(int font) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    Font* f = _font(font);
    if (f && --f->refs <= 0) m_fonts[static_cast<size_t>(font)].reset();
}

template <class Image, class Face> const char* TextGfx<Image, Face>::getFontName(int font) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    const Font* f = _font(font);
    return f ? f->name.c_str() : nullptr;
}

template <class Image, class Face> int TextGfx<Image, Face>::getFontHeight(int font) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    const Font* f = _font(font);
    return f ? f->height : 0;
}

template <class Image, class Face>
const typename TextGfx<Image, Face>::Glyph& TextGfx<Image, Face>::_glyph(Font& font, unsigned int character) {
    auto found = font.glyphs.find(character);
    if (found != font.glyphs.end()) return found->second;
    return font.glyphs.emplace(character, _renderGlyph(font, character)).first->second;
}

template <class Image, class Face>
int TextGfx<Image, Face>::_lineWidth(Font& font, const unsigned int* text) {
    int width = 0;
    for (; *text && *text != '\n'; ++text)
        width += _advance(font, *text);
    return width;
}

template <class Image, class Face> long TextGfx<Image, Face>::_glyphBytes() const {
    long bytes = 0;
    for (const auto& font : m_fonts)
        if (font)
            for (const auto& glyph : font->glyphs)
                if (glyph.second.image) bytes += glyph.second.image->bytes();
    return bytes;
}

template <class Image, class Face>
void TextGfx<Image, Face>::getFontDimensions(int font, int* widths, int* height) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    Font* f = _font(font);
    for (unsigned int c = 0; widths && c < 256; ++c)
        widths[c] = f && _provides(*f, c) ? _advance(*f, c) : 0;
    if (height) *height = f ? f->height : 0;
}

template <class Image, class Face>
bool TextGfx<Image, Face>::getCharDimensions(int font, int, unsigned int character, int* w, int* h) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    Font* f = _font(font);
    const bool known = f && _provides(*f, character);
    if (w) *w = known ? _advance(*f, character) : 0;
    if (h) *h = f ? f->height : 0;
    return known;
}

template <class Image, class Face> bool TextGfx<Image, Face>::testFontChar(int font, unsigned int character) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    Font* f = _font(font);
    return f && _provides(*f, character);
}

template <class Image, class Face>
void TextGfx<Image, Face>::getTextRect(int font, unsigned int justify, int x, int y, const unsigned int* text,
                                       int* x1, int* y1, int* x2, int* y2) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    Font* f = _font(font);
    int width = 0, lines = 0;
    for (const unsigned int* line = text; f && line; ++lines) {
        width = std::max(width, _lineWidth(*f, line));
        while (*line && *line != '\n')
            ++line;
        line = *line ? line + 1 : nullptr;
    }
    const int left = justifiedLeft(justify, x, width);
    if (x1) *x1 = left;
    if (y1) *y1 = y;
    if (x2) *x2 = left + width;
    if (y2) *y2 = y + (f ? lines * f->height : 0);
}

template <class Image, class Face>
void TextGfx<Image, Face>::print(int depth, int font, int, unsigned int justify, int x, int y, int clipHeight,
                                 int alpha, const unsigned int* text) {
    std::lock_guard<std::recursive_mutex> hold(this->m_lock);
    ++this->m_statistics.texts;
    Font* f = _font(font);
    if (!f || !text) return;
    // A clip height cuts the line's pictures that far below its top.
    const int bottom = clipHeight < 0 ? f->height : std::min(clipHeight, f->height);
    for (const unsigned int* line = text; line; y += f->height) {
        int pen = justifiedLeft(justify, x, _lineWidth(*f, line));
        for (; *line && *line != '\n'; ++line) {
            const Glyph& glyph = _glyph(*f, *line);
            if (glyph.image) {
                const int w = glyph.image->width(), h = std::min(glyph.image->height(), bottom - glyph.top);
                this->_queue(depth, 0, glyph.image, Rect{0, 0, w, h},
                             Rect{pen + glyph.left, y + glyph.top, w, h}, alpha);
            }
            pen += glyph.advance;
        }
        line = *line ? line + 1 : nullptr;
    }
}

template <class Image, class Face>
void TextGfx<Image, Face>::print(int depth, int font, int set, unsigned int justify, int x, int y,
                                 int clipHeight, int alpha, const char* text) {
    if (text) print(depth, font, set, justify, x, y, clipHeight, alpha, decodeUtf8(text).data());
}

} // namespace assets
