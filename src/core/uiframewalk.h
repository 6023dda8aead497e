// The frame and input recursions over a widget tree (uiWidget::update, render and inputEvent).
//
// A child whose class is exactly uiNonVisualWidget or uiButton (src/core/uiexactclass.h) is walked
// without virtual calls: the walk runs the same steps with the class's own hooks called directly, so a
// plain container costs a flag test and a button one direct call. A mouse event that passes an idle
// button by does not enter it at all. Every other child, a game's own classes included, is entered
// through its virtual operations.
#pragma once
#include "uiwidget.h"

class uiButton;

namespace ui {

struct FrameWalk {
    enum class Pass { Update, Render };

    // uiWidget::update or render (by P) and inputEvent of a widget of class W (uiWidget: any class,
    // hooks called through their virtual slots).
    template <Pass P, class W> static void frame(W* w, int x, int y);
    template <class W>
    static bool input(W* w, e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled);

private:
    static bool buttonPassedBy(const uiButton* b, e_uiEvent kind, int x, int y, const uiWidget* focusTop);
    template <Pass P> static void frameChildren(uiWidget* w, int x, int y);
    static bool inputChildren(uiWidget* w, e_uiEvent kind, int x, int y, int key, bool buttonDown);
    static bool inputGlobalFocus(uiWidget* w, e_uiEvent kind, int x, int y, int key, bool buttonDown);
};

} // namespace ui
