// A robustness check for a game's screen, the one the library's own suite runs over the shipped screens:
// it loads and plays without errors, fails cleanly wherever memory runs out, and its frames and input
// allocate nothing once warm.
#pragma once
#include <map>
#include <string>

namespace testkit {

struct ScreenCheck {
    std::string problems; // one line for each problem found; empty for a sound screen
    bool drew = false;    // its frames drew sprites (a dialog waits hidden until the game shows it)
};

// Checks the screen `file` among `files` (names and contents, as readFolder gives them), each run with
// services of its own. Its whole life (playScreen) must log no error and leave nothing allocated; then
// each allocation of that life is made to fail in turn, and each such run must log an error and leave
// nothing allocated. Last the screen is driven twice by presses and drags at every point of a grid over
// an 800x600 screen and by exercise(): the second pass must allocate nothing.
ScreenCheck checkScreen(const std::map<std::string, std::string>& files, const std::string& file);

} // namespace testkit
