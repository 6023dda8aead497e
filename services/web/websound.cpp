// WebSound: sounds read from the packed files and handed to the page to decode, voices taken in turn.
#include "websound.h"
#include <fstream>
#include <iterator>
#include "assetfiles.h"
#include "logger.h"
#include "webpage.h"

WebSound::WebSound(const std::string& assetDir) : m_assetDir(assetDir) {
    m_open = gameui_page_audio() != 0;
    if (!m_open) {
        Logger::log(Logger::kWarning, "WebSound: no Web Audio, sounds are not played\f");
        return;
    }
    for (int i = 0; i < kVoices; ++i)
        m_handles.push_back(std::make_unique<Handle>(i));
}

WebSound::~WebSound() = default;

bool WebSound::_load(const std::string& name) {
    if (m_loaded.count(name)) return true;
    if (m_missing.count(name)) return false; // a missing sound is looked for once
    for (const char* ext : {"", ".wav", ".ogg"}) {
        std::ifstream in(assets::joinPath(m_assetDir, name + ext), std::ios::binary);
        const std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)),
                                               std::istreambuf_iterator<char>());
        if (bytes.empty()) continue;
        gameui_page_sound_load(name.c_str(), bytes.data(), static_cast<int>(bytes.size()));
        m_loaded.insert(name);
        return true;
    }
    Logger::log(Logger::kWarning, "WebSound: could not load sound: \"%s\"\f", name.c_str());
    m_missing.insert(name);
    return false;
}

soundHandle* WebSound::playSound(e_soundTypes type, const char* name, bool, bool) {
    if (!m_open || !name || !*name || !_load(name)) return nullptr;
    const int voice = m_next;
    m_next = (m_next + 1) % kVoices;
    gameui_page_sound_play(name, voice);
    return m_handles[static_cast<size_t>(voice)].get();
}

void WebSound::setVolumes(float sounds, float music) {
    if (m_open) gameui_page_sound_volume(sounds, music);
}

bool WebSound::playMusic(const char* name) {
    if (!m_open || !name || !*name || !_load(name)) return false;
    gameui_page_music(name);
    return true;
}

void WebSound::Handle::setFrequencyScale(float scale) {
    if (scale > 0.0f) gameui_page_sound_rate(m_voice, scale);
}

void WebSound::Handle::setPan(float pan) {
    // -1 is all left, 1 all right; the louder side stays at full volume.
    const float p = pan < -1.0f ? -1.0f : pan > 1.0f ? 1.0f : pan;
    gameui_page_sound_pan(m_voice, p > 0.0f ? 1.0f - p : 1.0f, p < 0.0f ? 1.0f + p : 1.0f);
}
