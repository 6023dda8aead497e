// A round: the play field inside a game container, the HUD over it (score banner, lives, time bar,
// pause button) and the pause dialog, which pauses the container: the field really stops.
#include "gameover.h"
#include "game.h"
#include "host.h"
#include "options.h"
#include "starfield.h"
#include "uidigitalbanner.h"
#include "uigamecontainer.h"
#include "uiparticlesystem.h"
#include "uiprogressbar.h"
#include "uisprite.h"

namespace {

class Play : public Screen {
public:
    explicit Play(Game& owner) : Screen(owner), m_over(owner) {}
    void bind(uiWidget* root) override {
        Screen::bind(root);
        m_world = game.find<uiGameContainer>(root, "play.world", "uiGameContainer");
        // The field is the game's own widget type, added here so that the description stays loadable
        // by tools that know only the library's types.
        m_field = static_cast<StarField*>(uiWidget::allocWidget("field", "StarField"));
        if (m_world && m_field) {
            m_field->rect = _uiRect_s{0, 0, 800, 600};
            m_field->setDepth(3u);
            m_world->addChild(m_field, true);
        } else {
            delete m_field;
            m_field = nullptr;
        }
        m_sparks = game.find<uiParticleSystem>(root, "play.world.sparks", "uiParticleSystem");
        m_banner = game.find<uiDigitalBanner>(root, "play.hud.score", "uiDigitalBanner");
        m_lives = game.find<uiSprite>(root, "play.hud.lives", "uiSprite");
        m_time = game.find<uiProgressBar>(root, "play.hud.time", "uiProgressBar");
        game.onClick(game.find(root, "play.hud.pause"), [this] { _pause(true); });
        game.onClick(game.find(root, "play.pause.resume"), [this] { _pause(false); });
        game.onClick(game.find(root, "play.pause.options"),
                     [this] { game.options().open(game.find(m_root, "play.options")); });
        game.onClick(game.find(root, "play.pause.quit"), [this] { game.show(SCREEN_MENU); });
        game.options().bind(game.find(root, "play.options"));
        m_over.bind(root);
    }
    void enter() override {
        if (!m_field || !m_world) return game.show(SCREEN_MENU);
        const unsigned int seed = game.config.seed + static_cast<unsigned int>(game.level);
        m_field->start(StarField::Round{game.level, game.settings.difficulty, seed, game.config.autoplay});
        m_world->setPaused(false);
        m_score = -1;
        m_catches = 0;
        m_ended = false;
    }
    void frame(unsigned int) override {
        if (!m_field) return;
        m_field->steer(game.held(KEY_LEFT) ? -1 : game.held(KEY_RIGHT) ? 1 : 0);
        _hud();
        if (m_field->over() && !m_ended) {
            m_ended = true;
            Settings& s = game.settings;
            if (m_field->stars() > s.stars[game.level]) {
                s.stars[game.level] = m_field->stars();
                s.save(game.config.prefs);
            }
            m_over.open(m_field->score(), m_field->stars(), m_field->lives() == 0);
        }
        m_over.frame();
    }
    // The arrows steer the basket while the round runs; in dialogs they move between buttons.
    bool key(int key, bool down) override {
        return (key == KEY_LEFT || key == KEY_RIGHT) && m_world && !m_world->getPaused() && !m_ended;
    }

private:
    void _pause(bool on) {
        m_world->setPaused(on);
        if (on)
            game.push(game.find(m_root, "play.pause"));
        else
            game.pop();
    }
    void _hud() {
        if (m_banner && m_field->score() != m_score) {
            // A new hundred flashes; every score slides in and holds until the next one waits.
            const bool milestone = m_score >= 0 && m_field->score() / 100 != m_score / 100;
            m_score = m_field->score();
            if (milestone) m_banner->print(1, "^P|FLASH;3;0;600|%08d;0|OFF;0;0|^p", m_score);
            m_banner->print(2, "^P|DOWN;0;150|%08d;-1|UP;0;150|^p", m_score);
        }
        if (m_sparks && m_field->catches() != m_catches) {
            m_catches = m_field->catches();
            m_sparks->rect.x = m_field->basketX();
            m_sparks->reset();
        }
        if (m_lives) m_lives->setFrame(m_field->lives());
        if (m_time) m_time->setValue(static_cast<int>(m_field->timeLeft() * 1000), false);
    }

    GameOver m_over;
    uiGameContainer* m_world = nullptr;
    StarField* m_field = nullptr;
    uiParticleSystem* m_sparks = nullptr;
    uiDigitalBanner* m_banner = nullptr;
    uiSprite* m_lives = nullptr;
    uiProgressBar* m_time = nullptr;
    int m_score = -1, m_catches = 0;
    bool m_ended = false;
};

} // namespace

std::unique_ptr<Screen> makePlay(Game& game) {
    return std::make_unique<Play>(game);
}
