#include "scores.h"
#include <string>
#include "game.h"
#include "uitextwidget.h"

void showScores(Game& game, uiWidget* root, const char* path, int highlight) {
    uiWidget* dialog = game.find(root, path);
    if (!dialog) return;
    for (int i = 0; i < HighScores::kRows; ++i) {
        const std::string row = "scores.row" + std::to_string(i + 1);
        const HighScores::Row& r = game.scores.rows[i];
        if (auto* name = game.find<uiTextWidget>(dialog, (row + ".name").c_str(), "uiTextWidget"))
            name->print(0, i == highlight ? "> %s" : "%s", r.name.c_str());
        if (auto* points = game.find<uiTextWidget>(dialog, (row + ".points").c_str(), "uiTextWidget"))
            points->print(0, "%d", r.points);
    }
    game.push(dialog);
}
