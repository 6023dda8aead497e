// Toggle buttons: the state flips when the click handler consumes the click, the second sprite is drawn
// while on, and the second sprite lives with the button's activation.
#include <gtest/gtest.h>
#include "screen.h"
#include "stage.h"
#include "testkit.h"
#include "uitogglebutton.h"

namespace {

bool handlerResult = true;
int handled = 0;
bool onClick(uiWidget*, void*, int, int) {
    ++handled;
    return handlerResult;
}

class ToggleButton : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiToggleButton* toggle = nullptr;

    void SetUp() override {
        handlerResult = true;
        handled = 0;
        svc.gfx.defineSprite("off", 60, 30, {3, 3});
        svc.gfx.defineSprite("on", 60, 30, {5, 5});
        toggle = testkit::Stage::make<uiToggleButton>("uiToggleButton", "t");
        toggle->rect = {10, 10, 0, 0};
        toggle->setSprite("off", 0, 0, false);
        toggle->setSprite2("on");
        stage.attach(toggle);
    }
    void handleClicks() {
        _WidgetMap_s map{nullptr, nullptr, nullptr, &onClick, nullptr, nullptr, nullptr};
        toggle->assignCallbacks(&map, nullptr);
    }
    void clickAfterGuard() {
        for (int i = 0; i < 6; ++i)
            stage.update(16);
        stage.click(20, 20);
    }
    // Sprite, animation and frame of each draw of one rendered frame.
    std::vector<std::vector<int>> frame(unsigned int ms = 0) {
        svc.gfx.clear();
        stage.render(ms);
        std::vector<std::vector<int>> draws;
        for (const testkit::GfxCall& c : svc.gfx.named("blt"))
            draws.push_back({c.ints[1], c.ints[4], c.ints[5]});
        return draws;
    }
};

TEST_F(ToggleButton, FlipsOnlyWhenTheClickHandlerConsumesTheClick) {
    stage.click(20, 20);
    EXPECT_FALSE(toggle->getToggle()); // no handler: the click is not consumed
    stage.press(500, 500);
    stage.move(20, 20);
    stage.release(20, 20);
    EXPECT_TRUE(toggle->getToggle()) << "a release after a press elsewhere flips";
    toggle->toggle();
    EXPECT_FALSE(toggle->getToggle());

    handleClicks();
    handlerResult = false;
    clickAfterGuard();
    EXPECT_EQ(handled, 1);
    EXPECT_FALSE(toggle->getToggle());

    handlerResult = true;
    clickAfterGuard();
    EXPECT_TRUE(toggle->getToggle());
    clickAfterGuard();
    EXPECT_FALSE(toggle->getToggle());
    EXPECT_EQ(handled, 3);

    // A press swallowed as a double click is consumed, and so is the release that ends no press.
    stage.press(20, 20);
    EXPECT_TRUE(toggle->getToggle());
    stage.release(20, 20);
    EXPECT_FALSE(toggle->getToggle());
    EXPECT_EQ(handled, 3);
}

TEST_F(ToggleButton, DrawsTheSecondSpriteWithTheButtonsAnimationWhileOn) {
    const int off = svc.gfx.spriteId("off"), on = svc.gfx.spriteId("on");
    toggle->setWidgetFlags(toggle->getWidgetFlags() | UIB_HOVER);
    EXPECT_EQ(frame(), std::vector<std::vector<int>>({{off, 0, 0}}));
    toggle->setToggle(true);
    stage.move(20, 20);
    EXPECT_EQ(frame(), std::vector<std::vector<int>>({{on, 1, 0}}));
    // Frames step over the normal sprite's animation: 4 frames further of 3 is frame 1, not 4.
    EXPECT_EQ(frame(4500), std::vector<std::vector<int>>({{on, 1, 1}}));
    EXPECT_EQ(toggle->getSpriteId(), off);
}

TEST_F(ToggleButton, OnWithoutASecondSpriteDrawsNothing) {
    auto* bare = testkit::Stage::make<uiToggleButton>("uiToggleButton", "bare");
    bare->rect = {300, 300, 0, 0};
    bare->setSprite("off", 0, 0, false);
    bare->setParticleSystem("fx.psi");
    stage.attach(bare);
    _WidgetMap_s map{nullptr, nullptr, nullptr, &onClick, nullptr, nullptr, nullptr};
    bare->assignCallbacks(&map, nullptr);
    toggle->setWidgetStates(false, false, false, false);

    stage.click(310, 310); // creates the particle system and turns the button on
    ASSERT_TRUE(bare->getToggle());
    frame();
    EXPECT_EQ(svc.gfx.count("blt"), 0);
    EXPECT_EQ(svc.gfx.count("psemit"), 0);
    bare->setToggle(false);
    frame();
    EXPECT_EQ(svc.gfx.count("blt"), 1);
    EXPECT_EQ(svc.gfx.count("psemit"), 1);
}

TEST_F(ToggleButton, TheSecondSpriteLivesWithActivation) {
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
}

TEST_F(ToggleButton, DescriptionKeys) {
    svc.gfx.clear();
    testkit::Screen screen(
        svc, "t = uiToggleButton\n{\n sprite = off\n sprite2 = \"  on big\"\n sprite2 x\n"
             " sprite2 = \"  \"\n sprite2 =\n flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n");
    ASSERT_TRUE(screen);
    std::vector<std::string> created;
    for (const testkit::GfxCall& c : svc.gfx.named("createSprite"))
        created.push_back(c.text);
    EXPECT_EQ(created, std::vector<std::string>({"on", "off"})); // the first word only
    EXPECT_EQ(svc.log.count(), 3) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00sprite2 = \"val\"^c\"\f"));
}

} // namespace
