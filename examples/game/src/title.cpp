// Title: the game's name drops in over the night sky; a click or any key goes on to the menu.
#include "game.h"

namespace {

class Title : public Screen {
public:
    using Screen::Screen;
    void bind(uiWidget* root) override {
        Screen::bind(root);
        game.onClick(game.find(root, "title.start"), [this] { game.show(SCREEN_MENU); });
    }
    void enter() override { game.push(game.find(m_root, "title.logo")); }
    bool key(int key, bool down) override {
        if (!down) game.show(SCREEN_MENU);
        return true;
    }
};

} // namespace

std::unique_ptr<Screen> makeTitle(Game& game) {
    return std::make_unique<Title>(game);
}
