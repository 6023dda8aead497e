// The sound service on SDL2_mixer: WAV and OGG sounds by name from the asset directory. Without an
// audio device it falls back to SDL's dummy driver (sounds "play" silently); when even that fails it
// plays nothing and playSound answers null.
#pragma once
#include <SDL.h>
#include <SDL_mixer.h>
#include <map>
#include <memory>
#include <string>
#include <vector>
#include "soundsubsystem.h"

class SdlSound : public soundSubsystem {
public:
    explicit SdlSound(const std::string& assetDir);
    ~SdlSound() override;
    SdlSound(const SdlSound&) = delete;
    SdlSound& operator=(const SdlSound&) = delete;

    bool ok() const { return m_open; }
    // The handle belongs to the service and stays valid until its mixer channel plays another sound.
    soundHandle* playSound(e_soundTypes type, const char* name, bool, bool) override;

    static constexpr int kChannels = 16;

private:
    class Handle : public soundHandle {
    public:
        Handle(SdlSound& owner, int channel) : m_owner(owner), m_channel(channel) {}
        void setFrequencyScale(float scale) override;
        void setPan(float pan) override;
        std::string sound;

    private:
        SdlSound& m_owner;
        int m_channel;
    };

    Mix_Chunk* _chunk(const std::string& name);
    Mix_Chunk* _scaledChunk(const std::string& name, float scale);
    bool _open();

    std::string m_assetDir;
    bool m_open = false;
    int m_freq = 0;
    Uint16 m_format = 0;
    int m_outChannels = 0;
    std::map<std::string, Mix_Chunk*> m_chunks; // by name, and by name and scale for resampled copies
    std::vector<std::unique_ptr<Handle>> m_handles;
};
