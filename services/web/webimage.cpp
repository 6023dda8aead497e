#include "webimage.h"
#include "webpage.h"
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#include <stb_image.h>
#include <fstream>
#include <iterator>

namespace websvc {

Image::Image(std::vector<unsigned char> rgba, int width, int height)
    : m_rgba(std::move(rgba)), m_width(width), m_height(height) {}

Image::~Image() {
    if (m_canvas) gameui_page_free(m_canvas);
}

int Image::alphaAt(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) return 0;
    return m_rgba[(static_cast<size_t>(y) * m_width + x) * 4 + 3];
}

int Image::canvas() {
    if (!m_canvas && !m_rgba.empty()) m_canvas = gameui_page_image(m_rgba.data(), m_width, m_height);
    return m_canvas;
}

ImagePtr loadPng(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return nullptr;
    const std::vector<unsigned char> file((std::istreambuf_iterator<char>(in)),
                                          std::istreambuf_iterator<char>());
    int w = 0, h = 0, channels = 0;
    unsigned char* pixels =
        stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &w, &h, &channels, 4);
    if (!pixels) return nullptr;
    std::vector<unsigned char> rgba(pixels, pixels + static_cast<size_t>(w) * h * 4);
    stbi_image_free(pixels);
    return std::make_shared<Image>(std::move(rgba), w, h);
}

} // namespace websvc
