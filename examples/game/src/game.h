// The game: its screens, the trees they are loaded into, the saved settings and scores, and the routing
// of input to the library. Screens switch at the start of a frame, never inside a widget's callback.
#pragma once
#include <functional>
#include <list>
#include <memory>
#include <set>
#include <string>
#include "filestringtable.h"
#include "highscores.h"
#include "nav.h"
#include "settings.h"
#include "uiwidget.h"

class Host;
class uiSubsystem;
class Screen;
class OptionsDialog;
class uiDevtools;

enum ScreenId { SCREEN_TITLE, SCREEN_MENU, SCREEN_LEVELS, SCREEN_LOADING, SCREEN_PLAY, SCREEN_COUNT };

struct GameConfig {
    std::string prefs;     // folder of the saved files, ending in '/'
    unsigned int seed = 1; // of every random choice in a round
    bool autoplay = false; // the basket plays by itself
};

class Game {
public:
    Game(Host& host, const GameConfig& config);
    ~Game();
    Game(const Game&) = delete;
    Game& operator=(const Game&) = delete;

    bool start(); // reads the texts, the saved files and the screens; shows the title
    void frame(unsigned int ms);
    void pointer(e_uiEvent kind, int x, int y);
    void key(int key, bool down);
    void text(int code);
    bool finished() const { return m_quit; }
    // Development builds: screens are loaded through the devtools, which rebuild them when saved.
    void useDevtools(uiDevtools* devtools) { m_devtools = devtools; }
    static void s_rebuilt(uiWidget* root, uiWidget* replaced, void* client); // the devtools' wire hook
    // Loads every screen again (a new language, or edited descriptions), keeping where the game is.
    void requestReload() { m_reload = true; }

    // For the screens.
    void show(ScreenId id) { m_next = id; }
    ScreenId current() const { return m_current; }
    uiWidget* tree(ScreenId id) const { return m_trees[id]; }
    void adoptPlayTree(uiWidget* tree); // the play screen's tree, from the loading screen
    uiWidget* find(uiWidget* root, const char* path);
    template <class T> T* find(uiWidget* root, const char* path, const char* type) {
        uiWidget* w = find(root, path);
        return w && w->isType(type) ? static_cast<T*>(w) : nullptr;
    }
    // Clicks on the button run the action, with the click sound panned by the button's place.
    void onClick(uiWidget* button, std::function<void()> action);
    void push(uiWidget* dialog, bool animated = true);
    void pop();
    void quit() { m_quit = true; }
    bool held(int key) const { return m_held.count(key) != 0; }
    void playPanned(uiWidget* w, const char* sound);
    OptionsDialog& options() { return *m_options; }

    Host& host;
    const GameConfig config;
    Settings settings;
    HighScores scores;
    int level = 0; // the level chosen last

private:
    struct Binding {
        Game* game;
        uiWidget* widget;
        std::function<void()> action;
        bool hovered;
    };
    static bool s_clicked(uiWidget* w, void* client, int, int);
    bool _loadTrees();
    void _deleteTree(ScreenId id);
    void _leaveScreen();
    void _switchTo(ScreenId id);
    void _reload();
    void _hoverSounds();

    uiSubsystem* m_ui = nullptr;
    uiDevtools* m_devtools = nullptr;
    FileStringTable m_strings;
    uiWidget* m_trees[SCREEN_COUNT] = {};
    std::unique_ptr<Screen> m_screens[SCREEN_COUNT];
    std::unique_ptr<OptionsDialog> m_options;
    std::list<Binding> m_bindings; // stable addresses: each is its button's callback client
    Nav m_nav;
    std::set<int> m_held, m_swallowed;
    ScreenId m_current = SCREEN_TITLE, m_next = SCREEN_TITLE;
    bool m_reload = false, m_quit = false;
};

// One screen's logic. bind() runs once for each tree loaded, enter() each time the screen is shown.
class Screen {
public:
    explicit Screen(Game& owner) : game(owner) {}
    virtual ~Screen() = default;
    virtual void bind(uiWidget* root) { m_root = root; }
    virtual void enter() {}
    virtual void leave() {}
    virtual void frame(unsigned int ms) {}
    // Keys before the library and the button navigation see them; true when taken.
    virtual bool key(int key, bool down) { return false; }

protected:
    Game& game;
    uiWidget* m_root = nullptr;
};

std::unique_ptr<Screen> makeTitle(Game& game);
std::unique_ptr<Screen> makeMenu(Game& game);
std::unique_ptr<Screen> makeLevels(Game& game);
std::unique_ptr<Screen> makeLoading(Game& game);
std::unique_ptr<Screen> makePlay(Game& game);
