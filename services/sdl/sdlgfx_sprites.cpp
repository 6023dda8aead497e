// SdlGfx sprites: sheets by name, frames by animation row and column, the four blit forms, alpha tests.
#include <SDL_image.h>
#include <algorithm>
#include "logger.h"
#include "assetfiles.h"
#include "sdlgfx.h"

namespace {

// An alpha of at least this counts as opaque for hit tests.
constexpr int kOpaqueAlpha = 128;

} // namespace

bool SdlGfx::_loadSheet(const std::string& name, Sheet& sheet) {
    if (!assets::readSheetLayout(m_assetDir, name, sheet.layout)) return false;
    sheet.image =
        std::make_shared<sdlsvc::Image>(IMG_Load(assets::joinPath(m_assetDir, sheet.layout.image).c_str()));
    if (!sheet.image->valid()) return false;
    assets::completeSheetLayout(sheet.layout, sheet.image->width(), sheet.image->height());
    return true;
}

int SdlGfx::createSprite(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    return assets::acquireByName(m_sheets, name, [&](Sheet& sheet) {
        if (_loadSheet(name, sheet)) return true;
        Logger::log(Logger::kWarning, "SdlGfx: could not load sprite: \"%s\"\f", name);
        return false;
    });
}

SdlGfx::Sheet* SdlGfx::_sheet(int sprite) {
    if (sprite < 0 || static_cast<size_t>(sprite) >= m_sheets.size()) return nullptr;
    return m_sheets[static_cast<size_t>(sprite)].get();
}

const char* SdlGfx::getSpriteName(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->name.c_str() : nullptr;
}

void SdlGfx::releaseSprite(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    assets::releaseByName(m_sheets, name);
}

bool SdlGfx::reloadSprite(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    for (auto& sheet : m_sheets)
        if (sheet && sheet->name == name) {
            Sheet fresh;
            fresh.name = name;
            if (!_loadSheet(name, fresh)) return false;
            fresh.refs = sheet->refs;
            *sheet = std::move(fresh);
        }
    return true;
}

int SdlGfx::getSpriteWidth(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->layout.frameW : 0;
}

int SdlGfx::getSpriteHeight(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->layout.frameH : 0;
}

int SdlGfx::getSpriteFrameCount(int sprite, int anim) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? assets::frameCount(sheet->layout, anim) : 1;
}

void SdlGfx::setupAlphaTestSprite(int sprite) {
    // The pixels of every sheet stay in memory, so there is nothing to prepare.
}

bool SdlGfx::alphaTestSprite(int sprite, int anim, int frame, int x, int y) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    if (!sheet) return false;
    const assets::Rect f = assets::frameRect(sheet->layout, anim, frame);
    if (x < 0 || y < 0 || x >= f.w || y >= f.h) return false;
    return sheet->image->alphaAt(f.x + x, f.y + y) >= kOpaqueAlpha;
}

void SdlGfx::_queueFrame(int depth, int level, int sprite, int x, int y, int srcX, int srcY, int w, int h,
                         int anim, int frame, int alpha) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    ++m_frameBlts;
    Sheet* sheet = _sheet(sprite);
    if (!sheet) return;
    assets::Rect src;
    assets::clipToFrame(assets::frameRect(sheet->layout, anim, frame), x, y, srcX, srcY, w, h, src);
    _queue(depth, level, sheet->image, SDL_Rect{src.x, src.y, w, h}, SDL_Rect{x, y, w, h}, alpha);
}

void SdlGfx::blt(int depth, int sprite, int x, int y, int anim, int frame, int alpha) {
    _queueFrame(depth, 0, sprite, x, y, 0, 0, getSpriteWidth(sprite), getSpriteHeight(sprite), anim, frame,
                alpha);
}

void SdlGfx::blt(int depth, int sprite, int x, int y, int width, int height, int anim, int frame, int alpha) {
    _queueFrame(depth, 0, sprite, x, y, 0, 0, width, height, anim, frame, alpha);
}

void SdlGfx::blt(int depth, int sprite, int dstX, int dstY, int srcX, int srcY, int width, int height,
                 int anim, int frame, int alpha) {
    _queueFrame(depth, 0, sprite, dstX, dstY, srcX, srcY, width, height, anim, frame, alpha);
}

void SdlGfx::bltSort(int depth, int sortLevel, int sprite, int x, int y, int anim, int frame, int alpha) {
    _queueFrame(depth, sortLevel, sprite, x, y, 0, 0, getSpriteWidth(sprite), getSpriteHeight(sprite), anim,
                frame, alpha);
}
