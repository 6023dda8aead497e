// uiVisualWidget: lazy sprite, timed alpha fade, tiled and sorted drawing, alpha-tested hit test.
#include "uivisualwidget.h"
#include "core/uialphafade.h"
#include "core/uidescvalue.h"
#include "core/uinumeric.h"
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "parser.h"

UI_DEFINE_WIDGET(uiVisualWidget, uiWidget, "uivisualwidget.h")

uiVisualWidget::uiVisualWidget() = default;

uiVisualWidget::~uiVisualWidget() {
    _releaseSprite(spriteId);
}

// ---- description keys -------------------------------------------------------------------------------

namespace {

// A widget draws at most this many tiles (rows times columns): more than a 1-pixel strip across any
// screen needs, while a slip of the finger cannot make one widget draw millions of sprites a frame.
constexpr int kMaxTiles = 16384;

// Reads a tile count into *count, brought down so that with the `other` count the widget stays within
// kMaxTiles, with a warning naming the line. A count of 0 or less draws nothing and is kept.
bool tileCount(Parser* parser, const char* key, const char* name, int* count, int other) {
    if (!parser->ParamEqualsInt32(key, name, count)) return false;
    const int most = kMaxTiles / (other > 1 ? other : 1);
    if (*count > most) {
        Logger::log(Logger::kWarning, "...line %d: %s = %d makes more than %d tiles, %d used\f",
                    parser->GetLineNumber(), name, *count, kMaxTiles, most);
        *count = most;
    }
    return true;
}

} // namespace

void uiVisualWidget::_parseParams(Parser* parser, char* key) {
    if (ui::equalNoCase(key, "sprite")) {
        const char* value = ui::nameAfterEquals(parser, "sprite = \"val\"");
        if (value && !setSprite(value, anim, frame, false))
            Logger::log(Logger::kError, "...failed to create sprite: %s for %s\f", value, name);
        return;
    }
    if (parser->ParamEqualsInt32(key, "anim", &anim)) return;
    if (parser->ParamEqualsInt32(key, "frame", &frame)) {
        if (spriteId != -1 && g_gfx && frame >= g_gfx->getSpriteFrameCount(spriteId, anim))
            Logger::log(Logger::kError, "...frame is out of animation bounds.\f");
        return;
    }
    int value = alpha; // a malformed value leaves the opacity as it is
    if (parser->ParamEqualsInt32(key, "alpha", &value)) {
        setAlpha(static_cast<unsigned char>(value), 0, 0, false);
        return;
    }
    if (tileCount(parser, key, "tilevertcount", &tileVertCount, tileHorzCount) ||
        tileCount(parser, key, "tilehorzcount", &tileHorzCount, tileVertCount))
        return;
    uiWidget::_parseParams(parser, key);
}

// ---- sprite -----------------------------------------------------------------------------------------

void uiVisualWidget::_dropSprite() {
    _releaseSprite(spriteId);
    spriteId = -1;
}

void uiVisualWidget::releaseSprite() {
    _dropSprite();
}

bool uiVisualWidget::setSprite(const char* spriteFile, int spriteAnim, int spriteFrame, bool activate) {
    ui::copyName(spriteName, spriteFile);
    anim = spriteAnim;
    frame = spriteFrame;
    _dropSprite();
    if (activate) _activate();
    return true;
}

void uiVisualWidget::setAnim(int a) {
    anim = a;
}
void uiVisualWidget::setFrame(int f) {
    frame = f;
}
int uiVisualWidget::getFrame() {
    return frame;
}
int uiVisualWidget::getSpriteId() {
    return spriteId;
}
unsigned char uiVisualWidget::getAlpha() {
    return alpha;
}

// ---- state hooks ------------------------------------------------------------------------------------

void uiVisualWidget::_activate() {
    if (spriteId != -1 || spriteName[0] == '\0' || !g_gfx) return;
    spriteId = g_gfx->createSprite(spriteName);
    if (spriteId == -1) return; // drawn as nothing; the game's art pipeline reports missing sprites
    if (flags & WF_ALPHA_TEST) g_gfx->setupAlphaTestSprite(spriteId);
    if (rect.x2 == 0 && rect.y2 == 0) {
        rect.x2 = ui::clampCoord(static_cast<long long>(rect.x) + g_gfx->getSpriteWidth(spriteId));
        rect.y2 = ui::clampCoord(static_cast<long long>(rect.y) + g_gfx->getSpriteHeight(spriteId));
    }
}

void uiVisualWidget::_deactivate() {
    if (s_dynamicLoading) _dropSprite();
}

// ---- alpha ------------------------------------------------------------------------------------------

void uiVisualWidget::setAlpha(unsigned char value, unsigned int time, unsigned int delay, bool recurse) {
    if (flags & WF_IGNORE_ALPHA) return;
    ui::startAlphaFade(*this, value, time, delay);
    uiWidget::setAlpha(value, time, delay, recurse);
}

void uiVisualWidget::_lerpToTargetAlpha(unsigned int milliseconds) {
    ui::stepAlphaFade(*this, milliseconds);
}

// ---- frame ------------------------------------------------------------------------------------------

void uiVisualWidget::_update(int x, int y) {
    _lerpToTargetAlpha(s_iDeltaTime);
}

void uiVisualWidget::_render(int x, int y) {
    if (spriteId == -1 || alpha == 0 || !g_gfx) return;
    const int left = x + rect.x, top = y + rect.y;
    const bool tiled = tileVertCount != 1 || tileHorzCount != 1;
    const int w = tiled ? ui::clampCoord(g_gfx->getSpriteWidth(spriteId)) : 0;
    const int h = tiled ? ui::clampCoord(g_gfx->getSpriteHeight(spriteId)) : 0;
    for (int row = 0; row < tileVertCount; ++row)
        for (int col = 0; col < tileHorzCount; ++col) {
            const int px = left + col * w, py = top + row * h;
            if (sortLevel != -1)
                g_gfx->bltSort(depth, sortLevel, spriteId, px, py, anim, frame, alpha);
            else
                g_gfx->blt(depth, spriteId, px, py, anim, frame, alpha);
        }
}

// ---- input ------------------------------------------------------------------------------------------

bool uiVisualWidget::testBounds(int x, int y) {
    if ((flags & WF_ALPHA_TEST) && spriteId != -1 && g_gfx)
        return g_gfx->alphaTestSprite(spriteId, anim, frame, x - rect.x, y - rect.y);
    return uiWidget::testBounds(x, y);
}

bool uiVisualWidget::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    return false;
}
