// SdlSound: opening the mixer (dummy driver when there is no device), chunks by name, pan and
// frequency scaling by resampled copies.
#include "sdlsound.h"
#include <cmath>
#include <cstdio>
#include "logger.h"
#include "assetfiles.h"

SdlSound::SdlSound(const std::string& assetDir) : m_assetDir(assetDir) {
    m_open = _open();
    if (!m_open) {
        // No usable device: keep running on the dummy driver so games behave the same.
        SDL_setenv("SDL_AUDIODRIVER", "dummy", 1);
        m_open = _open();
    }
    if (!m_open) {
        Logger::log(Logger::kWarning, "SdlSound: no audio, sounds are not played: %s\f", Mix_GetError());
        return;
    }
    Mix_Init(MIX_INIT_OGG);
    Mix_AllocateChannels(kChannels);
    for (int i = 0; i < kChannels; ++i)
        m_handles.push_back(std::make_unique<Handle>(*this, i));
    Mix_QuerySpec(&m_freq, &m_format, &m_outChannels);
}

bool SdlSound::_open() {
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return false;
    if (Mix_OpenAudio(44100, AUDIO_S16SYS, 2, 1024) == 0) return true;
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    return false;
}

SdlSound::~SdlSound() {
    if (!m_open) return;
    Mix_HaltChannel(-1);
    for (auto& entry : m_chunks)
        Mix_FreeChunk(entry.second);
    Mix_CloseAudio();
    Mix_Quit();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

Mix_Chunk* SdlSound::_chunk(const std::string& name) {
    auto it = m_chunks.find(name);
    if (it != m_chunks.end()) return it->second;
    Mix_Chunk* chunk = nullptr;
    for (const char* ext : {"", ".wav", ".ogg"}) {
        const std::string path = assets::joinPath(m_assetDir, name + ext);
        if (assets::fileExists(path) && (chunk = Mix_LoadWAV(path.c_str()))) break;
    }
    if (!chunk) Logger::log(Logger::kWarning, "SdlSound: could not load sound: \"%s\"\f", name.c_str());
    m_chunks[name] = chunk; // a missing sound is looked for once
    return chunk;
}

soundHandle* SdlSound::playSound(e_soundTypes type, const char* name, bool, bool) {
    if (!m_open || !name || !*name) return nullptr;
    Mix_Chunk* chunk = _chunk(name);
    const int channel = chunk ? Mix_PlayChannel(-1, chunk, 0) : -1;
    if (channel < 0 || channel >= kChannels) return nullptr;
    Mix_SetPanning(channel, 255, 255);
    m_handles[static_cast<size_t>(channel)]->sound = name;
    return m_handles[static_cast<size_t>(channel)].get();
}

// A copy of the sound resampled so that it plays `scale` times faster (and higher).
Mix_Chunk* SdlSound::_scaledChunk(const std::string& name, float scale) {
    char key[32];
    std::snprintf(key, sizeof key, "\x01%.2f", static_cast<double>(scale));
    auto it = m_chunks.find(name + key);
    if (it != m_chunks.end()) return it->second;
    Mix_Chunk* source = _chunk(name);
    Mix_Chunk* scaled = nullptr;
    SDL_AudioCVT cvt;
    const int from = static_cast<int>(std::lround(static_cast<float>(m_freq) * scale));
    if (source && from > 0 &&
        SDL_BuildAudioCVT(&cvt, m_format, static_cast<Uint8>(m_outChannels), from, m_format,
                          static_cast<Uint8>(m_outChannels), m_freq) >= 0) {
        cvt.len = static_cast<int>(source->alen);
        cvt.buf =
            static_cast<Uint8*>(SDL_malloc(static_cast<size_t>(cvt.len) * static_cast<size_t>(cvt.len_mult)));
        if (cvt.buf) {
            SDL_memcpy(cvt.buf, source->abuf, source->alen);
            if (SDL_ConvertAudio(&cvt) == 0)
                scaled = Mix_QuickLoad_RAW(cvt.buf, static_cast<Uint32>(cvt.len_cvt));
            if (scaled)
                scaled->allocated = 1; // the chunk frees the converted buffer
            else
                SDL_free(cvt.buf);
        }
    }
    m_chunks[name + key] = scaled;
    return scaled;
}

void SdlSound::Handle::setFrequencyScale(float scale) {
    if (scale <= 0.0f || std::fabs(scale - 1.0f) < 0.005f) return;
    if (Mix_Chunk* scaled = m_owner._scaledChunk(sound, scale)) Mix_PlayChannel(m_channel, scaled, 0);
}

void SdlSound::Handle::setPan(float pan) {
    // -1 is all left, 1 all right; the louder side stays at full volume.
    const float p = pan < -1.0f ? -1.0f : pan > 1.0f ? 1.0f : pan;
    const auto left = static_cast<Uint8>(255.0f * (p > 0.0f ? 1.0f - p : 1.0f));
    const auto right = static_cast<Uint8>(255.0f * (p < 0.0f ? 1.0f + p : 1.0f));
    Mix_SetPanning(m_channel, left, right);
}
