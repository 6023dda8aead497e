// uiSliderButton: the value from the thumb's place, the drag gesture and the thumb following the pointer.
#include "uisliderbutton.h"
#include <cmath>
#include "gfxsubsystem.h"
#include "parser.h"

namespace {

// Thumb positions stay far inside the int range, so that x + width cannot overflow either.
constexpr float kFarthest = 1e9f;

int truncToPosition(float v) {
    return static_cast<int>(std::fmax(-kFarthest, std::fmin(kFarthest, v)));
}

} // namespace

UI_DEFINE_WIDGET(uiSliderButton, uiButton, "uisliderbutton.h")

float uiSliderButton::_travel() const {
    const float half = (rect.x2 - rect.x) * 0.5f;
    return (maxRight - half) - (minX + half);
}

float uiSliderButton::getValue() const {
    const float travel = _travel();
    if (!(travel > 0.0f)) return 0.0f;
    return (travel - (maxRight - rect.x2)) / travel;
}

void uiSliderButton::setValue(float value) {
    if (std::isnan(value)) value = 0.0f;
    const int width = rect.x2 - rect.x;
    const int half = static_cast<int>(width * 0.5f);
    const float travel = _travel();
    rect.x = travel > 0.0f ? minX + truncToPosition(travel * value - half) + half : minX;
    rect.x2 = rect.x + width;
    if (!pressed) dragX = rect.x + half;
}

// ---- description keys -------------------------------------------------------------------------------

void uiSliderButton::_parseParams(Parser* parser, char* key) {
    if (parser->ParamEqualsInt32(key, "minx", &minX)) return;
    if (!parser->ParamEqualsInt32(key, "maxx", &maxX)) return uiButton::_parseParams(parser, key);
    // Activation creates the thumb sprite, whose width fixes the right end of the track.
    setActive(true, true);
    maxRight = maxX + getButtonWidth();
}

// ---- frame ------------------------------------------------------------------------------------------

void uiSliderButton::_update(int x, int y) {
    if (spriteId == -1) return;
    if (pressed) {
        const int width = getButtonWidth();
        if (rect.x > dragX) { // the pointer is left of the thumb
            if (dragX < minX) dragX = minX;
            rect.x = dragX;
            rect.x2 = rect.x + width;
        }
        if (rect.x2 < dragX) { // the pointer is right of the thumb
            if (dragX > maxRight) dragX = maxRight;
            rect.x2 = dragX;
            rect.x = rect.x2 - width;
        }
    }
    uiButton::_update(x, y);
}

// ---- input ------------------------------------------------------------------------------------------

// The thumb does not move here: it follows dragX at the next update.
bool uiSliderButton::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    const bool inside = testBounds(x, y);
    if (kind == UIE_MOUSE_UP) _leaveFocusStack();
    hovering = inside;

    if (kind == UIE_MOUSE_MOVE && pressed) {
        dragX = x;
        dragY = y;
        if (mouseMoveCb) return mouseMoveCb(this, cbClient, x, y);
    } else if (kind == UIE_MOUSE_DOWN && inside && !handled) {
        dragX = x;
        dragY = y;
        pressed = true;
        _enterFocusStack();
    } else if (kind == UIE_MOUSE_UP && pressed) {
        if (mouseUpCb) {
            const bool r = mouseUpCb(this, cbClient, x, y);
            pressed = false;
            return r;
        }
        pressed = false;
    }
    return uiWidget::_inputEvent(kind, x, y, key, buttonDown, handled);
}
