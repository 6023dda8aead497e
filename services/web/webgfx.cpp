// WebGfx: pictures from files and presenting the frame's queue on the canvas.
#include "webgfx.h"
#include "textgfx_impl.h"
#include "webpage.h"

template class assets::SpriteGfx<websvc::Image>;
template class assets::TextGfx<websvc::Image, websvc::Face>;

WebGfx::WebGfx(const std::string& assetDir, int width, int height)
    : TextGfx("WebGfx", assetDir, width, height) {}

websvc::ImagePtr WebGfx::_loadImage(const std::string& path) {
    return websvc::loadPng(path);
}

void WebGfx::present() {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    gameui_page_clear(m_clear.r, m_clear.g, m_clear.b);
    for (const DrawItem& item : _sortedQueue())
        if (const int canvas = item.image->canvas())
            gameui_page_draw(canvas, item.src.x, item.src.y, item.src.w, item.src.h, item.dst.x, item.dst.y,
                             item.dst.w, item.dst.h, item.alpha);
    _endFrame();
}
