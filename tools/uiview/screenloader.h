// Loading screens: the next screens are loaded on a uiBackgroundLoader's worker thread while the current
// screen runs, and a progress bar of the current screen fills as they arrive.
#pragma once
#include <string>
#include <vector>

class uiBackgroundLoader;
class uiProgressBar;
class uiWidget;

class ScreenLoader {
public:
    // `files` are loaded in order; `bar` (may be null) gets the range 0 to the number of files.
    ScreenLoader(std::vector<std::string> files, uiProgressBar* bar);
    ~ScreenLoader(); // deletes the trees not handed over, then the loader (ending its worker)
    ScreenLoader(const ScreenLoader&) = delete;
    ScreenLoader& operator=(const ScreenLoader&) = delete;

    // One frame of `ms` milliseconds. Returns the first loaded tree, once, when every file has arrived
    // and the bar shows full; null before and after. A file that fails to load counts as arrived.
    uiWidget* frame(unsigned int ms);
    int loaded() const; // files that gave a tree

private:
    void request();

    std::vector<std::string> m_files;
    std::vector<uiWidget*> m_trees;
    uiProgressBar* m_bar;
    uiBackgroundLoader* m_loader;
    unsigned int m_waited = 0; // frame time since the running request
    bool m_handedOver = false;
};
