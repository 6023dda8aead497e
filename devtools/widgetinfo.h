// What the devtools read off a widget through its public interface: its dotted path, its rectangle on
// the screen, the names of its flag and state bits, and a walk over a tree.
#pragma once
#include <string>
#include "uiwidget.h"

namespace devtools {

// "root.child.leaf", the form uiWidget::getWidget takes.
std::string widgetPath(uiWidget* w);
// Whether `w` is `root` or below it.
bool isWithin(uiWidget* w, const uiWidget* root);
// The rectangle where the widget draws, in screen coordinates.
_uiRect_s screenRect(uiWidget* w);
// The set bits of the flag word by name ("active visible input-focus hover"), the type's own bits
// included; bits without a name as hexadecimal.
std::string flagNames(uiWidget* w);
// Calls fn(widget, depth) for `root` and every widget below it, parents before children, children in
// the order they draw.
template <class Fn> void walk(uiWidget* root, Fn&& fn, int depth = 0) {
    fn(root, depth);
    for (const _WidgetList_s* node = root->getChildren(); node; node = node->next)
        walk(node->widget, fn, depth + 1);
}

} // namespace devtools
