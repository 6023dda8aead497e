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
#include "session.h"
#include "uibutton.h"
#include "uisubsystem.h"

namespace {

// A screen rebuilt from its saved files: uiview's clicks and banners again, the old tree forgotten.
void rewire(uiWidget* root, uiWidget* replaced, void* client) {
    static_cast<Session*>(client)->rewire(root, replaced);
}

// One frame with the devtools around it: saved files first, their overlays last.
void renderFrame(Session& s, uiDevtools& devtools, uiSubsystem& ui, unsigned int ms, int frame) {
    s.advance(ms, frame);
    devtools.frame(ms);
    ui.render(ms);
    devtools.draw();
}

// Runs the frames off screen; returns the number of pictures saved, and whether any could not be.
int runOffScreen(const ViewOptions& o, const std::vector<ScriptEvent>& events, SdlGfx& gfx, Session& s,
                 uiDevtools& devtools, uiSubsystem& ui, bool& failed) {
    ScriptPlayer player(events);
    int saved = 0;
    for (int frame = 0; frame < o.frames && !s.quit(); ++frame) {
        const bool save = player.due(static_cast<unsigned int>(frame * o.ms),
                                     [&ui](const ScriptEvent& e) { sendScripted(e, ui, deliver); });
        renderFrame(s, devtools, ui, static_cast<unsigned int>(o.ms), frame);
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

void runWindow(SdlGfx& gfx, Session& s, uiDevtools& devtools, uiSubsystem& ui) {
    SDL_StartTextInput();
    Uint32 last = SDL_GetTicks();
    for (bool running = true; running && !s.quit();) {
        SDL_Event event;
        while (SDL_PollEvent(&event))
            running = forwardSdlEvent(event, ui) && running;
        const Uint32 now = SDL_GetTicks();
        renderFrame(s, devtools, ui, now - last, 0);
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
        uiDevtools* devtools = glue.enable(o.watch, o.statsFont.c_str(), rewire, &session);
        uiWidget* root = devtools->loadUI(file.c_str());
        if (!root || !gfx.ok()) {
            std::fprintf(stderr, "uiview: cannot run %s\n", o.file.c_str());
            status = 1;
        } else {
            session.start(root);
            if (offScreen) {
                bool failed = false;
                const int saved = runOffScreen(o, events, gfx, session, *devtools, *ui, failed);
                if (failed) status = 1;
                std::printf("%s: %d frames of %d ms, %zu input events, clicks acted on: %d, PNG frames: %d",
                            o.file.c_str(), o.frames, o.ms, events.size(), session.actions(), saved);
                if (const ScreenLoader* loader = session.loader())
                    std::printf(", %d of %zu screens loaded in the background, shown from frame %d",
                                loader->loaded(), o.load.size(), session.switchedAt());
                std::printf("\n");
            } else {
                runWindow(gfx, session, *devtools, *ui);
            }
            session.close();
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
