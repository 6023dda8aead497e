#include "options.h"
#include <CLI/CLI.hpp>
#include <cstdio>

namespace {

const char* const kDescription =
    "Loads the UI description FILE and runs it. Names inside it (includes, sprites, fonts, sounds,\n"
    "particle files) are looked up next to FILE. A root that is a dialog is pushed on the dialog stack.\n"
    "A dialog that comes to the top of the stack is reset once idle, as a game does when it shows one:\n"
    "its tab entries lose input focus but the current one.\n";

const char* const kFooter =
    "Start-up options (--value, --banner, --push) and --on actions apply to whichever screen has the\n"
    "widget at PATH, the loaded one included.\n"
    "\n"
    "A --script file holds timed input events, one per line ('#' starts a comment):\n"
    "  move X Y | down X Y | up X Y   mouse events at (X, Y)\n"
    "  key CODE                       key down and up of a library key code\n"
    "  char TEXT                      text typed, one character event each\n"
    "  wait MS                        later lines happen MS milliseconds later\n"
    "  png                            save the frame of the lines so far; later lines of the same time\n"
    "                                 come a frame later\n"
    "\n"
    "In a window, keys reach the library as the codes of uikeys.h: Enter 13, Escape 27,\n"
    "Backspace 127, Tab 9, Alt 136, Ctrl 137, Shift 138,\n"
    "F1-F12 163-174, other keys by their character; typed text arrives as character events.\n"
    "Close the window to quit.";

// A value that does not read as `form`; CLI11 reports it with the option's name.
[[noreturn]] void notOfForm(const std::string& form, const std::string& value) {
    throw CLI::ValidationError("wants " + form + ", got " + value);
}

// "PATH=REST" split at the first '='.
std::pair<std::string, std::string> assignment(const std::string& value, const char* form) {
    const size_t eq = value.find('=');
    if (eq == std::string::npos || eq == 0) notOfForm(std::string("PATH=") + form, value);
    return {value.substr(0, eq), value.substr(eq + 1)};
}

const char* const kActionForms = "push:DIALOG, PATH=pause:CONTAINER, PATH=pop or PATH=quit";

ClickAction action(const std::string& value) {
    const auto [widget, what] = assignment(value, kActionForms);
    const size_t colon = what.find(':');
    ClickAction a{widget, what.substr(0, colon), colon == std::string::npos ? "" : what.substr(colon + 1)};
    const bool named = (a.verb == "push" || a.verb == "pause") && !a.dialog.empty();
    if (!named && !(colon == std::string::npos && (a.verb == "pop" || a.verb == "quit")))
        notOfForm(std::string("PATH=") + kActionForms, value);
    return a;
}

} // namespace

std::optional<int> parseOptions(int argc, char** argv, ViewOptions& o) {
    CLI::App app(kDescription, "uiview");
    app.footer(kFooter);
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_option("FILE", o.file, "the UI description")->required();
    app.add_option("--size", "screen size in pixels (default 800x600)")
        ->type_name("WxH")
        ->each([&o](const std::string& v) {
            char tail;
            if (std::sscanf(v.c_str(), "%dx%d%c", &o.width, &o.height, &tail) != 2 || o.width <= 0 ||
                o.height <= 0)
                notOfForm("WxH", v);
        });
    app.add_option("--frames", o.frames, "run N frames off screen, without a window or display")
        ->type_name("N");
    app.add_option("--ms", o.ms, "milliseconds per off-screen frame (default 16)")->type_name("M");
    app.add_option("--png", o.png,
                   "save off-screen frames as PNG files, e.g. out/frame%03d.png (relative to the\n"
                   "current directory; a frame that cannot be written makes the exit status 1)")
        ->type_name("PATTERN");
    app.add_option("--script", o.script, "play timed input events (below)")->type_name("FILE");
    app.add_flag("--stats", o.stats, "show the statistics overlay");
    app.add_option("--sounds", "sounds of the buttons that name none, as a game sets them with\n"
                               "uiButton::setDefaultSounds (the library's own: click,highlight)")
        ->type_name("CLICK,HIGHLIGHT")
        ->each([&o](const std::string& v) {
            const size_t comma = v.find(',');
            if (comma == 0 || comma == std::string::npos || comma + 1 == v.size())
                notOfForm("CLICK,HIGHLIGHT", v);
            o.clickSound = v.substr(0, comma);
            o.highlightSound = v.substr(comma + 1);
        });
    app.add_option("--stats-font", o.statsFont,
                   "font of the overlay and of the devtools' (default: stats, from stats.font)")
        ->type_name("NAME");
    app.add_flag("--watch", o.watch,
                 "rebuild the screen when its files are saved, keeping its state; F12\n"
                 "opens the inspector (u parent, d child, n/b siblings, c copy, t tree)");
    app.add_option("--push", o.push, "push the dialog at PATH (dotted path from the root) at the start")
        ->type_name("PATH")
        ->allow_extra_args(false);
    app.add_option("--value", "set the progress bar at PATH to N at the start (it fills toward it)")
        ->type_name("PATH=N")
        ->each([&o](const std::string& v) {
            const auto [path, number] = assignment(v, "N");
            int n;
            char tail;
            if (std::sscanf(number.c_str(), "%d%c", &n, &tail) != 1) notOfForm("PATH=N", v);
            o.values.emplace_back(path, n);
        });
    app.add_option("--banner", "print each line of FILE (banner markup) on the digital banner at PATH,\n"
                               "priorities in line order")
        ->type_name("PATH=FILE")
        ->each([&o](const std::string& v) { o.banners.push_back(assignment(v, "FILE")); });
    app.add_option("--on", "a click on the widget at PATH pushes the dialog at DIALOG, pauses the game\n"
                           "container at CONTAINER or resumes it, pops the top dialog, or ends uiview")
        ->type_name("PATH=push:DIALOG|pause:CONTAINER|pop|quit")
        ->each([&o](const std::string& v) { o.actions.push_back(action(v)); });
    CLI::Option* load =
        app.add_option("--load", o.load,
                       "load these descriptions (next to FILE) one after the other on a background\n"
                       "loader's worker thread while FILE runs; once all have arrived (and the bar\n"
                       "of --progress shows full) the first becomes the screen. A load is collected\n"
                       "600 ms of frame time after its request (waiting for the worker if needed),\n"
                       "so off-screen sessions give the same pictures on every run")
            ->type_name("F1[,F2...]")
            ->delimiter(',')
            ->allow_extra_args(false);
    app.add_option("--progress", o.progress,
                   "the progress bar at PATH counts the loaded files (range 0 to their number)")
        ->type_name("PATH")
        ->needs(load);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e) == 0 ? 0 : 2;
    }
    return std::nullopt;
}
