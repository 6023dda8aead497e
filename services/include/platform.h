// Small platform helpers: sleeping and the system mouse cursor.
#pragma once
#include "uiapi.h"

namespace Platform {
UI_API void Sleep(unsigned int ms); // 0 yields
UI_API void ShowCursor(bool show);
UI_API void GetCursorPos(int& x, int& y);

class UI_API Backend {
public:
    virtual ~Backend();
    virtual void sleep(unsigned int ms);
    virtual void showCursor(bool show);
    virtual void getCursorPos(int& x, int& y);
};
UI_API void setBackend(Backend* backend); // null: built-in backend
} // namespace Platform

class Preferences; // opaque; uiSubsystem::initialize ignores it
