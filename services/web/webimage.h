// A picture held by the browser graphics service: its RGBA pixels stay in the module's memory (for alpha
// tests, and so that loader threads may create sprites and glyphs), and the canvas the page draws it from
// is made on first draw, on the page's thread.
#pragma once
#include <memory>
#include <string>
#include <vector>

namespace websvc {

class Image {
public:
    Image(std::vector<unsigned char> rgba, int width, int height);
    ~Image(); // frees the page's canvas
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    int width() const { return m_width; }
    int height() const { return m_height; }
    int bytes() const { return m_width * m_height * 4; }
    // Alpha of the pixel at (x, y), 0 outside the picture.
    int alphaAt(int x, int y) const;
    // The page's handle of the picture (0: none); only on the page's thread.
    int canvas();

private:
    std::vector<unsigned char> m_rgba;
    int m_width, m_height;
    int m_canvas = 0;
};

using ImagePtr = std::shared_ptr<Image>;

// A PNG file as a picture; null when it cannot be read or decoded.
ImagePtr loadPng(const std::string& path);

} // namespace websvc
