// The built-in heap memory manager. Each block carries a header in front of it with its size and pool,
// so free() can count without being told the size.
#include "memorymgr.h"
#include <cstddef>
#include <cstdlib>
#include "neverdestroyed.h"

namespace {

struct alignas(std::max_align_t) BlockHeader {
    unsigned int size;
    int pool;
};

int slot(int pool) {
    return pool >= 0 && pool < MemoryMgr::kPools ? pool : MemoryMgr::kPools - 1;
}

ui::NeverDestroyed<MemoryMgr> s_builtin;

} // namespace

MemoryMgr* g_MemoryPtr = &s_builtin.value;

MemoryMgr::~MemoryMgr() = default;

void* MemoryMgr::alloc(int pool, unsigned int size, const char*, unsigned int) {
    auto* header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + size));
    if (!header) return nullptr;
    header->size = size;
    header->pool = pool;
    m_bytes[slot(pool)].fetch_add(size, std::memory_order_relaxed);
    m_blocks[slot(pool)].fetch_add(1, std::memory_order_relaxed);
    return header + 1;
}

void MemoryMgr::free(int, void* p) {
    if (!p) return;
    BlockHeader* header = static_cast<BlockHeader*>(p) - 1;
    m_bytes[slot(header->pool)].fetch_sub(header->size, std::memory_order_relaxed);
    m_blocks[slot(header->pool)].fetch_sub(1, std::memory_order_relaxed);
    std::free(header);
}

long long MemoryMgr::bytesInUse(int pool) const {
    return m_bytes[slot(pool)].load(std::memory_order_relaxed);
}
long long MemoryMgr::blocksInUse(int pool) const {
    return m_blocks[slot(pool)].load(std::memory_order_relaxed);
}
