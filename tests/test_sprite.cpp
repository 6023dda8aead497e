// Sprite widgets: an animation played frame by frame, once or looping, after an optional delay.
#include <gtest/gtest.h>
#include <string>
#include "screen.h"
#include "stage.h"
#include "testkit.h"
#include "uisprite.h"
#include "uisubsystem.h"

namespace {

struct SpriteScreen {
    testkit::Services svc;
    testkit::Stage stage;
    uiSprite* boom = testkit::Stage::make<uiSprite>("uiSprite", "boom");
    testkit::RecordingGfx* gfx = &svc.gfx; // the service frames are drawn through

    SpriteScreen() {
        svc.gfx.defineSprite("boom.spr", 10, 20, {5, 3});
        boom->setSprite("boom.spr", 0, 0, false);
        boom->rect = {5, 6, 0, 0};
        boom->setDepth(3u);
        stage.attach(boom);
    }

    // Runs `count` frames of `ms` and tells what each drew: "anim:frame@alpha", "-" for nothing.
    std::string play(int count, unsigned int ms) {
        std::string out;
        for (int i = 0; i < count; ++i) {
            gfx->clear();
            stage.render(ms);
            auto blts = gfx->named("blt");
            if (!out.empty()) out += ' ';
            if (blts.empty()) {
                out += '-';
                continue;
            }
            const std::vector<int>& b = blts.back().ints;
            out += std::to_string(b[4]) + ":" + std::to_string(b[5]) + "@" + std::to_string(b[6]);
        }
        return out;
    }
};

} // namespace

TEST(Sprite, DrawsNothingUntilItsAnimationStartsOrClearIsOff) {
    SpriteScreen s;
    EXPECT_EQ(s.play(2, 16), "- -");
    s.boom->disable(true, false); // stopped, but shown on its frame
    s.boom->setFrame(2);
    EXPECT_EQ(s.play(3, 500), "0:2@255 0:2@255 0:2@255");

    s.svc.gfx.clear();
    s.stage.render(16);
    auto blts = s.svc.gfx.named("blt");
    ASSERT_EQ(blts.size(), 1u);
    EXPECT_EQ(blts[0].ints, (std::vector<int>{3, s.boom->getSpriteId(), 5, 6, 0, 2, 255}));

    s.boom->mouseDownCb = [](uiWidget*, void*, int, int) { return true; };
    EXPECT_FALSE(s.boom->inputEvent(UIE_MOUSE_DOWN, 6, 7, 0, false, false)) << "never takes input";
}

TEST(Sprite, StepsOneFrameWhenTheRateIsExceeded) {
    SpriteScreen s;
    s.boom->reset(true, 0, 0);
    // rate is 1000 by default: 1000 ms is not enough, the next frame is.
    EXPECT_EQ(s.play(3, 500), "0:0@255 0:0@255 0:1@255");

    // At most one step per update, the excess dropped: a huge frame still moves one frame on.
    s.stage.update(5000);
    s.stage.render(5000);
    EXPECT_EQ(s.play(1, 16), "0:3@255");
}

TEST(Sprite, PlaysOnceAndStopsOnTheLastFrame) {
    SpriteScreen s;
    s.boom->reset(false, 0, 0);
    EXPECT_TRUE(s.boom->animate);
    EXPECT_EQ(s.play(6, 1001), "0:1@255 0:2@255 0:3@255 0:4@255 - -");
    EXPECT_FALSE(s.boom->animate);
    EXPECT_EQ(s.boom->getFrame(), 4);

    s.boom->reset(false, 2, 0);
    s.boom->disable(false, false); // keep showing the last frame once stopped
    EXPECT_EQ(s.play(4, 1001), "0:3@255 0:4@255 0:4@255 0:4@255");
}

TEST(Sprite, LoopsAnotherAnimationAfterADelay) {
    SpriteScreen s;
    s.boom->setFrame(4);
    s.boom->setAnim(1, true, true, 2500); // 3 frames, starts over at frame 0
    EXPECT_EQ(s.boom->getFrame(), 0);
    // The update that completes the delay only restarts the count; steps follow from then on.
    EXPECT_EQ(s.play(3, 1000), "1:0@255 1:0@255 1:0@255");
    EXPECT_EQ(s.play(1, 1000), "1:0@255");
    EXPECT_EQ(s.play(6, 1001), "1:1@255 1:2@255 1:0@255 1:1@255 1:2@255 1:0@255");
}

TEST(Sprite, AFadeStandsStillWhileTheAnimationIsStopped) {
    SpriteScreen s;
    s.boom->disable(true, false);
    s.boom->setAlpha(0, 1000, 0, false);
    EXPECT_EQ(s.play(2, 100), "0:0@255 0:0@255");
    s.boom->disable(false, false);
    EXPECT_EQ(s.play(2, 100), "0:0@229 0:0@204");
}

TEST(Sprite, AnAnimationReportedEmptyPlaysAsOneFrame) {
    SpriteScreen s;
    struct EmptyAnimations : testkit::RecordingGfx {
        int getSpriteFrameCount(int, int) override { return 0; }
    } empty;
    s.boom->releaseSprite();
    g_gfx = s.gfx = &empty;
    s.boom->setSprite("boom.spr", 0, 0, true);
    s.boom->reset(true, 0, 0);
    EXPECT_EQ(s.play(3, 1001), "0:0@255 0:0@255 0:0@255");
    s.boom->reset(false, 0, 0);
    s.boom->disable(false, false);
    EXPECT_EQ(s.play(3, 1001), "0:0@255 0:0@255 0:0@255");
    EXPECT_FALSE(s.boom->animate);
    s.boom->releaseSprite();
    g_gfx = &s.svc.gfx;
}

TEST(Sprite, DescriptionStartsTheAnimation) {
    testkit::Services svc;
    uiSubsystem ui;
    svc.gfx.defineSprite("torch.spr", 16, 32, {4});
    testkit::Screen screen(svc, "torch = uiSprite\n"
                                "{\n"
                                "    sprite = torch.spr\n"
                                "    frame = 2\n"
                                "    rate = 100\n"
                                "    LOOP = true\n"
                                "    animate = TRUE\n"
                                "    clear false\n"
                                "    flags = WF_VISIBLE | WF_ACTIVE\n"
                                "}\n");
    ASSERT_TRUE(screen);
    EXPECT_EQ(svc.log.count(), 1) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00clear = BOOLEAN^c\"\f")) << svc.log.dump();
    ui.setTopLevelWidget(screen.root());
    std::string frames;
    for (int i = 0; i < 8; ++i) {
        svc.gfx.clear();
        ui.render(60);
        auto blts = svc.gfx.named("blt");
        frames += blts.empty() ? "-" : std::to_string(blts[0].ints[5]);
    }
    EXPECT_EQ(frames, "23300112"); // a step every second frame of 60 ms, from frame 2, looping

    // Without animate or clear keys a loaded sprite widget draws nothing.
    testkit::Screen still(
        svc, "still = uiSprite\n{\n    sprite = torch.spr\n    visible = true\n    active = true\n}\n",
        "still.txt");
    ui.setTopLevelWidget(still.root());
    svc.gfx.clear();
    ui.render(60);
    EXPECT_EQ(svc.gfx.count("blt"), 0);
}
