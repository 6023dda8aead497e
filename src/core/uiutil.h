// Small helpers shared by the library's sources: bounded copies, name comparison and pool allocation.
#pragma once
#include <cstddef>
#include <new>
#include <utility>
#include "memorymgr.h"

namespace ui {

// Copies at most capacity - 1 characters and always terminates; longer input is cut.
inline void copyName(char* dst, std::size_t capacity, const char* src) {
    std::size_t i = 0;
    if (src)
        for (; i + 1 < capacity && src[i]; ++i)
            dst[i] = src[i];
    dst[i] = '\0';
}
template <std::size_t N> inline void copyName(char (&dst)[N], const char* src) {
    copyName(dst, N, src);
}

// Case-insensitive equality by std::tolower. Loading compares every key with each class's key names,
// and most of those comparisons fail at the first character: two ASCII characters that differ in more
// than the case bit are never the same letter, which the inline part answers without a call.
bool equalNoCaseFull(const char* a, const char* b);
inline bool equalNoCase(const char* a, const char* b) {
    if (a && b) {
        const unsigned char ca = static_cast<unsigned char>(*a), cb = static_cast<unsigned char>(*b);
        if (ca != cb && ca < 0x80 && cb < 0x80 && (ca | 0x20) != (cb | 0x20)) return false;
    }
    return equalNoCaseFull(a, b);
}

// Raw memory from a pool (the class-level operator new of the library's classes); null when the memory
// manager has none. poolFree gives it back; null is ignored.
inline void* poolAlloc(int pool, std::size_t size, const char* file, unsigned int line) {
    return g_MemoryPtr ? g_MemoryPtr->alloc(pool, static_cast<unsigned int>(size), file, line) : nullptr;
}
inline void poolFree(int pool, void* p) {
    if (p) g_MemoryPtr->free(pool, p);
}

// Plain records (list nodes, entries) from a pool; null when the memory manager has none.
template <class T> T* poolNew(int pool, const char* file, unsigned int line) {
    void* p = poolAlloc(pool, sizeof(T), file, line);
    return p ? new (p) T() : nullptr;
}
template <class T> void poolDelete(int pool, T* p) {
    if (!p) return;
    p->~T();
    g_MemoryPtr->free(pool, p);
}

} // namespace ui

#define UI_POOL_NEW(T, pool) ::ui::poolNew<T>(pool, __FILE__, __LINE__)
