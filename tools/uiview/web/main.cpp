// uiview's session player in the browser: runs a UI description on the web services, one frame per
// animation frame of the page. A scripted session (--script, --frames, --ms) plays first at its fixed
// frame time, as off screen; then the screen runs live on the page's clock and input.
//
// The page (index.html) names an example, whose options come from examples/NAME.args as for the demo,
// or gives uiview's command line. The page's hooks: Module.gameuiFirstFrame() after the first frame is
// drawn; Module.gameuiFrame(n) at each frame the script pictures (when it answers true the player holds
// until gameui_web_resume() is called); Module.gameuiScriptDone(ms), with the mean cost of a scripted
// frame; Module.gameuiQuit() when a quit action ends the session.
#include <emscripten.h>
#include <climits>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>
#include "colourlog.h"
#include "session.h"
#include "uibutton.h"
#include "uisubsystem.h"
#include "webgfx.h"
#include "webinput.h"
#include "webpage.h"
#include "websound.h"

namespace {

struct Player {
    ViewOptions options;
    std::vector<ScriptEvent> events;
    std::unique_ptr<WebGfx> gfx;
    std::unique_ptr<WebSound> sound;
    uiSubsystem* ui = nullptr;
    std::unique_ptr<Session> session;
    std::unique_ptr<ScriptPlayer> script;
    int frame = 0;
    bool held = false;
    double last = 0;      // page clock of the last live frame
    double frameCost = 0; // milliseconds spent in the scripted frames
};

Player g_player;

// "NAME" alone stands for the example session of the demo: examples/NAME.ui with examples/NAME.args
// and examples/NAME.script.
std::vector<std::string> commandLine(int argc, char** argv) {
    std::vector<std::string> words(argv, argv + argc);
    if (argc != 2 || words[1].find('.') != std::string::npos || words[1][0] == '-') return words;
    const std::string name = words[1];
    words.pop_back();
    words.push_back("examples/" + name + ".ui");
    std::ifstream args("examples/" + name + ".args");
    for (std::string word; args >> word;)
        words.push_back(word);
    words.insert(words.end(), {"--script", "examples/" + name + ".script"});
    return words;
}

void frame(void*) {
    Player& p = g_player;
    if (p.held) return;
    gameui_page_poll();
    const double started = emscripten_get_now();
    const bool scripted = p.frame < p.options.frames;
    unsigned int ms = static_cast<unsigned int>(p.options.ms);
    bool picture = false;
    if (scripted)
        picture = p.script->due(static_cast<unsigned int>(p.frame * p.options.ms),
                                [](const ScriptEvent& e) { sendScripted(e, *g_player.ui); });
    else
        ms = static_cast<unsigned int>(std::min(100.0, started - p.last)); // a hidden tab pauses the clock
    p.last = started;
    p.session->advance(ms, p.frame);
    p.ui->render(ms);
    p.gfx->present();
    if (p.frame == 0)
        EM_ASM({
            if (Module.gameuiFirstFrame) Module.gameuiFirstFrame();
        });
    if (scripted) p.frameCost += emscripten_get_now() - started;
    if (picture)
        p.held = EM_ASM_INT({ return Module.gameuiFrame ? (Module.gameuiFrame($0) ? 1 : 0) : 0; }, p.frame);
    if (++p.frame == p.options.frames)
        EM_ASM(
            {
                if (Module.gameuiScriptDone) Module.gameuiScriptDone($0);
            },
            p.frameCost / p.options.frames);
    if (p.session->quit()) {
        emscripten_cancel_main_loop();
        EM_ASM({
            if (Module.gameuiQuit) Module.gameuiQuit();
        });
    }
}

} // namespace

extern "C" EMSCRIPTEN_KEEPALIVE void gameui_web_resume() {
    g_player.held = false;
}

int main(int argc, char** argv) {
    std::vector<std::string> words = commandLine(argc, argv);
    std::vector<char*> args;
    for (std::string& w : words)
        args.push_back(&w[0]);
    Player& p = g_player;
    ViewOptions& o = p.options;
    if (const std::optional<int> status = parseOptions(static_cast<int>(args.size()), args.data(), o))
        return *status;
    if (!o.script.empty() && !loadScript(o.script, p.events)) return 2;
    static ColourLog log(false);
    Logger::setSink(&log);
    for (auto& b : o.banners) {
        char full[PATH_MAX];
        if (realpath(b.second.c_str(), full)) b.second = full;
    }
    // Names in the description are relative to its directory.
    std::string file = o.file;
    const size_t slash = file.rfind('/');
    if (slash != std::string::npos) {
        if (chdir(file.substr(0, slash).c_str()) != 0) return 1;
        file = file.substr(slash + 1);
    }
    p.gfx = std::make_unique<WebGfx>(".", o.width, o.height);
    p.sound = std::make_unique<WebSound>(".");
    g_gfx = p.gfx.get();
    g_sound = p.sound.get();
    p.ui = new uiSubsystem();
    p.ui->initialize(nullptr);
    if (!o.clickSound.empty()) uiButton::setDefaultSounds(o.clickSound.c_str(), o.highlightSound.c_str());
    uiWidget* root = p.ui->loadUI(file.c_str());
    if (!root) {
        std::fprintf(stderr, "uiview: cannot run %s\n", o.file.c_str());
        return 1;
    }
    p.session = std::make_unique<Session>(o, p.ui);
    p.session->start(root);
    p.script = std::make_unique<ScriptPlayer>(p.events);
    WebInput::attach(p.ui);
    p.last = emscripten_get_now();
    // The page's own frames drive the player; main returns to the page at once and the player lives on.
    emscripten_set_main_loop_arg(frame, nullptr, 0, 0);
    return 0;
}
