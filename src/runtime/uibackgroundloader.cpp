// uiBackgroundLoader: the worker's loop, the request and the hand-over of the loaded tree.
#include "uibackgroundloader.h"
#include "core/uiutil.h"
#include "file.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "memorymgr.h"
#include "platform.h"
#include "runtime/uicriticalsection.h"
#include "runtime/uithread.h"
#include "uisubsystem.h"
#include "uiwidget.h"

constexpr char kThreadName[] = "^CFFFF00BackgroundLoader^c";

void* uiBackgroundLoader::operator new(std::size_t size) noexcept {
    return ui::poolAlloc(uiWidget::kUIPool, size, __FILE__, __LINE__);
}

void uiBackgroundLoader::operator delete(void* p) noexcept {
    ui::poolFree(uiWidget::kUIPool, p);
}

uiBackgroundLoader::uiBackgroundLoader() {
    // The lock comes first: a worker must never run without it.
    lock = uiCriticalSection::create();
    if (lock) thread = uiThread::create(&uiBackgroundLoader::_start, this);
    if (!thread) {
        Logger::log(
            2, "uiBackgroundLoader: could not start the worker thread; files load on the calling thread\f");
        state = 1;
    }
}

uiBackgroundLoader::~uiBackgroundLoader() {
    terminateRequested = true;
    // The worker ends first, so no load can store a new tree after the held one is deleted.
    uiThread::destroy(thread);
    delete widget.exchange(nullptr);
    uiCriticalSection::destroy(lock);
}

void uiBackgroundLoader::loadWidget(const char* name) {
    {
        uiScopedLock guard(lock);
        if (terminateRequested) return;
        state = 2;
        ui::copyName(file, name ? name : "");
    }
    if (!thread) _loadRequested();
}

uiWidget* uiBackgroundLoader::getWidget(uiWidget* replacement) {
    while (state != 1)
        Platform::Sleep(50);
    return widget.exchange(replacement);
}

// Runs with the lock held (or on the calling thread when there is no worker). The state turns 1 only
// once the new tree is stored, so getWidget never sees a tree that is still being built.
void uiBackgroundLoader::_loadRequested() {
    delete widget.exchange(nullptr);
    uiWidget* loaded = nullptr;
    if (g_ui)
        loaded = g_ui->loadUI(file);
    else
        Logger::log(Logger::kError, "uiBackgroundLoader: no uiSubsystem to load \"^C00FF00%s^c\"\f", file);
    widget = loaded;
    state = 1;
}

unsigned int uiBackgroundLoader::_start(void* loader) {
    static_cast<uiBackgroundLoader*>(loader)->_run();
    return 0;
}

void uiBackgroundLoader::_run() {
    Logger::registerClient(kThreadName);
    if (g_gfx) g_gfx->registerThread(kThreadName);
    File::registerThread();

    int starting = 0;
    state.compare_exchange_strong(starting, 1); // a request made meanwhile stays pending
    while (!terminateRequested) {
        {
            uiScopedLock guard(lock);
            if (state == 2 && !terminateRequested) _loadRequested();
        }
        Platform::Sleep(500);
    }
    {
        // A request the worker will never carry out must not keep getWidget waiting.
        uiScopedLock guard(lock);
        if (state == 2) state = 1;
    }

    File::unregisterThread();
    if (g_gfx) g_gfx->unregisterThread(kThreadName);
}
