// Level select: a flow layout of level buttons, each with its number and the stars earned; a level
// opens once the one before it earned a star. Locked levels refuse the input focus.
#include <string>
#include "game.h"
#include "uibutton.h"
#include "uisprite.h"
#include "uitextwidget.h"

namespace {

class Levels : public Screen {
public:
    using Screen::Screen;
    void bind(uiWidget* root) override {
        Screen::bind(root);
        for (int i = 0; i < Settings::kLevels; ++i) {
            uiWidget* button = game.find(root, _path(i).c_str());
            game.onClick(button, [this, i] {
                game.level = i;
                game.show(SCREEN_LOADING);
            });
            if (button) button->inputFocusCb(s_unlocked, this);
        }
        game.onClick(game.find(root, "levels.grid.back"), [this] { game.show(SCREEN_MENU); });
    }
    void enter() override {
        for (int i = 0; i < Settings::kLevels; ++i) {
            auto* button = game.find<uiButton>(m_root, _path(i).c_str(), "uiButton");
            auto* stars = game.find<uiSprite>(m_root, (_path(i) + ".stars").c_str(), "uiSprite");
            auto* number = game.find<uiTextWidget>(m_root, (_path(i) + ".number").c_str(), "uiTextWidget");
            if (!button || !stars || !number) continue;
            const bool open = game.settings.unlocked(i);
            if (open)
                button->enable();
            else
                button->disable();
            stars->setFrame(game.settings.stars[i]);
            number->print(0, "%s", open ? std::to_string(i + 1).c_str() : "");
        }
        game.push(game.find(m_root, "levels.grid"));
    }

private:
    static std::string _path(int i) { return "levels.grid.flow.level" + std::to_string(i + 1); }
    static bool s_unlocked(uiWidget* button, void* client) {
        const int index = button->name[5] - '1'; // "levelN"
        return static_cast<Levels*>(client)->game.settings.unlocked(index);
    }
};

} // namespace

std::unique_ptr<Screen> makeLevels(Game& game) {
    return std::make_unique<Levels>(game);
}
