// uiDevtools: the designer's loop inside a running game, for development builds.
//
// Live reload: screens loaded through uiDevtools::loadUI are watched, with every file their load read
// (descriptions, includes, scriptlets, string tables) and the sprite, font, sound and particle files
// their widgets name. A saved change rebuilds the screen from the new text and puts it in place of the
// old one, keeping the dialog stack, the values of sliders, toggles, radio groups, progress bars and
// entry fields, the input focus and the tab position. A file with errors keeps the old screen running
// and lists the problems over it, in uilint's words, until a fixed save.
//
// Inspector: a key (F12 by default) opens an overlay that outlines the widget under the pointer and its
// parents, and shows its path, type, rectangles, depth, decoded flags, sprite and text, a tree of the
// whole screen and a graph of recent frame times. While it is open it takes the input.
//
// The game switches it on with uiDevtools::enable and hands its frame through the instance:
//   if (!devtools->inputEvent(kind, x, y, key)) g_ui->inputEvent(kind, x, y, key);
//   devtools->frame(ms); g_ui->render(ms); devtools->draw();
#pragma once
#include <memory>
#include <string>
#include <vector>
#include "uiwidget.h"

enum uiAssetKind { UIASSET_SPRITE, UIASSET_FONT, UIASSET_SOUND, UIASSET_PARTICLES };

// The game's bridge to its services for assets: where an asset is read from and how to read it again.
class uiDevtoolsAssets {
public:
    virtual ~uiDevtoolsAssets() = default;
    // Adds the files `name` is read from, as the file system names them.
    virtual void files(uiAssetKind kind, const char* name, std::vector<std::string>& out) = 0;
    // Drops the asset and loads it again; false when the service cannot (it keeps the old one).
    virtual bool reload(uiAssetKind kind, const char* name) = 0;
};

struct uiDevtoolsOptions {
    bool watch = true;
    bool inspector = true;
    // Overlays draw with the graphics service: text in `font`, lines in `lineSprite` and panels in
    // `panelSprite`, plain pictures (light and dark) tiled over the area. Without them nothing is drawn.
    const char* font = nullptr;
    const char* lineSprite = nullptr;
    const char* panelSprite = nullptr;
    // Called with each rebuilt screen before the one it replaces is deleted: the game installs its
    // callbacks again and swaps its own pointers to the old tree.
    void (*wire)(uiWidget* root, uiWidget* replaced, void* client) = nullptr;
    void* client = nullptr;
    uiDevtoolsAssets* assets = nullptr;
    void (*copyText)(const char* text, void* client) = nullptr; // the platform's clipboard
    // Input the game keeps while the inspector is open (its own debug keys, say).
    bool (*gameInput)(e_uiEvent kind, int key, void* client) = nullptr;
    // Keys: UIE_KEY_DOWN codes as the game forwards them.
    int toggleKey = KEY_F12;
    int parentKey = 'u', childKey = 'd', nextKey = 'n', previousKey = 'b', copyKey = 'c', treeKey = 't';
    // Milliseconds since any fixed start; null: a steady clock. Tests drive their own.
    unsigned long long (*clock)(void* client) = nullptr;
    unsigned int pollMs = 100;  // how often files are looked at without a change notification
    unsigned int settleMs = 40; // how long a changed file must stay unchanged before it is read
};

namespace devtools {
class LiveReload;
class Inspector;
class Overlay;
} // namespace devtools

class uiDevtools {
public:
    // Switches the devtools on (again, with new options); the one instance, reached through get().
    static uiDevtools* enable(const uiDevtoolsOptions& options);
    static void disable();
    static uiDevtools* get();

    // g_ui->loadUI, remembering what the load read: the screen is watched until forget().
    uiWidget* loadUI(const char* file);
    void forget(uiWidget* root);

    // The frame: true when the devtools took the event; frame() before the game's render looks for
    // changed files and reloads; draw() after it draws the overlays.
    bool inputEvent(e_uiEvent kind, int x, int y, int key);
    void frame(unsigned int ms);
    void draw();

    // "file:line: error: message" lines of the last failed reload; empty once a save fixed it.
    const std::vector<std::string>& problems() const;
    unsigned int reloads() const; // screens put in place so far
    bool inspectorOpen() const;
    uiWidget* inspected() const; // the widget the inspector shows

    ~uiDevtools();
    uiDevtools(const uiDevtools&) = delete;
    uiDevtools& operator=(const uiDevtools&) = delete;

private:
    explicit uiDevtools(const uiDevtoolsOptions& options);
    unsigned long long _now() const;

    uiDevtoolsOptions m_options;
    std::unique_ptr<devtools::LiveReload> m_reload;
    std::unique_ptr<devtools::Inspector> m_inspector;
    std::unique_ptr<devtools::Overlay> m_overlay;
};
