// uiThread where the build has no threads (a browser build without shared memory): every thread is
// refused, so the background loader loads on the calling thread. std::thread would abort there instead.
#if defined(GAMEUI_NO_THREADS)
#include "runtime/uithread.h"

struct uiThread::Impl {};

bool uiThread::start(Entry, void*) {
    return false;
}

void uiThread::join() {}

#endif
