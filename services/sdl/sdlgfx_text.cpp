// SdlGfx text: TrueType fonts by descriptor, glyphs cached as pictures, metrics and justified printing.
#include <algorithm>
#include "logger.h"
#include "assetfiles.h"
#include "descriptors.h"
#include "sdlgfx.h"

bool SdlGfx::_loadFont(const std::string& name, Font& font) {
    assets::FontDescriptor d;
    if (!assets::readFontDescriptor(m_assetDir, name, d)) return false;
    font.color = SDL_Color{d.r, d.g, d.b, 255};
    font.ttf = m_ttfOpen ? TTF_OpenFont(d.path.c_str(), d.size) : nullptr;
    return font.ttf != nullptr;
}

int SdlGfx::createFont(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    return assets::acquireByName(m_fonts, name, [&](Font& font) {
        if (_loadFont(name, font)) return true;
        Logger::log(Logger::kWarning, "SdlGfx: could not load font: \"%s\"\f", name);
        return false;
    });
}

SdlGfx::Font* SdlGfx::_font(int font) {
    if (font < 0 || static_cast<size_t>(font) >= m_fonts.size()) return nullptr;
    return m_fonts[static_cast<size_t>(font)].get();
}

void SdlGfx::releaseFont(int font) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    if (!f || --f->refs > 0) return;
    TTF_CloseFont(f->ttf);
    m_fonts[static_cast<size_t>(font)].reset();
}

const char* SdlGfx::getFontName(int font) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Font* f = _font(font);
    return f ? f->name.c_str() : nullptr;
}

int SdlGfx::getFontHeight(int font) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Font* f = _font(font);
    return f ? TTF_FontHeight(f->ttf) : 0;
}

int SdlGfx::_advance(Font& font, unsigned int character) {
    int advance = 0;
    if (TTF_GlyphMetrics32(font.ttf, character, nullptr, nullptr, nullptr, nullptr, &advance) != 0) return 0;
    return advance;
}

int SdlGfx::_lineWidth(Font& font, const unsigned int* text) {
    int width = 0;
    for (; *text && *text != '\n'; ++text)
        width += _advance(font, *text);
    return width;
}

const sdlsvc::ImagePtr& SdlGfx::_glyph(Font& font, unsigned int character) {
    sdlsvc::ImagePtr& glyph = font.glyphs[character];
    if (!glyph)
        glyph = std::make_shared<sdlsvc::Image>(
            TTF_RenderGlyph32_Blended(font.ttf, character, SDL_Color{255, 255, 255, 255}));
    return glyph;
}

void SdlGfx::getFontDimensions(int font, int* widths, int* height) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    for (unsigned int c = 0; widths && c < 256; ++c)
        widths[c] = f && TTF_GlyphIsProvided32(f->ttf, c) ? _advance(*f, c) : 0;
    if (height) *height = f ? TTF_FontHeight(f->ttf) : 0;
}

bool SdlGfx::getCharDimensions(int font, int set, unsigned int character, int* w, int* h) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    const bool known = f && TTF_GlyphIsProvided32(f->ttf, character);
    if (w) *w = known ? _advance(*f, character) : 0;
    if (h) *h = f ? TTF_FontHeight(f->ttf) : 0;
    return known;
}

bool SdlGfx::testFontChar(int font, unsigned int character) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Font* f = _font(font);
    return f && TTF_GlyphIsProvided32(f->ttf, character);
}

void SdlGfx::getTextRect(int font, unsigned int justify, int x, int y, const unsigned int* text, int* x1,
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
    if (y2) *y2 = y + (f ? lines * TTF_FontHeight(f->ttf) : 0);
}

void SdlGfx::print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight,
                   int alpha, const unsigned int* text) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    ++m_frameTexts;
    Font* f = _font(font);
    if (!f || !text) return;
    const int lineHeight = TTF_FontHeight(f->ttf);
    for (const unsigned int* line = text; line; y += lineHeight) {
        const int width = _lineWidth(*f, line);
        int pen = assets::justifiedLeft(justify, x, width);
        for (; *line && *line != '\n'; ++line) {
            const sdlsvc::ImagePtr& glyph = _glyph(*f, *line);
            const int h = clipHeight < 0 ? glyph->height() : std::min(clipHeight, glyph->height());
            _queue(depth, 0, glyph, SDL_Rect{0, 0, glyph->width(), h}, SDL_Rect{pen, y, glyph->width(), h},
                   alpha, f->color);
            pen += _advance(*f, *line);
        }
        line = *line ? line + 1 : nullptr;
    }
}

void SdlGfx::print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight,
                   int alpha, const char* text) {
    if (text) print(depth, font, set, justify, x, y, clipHeight, alpha, assets::decodeUtf8(text).data());
}
