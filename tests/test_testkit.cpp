// The test kit's doubles behave as their headers promise; every other suite relies on them.
#include <gtest/gtest.h>
#include <cstring>
#include "file.h"
#include "testkit.h"

TEST(TestKit, ServicesInstallAndRestore) {
    gfxSubsystem* gfxBefore = g_gfx;
    MemoryMgr* memoryBefore = g_MemoryPtr;
    {
        testkit::Services services;
        EXPECT_EQ(g_gfx, &services.gfx);
        EXPECT_EQ(g_sound, &services.sound);
        EXPECT_EQ(g_MemoryPtr, &services.memory);
        EXPECT_EQ(Logger::sink(), &services.log);
        EXPECT_EQ(File::backend(), &services.files);
        EXPECT_EQ(Platform::backend(), &services.platform);
    }
    EXPECT_EQ(g_gfx, gfxBefore);
    EXPECT_EQ(g_MemoryPtr, memoryBefore);
    EXPECT_EQ(Logger::sink(), nullptr);
    EXPECT_EQ(File::backend(), nullptr);
    EXPECT_EQ(Platform::backend(), nullptr);
}

TEST(TestKit, SpritesAreSharedByNameAndCounted) {
    testkit::RecordingGfx gfx;
    gfx.defineSprite("button", 100, 40, {4, 2});
    gfx.failSprite("broken");
    int a = gfx.createSprite("button");
    int b = gfx.createSprite("other");
    EXPECT_EQ(gfx.createSprite("button"), a);
    EXPECT_NE(a, b);
    EXPECT_EQ(gfx.createSprite("broken"), -1);
    EXPECT_EQ(gfx.liveSprites(), 3);
    EXPECT_EQ(gfx.getSpriteWidth(a), 100);
    EXPECT_EQ(gfx.getSpriteHeight(b), 32);
    EXPECT_EQ(gfx.getSpriteFrameCount(a, 1), 2);
    EXPECT_EQ(gfx.getSpriteFrameCount(a, 7), 1);
    EXPECT_STREQ(gfx.getSpriteName(a), "button");
    gfx.releaseSprite("button");
    gfx.releaseSprite("button");
    EXPECT_EQ(gfx.getSpriteName(a), nullptr);
    gfx.releaseSprite("button");
    EXPECT_EQ(gfx.overReleases(), 1);
    EXPECT_EQ(gfx.liveSprites(), 1);
    EXPECT_EQ(gfx.count("createSprite"), 4);

    gfx.setAlphaMask("other", [](int, int, int x, int) { return x < 10; });
    EXPECT_TRUE(gfx.alphaTestSprite(b, 0, 0, 9, 0));
    EXPECT_FALSE(gfx.alphaTestSprite(b, 0, 0, 10, 0));
    EXPECT_FALSE(gfx.alphaTestSprite(b, 0, 0, 5, 32)); // outside the frame
}

TEST(TestKit, FontsMeasureTextFromTheirWidths) {
    testkit::RecordingGfx gfx;
    gfx.defineFont("big", 20, 10);
    gfx.setCharWidth("big", 'i', 4);
    gfx.setMissingGlyph("big", 0x263A);
    gfx.failFont("none");
    int big = gfx.createFont("big");
    int plain = gfx.createFont("plain");
    EXPECT_EQ(gfx.createFont("none"), -1);
    EXPECT_EQ(gfx.getFontHeight(plain), 16);

    int widths[256], height = 0;
    gfx.getFontDimensions(big, widths, &height);
    EXPECT_EQ(height, 20);
    EXPECT_EQ(widths['a'], 10);
    EXPECT_EQ(widths['i'], 4);
    int w = 0, h = 0;
    EXPECT_TRUE(gfx.getCharDimensions(big, 0, 0xE9, &w, &h));
    EXPECT_EQ(w, 10);
    EXPECT_FALSE(gfx.getCharDimensions(big, 0, 0x263A, &w, &h));
    EXPECT_FALSE(gfx.testFontChar(big, 0x263A));

    const unsigned int text[] = {'h', 'i', 0xE9, 0};
    int x1, y1, x2, y2;
    gfx.getTextRect(big, 0, 100, 50, text, &x1, &y1, &x2, &y2);
    EXPECT_EQ((std::vector<int>{x1, y1, x2, y2}), (std::vector<int>{100, 50, 124, 70}));
    gfx.getTextRect(big, 1, 100, 50, text, &x1, &y1, &x2, &y2);
    EXPECT_EQ(x1, 76);
    gfx.getTextRect(big, 2, 100, 50, text, &x1, &y1, &x2, &y2);
    EXPECT_EQ(x1, 88);

    gfx.print(3, big, 0, 0, 1, 2, -1, 255, text);
    EXPECT_EQ(gfx.named("print")[0].text, "hi\xC3\xA9");
    gfx.releaseFont(big);
    EXPECT_EQ(gfx.liveFonts(), 1);
}

TEST(TestKit, MemoryFilesReadLikeStdio) {
    testkit::Services services;
    services.files.add("a.txt", "hello");
    services.files.add("bad.txt", "x");
    services.files.failRead("bad.txt");
    EXPECT_EQ(File::open("missing", "rb"), nullptr);
    EXPECT_EQ(services.files.opens("missing"), 1);

    FileHandle* f = File::open("a.txt", "rb");
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(File::getLength(f), 5);
    char buf[8] = {};
    EXPECT_EQ(File::read(buf, 3, 2, f), 1u); // only one whole block of 3 fits
    EXPECT_EQ(File::read(buf + 3, 2, 1, f), 1u);
    EXPECT_STREQ(buf, "hello");
    EXPECT_EQ(services.files.openHandles(), 1);
    File::close(f);
    EXPECT_EQ(services.files.openHandles(), 0);

    FileHandle* bad = File::open("bad.txt", "rb");
    EXPECT_EQ(File::read(buf, 1, 1, bad), 0u);
    File::close(bad);
    EXPECT_EQ(File::open("a.txt", "wb"), nullptr);
}

TEST(TestKit, LogCaptureKeepsExactTextAndClients) {
    testkit::Services services;
    Logger::log(2, "Out of %s\f", "memory");
    EXPECT_TRUE(services.log.has(2, "Out of memory\f"));
    EXPECT_FALSE(services.log.has(1, "Out of memory\f"));
    EXPECT_FALSE(services.log.has(2, "Out of memory"));
    Logger::registerClient("loader");
    EXPECT_EQ(services.log.clients(), (std::vector<std::string>{"loader"}));
    services.log.clear();
    EXPECT_EQ(services.log.count(), 0);
}
