// uiBackgroundLoader: loads a UI description on a worker thread of its own while the game keeps running
// frames, and hands the finished tree over when asked.
//
// The worker registers with the log, graphics and file services, then wakes every 500 ms; a request made
// with loadWidget is loaded through uiSubsystem::loadUI under the loader's lock and held until getWidget
// takes it. State: 0 worker starting, 1 ready (the last result is available), 2 load requested or running.
// The loader owns the tree it holds; getWidget hands it over and may leave a replacement in its place,
// which the loader deletes at the next load or at destruction.
//
// When the worker cannot be started (no memory for its thread object or lock, or the operating system
// refuses the thread), the loader logs it and loads on the calling thread inside loadWidget instead, so
// getWidget never waits for a worker that does not exist. After terminate, requests are refused and
// getWidget returns what the loader holds once the worker has ended.
#pragma once
#include <atomic>
#include <cstddef>
#include "uiapi.h"

class uiWidget;
class uiThread;
class uiCriticalSection;

class UI_API uiBackgroundLoader {
public:
    uiBackgroundLoader();
    virtual ~uiBackgroundLoader();
    uiBackgroundLoader(const uiBackgroundLoader&) = delete; // would share the worker and the lock
    uiBackgroundLoader& operator=(const uiBackgroundLoader&) = delete;

    // Loaders live in the memory manager's UI pool; a failed allocation makes `new` yield null.
    static void* operator new(std::size_t size) noexcept;
    static void operator delete(void* p) noexcept;

    int getState() const { return state; } // 0 starting, 1 ready, 2 loading
    // Requests a load of `file` (at most 127 characters; null: an empty name) and returns at once.
    void loadWidget(const char* file);
    // Waits until the state is 1, then returns the held tree and holds `replacement` instead.
    uiWidget* getWidget(uiWidget* replacement);
    // Asks the worker to end at its next wake-up.
    void terminate() { terminateRequested = true; }

protected:
    static unsigned int _start(void* loader); // the worker thread's body

private:
    void _run();
    void _loadRequested();

    std::atomic<int> state{0};
    std::atomic<uiWidget*> widget{nullptr};
    std::atomic<bool> terminateRequested{false};
    char file[128] = {};
    uiThread* thread = nullptr;
    uiCriticalSection* lock = nullptr;
};
