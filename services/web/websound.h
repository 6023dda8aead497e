// The sound service in the browser: WAV and OGG sounds by name from the asset directory of the packed file
// system, played through Web Audio on a fixed number of voices, panned and rate-scaled like the SDL
// service. A page without Web Audio plays nothing and playSound answers null.
#pragma once
#include <memory>
#include <set>
#include <string>
#include <vector>
#include "soundsubsystem.h"

class WebSound : public soundSubsystem {
public:
    explicit WebSound(const std::string& assetDir);
    ~WebSound() override;
    WebSound(const WebSound&) = delete;
    WebSound& operator=(const WebSound&) = delete;

    bool ok() const { return m_open; }
    // The handle belongs to the service and stays valid until its voice plays another sound.
    soundHandle* playSound(e_soundTypes type, const char* name, bool, bool) override;
    // Volumes from 0 to 1 of the sounds played and of the music.
    void setVolumes(float sounds, float music);
    // Loops the sound as the music; false when it cannot be loaded.
    bool playMusic(const char* name);

    static constexpr int kVoices = 16;

private:
    class Handle : public soundHandle {
    public:
        explicit Handle(int voice) : m_voice(voice) {}
        void setFrequencyScale(float scale) override;
        void setPan(float pan) override;

    private:
        int m_voice;
    };

    bool _load(const std::string& name);

    std::string m_assetDir;
    bool m_open = false;
    std::set<std::string> m_loaded, m_missing;
    std::vector<std::unique_ptr<Handle>> m_handles;
    int m_next = 0; // the voice the next sound takes
};
