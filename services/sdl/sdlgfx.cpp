// SdlGfx: targets, the per-frame draw queue, presenting and statistics.
#include "sdlgfx.h"
#include <SDL_image.h>
#include <algorithm>
#include "logger.h"
#include "particles.h"

SdlGfx::SdlGfx(const std::string& assetDir, int width, int height)
    : ParticleGfx("SdlGfx", assetDir), m_width(width), m_height(height) {
    m_target = SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_RGBA32);
    if (m_target) m_renderer = SDL_CreateSoftwareRenderer(m_target);
    if (!m_renderer) Logger::log(Logger::kError, "SdlGfx: no off-screen renderer: %s\f", SDL_GetError());
    _openFontLibrary();
}

SdlGfx::SdlGfx(const std::string& assetDir, SDL_Window* window)
    : ParticleGfx("SdlGfx", assetDir), m_window(window) {
    SDL_GetWindowSize(window, &m_width, &m_height);
    m_renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC);
    if (!m_renderer) m_renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
    if (!m_renderer) Logger::log(Logger::kError, "SdlGfx: no renderer for the window: %s\f", SDL_GetError());
    _openFontLibrary();
}

SdlGfx::~SdlGfx() {
    m_queue.clear();
    m_psys.clear();
    m_sheets.clear();
    for (auto& font : m_fonts)
        if (font) TTF_CloseFont(font->ttf);
    m_fonts.clear();
    if (m_renderer) SDL_DestroyRenderer(m_renderer);
    if (m_target) SDL_FreeSurface(m_target);
    if (m_ttfOpen) TTF_Quit();
}

void SdlGfx::_openFontLibrary() {
    m_ttfOpen = TTF_Init() == 0;
    if (!m_ttfOpen) Logger::log(Logger::kError, "SdlGfx: no font library: %s\f", TTF_GetError());
}

void SdlGfx::_queue(int depth, int level, const sdlsvc::ImagePtr& image, const SDL_Rect& src,
                    const SDL_Rect& dst, int alpha, SDL_Color tint) {
    if (!image || src.w <= 0 || src.h <= 0 || dst.w <= 0 || dst.h <= 0 || alpha <= 0) return;
    const Uint8 a = static_cast<Uint8>(std::min(alpha, 255));
    m_queue.push_back(
        DrawItem{depth, level, static_cast<unsigned int>(m_queue.size()), image, src, dst, a, tint});
}

void SdlGfx::present() {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (!m_renderer) return;
    std::stable_sort(m_queue.begin(), m_queue.end(), [](const DrawItem& a, const DrawItem& b) {
        return a.depth != b.depth ? a.depth < b.depth : a.level < b.level;
    });
    SDL_SetRenderDrawColor(m_renderer, m_clear.r, m_clear.g, m_clear.b, 255);
    SDL_RenderClear(m_renderer);
    for (DrawItem& item : m_queue) {
        SDL_Texture* texture = item.image->texture(m_renderer);
        if (!texture) continue;
        SDL_SetTextureAlphaMod(texture, item.alpha);
        SDL_SetTextureColorMod(texture, item.tint.r, item.tint.g, item.tint.b);
        SDL_RenderCopy(m_renderer, texture, &item.src, &item.dst);
    }
    SDL_RenderPresent(m_renderer);
    _updateStatistics();
    m_queue.clear();
}

void SdlGfx::_updateStatistics() {
    const auto now = std::chrono::steady_clock::now();
    ++m_fpsFrames;
    const float seconds = std::chrono::duration<float>(now - m_fpsStart).count();
    if (seconds >= 1.0f) {
        m_stats.fps = static_cast<float>(m_fpsFrames) / seconds;
        m_fpsFrames = 0;
        m_fpsStart = now;
    }
    long sheetBytes = 0, glyphBytes = 0;
    for (const auto& sheet : m_sheets)
        if (sheet) sheetBytes += sheet->image->bytes();
    for (const auto& font : m_fonts)
        if (font)
            for (const auto& glyph : font->glyphs)
                if (glyph.second) glyphBytes += glyph.second->bytes();
    m_stats.tmem = static_cast<int>(sheetBytes / 1024);
    m_stats.cmem = static_cast<int>(glyphBytes / 1024);
    m_stats.mxmem = std::max(m_stats.mxmem, m_stats.tmem + m_stats.cmem);
    m_stats.total = static_cast<int>(m_queue.size());
    m_stats.blt = m_frameBlts;
    m_stats.text = m_frameTexts;
    m_stats.psys = _particleCount();
    m_frameBlts = m_frameTexts = 0;
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
