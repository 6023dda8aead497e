#include "countingmemorymgr.h"
#include <algorithm>
#include <vector>

namespace testkit {

void* CountingMemoryMgr::alloc(int pool, unsigned int size, const char* file, unsigned int line) {
    std::lock_guard<std::mutex> guard(m_lock);
    ++m_allocations;
    long long index = m_serial++;
    if (m_sinceFailAt++ == m_failIndex) {
        m_failed = true;
        return nullptr;
    }
    void* p = MemoryMgr::alloc(pool, size, file, line);
    if (p) m_blocks[p] = Block{pool, size, file ? file : "?", line, index};
    return p;
}

void CountingMemoryMgr::free(int pool, void* p) {
    if (!p) return;
    std::unique_lock<std::mutex> guard(m_lock);
    auto it = m_blocks.find(p);
    if (it == m_blocks.end()) {
        ++m_strayFrees;
        MemoryMgr* fallback = m_fallback;
        guard.unlock();
        if (fallback) fallback->free(pool, p);
        return;
    }
    if (it->second.pool != pool) ++m_poolMismatches;
    m_blocks.erase(it);
    MemoryMgr::free(pool, p);
}

long long CountingMemoryMgr::allocations() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_allocations;
}

void CountingMemoryMgr::reset() {
    std::lock_guard<std::mutex> guard(m_lock);
    m_allocations = 0;
    m_sinceFailAt = 0;
    m_failIndex = -1;
    m_failed = false;
}

void CountingMemoryMgr::failAt(long long n) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_sinceFailAt = 0;
    m_failIndex = n;
    m_failed = false;
}

bool CountingMemoryMgr::failed() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_failed;
}

long long CountingMemoryMgr::outstandingBlocks(int pool) const {
    std::lock_guard<std::mutex> guard(m_lock);
    return std::count_if(m_blocks.begin(), m_blocks.end(),
                         [&](const auto& b) { return b.second.pool == pool; });
}

long long CountingMemoryMgr::outstandingBlocks() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return static_cast<long long>(m_blocks.size());
}

long long CountingMemoryMgr::outstandingBytes(int pool) const {
    std::lock_guard<std::mutex> guard(m_lock);
    long long bytes = 0;
    for (const auto& b : m_blocks)
        if (b.second.pool == pool) bytes += b.second.size;
    return bytes;
}

std::string CountingMemoryMgr::report() const {
    std::lock_guard<std::mutex> guard(m_lock);
    std::vector<const Block*> blocks;
    for (const auto& b : m_blocks)
        blocks.push_back(&b.second);
    std::sort(blocks.begin(), blocks.end(),
              [](const Block* a, const Block* b) { return a->index < b->index; });
    std::string out = std::to_string(blocks.size()) + " blocks outstanding\n";
    for (const Block* b : blocks)
        out += "  pool " + std::to_string(b->pool) + ", " + std::to_string(b->size) + " bytes at " + b->file +
               ":" + std::to_string(b->line) + " (allocation " + std::to_string(b->index) + ")\n";
    return out;
}

int CountingMemoryMgr::poolMismatches() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_poolMismatches;
}

int CountingMemoryMgr::strayFrees() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_strayFrees;
}

void CountingMemoryMgr::setFallback(MemoryMgr* fallback) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_fallback = fallback;
}

} // namespace testkit
