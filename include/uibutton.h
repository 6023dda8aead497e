// uiButton: the clickable control. It draws one sprite whose animation follows its state (idle, hover,
// pressed, disabled), plays a highlight sound when the pointer comes over it and a click sound when a
// click completes, restarts an optional particle system on every click and draws it over itself, and can
// be clicked from the keyboard with a hotkey. A completed click (press and release on the button) reaches
// the game through mouseUpCb; a release that ends no press is consumed without a callback. The button is
// enabled while its WF_INPUT_FOCUS bit is set.
//
// Description keys (besides those of uiVisualWidget and uiWidget):
//   rate = unsigned             milliseconds per animation frame (1000)
//   hotkey = NAME               KEY_SPACE, KEY_BACKSPACE, KEY_ESCAPE, KEY_ENTER, KEY_F1 .. KEY_F10;
//                               releasing the key clicks the button
//   particlesystem = file       particle system started or restarted by every click
//   clicksound = name           sound of a completed click ("click" unless setDefaultSounds says else)
//   highlightsound = name       sound when the pointer comes over the button ("highlight")
// Flags (in "flags = ..."):
//   UIB_HOVER                   the sprite has a hover animation (anim + 1)
//   UIB_PRESSED                 the sprite has a pressed animation (anim + 2)
//   UIB_DONTDRAWIDLE            three-animation layout: idle and hover share anim, pressed is anim + 1,
//                               disabled anim + 2 (without it disabled is anim + 3)
#pragma once
#include "uivisualwidget.h"

enum : unsigned int { UIB_PRESSED = 0x10000, UIB_HOVER = 0x20000, UIB_DONTDRAWIDLE = 0x40000 };

class UI_API uiButton : public uiVisualWidget {
    UI_DECLARE_WIDGET(uiButton)
    friend struct ui::FrameWalk;

public:
    uiButton();
    ~uiButton() override;

    // Sounds of buttons constructed from now on; the strings are kept by pointer, not copied.
    static void setDefaultSounds(const char* click, const char* highlight);
    void setClickSound(const char* sound);
    void setHighlightSound(const char* sound);
    void setParticleSystem(const char* file); // recorded only; the next click creates the instance

    // Creates the particle system instance, or restarts the one that runs.
    void resetPsys();
    bool isHovering() const { return hovering; }

    // enable() sets WF_INPUT_FOCUS without hooks or veto; disable() also ends hover and press and takes
    // the button off the top of the input-focus stack.
    void enable();
    void disable();

    int getButtonWidth() const;  // of the sprite; 0 without one
    int getButtonHeight() const; // of the sprite; 0 without one
    bool testBounds(int x, int y) override;

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _parseSingleFlag(const char* name) override;
    void _update(int x, int y) override;
    void _render(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;
    void _deactivate() override;
    void _loseFocus() override;

    virtual void _parseHotkey(const char* name); // a KEY_ name of the description into hotkey
    // The animation for the current state; a change restarts the animation at frame 0.
    virtual int _getButtonAnim();
    virtual void _resetHover(bool on);

    // The animation of a state, by the layout of the flags. With `drawIdle` false the three-animation
    // layout leaves the idle state undrawn (-1).
    int _stateAnim(bool pressedLook, bool drawIdle) const;
    void _playSound(const char* sound) const;
    // Pushes the button on the input-focus stack for the rest of a gesture; _leaveFocusStack pops it
    // when it is on top.
    void _enterFocusStack();
    void _leaveFocusStack();

    // The button's state: pressed, the frame of the last click, hovered, its hotkey, its particle system
    // (instance and file), its sounds, its animation clock, frame rate and last animation.
    bool pressed = false;
    unsigned long long lastClickTick = 0ULL - 20; // far enough back that the first press counts
    bool hovering = false;
    int hotkey = -1;
    int psysInstance = -1;
    char psysName[128] = {};
    char clickSound[128] = {};
    char highlightSound[128] = {};
    unsigned int animTime = 0;
    unsigned int rate = 1000;
    int lastAnim = -1;
    // The button pushed itself and has not seen itself popped: only then does its destructor look at the
    // stack, so that trees deleted on a loading thread never wait for the subsystem lock.
    bool pushedFocus = false;

    // The sounds of buttons that name none.
    static const char* s_clickDefault;
    static const char* s_highlightDefault;
};
