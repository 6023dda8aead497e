// Drawing for the devtools' overlays through the graphics service, above everything else: text in one
// font, lines and bars in a stretched light sprite, panels in a stretched dark one.
#pragma once
#include <string>
#include "uidevtools.h"

namespace devtools {

class Overlay {
public:
    explicit Overlay(const uiDevtoolsOptions& options) : m_options(options) {}
    ~Overlay(); // gives the sprites and the font back
    Overlay(const Overlay&) = delete;
    Overlay& operator=(const Overlay&) = delete;

    bool ready(); // creates what it draws with on first use; false when the service has none of it
    int lineHeight() const { return m_lineHeight; }
    void panel(const _uiRect_s& r, int alpha);
    void bar(const _uiRect_s& r, int alpha);
    void outline(const _uiRect_s& r, int alpha);
    void text(int x, int y, const std::string& line, int alpha);

private:
    void _fill(int sprite, const _uiRect_s& r, int alpha);

    const uiDevtoolsOptions& m_options;
    bool m_tried = false;
    int m_font = -1, m_line = -1, m_panel = -1;
    int m_lineHeight = 12;
};

} // namespace devtools
