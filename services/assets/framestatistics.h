// The statistics a graphics service shows on the overlay: counted while a frame is queued and summed up
// when it is drawn, so that they always describe the frame drawn last.
#pragma once
#include <chrono>
#include "gfxsubsystem.h"

namespace assets {

class FrameStatistics {
public:
    int blts = 0, texts = 0; // calls so far in the frame being queued

    // The frame is drawn: `queued` draws, from pictures of `pictureBytes` and glyphs of `glyphBytes`, with
    // `particles` particles alive. The counts start again for the next frame.
    void endFrame(long pictureBytes, long glyphBytes, int queued, int particles);
    const gfxStatistics_s* last() const { return &m_last; }

private:
    gfxStatistics_s m_last{};
    int m_fpsFrames = 0;
    std::chrono::steady_clock::time_point m_fpsStart = std::chrono::steady_clock::now();
};

} // namespace assets
