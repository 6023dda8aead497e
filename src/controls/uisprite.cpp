// uiSprite: frame-by-frame playback of one animation of the sprite.
#include "uisprite.h"
#include "gfxsubsystem.h"
#include "parser.h"

UI_DEFINE_WIDGET(uiSprite, uiVisualWidget, "uisprite.h")

// ---- description keys -------------------------------------------------------------------------------

void uiSprite::_parseParams(Parser* parser, char* key) {
    if (parser->ParamEqualsUInt32(key, "rate", &rate) || _parseBooleanKey(parser, key, "loop", &looping) ||
        _parseBooleanKey(parser, key, "animate", &animate) || _parseBooleanKey(parser, key, "clear", &clear))
        return;
    uiVisualWidget::_parseParams(parser, key);
}

// ---- playback ---------------------------------------------------------------------------------------

void uiSprite::reset(bool loopOn, int startFrame, unsigned int startDelay) {
    looping = loopOn;
    animTime = 0;
    frame = startFrame;
    animate = true;
    delay = startDelay;
}

void uiSprite::setAnim(int newAnim, bool loopOn, bool clearOn, unsigned int startDelay) {
    clear = clearOn;
    looping = loopOn;
    delay = startDelay;
    anim = newAnim;
    reset(loopOn, 0, startDelay);
}

void uiSprite::disable(bool stop, bool clearOn) {
    animate = !stop;
    clear = clearOn;
}

// ---- frame ------------------------------------------------------------------------------------------

// At most one frame step per update; the time beyond `rate` is dropped. A stopped animation freezes the
// alpha fade too.
void uiSprite::_update(int ox, int oy) {
    if (!animate || spriteId == -1) return;
    uiVisualWidget::_update(ox, oy);
    animTime += s_iDeltaTime;
    if (delay != 0) {
        if (animTime < delay) return;
        delay = 0;
        animTime = 0;
    }
    if (animTime <= rate) return;
    ++frame;
    animTime = 0;
    // An animation the graphics service reports as empty plays as a single frame.
    int count = g_gfx ? g_gfx->getSpriteFrameCount(spriteId, anim) : 0;
    if (count < 1) count = 1;
    if (frame < count) return;
    if (looping) {
        frame = 0;
    } else {
        frame = count - 1;
        animate = false;
    }
}

void uiSprite::_render(int ox, int oy) {
    if (!animate && clear) return;
    uiVisualWidget::_render(ox, oy);
}

bool uiSprite::_inputEvent(e_uiEvent, int, int, int, bool, bool) {
    return false;
}
