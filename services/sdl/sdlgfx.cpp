// SdlGfx: targets, pictures from files, presenting the frame's queue and reading the frame back.
#include "sdlgfx.h"
#include <SDL_image.h>
#include "logger.h"
#include "textgfx_impl.h"

template class assets::SpriteGfx<sdlsvc::Image>;
template class assets::TextGfx<sdlsvc::Image, sdlsvc::Face>;

namespace {

SDL_Rect sdlRect(const assets::Rect& r) {
    return SDL_Rect{r.x, r.y, r.w, r.h};
}

} // namespace

SdlGfx::SdlGfx(const std::string& assetDir, int width, int height)
    : TextGfx("SdlGfx", assetDir, width, height) {
    m_target = SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_RGBA32);
    if (m_target) m_renderer = SDL_CreateSoftwareRenderer(m_target);
    if (!m_renderer) Logger::log(Logger::kError, "SdlGfx: no off-screen renderer: %s\f", SDL_GetError());
    _openFontLibrary();
}

SdlGfx::SdlGfx(const std::string& assetDir, SDL_Window* window)
    : TextGfx("SdlGfx", assetDir, 0, 0), m_window(window) {
    SDL_GetWindowSize(window, &m_width, &m_height);
    m_renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC);
    if (!m_renderer) m_renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
    if (!m_renderer) Logger::log(Logger::kError, "SdlGfx: no renderer for the window: %s\f", SDL_GetError());
    _openFontLibrary();
}

SdlGfx::~SdlGfx() {
    // Textures go before their renderer, fonts before their library.
    m_queue.clear();
    m_psys.clear();
    m_sheets.clear();
    m_fonts.clear();
    if (m_renderer) SDL_DestroyRenderer(m_renderer);
    if (m_target) SDL_FreeSurface(m_target);
    if (m_ttfOpen) TTF_Quit();
}

sdlsvc::ImagePtr SdlGfx::_loadImage(const std::string& path) {
    auto image = std::make_shared<sdlsvc::Image>(IMG_Load(path.c_str()));
    return image->valid() ? image : nullptr;
}

void SdlGfx::present() {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (!m_renderer) return;
    SDL_SetRenderDrawColor(m_renderer, m_clear.r, m_clear.g, m_clear.b, 255);
    SDL_RenderClear(m_renderer);
    for (const DrawItem& item : _sortedQueue()) {
        SDL_Texture* texture = item.image->texture(m_renderer);
        if (!texture) continue;
        SDL_SetTextureAlphaMod(texture, static_cast<Uint8>(item.alpha));
        const SDL_Rect src = sdlRect(item.src), dst = sdlRect(item.dst);
        SDL_RenderCopy(m_renderer, texture, &src, &dst);
    }
    SDL_RenderPresent(m_renderer);
    _endFrame();
}

bool SdlGfx::savePng(const char* path) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (m_target) return IMG_SavePNG(m_target, path) == 0;
    if (!m_renderer) return false;
    SDL_Surface* shot = SDL_CreateRGBSurfaceWithFormat(0, m_width, m_height, 32, SDL_PIXELFORMAT_RGBA32);
    bool saved =
        shot &&
        SDL_RenderReadPixels(m_renderer, nullptr, SDL_PIXELFORMAT_RGBA32, shot->pixels, shot->pitch) == 0 &&
        IMG_SavePNG(shot, path) == 0;
    SDL_FreeSurface(shot);
    return saved;
}

bool SdlGfx::readPixel(int x, int y, SDL_Color& out) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (!m_renderer || x < 0 || y < 0 || x >= m_width || y >= m_height) return false;
    Uint8 rgba[4];
    SDL_Rect one{x, y, 1, 1};
    if (SDL_RenderReadPixels(m_renderer, &one, SDL_PIXELFORMAT_RGBA32, rgba, 4) != 0) return false;
    out = SDL_Color{rgba[0], rgba[1], rgba[2], rgba[3]};
    return true;
}
