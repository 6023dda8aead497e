#include "inspector.h"
#include <algorithm>
#include <cstdio>
#include "gfxsubsystem.h"
#include "uisubsystem.h"
#include "uitextwidget.h"
#include "uivisualwidget.h"
#include "widgetinfo.h"

namespace devtools {
namespace {

constexpr int kPanelWidth = 420;
constexpr int kGraphHeight = 40;

std::string format(const char* f, int a, int b, int c, int d) {
    char out[96];
    std::snprintf(out, sizeof out, f, a, b, c, d);
    return out;
}

uiWidget* screenRoot() {
    return g_ui ? g_ui->getTopLevelWidget() : nullptr;
}

std::string text(uiTextWidget* t) {
    std::string out;
    for (const unsigned int* c = t->getText(); *c; ++c)
        out += *c < 0x80 ? static_cast<char>(*c) : '?';
    return out;
}

} // namespace

uiWidget* Inspector::pick(uiWidget* root, int x, int y) {
    uiWidget* best = nullptr;
    std::vector<uiWidget*> hidden; // subtrees that draw nothing
    walk(root, [&](uiWidget* w, int) {
        for (uiWidget* h : hidden)
            if (isWithin(w, h)) return;
        if (!w->getVisible()) {
            hidden.push_back(w);
            return;
        }
        const _uiRect_s r = screenRect(w);
        if (x < r.x || x >= r.x2 || y < r.y || y >= r.y2) return;
        if (!best || w->getDepth() >= best->getDepth()) best = w;
    });
    return best;
}

std::vector<std::string> Inspector::describe(uiWidget* w) {
    std::vector<std::string> out;
    out.push_back(widgetPath(w));
    int depth = 0;
    for (uiWidget* p = w->getParent(); p; p = p->getParent())
        ++depth;
    const char* depthName = uiWidget::s_getDepthName(w->getDepth());
    const std::string number = std::to_string(w->getDepth());
    const bool named = *depthName && number != depthName;
    out.push_back(std::string(w->getType()) + "  depth " + number +
                  (named ? std::string(" (") + depthName + ")" : "") + "  level " + std::to_string(depth));
    const _uiRect_s& l = w->rect;
    out.push_back(format("local  %d,%d - %d,%d", l.x, l.y, l.x2, l.y2));
    const _uiRect_s s = screenRect(w);
    out.push_back(format("screen %d,%d - %d,%d", s.x, s.y, s.x2, s.y2) +
                  format("  (%d x %d)", s.x2 - s.x, s.y2 - s.y, 0, 0));
    char flags[24];
    std::snprintf(flags, sizeof flags, "flags 0x%x", w->getWidgetFlags());
    out.push_back(flags);
    out.push_back("  " + flagNames(w));
    if (w->isType("uiVisualWidget")) {
        auto* v = static_cast<uiVisualWidget*>(w);
        out.push_back(std::string("sprite \"") + v->spriteName + "\"" +
                      format("  anim %d  frame %d  alpha %d", v->anim, v->frame, v->alpha, 0));
    }
    if (w->isType("uiTextWidget")) out.push_back("text \"" + text(static_cast<uiTextWidget*>(w)) + "\"");
    return out;
}

std::vector<std::string> Inspector::tree(uiWidget* root, const uiWidget* mark) {
    std::vector<std::string> out;
    walk(root, [&](uiWidget* w, int depth) {
        std::string line(static_cast<size_t>(depth) * 2, ' ');
        line = (w == mark ? "> " : "  ") + line + w->name + "  " + w->getType();
        if (!w->getVisible()) line += "  [hidden]";
        if (!w->setActive()) line += "  [inactive]";
        out.push_back(line);
    });
    return out;
}

uiWidget* Inspector::selected() const {
    uiWidget* root = screenRoot();
    if (!root) return nullptr;
    if (!m_pinned.empty()) return root->getWidget(m_pinned.c_str(), 0, false);
    return pick(root, m_x, m_y);
}

bool Inspector::inputEvent(e_uiEvent kind, int x, int y, int key) {
    if (kind == UIE_KEY_DOWN && key == m_options.toggleKey) {
        m_open = !m_open;
        return true;
    }
    if (kind == UIE_KEY_UP && key == m_options.toggleKey) return true;
    if (!m_open) return false;
    if (m_options.gameInput && m_options.gameInput(kind, key, m_options.client)) return false;
    if (kind == UIE_MOUSE_MOVE) {
        m_x = x;
        m_y = y;
        m_pinned.clear();
    } else if (kind == UIE_KEY_DOWN) {
        _walk(key);
    }
    return true;
}

void Inspector::_walk(int key) {
    uiWidget* w = selected();
    if (key == m_options.treeKey) m_tree = !m_tree;
    if (!w) return;
    if (key == m_options.copyKey && m_options.copyText)
        m_options.copyText(widgetPath(w).c_str(), m_options.client);
    uiWidget* to = nullptr;
    uiWidget* parent = w->getParent();
    if (key == m_options.parentKey) to = parent;
    if (key == m_options.childKey && w->getChildren()) to = w->getChildren()->widget;
    if (parent && (key == m_options.nextKey || key == m_options.previousKey)) {
        const _WidgetList_s* list = parent->getChildren();
        for (const _WidgetList_s* node = list; node; node = node->next) {
            if (key == m_options.nextKey && node->widget == w && node->next) to = node->next->widget;
            if (key == m_options.previousKey && node->next && node->next->widget == w) to = node->widget;
        }
    }
    if (to) m_pinned = widgetPath(to);
}

void Inspector::frame(unsigned int ms) {
    m_times[m_next] = ms;
    m_next = (m_next + 1) % kFrames;
}

void Inspector::draw(Overlay& overlay) {
    if (!m_open || !overlay.ready()) return;
    uiWidget* root = screenRoot();
    uiWidget* w = selected();
    for (uiWidget* p = w ? w->getParent() : nullptr; p; p = p->getParent())
        overlay.outline(screenRect(p), 90);
    if (w) overlay.outline(screenRect(w), 255);
    std::vector<std::string> lines =
        w ? describe(w) : std::vector<std::string>{"(nothing under the pointer)"};
    if (m_tree && root)
        for (const std::string& line : tree(root, w))
            lines.push_back(line);
    const int h = overlay.lineHeight();
    const int width = g_gfx->getScreenWidth() > 0 ? g_gfx->getScreenWidth() : 800;
    // The panel keeps to the side away from the pointer.
    const int x = m_x < width / 2 ? width - kPanelWidth - 4 : 4;
    const int height = static_cast<int>(lines.size()) * h + kGraphHeight + 12;
    overlay.panel({x, 4, x + kPanelWidth, 4 + height}, 200);
    int y = 8;
    for (const std::string& line : lines) {
        overlay.text(x + 6, y, line, 255);
        y += h;
    }
    _drawGraph(overlay, x + 6, y + 2);
}

// One bar a frame, oldest left; the faint line marks 16 ms.
void Inspector::_drawGraph(Overlay& overlay, int x, int y) {
    const int bottom = y + kGraphHeight;
    for (int i = 0; i < kFrames; ++i) {
        const unsigned int ms = std::min(m_times[(m_next + i) % kFrames], 50u);
        const int top = bottom - static_cast<int>(ms) * kGraphHeight / 50;
        overlay.bar({x + i, top, x + i + 1, bottom}, 200);
    }
    overlay.bar({x, bottom - 16 * kGraphHeight / 50, x + kFrames, bottom - 16 * kGraphHeight / 50 + 1}, 80);
}

} // namespace devtools
