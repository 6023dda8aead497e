// The graphics service the library draws through. Games publish one object in g_gfx; while g_gfx is
// null the library skips every draw and treats every query as answering "none".
#pragma once
#include "uiapi.h"

// Figures of the last frame, shown by the subsystem's statistics overlay.
struct gfxStatistics_s {
    float fps; // frames per second
    // Memory in use and draw counts, as the service counts them.
    int tmem, cmem, mxmem, total, text, psys, blt;
};

// The interface a game implements (or takes from the SDL2 services) to draw. Sprites, fonts and particle
// systems are named by the descriptions and used through integer handles; depth orders the draws of one
// frame; alpha runs from 0 (invisible) to 255.
class UI_API gfxSubsystem {
public:
    virtual ~gfxSubsystem();

    // Sprites: pictures cut into animations (rows) of frames, found by name; one handle per name, counted.
    virtual int createSprite(const char* name) = 0;    // -1: none
    virtual const char* getSpriteName(int sprite) = 0; // null: none
    virtual void releaseSprite(const char* name) = 0;
    // The size of one frame.
    virtual int getSpriteWidth(int sprite) = 0;
    virtual int getSpriteHeight(int sprite) = 0;
    virtual int getSpriteFrameCount(int sprite, int anim) = 0;
    // Hit tests by the sprite's pixels (WF_ALPHA_TEST): prepare once, then ask whether the point (x, y)
    // of the frame, relative to its top-left corner, is opaque.
    virtual void setupAlphaTestSprite(int sprite) = 0;
    virtual bool alphaTestSprite(int sprite, int anim, int frame, int x, int y) = 0;
    // Draws: a whole frame at (x, y); a frame cut or stretched to width x height; a part of a frame
    // (from srcX, srcY) to a place; and a frame ordered within its depth by sortLevel.
    virtual void blt(int depth, int sprite, int x, int y, int anim, int frame, int alpha) = 0;
    virtual void blt(int depth, int sprite, int x, int y, int width, int height, int anim, int frame,
                     int alpha) = 0;
    virtual void blt(int depth, int sprite, int dstX, int dstY, int srcX, int srcY, int width, int height,
                     int anim, int frame, int alpha) = 0;
    virtual void bltSort(int depth, int sortLevel, int sprite, int x, int y, int anim, int frame,
                         int alpha) = 0;

    // Fonts, found by name. Texts are character codes (or UTF-8 for the char form of print); `set` is the
    // description's print set, handed through; justify bits: 1 right, 2 centre (at x), else left.
    virtual int createFont(const char* name) = 0; // -1: none
    virtual void releaseFont(int font) = 0;
    virtual const char* getFontName(int font) = 0; // null or "": none
    virtual int getFontHeight(int font) = 0;
    virtual void getFontDimensions(int font, int* widths /* 256 */, int* height) = 0;
    virtual bool getCharDimensions(int font, int set, unsigned int character, int* w, int* h) = 0;
    virtual bool testFontChar(int font, unsigned int character) = 0; // whether the font has the character
    // Draws a text from (x, y); a clipHeight of 0 or more keeps only that many rows of each character.
    virtual void print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight,
                       int alpha, const unsigned int* text) = 0;
    virtual void print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight,
                       int alpha, const char* text) = 0;
    // The rectangle print would cover.
    virtual void getTextRect(int font, unsigned int justify, int x, int y, const unsigned int* text, int* x1,
                             int* y1, int* x2, int* y2) = 0;

    // Particle systems: an instance of an effect file for an owner (a widget's name), moved and advanced
    // by the seconds of each frame, drawn by psemit; released by owner or by handle.
    virtual int createParticleSystemInstance(const char* owner, const char* file) = 0;
    virtual void releaseParticleSystemInstance(const char* owner) = 0;
    virtual void releaseParticleSystemInstance(int instance) = 0;
    virtual void updateParticleSystem(int instance, int x, int y, float seconds) = 0;
    virtual void psemit(int depth, int instance, float alpha) = 0;
    virtual bool particleSystemInstanceIsDead(int instance) = 0;
    virtual void particleSystemInstanceStopEmitters(int instance) = 0;
    // The library posts one event: (kParticleRestartEvent, 0, instance, 0, 0.0f, null) restarts a
    // particle system instance.
    static constexpr int kParticleRestartEvent = 4;
    virtual void addEvent(int event, int a, int b, int c, float f, void* p) = 0;

    virtual int getScreenWidth() = 0;  // in pixels
    virtual int getMaxDepthNode() = 0; // the highest depth, drawn over all others
    // Threads other than the game's (background loaders) announce themselves before they create sprites
    // and fonts.
    virtual void registerThread(const char* name) = 0;
    virtual void unregisterThread(const char* name) = 0;
    virtual const gfxStatistics_s* getStatistics() = 0;
};

extern UI_API gfxSubsystem* g_gfx; // starts null
