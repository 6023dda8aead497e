// uiGameContainer: a container whose whole subtree can be paused. While paused neither the container
// nor any widget below it is updated, so animations, fades and particles stand still; drawing and input
// go on. Pausing asks the children to fade to 0 over 500 ms and resuming to fade back to 255; a visual
// child records the fade but cannot run it while paused, a particle system child takes it at once.
//
// Description keys and flags: those of uiWidget.
#pragma once
#include "uinonvisualwidget.h"

class UI_API uiGameContainer : public uiNonVisualWidget {
    UI_DECLARE_WIDGET(uiGameContainer)

public:
    // Pausing fades the subtree out and stops its updates; resuming fades it in again.
    bool getPaused() const { return paused; }
    void setPaused(bool p);

    void update(int x, int y) override; // nothing while paused
    void setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse) override;

    bool paused = false; // as getPaused
};
