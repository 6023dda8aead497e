// The default services: the built-in memory manager and the test kit's counting one, the log service and
// its stderr sink's markup, the file-backed string table, the stdio file backend and the platform helpers.
#include <gtest/gtest.h>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <thread>
#include "file.h"
#include "filestringtable.h"
#include "logger.h"
#include "memorymgr.h"
#include "platform.h"
#include "testkit.h"

namespace {

std::string render(const char* text, bool ansi, std::size_t capacity = 256) {
    std::vector<char> out(capacity);
    const std::size_t n = Logger::renderMarkup(text, ansi, out.data(), out.size());
    EXPECT_EQ(n, std::string(out.data()).size());
    return out.data();
}

std::string translated(FileStringTable& table, const char* key) {
    return reinterpret_cast<const char*>(table.translate(key));
}

} // namespace

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
                i % 2 ? mem.free(t, p) : kept[t].push_back(p);
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
}

TEST(Logger, MarkupIsStrippedOrTurnedIntoTerminalColoursByTheBuiltInSink) {
    const char* text = "getWidget(): Unknown name: ^CFFFF00menu.ok^c\f";
    EXPECT_EQ(render(text, true), "getWidget(): Unknown name: \x1b[38;2;255;255;0mmenu.ok\x1b[0m");
    EXPECT_EQ(render("^C00ff80green^c", true), "\x1b[38;2;0;255;128mgreen\x1b[0m");
    // Not markup: kept as written. Only the final form feed is dropped.
    EXPECT_EQ(render("^CXYZ123 ^C12345 a^b ^\f middle\f", false), "^CXYZ123 ^C12345 a^b ^\f middle");
    EXPECT_EQ(render(nullptr, false), "");
    EXPECT_EQ(render("^CFF0000abcdef^c", false, 4), "abc");

    Logger::setSink(nullptr);
    testing::internal::CaptureStderr(); // no terminal: plain text
    Logger::log(2, "...[%s:%d] Unknown parameter: ^C00FF00%s^c\f", "menu", 12, "colour");
    Logger::log(1, "Depth %s invalid.\f", "top");
    Logger::log(0, "plain\f");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "error: ...[menu:12] Unknown parameter: colour\nwarning: Depth top invalid.\nplain\n");
}

TEST(LoggerThread, SinksGetTheWholeTextFromEveryThreadAndTheirClients) {
    const int first = Logger::registerClient("loader 1");
    EXPECT_GT(first, 0);
    EXPECT_GT(Logger::registerClient("loader 2"), first);
    testkit::Services svc;
    Logger::registerClient("worker");
    EXPECT_EQ(svc.log.clients(), std::vector<std::string>{"worker"});
    Logger::log(1, "^CFF0000%s^c is %d\f", "x", 3);
    EXPECT_TRUE(svc.log.has(1, "^CFF0000x^c is 3\f"));
    const std::string longName(3 * Logger::kMaxMessage, 'n'); // long messages are cut, the form feed kept
    Logger::log(2, "name %s\f", longName.c_str());
    EXPECT_EQ(svc.log.entries().back().text, "name " + std::string(Logger::kMaxMessage - 7, 'n') + "\f");

    svc.log.clear();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([t] {
            for (int i = 0; i < 250; ++i)
                Logger::log(1, "thread %d message %d\f", t, i);
        });
    for (std::thread& t : threads)
        t.join();
    EXPECT_EQ(svc.log.count(), 1000);
    EXPECT_TRUE(svc.log.has(1, "thread 3 message 249\f"));
}

TEST(StringTable, TranslatesKeysFromTheFileAndKeepsThemThroughFailedLoads) {
    testkit::Services svc;
    svc.files.add("strings.txt", "\xEF\xBB\xBF# menu texts\r\nMENU_START = Start game\r\n\r\n"
                                 "  MENU_QUIT\t=\t \"  Quit  \"  \r\n// a comment = not a key\n"
                                 "GREETING = Gr\xC3\xBC\xC3\x9F"
                                 "e, %s!\nbroken line\n"
                                 "MENU_START = second definition\rEMPTY =");
    svc.files.add("unreadable.txt", "A = 2\n");
    svc.files.failRead("unreadable.txt");
    {
        FileStringTable table;
        ASSERT_TRUE(table.load("strings.txt"));
        EXPECT_EQ(table.size(), 4);
        EXPECT_EQ(translated(table, "MENU_START") + "|" + translated(table, "MENU_QUIT") + "|" +
                      translated(table, "GREETING") + "|" + translated(table, "EMPTY") + "|" +
                      translated(table, "menu_start") + "|" + translated(table, "//") + "|" +
                      translated(table, nullptr),
                  "Start game|  Quit  |Gr\xC3\xBC\xC3\x9F"
                  "e, %s!||menu_start|//|"); // unknown keys stay as they are
        EXPECT_EQ(svc.memory.outstandingBlocks(0), 2);

        // Every allocation failure is logged and keeps the previous contents.
        for (long long n = 0; n < 3; ++n) {
            svc.memory.failAt(n);
            EXPECT_EQ(table.load("strings.txt"), n == 2);
            svc.memory.failAt(-1);
            EXPECT_EQ(translated(table, "MENU_START"), "Start game");
            EXPECT_EQ(svc.memory.outstandingBlocks(0), 2) << svc.memory.report();
        }
        EXPECT_FALSE(table.load("missing.txt"));
        EXPECT_FALSE(table.load("unreadable.txt"));
        EXPECT_EQ(translated(table, "MENU_START"), "Start game");
        table.clear();
        EXPECT_EQ(translated(table, "MENU_START"), "MENU_START");
    }
    EXPECT_EQ(svc.files.openHandles(), 0);
    EXPECT_EQ(svc.memory.outstandingBlocks(), 0);
    EXPECT_EQ(svc.log.dump(), "1: FileStringTable: strings.txt:7: expected: key = value\f\n"
                              "2: FileStringTable: strings.txt: Out of Memory\f\n"
                              "2: FileStringTable: strings.txt: Out of Memory\f\n"
                              "1: FileStringTable: strings.txt:7: expected: key = value\f\n"
                              "2: FileStringTable: cannot open missing.txt\f\n"
                              "2: FileStringTable: cannot read unreadable.txt\f\n");
}

TEST(File, BuiltInBackendReadsWholeFilesThroughStdioAndBackendsCanBeSwapped) {
    const std::string contents("line one\r\nbinary \0 byte", 23),
        name = testing::TempDir() + "gameui_file_test.bin";
    std::ofstream(name, std::ios::binary) << contents;
    FileHandle* f = File::open(name.c_str(), "rb");
    ASSERT_NE(f, nullptr);
    std::string buffer(23, '?');
    EXPECT_EQ(File::read(&buffer[0], 23, 1, f), 1u);
    EXPECT_EQ(buffer, contents);
    EXPECT_EQ(File::getLength(f), 23); // measuring does not move the read position
    EXPECT_EQ(File::read(&buffer[0], 1, 1, f), 0u);
    File::close(f);
    std::remove(name.c_str());
    EXPECT_EQ(File::open((testing::TempDir() + "no/such/file").c_str(), "rb"), nullptr);
    EXPECT_EQ(File::getLength(nullptr), -1);
    EXPECT_EQ(File::read(&buffer[0], 1, 1, nullptr), 0u);
    File::close(nullptr);

    testkit::Services svc; // installs its in-memory files
    svc.files.add("ui/menu.ui", "hello");
    f = File::open("ui/menu.ui", "rb");
    char buf[8] = {};
    EXPECT_EQ(File::read(buf, 3, 2, f), 1u); // only one whole block of 3 fits
    EXPECT_EQ(File::read(buf + 3, 2, 1, f), 1u);
    EXPECT_STREQ(buf, "hello");
    File::close(f);
    EXPECT_EQ(File::open("ui/menu.ui", "wb"), nullptr);
    EXPECT_EQ(svc.files.openHandles(), 0);
    File::setBackend(nullptr);
    EXPECT_EQ(File::open("ui/menu.ui", "rb"), nullptr); // back on disk, where there is no such file
    File::setBackend(&svc.files);
    EXPECT_EQ(svc.files.opens("ui/menu.ui"), 2);
}

TEST(Platform, BuiltInBackendRemembersTheCursorAndAnInstalledOneTakesOver) {
    ASSERT_EQ(Platform::backend(), nullptr);
    Platform::ShowCursor(false);
    Platform::SetCursorPos(320, 240);
    Platform::Sleep(1);
    int x = 0, y = 0;
    {
        testkit::Services svc;
        svc.platform.setCursor(5, 6);
        Platform::ShowCursor(true);
        Platform::GetCursorPos(x, y);
        EXPECT_EQ(svc.platform.shows, std::vector<bool>{true});
    }
    EXPECT_EQ(x * 1000 + y, 5006);
    Platform::GetCursorPos(x, y);
    EXPECT_EQ(x * 1000 + y, 320240);
    EXPECT_FALSE(Platform::IsCursorShown()); // the built-in state was not touched
    Platform::ShowCursor(true);
}
