// uiButton: animation by state, frame stepping, sounds, hotkeys, particle system and the click gesture.
#include "uibutton.h"
#include "core/uiexactclass.h"
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "parser.h"
#include "core/uidescvalue.h"
#include "soundsubsystem.h"
#include "uisubsystem.h"

namespace {

// A press this many frame counts after a click, or fewer, is the second half of a double click.
constexpr unsigned long long kClickGuardFrames = 5;

struct Hotkey {
    const char* name;
    int code;
};
// A hotkey's description name is the name of its key code.
#define UI_HOTKEY(key)                                                                                       \
    { #key, key }
constexpr Hotkey kHotkeys[] = {
    UI_HOTKEY(KEY_SPACE), UI_HOTKEY(KEY_BACKSPACE), UI_HOTKEY(KEY_ESCAPE), UI_HOTKEY(KEY_ENTER),
    UI_HOTKEY(KEY_F1),    UI_HOTKEY(KEY_F2),        UI_HOTKEY(KEY_F3),     UI_HOTKEY(KEY_F4),
    UI_HOTKEY(KEY_F5),    UI_HOTKEY(KEY_F6),        UI_HOTKEY(KEY_F7),     UI_HOTKEY(KEY_F8),
    UI_HOTKEY(KEY_F9),    UI_HOTKEY(KEY_F10),
};
#undef UI_HOTKEY

struct ButtonFlag {
    const char* name;
    unsigned int bit;
};
constexpr ButtonFlag kButtonFlags[] = {
    {"UIB_PRESSED", UIB_PRESSED}, {"UIB_HOVER", UIB_HOVER}, {"UIB_DONTDRAWIDLE", UIB_DONTDRAWIDLE}};

} // namespace

const char* uiButton::s_clickDefault = "click";
const char* uiButton::s_highlightDefault = "highlight";

UI_DEFINE_WIDGET(uiButton, uiVisualWidget, "uibutton.h")

uiButton::uiButton() {
    ui::g_exactButton.record(this);
    ui::copyName(clickSound, s_clickDefault);
    ui::copyName(highlightSound, s_highlightDefault);
}

// A button destroyed in the middle of a gesture would leave a dangling top entry on the focus stack.
uiButton::~uiButton() {
    if (pushedFocus) _leaveFocusStack();
}

void uiButton::setDefaultSounds(const char* click, const char* highlight) {
    s_clickDefault = click;
    s_highlightDefault = highlight;
}

void uiButton::setClickSound(const char* sound) {
    ui::copyName(clickSound, sound);
}

void uiButton::setHighlightSound(const char* sound) {
    ui::copyName(highlightSound, sound);
}

void uiButton::setParticleSystem(const char* file) {
    ui::copyName(psysName, file);
}

void uiButton::resetPsys() {
    if (!psysName[0] || !g_gfx) return;
    if (psysInstance == -1)
        psysInstance = g_gfx->createParticleSystemInstance(name, psysName);
    else
        g_gfx->addEvent(gfxSubsystem::kParticleRestartEvent, 0, psysInstance, 0, 0.0f, nullptr);
}

void uiButton::enable() {
    flags |= WF_INPUT_FOCUS;
}

void uiButton::disable() {
    flags &= ~WF_INPUT_FOCUS;
    _loseFocus();
    _leaveFocusStack();
}

int uiButton::getButtonWidth() const {
    return spriteId != -1 && g_gfx ? g_gfx->getSpriteWidth(spriteId) : 0;
}

int uiButton::getButtonHeight() const {
    return spriteId != -1 && g_gfx ? g_gfx->getSpriteHeight(spriteId) : 0;
}

bool uiButton::testBounds(int x, int y) {
    const int a = _getButtonAnim();
    if ((flags & WF_ALPHA_TEST) && spriteId != -1)
        return g_gfx && g_gfx->alphaTestSprite(spriteId, a, frame, x - rect.x, y - rect.y);
    return uiWidget::testBounds(x, y);
}

void uiButton::_playSound(const char* sound) const {
    if (g_sound) g_sound->playSound(SOUND_TYPE_UI, sound, false, false);
}

void uiButton::_enterFocusStack() {
    if (!g_ui) return;
    g_ui->pushInputFocusWidget(this);
    pushedFocus = true;
}

void uiButton::_leaveFocusStack() {
    if (!g_ui || g_ui->getInputFocusWidget() != this) return;
    g_ui->popInputFocusWidget();
    pushedFocus = false;
}

// ---- description keys -------------------------------------------------------------------------------

void uiButton::_parseParams(Parser* parser, char* key) {
    if (parser->ParamEqualsUInt32(key, "rate", &rate)) return;
    if (ui::equalNoCase(key, "hotkey")) {
        if (const char* value = ui::nameAfterEquals(parser, "hotkey = \"val\"")) _parseHotkey(value);
    } else if (ui::equalNoCase(key, "particlesystem")) {
        if (const char* value = ui::nameAfterEquals(parser, "particlesystem = \"string\""))
            setParticleSystem(value);
    } else if (ui::equalNoCase(key, "clicksound")) {
        if (const char* value = ui::nameAfterEquals(parser, "clicksound = \"string\"")) setClickSound(value);
    } else if (ui::equalNoCase(key, "highlightsound")) {
        if (const char* value = ui::nameAfterEquals(parser, "highlightsound = \"string\""))
            setHighlightSound(value);
    } else {
        uiVisualWidget::_parseParams(parser, key);
    }
}

void uiButton::_parseSingleFlag(const char* flagName) {
    for (const ButtonFlag& flag : kButtonFlags)
        if (ui::equalNoCase(flagName, flag.name)) {
            flags |= flag.bit;
            return;
        }
    uiVisualWidget::_parseSingleFlag(flagName);
}

void uiButton::_parseHotkey(const char* keyName) {
    for (const Hotkey& key : kHotkeys)
        if (ui::equalNoCase(keyName, key.name)) {
            hotkey = key.code;
            return;
        }
    Logger::log(Logger::kError, "...unknown hotkey: \"^C00FF00%s^c\"\f", keyName);
}

// ---- state hooks ------------------------------------------------------------------------------------

int uiButton::_stateAnim(bool pressedLook, bool drawIdle) const {
    const bool threeAnims = (flags & UIB_DONTDRAWIDLE) != 0;
    if (!(flags & WF_INPUT_FOCUS)) return anim + (threeAnims ? 2 : 3);
    if (pressedLook && (flags & UIB_PRESSED)) return anim + (threeAnims ? 1 : 2);
    if (hovering && (flags & UIB_HOVER)) return threeAnims ? anim : anim + 1;
    return threeAnims && !drawIdle ? -1 : anim;
}

int uiButton::_getButtonAnim() {
    const int a = _stateAnim(pressed, true);
    if (a != lastAnim) {
        frame = 0;
        animTime = 0;
        lastAnim = a;
    }
    return a;
}

void uiButton::_resetHover(bool on) {
    if (on) _playSound(highlightSound);
    hovering = on;
}

void uiButton::_loseFocus() {
    _resetHover(false);
    pressed = false;
}

void uiButton::_deactivate() {
    uiVisualWidget::_deactivate();
    hovering = false;
    pressed = false;
}

// ---- frame ------------------------------------------------------------------------------------------

void uiButton::_update(int x, int y) {
    uiVisualWidget::_update(x, y);
    if (spriteId == -1) return;

    animTime += s_iDeltaTime;
    if (animTime > rate) {
        if (rate != 0) {
            frame += static_cast<int>(animTime / rate);
            animTime %= rate;
        }
        // An animation without frames (or a missing graphics service) holds the first frame.
        const int a = _getButtonAnim();
        const int count = g_gfx ? g_gfx->getSpriteFrameCount(spriteId, a) : 0;
        frame = count > 0 ? frame % count : 0;
    }

    if (psysInstance == -1 || !g_gfx) return;
    const int cx = x + rect.x + g_gfx->getSpriteWidth(spriteId) / 2;
    const int cy = y + rect.y + g_gfx->getSpriteHeight(spriteId) / 2;
    g_gfx->updateParticleSystem(psysInstance, cx, cy, s_fDeltaTime);
    if (g_gfx->particleSystemInstanceIsDead(psysInstance)) {
        g_gfx->releaseParticleSystemInstance(name);
        psysInstance = -1;
    }
}

void uiButton::_render(int x, int y) {
    const int a = _getButtonAnim();
    if (spriteId == -1 || !g_gfx) return;
    g_gfx->blt(depth, spriteId, x + rect.x, y + rect.y, a, frame, alpha);
    if (psysInstance != -1) g_gfx->psemit(depth, psysInstance, 1.0f);
}

// ---- input ------------------------------------------------------------------------------------------

bool uiButton::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    if (kind == UIE_MOUSE_UP) {
        _leaveFocusStack();
    } else if (kind == UIE_KEY_UP && hotkey != -1 && key == hotkey) {
        // The hotkey clicks at the button's corner, wherever the pointer is.
        x = rect.x;
        y = rect.y;
        pressed = true;
        kind = UIE_MOUSE_UP;
    }

    if (!testBounds(x, y)) {
        if (hovering) _resetHover(false);
        pressed = false;
        return false;
    }
    if (!hovering) _resetHover(true);
    if (handled) {
        pressed = false;
        return false;
    }

    if (kind == UIE_MOUSE_DOWN) {
        if (s_frameNumber - lastClickTick <= kClickGuardFrames) return true;
        pressed = true;
        _enterFocusStack(); // the rest of the gesture comes here first
    } else if (kind == UIE_MOUSE_UP) {
        if (!pressed) return true;
        pressed = false;
        resetPsys();
        _playSound(clickSound);
        lastClickTick = s_frameNumber;
    }
    return uiWidget::_inputEvent(kind, x, y, key, buttonDown, false);
}
