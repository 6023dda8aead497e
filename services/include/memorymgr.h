// The memory manager every allocation of the library goes through. The built-in one is a working heap
// allocator that counts bytes and blocks per pool; derive from it to replace or instrument it.
#pragma once
#include <atomic>
#include "uiapi.h"

class UI_API MemoryMgr {
public:
    static constexpr int kPools = 16; // pools counted separately; higher pool numbers share the last

    // constexpr so that the built-in manager is ready before any static initialiser runs.
    constexpr MemoryMgr() = default;
    virtual ~MemoryMgr();
    MemoryMgr(const MemoryMgr&) = delete;
    MemoryMgr& operator=(const MemoryMgr&) = delete;

    // Blocks are aligned for any type; a size of 0 still gives a distinct block. Thread-safe.
    virtual void* alloc(int pool, unsigned int size, const char* file, unsigned int line); // null: no memory
    virtual void free(int pool, void* p); // the block's size and pool come from its header; null is ignored

    // What is outstanding in a pool right now (pools below 0 or from kPools on count in the last slot).
    long long bytesInUse(int pool) const;
    long long blocksInUse(int pool) const;

private:
    std::atomic<long long> m_bytes[kPools]{};
    std::atomic<long long> m_blocks[kPools]{};
};

extern UI_API MemoryMgr* g_MemoryPtr; // starts at a built-in MemoryMgr
