// The high-score table dialog: one row of text widgets per entry.
#pragma once

class Game;
class uiWidget;

// Fills the rows of the dialog at `path` below `root` and pushes it; `highlight` marks a row (-1: none).
void showScores(Game& game, uiWidget* root, const char* path, int highlight);
