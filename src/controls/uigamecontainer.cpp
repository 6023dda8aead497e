// uiGameContainer: pausing freezes the subtree's update; drawing and input are untouched.
#include "uigamecontainer.h"

namespace {
constexpr unsigned int kPauseFadeMs = 500;
}

UI_DEFINE_WIDGET(uiGameContainer, uiNonVisualWidget, "uigamecontainer.h")

// ---- state ------------------------------------------------------------------------------------------

void uiGameContainer::setPaused(bool p) {
    if (p && !paused)
        setAlpha(0, kPauseFadeMs, 0, true);
    else if (!p && paused)
        setAlpha(255, kPauseFadeMs, 0, true);
    paused = p;
}

// A paused container keeps its children dimmed: an ancestor's immediate "show fully" does not reach
// them, while fades (its own resume fade included) and fades to 0 do.
void uiGameContainer::setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse) {
    if (paused && alpha != 0 && time == 0 && delay == 0 && recurse) return;
    uiWidget::setAlpha(alpha, time, delay, recurse);
}

// ---- frame ------------------------------------------------------------------------------------------

void uiGameContainer::update(int x, int y) {
    if (!paused) uiWidget::update(x, y);
}
