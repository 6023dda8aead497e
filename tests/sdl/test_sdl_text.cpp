// Fonts of the SDL graphics service: metrics from the real glyphs, justification and clipped printing.
#include "sdlfixture.h"

class SdlTextTest : public SdlServiceTest {
protected:
    // Bounding box of the lit pixels of the frame; false when nothing is lit.
    bool lit(SDL_Rect& box) {
        int x1 = 64, y1 = 64, x2 = -1, y2 = -1;
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 64; ++x)
                if (at(x, y).r > 64) {
                    x1 = std::min(x1, x), y1 = std::min(y1, y), x2 = std::max(x2, x), y2 = std::max(y2, y);
                }
        box = SDL_Rect{x1, y1, x2 - x1 + 1, y2 - y1 + 1};
        return x2 >= 0;
    }
};

TEST_F(SdlTextTest, MetricsComeFromTheFontsGlyphs) {
    writeText("small.font", "file DejaVuSans.ttf\nsize 12\n");
    const int font = gfx->createFont("small");
    ASSERT_NE(font, -1);
    EXPECT_STREQ(gfx->getFontName(font), "small");
    const int height = gfx->getFontHeight(font);
    EXPECT_GE(height, 12);
    EXPECT_LE(height, 18);

    int widths[256];
    int h = 0;
    gfx->getFontDimensions(font, widths, &h);
    EXPECT_EQ(h, height);
    EXPECT_GT(widths['W'], widths['i']);
    EXPECT_EQ(widths[1], 0); // a control code has no glyph

    int w = 0;
    EXPECT_TRUE(gfx->getCharDimensions(font, 0, 'W', &w, &h));
    EXPECT_EQ(w, widths['W']);
    EXPECT_TRUE(gfx->testFontChar(font, 0x00E9));  // é
    EXPECT_FALSE(gfx->testFontChar(font, 0x4E2D)); // a CJK ideograph DejaVu Sans lacks
    EXPECT_FALSE(gfx->getCharDimensions(font, 0, 0x4E2D, &w, &h));

    const unsigned int text[] = {'W', 'i', 0};
    int x1, y1, x2, y2;
    gfx->getTextRect(font, 0, 10, 5, text, &x1, &y1, &x2, &y2);
    EXPECT_EQ(x1, 10);
    EXPECT_EQ(y1, 5);
    EXPECT_EQ(x2, 10 + widths['W'] + widths['i']);
    EXPECT_EQ(y2, 5 + height);
    gfx->getTextRect(font, 1, 40, 0, text, &x1, &y1, &x2, &y2); // right: ends at x
    EXPECT_EQ(x2, 40);
    gfx->getTextRect(font, 2, 40, 0, text, &x1, &y1, &x2, &y2); // centre
    EXPECT_EQ(x1, 40 - (x2 - x1) / 2);

    EXPECT_EQ(gfx->createFont("nofont"), -1);
}

TEST_F(SdlTextTest, PrintJustifiesAndClipsRowsFromTheTop) {
    writeText("big.font", "file DejaVuSans-Bold.ttf\nsize 24\ncolor 255 0 0\n");
    const int font = gfx->createFont("big");
    ASSERT_NE(font, -1);
    SDL_Rect box;
    gfx->print(0, font, 0, 0, 2, 0, -1, 255, "H");
    gfx->present();
    ASSERT_TRUE(lit(box));
    EXPECT_LT(box.x, 8);
    EXPECT_EQ(at(box.x + 1, box.y + 1).g, 0); // the font's colour: red
    const int fullHeight = box.h;

    gfx->print(0, font, 0, 1, 62, 0, -1, 255, "H"); // right-justified: ends near x = 62
    gfx->present();
    ASSERT_TRUE(lit(box));
    EXPECT_GT(box.x + box.w, 54);
    EXPECT_LE(box.x + box.w, 62);

    gfx->print(0, font, 0, 0, 2, 0, box.y + fullHeight / 2, 255, "H"); // rows below the clip stay empty
    gfx->present();
    ASSERT_TRUE(lit(box));
    EXPECT_LT(box.h, fullHeight * 3 / 4);
    EXPECT_EQ(gfx->getStatistics()->text, 1);
}
