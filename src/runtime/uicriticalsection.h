// uiCriticalSection: a recursive lock object. Created from the buffer pool by uiCriticalSection::create;
// null when no memory is left. The platform variant lives in its own source file.
#pragma once

class uiCriticalSection {
public:
    static uiCriticalSection* create();  // pool 0; null on failure
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
