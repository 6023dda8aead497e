#include "recordinggfx.h"
#include <algorithm>
#include <cstdio>

namespace testkit {

std::string toUtf8(const unsigned int* text) {
    std::string out;
    for (; text && *text; ++text) {
        unsigned int c = *text;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | ((c >> 18) & 0x07));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

// --- recording and queries ---

void RecordingGfx::record(std::string fn, std::vector<int> ints, std::vector<float> floats,
                          std::string text) {
    calls.push_back(GfxCall{std::move(fn), std::move(ints), std::move(floats), std::move(text)});
}

void RecordingGfx::clear() {
    std::lock_guard<std::mutex> guard(m_lock);
    calls.clear();
}

std::vector<GfxCall> RecordingGfx::named(const std::string& fn) const {
    std::lock_guard<std::mutex> guard(m_lock);
    std::vector<GfxCall> out;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(out),
                 [&](const GfxCall& c) { return c.fn == fn; });
    return out;
}

std::vector<std::vector<int>> RecordingGfx::ints(const std::string& fn) const {
    std::vector<std::vector<int>> out;
    for (const GfxCall& c : named(fn))
        out.push_back(c.ints);
    return out;
}

std::vector<std::string> RecordingGfx::texts(const std::string& fn) const {
    std::vector<std::string> out;
    for (const GfxCall& c : named(fn))
        out.push_back(c.text);
    return out;
}

std::string RecordingGfx::transcript(const std::vector<std::string>& only) const {
    std::lock_guard<std::mutex> guard(m_lock);
    std::string out;
    for (const GfxCall& c : calls) {
        if (!only.empty() && std::find(only.begin(), only.end(), c.fn) == only.end()) continue;
        out += c.fn;
        for (int i : c.ints)
            out += " " + std::to_string(i);
        for (float f : c.floats) {
            char number[32];
            std::snprintf(number, sizeof number, " %g", f);
            out += number;
        }
        if (!c.text.empty()) out += " \"" + c.text + "\"";
        out += "; ";
    }
    return out;
}

int RecordingGfx::count(const std::string& fn) const {
    std::lock_guard<std::mutex> guard(m_lock);
    return static_cast<int>(
        std::count_if(calls.begin(), calls.end(), [&](const GfxCall& c) { return c.fn == fn; }));
}

std::vector<std::string> RecordingGfx::threads() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return {m_threads.begin(), m_threads.end()};
}

int RecordingGfx::overReleases() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_overReleases;
}

// --- sprites ---

void RecordingGfx::defineSprite(const std::string& name, int w, int h, std::vector<int> framesPerAnim) {
    std::lock_guard<std::mutex> guard(m_lock);
    Sprite& s = m_sprites[name];
    s.w = w;
    s.h = h;
    s.frames = framesPerAnim.empty() ? std::vector<int>{1} : std::move(framesPerAnim);
}

void RecordingGfx::failSprite(const std::string& name) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_sprites.fail(name);
}

void RecordingGfx::setAlphaMask(const std::string& name, std::function<bool(int, int, int, int)> opaque) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_sprites[name].opaque = std::move(opaque);
}

int RecordingGfx::spriteId(const std::string& name) const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_sprites.find(name);
}

int RecordingGfx::liveSprites() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_sprites.live();
}

int RecordingGfx::createSprite(const char* name) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("createSprite", {}, {}, name ? name : "");
    return m_sprites.acquire(name);
}

const char* RecordingGfx::getSpriteName(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getSpriteName", {id});
    Sprite* s = m_sprites.at(id);
    return s && s->refs > 0 ? s->name.c_str() : nullptr;
}

void RecordingGfx::releaseSprite(const char* name) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("releaseSprite", {}, {}, name ? name : "");
    if (!name || !m_sprites.release(m_sprites.find(name))) ++m_overReleases;
}

int RecordingGfx::getSpriteWidth(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getSpriteWidth", {id});
    Sprite* s = m_sprites.at(id);
    return s ? s->w : 0;
}

int RecordingGfx::getSpriteHeight(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getSpriteHeight", {id});
    Sprite* s = m_sprites.at(id);
    return s ? s->h : 0;
}

int RecordingGfx::getSpriteFrameCount(int id, int anim) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getSpriteFrameCount", {id, anim});
    Sprite* s = m_sprites.at(id);
    if (!s || anim < 0 || anim >= static_cast<int>(s->frames.size())) return 1;
    return std::max(1, s->frames[anim]);
}

void RecordingGfx::setupAlphaTestSprite(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("setupAlphaTestSprite", {id});
}

// Opaque inside the frame unless the mask says otherwise; outside the frame nothing is opaque.
bool RecordingGfx::alphaTestSprite(int id, int anim, int frame, int x, int y) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("alphaTestSprite", {id, anim, frame, x, y});
    Sprite* s = m_sprites.at(id);
    if (!s || x < 0 || y < 0 || x >= s->w || y >= s->h) return false;
    return !s->opaque || s->opaque(anim, frame, x, y);
}

void RecordingGfx::blt(int depth, int id, int x, int y, int anim, int frame, int alpha) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("blt", {depth, id, x, y, anim, frame, alpha});
}

void RecordingGfx::blt(int depth, int id, int x, int y, int width, int height, int anim, int frame,
                       int alpha) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("blt", {depth, id, x, y, width, height, anim, frame, alpha});
}

void RecordingGfx::blt(int depth, int id, int dstX, int dstY, int srcX, int srcY, int width, int height,
                       int anim, int frame, int alpha) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("blt", {depth, id, dstX, dstY, srcX, srcY, width, height, anim, frame, alpha});
}

void RecordingGfx::bltSort(int depth, int sortLevel, int id, int x, int y, int anim, int frame, int alpha) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("bltSort", {depth, sortLevel, id, x, y, anim, frame, alpha});
}

// --- the rest of the service ---

int RecordingGfx::getScreenWidth() {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getScreenWidth", {});
    return screenWidth;
}

int RecordingGfx::getMaxDepthNode() {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getMaxDepthNode", {});
    return maxDepth;
}

void RecordingGfx::registerThread(const char* name) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("registerThread", {}, {}, name ? name : "");
    m_threads.insert(name ? name : "");
}

void RecordingGfx::unregisterThread(const char* name) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("unregisterThread", {}, {}, name ? name : "");
    auto it = m_threads.find(name ? name : "");
    if (it != m_threads.end()) m_threads.erase(it);
}

const gfxStatistics_s* RecordingGfx::getStatistics() {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getStatistics", {});
    return &stats;
}

void RecordingGfx::addEvent(int event, int a, int b, int c, float f, void*) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("addEvent", {event, a, b, c}, {f});
}

} // namespace testkit
