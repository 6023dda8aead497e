#include "recordingsound.h"

namespace testkit {

// Writes what the library sets into the record of its play. Records are found by index because the
// vector may grow while a handle lives.
class RecordingSound::Handle : public soundHandle {
public:
    Handle(RecordingSound& owner, std::size_t index) : m_owner(owner), m_index(index) {}
    void setFrequencyScale(float f) override {
        std::lock_guard<std::mutex> guard(m_owner.m_lock);
        if (m_index < m_owner.plays.size()) m_owner.plays[m_index].freq = f;
    }
    void setPan(float p) override {
        std::lock_guard<std::mutex> guard(m_owner.m_lock);
        if (m_index < m_owner.plays.size()) m_owner.plays[m_index].pan = p;
    }

private:
    RecordingSound& m_owner;
    std::size_t m_index;
};

RecordingSound::RecordingSound() = default;
RecordingSound::~RecordingSound() = default;

void RecordingSound::clear() {
    std::lock_guard<std::mutex> guard(m_lock);
    played.clear();
    plays.clear();
}

soundHandle* RecordingSound::playSound(e_soundTypes, const char* name, bool, bool) {
    std::lock_guard<std::mutex> guard(m_lock);
    std::string n = name ? name : "";
    played.push_back(n);
    plays.push_back(SoundPlay{n});
    if (silent) return nullptr;
    m_handles.push_back(std::make_unique<Handle>(*this, plays.size() - 1));
    return m_handles.back().get();
}

} // namespace testkit
