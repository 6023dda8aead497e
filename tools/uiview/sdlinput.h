// Translation of SDL window events into the library's input events and key codes.
#pragma once
#include <SDL.h>

class uiSubsystem;

// Forwards one SDL event to the subsystem; false when the event asks to quit.
bool forwardSdlEvent(const SDL_Event& event, uiSubsystem& ui);
// The library's key code of an SDL key, or 0 when it has none.
int libraryKey(SDL_Keycode key);
