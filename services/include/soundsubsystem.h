// The sound service that plays interface sounds. While g_sound is null nothing plays.
#pragma once
#include "uiapi.h"

// The kind of a sound; the library plays interface sounds only.
enum e_soundTypes { SOUND_TYPE_UI = 0 };

// A sound that is playing: the library pitches and pans it by where the widget is.
class UI_API soundHandle {
public:
    virtual ~soundHandle();
    virtual void setFrequencyScale(float) = 0; // 1: as recorded
    virtual void setPan(float) = 0;            // -1 left, 0 centre, 1 right
};

// The interface a game implements (or takes from the SDL2 services) to play sounds by name.
class UI_API soundSubsystem {
public:
    virtual ~soundSubsystem();
    // Starts the sound called `name`; the handle belongs to the service.
    virtual soundHandle* playSound(e_soundTypes type, const char* name, bool,
                                   bool) = 0; // null: nothing plays
};

extern UI_API soundSubsystem* g_sound; // starts null
