// uiThread on std::thread.
#if !defined(_WIN32) && !defined(GAMEUI_NO_THREADS)
#include <functional>
#include <new>
#include <thread>
#include "runtime/uithread.h"

struct uiThread::Impl {
    std::thread thread;
};
uiThread::Impl* uiThread::impl() {
    return std::launder(reinterpret_cast<Impl*>(m_handle));
}

bool uiThread::start(Entry entry, void* arg) {
    static_assert(sizeof(Impl) <= sizeof(m_handle), "thread handle storage too small");
    // std::thread reports a refused thread by throwing; the library itself never throws.
    try {
        Impl* handle = new (m_handle) Impl{std::thread(entry, arg)};
        m_id = static_cast<unsigned int>(std::hash<std::thread::id>()(handle->thread.get_id()));
        m_hasHandle = true;
        return true;
    } catch (...) {
        return false;
    }
}

void uiThread::join() {
    if (!m_hasHandle) return;
    if (impl()->thread.joinable()) impl()->thread.join();
    impl()->~Impl();
    m_id = 0;
    m_hasHandle = false;
}

#endif
