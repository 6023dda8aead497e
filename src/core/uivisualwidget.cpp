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

void uiVisualWidget::_parseParams(Parser* parser, char* key) {
    if (ui::equalNoCase(key, "sprite")) {
        const char* value = ui::nameAfterEquals(parser, "sprite = \"val\"");
        if (value && !setSprite(value, anim, frame, false))
            Logger::log(2, "...failed to create sprite: %s for %s\f", value, name);
        return;
    }
    if (parser->ParamEqualsInt32(key, "anim", &anim)) return;
    if (parser->ParamEqualsInt32(key, "frame", &frame)) {
        if (spriteId != -1 && g_gfx && frame >= g_gfx->getSpriteFrameCount(spriteId, anim))
            Logger::log(2, "...frame is out of animation bounds.\f");
        return;
    }
    int value = alpha; // a malformed value leaves the opacity as it is
    if (parser->ParamEqualsInt32(key, "alpha", &value)) {
        setAlpha(static_cast<unsigned char>(value), 0, 0, false);
        return;
    }
    // At most 256 rows and columns: a slip of the finger must not make one widget draw millions of
    // sprites a frame. A count of 0 or less draws nothing.
    constexpr int kMaxTiles = 256;
    if (parser->ParamEqualsInt32(key, "tilevertcount", &tileVertCount)) {
        tileVertCount = ui::inRange(parser, "tilevertcount", tileVertCount, INT_MIN, kMaxTiles);
        return;
    }
    if (parser->ParamEqualsInt32(key, "tilehorzcount", &tileHorzCount)) {
        tileHorzCount = ui::inRange(parser, "tilehorzcount", tileHorzCount, INT_MIN, kMaxTiles);
        return;
    }
    uiWidget::_parseParams(parser, key);
}

// ---- sprite -----------------------------------------------------------------------------------------

void uiVisualWidget::releaseSprite() {
    _releaseSprite(spriteId);
    spriteId = -1;
}

bool uiVisualWidget::setSprite(const char* spriteFile, int spriteAnim, int spriteFrame, bool activate) {
    ui::copyName(spriteName, spriteFile);
    anim = spriteAnim;
    frame = spriteFrame;
    releaseSprite();
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
    if (s_dynamicLoading) releaseSprite();
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
