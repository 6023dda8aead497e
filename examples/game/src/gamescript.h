// A scripted session's events handed to the game as a player's input would reach it, on any platform.
#pragma once
#include "script.h"

class Game;

// A key event is pressed and released in the same frame.
void sendScripted(Game& game, const ScriptEvent& e);
