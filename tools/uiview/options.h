// Command line of uiview.
#pragma once
#include <string>
#include <vector>

struct ClickAction {
    std::string widget; // full dotted path from the root
    std::string verb;   // push, pop or quit
    std::string dialog; // for push: full dotted path of the dialog; for pause: of the game container
};

struct ViewOptions {
    std::string file;
    int width = 800, height = 600;
    int frames = 0; // > 0: off screen
    int ms = 16;
    std::string png;    // printf pattern with one %d for the frame number; empty: no pictures
    std::string script; // timed input events
    bool stats = false;
    std::string statsFont = "stats";
    std::vector<ClickAction> actions;
    std::vector<std::pair<std::string, int>> values;          // progress bars set at the start
    std::vector<std::string> push;                            // dialogs pushed at the start, by dotted path
    std::vector<std::pair<std::string, std::string>> banners; // banner path, file of messages
    std::vector<std::string> load; // screens loaded in the background, shown when all have arrived
    std::string progress;          // progress bar fed by the background loads
    bool watch = false;            // live reload
    bool help = false;
};

// Fills options from the command line; false (with a message on stderr) when it is not understood.
bool parseOptions(int argc, char** argv, ViewOptions& options);
void printHelp();
