#include "soundrecorder.h"

namespace devtools {

SoundRecorder::~SoundRecorder() {
    if (g_sound == this) g_sound = m_next;
}

void SoundRecorder::install() {
    if (!g_sound || g_sound == this) return;
    m_next = g_sound;
    g_sound = this;
}

std::set<std::string> SoundRecorder::takePlayed() {
    std::set<std::string> out;
    out.swap(m_played);
    return out;
}

soundHandle* SoundRecorder::playSound(e_soundTypes type, const char* name, bool a, bool b) {
    if (name && *name) m_played.insert(name);
    return m_next ? m_next->playSound(type, name, a, b) : nullptr;
}

} // namespace devtools
