// The file library: the built-in stdio backend and switching backends, and the platform helpers.
#include <gtest/gtest.h>
#include <cstdio>
#include "file.h"
#include "platform.h"
#include "testkit.h"

TEST(File, BuiltInBackendReadsWholeFilesThroughStdioAndBackendsCanBeSwapped) {
    const std::string contents("line one\r\nbinary \0 byte", 23),
        name = testing::TempDir() + "gameui_file_test.bin";
    std::FILE* out = std::fopen(name.c_str(), "wb");
    std::fwrite(contents.data(), 1, contents.size(), out);
    std::fclose(out);
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

    testkit::Services svc;
    svc.files.add("ui/menu.ui", "hello");
    svc.files.add("bad.txt", "x");
    svc.files.failRead("bad.txt");
    f = File::open("ui/menu.ui", "rb");
    char buf[8] = {};
    EXPECT_EQ(File::read(buf, 3, 2, f), 1u); // only one whole block of 3 fits
    EXPECT_EQ(File::read(buf + 3, 2, 1, f), 1u);
    EXPECT_STREQ(buf, "hello");
    File::close(f);
    FileHandle* bad = File::open("bad.txt", "rb");
    EXPECT_EQ(File::read(buf, 1, 1, bad), 0u);
    File::close(bad);
    EXPECT_EQ(File::open("ui/menu.ui", "wb"), nullptr);
    File::registerThread();
    EXPECT_EQ(svc.files.registeredThreads(), 1);
    File::unregisterThread();
    EXPECT_EQ(svc.files.openHandles() + svc.files.registeredThreads(), 0);
    File::setBackend(nullptr);
    EXPECT_EQ(File::open("ui/menu.ui", "rb"), nullptr); // back on disk, where there is no such file
    File::setBackend(&svc.files);
    EXPECT_EQ(svc.files.opens("ui/menu.ui"), 2);
}

TEST(Platform, BuiltInBackendRemembersTheCursorAndAnInstalledOneTakesOver) {
    ASSERT_EQ(Platform::backend(), nullptr);
    Platform::ShowCursor(false);
    EXPECT_FALSE(Platform::IsCursorShown());
    Platform::ShowCursor(true);
    Platform::SetCursorPos(320, 240);
    int x = 0, y = 0;
    Platform::GetCursorPos(x, y);
    EXPECT_EQ(x * 1000 + y, 320240);
    Platform::Sleep(1);
    {
        testkit::Services svc;
        svc.platform.setCursor(5, 6);
        Platform::ShowCursor(false);
        Platform::GetCursorPos(x, y);
        EXPECT_EQ(x * 1000 + y, 5006);
        EXPECT_EQ(svc.platform.shows, std::vector<bool>{false});
    }
    EXPECT_TRUE(Platform::IsCursorShown()); // the built-in state was not touched
}
