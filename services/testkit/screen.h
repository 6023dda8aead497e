// Screens for tests: a UI description given as text, loaded the way a game loads it.
#pragma once
#include <string>
#include "testkit.h"
#include "uiwidget.h"

namespace testkit {

// Stores `description` as the in-memory file `file` and loads it through uiSubsystem::loadUI (with a
// subsystem made for the call when none exists), so the tree is initialized as a game's would be. The
// screen owns the root: its destructor deletes the tree and empties the scriptlet cache, so nothing the
// load allocated outlives the services it was allocated from.
class Screen {
public:
    // Loads `description` (stored as `file`), or a file the test has already provided.
    Screen(Services& svc, const std::string& description, const char* file = "screen.txt");
    explicit Screen(const char* file); // a file the test has already provided
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    // The loaded root (null when the load failed), also through -> and as a truth value.
    uiWidget* root() const { return m_root; }
    uiWidget* operator->() const { return m_root; }
    explicit operator bool() const { return m_root != nullptr; }

    // The widget at a dotted path below the root ("panel.ok"); null if there is none.
    uiWidget* find(const char* path) const;

private:
    uiWidget* m_root = nullptr;
};

// A widget and its subtree as one line of text, to compare a loaded screen with what its description
// says: "name x,y,x2,y2 flags", followed by the children in list order (newest first) in parentheses,
// e.g. "menu 0,0,800,600 7 (ok 10,10,74,42 3, title 0,0,0,0 1)".
std::string treeText(uiWidget* w);

// Loads `file` through uiSubsystem::loadUI; the caller owns the root.
uiWidget* loadScreen(const char* file);

} // namespace testkit
