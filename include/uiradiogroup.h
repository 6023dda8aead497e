// uiRadioGroup: an invisible container whose value is that of its selected uiRadioButton. Radio buttons
// take part wherever they sit below the group, except inside a nested radio group, which keeps its own.
// The value lives only in the buttons' selected flags: -1 when none is selected.
//
// Description keys (besides those of uiWidget):
//   value = int                 selects the buttons with that value among the children read so far,
//                               so it belongs after the group's children
#pragma once
#include "uinonvisualwidget.h"

class UI_API uiRadioGroup : public uiNonVisualWidget {
    UI_DECLARE_WIDGET(uiRadioGroup)

public:
    uiRadioGroup() = default;
    ~uiRadioGroup() override = default;

    // The value of the first selected button in child order (depth first, newest child first).
    int getValue() const { return _getValue(this); }
    // Selects every button of the group with this value and deselects the others.
    void setValue(int value) { _setValue(this, value); }

protected:
    void _parseParams(Parser* parser, char* key) override;

    // Selects the radio buttons of `value` below `parent` (and no others); the value of the selected one
    // (-1: none). Nested groups are left alone.
    virtual void _setValue(const uiWidget* parent, int value);
    int _getValue(const uiWidget* parent) const;
};
