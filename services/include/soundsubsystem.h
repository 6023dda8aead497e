// The sound service that plays interface sounds. While g_sound is null nothing plays.
#pragma once
#include "uiapi.h"

enum e_soundTypes { SOUND_TYPE_UI = 0 };

class UI_API soundHandle {
public:
    virtual ~soundHandle();
    virtual void setFrequencyScale(float) = 0;
    virtual void setPan(float) = 0;
};

class UI_API soundSubsystem {
public:
    virtual ~soundSubsystem();
    virtual soundHandle* playSound(e_soundTypes type, const char* name, bool,
                                   bool) = 0; // null: nothing plays
};

extern UI_API soundSubsystem* g_sound; // starts null
