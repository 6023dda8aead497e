// The timed alpha fade shared by the drawing widgets. W has the fields alpha, startAlpha and targetAlpha
// (unsigned char) and fadeTime, fadeElapsed and fadeDelay (unsigned int, milliseconds).
#pragma once

namespace ui {

// Time 0 sets the alpha at once; otherwise a fade from the current alpha starts after `delay` ms.
template <class W> void startAlphaFade(W& w, unsigned char value, unsigned int time, unsigned int delay) {
    if (time == 0) {
        w.alpha = value;
    } else {
        w.startAlpha = w.alpha;
        w.fadeTime = time;
        w.fadeElapsed = 0;
        w.fadeDelay = delay;
    }
    w.targetAlpha = value;
}

// One frame of the fade. The elapsed count is not reset when the fade ends.
template <class W> void stepAlphaFade(W& w, unsigned int milliseconds) {
    if (w.targetAlpha == w.alpha) return;
    w.fadeElapsed += milliseconds;
    if (w.fadeDelay > 0) {
        // The fade proper starts with the next frame; the overrun of the delay is dropped.
        if (w.fadeElapsed >= w.fadeDelay) w.fadeDelay = w.fadeElapsed = 0;
        return;
    }
    // An alpha written directly without a fade having been started snaps to its target.
    float t = w.fadeTime == 0 ? 1.0f : static_cast<float>(w.fadeElapsed) / static_cast<float>(w.fadeTime);
    if (t > 1.0f) t = 1.0f;
    float value = w.startAlpha * (1.0f - t) + w.targetAlpha * t;
    if (value < 0.0f) value = 0.0f;
    if (value > 255.0f) value = 255.0f;
    w.alpha = static_cast<unsigned char>(value);
}

} // namespace ui
