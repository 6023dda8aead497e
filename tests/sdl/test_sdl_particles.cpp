// Particle systems of the SDL graphics service: emission, restart, stop, death and release.
#include "sdlfixture.h"

using SdlParticles = SdlServiceTest;

TEST_F(SdlParticles, BurstLivesItsLifetimeAndRestartBringsItBack) {
    writeSolid("spark.png", 2, 2, kGreen);
    writeText("pop.ptc", "sprite spark\nburst 10\nduration 0\nlifetime 0.5 0.5\nspeed 0 0\nalpha 1 1\n");
    const int ps = gfx->createParticleSystemInstance("menu.ok", "pop.ptc");
    ASSERT_NE(ps, -1);
    EXPECT_FALSE(gfx->particleSystemInstanceIsDead(ps)); // the burst is still to come
    gfx->updateParticleSystem(ps, 30, 30, 0.1f);
    gfx->psemit(0, ps, 1.0f);
    gfx->present();
    EXPECT_EQ(at(30, 30), kGreen);
    EXPECT_EQ(gfx->getStatistics()->psys, 10);
    EXPECT_FALSE(gfx->particleSystemInstanceIsDead(ps));

    gfx->updateParticleSystem(ps, 30, 30, 0.6f);
    EXPECT_TRUE(gfx->particleSystemInstanceIsDead(ps));
    gfx->addEvent(4, 0, ps, 0, 0.0f, nullptr);
    EXPECT_FALSE(gfx->particleSystemInstanceIsDead(ps));
    gfx->updateParticleSystem(ps, 10, 10, 0.1f);
    gfx->psemit(0, ps, 1.0f);
    gfx->present();
    EXPECT_EQ(at(10, 10), kGreen);
}

TEST_F(SdlParticles, RunningEmittersStopOnRequestAndParticlesMoveUnderGravity) {
    writeSolid("spark.png", 2, 2, kRed);
    writeText("fountain.ptc", "sprite spark\nrate 100\nlifetime 1 1\nspeed 0 0\ngravity 0 40\nalpha 1 1\n");
    const int ps = gfx->createParticleSystemInstance("fx", "fountain.ptc");
    for (int i = 0; i < 5; ++i)
        gfx->updateParticleSystem(ps, 20, 10, 0.1f);
    EXPECT_FALSE(gfx->particleSystemInstanceIsDead(ps));
    gfx->psemit(0, ps, 1.0f);
    gfx->present();
    EXPECT_EQ(at(20, 12), kRed); // the oldest particles have fallen ~5 pixels
    EXPECT_GE(gfx->getStatistics()->psys, 45);

    gfx->particleSystemInstanceStopEmitters(ps);
    gfx->updateParticleSystem(ps, 20, 10, 0.5f);
    EXPECT_FALSE(gfx->particleSystemInstanceIsDead(ps)); // particles still alive
    gfx->updateParticleSystem(ps, 20, 10, 1.0f);
    EXPECT_TRUE(gfx->particleSystemInstanceIsDead(ps));
}

TEST_F(SdlParticles, ReleaseByOwnerTakesAllOfThatOwnerOnly) {
    writeSolid("spark.png", 2, 2, kRed);
    writeText("fx.ptc", "sprite spark\nrate 10\n");
    const int a = gfx->createParticleSystemInstance("a", "fx.ptc");
    const int a2 = gfx->createParticleSystemInstance("a", "fx.ptc");
    const int b = gfx->createParticleSystemInstance("b", "fx.ptc");
    EXPECT_EQ(gfx->createParticleSystemInstance("c", "nothere.ptc"), -1);
    gfx->releaseParticleSystemInstance("a");
    EXPECT_TRUE(gfx->particleSystemInstanceIsDead(a)); // released instances answer dead
    EXPECT_TRUE(gfx->particleSystemInstanceIsDead(a2));
    EXPECT_FALSE(gfx->particleSystemInstanceIsDead(b));
    gfx->releaseParticleSystemInstance(b);
    EXPECT_TRUE(gfx->particleSystemInstanceIsDead(b));
    // The particle sprite went with its last instance.
    const int spark = gfx->createSprite("spark");
    gfx->releaseSprite("spark");
    EXPECT_EQ(gfx->getSpriteName(spark), nullptr);
}
