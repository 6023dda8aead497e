// uiSliderButton: a horizontal slider whose thumb is the button itself. The widget's rectangle moves
// along a track from minx to maxx (positions of the thumb's left edge, in the parent's space) while the
// user drags it; the value is 0 at the left end and 1 at the right end. While dragging, the game hears of
// each pointer move through mouseMoveCb and of the end of the drag through mouseUpCb, wherever the
// pointer is. The slider keeps the button's drawing, animation choice and hit test, but plays no sounds
// and has no hotkey, particle restart or double-click guard.
//
// Description keys (besides those of uiButton):
//   minx = int                  leftmost position of the thumb's left edge (0)
//   maxx = int                  rightmost position of the thumb's left edge (1); reading it activates the
//                               slider to learn the thumb's width, so it belongs after "sprite"
#pragma once
#include "uibutton.h"

class UI_API uiSliderButton : public uiButton {
    UI_DECLARE_WIDGET(uiSliderButton)

public:
    uiSliderButton() = default;
    ~uiSliderButton() override = default;

    // Not clamped: a thumb placed outside the track reads below 0 or above 1. A track without room for
    // the thumb reads 0.
    float getValue() const;
    void setValue(float value);

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _update(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;

    // Room of the thumb's centre along the track: positive unless the thumb cannot move.
    float _travel() const;

    int minX = 0;     // minx: leftmost x of the thumb
    int maxRight = 1; // rightmost position of the thumb's right edge
    int dragX = 0;    // pointer x that the thumb follows while dragging
    int dragY = 0;    // pointer y while dragging
    int maxX = 1;     // maxx: rightmost x of the thumb (its left edge)
};
