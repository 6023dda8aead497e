#include "overlay.h"
#include <algorithm>
#include "gfxsubsystem.h"

namespace devtools {

Overlay::~Overlay() {
    if (!g_gfx || !m_tried) return;
    if (m_line >= 0) g_gfx->releaseSprite(m_options.lineSprite);
    if (m_panel >= 0) g_gfx->releaseSprite(m_options.panelSprite);
    if (m_font >= 0) g_gfx->releaseFont(m_font);
}

bool Overlay::ready() {
    if (!g_gfx) return false;
    if (!m_tried) {
        m_tried = true;
        if (m_options.font) m_font = g_gfx->createFont(m_options.font);
        if (m_options.lineSprite) m_line = g_gfx->createSprite(m_options.lineSprite);
        if (m_options.panelSprite) m_panel = g_gfx->createSprite(m_options.panelSprite);
        if (m_font >= 0 && g_gfx->getFontHeight(m_font) > 0) m_lineHeight = g_gfx->getFontHeight(m_font);
    }
    return m_font >= 0 || m_line >= 0;
}

// A blit with a size draws that much of the sprite, so larger areas are covered by tiles of it.
void Overlay::_fill(int sprite, const _uiRect_s& r, int alpha) {
    if (sprite < 0) return;
    const int tw = std::max(1, g_gfx->getSpriteWidth(sprite)),
              th = std::max(1, g_gfx->getSpriteHeight(sprite));
    for (int y = r.y; y < r.y2; y += th)
        for (int x = r.x; x < r.x2; x += tw)
            g_gfx->blt(g_gfx->getMaxDepthNode(), sprite, x, y, std::min(tw, r.x2 - x), std::min(th, r.y2 - y),
                       0, 0, alpha);
}

void Overlay::panel(const _uiRect_s& r, int alpha) {
    _fill(m_panel, r, alpha);
}

void Overlay::bar(const _uiRect_s& r, int alpha) {
    _fill(m_line, r, alpha);
}

void Overlay::outline(const _uiRect_s& r, int alpha) {
    bar({r.x, r.y, r.x2, r.y + 1}, alpha);
    bar({r.x, r.y2 - 1, r.x2, r.y2}, alpha);
    bar({r.x, r.y + 1, r.x + 1, r.y2 - 1}, alpha);
    bar({r.x2 - 1, r.y + 1, r.x2, r.y2 - 1}, alpha);
}

void Overlay::text(int x, int y, const std::string& line, int alpha) {
    if (m_font >= 0) g_gfx->print(g_gfx->getMaxDepthNode(), m_font, 0, 0, x, y, -1, alpha, line.c_str());
}

} // namespace devtools
