// The recording graphics service: fonts and text.
#include "recordinggfx.h"

namespace testkit {

int RecordingGfx::charWidth(const Font& f, unsigned int ch) const {
    auto it = f.widths.find(ch);
    return it != f.widths.end() ? it->second : f.width;
}

void RecordingGfx::defineFont(const std::string& name, int height, int charWidth) {
    std::lock_guard<std::mutex> guard(m_lock);
    Font& f = m_fonts[name];
    f.height = height;
    f.width = charWidth;
}

void RecordingGfx::setCharWidth(const std::string& name, unsigned int ch, int w) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_fonts[name].widths[ch] = w;
}

void RecordingGfx::setMissingGlyph(const std::string& name, unsigned int ch) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_fonts[name].missing.insert(ch);
}

void RecordingGfx::failFont(const std::string& name) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_fonts.fail(name);
}

int RecordingGfx::liveFonts() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_fonts.live();
}

int RecordingGfx::createFont(const char* name) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("createFont", {}, {}, name ? name : "");
    return m_fonts.acquire(name);
}

void RecordingGfx::releaseFont(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("releaseFont", {id});
    if (!m_fonts.release(id)) ++m_overReleases;
}

const char* RecordingGfx::getFontName(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getFontName", {id});
    Font* f = m_fonts.at(id);
    return f && f->refs > 0 ? f->name.c_str() : nullptr;
}

int RecordingGfx::getFontHeight(int id) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getFontHeight", {id});
    Font* f = m_fonts.at(id);
    return f ? f->height : 0;
}

void RecordingGfx::getFontDimensions(int id, int* widths, int* height) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getFontDimensions", {id});
    Font* f = m_fonts.at(id);
    if (widths)
        for (unsigned int ch = 0; ch < 256; ++ch)
            widths[ch] = f ? charWidth(*f, ch) : 0;
    if (height) *height = f ? f->height : 0;
}

bool RecordingGfx::getCharDimensions(int id, int set, unsigned int character, int* w, int* h) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getCharDimensions", {id, set, static_cast<int>(character)});
    Font* f = m_fonts.at(id);
    if (!f || f->missing.count(character)) return false;
    if (w) *w = charWidth(*f, character);
    if (h) *h = f->height;
    return true;
}

bool RecordingGfx::testFontChar(int id, unsigned int character) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("testFontChar", {id, static_cast<int>(character)});
    Font* f = m_fonts.at(id);
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

// The rectangle from the character widths: justify 1 (right) puts x at the right end, 2 (centre) at the
// centre.
void RecordingGfx::getTextRect(int id, unsigned int justify, int x, int y, const unsigned int* text, int* x1,
                               int* y1, int* x2, int* y2) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("getTextRect", {id, static_cast<int>(justify), x, y}, {}, toUtf8(text));
    Font* f = m_fonts.at(id);
    int width = 0;
    for (const unsigned int* c = text; f && c && *c; ++c)
        width += charWidth(*f, *c);
    int left = justify & 1 ? x - width : justify & 2 ? x - width / 2 : x;
    if (x1) *x1 = left;
    if (y1) *y1 = y;
    if (x2) *x2 = left + width;
    if (y2) *y2 = y + (f ? f->height : 0);
}

} // namespace testkit
