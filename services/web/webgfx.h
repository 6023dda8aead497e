// The graphics service in the browser: sprite sheets (PNG pictures and .sprite descriptors), TrueType
// fonts and particle effects from one asset directory of the packed file system, drawn in depth order
// on the page's canvas with the 2D context.
//
// Draw calls only queue; present() draws the frame's queue sorted by depth (then by sort level for
// bltSort, then in call order) and starts the next frame. Pictures are decoded into the module's memory
// and glyphs rasterised from the font files there, so background loaders may create sprites and fonts;
// the page's canvases for them are made on the rendering thread. Every call takes the service's lock.
#pragma once
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>
#include "descriptors.h"
#include "particlegfx.h"
#include "webimage.h"

struct stbtt_fontinfo;

class WebGfx : public assets::ParticleGfx {
public:
    WebGfx(const std::string& assetDir, int width, int height);
    ~WebGfx() override;
    WebGfx(const WebGfx&) = delete;
    WebGfx& operator=(const WebGfx&) = delete;

    void setClearColor(int r, int g, int b) { m_clear = {r, g, b}; }
    // Draws the queued frame on the canvas; the statistics then describe that frame.
    void present();
    int getScreenHeight() const { return m_height; }

    int createSprite(const char* name) override;
    const char* getSpriteName(int sprite) override;
    void releaseSprite(const char* name) override;
    int getSpriteWidth(int sprite) override;
    int getSpriteHeight(int sprite) override;
    int getSpriteFrameCount(int sprite, int anim) override;
    void setupAlphaTestSprite(int sprite) override {} // the pixels stay in memory
    bool alphaTestSprite(int sprite, int anim, int frame, int x, int y) override;
    void blt(int depth, int sprite, int x, int y, int anim, int frame, int alpha) override;
    void blt(int depth, int sprite, int x, int y, int width, int height, int anim, int frame,
             int alpha) override;
    void blt(int depth, int sprite, int dstX, int dstY, int srcX, int srcY, int width, int height, int anim,
             int frame, int alpha) override;
    void bltSort(int depth, int sortLevel, int sprite, int x, int y, int anim, int frame, int alpha) override;

    int createFont(const char* name) override;
    void releaseFont(int font) override;
    const char* getFontName(int font) override;
    int getFontHeight(int font) override;
    void getFontDimensions(int font, int* widths, int* height) override;
    bool getCharDimensions(int font, int set, unsigned int character, int* w, int* h) override;
    bool testFontChar(int font, unsigned int character) override;
    void print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight, int alpha,
               const unsigned int* text) override;
    void print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight, int alpha,
               const char* text) override;
    void getTextRect(int font, unsigned int justify, int x, int y, const unsigned int* text, int* x1, int* y1,
                     int* x2, int* y2) override;

    void psemit(int depth, int instance, float alpha) override;

    int getScreenWidth() override { return m_width; }
    int getMaxDepthNode() override { return kMaxDepth; }
    void registerThread(const char* name) override {}
    void unregisterThread(const char* name) override {}
    const gfxStatistics_s* getStatistics() override { return &m_stats; }

    static constexpr int kMaxDepth = 127;

private:
    struct Sheet {
        std::string name;
        websvc::ImagePtr image;
        assets::SheetLayout layout;
        int refs = 1;
    };
    struct Glyph {
        websvc::ImagePtr image; // null: nothing to draw (a blank)
        int left = 0, top = 0;  // of the picture, from the pen and the line's top
        int advance = 0;
    };
    struct Font {
        Font();
        ~Font();
        std::string name;
        std::vector<unsigned char> file; // the TrueType data the rasteriser reads from
        std::unique_ptr<stbtt_fontinfo> info;
        float scale = 0;
        int ascent = 0, height = 0;
        unsigned char r = 255, g = 255, b = 255;
        std::map<unsigned int, Glyph> glyphs;
        int refs = 1;
    };
    struct DrawItem {
        int depth, level;
        unsigned int seq;
        websvc::ImagePtr image;
        assets::Rect src, dst;
        int alpha;
    };

    bool _loadSheet(const std::string& name, Sheet& sheet);
    bool _loadFont(const std::string& name, Font& font);
    Sheet* _sheet(int sprite);
    Font* _font(int font);
    void _queue(int depth, int level, const websvc::ImagePtr& image, const assets::Rect& src,
                const assets::Rect& dst, int alpha);
    void _queueFrame(int depth, int level, int sprite, int x, int y, int srcX, int srcY, int w, int h,
                     int anim, int frame, int alpha);
    const Glyph& _glyph(Font& font, unsigned int character);
    bool _provides(Font& font, unsigned int character);
    int _lineWidth(Font& font, const unsigned int* text);
    void _updateStatistics();

    int m_width, m_height;
    struct {
        int r, g, b;
    } m_clear{0, 0, 0};

    std::vector<std::unique_ptr<Sheet>> m_sheets;
    std::vector<std::unique_ptr<Font>> m_fonts;
    std::vector<DrawItem> m_queue;

    gfxStatistics_s m_stats{};
    int m_frameBlts = 0, m_frameTexts = 0;
    int m_fpsFrames = 0;
    std::chrono::steady_clock::time_point m_fpsStart = std::chrono::steady_clock::now();
};
