#include "sdlhost.h"
#include <SDL.h>
#include <SDL_mixer.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cstdio>
#include <memory>
#include <ctime>
#include <vector>
#include "devtoolsglue.h"
#include "game.h"
#include "gamescript.h"
#include "host.h"
#include "sdlgfx.h"
#include "sdlinput.h"
#include "sdlsound.h"
#include "uisubsystem.h"

namespace {

constexpr int kWidth = 800, kHeight = 600;

class SdlHost : public Host {
public:
    explicit SdlHost(SDL_Window* window) : m_window(window) {}
    void setVolumes(int music, int effects) override {
        Mix_VolumeMusic(music * MIX_MAX_VOLUME / 100);
        Mix_Volume(-1, effects * MIX_MAX_VOLUME / 100);
    }
    void setFullscreen(bool on) override {
        if (m_window) SDL_SetWindowFullscreen(m_window, on ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    }

private:
    SDL_Window* m_window;
};

int keyOf(SDL_Keycode key) {
    switch (key) {
    case SDLK_LEFT:
        return KEY_LEFT;
    case SDLK_RIGHT:
        return KEY_RIGHT;
    case SDLK_UP:
        return KEY_UP;
    case SDLK_DOWN:
        return KEY_DOWN;
    default:
        return libraryKey(key);
    }
}

int padKey(Uint8 button) {
    switch (button) {
    case SDL_CONTROLLER_BUTTON_DPAD_LEFT:
        return KEY_LEFT;
    case SDL_CONTROLLER_BUTTON_DPAD_RIGHT:
        return KEY_RIGHT;
    case SDL_CONTROLLER_BUTTON_DPAD_UP:
        return KEY_UP;
    case SDL_CONTROLLER_BUTTON_DPAD_DOWN:
        return KEY_DOWN;
    case SDL_CONTROLLER_BUTTON_A:
        return 13;
    case SDL_CONTROLLER_BUTTON_B:
    case SDL_CONTROLLER_BUTTON_BACK:
    case SDL_CONTROLLER_BUTTON_START:
        return 27;
    default:
        return 0;
    }
}

// The left stick acts as the arrow keys: a new direction releases the old one.
void stick(Game& game, const SDL_ControllerAxisEvent& e, int (&held)[2]) {
    const int axis = e.axis == SDL_CONTROLLER_AXIS_LEFTX ? 0 : e.axis == SDL_CONTROLLER_AXIS_LEFTY ? 1 : -1;
    if (axis < 0) return;
    const int keys[2][2] = {{KEY_LEFT, KEY_RIGHT}, {KEY_UP, KEY_DOWN}};
    const int now = e.value < -16000 ? keys[axis][0] : e.value > 16000 ? keys[axis][1] : 0;
    if (now == held[axis]) return;
    if (held[axis]) game.key(held[axis], false);
    if (now) game.key(now, true);
    held[axis] = now;
}

// False once the window is closed.
bool pump(Game& game) {
    static int held[2] = {0, 0};
    SDL_Event e;
    while (SDL_PollEvent(&e)) {
        switch (e.type) {
        case SDL_QUIT:
            return false;
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            if (const int key = keyOf(e.key.keysym.sym)) game.key(key, e.type == SDL_KEYDOWN);
            break;
        case SDL_CONTROLLERDEVICEADDED:
            SDL_GameControllerOpen(e.cdevice.which);
            break;
        case SDL_CONTROLLERBUTTONDOWN:
        case SDL_CONTROLLERBUTTONUP:
            if (const int key = padKey(e.cbutton.button)) game.key(key, e.type == SDL_CONTROLLERBUTTONDOWN);
            break;
        case SDL_CONTROLLERAXISMOTION:
            stick(game, e.caxis, held);
            break;
        default:
            forwardSdlEvent(e, *g_ui); // pointer (already in the 800 x 600 space) and text
        }
    }
    return true;
}

void runWindow(Game& game, SdlGfx& gfx) {
    SDL_StartTextInput();
    Uint32 last = SDL_GetTicks();
    while (!game.finished() && pump(game)) {
        const Uint32 now = SDL_GetTicks();
        game.frame(SDL_min(now - last, 100u));
        last = now;
        gfx.present();
        SDL_Delay(1);
    }
}

// Fixed frame times; the frames the script marks are saved.
bool runScripted(Game& game, SdlGfx& gfx, const GameArgs& args, const std::vector<ScriptEvent>& events) {
    ScriptPlayer player(events);
    bool ok = true;
    int saved = 0, frame = 0;
    for (; frame < args.frames && !game.finished(); ++frame) {
        const bool save = player.due(static_cast<unsigned int>(frame * args.ms),
                                     [&game](const ScriptEvent& e) { sendScripted(game, e); });
        game.frame(static_cast<unsigned int>(args.ms));
        gfx.present();
        if (args.png.empty() || !save) continue;
        const std::string path = framePath(args.png, frame);
        if (gfx.savePng(path.c_str())) {
            ++saved;
            continue;
        }
        std::fprintf(stderr, "starcatcher: cannot write %s\n", path.c_str());
        ok = false;
    }
    std::printf("starcatcher: %d frames of %d ms, %zu input events, PNG frames: %d\n", frame, args.ms,
                events.size(), saved);
    return ok;
}

// A path given relative to where the game started, usable after it moved into its data folder.
std::string fromStart(const std::string& path) {
    char started[4096];
    if (path.empty() || path[0] == '/' || !getcwd(started, sizeof started)) return path;
    return std::string(started) + "/" + path;
}

std::string prefsFolder(const GameArgs& args) {
    std::string folder = fromStart(args.prefs);
    if (folder.empty()) {
        char* path = SDL_GetPrefPath("gameui", "starcatcher");
        folder = path ? path : "./";
        SDL_free(path);
    }
    if (folder.back() != '/') folder += '/';
    mkdir(folder.c_str(), 0755);
    return folder;
}

} // namespace

int runSdlGame(const GameArgs& args) {
    const bool offScreen = args.frames > 0;
    std::vector<ScriptEvent> events;
    if (!args.script.empty() && !loadScript(args.script, events)) return 2;
    GameConfig config;
    config.prefs = prefsFolder(args);
    config.seed = args.seed ? args.seed : offScreen ? 1 : static_cast<unsigned int>(std::time(nullptr));
    config.autoplay = args.autoplay;
    GameArgs scripted = args;
    scripted.png = fromStart(args.png);
    // The descriptions name their files relative to the data folder.
    if (chdir(args.data.c_str()) != 0) {
        std::fprintf(stderr, "starcatcher: no game data in %s (--data DIR)\n", args.data.c_str());
        return 1;
    }
    if (offScreen) SDL_setenv("SDL_AUDIODRIVER", "dummy", 0);
    SDL_Window* window = nullptr;
    if (!offScreen &&
        (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER) != 0 ||
         !(window = SDL_CreateWindow("Star Catcher", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, kWidth,
                                     kHeight, SDL_WINDOW_RESIZABLE)))) {
        std::fprintf(stderr, "starcatcher: no window: %s (off screen: --frames N)\n", SDL_GetError());
        return 1;
    }
    int status = 0;
    {
        SdlGfx gfx = offScreen ? SdlGfx(".", kWidth, kHeight) : SdlGfx(".", window);
        // Any window size shows the whole 800 x 600 screen, letterboxed; SDL maps the pointer back.
        if (window) SDL_RenderSetLogicalSize(SDL_GetRenderer(window), kWidth, kHeight);
        SdlSound sound(".");
        g_gfx = &gfx;
        g_sound = &sound;
        Mix_Music* music = Mix_LoadMUS("art/music.wav");
        if (music) Mix_PlayMusic(music, -1);
        SdlHost host(window);
        std::unique_ptr<DevtoolsGlue> glue; // outlives the game, which forgets its screens as it goes
        if (args.devtools) glue = std::make_unique<DevtoolsGlue>(gfx);
        {
            Game game(host, config);
            if (glue) game.useDevtools(glue->enable(true, "art/small", Game::s_rebuilt, &game));
            if (!gfx.ok() || !game.start())
                status = 1;
            else if (offScreen)
                status = runScripted(game, gfx, scripted, events) ? 0 : 1;
            else
                runWindow(game, gfx);
        }
        if (music) Mix_FreeMusic(music);
        g_gfx = nullptr;
        g_sound = nullptr;
    }
    if (window) SDL_DestroyWindow(window);
    SDL_Quit();
    return status;
}
