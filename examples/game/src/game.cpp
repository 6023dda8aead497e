#include "game.h"
#include "host.h"
#include "logger.h"
#include "options.h"
#include "starfield.h"
#include "uibutton.h"
#include "uidialog.h"
#include "uidevtools.h"
#include "uisubsystem.h"

namespace {
// The screens loaded at start; the play screen's tree comes from the loading screen.
const char* const kTreeFiles[SCREEN_COUNT] = {"title.ui", "menu.ui", "levels.ui", "loading.ui", nullptr};
} // namespace

Game::Game(Host& h, const GameConfig& c) : host(h), config(c) {
    m_ui = new uiSubsystem();
    m_options = std::make_unique<OptionsDialog>(*this);
    m_screens[SCREEN_TITLE] = makeTitle(*this);
    m_screens[SCREEN_MENU] = makeMenu(*this);
    m_screens[SCREEN_LEVELS] = makeLevels(*this);
    m_screens[SCREEN_LOADING] = makeLoading(*this);
    m_screens[SCREEN_PLAY] = makePlay(*this);
}

Game::~Game() {
    if (!m_ui) return;
    _leaveScreen();
    m_ui->setTopLevelWidget(nullptr);
    for (int id = 0; id < SCREEN_COUNT; ++id)
        _deleteTree(static_cast<ScreenId>(id));
    m_ui->shutdown();
    delete m_ui;
    g_stringTblPtr = nullptr;
}

bool Game::start() {
    if (!m_ui) return false;
    m_ui->initialize(nullptr);
    uiSubsystem::s_registerWidget("StarField", &StarField::s_allocator);
    uiButton::setDefaultSounds("", ""); // buttons sound through onClick, panned
    settings.load(config.prefs);
    scores.load(config.prefs);
    host.setVolumes(settings.music, settings.effects);
    host.setFullscreen(settings.fullscreen);
    if (!_loadTrees()) return false;
    _switchTo(SCREEN_TITLE);
    return true;
}

bool Game::_loadTrees() {
    m_strings.load(kLanguages[settings.language]);
    g_stringTblPtr = &m_strings;
    for (int id = 0; id < SCREEN_COUNT; ++id) {
        if (!kTreeFiles[id]) continue;
        m_trees[id] = m_devtools ? m_devtools->loadUI(kTreeFiles[id]) : m_ui->loadUI(kTreeFiles[id]);
        if (!m_trees[id]) return false;
        m_screens[id]->bind(m_trees[id]);
    }
    return true;
}

void Game::_deleteTree(ScreenId id) {
    uiWidget* root = m_trees[id];
    if (!root) return;
    m_bindings.remove_if([root](const Binding& b) { return b.widget->getRootWidget() == root; });
    if (m_devtools) m_devtools->forget(root);
    m_trees[id] = nullptr;
    delete root;
}

// The devtools rebuilt a screen from its saved files, with its dialogs and values: bind the new tree as
// the old one was, before the old one goes.
void Game::s_rebuilt(uiWidget* root, uiWidget* replaced, void* client) {
    Game& g = *static_cast<Game*>(client);
    for (int id = 0; id < SCREEN_COUNT; ++id) {
        if (g.m_trees[id] != replaced) continue;
        g.m_bindings.remove_if(
            [replaced](const Binding& b) { return b.widget->getRootWidget() == replaced; });
        std::string path; // of the open options dialog, if it is in this tree
        uiWidget* w = g.m_options->dialog();
        for (; w && w != replaced; w = w->getParent())
            path = w->name + (path.empty() ? "" : "." + path);
        g.m_trees[id] = root;
        g.m_screens[id]->bind(root);
        if (w) g.m_options->follow(g.find(root, (std::string(root->name) + "." + path).c_str()));
    }
}

void Game::adoptPlayTree(uiWidget* tree) {
    _deleteTree(SCREEN_PLAY);
    m_trees[SCREEN_PLAY] = tree;
    m_screens[SCREEN_PLAY]->bind(tree);
}

// Dialogs of the screen shown go at once, and with them the input focus they held.
void Game::_leaveScreen() {
    m_ui->clearDialogStack(false);
    m_ui->update(0);
    while (m_ui->getInputFocusWidget())
        m_ui->popInputFocusWidget();
    m_screens[m_current]->leave();
    m_options->forget();
}

void Game::_switchTo(ScreenId id) {
    _leaveScreen();
    m_options->forget();
    if (m_current == SCREEN_PLAY && id != SCREEN_PLAY) _deleteTree(SCREEN_PLAY);
    m_current = m_next = id;
    m_ui->setTopLevelWidget(m_trees[id]);
    m_screens[id]->enter();
}

void Game::_reload() {
    m_reload = false;
    const bool optionsOpen = m_options->isOpen();
    _leaveScreen();
    m_ui->setTopLevelWidget(nullptr);
    for (int id = 0; id < SCREEN_COUNT; ++id)
        if (kTreeFiles[id]) _deleteTree(static_cast<ScreenId>(id));
    if (!_loadTrees()) {
        Logger::log(Logger::kError, "game: the screens cannot be loaded again\f");
        m_quit = true;
        return;
    }
    m_ui->setTopLevelWidget(m_trees[m_current]);
    m_screens[m_current]->enter();
    if (optionsOpen && m_current == SCREEN_MENU)
        m_options->open(find(m_trees[SCREEN_MENU], "menu.options"), false);
}

void Game::frame(unsigned int ms) {
    if (m_devtools) m_devtools->frame(ms);
    if (m_next != m_current) _switchTo(m_next);
    // A round keeps its texts: the play screen's tree is loaded again for the next round anyway.
    if (m_reload && m_current != SCREEN_PLAY) _reload();
    m_screens[m_current]->frame(ms);
    m_options->frame();
    _hoverSounds();
    m_ui->render(ms);
    if (m_devtools) m_devtools->draw();
}

void Game::pointer(e_uiEvent kind, int x, int y) {
    if (m_devtools && m_devtools->inputEvent(kind, x, y, 0)) return;
    m_ui->inputEvent(kind, x, y, 0);
}

void Game::text(int code) {
    if (m_devtools && m_devtools->inputEvent(UIE_CHAR, 0, 0, code)) return;
    m_ui->inputEvent(UIE_CHAR, 0, 0, code);
}

void Game::key(int key, bool down) {
    if (m_devtools && m_devtools->inputEvent(down ? UIE_KEY_DOWN : UIE_KEY_UP, 0, 0, key)) return;
    if (down)
        m_held.insert(key);
    else
        m_held.erase(key);
    if (m_screens[m_current]->key(key, down)) return;
    // A key the navigation took stays away from the library when it is released too (hotkeys act then).
    if (down && m_nav.key(*m_ui, key)) {
        m_swallowed.insert(key);
        return;
    }
    if (!down && m_swallowed.erase(key)) return;
    if (key < KEY_LEFT) m_ui->inputEvent(down ? UIE_KEY_DOWN : UIE_KEY_UP, 0, 0, key);
}

uiWidget* Game::find(uiWidget* root, const char* path) {
    return root ? root->getWidget(path, 0, true) : nullptr;
}

void Game::push(uiWidget* dialog, bool animated) {
    if (dialog && dialog->isType("uiDialog")) m_ui->pushDialog(static_cast<uiDialog*>(dialog), animated);
}

void Game::pop() {
    m_ui->popDialog(m_ui->topDialog(), true);
}

void Game::playPanned(uiWidget* w, const char* sound) {
    int bx, by;
    w->getBasisCoords(&bx, &by);
    w->_playWithPan(sound, WP_POS, 1.0f, bx + (w->rect.x + w->rect.x2) / 2);
}

// Trees are deleted only at the start of a frame, so the binding outlives its action.
bool Game::s_clicked(uiWidget* w, void* client, int, int) {
    auto* b = static_cast<Binding*>(client);
    b->game->playPanned(w, "art/click");
    b->action();
    return true;
}

void Game::onClick(uiWidget* button, std::function<void()> action) {
    if (!button) return;
    m_bindings.push_back(Binding{this, button, std::move(action), false});
    _WidgetMap_s map{};
    map.mouseUpCb = s_clicked;
    button->assignCallbacks(&map, &m_bindings.back());
}

// The pointer coming over a button of the screen shown plays the hover sound, panned.
void Game::_hoverSounds() {
    uiWidget* shown = m_trees[m_current];
    for (Binding& b : m_bindings) {
        const bool hovered = b.widget->isType("uiButton") && static_cast<uiButton*>(b.widget)->isHovering();
        if (hovered && !b.hovered && b.widget->getRootWidget() == shown) playPanned(b.widget, "art/hover");
        b.hovered = hovered;
    }
}
