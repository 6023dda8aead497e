// The built-in heap memory manager and the test kit's counting manager.
#include <gtest/gtest.h>
#include <cstdint>
#include <thread>
#include "memorymgr.h"
#include "testkit.h"

TEST(MemoryMgr, CountsBytesAndBlocksPerPoolUnderConcurrentUse) {
    MemoryMgr mem;
    void* a = mem.alloc(9, 40, __FILE__, __LINE__);
    void* empty = mem.alloc(0, 0, __FILE__, __LINE__);
    void* far = mem.alloc(-3, 8, __FILE__, __LINE__); // pools out of range share the last slot
    void* far2 = mem.alloc(200, 8, __FILE__, __LINE__);
    for (void* p : {a, empty, far, far2})
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(p) % alignof(std::max_align_t), 0u);
    EXPECT_EQ(mem.bytesInUse(9) * 100 + mem.blocksInUse(0) * 10 + mem.blocksInUse(77), 4012);
    EXPECT_EQ(mem.blocksInUse(MemoryMgr::kPools - 1), 2);
    for (auto [pool, p] :
         std::vector<std::pair<int, void*>>{{9, a}, {0, empty}, {-3, far}, {200, far2}, {0, nullptr}})
        mem.free(pool, p);
    EXPECT_EQ(mem.bytesInUse(9) + mem.blocksInUse(0) + mem.blocksInUse(77), 0);

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
        EXPECT_EQ(mem.blocksInUse(t) * 100000 + mem.bytesInUse(t), 100016000);
        for (void* p : kept[t])
            mem.free(t, p);
    }
}

TEST(CountingMemoryMgr, FailsTheNthAllocationAndReportsWhatIsOutstandingAndMisuse) {
    void* early =
        g_MemoryPtr->alloc(0, 32, __FILE__, __LINE__); // the built-in manager, installed from the start
    testkit::Services svc;
    testkit::CountingMemoryMgr& mem = svc.memory;
    mem.failAt(2);
    void* widget = mem.alloc(9, 48, "widget.cpp", 23);
    void* text = mem.alloc(0, 5, "text.cpp", 7);
    EXPECT_FALSE(mem.failed());
    EXPECT_EQ(mem.alloc(0, 8, "c.cpp", 3), nullptr);
    EXPECT_TRUE(mem.failed());
    void* node = mem.alloc(9, 16, "list.cpp", 3);
    EXPECT_EQ(mem.allocations(), 4);
    mem.failAt(0); // counting starts again from the call
    EXPECT_FALSE(mem.failed());
    EXPECT_EQ(mem.alloc(9, 8, "e.cpp", 5), nullptr);
    mem.failAt(-1);
    EXPECT_EQ(mem.outstandingBlocks(9) * 100 + mem.outstandingBytes(9), 264);
    mem.free(9, node);
    EXPECT_EQ(mem.report(), "2 blocks outstanding\n  pool 9, 48 bytes at widget.cpp:23 (allocation 0)\n"
                            "  pool 0, 5 bytes at text.cpp:7 (allocation 1)\n");
    mem.free(9, text); // wrong pool: still freed, but counted
    mem.free(9, widget);
    g_MemoryPtr->free(0, early); // a block from before goes back to its own manager
    EXPECT_EQ(mem.poolMismatches() * 10 + mem.strayFrees(), 11);
    EXPECT_EQ(mem.outstandingBlocks(), 0);
    mem.reset();
    EXPECT_EQ(mem.allocations(), 0);
}
