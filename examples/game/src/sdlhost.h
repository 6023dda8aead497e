// The game's platform layer on SDL2: window (scaled with its aspect ratio kept), fullscreen, mixer
// volumes and music, keyboard, mouse and game controller input, the user's data folder, and the
// scripted off-screen run. Everything else of the game is SDL-free.
#pragma once
#include "args.h"

int runSdlGame(const GameArgs& args);
