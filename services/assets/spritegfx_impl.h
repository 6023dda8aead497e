// SpriteGfx's members, for the one source file of each service that instantiates it for its picture type.
#pragma once
#include <algorithm>
#include "assetfiles.h"
#include "logger.h"
#include "spritegfx.h"

namespace assets {

template <class Image> bool SpriteGfx<Image>::_loadSheet(const std::string& name, Sheet& sheet) {
    if (!readSheetLayout(m_assetDir, name, sheet.layout)) return false;
    sheet.image = _loadImage(joinPath(m_assetDir, sheet.layout.image));
    if (!sheet.image) return false;
    completeSheetLayout(sheet.layout, sheet.image->width(), sheet.image->height());
    return true;
}

template <class Image> int SpriteGfx<Image>::createSprite(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    return acquireByName(m_sheets, name, [&](Sheet& sheet) {
        if (_loadSheet(name, sheet)) return true;
        Logger::log(Logger::kWarning, "%s: could not load sprite: \"%s\"\f", m_service, name);
        return false;
    });
}

template <class Image> typename SpriteGfx<Image>::Sheet* SpriteGfx<Image>::_sheet(int sprite) {
    if (sprite < 0 || static_cast<size_t>(sprite) >= m_sheets.size()) return nullptr;
    return m_sheets[static_cast<size_t>(sprite)].get();
}

template <class Image> const char* SpriteGfx<Image>::getSpriteName(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->name.c_str() : nullptr;
}

template <class Image> void SpriteGfx<Image>::releaseSprite(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    releaseByName(m_sheets, name);
}

template <class Image> bool SpriteGfx<Image>::reloadSprite(const char* name) {
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

template <class Image> int SpriteGfx<Image>::getSpriteWidth(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->layout.frameW : 0;
}

template <class Image> int SpriteGfx<Image>::getSpriteHeight(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->layout.frameH : 0;
}

template <class Image> int SpriteGfx<Image>::getSpriteFrameCount(int sprite, int anim) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? frameCount(sheet->layout, anim) : 1;
}

template <class Image> bool SpriteGfx<Image>::alphaTestSprite(int sprite, int anim, int frame, int x, int y) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    if (!sheet) return false;
    const Rect f = frameRect(sheet->layout, anim, frame);
    if (x < 0 || y < 0 || x >= f.w || y >= f.h) return false;
    return sheet->image->alphaAt(f.x + x, f.y + y) >= kOpaqueAlpha;
}

template <class Image>
void SpriteGfx<Image>::_queueFrame(int depth, int level, int sprite, int x, int y, int srcX, int srcY, int w,
                                   int h, int anim, int frame, int alpha) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    ++m_statistics.blts;
    Sheet* sheet = _sheet(sprite);
    if (!sheet) return;
    Rect src;
    clipToFrame(frameRect(sheet->layout, anim, frame), x, y, srcX, srcY, w, h, src);
    _queue(depth, level, sheet->image, src, Rect{x, y, w, h}, alpha);
}

template <class Image>
void SpriteGfx<Image>::blt(int depth, int sprite, int x, int y, int anim, int frame, int alpha) {
    _queueFrame(depth, 0, sprite, x, y, 0, 0, getSpriteWidth(sprite), getSpriteHeight(sprite), anim, frame,
                alpha);
}

template <class Image>
void SpriteGfx<Image>::blt(int depth, int sprite, int x, int y, int width, int height, int anim, int frame,
                           int alpha) {
    _queueFrame(depth, 0, sprite, x, y, 0, 0, width, height, anim, frame, alpha);
}

template <class Image>
void SpriteGfx<Image>::blt(int depth, int sprite, int dstX, int dstY, int srcX, int srcY, int width,
                           int height, int anim, int frame, int alpha) {
    _queueFrame(depth, 0, sprite, dstX, dstY, srcX, srcY, width, height, anim, frame, alpha);
}

template <class Image>
void SpriteGfx<Image>::bltSort(int depth, int sortLevel, int sprite, int x, int y, int anim, int frame,
                               int alpha) {
    _queueFrame(depth, sortLevel, sprite, x, y, 0, 0, getSpriteWidth(sprite), getSpriteHeight(sprite), anim,
                frame, alpha);
}

template <class Image> void SpriteGfx<Image>::psemit(int depth, int instance, float alpha) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Psys* psys = _psys(instance);
    Sheet* sheet = psys ? _sheet(psys->sprite) : nullptr;
    if (!sheet) return;
    const Rect src = frameRect(sheet->layout, 0, 0);
    for (const Particle& p : psys->instance->particles()) {
        int a = 0;
        const Rect dst = psys->instance->placement(p, src.w, src.h, alpha, a);
        _queue(depth, 0, sheet->image, src, dst, a);
    }
}

template <class Image>
void SpriteGfx<Image>::_queue(int depth, int level, const ImagePtr& image, const Rect& src, const Rect& dst,
                              int alpha) {
    if (!image || src.w <= 0 || src.h <= 0 || dst.w <= 0 || dst.h <= 0 || alpha <= 0) return;
    m_queue.push_back(DrawItem{depth, level, image, src, dst, std::min(alpha, 255)});
}

template <class Image>
const std::vector<typename SpriteGfx<Image>::DrawItem>& SpriteGfx<Image>::_sortedQueue() {
    std::stable_sort(m_queue.begin(), m_queue.end(), [](const DrawItem& a, const DrawItem& b) {
        return a.depth != b.depth ? a.depth < b.depth : a.level < b.level;
    });
    return m_queue;
}

template <class Image> void SpriteGfx<Image>::_endFrame() {
    long sheetBytes = 0;
    for (const auto& sheet : m_sheets)
        if (sheet) sheetBytes += sheet->image->bytes();
    m_statistics.endFrame(sheetBytes, _glyphBytes(), static_cast<int>(m_queue.size()), _particleCount());
    m_queue.clear();
}

} // namespace assets
