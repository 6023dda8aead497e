#include "devtoolsglue.h"
#include <SDL.h>
#include <SDL_image.h>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// A plain square: the overlay tiles it, and few large tiles draw faster than many small ones.
bool writePlain(const std::string& path, Uint8 r, Uint8 g, Uint8 b) {
    SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, 256, 256, 32, SDL_PIXELFORMAT_RGBA32);
    if (!s) return false;
    SDL_FillRect(s, nullptr, SDL_MapRGBA(s->format, r, g, b, 255));
    const bool ok = IMG_SavePNG(s, path.c_str()) == 0;
    SDL_FreeSurface(s);
    return ok;
}

void copyText(const char* text, void*) {
    SDL_SetClipboardText(text);
}

} // namespace

DevtoolsGlue::DevtoolsGlue(SdlGfx& gfx) : m_gfx(gfx) {
    std::error_code error;
    m_dir = (fs::temp_directory_path(error) / ("uiview-devtools-" + std::to_string(getpid()))).string();
    fs::create_directories(m_dir, error);
    if (writePlain(m_dir + "/line.png", 255, 230, 60)) m_line = m_dir + "/line.png";
    if (writePlain(m_dir + "/panel.png", 16, 20, 32)) m_panel = m_dir + "/panel.png";
}

DevtoolsGlue::~DevtoolsGlue() {
    uiDevtools::disable();
    std::error_code error;
    fs::remove_all(m_dir, error);
}

uiDevtools* DevtoolsGlue::enable(bool watch, const char* font, void (*wire)(uiWidget*, uiWidget*, void*),
                                 void* client) {
    uiDevtoolsOptions o;
    o.watch = watch;
    o.font = font;
    o.lineSprite = m_line.empty() ? nullptr : m_line.c_str();
    o.panelSprite = m_panel.empty() ? nullptr : m_panel.c_str();
    o.wire = wire;
    o.client = client;
    o.assets = this;
    o.copyText = copyText;
    return uiDevtools::enable(o);
}

// The names the SDL services try, in their order.
void DevtoolsGlue::files(uiAssetKind kind, const char* name, std::vector<std::string>& out) {
    const std::string n = name;
    switch (kind) {
    case UIASSET_SPRITE:
        out.insert(out.end(), {n, n + ".sprite", n + ".png"});
        break;
    case UIASSET_FONT:
        out.push_back(n + ".font");
        break;
    case UIASSET_SOUND:
        out.insert(out.end(), {n, n + ".wav", n + ".ogg"});
        break;
    case UIASSET_PARTICLES:
        out.push_back(n);
        break;
    }
}

bool DevtoolsGlue::reload(uiAssetKind kind, const char* name) {
    return kind == UIASSET_SPRITE && m_gfx.reloadSprite(name);
}
