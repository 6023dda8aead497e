// The graphics service on SDL2: sprite sheets, TrueType fonts and particle effects from one asset
// directory, drawn in depth order into a window or an off-screen picture.
//
// Draw calls only queue; present() draws the frame's queue sorted by depth (then by sort level for
// bltSort, then in call order) and starts the next frame. Every call takes the service's lock, so
// background loaders may create sprites and fonts; textures are made on the rendering thread.
#pragma once
#include <SDL.h>
#include <SDL_ttf.h>
#include <string>
#include "sdlimage.h"
#include "textgfx.h"

namespace sdlsvc {

// A font open in SDL_ttf, closed with it, and the colour its glyphs are drawn in.
struct Face {
    Face() = default;
    ~Face() { TTF_CloseFont(ttf); }
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;
    TTF_Font* ttf = nullptr;
    SDL_Color color{255, 255, 255, 255};
};

} // namespace sdlsvc

class SdlGfx : public assets::TextGfx<sdlsvc::Image, sdlsvc::Face> {
public:
    // Off screen: draws into a width x height picture; needs no display.
    SdlGfx(const std::string& assetDir, int width, int height);
    // On screen: draws through a renderer of the window.
    SdlGfx(const std::string& assetDir, SDL_Window* window);
    ~SdlGfx() override;
    SdlGfx(const SdlGfx&) = delete;
    SdlGfx& operator=(const SdlGfx&) = delete;

    bool ok() const { return m_renderer != nullptr; }
    const std::string& assetDir() const { return m_assetDir; }
    void setClearColor(Uint8 r, Uint8 g, Uint8 b) { m_clear = SDL_Color{r, g, b, 255}; }
    // Draws the queued frame and shows it; the statistics then describe that frame.
    void present();
    // Saves the last presented frame as a PNG file.
    bool savePng(const char* path);
    // The colour of one pixel of the last presented frame.
    bool readPixel(int x, int y, SDL_Color& out);

private:
    sdlsvc::ImagePtr _loadImage(const std::string& path) override;
    bool _openFont(const assets::FontDescriptor& descriptor, Font& font) override;
    bool _provides(Font& font, unsigned int character) override;
    int _advance(Font& font, unsigned int character) override;
    Glyph _renderGlyph(Font& font, unsigned int character) override;
    void _openFontLibrary();

    SDL_Surface* m_target = nullptr; // off screen only
    SDL_Window* m_window = nullptr;
    SDL_Renderer* m_renderer = nullptr;
    SDL_Color m_clear{0, 0, 0, 255};
    bool m_ttfOpen = false;
};
