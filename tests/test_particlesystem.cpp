// Particle system widgets: an instance of the graphics service that moves, advances and is drawn with
// its widget, and is restarted, stopped and released on the game's word.
#include <gtest/gtest.h>
#include "testkit.h"
#include "uiparticlesystem.h"

namespace {

class ParticleSystem : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiParticleSystem* fx = stage.add<uiParticleSystem>("uiParticleSystem", "sparks", {10, 20, 10, 20});

    void SetUp() override {
        stage.root()->rect = {100, 100, 900, 700};
        fx->setDepth(7u);
        fx->loadPsys("sparks.psi");
    }
    std::string frame() { // the calls of one frame
        testkit::renderFrame(svc.gfx, stage.ui(), 16);
        return svc.gfx.transcript();
    }
};

TEST_F(ParticleSystem, FollowsItsWidgetDrawsWithItsDepthAndAlphaAndIsReleasedOnTheGamesWord) {
    EXPECT_EQ(svc.gfx.particleOwner(fx->getId()), "sparks");
    EXPECT_EQ(frame(), "updateParticleSystem 0 110 120 0.016; psemit 7 0 1; ");
    // No fade for particles: the alpha applies from the next frame, whatever the time says.
    fx->setAlpha(128, 1000, 0, false);
    EXPECT_EQ(frame(), "updateParticleSystem 0 110 120 0.016; psemit 7 0 0.501961; ");
    // A parent's recursive alpha reaches the particles; WF_IGNORE_ALPHA keeps them as they are.
    stage.root()->setAlpha(0, 500, 0, true);
    EXPECT_EQ(frame(), "updateParticleSystem 0 110 120 0.016; psemit 7 0 0; ");
    fx->flags |= WF_IGNORE_ALPHA;
    stage.root()->setAlpha(255, 0, 0, true);
    // Flags switch off updating and drawing separately.
    fx->flags |= UIP_DONTUPDATE;
    EXPECT_EQ(frame(), "psemit 7 0 0; ");
    fx->flags = (fx->flags & ~UIP_DONTUPDATE) | UIP_DONTRENDER;
    EXPECT_EQ(frame(), "updateParticleSystem 0 110 120 0.016; ");
    // It never takes input.
    fx->rect = {0, 0, 50, 50};
    fx->mouseDownCb = [](uiWidget*, void*, int, int) { return true; };
    EXPECT_FALSE(fx->inputEvent(UIE_MOUSE_DOWN, 10, 10, 0, false, false));
    fx->flags &= ~(UIP_DONTRENDER | WF_IGNORE_ALPHA);

    // Restart, stop, death and release.
    svc.gfx.clear();
    fx->reset();
    fx->stop();
    EXPECT_EQ(svc.gfx.ints("addEvent"), (std::vector<std::vector<int>>{{4, 0, 0, 0}}));
    EXPECT_EQ(svc.gfx.ints("particleSystemInstanceStopEmitters"), (std::vector<std::vector<int>>{{0}}));
    // A dead instance is the owner's business: the widget neither asks nor releases, it keeps drawing.
    svc.gfx.setParticleDead(0, true);
    EXPECT_EQ(frame(), "updateParticleSystem 0 100 100 0.016; psemit 7 0 0; ");
    // Loading again releases what the widget's name owns before creating the new instance.
    svc.gfx.clear();
    fx->loadPsys("smoke.psi");
    EXPECT_EQ(svc.gfx.calls.size(), 2u);
    EXPECT_EQ(svc.gfx.texts("releaseParticleSystemInstance"), std::vector<std::string>{"sparks"});
    EXPECT_EQ(svc.gfx.texts("createParticleSystemInstance"), std::vector<std::string>{"smoke.psi"});
    EXPECT_EQ(fx->getId(), 1);
    fx->releaseInstance();
    EXPECT_EQ(fx->getId(), -1);
    EXPECT_EQ(svc.gfx.liveParticleSystems(), 0);
    // Without an instance every operation is a no-op; a file it cannot load or a missing service leave
    // it without one, unreported.
    svc.gfx.clear();
    fx->reset();
    fx->stop();
    fx->releaseInstance();
    EXPECT_TRUE(svc.gfx.calls.empty());
    svc.gfx.failParticles("missing.psi");
    fx->loadPsys("missing.psi");
    EXPECT_EQ(frame(), "");
    g_gfx = nullptr;
    fx->loadPsys("sparks.psi");
    stage.render(16);
    g_gfx = &svc.gfx;
    EXPECT_EQ(fx->getId(), -1);
    EXPECT_EQ(svc.log.count(), 0);
    // Destroying the widget leaves the instance to its owner.
    fx->loadPsys("sparks.psi");
    fx->detachFromParent();
    delete fx;
    EXPECT_EQ(svc.gfx.liveParticleSystems(), 1);
    svc.gfx.releaseParticleSystemInstance("sparks");
}

} // namespace
