// The text half of a graphics service, shared by the SDL and browser services: TrueType fonts by
// descriptor, glyphs cached as pictures, metrics and justified printing of lines. The service opens a
// font's Face, says which characters it has and how far each advances, and draws a glyph's picture.
#pragma once
#include <map>
#include <memory>
#include <string>
#include <vector>
#include "descriptors.h"
#include "spritegfx.h"

namespace assets {

template <class Image, class Face> class TextGfx : public SpriteGfx<Image> {
public:
    using ImagePtr = std::shared_ptr<Image>;

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

protected:
    using SpriteGfx<Image>::SpriteGfx;

    struct Glyph {
        ImagePtr image;        // null: nothing to draw (a blank)
        int left = 0, top = 0; // of the picture, from the pen and the line's top
        int advance = 0;
    };
    struct Font {
        std::string name;
        Face face;
        int height = 0; // of a line
        std::map<unsigned int, Glyph> glyphs;
        int refs = 1;
    };
    // Opens the font a descriptor names: its face and line height; false when it cannot be read.
    virtual bool _openFont(const FontDescriptor& descriptor, Font& font) = 0;
    virtual bool _provides(Font& font, unsigned int character) = 0;
    virtual int _advance(Font& font, unsigned int character) = 0;
    // The picture of a character, in the font's colour; made once, on first use (_glyph).
    virtual Glyph _renderGlyph(Font& font, unsigned int character) = 0;
    const Glyph& _glyph(Font& font, unsigned int character);
    long _glyphBytes() const override;

    std::vector<std::unique_ptr<Font>> m_fonts;

private:
    Font* _font(int font);
    int _lineWidth(Font& font, const unsigned int* text);
};

} // namespace assets
