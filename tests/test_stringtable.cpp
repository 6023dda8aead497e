// The file-backed string table.
#include <gtest/gtest.h>
#include <string>
#include "filestringtable.h"
#include "testkit.h"

namespace {

std::string translated(FileStringTable& table, const char* key) {
    return reinterpret_cast<const char*>(table.translate(key));
}

const char* const kStrings = "\xEF\xBB\xBF# menu texts\r\n"
                             "MENU_START = Start game\r\n"
                             "\r\n"
                             "  MENU_QUIT\t=\t \"  Quit  \"  \r\n"
                             "// a comment = not a key\n"
                             "GREETING = Gr\xC3\xBC\xC3\x9F"
                             "e, %s!\n"
                             "broken line\n"
                             "MENU_START = second definition\r"
                             "EMPTY =";

} // namespace

TEST(StringTable, TranslatesKeysFromTheFile) {
    testkit::Services services;
    services.files.add("strings.txt", kStrings);
    {
        FileStringTable table;
        ASSERT_TRUE(table.load("strings.txt"));
        EXPECT_EQ(table.size(), 4);
        EXPECT_EQ(translated(table, "MENU_START"), "Start game");
        EXPECT_EQ(translated(table, "MENU_QUIT"), "  Quit  ");
        EXPECT_EQ(translated(table, "GREETING"), "Gr\xC3\xBC\xC3\x9F"
                                                 "e, %s!");
        EXPECT_EQ(translated(table, "EMPTY"), "");
        EXPECT_EQ(translated(table, "menu_start"),
                  "menu_start"); // keys are exact; unknown keys stay as they are
        EXPECT_EQ(translated(table, "//"), "//");
        EXPECT_EQ(translated(table, nullptr), "");
        EXPECT_EQ(services.files.openHandles(), 0);
        EXPECT_EQ(services.log.count(), 1) << services.log.dump();
        EXPECT_TRUE(services.log.has(1, "FileStringTable: strings.txt:7: expected: key = value\f"));
        EXPECT_EQ(services.memory.outstandingBlocks(0), 2);
    }
    EXPECT_EQ(services.memory.outstandingBlocks(), 0);
}

TEST(StringTable, FailedLoadsKeepThePreviousContents) {
    testkit::Services services;
    services.files.add("good.txt", "A = 1\n");
    services.files.add("unreadable.txt", "A = 2\n");
    services.files.failRead("unreadable.txt");
    FileStringTable table;
    ASSERT_TRUE(table.load("good.txt"));
    EXPECT_FALSE(table.load("missing.txt"));
    EXPECT_FALSE(table.load("unreadable.txt"));
    EXPECT_EQ(translated(table, "A"), "1");
    EXPECT_TRUE(services.log.has(2, "FileStringTable: cannot open missing.txt\f"));
    EXPECT_TRUE(services.log.has(2, "FileStringTable: cannot read unreadable.txt\f"));
    EXPECT_EQ(services.files.openHandles(), 0);
    table.clear();
    EXPECT_EQ(translated(table, "A"), "A");
    EXPECT_EQ(services.memory.outstandingBlocks(), 0);
}

TEST(StringTable, EveryAllocationFailureIsLoggedAndLeaksNothing) {
    testkit::Services services;
    services.files.add("strings.txt", kStrings);
    FileStringTable table;
    ASSERT_TRUE(table.load("strings.txt"));
    int failures = 0;
    for (long long n = 0;; ++n) {
        services.log.clear();
        services.memory.failAt(n);
        bool loaded = table.load("strings.txt");
        if (!services.memory.failed()) {
            EXPECT_TRUE(loaded);
            break;
        }
        ++failures;
        EXPECT_FALSE(loaded);
        EXPECT_TRUE(services.log.has(2, "FileStringTable: strings.txt: Out of Memory\f"))
            << services.log.dump();
        EXPECT_EQ(translated(table, "MENU_START"), "Start game");
        EXPECT_EQ(services.memory.outstandingBlocks(0), 2) << services.memory.report();
        EXPECT_EQ(services.files.openHandles(), 0);
    }
    EXPECT_EQ(failures, 2);
    services.memory.failAt(-1);
    table.clear();
    EXPECT_EQ(services.memory.outstandingBlocks(), 0) << services.memory.report();
}
