// The page's input (webpage.js turns pointer, keyboard and gamepad events into the library's codes) goes
// to the subsystem attached here.
#pragma once

class uiSubsystem;

namespace WebInput {
// Events go to `ui` from now on; null drops them.
void attach(uiSubsystem* ui);
} // namespace WebInput
