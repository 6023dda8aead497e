// uiview's side of the devtools: the overlay's line and panel pictures, the SDL clipboard, and where the
// SDL services read each asset from (they cannot read one again: a changed picture or sound is logged
// once and keeps its old contents until uiview starts again).
#pragma once
#include <string>
#include "uidevtools.h"

class DevtoolsGlue : public uiDevtoolsAssets {
public:
    DevtoolsGlue();           // writes the overlay's one-pixel pictures into a folder of its own
    ~DevtoolsGlue() override; // and removes them
    DevtoolsGlue(const DevtoolsGlue&) = delete;
    DevtoolsGlue& operator=(const DevtoolsGlue&) = delete;

    uiDevtools* enable(bool watch, const char* font, void (*wire)(uiWidget*, uiWidget*, void*), void* client);

    void files(uiAssetKind kind, const char* name, std::vector<std::string>& out) override;
    bool reload(uiAssetKind kind, const char* name) override;

private:
    std::string m_dir, m_line, m_panel;
};
