#include "webinput.h"
#include <emscripten.h>
#include "uisubsystem.h"

namespace {

WebInput::Receiver g_receiver = nullptr;
void* g_client = nullptr;

void toSubsystem(void* client, e_uiEvent kind, int x, int y, int code) {
    auto* ui = static_cast<uiSubsystem*>(client);
    const bool key = kind == UIE_KEY_DOWN || kind == UIE_KEY_UP;
    if (key && code >= WebInput::ARROW_LEFT && code <= WebInput::ARROW_DOWN) return;
    if (x < 0) {
        x = ui->getMousePositionX();
        y = ui->getMousePositionY();
    }
    ui->inputEvent(kind, x, y, code);
}

} // namespace

void WebInput::attach(Receiver receiver, void* client) {
    g_receiver = receiver;
    g_client = client;
}

void WebInput::attach(uiSubsystem* ui) {
    attach(ui ? toSubsystem : nullptr, ui);
}

// Called by the page with an e_uiEvent (move, button down and up, key down and up, character).
extern "C" EMSCRIPTEN_KEEPALIVE void gameui_web_input(int type, int x, int y, int key) {
    if (g_receiver && type >= UIE_MOUSE_MOVE && type <= UIE_CHAR)
        g_receiver(g_client, static_cast<e_uiEvent>(type), x, y, key);
}
