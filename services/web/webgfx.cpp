// WebGfx: the per-frame draw queue, presenting on the canvas and statistics.
#include "webgfx.h"
#include <algorithm>
#include "particles.h"
#include "webpage.h"

WebGfx::WebGfx(const std::string& assetDir, int width, int height)
    : ParticleGfx("WebGfx", assetDir), m_width(width), m_height(height) {}

WebGfx::~WebGfx() = default;

void WebGfx::_queue(int depth, int level, const websvc::ImagePtr& image, const assets::Rect& src,
                    const assets::Rect& dst, int alpha) {
    if (!image || src.w <= 0 || src.h <= 0 || dst.w <= 0 || dst.h <= 0 || alpha <= 0) return;
    m_queue.push_back(DrawItem{depth, level, static_cast<unsigned int>(m_queue.size()), image, src, dst,
                               std::min(alpha, 255)});
}

void WebGfx::present() {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    std::stable_sort(m_queue.begin(), m_queue.end(), [](const DrawItem& a, const DrawItem& b) {
        return a.depth != b.depth ? a.depth < b.depth : a.level < b.level;
    });
    gameui_page_clear(m_clear.r, m_clear.g, m_clear.b);
    for (DrawItem& item : m_queue)
        if (const int canvas = item.image->canvas())
            gameui_page_draw(canvas, item.src.x, item.src.y, item.src.w, item.src.h, item.dst.x, item.dst.y,
                             item.dst.w, item.dst.h, item.alpha);
    _updateStatistics();
    m_queue.clear();
}

void WebGfx::_updateStatistics() {
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
                if (glyph.second.image) glyphBytes += glyph.second.image->bytes();
    m_stats.tmem = static_cast<int>(sheetBytes / 1024);
    m_stats.cmem = static_cast<int>(glyphBytes / 1024);
    m_stats.mxmem = std::max(m_stats.mxmem, m_stats.tmem + m_stats.cmem);
    m_stats.total = static_cast<int>(m_queue.size());
    m_stats.blt = m_frameBlts;
    m_stats.text = m_frameTexts;
    m_stats.psys = _particleCount();
    m_frameBlts = m_frameTexts = 0;
}
