#include "focus.h"

namespace testkit {

std::string tabOrder(uiWidget* dialog, const std::vector<uiWidget*>& widgets, int tabs) {
    std::string names;
    for (int i = 0; i <= tabs; ++i) {
        if (i > 0 && !dialog->inputEvent(UIE_KEY_DOWN, 0, 0, KEY_TAB, false, false))
            names += "(tab not taken)";
        for (const uiWidget* w : widgets)
            if (w->getInputFocus()) names += w->name;
    }
    return names;
}

std::vector<uiWidget*> popFocusStack(uiSubsystem& ui, const uiWidget* bottom) {
    std::vector<uiWidget*> entries;
    for (int i = 0; i < 64 && ui.getInputFocusWidget() != bottom; ++i) {
        entries.push_back(ui.getInputFocusWidget());
        ui.popInputFocusWidget();
    }
    return entries;
}

} // namespace testkit
