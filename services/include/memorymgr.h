// The memory manager every allocation of the library goes through. The built-in one is a working heap
// allocator that counts bytes and blocks per pool; derive from it to replace or instrument it.
#pragma once
#include "uiapi.h"

class UI_API MemoryMgr {
public:
    static constexpr int kPools = 16; // pools counted separately; higher pool numbers share the last

    virtual ~MemoryMgr();
    virtual void* alloc(int pool, unsigned int size, const char* file, unsigned int line); // null: no memory
    virtual void free(int pool, void* p);

    // What is outstanding in a pool right now (pools below 0 or from kPools on count in the last slot).
    long long bytesInUse(int pool) const;
    long long blocksInUse(int pool) const;

private:
    long long m_bytes[kPools] = {};
    long long m_blocks[kPools] = {};
};

extern UI_API MemoryMgr* g_MemoryPtr; // starts at a built-in MemoryMgr
