// Translation of SDL window events into the library's input events and key codes.
#pragma once
#include <SDL.h>
#include "uiwidget.h"

class uiSubsystem;

// Hands an input event to the devtools first (the inspector may take it), else to the subsystem.
void deliver(uiSubsystem& ui, e_uiEvent kind, int x, int y, int key);
// Forwards one SDL event to the subsystem; false when the event asks to quit.
bool forwardSdlEvent(const SDL_Event& event, uiSubsystem& ui);
// The library's key code of an SDL key, or 0 when it has none.
int libraryKey(SDL_Keycode key);
