// What the game asks of the platform it runs on; the SDL build implements it in sdlhost.cpp.
#pragma once

class Host {
public:
    virtual ~Host() = default;
    // Volumes from 0 to 100.
    virtual void setVolumes(int music, int effects) = 0;
    virtual void setFullscreen(bool on) = 0;
};

// Keys the game reads besides the library's own codes (Enter 13, Escape 27, Tab 9, Backspace 127):
// arrows and the gamepad's stick directions never reach the library.
enum GameKey : int { KEY_LEFT = 0x101, KEY_RIGHT = 0x102, KEY_UP = 0x103, KEY_DOWN = 0x104 };
