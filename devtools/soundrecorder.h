// A sound service in front of the game's that keeps the name of every sound played, so that live
// reload can watch the files of the sounds a screen uses: their names are only known when played.
#pragma once
#include <set>
#include <string>
#include "soundsubsystem.h"

namespace devtools {

class SoundRecorder : public soundSubsystem {
public:
    ~SoundRecorder() override; // puts the game's service back if it is still installed
    // Puts itself in front of g_sound when the game has installed (or swapped) one.
    void install();
    // The names played since the last call.
    std::set<std::string> takePlayed();

    soundHandle* playSound(e_soundTypes type, const char* name, bool a, bool b) override;

private:
    soundSubsystem* m_next = nullptr;
    std::set<std::string> m_played;
};

} // namespace devtools
