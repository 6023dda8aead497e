// uiRadioButton: a button that stands for a value of its radio group. Releasing the mouse button over it
// sets the value of the nearest enclosing uiRadioGroup, which selects it and deselects its siblings,
// before the button's own click handling runs. It draws a selected button like a pressed one, and with
// UIB_DONTDRAWIDLE an idle, unselected, enabled button is not drawn at all.
//
// Description keys (besides those of uiButton):
//   value = int                 the value this button stands for (-1)
#pragma once
#include "uibutton.h"

class UI_API uiRadioButton : public uiButton {
    UI_DECLARE_WIDGET(uiRadioButton)

public:
    uiRadioButton() = default;
    ~uiRadioButton() override = default;

    // The value the button stands for in its group.
    int getValue() const { return value; }
    void setValue(int v) { value = v; }
    // Changes this button only; uiRadioGroup::setValue keeps a group consistent.
    void select(bool on) { selected = on; }
    bool isSelected() const { return selected; }

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _render(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;

    int value = -1;        // as getValue
    bool selected = false; // as isSelected
};
