// The frame and input recursions, with direct calls for the library's plain containers and buttons.
#include "core/uiframewalk.h"
#include <type_traits>
#include "core/uiexactclass.h"
#include "uibutton.h"
#include "uinonvisualwidget.h"
#include "uisubsystem.h"

namespace ui {

ExactClass g_exactContainer;
ExactClass g_exactButton;

// A mouse event that an idle button without children ignores: uiButton::_inputEvent would re-choose the
// animation it already shows (idle: `anim`), find the point outside its rectangle, clear a hover and a
// press it does not have and return false. A release would first pop the
// input-focus stack if the button were on top, so releases pass by only other buttons; key events may be
// hotkeys and always take the full path.
inline bool FrameWalk::buttonPassedBy(const uiButton* b, e_uiEvent kind, int x, int y,
                                      const uiWidget* focusTop) {
    const unsigned int f = b->flags;
    if (!(f & WF_INPUT_FOCUS)) return true;
    // Absolute coordinates and alpha tests are rare: such buttons take the full path.
    if (f & (WF_ROOT_COORDS | WF_ALPHA_TEST)) return false;
    const _uiRect_s& r = b->rect;
    if (r.x <= x && x < r.x2 && r.y <= y && y < r.y2) return false;
    if (kind > UIE_MOUSE_UP || (kind == UIE_MOUSE_UP && b == focusTop)) return false;
    return !b->children && !b->globalInputFocus && !b->hovering && !b->pressed && b->lastAnim == b->anim;
}

// The top of the input-focus stack, which a button on top pops on a release.
static uiWidget* currentFocusTop(e_uiEvent kind) {
    return kind == UIE_MOUSE_UP && g_ui ? g_ui->getInputFocusWidget() : nullptr;
}

// Global input focus lists may lead back (a widget naming itself, an ancestor, or a widget whose list
// names it back). The record holds the widgets handing the current event on through their lists,
// innermost first, each entry in the frame of the call that hands it on: a widget met again while it is
// still handing the same event on does not hand it on once more, which ends every cycle. A widget reached
// along two paths hands the event on along both. An event sent from inside a hook (a callback turning a
// key into a click) is a new event with a record of its own.
namespace {
struct Forwarder {
    const uiWidget* widget;
    const Forwarder* outer;
};
thread_local const Forwarder* t_forwarding = nullptr;

bool forwarding(const uiWidget* w) {
    for (const Forwarder* f = t_forwarding; f; f = f->outer)
        if (f->widget == w) return true;
    return false;
}
} // namespace

template <FrameWalk::Pass P, class W> void FrameWalk::frame(W* w, int x, int y) {
    if (!(w->flags & (P == Pass::Update ? WF_ACTIVE : WF_VISIBLE))) return;
    if (w->flags & WF_ROOT_COORDS) x = y = 0;
    if constexpr (std::is_same_v<W, uiWidget>) {
        if constexpr (P == Pass::Update)
            w->_update(x, y);
        else
            w->_render(x, y);
    } else if constexpr (P == Pass::Update) {
        w->W::_update(x, y);
    } else {
        w->W::_render(x, y);
    }
    if (w->children) frameChildren<P>(w, x, y);
}

template <class W>
bool FrameWalk::input(W* w, e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    if (!(w->flags & WF_INPUT_FOCUS)) return handled;
    if ((w->flags & WF_ROOT_COORDS) && w->parent) {
        x += w->parent->rect.x;
        y += w->parent->rect.y;
    }
    const Forwarder* const outer = t_forwarding;
    t_forwarding = nullptr;
    bool r;
    if constexpr (std::is_same_v<W, uiWidget>)
        r = w->_inputEvent(kind, x, y, key, buttonDown, handled);
    else
        r = w->W::_inputEvent(kind, x, y, key, buttonDown, handled);
    t_forwarding = outer;
    if (!r && w->children) r = inputChildren(w, kind, x, y, key, buttonDown);
    if (!r && w->globalInputFocus) r = inputGlobalFocus(w, kind, x, y, key, buttonDown);
    return r;
}

// The child loops read the parent's rectangle for every child, as a child's hook may move its parent.
template <FrameWalk::Pass P> void FrameWalk::frameChildren(uiWidget* w, int x, int y) {
    for (_WidgetList_s* node = w->children; node; node = node->next) {
        uiWidget* c = node->widget;
        const int cx = x + w->rect.x, cy = y + w->rect.y;
        if (g_exactContainer.of(c))
            frame<P>(static_cast<uiNonVisualWidget*>(c), cx, cy);
        else if (g_exactButton.of(c))
            frame<P>(static_cast<uiButton*>(c), cx, cy);
        else if constexpr (P == Pass::Update)
            c->update(cx, cy);
        else
            c->render(cx, cy);
    }
}

bool FrameWalk::inputChildren(uiWidget* w, e_uiEvent kind, int x, int y, int key, bool buttonDown) {
    bool r = false;
    uiWidget* top =
        currentFocusTop(kind); // read again after any child that ran hooks, which may change the stack
    for (_WidgetList_s* node = w->children; node && !r; node = node->next) {
        uiWidget* c = node->widget;
        const int cx = x - w->rect.x, cy = y - w->rect.y;
        if (g_exactContainer.of(c)) {
            auto* container = static_cast<uiNonVisualWidget*>(c);
            r = input(container, kind, cx, cy, key, buttonDown, false);
            if (container->children || container->globalInputFocus) top = currentFocusTop(kind);
        } else if (g_exactButton.of(c)) {
            if (buttonPassedBy(static_cast<uiButton*>(c), kind, cx, cy, top)) continue;
            r = input(static_cast<uiButton*>(c), kind, cx, cy, key, buttonDown, false);
            top = currentFocusTop(kind);
        } else {
            r = c->inputEvent(kind, cx, cy, key, buttonDown, false);
            top = currentFocusTop(kind);
        }
    }
    return r;
}

// Global input focus widgets sit anywhere in the tree: each gets the absolute point in its own space.
bool FrameWalk::inputGlobalFocus(uiWidget* w, e_uiEvent kind, int x, int y, int key, bool buttonDown) {
    if (forwarding(w)) return false;
    const Forwarder self{w, t_forwarding};
    t_forwarding = &self;
    int bx, by;
    w->getBasisCoords(&bx, &by);
    const int ax = x + bx, ay = y + by;
    bool r = false;
    for (_WidgetNameList_s* entry = w->globalInputFocus; entry && !r; entry = entry->next) {
        if (!entry->widget) continue;
        entry->widget->getBasisCoords(&bx, &by);
        r = entry->widget->inputEvent(kind, ax - bx, ay - by, key, buttonDown, false);
    }
    t_forwarding = self.outer;
    return r;
}

} // namespace ui

void uiWidget::update(int x, int y) {
    ui::FrameWalk::frame<ui::FrameWalk::Pass::Update>(this, x, y);
}

void uiWidget::render(int x, int y) {
    ui::FrameWalk::frame<ui::FrameWalk::Pass::Render>(this, x, y);
}

bool uiWidget::inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    return ui::FrameWalk::input(this, kind, x, y, key, buttonDown, handled);
}
