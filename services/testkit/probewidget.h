// A widget that records its hooks, for testing how a tree, a container or a screen drives the widgets in
// it: in what order frames, input and state changes reach them and at what coordinates.
#pragma once
#include <cstdio>
#include <string>
#include <vector>
#include "uiwidget.h"

namespace testkit {

class Journal;

// Writes "<name>:<hook>" lines into the current journal (none while there is none): "update x,y",
// "render x,y", "input x,y", "show", "hide", "activate", "deactivate", "gain", "lose" and "destroy".
class ProbeWidget : public uiWidget {
public:
    static inline Journal* journal = nullptr; // the current journal
    bool dialog = false;  // answers isType("uiDialog"), so recursions that stop at dialogs stop at it
    bool consume = false; // its input hook takes every event it sees

    void claimParent(uiWidget* p) {
        parent = p;
    } // a parent pointer without a list entry, as in a broken tree

    const char* getType() override { return "ProbeWidget"; }
    bool isType(const char* t) override {
        return s_namesEqual(t, "ProbeWidget") || (dialog && s_namesEqual(t, "uiDialog")) ||
               uiWidget::isType(t);
    }
    ~ProbeWidget() override { note("destroy"); }

protected:
    // Writes "<name>:<what>" to the current journal, if there is one.
    inline void note(const std::string& what);
    void _update(int x, int y) override { note("update " + std::to_string(x) + "," + std::to_string(y)); }
    void _render(int x, int y) override { note("render " + std::to_string(x) + "," + std::to_string(y)); }
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override {
        note("input " + std::to_string(x) + "," + std::to_string(y));
        return consume || uiWidget::_inputEvent(kind, x, y, key, buttonDown, handled);
    }
    void _showWidget() override { note("show"); }
    void _hideWidget() override { note("hide"); }
    void _activate() override { note("activate"); }
    void _deactivate() override { note("deactivate"); }
    void _gainFocus() override { note("gain"); }
    void _loseFocus() override { note("lose"); }
};

// The lines the probes wrote while it was the current journal: from its construction to its destruction,
// which give the role back to the journal that had it before.
class Journal {
public:
    // One entry per hook call, oldest first.
    std::vector<std::string> lines;

    Journal() : m_outer(ProbeWidget::journal) { ProbeWidget::journal = this; }
    ~Journal() { ProbeWidget::journal = m_outer; }
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    std::string text() const { // every line followed by a blank
        std::string all;
        for (const std::string& line : lines)
            all += line + " ";
        return all;
    }
    std::string take() { // text(), forgetting the lines
        std::string all = text();
        lines.clear();
        return all;
    }

private:
    Journal* m_outer;
};

void ProbeWidget::note(const std::string& what) {
    if (journal) journal->lines.push_back(std::string(name) + ":" + what);
}

// A probe named `name` at `r`, attached to `parent` when given (without its states); null without memory.
inline ProbeWidget* probe(const char* name, _uiRect_s r, uiWidget* parent = nullptr) {
    ProbeWidget* w = new ProbeWidget();
    if (!w) return nullptr;
    std::snprintf(w->name, sizeof w->name, "%s", name);
    w->rect = r;
    if (parent) parent->addChild(w, false);
    return w;
}

} // namespace testkit
