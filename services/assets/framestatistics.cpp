#include "framestatistics.h"
#include <algorithm>

namespace assets {

void FrameStatistics::endFrame(long pictureBytes, long glyphBytes, int queued, int particles) {
    const auto now = std::chrono::steady_clock::now();
    ++m_fpsFrames;
    const float seconds = std::chrono::duration<float>(now - m_fpsStart).count();
    if (seconds >= 1.0f) {
        m_last.fps = static_cast<float>(m_fpsFrames) / seconds;
        m_fpsFrames = 0;
        m_fpsStart = now;
    }
    m_last.tmem = static_cast<int>(pictureBytes / 1024);
    m_last.cmem = static_cast<int>(glyphBytes / 1024);
    m_last.mxmem = std::max(m_last.mxmem, m_last.tmem + m_last.cmem);
    m_last.total = queued;
    m_last.blt = blts;
    m_last.text = texts;
    m_last.psys = particles;
    blts = texts = 0;
}

} // namespace assets
