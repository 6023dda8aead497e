// uiThread on a Windows thread: CreateThread, then WaitForSingleObject without time limit and
// CloseHandle when joined.
#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#include <new>
#include "runtime/uithread.h"

namespace {
struct Start {
    uiThread::Entry entry;
    void* arg;
};

// The entry has the library's calling convention, not necessarily the system's thread routine's.
DWORD WINAPI runEntry(LPVOID start) {
    const Start* s = static_cast<const Start*>(start);
    return s->entry(s->arg);
}
} // namespace

struct uiThread::Impl {
    HANDLE handle;
    Start start; // read by the new thread while it runs
};
uiThread::Impl* uiThread::impl() {
    return std::launder(reinterpret_cast<Impl*>(m_handle));
}

bool uiThread::start(Entry entry, void* arg) {
    static_assert(sizeof(Impl) <= sizeof(m_handle), "thread handle storage too small");
    Impl* self = new (m_handle) Impl{nullptr, {entry, arg}};
    DWORD id = 0;
    self->handle = CreateThread(nullptr, 0, &runEntry, &self->start, 0, &id);
    if (!self->handle) {
        self->~Impl();
        return false;
    }
    m_id = id;
    m_hasHandle = true;
    return true;
}

void uiThread::join() {
    if (!m_hasHandle) return;
    WaitForSingleObject(impl()->handle, INFINITE);
    CloseHandle(impl()->handle);
    impl()->~Impl();
    m_id = 0;
    m_hasHandle = false;
}
#endif
