// The file-backed string table.
#include <gtest/gtest.h>
#include "filestringtable.h"
#include "testkit.h"

namespace {

std::string translated(FileStringTable& table, const char* key) {
    return reinterpret_cast<const char*>(table.translate(key));
}

} // namespace

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
