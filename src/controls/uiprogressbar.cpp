// uiProgressBar: a value within a range, shown as the clipped part of the sprite.
#include "uiprogressbar.h"
#include <algorithm>
#include <cmath>
#include "gfxsubsystem.h"
#include "logger.h"
#include "parser.h"
#include "runtime/uicriticalsection.h"

namespace {

// Within this distance below the target an upward approach snaps onto it.
constexpr float kSnapDistance = 0.01f;

} // namespace

UI_DEFINE_WIDGET(uiProgressBar, uiVisualWidget, "uiprogressbar.h")

uiProgressBar::uiProgressBar() : lock(uiCriticalSection::create()) {
    if (!lock) Logger::log(Logger::kError, "uiProgressBar: could not create the value lock: Out of Memory\f");
}

uiProgressBar::~uiProgressBar() {
    uiCriticalSection::destroy(lock);
}

// ---- description keys -------------------------------------------------------------------------------

void uiProgressBar::_parseParams(Parser* parser, char* key) {
    if (parser->ParamEqualsInt32(key, "min_range", &minRange) ||
        parser->ParamEqualsInt32(key, "max_range", &maxRange) ||
        parser->ParamEqualsFloat32(key, "value", &displayValue) ||
        parser->ParamEqualsInt32(key, "step", &stepSize) || parser->ParamEqualsUInt32(key, "rate", &rate))
        return;
    if (_parseBooleanKey(parser, key, "smooth", &smooth) ||
        _parseBooleanKey(parser, key, "vertical", &vertical) ||
        _parseBooleanKey(parser, key, "invert", &invert))
        return;
    uiVisualWidget::_parseParams(parser, key);
}

// ---- value ------------------------------------------------------------------------------------------

// Raised to the lower end first, then lowered to the upper end: with the ends swapped the upper wins.
int uiProgressBar::_clampToRange(long long v) const {
    if (v < minRange) v = minRange;
    if (v > maxRange) v = maxRange;
    return static_cast<int>(v);
}

void uiProgressBar::setRange(int min, int max) {
    minRange = min;
    maxRange = max;
}

void uiProgressBar::setValue(int v, bool immediate) {
    value = _clampToRange(v);
    if (immediate) displayValue = static_cast<float>(value);
}

void uiProgressBar::step() {
    delta(stepSize);
}

void uiProgressBar::delta(int d) {
    uiScopedLock guard(lock);
    value = _clampToRange(static_cast<long long>(value) + d);
}

// Judged on the shown value, so a smoothly filling bar is full only when its fill arrives.
bool uiProgressBar::isFull() const {
    return static_cast<float>(maxRange) <= std::trunc(displayValue);
}

// ---- frame ------------------------------------------------------------------------------------------

void uiProgressBar::_update(int ox, int oy) {
    uiScopedLock guard(lock);
    _approachValue();
    _lerpToTargetAlpha(s_iDeltaTime);
}

// Exponential approach with a time constant of `rate` ms that never overshoots. A rate of 0 (no time to
// take) or a shown value that is not a number shows the value at once.
void uiProgressBar::_approachValue() {
    const float target = static_cast<float>(value);
    if (!smooth || rate == 0 || !std::isfinite(displayValue)) {
        displayValue = target;
        return;
    }
    if (target == displayValue) return;
    const float next = displayValue + (static_cast<float>(s_iDeltaTime) / static_cast<float>(rate)) *
                                          (target - displayValue);
    if (target > displayValue) {
        const float filled = std::min(next, target);
        displayValue = filled + kSnapDistance > target ? target : filled;
    } else {
        displayValue = std::max(next, target);
    }
}

// The shown value over the width of the range, within 0 to 1. An empty range has no width: the bar is
// then drawn full once it counts as full, and empty before.
float uiProgressBar::_fillFraction() const {
    const long long width = static_cast<long long>(maxRange) - minRange;
    if (width == 0) return isFull() ? 1.0f : 0.0f;
    const float f = displayValue / static_cast<float>(width);
    if (!(f > 0.0f)) return 0.0f; // NaN as well
    return std::min(f, 1.0f);
}

void uiProgressBar::_render(int ox, int oy) {
    if (spriteId == -1 || !g_gfx) return;
    const float f = _fillFraction();
    const int w = rect.x2 - rect.x;
    const int h = rect.y2 - rect.y;
    const int x = ox + rect.x;
    const int y = oy + rect.y;
    const int d = static_cast<int>(depth);
    if (!vertical) {
        g_gfx->blt(d, spriteId, x, y, static_cast<int>(w * f), h, anim, frame, alpha);
        return;
    }
    const int empty = static_cast<int>((1.0f - f) * h);
    if (invert)
        g_gfx->blt(d, spriteId, x, y, w, empty, anim, frame, alpha);
    else
        g_gfx->blt(d, spriteId, x, y + empty, 0, empty, w, h - empty, anim, frame, alpha);
}
