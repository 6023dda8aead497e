// Sprites of the SDL graphics service: sheets, the blit forms, depth order and alpha tests.
#include "sdlfixture.h"

using SdlSprites = SdlServiceTest;

TEST_F(SdlSprites, SheetDescriptorGivesFrameSizeAndCountsAndFramesComeFromRowAndColumn) {
    // 3 columns x 2 rows of 8x8 frames: column c, row r is painted (40c, 100r, 7).
    writePng("sheet.png", 24, 16, [](int x, int y) {
        return SDL_Color{Uint8(40 * (x / 8)), Uint8(100 * (y / 8)), 7, 255};
    });
    writeText("knob.sprite", "image = sheet.png\nframe 8 8\nanim 0 3\nanim 1 2  # second row\n");
    const int knob = gfx->createSprite("knob");
    ASSERT_NE(knob, -1);
    EXPECT_STREQ(gfx->getSpriteName(knob), "knob");
    EXPECT_EQ(gfx->getSpriteWidth(knob), 8);
    EXPECT_EQ(gfx->getSpriteHeight(knob), 8);
    EXPECT_EQ(gfx->getSpriteFrameCount(knob, 0), 3);
    EXPECT_EQ(gfx->getSpriteFrameCount(knob, 1), 2);

    gfx->blt(0, knob, 0, 0, 1, 1, 255);  // row 1, column 1
    gfx->blt(0, knob, 10, 0, 0, 5, 255); // frame 5 of 3 wraps to column 2
    gfx->present();
    EXPECT_EQ(at(3, 3), (SDL_Color{40, 100, 7, 255}));
    EXPECT_EQ(at(8, 3), kBlack); // only one frame wide
    EXPECT_EQ(at(13, 3), (SDL_Color{80, 0, 7, 255}));

    // A plain picture is one animation of one frame; unknown names give -1 and a warning.
    writeSolid("dot.png", 5, 4, kRed);
    const int dot = gfx->createSprite("dot");
    EXPECT_EQ(gfx->getSpriteWidth(dot), 5);
    EXPECT_EQ(gfx->getSpriteFrameCount(dot, 0), 1);
    EXPECT_EQ(gfx->createSprite("missing"), -1);
}

TEST_F(SdlSprites, PartAndSourceRectangleBlitsDrawOnlyTheirPixels) {
    writePng("quad.png", 8, 8, [](int x, int y) { return x < 4 ? (y < 4 ? kRed : kGreen) : kBlue; });
    const int quad = gfx->createSprite("quad");
    gfx->blt(0, quad, 0, 0, 2, 2, 0, 0, 255);           // top-left 2x2 part
    gfx->blt(0, quad, 20, 20, 4, 0, 3, 3, 0, 0, 255);   // source rectangle in the blue half
    gfx->blt(0, quad, 40, 40, 2, 6, 20, 20, 0, 0, 255); // source rectangle cut at the frame's edge
    gfx->present();
    EXPECT_EQ(at(1, 1), kRed);
    EXPECT_EQ(at(2, 1), kBlack);
    EXPECT_EQ(at(20, 20), kBlue);
    EXPECT_EQ(at(22, 22), kBlue);
    EXPECT_EQ(at(23, 20), kBlack);
    EXPECT_EQ(at(41, 41), kGreen); // srcX 2, srcY 6 lies in the green quarter
    EXPECT_EQ(at(40, 42), kBlack); // only 2 rows remain below srcY 6
    EXPECT_EQ(at(46, 40), kBlack); // 6 columns remain right of srcX 2
    EXPECT_EQ(at(45, 40), kBlue);
}

TEST_F(SdlSprites, LowerDepthIsDrawnBelowWhateverTheCallOrderAndSortLevelOrdersWithinADepth) {
    writeSolid("r.png", 4, 4, kRed);
    writeSolid("g.png", 4, 4, kGreen);
    writeSolid("b.png", 4, 4, kBlue);
    const int r = gfx->createSprite("r"), g = gfx->createSprite("g"), b = gfx->createSprite("b");
    gfx->blt(5, r, 0, 0, 0, 0, 255);
    gfx->blt(2, g, 0, 0, 0, 0, 255); // called later but lower: below red
    gfx->bltSort(3, 9, b, 10, 0, 0, 0, 255);
    gfx->bltSort(3, 1, r, 10, 0, 0, 0, 255); // lower sort level: below blue
    gfx->blt(7, g, 20, 0, 0, 0, 255);
    gfx->blt(7, b, 20, 0, 0, 0, 255); // same depth: call order, blue on top
    gfx->present();
    EXPECT_EQ(at(1, 1), kRed);
    EXPECT_EQ(at(11, 1), kBlue);
    EXPECT_EQ(at(21, 1), kBlue);

    // Each frame starts empty and counts its own blits.
    gfx->blt(0, g, 0, 0, 0, 0, 255);
    gfx->present();
    EXPECT_EQ(at(1, 1), kGreen);
    EXPECT_EQ(at(11, 1), kBlack);
    EXPECT_EQ(gfx->getStatistics()->blt, 1);
    EXPECT_EQ(gfx->getStatistics()->total, 1);
    EXPECT_EQ(gfx->getStatistics()->tmem, 0); // three 4x4 sheets are under a kilobyte
}

TEST_F(SdlSprites, AlphaBlendsAndAlphaTestReadsTheFramesPixels) {
    writeSolid("w.png", 4, 4, SDL_Color{255, 255, 255, 255});
    const int w = gfx->createSprite("w");
    gfx->blt(0, w, 0, 0, 0, 0, 128);
    gfx->present();
    EXPECT_NEAR(at(1, 1).r, 128, 2);

    // Two 4x4 frames: the first opaque on its left half only, the second transparent.
    writePng("hit.png", 8, 4, [](int x, int) { return x < 2 ? kRed : kClear; });
    const int hit = gfx->createSprite("hit.png");
    gfx->setupAlphaTestSprite(hit);
    EXPECT_TRUE(gfx->alphaTestSprite(hit, 0, 0, 1, 3));
    EXPECT_FALSE(gfx->alphaTestSprite(hit, 0, 0, 2, 0));
    EXPECT_FALSE(gfx->alphaTestSprite(hit, 0, 0, -1, 0));
    EXPECT_FALSE(gfx->alphaTestSprite(hit, 0, 0, 8, 0)); // outside the frame
}

TEST_F(SdlSprites, ReleasedSpritesAreGoneOnceEveryCreateIsMatched) {
    writeSolid("r.png", 4, 4, kRed);
    const int a = gfx->createSprite("r");
    EXPECT_EQ(gfx->createSprite("r"), a);
    gfx->releaseSprite("r");
    EXPECT_STREQ(gfx->getSpriteName(a), "r");
    gfx->releaseSprite("r");
    EXPECT_EQ(gfx->getSpriteName(a), nullptr);
    EXPECT_EQ(gfx->getSpriteWidth(a), 0);
    gfx->blt(0, a, 0, 0, 0, 0, 255); // a stale handle draws nothing
    gfx->present();
    EXPECT_EQ(at(1, 1), kBlack);
}

TEST_F(SdlSprites, ReloadReadsTheFilesAgainUnderTheSameHandle) {
    writeSolid("dot.png", 4, 4, kRed);
    const int dot = gfx->createSprite("dot");
    writeSolid("dot.png", 6, 4, kBlue); // saved again, wider
    EXPECT_TRUE(gfx->reloadSprite("dot"));
    EXPECT_EQ(gfx->getSpriteWidth(dot), 6);
    gfx->blt(0, dot, 0, 0, 0, 0, 255);
    gfx->present();
    EXPECT_EQ(at(5, 1), kBlue);

    std::remove((dir + "/dot.png").c_str()); // unreadable: the old picture stays
    EXPECT_FALSE(gfx->reloadSprite("dot"));
    EXPECT_EQ(gfx->getSpriteWidth(dot), 6);
    EXPECT_TRUE(gfx->reloadSprite("never-loaded"));
}
