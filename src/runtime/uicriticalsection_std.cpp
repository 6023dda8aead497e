// uiCriticalSection on the standard library's recursive mutex.
#if !defined(_WIN32)
#include <mutex>
#include <new>
#include "core/uiutil.h"
#include "runtime/uicriticalsection.h"
#include "uiwidget.h"

struct uiCriticalSection::Impl {
    std::recursive_mutex mutex;
};
uiCriticalSection::uiCriticalSection() {
    static_assert(sizeof(Impl) <= sizeof(m_storage), "lock storage too small");
    new (m_storage) Impl();
}
uiCriticalSection::~uiCriticalSection() { impl()->~Impl(); }
uiCriticalSection::Impl* uiCriticalSection::impl() { return std::launder(reinterpret_cast<Impl*>(m_storage)); }

void uiCriticalSection::enter() { impl()->mutex.lock(); }
void uiCriticalSection::leave() { impl()->mutex.unlock(); }

uiCriticalSection* uiCriticalSection::create() {
    void* p = g_MemoryPtr ? g_MemoryPtr->alloc(uiWidget::kBufPool, sizeof(uiCriticalSection), __FILE__, __LINE__)
                          : nullptr;
    return p ? new (p) uiCriticalSection() : nullptr;
}

void uiCriticalSection::destroy(uiCriticalSection* cs) {
    if (!cs) return;
    cs->~uiCriticalSection();
    g_MemoryPtr->free(uiWidget::kBufPool, cs);
}
#endif
