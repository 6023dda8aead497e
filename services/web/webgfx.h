// The graphics service in the browser: sprite sheets (PNG pictures and .sprite descriptors), TrueType
// fonts and particle effects from one asset directory of the packed file system, drawn in depth order
// on the page's canvas with the 2D context.
//
// Draw calls only queue; present() draws the frame's queue sorted by depth (then by sort level for
// bltSort, then in call order) and starts the next frame. Pictures are decoded into the module's memory
// and glyphs rasterised from the font files there, so background loaders may create sprites and fonts;
// the page's canvases for them are made on the rendering thread. Every call takes the service's lock.
#pragma once
#include <memory>
#include <string>
#include <vector>
#include "textgfx.h"
#include "webimage.h"

struct stbtt_fontinfo;

namespace websvc {

// A TrueType font as the rasteriser reads it, and the colour its glyphs are rasterised in.
struct Face {
    Face();
    ~Face();
    std::vector<unsigned char> file;
    std::unique_ptr<stbtt_fontinfo> info;
    float scale = 0;
    int ascent = 0;
    unsigned char r = 255, g = 255, b = 255;
};

} // namespace websvc

class WebGfx : public assets::TextGfx<websvc::Image, websvc::Face> {
public:
    WebGfx(const std::string& assetDir, int width, int height);
    WebGfx(const WebGfx&) = delete;
    WebGfx& operator=(const WebGfx&) = delete;

    void setClearColor(int r, int g, int b) { m_clear = {r, g, b}; }
    // Draws the queued frame on the canvas; the statistics then describe that frame.
    void present();

private:
    websvc::ImagePtr _loadImage(const std::string& path) override;
    bool _openFont(const assets::FontDescriptor& descriptor, Font& font) override;
    bool _provides(Font& font, unsigned int character) override;
    int _advance(Font& font, unsigned int character) override;
    Glyph _renderGlyph(Font& font, unsigned int character) override;

    struct {
        int r, g, b;
    } m_clear{0, 0, 0};
};
