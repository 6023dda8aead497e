// A widget for tests of the widget core: records its hooks into a shared journal.
#pragma once
#include <cstdio>
#include <string>
#include <vector>
#include "uiwidget.h"

struct Journal {
    std::vector<std::string> lines;
    void add(const std::string& line) { lines.push_back(line); }
    std::string text() const { // every line followed by a blank
        std::string all;
        for (const std::string& line : lines)
            all += line + " ";
        return all;
    }
};

class ProbeWidget : public uiWidget {
public:
    static inline Journal* journal = nullptr;
    bool dialog = false;  // answers isType("uiDialog") like a dialog would
    bool consume = false; // _inputEvent returns true

    void claimParent(uiWidget* p) { parent = p; } // a parent pointer without a list entry

    const char* getType() override { return "ProbeWidget"; }
    bool isType(const char* t) override {
        return s_namesEqual(t, "ProbeWidget") || (dialog && s_namesEqual(t, "uiDialog")) ||
               uiWidget::isType(t);
    }
    ~ProbeWidget() override { note("destroy"); }

protected:
    void note(const std::string& what) {
        if (journal) journal->add(std::string(name) + ":" + what);
    }
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

// Makes a named probe at a rectangle; attaches it to `parent` when given. Null without memory.
inline ProbeWidget* probe(const char* name, _uiRect_s r, uiWidget* parent = nullptr) {
    ProbeWidget* w = new ProbeWidget();
    if (!w) return nullptr;
    std::snprintf(w->name, sizeof w->name, "%s", name);
    w->rect = r;
    if (parent) parent->addChild(w, false);
    return w;
}
