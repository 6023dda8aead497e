#include "options.h"
#include <cstdio>
#include <cstdlib>
#include <cstring>

void printHelp() {
    std::puts(
        "usage: uiview FILE [options]\n"
        "Loads the UI description FILE and runs it. Names inside it (includes, sprites, fonts, sounds,\n"
        "particle files) are looked up next to FILE. A root that is a dialog is pushed on the dialog stack.\n"
        "A dialog that comes to the top of the stack is reset once idle, as a game does when it shows one:\n"
        "its tab entries lose input focus but the current one.\n"
        "\n"
        "  --size WxH          screen size in pixels (default 800x600)\n"
        "  --frames N          run N frames off screen, without a window or display\n"
        "  --ms M              milliseconds per off-screen frame (default 16)\n"
        "  --png PATTERN       save off-screen frames as PNG files, e.g. out/frame%03d.png (relative to\n"
        "                      the current directory; a frame that cannot be written makes the exit status "
        "1)\n"
        "  --script FILE       play timed input events, one per line:\n"
        "                        move X Y | down X Y | up X Y   mouse events at (X, Y)\n"
        "                        key CODE                       key down and up of a library key code\n"
        "                        char TEXT                      text typed, one character event each\n"
        "                        wait MS                        later lines happen MS milliseconds later\n"
        "                        png                            save the frame of the lines so far; later\n"
        "                                                       lines of the same time come a frame later\n"
        "                      '#' starts a comment\n"
        "  --stats             show the statistics overlay\n"
        "  --stats-font NAME   font of the overlay and of the devtools' (default: stats, from stats.font)\n"
        "  --watch             rebuild the screen when its files are saved, keeping its state; F12\n"
        "                      opens the inspector (u parent, d child, n/b siblings, c copy, t tree)\n"
        "  --push PATH         push the dialog at PATH (dotted path from the root) at the start\n"
        "  --value PATH=N      set the progress bar at PATH to N at the start (it fills toward it)\n"
        "  --banner PATH=FILE  print each line of FILE (banner markup) on the digital banner at PATH,\n"
        "                      priorities in line order\n"
        "  --on PATH=push:DLG  a click on the widget at PATH pushes the dialog at DLG (dotted paths)\n"
        "  --on PATH=pause:C   a click on the widget at PATH pauses the game container at C, or resumes it\n"
        "  --on PATH=pop       a click on the widget at PATH pops the top dialog\n"
        "  --on PATH=quit      a click on the widget at PATH ends uiview\n"
        "  --load F1[,F2...]   load these descriptions (next to FILE) one after the other on a background\n"
        "                      loader's worker thread while FILE runs; once all have arrived (and the bar\n"
        "                      of --progress shows full) the first becomes the screen. A load is collected\n"
        "                      600 ms of frame time after its request (waiting for the worker if needed),\n"
        "                      so off-screen sessions give the same pictures on every run\n"
        "  --progress PATH     the progress bar at PATH counts the loaded files (range 0 to their number)\n"
        "  Start-up options (--value, --banner, --push) and --on actions apply to whichever screen has\n"
        "  the widget at PATH, the loaded one included.\n"
        "  --help              this text\n"
        "\n"
        "In a window, keys reach the library as: Enter 13, Escape 27, Backspace 127, Tab 9,\n"
        "F1-F10 163-172, Alt 136, Ctrl 137, Shift 138, other keys by their character; typed text\n"
        "arrives as character events. Close the window to quit.");
}

namespace {

bool parseAction(const char* text, ClickAction& action) {
    const char* eq = std::strchr(text, '=');
    if (!eq) return false;
    action.widget.assign(text, eq);
    std::string rest = eq + 1;
    const size_t colon = rest.find(':');
    action.verb = rest.substr(0, colon);
    if (colon != std::string::npos) action.dialog = rest.substr(colon + 1);
    return action.verb == "pop" || action.verb == "quit" ||
           ((action.verb == "push" || action.verb == "pause") && !action.dialog.empty());
}

} // namespace

bool parseOptions(int argc, char** argv, ViewOptions& o) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        const bool takesValue = arg == "--size" || arg == "--frames" || arg == "--ms" || arg == "--png" ||
                                arg == "--script" || arg == "--stats-font" || arg == "--on" ||
                                arg == "--push" || arg == "--value" || arg == "--banner" || arg == "--load" ||
                                arg == "--progress";
        if (takesValue && !value) {
            std::fprintf(stderr, "uiview: %s needs a value\n", arg.c_str());
            return false;
        }
        if (takesValue) ++i;
        if (arg == "--help" || arg == "-h")
            o.help = true;
        else if (arg == "--stats")
            o.stats = true;
        else if (arg == "--watch")
            o.watch = true;
        else if (arg == "--size") {
            if (std::sscanf(value, "%dx%d", &o.width, &o.height) != 2 || o.width <= 0 || o.height <= 0) {
                std::fprintf(stderr, "uiview: --size wants WxH, got %s\n", value);
                return false;
            }
        } else if (arg == "--frames")
            o.frames = std::atoi(value);
        else if (arg == "--ms")
            o.ms = std::atoi(value);
        else if (arg == "--png")
            o.png = value;
        else if (arg == "--script")
            o.script = value;
        else if (arg == "--stats-font")
            o.statsFont = value;
        else if (arg == "--push")
            o.push.push_back(value);
        else if (arg == "--load") {
            for (const char* p = value; *p;) {
                const char* comma = std::strchr(p, ',');
                const std::string name = comma ? std::string(p, comma) : std::string(p);
                if (!name.empty()) o.load.push_back(name);
                p = comma ? comma + 1 : p + name.size();
            }
        } else if (arg == "--progress")
            o.progress = value;
        else if (arg == "--value" || arg == "--banner") {
            const char* eq = std::strchr(value, '=');
            if (!eq) {
                std::fprintf(stderr, "uiview: %s wants PATH=%s, got %s\n", arg.c_str(),
                             arg == "--value" ? "N" : "FILE", value);
                return false;
            }
            if (arg == "--value")
                o.values.emplace_back(std::string(value, eq), std::atoi(eq + 1));
            else
                o.banners.emplace_back(std::string(value, eq), std::string(eq + 1));
        } else if (arg == "--on") {
            ClickAction action;
            if (!parseAction(value, action)) {
                std::fprintf(stderr,
                             "uiview: --on wants PATH=push:DIALOG, PATH=pause:CONTAINER, PATH=pop or "
                             "PATH=quit, got %s\n",
                             value);
                return false;
            }
            o.actions.push_back(action);
        } else if (arg.size() > 1 && arg[0] == '-') {
            std::fprintf(stderr, "uiview: unknown option %s (see --help)\n", arg.c_str());
            return false;
        } else
            o.file = arg;
    }
    if (!o.progress.empty() && o.load.empty()) {
        std::fprintf(stderr, "uiview: --progress needs --load\n");
        return false;
    }
    if (!o.help && o.file.empty()) {
        std::fprintf(stderr, "uiview: no description file given (see --help)\n");
        return false;
    }
    return true;
}
