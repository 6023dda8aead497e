// Radio buttons and groups: selection by release through the nearest group, group values over nested
// containers and groups, drawing with the selected look, and the "value" keys.
#include <gtest/gtest.h>
#include "screen.h"
#include "testkit.h"
#include "uiradiobutton.h"
#include "uiradiogroup.h"

namespace {

class Radio : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiRadioGroup* group = stage.add<uiRadioGroup>("uiRadioGroup", "group", {0, 0, 800, 600});
    uiRadioButton* buttons[4] = {};

    // A group over the screen holding buttons with the values 1, 2 and 3 at x 100, 200 and 300.
    void SetUp() override {
        svc.gfx.defineSprite("dot", 50, 50, {2, 2, 2, 2});
        for (int v = 1; v <= 3; ++v)
            buttons[v] = radio(v, 100 * v, 100, group);
    }
    uiRadioButton* radio(int value, int x, int y, uiWidget* parent, unsigned int buttonFlags = 0) {
        auto* b = testkit::Stage::make<uiRadioButton>("uiRadioButton", "r");
        b->rect = {x, y, 0, 0};
        b->setValue(value);
        b->setWidgetFlags(buttonFlags);
        b->setSprite("dot", 0, 0, false);
        return stage.attach(b, parent);
    }
    // Which of the three buttons are selected, and the group's value: "010 2".
    std::string state() const {
        std::string s;
        for (int v = 1; v <= 3; ++v)
            s += buttons[v]->isSelected() ? "1" : "0";
        return s + " " + std::to_string(group->getValue());
    }
};

TEST_F(Radio, ReleaseOverAButtonSelectsItInItsNearestGroup) {
    static int seenByHandler = -2; // the handler already sees the new selection
    _WidgetMap_s map{};
    map.mouseUpCb = [](uiWidget* w, void*, int, int) {
        seenByHandler = static_cast<uiRadioGroup*>(w->getParent())->getValue();
        return true;
    };
    buttons[2]->assignCallbacks(&map, nullptr);
    buttons[1]->select(true);
    stage.click(210, 110);
    EXPECT_EQ(state() + " " + std::to_string(seenByHandler), "010 2 2");
    stage.press(600, 500); // pressed elsewhere, released over button 3: selected, though no click completes
    stage.move(310, 110);
    stage.release(310, 110);
    EXPECT_EQ(group->getValue(), 3);
    stage.update(16, 6);
    stage.move(110, 110); // pressed over button 1, released elsewhere: nothing changes
    stage.press(110, 110);
    stage.release(600, 500);
    EXPECT_EQ(group->getValue(), 3);
    group->setValue(7);
    EXPECT_EQ(state(), "000 -1");

    // Nested containers take part, nested groups do not.
    uiWidget* panel = stage.add("uiNonVisualWidget", "panel", {0, 300, 800, 400}, group);
    uiRadioButton* deep = radio(4, 100, 0, panel);
    auto* inner = stage.add<uiRadioGroup>("uiRadioGroup", "inner", {0, 450, 800, 600}, group);
    uiRadioButton* own = radio(2, 100, 0, inner);
    stage.update(16, 6);
    stage.click(110, 310);
    EXPECT_EQ(state() + (deep->isSelected() ? " deep" : ""), "000 4 deep");
    group->setValue(2); // the inner group's button of the same value stays as it is
    EXPECT_FALSE(own->isSelected());
    stage.update(16, 6);
    stage.click(110, 460);
    EXPECT_EQ(inner->getValue(), 2); // selects its own button
    EXPECT_EQ(state() + (deep->isSelected() ? " deep" : ""), "010 2");
    // Several selected: the first in child order (newest first, depth first) wins.
    buttons[1]->select(true);
    buttons[3]->select(true);
    EXPECT_EQ(group->getValue(), 3);
    buttons[3]->select(false);
    buttons[2]->select(false);
    EXPECT_EQ(group->getValue(), 1);
    // Without a group nothing is selected.
    uiRadioButton* loose = radio(5, 500, 500, nullptr);
    stage.update(16, 6);
    stage.click(510, 510);
    EXPECT_FALSE(loose->isSelected());
}

TEST_F(Radio, SelectedDrawsAsPressedAndTheThreeAnimationLayoutHidesIdle) {
    group->setWidgetStates(false, false, false, true);
    auto* bare = stage.add<uiRadioButton>("uiRadioButton", "bare", {0, 0, 10, 10}); // no sprite: not drawn
    bare->select(true);
    uiRadioButton* b = radio(1, 500, 500, nullptr, UIB_HOVER | UIB_PRESSED | UIB_DONTDRAWIDLE);
    b->setParticleSystem("fx.psi");
    std::vector<int> anims;
    auto look = [&](int x, bool select, bool disable) {
        stage.move(x, 510);
        b->select(select);
        if (disable) b->disable();
        const auto drawn = testkit::renderLooks(svc.gfx, stage.ui(), 0, {4});
        anims.push_back(drawn.empty() ? -1 : drawn[0][0]);
        b->enable();
    };
    for (bool threeAnims : {true, false}) {
        if (!threeAnims) b->setWidgetFlags(b->getWidgetFlags() & ~UIB_DONTDRAWIDLE);
        look(0, false, false);
        look(510, false, false);
        look(510, true, false);
        look(510, true, true);
        if (threeAnims) {
            b->select(false);
            b->resetPsys();
            stage.move(0, 0);
            EXPECT_TRUE(testkit::renderFrame(svc.gfx, stage.ui(), 0).empty()); // undrawn, its particles drawn
            EXPECT_EQ(svc.gfx.count("psemit"), 1);
        }
    }
    EXPECT_EQ(anims, (std::vector<int>{-1, 0, 1, 2, 0, 1, 2, 3}));
}

TEST_F(Radio, DescriptionKeysAndHotkeys) {
    testkit::Screen screen(svc,
                           "g = uiRadioGroup\n{\n value = 2\n child a = uiRadioButton\n {\n  sprite = dot\n"
                           "  value = 1\n }\n child b = uiRadioButton\n {\n  sprite = dot\n  value = 2\n"
                           "  x = 100\n  hotkey = KEY_ENTER\n }\n value = 2\n value = two\n value\n"
                           " flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n");
    auto* g = static_cast<uiRadioGroup*>(screen.root());
    auto* a = static_cast<uiRadioButton*>(screen.find("a"));
    auto* b = static_cast<uiRadioButton*>(screen.find("b"));
    ASSERT_TRUE(g && a && b);
    EXPECT_EQ(a->getValue() * 10 + g->getValue(),
              12); // the value after the children; malformed ones changed nothing
    EXPECT_TRUE(b->isSelected());
    EXPECT_EQ(svc.log.count(), 2) << svc.log.dump();
    // The hotkey clicks but does not select.
    stage.ui().setTopLevelWidget(g);
    a->select(true);
    b->select(false);
    stage.keyUp(13);
    EXPECT_EQ(svc.sound.played.back(), "click");
    EXPECT_EQ(g->getValue(), 1);
    stage.ui().setTopLevelWidget(stage.root());
    testkit::Screen early(
        svc, "g = uiRadioGroup\n{\n value = 1\n child a = uiRadioButton\n {\n  value = 1\n }\n}\n",
        "early.txt");
    EXPECT_EQ(static_cast<uiRadioGroup*>(early.root())->getValue(), -1); // no button existed yet
}

} // namespace
