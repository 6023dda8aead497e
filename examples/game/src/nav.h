// Keyboard and gamepad navigation: arrows and Tab move the pointer onto the next button of the dialog on
// top (or of the screen), Enter clicks it, left and right drag a slider under the pointer. Everything
// reaches the library as pointer events, so buttons hover, sound and click as they do under a mouse.
#pragma once

class uiSubsystem;
class uiWidget;

class Nav {
public:
    // True when the key was taken.
    bool key(uiSubsystem& ui, int key);

private:
    static uiWidget* s_scope(uiSubsystem& ui);
};
