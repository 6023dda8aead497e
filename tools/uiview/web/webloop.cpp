#include "webloop.h"
#include <emscripten.h>
#include <algorithm>
#include <fstream>
#include <memory>
#include "webpage.h"

namespace {

struct State {
    WebLoop* loop = nullptr;
    std::unique_ptr<ScriptPlayer> script;
    int frame = 0;
    bool held = false;
    double last = 0;      // page clock of the last frame
    double frameCost = 0; // milliseconds spent in the scripted frames
};

State g_state;

void step(void*) {
    State& s = g_state;
    if (s.held) return;
    gameui_page_poll();
    const double started = emscripten_get_now();
    const WebLoop& loop = *s.loop;
    const bool scripted = s.frame < loop.frames;
    unsigned int ms = static_cast<unsigned int>(loop.ms);
    bool picture = false;
    if (scripted)
        picture = s.script->due(static_cast<unsigned int>(s.frame * loop.ms), loop.send);
    else
        ms = static_cast<unsigned int>(std::min(100.0, started - s.last)); // a hidden tab pauses the clock
    s.last = started;
    const bool goesOn = loop.frame(ms, s.frame);
    if (s.frame == 0)
        EM_ASM({
            if (Module.gameuiFirstFrame) Module.gameuiFirstFrame();
        });
    if (scripted) s.frameCost += emscripten_get_now() - started;
    if (picture)
        s.held = EM_ASM_INT({ return Module.gameuiFrame ? (Module.gameuiFrame($0) ? 1 : 0) : 0; }, s.frame);
    if (++s.frame == loop.frames)
        EM_ASM(
            {
                if (Module.gameuiScriptDone) Module.gameuiScriptDone($0);
            },
            s.frameCost / loop.frames);
    if (!goesOn) {
        emscripten_cancel_main_loop();
        EM_ASM({
            if (Module.gameuiQuit) Module.gameuiQuit();
        });
    }
}

} // namespace

extern "C" EMSCRIPTEN_KEEPALIVE void gameui_web_resume() {
    g_state.held = false;
}

void addSessionWords(std::vector<std::string>& words, const std::string& argsFile,
                     const std::string& script) {
    std::ifstream args(argsFile);
    for (std::string word; args >> word;)
        words.push_back(word);
    words.insert(words.end(), {"--script", script});
}

void runWebLoop(WebLoop& loop) {
    g_state.loop = &loop;
    g_state.script = std::make_unique<ScriptPlayer>(loop.events);
    g_state.last = emscripten_get_now();
    emscripten_set_main_loop_arg(step, nullptr, 0, 0);
}
