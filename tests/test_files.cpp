// The file library: the built-in stdio backend and switching backends.
#include <gtest/gtest.h>
#include <cstdio>
#include <string>
#include "file.h"
#include "testkit.h"

namespace {

std::string writeTempFile(const std::string& contents) {
    std::string name = testing::TempDir() + "gameui_file_test.bin";
    std::FILE* f = std::fopen(name.c_str(), "wb");
    std::fwrite(contents.data(), 1, contents.size(), f);
    std::fclose(f);
    return name;
}

} // namespace

TEST(File, BuiltInBackendReadsWholeFilesThroughStdio) {
    std::string contents("line one\r\nbinary \0 byte", 23);
    std::string name = writeTempFile(contents);
    FileHandle* f = File::open(name.c_str(), "rb");
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(File::getLength(f), 23);
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
}

TEST(File, BackendsCanBeSwappedAndRestored) {
    testkit::MemoryFiles files;
    files.add("ui/menu.ui", "menu = uiDialog");
    File::setBackend(&files);
    FileHandle* f = File::open("ui/menu.ui", "rb");
    EXPECT_NE(f, nullptr);
    File::close(f);
    File::registerThread();
    EXPECT_EQ(files.registeredThreads(), 1);
    File::unregisterThread();
    EXPECT_EQ(files.registeredThreads(), 0);
    File::setBackend(nullptr);
    EXPECT_EQ(File::backend(), nullptr);
    EXPECT_EQ(File::open("ui/menu.ui", "rb"), nullptr); // back on disk, where there is no such file
    EXPECT_EQ(files.opens("ui/menu.ui"), 1);
}
