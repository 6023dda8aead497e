#include "recordingplatform.h"
#include <thread>

namespace testkit {

void RecordingPlatform::setCursor(int x, int y) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_x = x;
    m_y = y;
}

void RecordingPlatform::sleep(unsigned int) {
    ++m_sleeps;
    std::this_thread::yield();
}

void RecordingPlatform::showCursor(bool show) {
    std::lock_guard<std::mutex> guard(m_lock);
    shows.push_back(show);
}

void RecordingPlatform::getCursorPos(int& x, int& y) {
    std::lock_guard<std::mutex> guard(m_lock);
    x = m_x;
    y = m_y;
}

} // namespace testkit
