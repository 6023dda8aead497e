// Small platform helpers: sleeping and the system mouse cursor.
#pragma once
#include "uiapi.h"

// Sleeping and the mouse cursor for the library.
namespace Platform {
// The calls the library makes, handed to the installed backend: sleep (0 yields), show or hide the
// system cursor, where the cursor is.
UI_API void Sleep(unsigned int ms);
UI_API void ShowCursor(bool show);
UI_API void GetCursorPos(int& x, int& y);

// The built-in backend's remembered cursor: what ShowCursor last set, and a position that headless
// programs (tools, tests) move by hand.
UI_API bool IsCursorShown();
UI_API void SetCursorPos(int x, int y);

// The defaults are the built-in behaviour: sleep on the calling thread (0 yields), and a cursor state
// that is only remembered (there is no window system to show it in).
class UI_API Backend {
public:
    constexpr Backend() = default;
    virtual ~Backend();
    // As Sleep, ShowCursor and GetCursorPos.
    virtual void sleep(unsigned int ms);
    virtual void showCursor(bool show);
    virtual void getCursorPos(int& x, int& y);
};
UI_API void setBackend(Backend* backend); // null: built-in backend
UI_API Backend* backend();                // the installed backend, null for the built-in one
} // namespace Platform

class Preferences; // opaque; uiSubsystem::initialize ignores it
