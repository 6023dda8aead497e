// The game's command line.
#pragma once
#include <string>

struct GameArgs {
    std::string data = GAME_DATA_DIR; // descriptions, art and texts
    std::string prefs;                // folder of the saved files; empty: SDL's folder for the user
    std::string script;               // scripted input: play off screen
    std::string png;                  // frames to save (printf pattern), off screen
    int frames = 0;                   // off screen: frames to run
    int ms = 20;                      // off screen: milliseconds a frame
    unsigned int seed = 0;            // 0: from the clock (1 off screen)
    bool autoplay = false;
    bool devtools = false; // live reload of the screens and the inspector (F12)
    bool help = false;
};

// False (with a message on stderr) on a bad argument.
bool parseArgs(int argc, char** argv, GameArgs& out);
void printUsage();
