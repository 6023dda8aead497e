// Toggle buttons: the state flips when the click handler consumes the click, the second sprite is drawn
// while on, and the second sprite lives with the button's activation.
#include <gtest/gtest.h>
#include "screen.h"
#include "testkit.h"
#include "uitogglebutton.h"

namespace {

using Draws = std::vector<std::vector<int>>;

class ToggleButton : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    testkit::CallbackLog log;
    uiToggleButton* toggle = testkit::Stage::make<uiToggleButton>("uiToggleButton", "t");

    void SetUp() override {
        svc.gfx.defineSprite("off", 60, 30, {3, 3});
        svc.gfx.defineSprite("on", 60, 30, {5, 5});
        toggle->rect = {10, 10, 0, 0};
        toggle->setSprite("off", 0, 0, false);
        toggle->setSprite2("on");
        stage.attach(toggle);
    }
    void clickAfterGuard(int x = 20) {
        stage.update(16, 6);
        stage.click(x, x);
    }
    // Sprite, animation and frame of each draw of one frame.
    Draws frame(unsigned int ms = 0) { return testkit::renderLooks(svc.gfx, stage.ui(), ms, {1, 4, 5}); }
};

TEST_F(ToggleButton, FlipsOnlyWhenTheClickHandlerConsumesTheClick) {
    std::string states;
    auto note = [&] { states += toggle->getToggle() ? "1" : "0"; };
    stage.click(20, 20); // no handler: the click is not consumed
    note();
    stage.press(500, 500);
    stage.move(20, 20);
    stage.release(20, 20); // a release after a press elsewhere flips
    note();
    toggle->toggle();
    note();
    log.watch(toggle, testkit::CallbackLog::kUp);
    log.consume = false;
    clickAfterGuard();
    note();
    log.consume = true;
    clickAfterGuard();
    note();
    clickAfterGuard();
    note();
    // A press swallowed as a double click is consumed, and so is the release that ends no press.
    stage.press(20, 20);
    note();
    stage.release(20, 20);
    note();
    EXPECT_EQ(states, "01001010");
    EXPECT_EQ(log.events.size(), 3u);
}

TEST_F(ToggleButton, DrawsTheSecondSpriteWithTheButtonsAnimationWhileOn) {
    const int off = svc.gfx.spriteId("off"), on = svc.gfx.spriteId("on");
    toggle->setWidgetFlags(toggle->getWidgetFlags() | UIB_HOVER);
    EXPECT_EQ(frame(), (Draws{{off, 0, 0}}));
    toggle->setToggle(true);
    stage.move(20, 20);
    EXPECT_EQ(frame(), (Draws{{on, 1, 0}}));
    // Frames step over the normal sprite's animation: 4 frames further of 3 is frame 1, not 4.
    EXPECT_EQ(frame(4500), (Draws{{on, 1, 1}}));
    EXPECT_EQ(toggle->getSpriteId(), off);

    // On without a second sprite it draws nothing, its particles neither.
    auto* bare = stage.add<uiToggleButton>("uiToggleButton", "bare", {300, 300, 0, 0});
    bare->setSprite("off", 0, 0, true);
    bare->setParticleSystem("fx.psi");
    log.watch(bare, testkit::CallbackLog::kUp);
    toggle->setWidgetStates(false, false, false, false);
    clickAfterGuard(310); // creates the particle system and turns the button on
    ASSERT_TRUE(bare->getToggle());
    EXPECT_TRUE(frame().empty());
    EXPECT_EQ(svc.gfx.count("psemit"), 0);
    bare->setToggle(false);
    EXPECT_EQ(frame().size(), 1u);
    EXPECT_EQ(svc.gfx.count("psemit"), 1);
}

TEST_F(ToggleButton, TheSecondSpriteLivesWithActivationAndComesFromTheDescription) {
    EXPECT_EQ(svc.gfx.liveSprites(), 2);
    toggle->setSprite2("other"); // recorded only
    EXPECT_EQ(svc.gfx.count("createSprite"), 2);
    toggle->setToggle(true);
    EXPECT_EQ(frame()[0][0], svc.gfx.spriteId("on"));
    toggle->setActive(false, true);
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    toggle->setActive(true, true);
    EXPECT_EQ(frame()[0][0], svc.gfx.spriteId("other"));
    uiWidget::s_dynamicLoading = false;
    toggle->setActive(false, true);
    uiWidget::s_dynamicLoading = true;
    EXPECT_EQ(svc.gfx.liveSprites(), 2);
    toggle->detachFromParent();
    delete toggle;
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    EXPECT_EQ(svc.gfx.overReleases(), 0);

    svc.gfx.clear();
    testkit::Screen screen(
        svc, "t = uiToggleButton\n{\n sprite = off\n sprite2 = \"  on big\"\n sprite2 x\n"
             " sprite2 = \"  \"\n sprite2 =\n flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n");
    EXPECT_EQ(svc.gfx.texts("createSprite"), (std::vector<std::string>{"on", "off"})); // the first word only
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00sprite2 = \"val\"^c\"\f"), 3) << svc.log.dump();
}

} // namespace
