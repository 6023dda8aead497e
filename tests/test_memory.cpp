// The built-in heap memory manager and the test kit's counting manager.
#include <gtest/gtest.h>
#include <cstddef>
#include <cstdint>
#include <thread>
#include <vector>
#include "memorymgr.h"
#include "testkit.h"

TEST(MemoryMgr, CountsBytesAndBlocksPerPool) {
    MemoryMgr mem;
    void* a = mem.alloc(9, 40, __FILE__, __LINE__);
    void* b = mem.alloc(9, 24, __FILE__, __LINE__);
    void* c = mem.alloc(0, 100, __FILE__, __LINE__);
    void* empty = mem.alloc(0, 0, __FILE__, __LINE__);
    ASSERT_TRUE(a && b && c && empty);
    EXPECT_NE(empty, c);
    for (void* p : {a, b, c, empty})
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(p) % alignof(std::max_align_t), 0u);
    EXPECT_EQ(mem.bytesInUse(9), 64);
    EXPECT_EQ(mem.blocksInUse(9), 2);
    EXPECT_EQ(mem.blocksInUse(0), 2);
    mem.free(9, a);
    mem.free(0, empty);
    mem.free(0, nullptr);
    EXPECT_EQ(mem.bytesInUse(9), 24);
    EXPECT_EQ(mem.blocksInUse(0), 1);
    mem.free(9, b);
    mem.free(0, c);
    EXPECT_EQ(mem.bytesInUse(0) + mem.bytesInUse(9), 0);
}

TEST(MemoryMgr, PoolsOutOfRangeShareTheLastSlot) {
    MemoryMgr mem;
    void* a = mem.alloc(-3, 8, __FILE__, __LINE__);
    void* b = mem.alloc(200, 8, __FILE__, __LINE__);
    EXPECT_EQ(mem.blocksInUse(MemoryMgr::kPools - 1), 2);
    EXPECT_EQ(mem.blocksInUse(77), 2);
    mem.free(-3, a);
    mem.free(200, b);
    EXPECT_EQ(mem.blocksInUse(MemoryMgr::kPools - 1), 0);
}

TEST(MemoryMgr, CountsStayExactUnderConcurrentUse) {
    MemoryMgr mem;
    std::vector<std::vector<void*>> kept(4);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&mem, &kept, t] {
            for (int i = 0; i < 2000; ++i) {
                void* p = mem.alloc(t, 16, __FILE__, __LINE__);
                if (i % 2)
                    mem.free(t, p);
                else
                    kept[t].push_back(p);
            }
        });
    for (std::thread& t : threads)
        t.join();
    for (int t = 0; t < 4; ++t) {
        EXPECT_EQ(mem.blocksInUse(t), 1000);
        EXPECT_EQ(mem.bytesInUse(t), 16000);
        for (void* p : kept[t])
            mem.free(t, p);
    }
}

TEST(MemoryMgr, BuiltInManagerIsInstalledFromTheStart) {
    ASSERT_NE(g_MemoryPtr, nullptr);
    long long before = g_MemoryPtr->blocksInUse(0);
    void* p = g_MemoryPtr->alloc(0, 10, __FILE__, __LINE__);
    EXPECT_EQ(g_MemoryPtr->blocksInUse(0), before + 1);
    g_MemoryPtr->free(0, p);
}

TEST(CountingMemoryMgr, FailsTheNthAllocationOnce) {
    testkit::CountingMemoryMgr mem;
    mem.failAt(2);
    void* a = mem.alloc(0, 8, "a.cpp", 1);
    void* b = mem.alloc(0, 8, "b.cpp", 2);
    EXPECT_FALSE(mem.failed());
    EXPECT_EQ(mem.alloc(0, 8, "c.cpp", 3), nullptr);
    EXPECT_TRUE(mem.failed());
    void* d = mem.alloc(0, 8, "d.cpp", 4);
    EXPECT_NE(d, nullptr);
    EXPECT_EQ(mem.allocations(), 4);
    mem.failAt(0); // counting starts again from the call
    EXPECT_FALSE(mem.failed());
    EXPECT_EQ(mem.alloc(9, 8, "e.cpp", 5), nullptr);
    mem.failAt(-1);
    for (void* p : {a, b, d})
        mem.free(0, p);
    EXPECT_EQ(mem.outstandingBlocks(), 0);
    mem.reset();
    EXPECT_EQ(mem.allocations(), 0);
}

TEST(CountingMemoryMgr, ReportsWhatIsOutstandingAndMisuse) {
    testkit::CountingMemoryMgr mem;
    void* widget = mem.alloc(9, 48, "widget.cpp", 23);
    void* text = mem.alloc(0, 5, "text.cpp", 7);
    void* node = mem.alloc(9, 16, "list.cpp", 3);
    EXPECT_EQ(mem.outstandingBlocks(9), 2);
    EXPECT_EQ(mem.outstandingBytes(9), 64);
    EXPECT_EQ(mem.bytesInUse(9), 64);
    mem.free(9, node);
    EXPECT_EQ(mem.report(), "2 blocks outstanding\n"
                            "  pool 9, 48 bytes at widget.cpp:23 (allocation 0)\n"
                            "  pool 0, 5 bytes at text.cpp:7 (allocation 1)\n");
    mem.free(9, text); // wrong pool: still freed, but counted
    EXPECT_EQ(mem.poolMismatches(), 1);
    EXPECT_EQ(mem.outstandingBlocks(0), 0);
    mem.free(9, widget);
    EXPECT_EQ(mem.outstandingBlocks(), 0);
}

TEST(CountingMemoryMgr, BlocksFromBeforeServicesGoBackToTheirManager) {
    void* early = g_MemoryPtr->alloc(0, 32, __FILE__, __LINE__);
    long long builtInBlocks = g_MemoryPtr->blocksInUse(0);
    {
        testkit::Services services;
        g_MemoryPtr->free(0, early);
        EXPECT_EQ(services.memory.strayFrees(), 1);
        EXPECT_EQ(services.memory.outstandingBlocks(), 0);
    }
    EXPECT_EQ(g_MemoryPtr->blocksInUse(0), builtInBlocks - 1);
}
