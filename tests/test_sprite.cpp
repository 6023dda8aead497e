// Sprite widgets: an animation played frame by frame, once or looping, after an optional delay.
#include <gtest/gtest.h>
#include "screen.h"
#include "testkit.h"
#include "uisprite.h"

namespace {

class Sprite : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiSprite* boom = stage.add<uiSprite>("uiSprite", "boom", {5, 6, 0, 0});
    testkit::RecordingGfx* gfx = &svc.gfx; // the service frames are drawn through

    void SetUp() override {
        svc.gfx.defineSprite("boom.spr", 10, 20, {5, 3});
        boom->setSprite("boom.spr", 0, 0, true);
        boom->setDepth(3u);
    }
    // Runs `count` frames of `ms` and tells what each drew: "anim:frame@alpha", "-" for nothing.
    std::string play(int count, unsigned int ms) {
        std::string out;
        for (int i = 0; i < count; ++i) {
            const auto b = testkit::renderLooks(*gfx, stage.ui(), ms, {4, 5, 6});
            out += (i ? " " : "") + (b.empty() ? "-"
                                               : std::to_string(b[0][0]) + ":" + std::to_string(b[0][1]) +
                                                     "@" + std::to_string(b[0][2]));
        }
        return out;
    }
};

TEST_F(Sprite, DrawsNothingUntilItsAnimationStartsOrClearIsOffAndStepsOnceTheRateIsExceeded) {
    EXPECT_EQ(play(2, 16), "- -");
    boom->disable(true, false); // stopped, but shown on its frame
    boom->setFrame(2);
    EXPECT_EQ(play(1, 500), "0:2@255");
    EXPECT_EQ(testkit::renderFrame(svc.gfx, stage.ui(), 16),
              (std::vector<std::vector<int>>{{3, boom->getSpriteId(), 5, 6, 0, 2, 255}}));
    boom->mouseDownCb = [](uiWidget*, void*, int, int) { return true; };
    EXPECT_FALSE(boom->inputEvent(UIE_MOUSE_DOWN, 6, 7, 0, false, false)) << "never takes input";

    boom->reset(true, 0, 0); // rate is 1000 by default: 1000 ms is not enough, the next frame is
    EXPECT_EQ(play(3, 500), "0:0@255 0:0@255 0:1@255");
    // At most one step per update, the excess dropped: a huge frame still moves one frame on.
    stage.update(5000);
    EXPECT_EQ(play(1, 5000), "0:3@255");
    // A fade stands still while the animation is stopped.
    boom->disable(true, false);
    boom->setAlpha(0, 1000, 0, false);
    EXPECT_EQ(play(2, 100), "0:3@255 0:3@255");
    boom->disable(false, false);
    EXPECT_EQ(play(2, 100), "0:3@229 0:3@204");
}

TEST_F(Sprite, PlaysOnceOrLoopsAnotherAnimationAfterADelay) {
    boom->reset(false, 0, 0);
    EXPECT_EQ(play(6, 1001), "0:1@255 0:2@255 0:3@255 0:4@255 - -");
    EXPECT_EQ(boom->getFrame(), 4);
    boom->reset(false, 2, 0);
    boom->disable(false, false); // keep showing the last frame once stopped
    EXPECT_EQ(play(4, 1001), "0:3@255 0:4@255 0:4@255 0:4@255");
    EXPECT_FALSE(boom->animate);

    boom->setFrame(4);
    boom->setAnim(1, true, true, 2500); // 3 frames, starts over at frame 0
    // The update that completes the delay only restarts the count; steps follow from then on.
    EXPECT_EQ(play(4, 1000), "1:0@255 1:0@255 1:0@255 1:0@255");
    EXPECT_EQ(play(6, 1001), "1:1@255 1:2@255 1:0@255 1:1@255 1:2@255 1:0@255");

    // An animation reported empty plays as one frame.
    struct EmptyAnimations : testkit::RecordingGfx {
        int getSpriteFrameCount(int, int) override { return 0; }
    } empty;
    boom->releaseSprite();
    g_gfx = gfx = &empty;
    boom->setSprite("boom.spr", 0, 0, true);
    boom->reset(true, 0, 0);
    EXPECT_EQ(play(2, 1001), "0:0@255 0:0@255");
    boom->reset(false, 0, 0);
    boom->disable(false, false);
    EXPECT_EQ(play(2, 1001), "0:0@255 0:0@255");
    EXPECT_FALSE(boom->animate);
    boom->releaseSprite();
    g_gfx = &svc.gfx;
}

TEST(SpriteDescription, StartsTheAnimation) {
    testkit::Services svc;
    uiSubsystem ui;
    svc.gfx.defineSprite("torch.spr", 16, 32, {4});
    // The child has neither animate nor clear: it draws nothing.
    testkit::Screen screen(
        svc, "torch = uiSprite\n{\n sprite = torch.spr\n frame = 2\n rate = 100\n LOOP = true\n"
             " animate = TRUE\n clear false\n flags = WF_VISIBLE | WF_ACTIVE\n"
             " child still = uiSprite\n {\n  sprite = torch.spr\n  visible = true\n  active = true\n }\n}\n");
    EXPECT_EQ(svc.log.dump(), "2: ...expected: \"^C00FF00clear = BOOLEAN^c\"\f\n");
    ui.setTopLevelWidget(screen.root());
    ASSERT_TRUE(screen.find("still")->getVisible());
    std::string frames;
    for (int i = 0; i < 8; ++i)
        for (const std::vector<int>& look : testkit::renderLooks(svc.gfx, ui, 60, {5}))
            frames += std::to_string(look[0]);
    EXPECT_EQ(frames, "23300112"); // a step every second frame of 60 ms, from frame 2, looping
}

} // namespace
