// uiNonVisualWidget: a pure container. It draws nothing, updates nothing and takes no input itself, so
// the input callbacks never fire on it; its children are updated, drawn and given input as usual.
// Dialogs, radio groups, flow layouts and game containers derive from it, and so may games.
#pragma once
#include "uiwidget.h"

class UI_API uiNonVisualWidget : public uiWidget {
    UI_DECLARE_WIDGET(uiNonVisualWidget)
    friend struct ui::FrameWalk;

public:
    uiNonVisualWidget();

protected:
    void _update(int x, int y) override {}
    void _render(int x, int y) override {}
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override {
        return false;
    }
};
