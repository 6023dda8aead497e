// The sprite half of a graphics service, shared by the SDL and browser services over their picture type:
// sheets by name (a picture and its layout), frames by animation row and column, the four blit forms,
// alpha hit tests, particles drawn as their sprites, and the frame's draw queue with its statistics.
//
// Draw calls only queue; the service draws the queue in order (by depth, then by sort level for bltSort,
// then in call order) and ends the frame. Every call takes the service's lock. An Image has width(),
// height(), bytes() and alphaAt(x, y); its pixels stay in memory, so alpha tests need no preparing.
#pragma once
#include <memory>
#include <string>
#include <vector>
#include "descriptors.h"
#include "framestatistics.h"
#include "particlegfx.h"

namespace assets {

template <class Image> class SpriteGfx : public ParticleGfx {
public:
    using ImagePtr = std::shared_ptr<Image>;

    int createSprite(const char* name) override;
    const char* getSpriteName(int sprite) override;
    void releaseSprite(const char* name) override;
    // Reads a loaded sprite's files again, keeping its handle; false (the old pictures kept) when they
    // cannot be read. A sprite not loaded has nothing to read again.
    bool reloadSprite(const char* name);
    int getSpriteWidth(int sprite) override;
    int getSpriteHeight(int sprite) override;
    int getSpriteFrameCount(int sprite, int anim) override;
    void setupAlphaTestSprite(int) override {}
    bool alphaTestSprite(int sprite, int anim, int frame, int x, int y) override;
    void blt(int depth, int sprite, int x, int y, int anim, int frame, int alpha) override;
    void blt(int depth, int sprite, int x, int y, int width, int height, int anim, int frame,
             int alpha) override;
    void blt(int depth, int sprite, int dstX, int dstY, int srcX, int srcY, int width, int height, int anim,
             int frame, int alpha) override;
    void bltSort(int depth, int sortLevel, int sprite, int x, int y, int anim, int frame, int alpha) override;
    void psemit(int depth, int instance, float alpha) override;

    int getScreenWidth() override { return m_width; }
    int getScreenHeight() const { return m_height; }
    int getMaxDepthNode() override { return kMaxDepth; }
    void registerThread(const char*) override {}
    void unregisterThread(const char*) override {}
    // Describe the frame drawn last.
    const gfxStatistics_s* getStatistics() override { return m_statistics.last(); }

    static constexpr int kMaxDepth = 127;

protected:
    SpriteGfx(const char* service, const std::string& assetDir, int width, int height)
        : ParticleGfx(service, assetDir), m_width(width), m_height(height) {}

    struct DrawItem {
        int depth, level;
        ImagePtr image;
        Rect src, dst;
        int alpha; // 1 to 255
    };
    // The picture in file `path`; null when it cannot be read.
    virtual ImagePtr _loadImage(const std::string& path) = 0;
    // Bytes of the glyph pictures held, for the statistics.
    virtual long _glyphBytes() const { return 0; }
    // Queues a draw of part `src` of `image` into `dst`; nothing when either is empty or alpha is 0.
    void _queue(int depth, int level, const ImagePtr& image, const Rect& src, const Rect& dst, int alpha);
    // The frame's draws in drawing order.
    const std::vector<DrawItem>& _sortedQueue();
    // After drawing the queue: the statistics describe that frame, and the next one starts empty.
    void _endFrame();

    int m_width, m_height;
    struct Sheet {
        std::string name;
        ImagePtr image;
        SheetLayout layout;
        int refs = 1;
    };
    std::vector<std::unique_ptr<Sheet>> m_sheets;
    std::vector<DrawItem> m_queue;
    FrameStatistics m_statistics;

private:
    // An alpha of at least this counts as opaque for hit tests.
    static constexpr int kOpaqueAlpha = 128;

    bool _loadSheet(const std::string& name, Sheet& sheet);
    Sheet* _sheet(int sprite);
    void _queueFrame(int depth, int level, int sprite, int x, int y, int srcX, int srcY, int w, int h,
                     int anim, int frame, int alpha);
};

} // namespace assets
