#include "sdlimage.h"

namespace sdlsvc {

Image::Image(SDL_Surface* pixels, SDL_Color colour) : m_colour(colour) {
    if (!pixels) return;
    m_pixels = SDL_ConvertSurfaceFormat(pixels, SDL_PIXELFORMAT_RGBA32, 0);
    SDL_FreeSurface(pixels);
}

Image::~Image() {
    if (m_texture) SDL_DestroyTexture(m_texture);
    if (m_pixels) SDL_FreeSurface(m_pixels);
}

int Image::alphaAt(int x, int y) const {
    if (!m_pixels || x < 0 || y < 0 || x >= m_pixels->w || y >= m_pixels->h) return 0;
    const auto* row = static_cast<const Uint8*>(m_pixels->pixels) + y * m_pixels->pitch;
    return row[x * 4 + 3]; // RGBA32 keeps the bytes in R, G, B, A order
}

SDL_Texture* Image::texture(SDL_Renderer* renderer) {
    if (m_texture && m_owner == renderer) return m_texture;
    if (m_texture) SDL_DestroyTexture(m_texture);
    m_texture = m_pixels ? SDL_CreateTextureFromSurface(renderer, m_pixels) : nullptr;
    m_owner = renderer;
    if (m_texture) {
        SDL_SetTextureBlendMode(m_texture, SDL_BLENDMODE_BLEND);
        SDL_SetTextureColorMod(m_texture, m_colour.r, m_colour.g, m_colour.b);
    }
    return m_texture;
}

} // namespace sdlsvc
