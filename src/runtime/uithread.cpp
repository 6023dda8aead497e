// uiThread: the object's life in the buffer pool; starting and joining are the platform file's.
#include <new>
#include "memorymgr.h"
#include "runtime/uithread.h"
#include "uiwidget.h"

uiThread::~uiThread() {
    join();
}

uiThread* uiThread::create(Entry entry, void* arg) {
    void* p =
        g_MemoryPtr ? g_MemoryPtr->alloc(uiWidget::kBufPool, sizeof(uiThread), __FILE__, __LINE__) : nullptr;
    if (!p) return nullptr;
    uiThread* thread = new (p) uiThread();
    if (thread->start(entry, arg)) return thread;
    destroy(thread);
    return nullptr;
}

void uiThread::destroy(uiThread* thread) {
    if (!thread) return;
    thread->~uiThread();
    g_MemoryPtr->free(uiWidget::kBufPool, thread);
}
