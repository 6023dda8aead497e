// What a player has done to a screen, read off one tree and given to its rebuilt copy by widget path:
// the pushed dialogs, the values of sliders, toggles, radio groups, progress bars and entry fields, the
// input-focus widget and each dialog's tab position.
#pragma once
#include <string>
#include <vector>
#include "uiwidget.h"

class uiSubsystem;

namespace devtools {

class ScreenState {
public:
    void capture(uiWidget* root, uiSubsystem& ui);
    // Makes `root` the screen in place of the captured one: its dialogs pushed at once (the old ones
    // hidden), values, focus and tab positions as captured. The captured tree is left alone otherwise.
    void restore(uiWidget* root, uiWidget* old, uiSubsystem& ui) const;

private:
    struct Value {
        std::string path;
        std::string type;
        float number;
        std::vector<unsigned int> text; // entry fields
    };
    struct Dialog {
        std::string path;
        std::vector<std::string> focused; // widgets below it holding input focus: its tab position
    };

    std::vector<Dialog> m_dialogs; // bottom of the stack first
    std::vector<Value> m_values;
    std::string m_focus; // the input-focus widget, when it is in the tree
};

} // namespace devtools
