// A platform backend that records cursor changes and sleeps, and reports a cursor position set by the
// test. Sleeping only yields, so code that waits in a sleep loop still makes progress. Thread-safe.
#pragma once
#include <atomic>
#include <mutex>
#include <vector>
#include "platform.h"

namespace testkit {

class RecordingPlatform : public Platform::Backend {
public:
    std::vector<bool> shows; // every ShowCursor argument, in order

    void setCursor(int x, int y);                  // where GetCursorPos says the cursor is
    int sleeps() const { return m_sleeps.load(); } // Sleep calls so far

    void sleep(unsigned int ms) override;
    void showCursor(bool show) override;
    void getCursorPos(int& x, int& y) override;

private:
    std::mutex m_lock;
    int m_x = 0, m_y = 0;
    std::atomic<int> m_sleeps{0};
};

} // namespace testkit
