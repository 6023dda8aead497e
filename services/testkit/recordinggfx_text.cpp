// The recording graphics service: fonts and text.
#include "recordinggfx.h"

namespace testkit {

int RecordingGfx::fontIndex(const std::string& name) {
    for (std::size_t i = 0; i < m_fonts.size(); ++i)
        if (m_fonts[i].name == name) return static_cast<int>(i);
    m_fonts.emplace_back();
    m_fonts.back().name = name;
    return static_cast<int>(m_fonts.size()) - 1;
}

RecordingGfx::Font* RecordingGfx::font(int id) {
    return id >= 0 && id < static_cast<int>(m_fonts.size()) ? &m_fonts[id] : nullptr;
}

int RecordingGfx::charWidth(const Font& f, unsigned int ch) const {
    auto it = f.widths.find(ch);
    return it != f.widths.end() ? it->second : f.width;
}

void RecordingGfx::defineFont(const std::string& name, int height, int charWidth) {
    std::lock_guard<std::mutex> guard(m_lock);
    Font& f = m_fonts[fontIndex(name)];
    f.height = height;
    f.width = charWidth;
}

void RecordingGfx::setCharWidth(const std::string& name, unsigned int ch, int w) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_fonts[fontIndex(name)].widths[ch] = w;
}

void RecordingGfx::setMissingGlyph(const std::string& name, unsigned int ch) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_fonts[fontIndex(name)].missing.insert(ch);
}

void RecordingGfx::failFont(const std::string& name) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_failFonts.insert(name);
}

int RecordingGfx::liveFonts() const {
    std::lock_guard<std::mutex> guard(m_lock);
    int live = 0;
    for (const Font& f : m_fonts)
        live += f.refs;
    return live;
}

int RecordingGfx::createFont(const char* name) {
    std::lock_guard<std::mutex> guard(m_lock);
    std::string n = name ? name : "";
    record("createFont", {}, {}, n);
    if (!name || m_failFonts.count(n)) return -1;
    int id = fontIndex(n);
    ++m_fonts[id].refs;
    return id;
}

void RecordingGfx::releaseFont(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("releaseFont", {id});
    Font* f = font(id);
    if (f && f->refs > 0)
        --f->refs;
    else
        ++m_overReleases;
}

const char* RecordingGfx::getFontName(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getFontName", {id});
    Font* f = font(id);
    return f && f->refs > 0 ? f->name.c_str() : nullptr;
}

int RecordingGfx::getFontHeight(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getFontHeight", {id});
    Font* f = font(id);
    return f ? f->height : 0;
}

void RecordingGfx::getFontDimensions(int id, int* widths, int* height) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getFontDimensions", {id});
    Font* f = font(id);
    if (widths)
        for (unsigned int ch = 0; ch < 256; ++ch)
            widths[ch] = f ? charWidth(*f, ch) : 0;
    if (height) *height = f ? f->height : 0;
}

bool RecordingGfx::getCharDimensions(int id, int set, unsigned int character, int* w, int* h) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getCharDimensions", {id, set, static_cast<int>(character)});
    Font* f = font(id);
    if (!f || f->missing.count(character)) return false;
    if (w) *w = charWidth(*f, character);
    if (h) *h = f->height;
    return true;
}

bool RecordingGfx::testFontChar(int id, unsigned int character) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("testFontChar", {id, static_cast<int>(character)});
    Font* f = font(id);
    return f && !f->missing.count(character);
}

void RecordingGfx::print(int depth, int id, int set, unsigned int justify, int x, int y, int clipHeight,
                         int alpha, const unsigned int* text) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("print", {depth, id, set, static_cast<int>(justify), x, y, clipHeight, alpha}, {}, toUtf8(text));
}

void RecordingGfx::print(int depth, int id, int set, unsigned int justify, int x, int y, int clipHeight,
                         int alpha, const char* text) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("print", {depth, id, set, static_cast<int>(justify), x, y, clipHeight, alpha}, {},
           text ? text : "");
}

// The rectangle from the character widths: justify 2 puts x at the right end, 4 at the centre.
void RecordingGfx::getTextRect(int id, unsigned int justify, int x, int y, const unsigned int* text, int* x1,
                               int* y1, int* x2, int* y2) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getTextRect", {id, static_cast<int>(justify), x, y}, {}, toUtf8(text));
    Font* f = font(id);
    int width = 0;
    for (const unsigned int* c = text; f && c && *c; ++c)
        width += charWidth(*f, *c);
    int left = justify & 2 ? x - width : justify & 4 ? x - width / 2 : x;
    if (x1) *x1 = left;
    if (y1) *y1 = y;
    if (x2) *x2 = left + width;
    if (y2) *y2 = y + (f ? f->height : 0);
}

} // namespace testkit
