// Game containers: pausing freezes a whole subtree's update while it stays drawn and keeps its input.
#include <gtest/gtest.h>
#include <vector>
#include "stage.h"
#include "testkit.h"
#include "uigamecontainer.h"
#include "uinonvisualwidget.h"
#include "uiparticlesystem.h"

namespace {

// A child that records the alpha changes it is asked for, and its updates.
class AlphaProbe : public uiNonVisualWidget {
public:
    struct Call {
        int alpha;
        unsigned int time;
    };
    std::vector<Call> alphaCalls;
    int updates = 0;

    void setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse) override {
        alphaCalls.push_back({alpha, time});
        uiNonVisualWidget::setAlpha(alpha, time, delay, recurse);
    }

protected:
    void _update(int, int) override { ++updates; }
};

struct GameScreen {
    testkit::Services svc;
    testkit::Stage stage;
    uiGameContainer* game = testkit::Stage::make<uiGameContainer>("uiGameContainer", "game");
    AlphaProbe* probe = new AlphaProbe();
    uiParticleSystem* fx = testkit::Stage::make<uiParticleSystem>("uiParticleSystem", "fx");
    uiWidget* hit = testkit::Stage::make("uiInputHandler", "hit");

    GameScreen() {
        game->rect = {0, 0, 800, 600};
        hit->rect = {100, 100, 200, 200};
        stage.attach(game);
        stage.attach(probe, game);
        stage.attach(fx, game);
        stage.attach(hit, game);
        fx->loadPsys("rain.psi");
    }
    ~GameScreen() { fx->releaseInstance(); }
    float drawnParticleAlpha() {
        svc.gfx.clear();
        stage.render(16);
        auto emits = svc.gfx.named("psemit");
        return emits.empty() ? -1.0f : emits[0].floats[0];
    }
};

} // namespace

TEST(GameContainer, PausingFreezesTheSubtreeButNotDrawingOrInput) {
    GameScreen s;
    EXPECT_FALSE(s.game->getPaused());
    s.stage.update(16);
    EXPECT_EQ(s.probe->updates, 1);

    s.game->setPaused(true);
    EXPECT_TRUE(s.game->getPaused());
    s.svc.gfx.clear();
    s.stage.render(16);
    s.stage.update(16);
    EXPECT_EQ(s.probe->updates, 1);
    EXPECT_EQ(s.svc.gfx.count("updateParticleSystem"), 0);
    EXPECT_EQ(s.svc.gfx.count("psemit"), 1); // still drawn, at alpha 0

    static int clicks = 0;
    s.hit->mouseDownCb = [](uiWidget*, void*, int, int) { return ++clicks, true; };
    s.stage.press(150, 150);
    EXPECT_EQ(clicks, 1);

    s.game->setPaused(false);
    s.svc.gfx.clear();
    s.stage.update(16);
    EXPECT_EQ(s.probe->updates, 2);
    EXPECT_EQ(s.svc.gfx.count("updateParticleSystem"), 1);
}

TEST(GameContainer, PauseAndResumeFadeTheChildrenOnlyOnChange) {
    GameScreen s;
    s.game->setPaused(false); // running already: nothing
    EXPECT_TRUE(s.probe->alphaCalls.empty());

    s.game->setPaused(true);
    s.game->setPaused(true);
    ASSERT_EQ(s.probe->alphaCalls.size(), 1u);
    EXPECT_EQ(s.probe->alphaCalls[0].alpha, 0);
    EXPECT_EQ(s.probe->alphaCalls[0].time, 500u);
    EXPECT_FLOAT_EQ(s.drawnParticleAlpha(), 0.0f); // particles take the alpha at once

    s.game->setPaused(false);
    ASSERT_EQ(s.probe->alphaCalls.size(), 2u);
    EXPECT_EQ(s.probe->alphaCalls[1].alpha, 255);
    EXPECT_EQ(s.probe->alphaCalls[1].time, 500u);
    EXPECT_FLOAT_EQ(s.drawnParticleAlpha(), 1.0f);
}

TEST(GameContainer, WhilePausedAnImmediateShowFromAboveDoesNotReachTheChildren) {
    GameScreen s;
    s.game->setPaused(true);
    s.probe->alphaCalls.clear();

    s.stage.root()->setAlpha(255, 0, 0, true);
    EXPECT_TRUE(s.probe->alphaCalls.empty());
    EXPECT_FLOAT_EQ(s.drawnParticleAlpha(), 0.0f);

    // A fade, a delay, or an immediate change to 0 passes.
    s.stage.root()->setAlpha(255, 200, 0, true);
    s.stage.root()->setAlpha(255, 0, 100, true);
    s.stage.root()->setAlpha(0, 0, 0, true);
    ASSERT_EQ(s.probe->alphaCalls.size(), 3u);
    EXPECT_EQ(s.probe->alphaCalls[2].alpha, 0);

    s.game->setPaused(false);
    s.probe->alphaCalls.clear();
    s.stage.root()->setAlpha(255, 0, 0, true);
    EXPECT_EQ(s.probe->alphaCalls.size(), 1u);
    EXPECT_FLOAT_EQ(s.drawnParticleAlpha(), 1.0f);
}
