// The library's key codes: the `key` of UIE_KEY_DOWN and UIE_KEY_UP events, and the codes a button's
// "hotkey" names in descriptions stand for (KEY_SPACE .. KEY_F10, the same names). Keys that type a
// character (letters, digits, punctuation) use its code below 127; the game's platform layer translates
// its own key codes into these.
#pragma once

enum e_uiKey : int {
    KEY_TAB = 9,    // a dialog's key-down moves its tab focus
    KEY_ENTER = 13, // accepts an entry widget
    KEY_ESCAPE = 27,
    KEY_SPACE = 32,
    KEY_BACKSPACE = 127, // deletes an entry widget's last character
    KEY_ALT = 136,       // the subsystem tracks the three modifiers' up and down
    KEY_CTRL = 137,
    KEY_SHIFT = 138,
    KEY_PAD_ENTER = 154, // the keypad's Enter: acts as KEY_ENTER
    KEY_F1 = 163,        // F1 to F10 follow one after another
    KEY_F2 = 164,
    KEY_F3 = 165,
    KEY_F4 = 166,
    KEY_F5 = 167,
    KEY_F6 = 168,
    KEY_F7 = 169,
    KEY_F8 = 170,
    KEY_F9 = 171,
    KEY_F10 = 172,
    KEY_F11 = 173, // no hotkey names: the tools keep F11 and F12 for themselves
    KEY_F12 = 174,
};
