#include "screenstate.h"
#include "uidialog.h"
#include "uientrywidget.h"
#include "uiprogressbar.h"
#include "uiradiogroup.h"
#include "uisliderbutton.h"
#include "uisubsystem.h"
#include "uitogglebutton.h"
#include "widgetinfo.h"

namespace devtools {
namespace {

constexpr int kTabKey = 9;

// The types whose value carries over, most derived first.
constexpr const char* kValueTypes[] = {"uiEntryWidget", "uiSliderButton", "uiToggleButton", "uiRadioGroup",
                                       "uiProgressBar"};

std::vector<std::string> focusedBelow(uiWidget* dialog) {
    std::vector<std::string> out;
    walk(dialog, [&](uiWidget* w, int depth) {
        if (depth > 0 && w->getInputFocus()) out.push_back(widgetPath(w));
    });
    return out;
}

std::string utf8(const unsigned int* codes) {
    std::string out;
    for (; *codes; ++codes) {
        const unsigned int c = *codes;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | ((c >> 12) & 0x0F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

void setValue(uiWidget* w, const std::string& type, float number, const std::vector<unsigned int>& text) {
    if (type == "uiEntryWidget") {
        auto* entry = static_cast<uiEntryWidget*>(w);
        entry->print(entry->set, "%s", utf8(text.data()).c_str());
        entry->accepted = number != 0.0f;
    } else if (type == "uiSliderButton") {
        static_cast<uiSliderButton*>(w)->setValue(number);
    } else if (type == "uiToggleButton") {
        static_cast<uiToggleButton*>(w)->setToggle(number != 0.0f);
    } else if (type == "uiRadioGroup") {
        static_cast<uiRadioGroup*>(w)->setValue(static_cast<int>(number));
    } else {
        static_cast<uiProgressBar*>(w)->setValue(static_cast<int>(number), true);
    }
}

// Tabs through the dialog until the widgets holding input focus are those captured; a full turn that
// never gets there leaves it where it started.
void restoreTab(uiDialog* d, const std::vector<std::string>& focused) {
    const std::vector<std::string> start = focusedBelow(d);
    std::vector<std::string> now = start;
    for (int turns = 0; now != focused && turns < 256; ++turns) {
        d->inputEvent(UIE_KEY_DOWN, 0, 0, kTabKey, false, false);
        now = focusedBelow(d);
        if (now == start) return;
    }
}

} // namespace

void ScreenState::capture(uiWidget* root, uiSubsystem& ui) {
    std::vector<Dialog> pushed;
    uiDialog* top = ui.topDialog();
    Dialog topEntry;
    walk(root, [&](uiWidget* w, int) {
        for (const char* type : kValueTypes)
            if (w->isType(type)) {
                Value v{widgetPath(w), type, 0.0f, {}};
                if (v.type == "uiEntryWidget") {
                    auto* entry = static_cast<uiEntryWidget*>(w);
                    for (const unsigned int* c = entry->getText(); *c; ++c)
                        v.text.push_back(*c);
                    v.text.push_back(0);
                    v.number = entry->isAccepted() ? 1.0f : 0.0f;
                } else if (v.type == "uiSliderButton") {
                    v.number = static_cast<uiSliderButton*>(w)->getValue();
                } else if (v.type == "uiToggleButton") {
                    v.number = static_cast<uiToggleButton*>(w)->getToggle() ? 1.0f : 0.0f;
                } else if (v.type == "uiRadioGroup") {
                    v.number = static_cast<float>(static_cast<uiRadioGroup*>(w)->getValue());
                } else {
                    v.number = static_cast<float>(static_cast<uiProgressBar*>(w)->value);
                }
                m_values.push_back(std::move(v));
                break;
            }
        if (!w->isType("uiDialog")) return;
        auto* d = static_cast<uiDialog*>(w);
        if (!ui.isDialogPushed(d)) return;
        Dialog entry{widgetPath(w), focusedBelow(w)};
        if (d == top)
            topEntry = std::move(entry);
        else
            pushed.push_back(std::move(entry));
    });
    // Only the top of the stack can be asked for: the others are taken outer dialogs first, as a screen
    // pushes them.
    if (!topEntry.path.empty()) pushed.push_back(std::move(topEntry));
    m_dialogs = std::move(pushed);
    uiWidget* focus = ui.getInputFocusWidget();
    m_focus = focus && isWithin(focus, root) ? widgetPath(focus) : std::string();
}

void ScreenState::restore(uiWidget* root, uiWidget* old, uiSubsystem& ui) const {
    ui.clearPendingDialogs();
    for (uiWidget* w = ui.getInputFocusWidget(); w && isWithin(w, old); w = ui.getInputFocusWidget())
        ui.popInputFocusWidget();
    ui.clearDialogStack(false);
    if (ui.getTopLevelWidget() == old) ui.setTopLevelWidget(root);
    std::vector<uiDialog*> dialogs;
    for (const Dialog& d : m_dialogs) {
        uiWidget* w = root->getWidget(d.path.c_str(), 0, false);
        dialogs.push_back(w && w->isType("uiDialog") ? static_cast<uiDialog*>(w) : nullptr);
        if (dialogs.back()) ui.pushDialog(dialogs.back(), false);
    }
    ui.update(0); // carries the stack commands out now, before the old tree goes
    for (const Value& v : m_values) {
        uiWidget* w = root->getWidget(v.path.c_str(), 0, false);
        if (w && w->isType(v.type.c_str())) setValue(w, v.type, v.number, v.text);
    }
    for (size_t i = 0; i < dialogs.size(); ++i)
        if (dialogs[i]) restoreTab(dialogs[i], m_dialogs[i].focused);
    uiWidget* focus = m_focus.empty() ? nullptr : root->getWidget(m_focus.c_str(), 0, false);
    if (focus && ui.getInputFocusWidget() != focus) ui.setInputFocusWidget(focus);
}

} // namespace devtools
