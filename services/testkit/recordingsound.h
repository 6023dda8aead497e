// A sound service that records what is played. Every playSound call is recorded, in order, with the
// frequency scale (1 until set) and pan (0 until set) the library then sets on the handle. Handles stay
// owned by the service. With silent set, playSound records the call but returns null.
#pragma once
#include <memory>
#include <mutex>
#include <string>
#include <vector>
#include "soundsubsystem.h"

namespace testkit {

struct SoundPlay {
    // The sound, and the frequency scale and pan set on its handle.
    std::string name;
    float freq = 1.0f;
    float pan = 0.0f;
};

// A sound service that records what is played.
class RecordingSound : public soundSubsystem {
public:
    std::vector<std::string> played; // the names, in order
    std::vector<SoundPlay> plays;    // the same with frequency scale and pan
    bool silent = false;             // playSound answers null

    RecordingSound();
    ~RecordingSound() override;
    void clear(); // forgets what was played
    soundHandle* playSound(e_soundTypes type, const char* name, bool, bool) override;

private:
    class Handle;
    std::mutex m_lock;
    std::vector<std::unique_ptr<Handle>> m_handles;
};

} // namespace testkit
