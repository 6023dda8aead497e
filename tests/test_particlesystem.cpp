// Particle system widgets: an instance of the graphics service that moves, advances and is drawn with
// its widget, and is restarted, stopped and released on the game's word.
#include <gtest/gtest.h>
#include "screen.h"
#include "stage.h"
#include "testkit.h"
#include "uiparticlesystem.h"
#include "uisubsystem.h"

namespace {

struct ParticleScreen {
    testkit::Services svc;
    testkit::Stage stage;
    uiParticleSystem* fx = testkit::Stage::make<uiParticleSystem>("uiParticleSystem", "sparks");

    ParticleScreen() {
        stage.root()->rect = {100, 100, 900, 700};
        fx->rect = {10, 20, 10, 20};
        fx->setDepth(7u);
        stage.attach(fx);
    }
};

} // namespace

TEST(ParticleSystem, FollowsItsWidgetAndDrawsWithItsDepthAndAlpha) {
    ParticleScreen s;
    EXPECT_EQ(s.fx->getId(), -1);
    s.fx->loadPsys("sparks.psi");
    const int id = s.fx->getId();
    ASSERT_NE(id, -1);
    EXPECT_EQ(s.svc.gfx.particleOwner(id), "sparks");

    s.svc.gfx.clear();
    s.stage.render(16);
    auto updates = s.svc.gfx.named("updateParticleSystem");
    ASSERT_EQ(updates.size(), 1u);
    EXPECT_EQ(updates[0].ints, (std::vector<int>{id, 110, 120}));
    EXPECT_FLOAT_EQ(updates[0].floats[0], 0.016f);
    auto emits = s.svc.gfx.named("psemit");
    ASSERT_EQ(emits.size(), 1u);
    EXPECT_EQ(emits[0].ints, (std::vector<int>{7, id}));
    EXPECT_FLOAT_EQ(emits[0].floats[0], 1.0f);

    // No fade for particles: the alpha applies from the next frame, whatever the time says.
    s.fx->setAlpha(128, 1000, 0, false);
    s.svc.gfx.clear();
    s.stage.render(16);
    EXPECT_FLOAT_EQ(s.svc.gfx.named("psemit")[0].floats[0], 128.0f / 255.0f);

    // A parent's recursive alpha reaches the particles; WF_IGNORE_ALPHA keeps them as they are.
    s.stage.root()->setAlpha(0, 500, 0, true);
    s.svc.gfx.clear();
    s.stage.render(16);
    EXPECT_FLOAT_EQ(s.svc.gfx.named("psemit")[0].floats[0], 0.0f);
    s.fx->flags |= WF_IGNORE_ALPHA;
    s.stage.root()->setAlpha(255, 0, 0, true);
    s.svc.gfx.clear();
    s.stage.render(16);
    EXPECT_FLOAT_EQ(s.svc.gfx.named("psemit")[0].floats[0], 0.0f);
    s.fx->releaseInstance();
}

TEST(ParticleSystem, FlagsSwitchOffUpdateAndDrawingSeparatelyAndInputNeverCounts) {
    ParticleScreen s;
    s.fx->loadPsys("sparks.psi");
    s.fx->flags |= UIP_DONTUPDATE;
    s.svc.gfx.clear();
    s.stage.render(16);
    EXPECT_EQ(s.svc.gfx.count("updateParticleSystem"), 0);
    EXPECT_EQ(s.svc.gfx.count("psemit"), 1);

    s.fx->flags = (s.fx->flags & ~UIP_DONTUPDATE) | UIP_DONTRENDER;
    s.svc.gfx.clear();
    s.stage.render(16);
    EXPECT_EQ(s.svc.gfx.count("updateParticleSystem"), 1);
    EXPECT_EQ(s.svc.gfx.count("psemit"), 0);
    s.fx->releaseInstance();

    // It never takes input.
    s.fx->rect = {0, 0, 50, 50};
    s.fx->mouseDownCb = [](uiWidget*, void*, int, int) { return true; };
    EXPECT_FALSE(s.fx->inputEvent(UIE_MOUSE_DOWN, 10, 10, 0, false, false));
}

TEST(ParticleSystem, RestartStopDeathAndRelease) {
    ParticleScreen s;
    s.fx->loadPsys("sparks.psi");
    const int first = s.fx->getId();

    s.svc.gfx.clear();
    s.fx->reset();
    s.fx->stop();
    ASSERT_EQ(s.svc.gfx.calls.size(), 2u);
    EXPECT_EQ(s.svc.gfx.calls[0].fn, "addEvent");
    EXPECT_EQ(s.svc.gfx.calls[0].ints, (std::vector<int>{4, 0, first, 0}));
    EXPECT_EQ(s.svc.gfx.calls[1].fn, "particleSystemInstanceStopEmitters");
    EXPECT_EQ(s.svc.gfx.calls[1].ints, (std::vector<int>{first}));

    // A dead instance is the owner's business: the widget neither asks nor releases, it keeps drawing.
    s.svc.gfx.setParticleDead(first, true);
    s.svc.gfx.clear();
    s.stage.render(16);
    EXPECT_EQ(s.svc.gfx.count("particleSystemInstanceIsDead"), 0);
    EXPECT_EQ(s.svc.gfx.count("releaseParticleSystemInstance"), 0);
    EXPECT_EQ(s.svc.gfx.count("psemit"), 1);

    // Loading again releases what the widget's name owns before creating the new instance.
    s.svc.gfx.clear();
    s.fx->loadPsys("smoke.psi");
    ASSERT_EQ(s.svc.gfx.calls.size(), 2u);
    EXPECT_EQ(s.svc.gfx.calls[0].fn, "releaseParticleSystemInstance");
    EXPECT_EQ(s.svc.gfx.calls[0].text, "sparks");
    EXPECT_EQ(s.svc.gfx.calls[1].text, "smoke.psi");
    EXPECT_NE(s.fx->getId(), first);
    EXPECT_EQ(s.svc.gfx.liveParticleSystems(), 1);

    s.fx->releaseInstance();
    EXPECT_EQ(s.fx->getId(), -1);
    EXPECT_EQ(s.svc.gfx.liveParticleSystems(), 0);

    // Without an instance every operation is a no-op.
    s.svc.gfx.clear();
    s.fx->reset();
    s.fx->stop();
    s.fx->releaseInstance();
    s.stage.render(16);
    EXPECT_TRUE(s.svc.gfx.calls.empty());
}

TEST(ParticleSystem, AFileItCannotLoadOrAMissingServiceLeaveItWithoutInstance) {
    ParticleScreen s;
    s.svc.gfx.failParticles("missing.psi");
    s.fx->loadPsys("missing.psi");
    EXPECT_EQ(s.fx->getId(), -1);
    s.svc.gfx.clear();
    s.stage.render(16);
    EXPECT_TRUE(s.svc.gfx.calls.empty());
    EXPECT_EQ(s.svc.log.count(), 0);

    g_gfx = nullptr;
    s.fx->loadPsys("sparks.psi");
    s.stage.render(16);
    g_gfx = &s.svc.gfx;
    EXPECT_EQ(s.fx->getId(), -1);
    EXPECT_TRUE(s.svc.gfx.calls.empty());
}

TEST(ParticleSystem, DestroyingTheWidgetLeavesTheInstanceToItsOwner) {
    ParticleScreen s;
    s.fx->loadPsys("sparks.psi");
    s.fx->detachFromParent();
    delete s.fx;
    EXPECT_EQ(s.svc.gfx.liveParticleSystems(), 1);
    s.svc.gfx.releaseParticleSystemInstance("sparks");
}

TEST(ParticleSystem, DescriptionLoadsTheFileAndSetsTheFlags) {
    testkit::Services svc;
    uiSubsystem ui;
    testkit::Screen screen(svc, "hud = uiNonVisualWidget\n"
                                "{\n"
                                "    child fx = uiParticleSystem\n"
                                "    {\n"
                                "        x = 10\n"
                                "        y = 20\n"
                                "        file = sparks.psi\n"
                                "        flags = WF_VISIBLE | WF_ACTIVE | uip_dontrender\n"
                                "    }\n"
                                "    child broken = uiParticleSystem\n"
                                "    {\n"
                                "        file sparks.psi\n"
                                "        file =\n"
                                "        flags = UIP_DONTUPDATE | UIP_NOPE\n"
                                "    }\n"
                                "    flags = WF_VISIBLE | WF_ACTIVE\n"
                                "}\n");
    ASSERT_TRUE(screen);
    auto* fx = static_cast<uiParticleSystem*>(screen.find("fx"));
    auto* broken = static_cast<uiParticleSystem*>(screen.find("broken"));
    ASSERT_TRUE(fx && broken);
    EXPECT_EQ(svc.gfx.particleOwner(fx->getId()), "fx");
    EXPECT_EQ(broken->getId(), -1);
    EXPECT_EQ(broken->flags & (UIP_DONTUPDATE | UIP_DONTRENDER), UIP_DONTUPDATE);
    EXPECT_EQ(svc.log.count(), 3);
    EXPECT_TRUE(svc.log.has(2, "...expected: ^C00FF00file = \"val\"^c\f")) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(2, "Unknown flag: UIP_NOPE\f")) << svc.log.dump();

    ui.setTopLevelWidget(screen.root());
    svc.gfx.clear();
    ui.render(16);
    EXPECT_EQ(svc.gfx.count("updateParticleSystem"), 1);
    EXPECT_EQ(svc.gfx.count("psemit"), 0);
    fx->releaseInstance();
}
