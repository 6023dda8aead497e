// Main menu: play, options, high scores, quit; each button also answers its hotkey.
#include "game.h"
#include "options.h"
#include "scores.h"

namespace {

class Menu : public Screen {
public:
    using Screen::Screen;
    void bind(uiWidget* root) override {
        Screen::bind(root);
        game.onClick(game.find(root, "menu.buttons.play"), [this] { game.show(SCREEN_LEVELS); });
        game.onClick(game.find(root, "menu.buttons.options"),
                     [this] { game.options().open(game.find(m_root, "menu.options")); });
        game.onClick(game.find(root, "menu.buttons.scores"),
                     [this] { showScores(game, m_root, "menu.scores", -1); });
        game.onClick(game.find(root, "menu.buttons.quit"), [this] { game.quit(); });
        game.onClick(game.find(root, "menu.scores.ok"), [this] { game.pop(); });
        game.options().bind(game.find(root, "menu.options"));
    }
    void enter() override { game.push(game.find(m_root, "menu.buttons")); }
};

} // namespace

std::unique_ptr<Screen> makeMenu(Game& game) {
    return std::make_unique<Menu>(game);
}
