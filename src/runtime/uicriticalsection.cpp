// uiCriticalSection: the object's life in the buffer pool; the lock itself is the platform file's.
#include <new>
#include "memorymgr.h"
#include "runtime/uicriticalsection.h"
#include "uiwidget.h"

uiCriticalSection* uiCriticalSection::create() {
    void* p = g_MemoryPtr
                  ? g_MemoryPtr->alloc(uiWidget::kBufPool, sizeof(uiCriticalSection), __FILE__, __LINE__)
                  : nullptr;
    return p ? new (p) uiCriticalSection() : nullptr;
}

void uiCriticalSection::destroy(uiCriticalSection* cs) {
    if (!cs) return;
    cs->~uiCriticalSection();
    g_MemoryPtr->free(uiWidget::kBufPool, cs);
}
