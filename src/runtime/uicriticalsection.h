// uiCriticalSection: a recursive lock object. Created from the buffer pool by uiCriticalSection::create;
// null when no memory is left. The platform variant lives in its own source file.
#pragma once

class uiCriticalSection {
public:
    static uiCriticalSection* create(); // pool 0; null on failure
    static void destroy(uiCriticalSection* cs);

    virtual ~uiCriticalSection();
    uiCriticalSection(const uiCriticalSection&) = delete;
    uiCriticalSection& operator=(const uiCriticalSection&) = delete;

    void enter();
    void leave();

private:
    uiCriticalSection();
    struct Impl;
    alignas(16) unsigned char m_storage[64]; // the operating system's lock object
    Impl* impl();
};

// Holds a lock for a scope. A null lock (its allocation failed) leaves the scope unlocked, which is still
// correct for an owner that is only touched from the frame thread.
class uiScopedLock {
public:
    explicit uiScopedLock(uiCriticalSection* cs) : m_cs(cs) {
        if (m_cs) m_cs->enter();
    }
    ~uiScopedLock() {
        if (m_cs) m_cs->leave();
    }
    uiScopedLock(const uiScopedLock&) = delete;
    uiScopedLock& operator=(const uiScopedLock&) = delete;

private:
    uiCriticalSection* m_cs;
};
