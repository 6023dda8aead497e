// Shared set-up of the SDL service tests: a temporary asset directory with generated pictures and
// descriptors, and an off-screen graphics service of 64 x 64 pixels drawing on black.
#pragma once
#include <SDL_image.h>
#include <gtest/gtest.h>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include "sdlgfx.h"

class SdlServiceTest : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/gameui_sdl_XXXXXX";
        dir = mkdtemp(pattern);
        gfx = std::make_unique<SdlGfx>(dir, 64, 64);
        ASSERT_TRUE(gfx->ok());
    }
    void TearDown() override {
        gfx.reset();
        std::string cmd = "rm -rf " + dir;
        ASSERT_EQ(std::system(cmd.c_str()), 0);
    }
    // A w x h picture: every pixel (r, g, b, a), or per pixel from the callback.
    template <typename Paint> void writePng(const std::string& name, int w, int h, Paint paint) {
        SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_RGBA32);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                SDL_Color c = paint(x, y);
                Uint8* p = static_cast<Uint8*>(s->pixels) + y * s->pitch + x * 4;
                p[0] = c.r, p[1] = c.g, p[2] = c.b, p[3] = c.a;
            }
        ASSERT_EQ(IMG_SavePNG(s, (dir + "/" + name).c_str()), 0);
        SDL_FreeSurface(s);
    }
    void writeSolid(const std::string& name, int w, int h, SDL_Color c) {
        writePng(name, w, h, [c](int, int) { return c; });
    }
    void writeText(const std::string& name, const std::string& text) {
        std::ofstream(dir + "/" + name) << text;
    }
    SDL_Color at(int x, int y) {
        SDL_Color c{};
        EXPECT_TRUE(gfx->readPixel(x, y, c));
        return c;
    }

    std::string dir;
    std::unique_ptr<SdlGfx> gfx;
};

inline bool operator==(SDL_Color a, SDL_Color b) {
    return a.r == b.r && a.g == b.g && a.b == b.b;
}
inline std::ostream& operator<<(std::ostream& os, SDL_Color c) {
    return os << "(" << int(c.r) << "," << int(c.g) << "," << int(c.b) << ")";
}

constexpr SDL_Color kRed{255, 0, 0, 255}, kGreen{0, 255, 0, 255}, kBlue{0, 0, 255, 255}, kBlack{0, 0, 0, 255},
    kClear{0, 0, 0, 0};
