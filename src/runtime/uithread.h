// uiThread: the background loader's worker thread object. The platform variant lives in its own source
// file (uithread_std.cpp on the standard library, uithread_win32.cpp on Windows, uithread_none.cpp where
// the build has no threads); the object itself comes from the buffer pool.
#pragma once

class uiThread {
public:
    typedef unsigned int (*Entry)(void* arg);

    // Starts entry(arg) at once on a new thread with the default stack size. Null when there is no
    // memory for the object or the operating system refuses the thread.
    static uiThread* create(Entry entry, void* arg);
    // Waits for the thread to end, then frees the object.
    static void destroy(uiThread* thread);

    // Waits without time limit for a started thread to end, then closes its handle.
    virtual ~uiThread();
    uiThread(const uiThread&) = delete;
    uiThread& operator=(const uiThread&) = delete;

    // Waits without time limit for the thread to end and closes its handle; later calls do nothing.
    void join();
    unsigned int id() const { return m_id; }

private:
    uiThread() = default;
    bool start(Entry entry, void* arg);

    struct Impl;
    Impl* impl();
    unsigned int m_id = 0;
    bool m_hasHandle = false;
    alignas(16) unsigned char m_handle[32]; // the operating system's thread handle
};
