// uiSprite: plays one animation of its sprite, a frame per `rate` milliseconds, once or in a loop,
// optionally after a start delay. A stopped animation is drawn on its current frame, or not at all when
// `clear` is set (the default: a new sprite widget is invisible until its animation starts). It never
// takes input.
//
// Description keys (besides those of uiVisualWidget):
//   rate = unsigned        milliseconds a frame lasts, exclusive (default 1000)
//   loop = BOOLEAN         restart at frame 0 after the last frame
//   animate = BOOLEAN      the animation runs, from the "frame" key's frame
//   clear = BOOLEAN        draw nothing while the animation is stopped (default true)
#pragma once
#include "uivisualwidget.h"

class UI_API uiSprite : public uiVisualWidget {
    UI_DECLARE_WIDGET(uiSprite)

public:
    // Starts the current animation again at `frame`, after `delay` ms.
    void reset(bool loop, int frame, unsigned int delay);
    // Switches to animation `anim` and starts it at frame 0.
    void setAnim(int anim, bool loop, bool clear, unsigned int delay);
    using uiVisualWidget::setAnim;
    void loop(bool on) { looping = on; }
    // Stops (or resumes from the current frame) and says whether a stopped animation is drawn.
    void disable(bool stop, bool clear);

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _update(int x, int y) override;
    void _render(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;

public:
    // Fields, in declared order.
    unsigned int rate = 1000;
    bool looping = false;
    bool animate = false;
    unsigned int animTime = 0;
    unsigned int delay = 0;
    bool clear = true;
};
