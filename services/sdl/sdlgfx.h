// The graphics service on SDL2: sprite sheets, TrueType fonts and particle effects from one asset
// directory, drawn in depth order into a window or an off-screen picture.
//
// Draw calls only queue; present() draws the frame's queue sorted by depth (then by sort level for
// bltSort, then in call order) and starts the next frame. Every call takes the service's lock, so
// background loaders may create sprites and fonts; textures are made on the rendering thread.
#pragma once
#include <SDL.h>
#include <SDL_ttf.h>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>
#include "descriptors.h"
#include "particlegfx.h"
#include "sdlimage.h"

class SdlGfx : public assets::ParticleGfx {
public:
    // Off screen: draws into a width x height picture; needs no display.
    SdlGfx(const std::string& assetDir, int width, int height);
    // On screen: draws through a renderer of the window.
    SdlGfx(const std::string& assetDir, SDL_Window* window);
    ~SdlGfx() override;
    SdlGfx(const SdlGfx&) = delete;
    SdlGfx& operator=(const SdlGfx&) = delete;

    bool ok() const { return m_renderer != nullptr; }
    const std::string& assetDir() const { return m_assetDir; }
    void setClearColor(Uint8 r, Uint8 g, Uint8 b) { m_clear = SDL_Color{r, g, b, 255}; }
    // Draws the queued frame and shows it; the statistics then describe that frame.
    void present();
    // Saves the last presented frame as a PNG file.
    bool savePng(const char* path);
    // The colour of one pixel of the last presented frame.
    bool readPixel(int x, int y, SDL_Color& out);
    int getScreenHeight() const { return m_height; }

    int createSprite(const char* name) override;
    const char* getSpriteName(int sprite) override;
    void releaseSprite(const char* name) override;
    // Reads a loaded sprite's files again, keeping its handle; false (the old pictures kept) when they
    // cannot be read. A sprite not loaded has nothing to read again.
    bool reloadSprite(const char* name);
    int getSpriteWidth(int sprite) override;
    int getSpriteHeight(int sprite) override;
    int getSpriteFrameCount(int sprite, int anim) override;
    void setupAlphaTestSprite(int sprite) override;
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
        sdlsvc::ImagePtr image;
        assets::SheetLayout layout;
        int refs = 1;
    };
    struct Font {
        std::string name;
        TTF_Font* ttf = nullptr;
        SDL_Color color{255, 255, 255, 255};
        std::map<unsigned int, sdlsvc::ImagePtr> glyphs;
        int refs = 1;
    };
    struct DrawItem {
        int depth, level;
        unsigned int seq;
        sdlsvc::ImagePtr image;
        SDL_Rect src, dst;
        Uint8 alpha;
        SDL_Color tint;
    };

    void _openFontLibrary();
    bool _loadSheet(const std::string& name, Sheet& sheet);
    bool _loadFont(const std::string& name, Font& font);
    Sheet* _sheet(int sprite);
    Font* _font(int font);
    void _queue(int depth, int level, const sdlsvc::ImagePtr& image, const SDL_Rect& src, const SDL_Rect& dst,
                int alpha, SDL_Color tint = SDL_Color{255, 255, 255, 255});
    void _queueFrame(int depth, int level, int sprite, int x, int y, int srcX, int srcY, int w, int h,
                     int anim, int frame, int alpha);
    const sdlsvc::ImagePtr& _glyph(Font& font, unsigned int character);
    int _advance(Font& font, unsigned int character);
    int _lineWidth(Font& font, const unsigned int* text);
    void _updateStatistics();

    int m_width = 0, m_height = 0;
    SDL_Surface* m_target = nullptr; // off screen only
    SDL_Window* m_window = nullptr;
    SDL_Renderer* m_renderer = nullptr;
    SDL_Color m_clear{0, 0, 0, 255};
    bool m_ttfOpen = false;

    std::vector<std::unique_ptr<Sheet>> m_sheets;
    std::vector<std::unique_ptr<Font>> m_fonts;
    std::vector<DrawItem> m_queue;

    gfxStatistics_s m_stats{};
    int m_frameBlts = 0, m_frameTexts = 0;
    int m_fpsFrames = 0;
    std::chrono::steady_clock::time_point m_fpsStart = std::chrono::steady_clock::now();
};
