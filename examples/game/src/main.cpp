// Star Catcher: a small arcade game whose whole interface is gameui, run on the SDL services.
#include "args.h"
#include "sdlhost.h"

int main(int argc, char** argv) {
    GameArgs args;
    if (!parseArgs(argc, argv, args)) return 2;
    if (args.help) {
        printUsage();
        return 0;
    }
    return runSdlGame(args);
}
