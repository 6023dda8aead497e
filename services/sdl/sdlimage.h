// A picture held by the SDL graphics service: its pixels stay in memory (for alpha tests and for
// services created on loader threads) and the texture is made on first draw, on the rendering thread. A
// colour other than white modulates the picture as it is drawn (white glyphs drawn in a font's colour).
#pragma once
#include <SDL.h>
#include <memory>

namespace sdlsvc {

class Image {
public:
    // Takes the surface, converted to 32-bit RGBA.
    explicit Image(SDL_Surface* pixels, SDL_Color colour = SDL_Color{255, 255, 255, 255});
    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    bool valid() const { return m_pixels != nullptr; }
    int width() const { return m_pixels ? m_pixels->w : 0; }
    int height() const { return m_pixels ? m_pixels->h : 0; }
    int bytes() const { return width() * height() * 4; }
    // Alpha of the pixel at (x, y), 0 outside the picture.
    int alphaAt(int x, int y) const;
    SDL_Texture* texture(SDL_Renderer* renderer);

private:
    SDL_Surface* m_pixels = nullptr;
    SDL_Texture* m_texture = nullptr;
    SDL_Renderer* m_owner = nullptr;
    SDL_Color m_colour;
};

using ImagePtr = std::shared_ptr<Image>;

} // namespace sdlsvc
