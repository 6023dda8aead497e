// A graphics service that records every call and answers from a scripted model of sprites, fonts and
// particle systems. Nothing is drawn.
//
// Sprites: unknown names are created on demand (32x32, one frame) unless failSprite() was called for
// them; a name keeps its id for the life of the service and is reference-counted. Fonts: unknown names
// get height 16 and width 8 for every character unless failFont() was called. Particle instances get new
// ids from 0 up unless their file was given to failParticles(). Thread-safe: loader threads call too.
#pragma once
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>
#include "gfxsubsystem.h"
#include "namedresources.h"

namespace testkit {

// One recorded call. fn is the method name ("blt" for all three forms: 7, 9 or 11 ints); ints are the
// int (and unsigned) arguments in order; floats the float arguments; text the name or text argument,
// 32-bit texts converted to UTF-8 (createParticleSystemInstance: the file).
struct GfxCall {
    // The method, its int, float and text arguments.
    std::string fn;
    std::vector<int> ints;
    std::vector<float> floats;
    std::string text;
};

// A graphics service that records every call and answers from what the test defined: sprites and fonts
// of given sizes, failures on demand, pixel masks for alpha tests.
class RecordingGfx : public gfxSubsystem {
public:
    std::vector<GfxCall> calls; // every call, in order
    // What getScreenWidth, getMaxDepthNode and getStatistics answer.
    int screenWidth = 800;
    int maxDepth = 95;
    gfxStatistics_s stats{};

    void clear(); // forgets the recorded calls only
    // The recorded calls of one method, and how many there were.
    std::vector<GfxCall> named(const std::string& fn) const;
    std::vector<std::vector<int>> ints(const std::string& fn) const; // the int arguments of each call of fn
    std::vector<std::string> texts(const std::string& fn) const;     // the text argument of each call of fn
    int count(const std::string& fn) const;
    // The recorded calls (of the methods in `only`, when given) as text, each as "fn ints floats \"text\"; ",
    // e.g. "psemit 7 0 0.5; ".
    std::string transcript(const std::vector<std::string>& only = {}) const;

    // Sprites: a size and frame counts per animation; a name whose creation fails; which pixels are
    // opaque for alpha tests.
    void defineSprite(const std::string& name, int w, int h, std::vector<int> framesPerAnim = {1});
    void failSprite(const std::string& name);
    void setAlphaMask(const std::string& sprite,
                      std::function<bool(int anim, int frame, int x, int y)> opaque);
    int spriteId(const std::string& name) const; // -1 when never created
    int liveSprites() const;                     // creations minus releases
    int overReleases() const;                    // releases of sprites or fonts that were not held

    // Fonts: a height and one width for every character, a character's own width, a character the font
    // lacks, a name whose creation fails; fonts created and not released.
    void defineFont(const std::string& name, int height, int charWidth);
    void setCharWidth(const std::string& font, unsigned int ch, int w);
    void setMissingGlyph(const std::string& font, unsigned int ch);
    void failFont(const std::string& name);
    int liveFonts() const;

    // Particle systems: a file whose instances fail, an instance's answer to
    // particleSystemInstanceIsDead, an instance's owner, instances not released.
    void failParticles(const std::string& file);
    void setParticleDead(int instance, bool dead);
    std::string particleOwner(int instance) const;
    int liveParticleSystems() const;

    std::vector<std::string> threads() const; // names registered and not yet unregistered

    // gfxSubsystem
    int createSprite(const char* name) override;
    const char* getSpriteName(int sprite) override;
    void releaseSprite(const char* name) override;
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
    int createParticleSystemInstance(const char* owner, const char* file) override;
    void releaseParticleSystemInstance(const char* owner) override;
    void releaseParticleSystemInstance(int instance) override;
    void updateParticleSystem(int instance, int x, int y, float seconds) override;
    void psemit(int depth, int instance, float alpha) override;
    bool particleSystemInstanceIsDead(int instance) override;
    void particleSystemInstanceStopEmitters(int instance) override;
    void addEvent(int event, int a, int b, int c, float f, void* p) override;
    int getScreenWidth() override;
    int getMaxDepthNode() override;
    void registerThread(const char* name) override;
    void unregisterThread(const char* name) override;
    const gfxStatistics_s* getStatistics() override;

private:
    struct Sprite {
        std::string name;
        int w = 32, h = 32;
        std::vector<int> frames{1};
        std::function<bool(int, int, int, int)> opaque;
        int refs = 0;
    };
    struct Font {
        std::string name;
        int height = 16;
        int width = 8;
        std::map<unsigned int, int> widths;
        std::set<unsigned int> missing;
        int refs = 0;
    };
    struct Particles {
        std::string owner, file;
        bool dead = false;
        bool live = true;
    };

    void record(std::string fn, std::vector<int> ints, std::vector<float> floats = {}, std::string text = {});
    int charWidth(const Font& f, unsigned int ch) const;

    mutable std::mutex m_lock;
    NamedResources<Sprite> m_sprites;
    NamedResources<Font> m_fonts;
    std::deque<Particles> m_particles; // id = index
    std::set<std::string> m_failParticles;
    std::multiset<std::string> m_threads;
    int m_overReleases = 0;
};

// UTF-8 form of a 0-ended 32-bit text.
std::string toUtf8(const unsigned int* text);

} // namespace testkit
