// A graphics service that does nothing, so that frame timings measure the library alone. Every sprite
// exists (32 x 32, four frames per animation), every alpha test hits, nothing is drawn or counted.
#pragma once
#include "gfxsubsystem.h"

namespace bench {

class NullGfx : public gfxSubsystem {
public:
    int createSprite(const char*) override { return 0; }
    const char* getSpriteName(int) override { return "sprite"; }
    void releaseSprite(const char*) override {}
    int getSpriteWidth(int) override { return 32; }
    int getSpriteHeight(int) override { return 32; }
    int getSpriteFrameCount(int, int) override { return 4; }
    void setupAlphaTestSprite(int) override {}
    bool alphaTestSprite(int, int, int, int, int) override { return true; }
    void blt(int, int, int, int, int, int, int) override {}
    void blt(int, int, int, int, int, int, int, int, int) override {}
    void blt(int, int, int, int, int, int, int, int, int, int, int) override {}
    void bltSort(int, int, int, int, int, int, int, int) override {}
    int createFont(const char*) override { return 0; }
    void releaseFont(int) override {}
    const char* getFontName(int) override { return "font"; }
    int getFontHeight(int) override { return 16; }
    void getFontDimensions(int, int* widths, int* height) override;
    bool getCharDimensions(int, int, unsigned int, int* w, int* h) override;
    bool testFontChar(int, unsigned int) override { return true; }
    void print(int, int, int, unsigned int, int, int, int, int, const unsigned int*) override {}
    void print(int, int, int, unsigned int, int, int, int, int, const char*) override {}
    void getTextRect(int, unsigned int, int x, int y, const unsigned int*, int* x1, int* y1, int* x2,
                     int* y2) override;
    int createParticleSystemInstance(const char*, const char*) override { return 0; }
    void releaseParticleSystemInstance(const char*) override {}
    void releaseParticleSystemInstance(int) override {}
    void updateParticleSystem(int, int, int, float) override {}
    void psemit(int, int, float) override {}
    bool particleSystemInstanceIsDead(int) override { return false; }
    void particleSystemInstanceStopEmitters(int) override {}
    void addEvent(int, int, int, int, float, void*) override {}
    int getScreenWidth() override { return 800; }
    int getMaxDepthNode() override { return 96; }
    void registerThread(const char*) override {}
    void unregisterThread(const char*) override {}
    const gfxStatistics_s* getStatistics() override { return &m_stats; }

private:
    gfxStatistics_s m_stats{};
};

} // namespace bench
