// Command line of uiview.
#pragma once
#include <optional>
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
    std::string clickSound, highlightSound; // buttons' default sounds; empty: the library's own
    std::vector<ClickAction> actions;
    std::vector<std::pair<std::string, int>> values;          // progress bars set at the start
    std::vector<std::string> push;                            // dialogs pushed at the start, by dotted path
    std::vector<std::pair<std::string, std::string>> banners; // banner path, file of messages
    std::vector<std::string> load; // screens loaded in the background, shown when all have arrived
    std::string progress;          // progress bar fed by the background loads
    bool watch = false;            // live reload
};

// Fills options from the command line. Returns the exit status when uiview is to stop at once: 0 after
// --help, 2 (with a message on stderr) when the command line is not understood.
std::optional<int> parseOptions(int argc, char** argv, ViewOptions& options);
