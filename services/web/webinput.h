// The page's input (webpage.js turns pointer, keyboard and gamepad events into the library's codes) goes
// to the subsystem, or to a receiver of the program's own, attached here.
#pragma once
#include "uiwidget.h"

class uiSubsystem;

namespace WebInput {
// The arrow keys (keyboard, gamepad d-pad and left stick), which have no library code: only a receiver
// of the program's own gets them.
enum Arrow : int { ARROW_LEFT = 0x101, ARROW_RIGHT, ARROW_UP, ARROW_DOWN };
// Keys and characters come with x and y of -1.
using Receiver = void (*)(void* client, e_uiEvent kind, int x, int y, int key);

// Events go to the receiver from now on; null drops them.
void attach(Receiver receiver, void* client);
// Events go to `ui` from now on, keys and characters where the pointer last was; null drops them.
void attach(uiSubsystem* ui);
} // namespace WebInput
