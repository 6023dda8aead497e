#include "args.h"
#include <cstdio>
#include <cstdlib>
#include <cstring>

bool parseArgs(int argc, char** argv, GameArgs& a) {
    for (int i = 1; i < argc; ++i) {
        const char* arg = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        auto text = [&](std::string& out) { return value ? (out = value, ++i, true) : false; };
        auto number = [&](auto& out) {
            if (!value) return false;
            char* end = nullptr;
            const long v = std::strtol(value, &end, 10);
            if (*end || v < 0) return false;
            out = static_cast<std::remove_reference_t<decltype(out)>>(v);
            ++i;
            return true;
        };
        bool ok = true;
        if (!std::strcmp(arg, "--data"))
            ok = text(a.data);
        else if (!std::strcmp(arg, "--prefs"))
            ok = text(a.prefs);
        else if (!std::strcmp(arg, "--script"))
            ok = text(a.script);
        else if (!std::strcmp(arg, "--png"))
            ok = text(a.png);
        else if (!std::strcmp(arg, "--frames"))
            ok = number(a.frames);
        else if (!std::strcmp(arg, "--ms"))
            ok = number(a.ms) && a.ms > 0;
        else if (!std::strcmp(arg, "--seed"))
            ok = number(a.seed);
        else if (!std::strcmp(arg, "--autoplay"))
            a.autoplay = true;
        else if (!std::strcmp(arg, "--devtools"))
            a.devtools = true;
        else if (!std::strcmp(arg, "--help"))
            a.help = true;
        else
            ok = false;
        if (!ok) {
            std::fprintf(stderr, "starcatcher: bad argument %s (--help lists them)\n", arg);
            return false;
        }
    }
    return true;
}

void printUsage() {
    std::printf(
        "starcatcher [options]\n"
        "  --data DIR      descriptions, art and texts (default: the source tree's)\n"
        "  --prefs DIR     folder of options.txt and scores.txt (default: SDL's folder for the user)\n"
        "  --autoplay      the basket plays by itself\n"
        "  --seed N        random seed of the rounds\n"
        "  --devtools      rebuild a screen when its files are saved; F12 opens the inspector\n"
        "off screen, with a fixed frame time and seed 1 unless given:\n"
        "  --frames N      run N frames off screen\n"
        "  --ms N          milliseconds a frame (20)\n"
        "  --script FILE   timed input (move/down/up X Y, key CODE, char TEXT, wait MS, png)\n"
        "  --png PATTERN   save frames (the script's png lines, or every frame) as PNG\n");
}
