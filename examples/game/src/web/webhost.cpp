// Star Catcher in the browser: the game on the web services in the page's frame loop (webloop.h). The
// page gives the game's command line; "demo" alone stands for the scripted session of the demo
// (demo.args and demo.script), which plays first, before the game goes on live.
//
// The saved options and scores live in the page's memory file system (/prefs): each page starts with
// the defaults. Module.gameuiScreen(name) tells the page of each screen shown.
#include <emscripten.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cstdio>
#include <ctime>
#include <memory>
#include <string>
#include <vector>
#include "args.h"
#include "game.h"
#include "gamescript.h"
#include "host.h"
#include "webgfx.h"
#include "webinput.h"
#include "webloop.h"
#include "websound.h"

namespace {

constexpr int kWidth = 800, kHeight = 600;
const char* const kScreenNames[SCREEN_COUNT] = {"title", "menu", "levels", "loading", "play"};

class WebHost : public Host {
public:
    explicit WebHost(WebSound& sound) : m_sound(sound) {}
    void setVolumes(int music, int effects) override { m_sound.setVolumes(effects / 100.0f, music / 100.0f); }
    // The whole page (the canvas keeps its aspect ratio in it). Browsers allow it only just after a click
    // or key; refused, the page stays as it is and says so in the log.
    void setFullscreen(bool on) override {
        EM_ASM(
            {
                const page = document.documentElement;
                if ($0 && !document.fullscreenElement && page.requestFullscreen)
                    page.requestFullscreen().catch(
                        function() { console.warn('starcatcher: full screen refused'); });
                else if (!$0 && document.fullscreenElement)
                    document.exitFullscreen().catch(function(){});
            },
            on);
    }

private:
    WebSound& m_sound;
};

struct Web {
    WebLoop loop;
    std::unique_ptr<WebGfx> gfx;
    std::unique_ptr<WebSound> sound;
    std::unique_ptr<WebHost> host;
    std::unique_ptr<Game> game;
    int shown = -1; // the screen the page was told of
};

Web g_web;

std::vector<std::string> commandLine(int argc, char** argv) {
    std::vector<std::string> words(argv, argv + argc);
    if (argc != 2 || words[1] != "demo") return words;
    words.pop_back();
    addSessionWords(words, GAME_DATA_DIR "/demo.args", GAME_DATA_DIR "/demo.script");
    return words;
}

int gameKey(int key) {
    return key >= WebInput::ARROW_LEFT && key <= WebInput::ARROW_DOWN ? key - WebInput::ARROW_LEFT + KEY_LEFT
                                                                      : key;
}

void receive(void* client, e_uiEvent kind, int x, int y, int key) {
    Game& game = *static_cast<Game*>(client);
    if (kind == UIE_KEY_DOWN || kind == UIE_KEY_UP)
        game.key(gameKey(key), kind == UIE_KEY_DOWN);
    else if (kind == UIE_CHAR)
        game.text(key);
    else
        game.pointer(kind, x, y);
}

bool frame(unsigned int ms, int) {
    Web& w = g_web;
    w.game->frame(ms);
    w.gfx->present();
    if (w.game->current() != w.shown) {
        w.shown = w.game->current();
        EM_ASM(
            {
                if (Module.gameuiScreen) Module.gameuiScreen(UTF8ToString($0));
            },
            kScreenNames[w.shown]);
    }
    return !w.game->finished();
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words = commandLine(argc, argv);
    std::vector<char*> argp;
    for (std::string& word : words)
        argp.push_back(&word[0]);
    GameArgs args;
    if (!parseArgs(static_cast<int>(argp.size()), argp.data(), args)) return 2;
    Web& w = g_web;
    if (!args.script.empty() && !loadScript(args.script, w.loop.events)) return 2;
    GameConfig config;
    config.prefs = args.prefs.empty() ? "/prefs/" : args.prefs + "/";
    mkdir(config.prefs.c_str(), 0755);
    config.seed = args.seed ? args.seed : args.frames > 0 ? 1 : static_cast<unsigned int>(std::time(nullptr));
    config.autoplay = args.autoplay;
    // The descriptions name their files relative to the data folder.
    if (chdir(args.data.c_str()) != 0) {
        std::fprintf(stderr, "starcatcher: no game data in %s\n", args.data.c_str());
        return 1;
    }
    w.gfx = std::make_unique<WebGfx>(".", kWidth, kHeight);
    w.sound = std::make_unique<WebSound>(".");
    g_gfx = w.gfx.get();
    g_sound = w.sound.get();
    w.host = std::make_unique<WebHost>(*w.sound);
    w.game = std::make_unique<Game>(*w.host, config);
    if (!w.game->start()) return 1;
    w.sound->playMusic("art/music.wav");
    WebInput::attach(receive, w.game.get());
    w.loop.frames = args.frames;
    w.loop.ms = args.ms;
    w.loop.send = [](const ScriptEvent& e) { sendScripted(*g_web.game, e); };
    w.loop.frame = frame;
    runWebLoop(w.loop);
    return 0;
}
