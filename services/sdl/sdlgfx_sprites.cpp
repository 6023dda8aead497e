// SdlGfx sprites: sheets by name, frames by animation row and column, the four blit forms, alpha tests.
#include <SDL_image.h>
#include <algorithm>
#include "logger.h"
#include "sdlassets.h"
#include "sdlgfx.h"

namespace {

bool endsWith(const std::string& s, const char* tail) {
    const size_t n = std::char_traits<char>::length(tail);
    return s.size() >= n && s.compare(s.size() - n, n, tail) == 0;
}

// An alpha of at least this counts as opaque for hit tests.
constexpr int kOpaqueAlpha = 128;

} // namespace

bool SdlGfx::_loadSheet(const std::string& name, Sheet& sheet) {
    std::string imageFile = name;
    std::vector<sdlsvc::DescriptorLine> lines;
    const std::string descriptor = sdlsvc::joinPath(m_assetDir, name + ".sprite");
    if (!endsWith(name, ".png") && sdlsvc::readDescriptor(descriptor, lines)) {
        imageFile.clear();
        for (const auto& line : lines) {
            if (line[0] == "image" && line.size() > 1)
                imageFile = line[1];
            else if (line[0] == "frame") {
                sheet.frameW = static_cast<int>(sdlsvc::numberAt(line, 0, 0));
                sheet.frameH = static_cast<int>(sdlsvc::numberAt(line, 1, 0));
            } else if (line[0] == "anim") {
                sheet.anims.emplace_back(static_cast<int>(sdlsvc::numberAt(line, 0, 0)),
                                         std::max(1, static_cast<int>(sdlsvc::numberAt(line, 1, 1))));
            }
        }
    } else if (!endsWith(name, ".png")) {
        imageFile = name + ".png";
    }
    if (imageFile.empty()) return false;
    sheet.image = std::make_shared<sdlsvc::Image>(IMG_Load(sdlsvc::joinPath(m_assetDir, imageFile).c_str()));
    if (!sheet.image->valid()) return false;
    if (sheet.frameW <= 0 || sheet.frameH <= 0) {
        sheet.frameW = sheet.image->width();
        sheet.frameH = sheet.image->height();
    }
    if (sheet.anims.empty()) sheet.anims.emplace_back(0, std::max(1, sheet.image->width() / sheet.frameW));
    return true;
}

int SdlGfx::createSprite(const char* name) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    return sdlsvc::acquireByName(m_sheets, name, [&](Sheet& sheet) {
        if (_loadSheet(name, sheet)) return true;
        Logger::log(1, "SdlGfx: could not load sprite: \"%s\"\f", name);
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
    if (!name) return;
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    for (size_t i = 0; i < m_sheets.size(); ++i)
        if (m_sheets[i] && m_sheets[i]->name == name) {
            _releaseSheet(i);
            return;
        }
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

void SdlGfx::_releaseSheet(size_t index) {
    // Handles are never reused, so a stale handle finds nothing instead of another sprite.
    if (--m_sheets[index]->refs <= 0) m_sheets[index].reset();
}

int SdlGfx::getSpriteWidth(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->frameW : 0;
}

int SdlGfx::getSpriteHeight(int sprite) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    return sheet ? sheet->frameH : 0;
}

int SdlGfx::getSpriteFrameCount(int sprite, int anim) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    if (!sheet || anim < 0 || static_cast<size_t>(anim) >= sheet->anims.size()) return 1;
    return sheet->anims[static_cast<size_t>(anim)].second;
}

bool SdlGfx::_frameRect(const Sheet& sheet, int anim, int frame, SDL_Rect& out) const {
    // An unknown animation shows the first one; frames wrap around the animation's count.
    const auto& a = sheet.anims[anim >= 0 && static_cast<size_t>(anim) < sheet.anims.size() ? anim : 0];
    const int column = ((frame % a.second) + a.second) % a.second;
    out = SDL_Rect{column * sheet.frameW, a.first * sheet.frameH, sheet.frameW, sheet.frameH};
    return true;
}

void SdlGfx::setupAlphaTestSprite(int sprite) {
    // The pixels of every sheet stay in memory, so there is nothing to prepare.
}

bool SdlGfx::alphaTestSprite(int sprite, int anim, int frame, int x, int y) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Sheet* sheet = _sheet(sprite);
    SDL_Rect f;
    if (!sheet || !_frameRect(*sheet, anim, frame, f)) return false;
    if (x < 0 || y < 0 || x >= f.w || y >= f.h) return false;
    return sheet->image->alphaAt(f.x + x, f.y + y) >= kOpaqueAlpha;
}

void SdlGfx::_queueFrame(int depth, int level, int sprite, int x, int y, int srcX, int srcY, int w, int h,
                         int anim, int frame, int alpha) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    ++m_frameBlts;
    Sheet* sheet = _sheet(sprite);
    SDL_Rect f;
    if (!sheet || !_frameRect(*sheet, anim, frame, f)) return;
    // Keep the source inside the frame; what is cut on the left or top moves the destination too.
    if (srcX < 0) {
        x -= srcX;
        w += srcX;
        srcX = 0;
    }
    if (srcY < 0) {
        y -= srcY;
        h += srcY;
        srcY = 0;
    }
    w = std::min(w, f.w - srcX);
    h = std::min(h, f.h - srcY);
    const SDL_Rect src{f.x + srcX, f.y + srcY, w, h};
    _queue(depth, level, sheet->image, src, SDL_Rect{x, y, w, h}, alpha);
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
