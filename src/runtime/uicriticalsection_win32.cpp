// uiCriticalSection on a Windows critical section, which is recursive for its owning thread.
#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#include <new>
#include "runtime/uicriticalsection.h"

struct uiCriticalSection::Impl {
    CRITICAL_SECTION section;
};
uiCriticalSection::uiCriticalSection() {
    static_assert(sizeof(Impl) <= sizeof(m_storage), "lock storage too small");
    InitializeCriticalSection(&(new (m_storage) Impl())->section);
}
uiCriticalSection::~uiCriticalSection() {
    DeleteCriticalSection(&impl()->section);
    impl()->~Impl();
}
uiCriticalSection::Impl* uiCriticalSection::impl() {
    return std::launder(reinterpret_cast<Impl*>(m_storage));
}

void uiCriticalSection::enter() {
    EnterCriticalSection(&impl()->section);
}
void uiCriticalSection::leave() {
    LeaveCriticalSection(&impl()->section);
}
#endif
