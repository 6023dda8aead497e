// uiview's session player in the browser: runs a UI description on the web services in the page's frame
// loop (webloop.h), its script (--script, --frames, --ms) first.
//
// The page (index.html) names an example, whose options come from examples/NAME.args as for the demo,
// or gives uiview's command line.
#include <climits>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>
#include "colourlog.h"
#include "session.h"
#include "uibutton.h"
#include "uisubsystem.h"
#include "webgfx.h"
#include "webinput.h"
#include "webloop.h"
#include "websound.h"

namespace {

struct Player {
    ViewOptions options;
    WebLoop loop;
    std::unique_ptr<WebGfx> gfx;
    std::unique_ptr<WebSound> sound;
    uiSubsystem* ui = nullptr;
    std::unique_ptr<Session> session;
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
    addSessionWords(words, "examples/" + name + ".args", "examples/" + name + ".script");
    return words;
}

bool frame(unsigned int ms, int number) {
    Player& p = g_player;
    p.session->advance(ms, number);
    p.ui->render(ms);
    p.gfx->present();
    return !p.session->quit();
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words = commandLine(argc, argv);
    std::vector<char*> args;
    for (std::string& w : words)
        args.push_back(&w[0]);
    Player& p = g_player;
    ViewOptions& o = p.options;
    if (const std::optional<int> status = parseOptions(static_cast<int>(args.size()), args.data(), o))
        return *status;
    if (!o.script.empty() && !loadScript(o.script, p.loop.events)) return 2;
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
    WebInput::attach(p.ui);
    p.loop.frames = o.frames;
    p.loop.ms = o.ms;
    p.loop.send = [](const ScriptEvent& e) { sendScripted(e, *g_player.ui); };
    p.loop.frame = frame;
    runWebLoop(p.loop);
    return 0;
}
