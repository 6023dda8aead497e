#include "gamescript.h"
#include "game.h"

void sendScripted(Game& game, const ScriptEvent& e) {
    switch (e.kind) {
    case ScriptEvent::Move:
        game.pointer(UIE_MOUSE_MOVE, e.x, e.y);
        break;
    case ScriptEvent::Down:
        game.pointer(UIE_MOUSE_DOWN, e.x, e.y);
        break;
    case ScriptEvent::Up:
        game.pointer(UIE_MOUSE_UP, e.x, e.y);
        break;
    case ScriptEvent::Key:
        game.key(e.key, true);
        game.key(e.key, false);
        break;
    case ScriptEvent::Char:
        game.text(e.key);
        break;
    case ScriptEvent::Png:
        break;
    }
}
