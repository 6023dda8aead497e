// The SDL services on generated files, what the golden frames of the examples do not show: graphics off
// screen on 64 x 64 pixels of black (sheet edges, part blits, alpha tests, release, reload, font metrics,
// particle lifetimes) and sound on the dummy driver (handles per channel, pan and pitch, missing files).
#include <SDL_image.h>
#include <gtest/gtest.h>
#include <cstdint>
#include "sdlgfx.h"
#include "sdlsound.h"
#include "testkit.h"

inline bool operator==(SDL_Color a, SDL_Color b) {
    return a.r == b.r && a.g == b.g && a.b == b.b;
}

namespace {

constexpr SDL_Color kRed{255, 0, 0, 255}, kGreen{0, 255, 0, 255}, kBlue{0, 0, 255, 255}, kBlack{0, 0, 0, 255},
    kClear{0, 0, 0, 0};

class SdlGraphics : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(gfx.ok()); }
    // A w x h picture, each pixel painted by the callback.
    template <typename Paint> void writePng(const std::string& name, int w, int h, Paint paint) {
        SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_RGBA32);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                SDL_Color c = paint(x, y);
                Uint8* p = static_cast<Uint8*>(s->pixels) + y * s->pitch + x * 4;
                p[0] = c.r, p[1] = c.g, p[2] = c.b, p[3] = c.a;
            }
        ASSERT_EQ(IMG_SavePNG(s, (dir / name).c_str()), 0);
        SDL_FreeSurface(s);
    }
    void writeSolid(const std::string& name, int w, int h, SDL_Color c) {
        writePng(name, w, h, [c](int, int) { return c; });
    }
    SDL_Color at(int x, int y) {
        SDL_Color c{};
        EXPECT_TRUE(gfx.readPixel(x, y, c));
        return c;
    }

    testkit::TempDir dir;
    SdlGfx gfx{dir.path().string(), 64, 64};
};

TEST_F(SdlGraphics, SheetsPartsAlphaTestsReleaseAndReload) {
    // 3 columns x 2 rows of 8x8 frames: column c, row r is painted (40c, 100r, 7).
    writePng("sheet.png", 24, 16, [](int x, int y) {
        return SDL_Color{Uint8(40 * (x / 8)), Uint8(100 * (y / 8)), 7, 255};
    });
    dir.write("knob.sprite", "image = sheet.png\nframe 8 8\nanim 0 3\nanim 1 2  # second row\n");
    const int knob = gfx.createSprite("knob");
    ASSERT_NE(knob, -1);
    EXPECT_EQ(gfx.getSpriteWidth(knob) * 1000 + gfx.getSpriteFrameCount(knob, 0) * 10 +
                  gfx.getSpriteFrameCount(knob, 1),
              8032);
    EXPECT_EQ(gfx.createSprite("missing"), -1);
    gfx.blt(0, knob, 0, 0, 1, 1, 255);  // row 1, column 1
    gfx.blt(0, knob, 10, 0, 0, 5, 255); // frame 5 of 3 wraps to column 2
    gfx.present();
    EXPECT_EQ(at(3, 3), (SDL_Color{40, 100, 7, 255}));
    EXPECT_EQ(at(8, 3), kBlack); // only one frame wide
    EXPECT_EQ(at(13, 3), (SDL_Color{80, 0, 7, 255}));

    // Part and source-rectangle blits draw only their pixels; each frame starts empty.
    writePng("quad.png", 8, 8, [](int x, int y) { return x < 4 ? (y < 4 ? kRed : kGreen) : kBlue; });
    const int quad = gfx.createSprite("quad");
    gfx.blt(0, quad, 0, 0, 2, 2, 0, 0, 255);           // top-left 2x2 part
    gfx.blt(0, quad, 20, 20, 4, 0, 3, 3, 0, 0, 255);   // source rectangle in the blue half
    gfx.blt(0, quad, 40, 40, 2, 6, 20, 20, 0, 0, 255); // cut at the frame's edge: 2 rows, 6 columns left
    gfx.present();
    const struct {
        int x, y;
        SDL_Color c;
    } pixels[] = {{1, 1, kRed},     {2, 1, kBlack},   {20, 20, kBlue},  {22, 22, kBlue}, {23, 20, kBlack},
                  {41, 41, kGreen}, {40, 42, kBlack}, {46, 40, kBlack}, {45, 40, kBlue}, {13, 3, kBlack}};
    for (auto [x, y, c] : pixels)
        EXPECT_EQ(at(x, y), c) << x << "," << y;

    // Alpha tests read the frame's pixels; released sprites are gone once every create is matched.
    writePng("hit.png", 8, 4, [](int x, int) { return x < 2 ? kRed : kClear; });
    const int hit = gfx.createSprite("hit.png");
    gfx.setupAlphaTestSprite(hit);
    EXPECT_TRUE(gfx.alphaTestSprite(hit, 0, 0, 1, 3));
    EXPECT_FALSE(gfx.alphaTestSprite(hit, 0, 0, 2, 0) || gfx.alphaTestSprite(hit, 0, 0, -1, 0) ||
                 gfx.alphaTestSprite(hit, 0, 0, 8, 0));
    EXPECT_EQ(gfx.createSprite("knob"), knob);
    gfx.releaseSprite("knob");
    EXPECT_STREQ(gfx.getSpriteName(knob), "knob");
    gfx.releaseSprite("knob");
    EXPECT_EQ(gfx.getSpriteName(knob), nullptr);
    gfx.blt(0, knob, 0, 0, 0, 0, 255); // a stale handle draws nothing
    gfx.present();
    EXPECT_EQ(at(1, 1), kBlack);

    // Reload reads the files again under the same handle; an unreadable file keeps the old picture.
    writeSolid("dot.png", 4, 4, kRed);
    const int dot = gfx.createSprite("dot");
    writeSolid("dot.png", 6, 4, kBlue); // saved again, wider
    EXPECT_TRUE(gfx.reloadSprite("dot"));
    EXPECT_EQ(gfx.getSpriteWidth(dot), 6);
    gfx.blt(0, dot, 0, 0, 0, 0, 255);
    gfx.present();
    EXPECT_EQ(at(5, 1), kBlue);
    std::filesystem::remove(dir.path() / "dot.png");
    EXPECT_FALSE(gfx.reloadSprite("dot"));
    EXPECT_EQ(gfx.getSpriteWidth(dot), 6);
    EXPECT_TRUE(gfx.reloadSprite("never-loaded"));
}

TEST_F(SdlGraphics, FontsMeasureTheirGlyphsAndParticlesLiveTheirLifetime) {
    dir.write("small.font", "file DejaVuSans.ttf\nsize 12\ncolor 255 0 0\n");
    const int font = gfx.createFont("small");
    ASSERT_NE(font, -1);
    const int height = gfx.getFontHeight(font);
    EXPECT_TRUE(height >= 12 && height <= 18) << height;
    int widths[256], h = 0;
    gfx.getFontDimensions(font, widths, &h);
    EXPECT_TRUE(h == height && widths['W'] > widths['i'] && widths[1] == 0); // a control code has no glyph
    // DejaVu Sans has an e with an accent, not CJK ideographs.
    EXPECT_TRUE(gfx.testFontChar(font, 0x00E9) && !gfx.testFontChar(font, 0x4E2D));
    const unsigned int text[] = {'W', 'i', 0};
    int x1, y1, x2, y2;
    gfx.getTextRect(font, 0, 10, 5, text, &x1, &y1, &x2, &y2);
    EXPECT_EQ((std::vector<int>{x1, y1, x2, y2}),
              (std::vector<int>{10, 5, 10 + widths['W'] + widths['i'], 5 + height}));
    gfx.getTextRect(font, 1, 40, 0, text, &x1, &y1, &x2, &y2); // right: ends at x
    EXPECT_EQ(x2, 40);
    EXPECT_EQ(gfx.createFont("nofont"), -1);

    writeSolid("spark.png", 2, 2, kGreen);
    dir.write("pop.ptc", "sprite spark\nburst 10\nduration 0\nlifetime 0.5 0.5\nspeed 0 0\nalpha 1 1\n");
    const int ps = gfx.createParticleSystemInstance("menu.ok", "pop.ptc");
    ASSERT_NE(ps, -1);
    EXPECT_EQ(gfx.createParticleSystemInstance("c", "nothere.ptc"), -1);
    gfx.updateParticleSystem(ps, 30, 30, 0.1f);
    gfx.psemit(0, ps, 1.0f);
    gfx.present();
    EXPECT_EQ(at(30, 30), kGreen);
    EXPECT_EQ(gfx.getStatistics()->psys, 10);
    gfx.updateParticleSystem(ps, 30, 30, 0.6f);
    EXPECT_TRUE(gfx.particleSystemInstanceIsDead(ps));
    gfx.addEvent(4, 0, ps, 0, 0.0f, nullptr); // restarted
    EXPECT_FALSE(gfx.particleSystemInstanceIsDead(ps));
    gfx.releaseParticleSystemInstance("menu.ok");
    EXPECT_TRUE(gfx.particleSystemInstanceIsDead(ps));
}

// Two seconds of a 16-bit mono square wave: long enough to be still playing when the test starts the
// next sound, however slowly the test runs (under valgrind a tenth of a second had ended by then).
std::string squareWave() {
    const uint32_t rate = 22050, samples = rate * 2, bytes = samples * 2;
    std::string out;
    auto put = [&out](uint32_t v, int n) {
        for (int i = 0; i < n; ++i)
            out.push_back(static_cast<char>(v >> (8 * i)));
    };
    out += "RIFF";
    put(36 + bytes, 4);
    out += "WAVEfmt ";
    put(16, 4), put(1, 2), put(1, 2), put(rate, 4), put(rate * 2, 4), put(2, 2), put(16, 2);
    out += "data";
    put(bytes, 4);
    for (uint32_t i = 0; i < samples; ++i)
        put((i / 50) % 2 ? 0x2000 : 0xE000, 2);
    return out;
}

TEST(SdlSound, PlaysWavByNameAndAppliesPanAndFrequencyToItsChannel) {
    testkit::LogCapture log;
    Logger::setSink(&log);
    testkit::TempDir dir;
    dir.write("click.wav", squareWave());
    SdlSound sound(dir.path().string());
    ASSERT_TRUE(sound.ok()); // the dummy driver stands in for a missing device
    soundHandle* click = sound.playSound(SOUND_TYPE_UI, "click", false, false);
    ASSERT_NE(click, nullptr);
    EXPECT_TRUE(Mix_Playing(-1) >= 1);
    click->setPan(-0.9f);
    click->setFrequencyScale(1.5f); // restarts the channel with a resampled copy
    EXPECT_TRUE(Mix_Playing(-1) >= 1);
    EXPECT_NE(sound.playSound(SOUND_TYPE_UI, "click.wav", false, false), click); // another channel

    EXPECT_EQ(sound.playSound(SOUND_TYPE_UI, "nothing", false, false), nullptr);
    EXPECT_EQ(sound.playSound(SOUND_TYPE_UI, "nothing", false, false), nullptr);
    EXPECT_TRUE(log.has(1, "SdlSound: could not load sound: \"nothing\"\f"));
    EXPECT_EQ(log.count(), 1) << log.dump(); // a missing sound is looked for once
    Logger::setSink(nullptr);
}

} // namespace
