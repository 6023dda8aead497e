// A game-like workout for whatever screen is set as the subsystem's top-level widget: frames with
// pointer presses and drags at points across an 800x600 screen, key presses and characters, and frames
// that draw, short and long. Used by the allocation-failure sweep and the fuzz targets.
#pragma once
#include "uisubsystem.h"

namespace testkit {

// Runs the workout on `ui`.
void exercise(uiSubsystem& ui);

// A screen's whole life with a subsystem of its own: loaded from `file` through uiSubsystem::loadUI,
// set as the top-level widget, exercised, destroyed, the subsystem shut down and the scriptlet cache
// emptied, so that nothing the screen allocated is left.
void playScreen(const char* file);

} // namespace testkit
