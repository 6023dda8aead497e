// uiview: loads a UI description and runs it on the SDL services, in a window or off screen.
#include <climits>
#include <cstdlib>
#include <unistd.h>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>
#include "colourlog.h"
#include "devtoolsglue.h"
#include "options.h"
#include "script.h"
#include "sdlgfx.h"
#include "sdlinput.h"
#include "sdlsound.h"
#include "uibutton.h"
#include "uidialog.h"
#include "uidigitalbanner.h"
#include "uigamecontainer.h"
#include "uiprogressbar.h"
#include "screenloader.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace {

struct Session;

struct BoundAction {
    Session* session;
    ClickAction action;
};

struct Session {
    Session(const ViewOptions& o, uiSubsystem* u) : options(o), ui(u) {}
    const ViewOptions& options;
    uiSubsystem* ui;
    uiWidget* root = nullptr;
    bool quit = false;
    int actions = 0;
    std::vector<BoundAction> bound;
    std::unique_ptr<ScreenLoader> loader; // --load: the next screens
    std::vector<uiWidget*> shown;         // roots shown so far, deleted at the end
    int switchedAt = -1;                  // frame of the switch to the loaded screen
    uiDialog* settled = nullptr;          // the top dialog last reset
    uiDevtools* devtools = nullptr;
};

bool onClick(uiWidget*, void* client, int, int) {
    auto* bound = static_cast<BoundAction*>(client);
    Session& s = *bound->session;
    ++s.actions;
    if (bound->action.verb == "quit")
        s.quit = true;
    else if (bound->action.verb == "pop")
        s.ui->popDialog(s.ui->topDialog(), true);
    else if (bound->action.verb == "pause") {
        if (uiWidget* c = s.root->getWidget(bound->action.dialog.c_str(), 0, true))
            if (c->isType("uiGameContainer")) {
                auto* container = static_cast<uiGameContainer*>(c);
                container->setPaused(!container->getPaused());
            }
    } else if (uiWidget* d = s.root->getWidget(bound->action.dialog.c_str(), 0, true))
        if (d->isType("uiDialog")) s.ui->pushDialog(static_cast<uiDialog*>(d), true);
    return true;
}

bool flipToggle(uiWidget*, void*, int, int) {
    return true; // a toggle button flips when its click handler agrees
}

// Toggle buttons flip on click as a game's handler would let them.
void bindToggles(uiWidget* w) {
    if (w->isType("uiToggleButton")) {
        _WidgetMap_s map{};
        map.mouseUpCb = flipToggle;
        w->assignCallbacks(&map, nullptr);
    }
    for (const _WidgetList_s* node = w->getChildren(); node; node = node->next)
        bindToggles(node->widget);
}

// Actions name widgets of any of the screens shown: those of other screens are left out.
void bindActions(std::vector<BoundAction>& bound) {
    for (BoundAction& b : bound) {
        uiWidget* w = b.session->root->getWidget(b.action.widget.c_str(), 0, false);
        if (!w) continue;
        _WidgetMap_s map{};
        map.mouseUpCb = onClick;
        w->assignCallbacks(&map, &b);
    }
}

void printBanners(const ViewOptions& o, uiWidget* root) {
    for (const auto& b : o.banners) {
        uiWidget* w = root->getWidget(b.first.c_str(), 0, false);
        if (!w) continue; // a banner of another screen
        std::ifstream in(b.second);
        if (!w->isType("uiDigitalBanner") || !in) {
            std::fprintf(stderr, "uiview: no banner %s or no messages in %s\n", b.first.c_str(),
                         b.second.c_str());
            continue;
        }
        unsigned int priority = 0;
        for (std::string line; std::getline(in, line);)
            if (!line.empty()) static_cast<uiDigitalBanner*>(w)->print(priority++, "%s", line.c_str());
    }
}

// Makes `root` the screen: top-level widget (pushed when it is a dialog), with the start-up settings
// and the click actions that name its widgets.
void showScreen(Session& s, uiWidget* root) {
    const ViewOptions& o = s.options;
    s.root = root;
    s.shown.push_back(root);
    s.ui->clearDialogStack(false);
    s.ui->setTopLevelWidget(root);
    if (root->isType("uiDialog")) s.ui->pushDialog(static_cast<uiDialog*>(root), true);
    for (const auto& v : o.values)
        if (uiWidget* bar = root->getWidget(v.first.c_str(), 0, false))
            if (bar->isType("uiProgressBar")) static_cast<uiProgressBar*>(bar)->setValue(v.second, false);
    printBanners(o, root);
    for (const std::string& path : o.push)
        if (uiWidget* d = root->getWidget(path.c_str(), 0, false))
            if (d->isType("uiDialog")) s.ui->pushDialog(static_cast<uiDialog*>(d), true);
    bindToggles(root);
    bindActions(s.bound);
}

// A screen rebuilt from its saved files: uiview's clicks and banners again, the old tree forgotten.
void rewire(uiWidget* root, uiWidget* replaced, void* client) {
    Session& s = *static_cast<Session*>(client);
    for (uiWidget*& shown : s.shown)
        if (shown == replaced) shown = root;
    if (s.root == replaced) s.root = root;
    s.settled = s.ui->topDialog(); // the reload kept its tab position: no reset
    printBanners(s.options, root);
    bindToggles(root);
    bindActions(s.bound);
}

// --load: starts loading the next screens, fed into the bar at --progress.
void startLoading(Session& s) {
    const ViewOptions& o = s.options;
    if (o.load.empty()) return;
    uiProgressBar* bar = nullptr;
    if (!o.progress.empty()) {
        uiWidget* w = s.root->getWidget(o.progress.c_str(), 0, true);
        if (w && w->isType("uiProgressBar"))
            bar = static_cast<uiProgressBar*>(w);
        else
            std::fprintf(stderr, "uiview: no progress bar %s\n", o.progress.c_str());
    }
    s.loader = std::make_unique<ScreenLoader>(o.load, bar);
}

// A dialog that comes to the top is reset once it is idle, as a game does when it shows one: showing
// gave every widget in it input focus, the reset leaves it with the current tab entry alone.
void settleTopDialog(Session& s) {
    uiDialog* top = s.ui->topDialog();
    if (top == s.settled || !top || !s.ui->topDialogIsIdle(top)) return;
    top->reset();
    s.settled = top;
}

void loadingFrame(Session& s, unsigned int ms, int frame) {
    if (!s.loader) return;
    if (uiWidget* next = s.loader->frame(ms)) {
        showScreen(s, next);
        s.switchedAt = frame;
    }
}

void sendScripted(const ScriptEvent& e, uiSubsystem& ui) {
    const int mx = ui.getMousePositionX(), my = ui.getMousePositionY();
    switch (e.kind) {
    case ScriptEvent::Move:
        deliver(ui, UIE_MOUSE_MOVE, e.x, e.y, 0);
        break;
    case ScriptEvent::Down:
        deliver(ui, UIE_MOUSE_DOWN, e.x, e.y, 0);
        break;
    case ScriptEvent::Up:
        deliver(ui, UIE_MOUSE_UP, e.x, e.y, 0);
        break;
    case ScriptEvent::Key:
        deliver(ui, UIE_KEY_DOWN, mx, my, e.key);
        deliver(ui, UIE_KEY_UP, mx, my, e.key);
        break;
    case ScriptEvent::Char:
        deliver(ui, UIE_CHAR, mx, my, e.key);
        break;
    case ScriptEvent::Png:
        break;
    }
}

// One frame with the devtools around it: saved files first, their overlays last.
void renderFrame(Session& s, unsigned int ms) {
    s.devtools->frame(ms);
    s.ui->render(ms);
    s.devtools->draw();
}

// Runs the frames off screen; returns the number of pictures saved, and whether any could not be.
int runOffScreen(const ViewOptions& o, const std::vector<ScriptEvent>& events, SdlGfx& gfx, Session& s,
                 bool& failed) {
    ScriptPlayer player(events);
    int saved = 0;
    for (int frame = 0; frame < o.frames && !s.quit; ++frame) {
        const bool save = player.due(static_cast<unsigned int>(frame * o.ms),
                                     [&s](const ScriptEvent& e) { sendScripted(e, *s.ui); });
        loadingFrame(s, static_cast<unsigned int>(o.ms), frame);
        settleTopDialog(s);
        renderFrame(s, static_cast<unsigned int>(o.ms));
        gfx.present();
        if (o.png.empty() || !save) continue;
        const std::string path = framePath(o.png, frame);
        if (gfx.savePng(path.c_str())) {
            ++saved;
        } else {
            std::fprintf(stderr, "uiview: cannot write %s\n", path.c_str());
            failed = true;
        }
    }
    return saved;
}

void runWindow(SdlGfx& gfx, Session& s) {
    SDL_StartTextInput();
    Uint32 last = SDL_GetTicks();
    for (bool running = true; running && !s.quit;) {
        SDL_Event event;
        while (SDL_PollEvent(&event))
            running = forwardSdlEvent(event, *s.ui) && running;
        const Uint32 now = SDL_GetTicks();
        loadingFrame(s, now - last, 0);
        settleTopDialog(s);
        renderFrame(s, now - last);
        last = now;
        gfx.present();
        SDL_Delay(1);
    }
}

} // namespace

int main(int argc, char** argv) {
    ViewOptions o;
    if (const std::optional<int> status = parseOptions(argc, argv, o)) return *status;
    std::vector<ScriptEvent> events;
    if (!o.script.empty() && !loadScript(o.script, events)) return 2;

    ColourLog log(isatty(2) != 0);
    Logger::setSink(&log);
    // Files named on the command line are relative to where uiview started.
    for (auto& b : o.banners) {
        char full[PATH_MAX];
        if (realpath(b.second.c_str(), full)) b.second = full;
    }
    char started[PATH_MAX];
    if (!o.png.empty() && o.png[0] != '/' && getcwd(started, sizeof started))
        o.png = std::string(started) + "/" + o.png;
    // Names in the description are relative to its directory.
    std::string file = o.file;
    const size_t slash = file.rfind('/');
    if (slash != std::string::npos) {
        if (chdir(file.substr(0, slash).c_str()) != 0) {
            std::fprintf(stderr, "uiview: cannot enter the directory of %s\n", o.file.c_str());
            return 1;
        }
        file = file.substr(slash + 1);
    }

    const bool offScreen = o.frames > 0;
    if (offScreen) setenv("SDL_AUDIODRIVER", "dummy", 0);
    SDL_Window* window = nullptr;
    if (!offScreen) {
        if (SDL_Init(SDL_INIT_VIDEO) != 0 ||
            !(window = SDL_CreateWindow("uiview", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, o.width,
                                        o.height, 0))) {
            std::fprintf(stderr, "uiview: no window: %s (off screen: --frames N)\n", SDL_GetError());
            return 1;
        }
    }
    int status = 0;
    {
        SdlGfx gfx = offScreen ? SdlGfx(".", o.width, o.height) : SdlGfx(".", window);
        SdlSound sound(".");
        g_gfx = &gfx;
        g_sound = &sound;
        uiSubsystem* ui = new uiSubsystem();
        ui->initialize(nullptr);
        if (!o.clickSound.empty()) uiButton::setDefaultSounds(o.clickSound.c_str(), o.highlightSound.c_str());
        DevtoolsGlue glue(gfx);
        Session session(o, ui);
        session.devtools = glue.enable(o.watch, o.statsFont.c_str(), rewire, &session);
        uiWidget* root = session.devtools->loadUI(file.c_str());
        if (!root || !gfx.ok()) {
            std::fprintf(stderr, "uiview: cannot run %s\n", o.file.c_str());
            status = 1;
        } else {
            for (const ClickAction& a : o.actions)
                session.bound.push_back(BoundAction{&session, a});
            showScreen(session, root);
            startLoading(session);
            if (o.stats) ui->gfxStatistics(true, o.statsFont.c_str());
            if (offScreen) {
                bool failed = false;
                const int saved = runOffScreen(o, events, gfx, session, failed);
                if (failed) status = 1;
                std::printf("%s: %d frames of %d ms, %zu input events, clicks acted on: %d, PNG frames: %d",
                            o.file.c_str(), o.frames, o.ms, events.size(), session.actions, saved);
                if (session.loader)
                    std::printf(", %d of %zu screens loaded in the background, shown from frame %d",
                                session.loader->loaded(), o.load.size(), session.switchedAt);
                std::printf("\n");
            } else {
                runWindow(gfx, session);
            }
            session.loader.reset(); // ends the worker before the subsystem shuts down
            ui->shutdown();
            for (uiWidget* shown : session.shown)
                delete shown;
        }
        delete ui;
        g_gfx = nullptr;
        g_sound = nullptr;
    }
    Logger::setSink(nullptr);
    if (window) SDL_DestroyWindow(window);
    SDL_Quit();
    return status;
}
