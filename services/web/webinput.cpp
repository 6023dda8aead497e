#include "webinput.h"
#include <emscripten.h>
#include "uisubsystem.h"

namespace {
uiSubsystem* g_target = nullptr;
}

void WebInput::attach(uiSubsystem* ui) {
    g_target = ui;
}

// Called by the page with an e_uiEvent (move, button down and up, key down and up, character). Keys
// and characters (x < 0) happen where the pointer last was.
extern "C" EMSCRIPTEN_KEEPALIVE void gameui_web_input(int type, int x, int y, int key) {
    if (!g_target || type < UIE_MOUSE_MOVE || type > UIE_CHAR) return;
    if (x < 0) {
        x = g_target->getMousePositionX();
        y = g_target->getMousePositionY();
    }
    g_target->inputEvent(static_cast<e_uiEvent>(type), x, y, key);
}
