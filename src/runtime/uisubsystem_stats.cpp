// The statistics overlay: eight lines of the graphics service's frame statistics, top left, topmost.
#include <cstdarg>
#include <cstdio>
#include "core/uiutf8.h"
#include "gfxsubsystem.h"
#include "uisubsystem.h"

namespace {

void printLine(int font, int y, const char* format, ...) {
    char text[128];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    unsigned int codes[128];
    ui::decodeUtf8(reinterpret_cast<const unsigned char*>(text), codes, 128);
    g_gfx->print(g_gfx->getMaxDepthNode(), font, 0, 0, 0, y, -1, 255, codes);
}

} // namespace

void uiSubsystem::gfxStatistics(bool on, const char* font) {
    m_statsEnabled = on;
    if (font) m_statsFont = g_gfx ? g_gfx->createFont(font) : -1;
}

void uiSubsystem::_renderGfxStatistics() {
    if (m_statsFont == -1 || !g_gfx) return;
    const int h = g_gfx->getFontHeight(m_statsFont);
    const gfxStatistics_s* stats = g_gfx->getStatistics();
    if (!m_statsEnabled || !stats) {
        printLine(m_statsFont, 0, " ");
        return;
    }
    printLine(m_statsFont, 0, "FPS:   %0.2f", static_cast<double>(stats->fps));
    printLine(m_statsFont, h, "TMEM:  %d", stats->tmem);
    printLine(m_statsFont, 2 * h, "CMEM:  %d", stats->cmem);
    printLine(m_statsFont, 3 * h, "MXMEM: %d", stats->mxmem);
    printLine(m_statsFont, 4 * h, "BLT:   %d", stats->blt);
    printLine(m_statsFont, 5 * h, "TEXT:  %d", stats->text);
    printLine(m_statsFont, 6 * h, "PSYS:  %d", stats->psys);
    printLine(m_statsFont, 7 * h, "TOTAL: %d", stats->total);
}
