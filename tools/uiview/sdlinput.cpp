#include "sdlinput.h"
#include "uidevtools.h"
#include "uisubsystem.h"

namespace {

struct KeyPair {
    SDL_Keycode sdl;
    e_uiKey library;
};
// Both Enter keys give KEY_ENTER, so that a button's KEY_ENTER hotkey answers the keypad too.
constexpr KeyPair kKeys[] = {
    {SDLK_RETURN, KEY_ENTER},  {SDLK_KP_ENTER, KEY_ENTER},
    {SDLK_ESCAPE, KEY_ESCAPE}, {SDLK_BACKSPACE, KEY_BACKSPACE},
    {SDLK_TAB, KEY_TAB},       {SDLK_LALT, KEY_ALT},
    {SDLK_RALT, KEY_ALT},      {SDLK_LCTRL, KEY_CTRL},
    {SDLK_RCTRL, KEY_CTRL},    {SDLK_LSHIFT, KEY_SHIFT},
    {SDLK_RSHIFT, KEY_SHIFT},
};

} // namespace

int libraryKey(SDL_Keycode key) {
    for (const KeyPair& pair : kKeys)
        if (pair.sdl == key) return pair.library;
    if (key >= SDLK_F1 && key <= SDLK_F12) return KEY_F1 + (key - SDLK_F1);
    return key > 0 && key < KEY_BACKSPACE ? key : 0;
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
