// uiVisualWidget: the base of the widgets that draw a sprite (buttons, progress bars, sprites), and a
// widget type of its own ("uiVisualWidget") that draws one sprite and delivers no input callbacks.
//
// The sprite is recorded by name and created lazily when the widget becomes active; with
// uiWidget::s_dynamicLoading on, deactivation gives it back, so only active screens hold sprites. A
// widget whose rectangle ends at (0, 0) takes the sprite's size on the activation that creates it.
// The widget draws at its top-left corner, at the sprite's own size, with its alpha (fading over time
// while active), tiled in rows and columns, and through the sorted draw when a sort level is set.
// With WF_ALPHA_TEST the hit test asks the sprite's alpha instead of the rectangle.
//
// Description keys (then those of uiWidget):
//   sprite = "name"        records the sprite (at most 127 characters); created on activation
//   anim = int             animation index
//   frame = int            frame index; logs when beyond the frame count of an existing sprite
//   alpha = int            immediate opacity of this widget only, taken modulo 256
//   tilevertcount = int    rows of the tiled drawing (1)
//   tilehorzcount = int    columns of the tiled drawing (1); rows × columns at most 16,384
// Name WF_ALPHA_TEST before WF_ACTIVE in a flag list: the sprite is prepared for the alpha test only
// when it is created.
#pragma once
#include "uiwidget.h"

class UI_API uiVisualWidget : public uiWidget {
    UI_DECLARE_WIDGET(uiVisualWidget)

public:
    uiVisualWidget();
    ~uiVisualWidget() override;

    bool testBounds(int x, int y) override;
    void setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse) override;

    // Added virtual operations, in slot order.
    virtual void releaseSprite();
    virtual bool setSprite(const char* name, int anim, int frame, bool activate);
    virtual void setAnim(int a);
    virtual void setFrame(int f);
    virtual int getFrame();
    virtual int getSpriteId();
    virtual unsigned char getAlpha();

    void setSortLevel(int level) { sortLevel = level; } // order among draws of the same depth

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _activate() override;
    void _deactivate() override;
    void _update(int x, int y) override;
    void _render(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;

    void _lerpToTargetAlpha(unsigned int milliseconds); // advances a fade by the frame's milliseconds

private:
    // Gives the sprite back through uiWidget::_releaseSprite and forgets the handle. The library's own
    // swaps and deactivation use it, so a game's override of releaseSprite is never called from them.
    void _dropSprite();

public:
    // Fields, in declared order.
    int spriteId = -1; // the graphics service's handle; -1 while no sprite exists
    int anim = 0;
    int frame = 0;
    char spriteName[128] = {}; // empty: no sprite
    unsigned char alpha = 255;
    unsigned char startAlpha = 255;
    unsigned char targetAlpha = 255;
    unsigned int fadeTime = 0;
    unsigned int fadeElapsed = 0;
    unsigned int fadeDelay = 0;
    int tileVertCount = 1; // rows
    int tileHorzCount = 1; // columns
    int sortLevel = -1;    // -1: unsorted draw
};
