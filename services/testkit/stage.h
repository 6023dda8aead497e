// A screen built in code, driven the way a game drives the library: a subsystem and a full-screen root
// (active, visible, taking input) set as the top-level widget. Construct it after testkit::Services.
#pragma once
#include "recordinggfx.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace testkit {

class Stage {
public:
    explicit Stage(int width = 800, int height = 600); // the root's size
    ~Stage();                                          // deletes the root and its tree, then the subsystem
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    // The stage's subsystem and its root widget.
    uiSubsystem& ui() { return m_ui; }
    uiWidget* root() const { return m_root; }

    // A new, unattached widget of a registered type; null when the type is unknown or memory ran out.
    template <class W = uiWidget> static W* make(const char* type, const char* name) {
        return static_cast<W*>(uiWidget::allocWidget(name, type));
    }
    // Attaches `w` under `parent` (the root when null), handing it the parent's states.
    template <class W> W* attach(W* w, uiWidget* parent = nullptr) {
        (parent ? parent : m_root)->addChild(w, true);
        return w;
    }
    // make, then placed at `r` and attached; null as make.
    template <class W = uiWidget>
    W* add(const char* type, const char* name, _uiRect_s r, uiWidget* parent = nullptr) {
        W* w = make<W>(type, name);
        if (w) {
            w->rect = r;
            attach(w, parent);
        }
        return w;
    }

    // Input as a game forwards it.
    void move(int x, int y) { m_ui.inputEvent(UIE_MOUSE_MOVE, x, y, 0); }
    void press(int x, int y) { m_ui.inputEvent(UIE_MOUSE_DOWN, x, y, 0); }
    void release(int x, int y) { m_ui.inputEvent(UIE_MOUSE_UP, x, y, 0); }
    void click(int x, int y); // move there, press, release
    void keyDown(int key) { m_ui.inputEvent(UIE_KEY_DOWN, 0, 0, key); }
    void keyUp(int key) { m_ui.inputEvent(UIE_KEY_UP, 0, 0, key); }

    // Frames without drawing: `frames` updates of `ms` each (several, e.g., to let a button's double-click
    // guard pass).
    void update(unsigned int ms, int frames = 1) {
        for (int i = 0; i < frames; ++i)
            m_ui.update(ms);
    }
    // One frame: update and draw.
    void render(unsigned int ms) { m_ui.render(ms); }

private:
    uiSubsystem m_ui;
    uiWidget* m_root = nullptr;
};

// Forgets what `gfx` recorded, renders one frame of `ms` through `ui` and returns the int arguments of the
// frame's `fn` calls, in drawing order.
std::vector<std::vector<int>> renderFrame(RecordingGfx& gfx, uiSubsystem& ui, unsigned int ms,
                                          const std::string& fn = "blt");
// One frame as renderFrame draws it, each blt reduced to its int arguments at `columns` (1 the sprite,
// 2 and 3 the place, 4 the animation, 5 the frame, 6 the alpha): the look each widget was drawn with.
std::vector<std::vector<int>> renderLooks(RecordingGfx& gfx, uiSubsystem& ui, unsigned int ms,
                                          const std::vector<size_t>& columns);

} // namespace testkit
