// uiview's side of the devtools: the overlay's line and panel pictures, the SDL clipboard, where the
// SDL services read each asset from, and sprites read again when their files change (fonts, sounds and
// particle files cannot be: that is logged once, and they keep their old contents until uiview starts
// again).
#pragma once
#include <string>
#include "sdlgfx.h"
#include "uidevtools.h"

class DevtoolsGlue : public uiDevtoolsAssets {
public:
    explicit DevtoolsGlue(SdlGfx& gfx); // writes the overlay's plain pictures into a folder of its own
    ~DevtoolsGlue() override;           // and removes them
    DevtoolsGlue(const DevtoolsGlue&) = delete;
    DevtoolsGlue& operator=(const DevtoolsGlue&) = delete;

    uiDevtools* enable(bool watch, const char* font, void (*wire)(uiWidget*, uiWidget*, void*), void* client);

    void files(uiAssetKind kind, const char* name, std::vector<std::string>& out) override;
    bool reload(uiAssetKind kind, const char* name) override;

private:
    SdlGfx& m_gfx;
    std::string m_dir, m_line, m_panel;
};
