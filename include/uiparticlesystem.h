// uiParticleSystem: places one particle system instance of the graphics service in the widget tree. The
// instance follows the widget's absolute top-left corner, advances by the frame time and is drawn at the
// widget's depth with the widget's alpha. It takes no input.
//
// Instances are owned by the widget's name in the graphics service: loading a new file releases every
// instance of that name first. Destroying the widget does not release its instance; call
// releaseInstance() first when the instance must go with the widget.
//
// Description keys (besides those of uiWidget):
//   file = name            loads the particle system file at once (loadPsys)
// Flags (in "flags = ..."):
//   UIP_DONTUPDATE         the instance is not advanced by the frame
//   UIP_DONTRENDER         the instance is not drawn
#pragma once
#include "uiwidget.h"

enum : unsigned int { UIP_DONTUPDATE = 0x10000, UIP_DONTRENDER = 0x20000 };

class UI_API uiParticleSystem : public uiWidget {
    UI_DECLARE_WIDGET(uiParticleSystem)

public:
    // The instance of the effect file `file`, replacing any earlier one; its graphics service handle (-1:
    // none); starting it again; stopping its emitters (the particles live out their lives); releasing it.
    void loadPsys(const char* file);
    int getId() const { return psysInstance; }
    void reset();
    void stop();
    void releaseInstance();

    // Takes the new alpha at once: particles have no fade, whatever time and delay say.
    void setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse) override;

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _parseSingleFlag(const char* name) override;
    void _update(int x, int y) override;
    void _render(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;

public:
    // Fields, in declared order.
    int psysInstance = -1;
    unsigned char alpha = 255;
};
