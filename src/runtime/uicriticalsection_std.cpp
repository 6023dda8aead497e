// uiCriticalSection on the standard library's recursive mutex.
#if !defined(_WIN32)
#include <mutex>
#include <new>
#include "runtime/uicriticalsection.h"

struct uiCriticalSection::Impl {
    std::recursive_mutex mutex;
};
uiCriticalSection::uiCriticalSection() {
    static_assert(sizeof(Impl) <= sizeof(m_storage), "lock storage too small");
    new (m_storage) Impl();
}
uiCriticalSection::~uiCriticalSection() {
    impl()->~Impl();
}
uiCriticalSection::Impl* uiCriticalSection::impl() {
    return std::launder(reinterpret_cast<Impl*>(m_storage));
}

void uiCriticalSection::enter() {
    impl()->mutex.lock();
}
void uiCriticalSection::leave() {
    impl()->mutex.unlock();
}
#endif
