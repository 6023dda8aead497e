// uiInputHandler: an invisible rectangle that delivers the six input callbacks (reached by its type
// name "uiInputHandler"; no public header).
#pragma once
#include "uinonvisualwidget.h"

class uiInputHandler : public uiNonVisualWidget {
    UI_DECLARE_WIDGET(uiInputHandler)

protected:
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override {
        return uiWidget::_inputEvent(kind, x, y, key, buttonDown, handled);
    }
};
