// A memory manager for tests: allocates from the heap like the built-in one, counts every allocation,
// fails the Nth one on request and keeps the source place of each outstanding block. Thread-safe.
//
// Typical out-of-memory sweep: for n = 0, 1, ...: failAt(n), run the operation, check it failed cleanly,
// stop once failed() stays false.
#pragma once
#include <mutex>
#include <string>
#include <unordered_map>
#include "memorymgr.h"

namespace testkit {

class CountingMemoryMgr : public MemoryMgr {
public:
    void* alloc(int pool, unsigned int size, const char* file, unsigned int line) override;
    void free(int pool, void* p) override;

    long long allocations() const; // alloc calls (failed ones included) since creation or reset()
    void reset();                  // allocations() to 0, failAt(-1); outstanding blocks stay known
    void failAt(long long n); // the allocation with index n from now (0 = the next) returns null; -1: none
    bool failed() const;      // an allocation failed since the last failAt() or reset()

    // Blocks and bytes handed out and not yet freed, of one pool or of all.
    long long outstandingBlocks(int pool) const;
    long long outstandingBlocks() const;
    long long outstandingBytes(int pool) const;
    std::string report() const; // outstanding blocks with pool, size and file:line, oldest first

    // Misuse that tests should see: a free naming another pool than the block came from, and a free of a
    // block this manager never handed out (passed on to the fallback manager if there is one, else kept).
    int poolMismatches() const;
    int strayFrees() const;
    void setFallback(MemoryMgr* fallback);

private:
    struct Block {
        int pool;
        unsigned int size;
        std::string file;
        unsigned int line;
        long long index; // order of allocation, kept across reset()
    };
    mutable std::mutex m_lock;
    std::unordered_map<void*, Block> m_blocks;
    long long m_allocations = 0;
    long long m_serial = 0;
    long long m_sinceFailAt = 0;
    long long m_failIndex = -1;
    bool m_failed = false;
    int m_poolMismatches = 0;
    int m_strayFrees = 0;
    MemoryMgr* m_fallback = nullptr;
};

} // namespace testkit
