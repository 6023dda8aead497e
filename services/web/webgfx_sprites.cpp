// WebGfx sprites: sheets by name, frames by animation row and column, the four blit forms, alpha tests.
#include "assetfiles.h"
#include "logger.h"
#include "webgfx.h"

namespace {
// An alpha of at least this counts as opaque for hit tests.
constexpr int kOpaqueAlpha = 128;
} // namespace

bool WebGfx::_loadSheet(const std::string& name, Sheet& sheet) {
    if (!assets::readSheetLayout(m_assetDir, name, sheet.layout)) return false;
    sheet.image = websvc::loadPng(assets::joinPath(m_assetDir, sheet.layout.image));
    if (!sheet.image) return false;
    assets::completeSheetLayout(sheet.layout, sheet.image->width(), sheet.image->height());
    return true;
}

int WebGfx::createSprite(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    return assets::acquireByName(m_sheets, name, [&](Sheet& sheet) {
        if (_loadSheet(name, sheet)) return true;
        Logger::log(Logger::kWarning, "WebGfx: could not load sprite: \"%s\"\f", name);
        return false;
    });
}

WebGfx::Sheet* WebGfx::_sheet(int sprite) {
    if (sprite < 0 || static_cast<size_t>(sprite) >= m_sheets.size()) return nullptr;
    return m_sheets[static_cast<size_t>(sprite)].get();
}

const char* WebGfx::getSpriteName(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->name.c_str() : nullptr;
}

void WebGfx::releaseSprite(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    assets::releaseByName(m_sheets, name);
}

int WebGfx::getSpriteWidth(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->layout.frameW : 0;
}

int WebGfx::getSpriteHeight(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->layout.frameH : 0;
}

int WebGfx::getSpriteFrameCount(int sprite, int anim) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? assets::frameCount(sheet->layout, anim) : 1;
}

bool WebGfx::alphaTestSprite(int sprite, int anim, int frame, int x, int y) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    if (!sheet) return false;
    const assets::Rect f = assets::frameRect(sheet->layout, anim, frame);
    if (x < 0 || y < 0 || x >= f.w || y >= f.h) return false;
    return sheet->image->alphaAt(f.x + x, f.y + y) >= kOpaqueAlpha;
}

void WebGfx::_queueFrame(int depth, int level, int sprite, int x, int y, int srcX, int srcY, int w, int h,
                         int anim, int frame, int alpha) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    ++m_frameBlts;
    Sheet* sheet = _sheet(sprite);
    if (!sheet) return;
    assets::Rect src;
    assets::clipToFrame(assets::frameRect(sheet->layout, anim, frame), x, y, srcX, srcY, w, h, src);
    _queue(depth, level, sheet->image, src, assets::Rect{x, y, w, h}, alpha);
}

void WebGfx::blt(int depth, int sprite, int x, int y, int anim, int frame, int alpha) {
    _queueFrame(depth, 0, sprite, x, y, 0, 0, getSpriteWidth(sprite), getSpriteHeight(sprite), anim, frame,
                alpha);
}

void WebGfx::blt(int depth, int sprite, int x, int y, int width, int height, int anim, int frame, int alpha) {
    _queueFrame(depth, 0, sprite, x, y, 0, 0, width, height, anim, frame, alpha);
}

void WebGfx::blt(int depth, int sprite, int dstX, int dstY, int srcX, int srcY, int width, int height,
                 int anim, int frame, int alpha) {
    _queueFrame(depth, 0, sprite, dstX, dstY, srcX, srcY, width, height, anim, frame, alpha);
}

void WebGfx::bltSort(int depth, int sortLevel, int sprite, int x, int y, int anim, int frame, int alpha) {
    _queueFrame(depth, sortLevel, sprite, x, y, 0, 0, getSpriteWidth(sprite), getSpriteHeight(sprite), anim,
                frame, alpha);
}
