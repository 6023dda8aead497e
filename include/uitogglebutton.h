// uiToggleButton: a button with a persistent on/off state. While on it draws its second sprite in place
// of the normal one, with the same animation choice as any button (hit tests and frame stepping keep
// using the normal sprite). The state flips whenever the button's input handling reports an event as
// consumed: for a click, when the game's mouseUpCb returns true.
//
// Description keys (besides those of uiButton):
//   sprite2 = file              the sprite drawn while on; created at the next activation
#pragma once
#include "uibutton.h"

class UI_API uiToggleButton : public uiButton {
    UI_DECLARE_WIDGET(uiToggleButton)

public:
    uiToggleButton() = default;
    ~uiToggleButton() override;

    // The sprite drawn while on, by name (created at the next activation), and the state: set, read,
    // flipped.
    virtual bool setSprite2(const char* file);
    virtual void setToggle(bool on);
    virtual bool getToggle() const;
    virtual void toggle();

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _activate() override;
    void _deactivate() override;
    void _render(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;

    // The state, the second sprite's handle and its name.
    int toggled = 0;
    int sprite2 = -1;
    char sprite2Name[128] = {};
};
