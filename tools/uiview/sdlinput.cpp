#include "sdlinput.h"
#include "uidevtools.h"
#include "uisubsystem.h"

int libraryKey(SDL_Keycode key) {
    switch (key) {
    case SDLK_RETURN:
    case SDLK_KP_ENTER:
        return 13;
    case SDLK_ESCAPE:
        return 27;
    case SDLK_BACKSPACE:
        return 127;
    case SDLK_TAB:
        return 9;
    case SDLK_LALT:
    case SDLK_RALT:
        return 136;
    case SDLK_LCTRL:
    case SDLK_RCTRL:
        return 137;
    case SDLK_LSHIFT:
    case SDLK_RSHIFT:
        return 138;
    default:
        break;
    }
    if (key >= SDLK_F1 && key <= SDLK_F12) return 163 + (key - SDLK_F1);
    return key > 0 && key < 127 ? key : 0;
}

void deliver(uiSubsystem& ui, e_uiEvent kind, int x, int y, int key) {
    uiDevtools* devtools = uiDevtools::get();
    if (!devtools || !devtools->inputEvent(kind, x, y, key)) ui.inputEvent(kind, x, y, key);
}

bool forwardSdlEvent(const SDL_Event& event, uiSubsystem& ui) {
    const int mx = ui.getMousePositionX(), my = ui.getMousePositionY();
    switch (event.type) {
    case SDL_QUIT:
        return false;
    case SDL_MOUSEMOTION:
        deliver(ui, UIE_MOUSE_MOVE, event.motion.x, event.motion.y, 0);
        break;
    case SDL_MOUSEBUTTONDOWN:
        if (event.button.button == SDL_BUTTON_LEFT)
            deliver(ui, UIE_MOUSE_DOWN, event.button.x, event.button.y, 0);
        break;
    case SDL_MOUSEBUTTONUP:
        if (event.button.button == SDL_BUTTON_LEFT)
            deliver(ui, UIE_MOUSE_UP, event.button.x, event.button.y, 0);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        if (const int key = libraryKey(event.key.keysym.sym))
            deliver(ui, event.type == SDL_KEYDOWN ? UIE_KEY_DOWN : UIE_KEY_UP, mx, my, key);
        break;
    case SDL_TEXTINPUT: {
        // UTF-8 text: one character event per decoded character.
        const auto* s = reinterpret_cast<const unsigned char*>(event.text.text);
        while (*s) {
            int more = *s >= 0xF0 ? 3 : *s >= 0xE0 ? 2 : *s >= 0xC0 ? 1 : 0;
            int code = *s & (more ? 0x3F >> more : 0x7F);
            for (++s; more > 0 && *s; --more, ++s)
                code = (code << 6) | (*s & 0x3F);
            deliver(ui, UIE_CHAR, mx, my, code);
        }
        break;
    }
    default:
        break;
    }
    return true;
}
