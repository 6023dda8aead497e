// SdlGfx text: fonts opened and measured by SDL_ttf, glyphs rendered white and drawn in the font's colour.
#include "logger.h"
#include "sdlgfx.h"

void SdlGfx::_openFontLibrary() {
    m_ttfOpen = TTF_Init() == 0;
    if (!m_ttfOpen) Logger::log(Logger::kError, "SdlGfx: no font library: %s\f", TTF_GetError());
}

bool SdlGfx::_openFont(const assets::FontDescriptor& descriptor, Font& font) {
    font.face.color = SDL_Color{descriptor.r, descriptor.g, descriptor.b, 255};
    font.face.ttf = m_ttfOpen ? TTF_OpenFont(descriptor.path.c_str(), descriptor.size) : nullptr;
    if (!font.face.ttf) return false;
    font.height = TTF_FontHeight(font.face.ttf);
    return true;
}

bool SdlGfx::_provides(Font& font, unsigned int character) {
    return TTF_GlyphIsProvided32(font.face.ttf, character) != 0;
}

int SdlGfx::_advance(Font& font, unsigned int character) {
    int advance = 0;
    if (TTF_GlyphMetrics32(font.face.ttf, character, nullptr, nullptr, nullptr, nullptr, &advance) != 0)
        return 0;
    return advance;
}

// The picture is the line's height tall, from the pen on the line's top.
SdlGfx::Glyph SdlGfx::_renderGlyph(Font& font, unsigned int character) {
    Glyph glyph;
    glyph.advance = _advance(font, character);
    auto image = std::make_shared<sdlsvc::Image>(
        TTF_RenderGlyph32_Blended(font.face.ttf, character, SDL_Color{255, 255, 255, 255}), font.face.color);
    if (image->valid()) glyph.image = image;
    return glyph;
}
