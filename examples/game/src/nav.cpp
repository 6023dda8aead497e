#include "nav.h"
#include <algorithm>
#include <vector>
#include "host.h"
#include "uidialog.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace {

struct Target {
    uiWidget* widget;
    int x, y, w, h; // on screen
    bool contains(int px, int py) const { return px >= x && px < x + w && py >= y && py < y + h; }
};

// The buttons that take input now, below `w` but not inside another dialog; whether an entry field is
// among them (it keeps Tab and Enter).
void collect(uiWidget* w, uiWidget* scope, std::vector<Target>& out, bool& entry) {
    if (w != scope && w->isType("uiDialog")) return;
    entry |= w->isType("uiEntryWidget") && w->getVisible();
    if (w->isType("uiButton") && w->getVisible() && w->getInputFocus()) {
        int bx, by;
        w->getBasisCoords(&bx, &by);
        out.push_back(Target{w, bx + w->rect.x, by + w->rect.y, w->getWidth(), w->getHeight()});
    }
    for (const _WidgetList_s* node = w->getChildren(); node; node = node->next)
        collect(node->widget, scope, out, entry);
}

} // namespace

uiWidget* Nav::s_scope(uiSubsystem& ui) {
    if (uiDialog* top = ui.topDialog()) return top;
    return ui.getTopLevelWidget();
}

bool Nav::key(uiSubsystem& ui, int key) {
    uiWidget* scope = s_scope(ui);
    if (!scope) return false;
    std::vector<Target> targets;
    bool entry = false;
    collect(scope, scope, targets, entry);
    if (entry && (key == KEY_TAB || key == KEY_ENTER)) return false;
    // Reading order: rows from the top, then left to right.
    std::sort(targets.begin(), targets.end(), [](const Target& a, const Target& b) {
        return std::make_pair((a.y + a.h / 2) / 24, a.x) < std::make_pair((b.y + b.h / 2) / 24, b.x);
    });
    const int px = ui.getMousePositionX(), py = ui.getMousePositionY();
    const auto at =
        std::find_if(targets.begin(), targets.end(), [&](const Target& t) { return t.contains(px, py); });
    const bool onSlider = at != targets.end() && at->widget->isType("uiSliderButton");
    if (key == KEY_ENTER) {
        if (at == targets.end()) return false;
        ui.inputEvent(UIE_MOUSE_DOWN, px, py, 0);
        ui.inputEvent(UIE_MOUSE_UP, px, py, 0);
        return true;
    }
    if (onSlider && (key == KEY_LEFT || key == KEY_RIGHT)) {
        const int step = key == KEY_LEFT ? -20 : 20;
        ui.inputEvent(UIE_MOUSE_DOWN, px, py, 0);
        ui.inputEvent(UIE_MOUSE_MOVE, px + step, py, 0);
        ui.inputEvent(UIE_MOUSE_UP, px + step, py, 0);
        ui.inputEvent(UIE_MOUSE_MOVE, px + step, py, 0);
        return true;
    }
    const bool forward = key == KEY_RIGHT || key == KEY_DOWN || key == KEY_TAB;
    if (!forward && key != KEY_LEFT && key != KEY_UP) return false;
    if (targets.empty()) return true;
    const int count = static_cast<int>(targets.size());
    int index = at == targets.end() ? (forward ? -1 : 0) : static_cast<int>(at - targets.begin());
    index = (index + (forward ? 1 : count - 1)) % count;
    const Target& t = targets[static_cast<size_t>(index)];
    ui.inputEvent(UIE_MOUSE_MOVE, t.x + t.w / 2, t.y + t.h / 2, 0);
    return true;
}
