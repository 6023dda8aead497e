// The graphics service the library draws through. Games publish one object in g_gfx; while g_gfx is
// null the library skips every draw and treats every query as answering "none".
#pragma once
#include "uiapi.h"

struct gfxStatistics_s {
    float fps;
    int tmem, cmem, mxmem, total, text, psys, blt;
};

class UI_API gfxSubsystem {
public:
    virtual ~gfxSubsystem();
    virtual int createSprite(const char* name) = 0;    // -1: none
    virtual const char* getSpriteName(int sprite) = 0; // null: none
    virtual void releaseSprite(const char* name) = 0;
    virtual int getSpriteWidth(int sprite) = 0;
    virtual int getSpriteHeight(int sprite) = 0;
    virtual int getSpriteFrameCount(int sprite, int anim) = 0;
    virtual void setupAlphaTestSprite(int sprite) = 0;
    virtual bool alphaTestSprite(int sprite, int anim, int frame, int x, int y) = 0;
    virtual void blt(int depth, int sprite, int x, int y, int anim, int frame, int alpha) = 0;
    virtual void blt(int depth, int sprite, int x, int y, int width, int height, int anim, int frame,
                     int alpha) = 0;
    virtual void blt(int depth, int sprite, int dstX, int dstY, int srcX, int srcY, int width, int height,
                     int anim, int frame, int alpha) = 0;
    virtual void bltSort(int depth, int sortLevel, int sprite, int x, int y, int anim, int frame,
                         int alpha) = 0;
    virtual int createFont(const char* name) = 0; // -1: none
    virtual void releaseFont(int font) = 0;
    virtual const char* getFontName(int font) = 0; // null or "": none
    virtual int getFontHeight(int font) = 0;
    virtual void getFontDimensions(int font, int* widths /* 256 */, int* height) = 0;
    virtual bool getCharDimensions(int font, int set, unsigned int character, int* w, int* h) = 0;
    virtual bool testFontChar(int font, unsigned int character) = 0;
    virtual void print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight,
                       int alpha, const unsigned int* text) = 0;
    virtual void print(int depth, int font, int set, unsigned int justify, int x, int y, int clipHeight,
                       int alpha, const char* text) = 0;
    virtual void getTextRect(int font, unsigned int justify, int x, int y, const unsigned int* text, int* x1,
                             int* y1, int* x2, int* y2) = 0;
    virtual int createParticleSystemInstance(const char* owner, const char* file) = 0;
    virtual void releaseParticleSystemInstance(const char* owner) = 0;
    virtual void releaseParticleSystemInstance(int instance) = 0;
    virtual void updateParticleSystem(int instance, int x, int y, float seconds) = 0;
    virtual void psemit(int depth, int instance, float alpha) = 0;
    virtual bool particleSystemInstanceIsDead(int instance) = 0;
    virtual void particleSystemInstanceStopEmitters(int instance) = 0;
    virtual void addEvent(int event, int a, int b, int c, float f, void* p) = 0;
    virtual int getScreenWidth() = 0;
    virtual int getMaxDepthNode() = 0;
    virtual void registerThread(const char* name) = 0;
    virtual void unregisterThread(const char* name) = 0;
    virtual const gfxStatistics_s* getStatistics() = 0;
};

extern UI_API gfxSubsystem* g_gfx; // starts null
