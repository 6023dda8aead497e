// The inspector: while open, the widget under the pointer (or the one reached with the walking keys) is
// outlined with its parent chain more faintly, and a panel describes it; a tree of the whole screen and
// a graph of recent frame times can be shown beside it. While open it takes the input.
#pragma once
#include <string>
#include <vector>
#include "overlay.h"
#include "uidevtools.h"

namespace devtools {

class Inspector {
public:
    explicit Inspector(const uiDevtoolsOptions& options) : m_options(options) {}

    bool inputEvent(e_uiEvent kind, int x, int y, int key); // true: taken
    void frame(unsigned int ms);
    void draw(Overlay& overlay);
    bool open() const { return m_open; }
    uiWidget* selected() const; // in the screen shown now; null when nothing is

    // The visible widget at (x, y) as drawn: the topmost depth, and of equal depths the one drawn last.
    static uiWidget* pick(uiWidget* root, int x, int y);
    // The panel's lines for `w`.
    static std::vector<std::string> describe(uiWidget* w);
    // One line per widget, indented by depth, hidden and inactive ones marked, `mark` pointed at.
    static std::vector<std::string> tree(uiWidget* root, const uiWidget* mark);

private:
    void _walk(int key);
    void _drawGraph(Overlay& overlay, int x, int y);

    static constexpr int kFrames = 180; // about three seconds at 60 frames a second
    const uiDevtoolsOptions& m_options;
    bool m_open = false;
    bool m_tree = false;
    int m_x = 0, m_y = 0;
    std::string m_pinned; // path chosen with the keys; empty: the widget under the pointer
    unsigned int m_times[kFrames] = {};
    int m_next = 0;
};

} // namespace devtools
