// The frame loop of the browser programs, one frame per animation frame of the page. A scripted session
// (its frames at a fixed time) plays first, as off screen; then the program runs live on the page's
// clock and input. The page hears of it through Module's hooks: gameuiFirstFrame() once the first frame
// is drawn; gameuiFrame(n) at each frame the script pictures (when it answers true the loop holds until
// gameui_web_resume() is called); gameuiScriptDone(ms), with the mean cost of a scripted frame;
// gameuiQuit() when the program ends.
#pragma once
#include <string>
#include <vector>
#include "script.h"

struct WebLoop {
    int frames = 0; // scripted frames
    int ms = 20;    // the fixed time of a scripted frame
    std::vector<ScriptEvent> events;
    void (*send)(const ScriptEvent& e) = nullptr;
    // Updates and draws frame `number` of `ms` milliseconds; false when the program ends.
    bool (*frame)(unsigned int ms, int number) = nullptr;
};

// Starts the loop and returns to the page at once; the loop, which must outlive it, goes on.
void runWebLoop(WebLoop& loop);

// Adds the words of a session's options file, then "--script" and its script, to a command line.
void addSessionWords(std::vector<std::string>& words, const std::string& argsFile, const std::string& script);
