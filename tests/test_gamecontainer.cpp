// Game containers: pausing freezes a whole subtree's update while it stays drawn and keeps its input.
#include <gtest/gtest.h>
#include "testkit.h"
#include "uigamecontainer.h"
#include "uinonvisualwidget.h"
#include "uiparticlesystem.h"

namespace {

// A child that records the alpha changes it is asked for, and its updates.
class AlphaProbe : public uiNonVisualWidget {
public:
    std::string alphas; // "alpha/time " per call
    int updates = 0;
    void setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse) override {
        alphas += std::to_string(alpha) + "/" + std::to_string(time) + " ";
        uiNonVisualWidget::setAlpha(alpha, time, delay, recurse);
    }

protected:
    void _update(int, int) override { ++updates; }
};

class GameContainer : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiGameContainer* game = stage.add<uiGameContainer>("uiGameContainer", "game", {0, 0, 800, 600});
    AlphaProbe* probe = stage.attach(new AlphaProbe(), game);
    uiParticleSystem* fx = stage.add<uiParticleSystem>("uiParticleSystem", "fx", {}, game);

    void SetUp() override { fx->loadPsys("rain.psi"); }
    void TearDown() override { fx->releaseInstance(); }
    std::string frame() { // the particles' update and draw in one frame
        testkit::renderFrame(svc.gfx, stage.ui(), 16);
        return svc.gfx.transcript();
    }
};

TEST_F(GameContainer, PausingFreezesTheSubtreeButNotDrawingInputOrFadesFromAbove) {
    uiWidget* hit = stage.add("uiInputHandler", "hit", {100, 100, 200, 200}, game);
    game->setPaused(false); // running already: nothing
    EXPECT_EQ(frame(), "updateParticleSystem 0 0 0 0.016; psemit 0 0 1; ");
    game->setPaused(true);
    game->setPaused(true);
    EXPECT_TRUE(game->getPaused());
    EXPECT_EQ(frame(), "psemit 0 0 0; "); // still drawn, at once at alpha 0
    EXPECT_EQ(probe->updates, 1);
    static int clicks = 0;
    hit->mouseDownCb = [](uiWidget*, void*, int, int) { return ++clicks > 0; };
    stage.press(150, 150);
    EXPECT_EQ(clicks, 1);
    game->setPaused(false);
    EXPECT_EQ(frame(), "updateParticleSystem 0 0 0 0.016; psemit 0 0 1; ");
    EXPECT_EQ(probe->updates, 2);
    EXPECT_EQ(probe->alphas, "0/500 255/500 ");

    // While paused an immediate show from above does not reach the children.
    game->setPaused(true);
    probe->alphas.clear();
    stage.root()->setAlpha(255, 0, 0, true);
    EXPECT_EQ(frame(), "psemit 0 0 0; ");
    // A fade, a delay, or an immediate change to 0 passes.
    stage.root()->setAlpha(255, 200, 0, true);
    stage.root()->setAlpha(255, 0, 100, true);
    stage.root()->setAlpha(0, 0, 0, true);
    game->setPaused(false);
    stage.root()->setAlpha(255, 0, 0, true);
    EXPECT_EQ(probe->alphas, "255/200 255/0 0/0 255/500 255/0 ");
}

} // namespace
