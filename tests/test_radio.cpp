// Radio buttons and groups: selection by release through the nearest group, group values over nested
// containers and groups, drawing with the selected look, and the "value" keys.
#include <gtest/gtest.h>
#include "screen.h"
#include "stage.h"
#include "testkit.h"
#include "uiradiobutton.h"
#include "uiradiogroup.h"

namespace {

class Radio : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiRadioGroup* group = nullptr;
    uiRadioButton* buttons[4] = {};

    // A group over the screen holding buttons with the values 1, 2 and 3 at x 100, 200 and 300.
    void SetUp() override {
        svc.gfx.defineSprite("dot", 50, 50, {2, 2, 2, 2});
        group = stage.attach(testkit::Stage::make<uiRadioGroup>("uiRadioGroup", "group"));
        group->rect = {0, 0, 800, 600};
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
    std::vector<bool> selection() const {
        return {buttons[1]->isSelected(), buttons[2]->isSelected(), buttons[3]->isSelected()};
    }
    // The animations that one rendered frame drew.
    std::vector<int> drawnAnims() {
        svc.gfx.clear();
        stage.render(0);
        std::vector<int> anims;
        for (const testkit::GfxCall& c : svc.gfx.named("blt"))
            anims.push_back(c.ints[4]);
        return anims;
    }
};

int valueSeenByHandler = -2;
bool onClick(uiWidget* w, void*, int, int) {
    uiWidget* g = w->getParent();
    while (!g->isType("uiRadioGroup"))
        g = g->getParent();
    valueSeenByHandler = static_cast<uiRadioGroup*>(g)->getValue();
    return true;
}

TEST_F(Radio, ReleaseOverAButtonSelectsItInItsGroup) {
    _WidgetMap_s map{nullptr, nullptr, nullptr, &onClick, nullptr, nullptr, nullptr};
    buttons[2]->assignCallbacks(&map, nullptr);
    buttons[1]->select(true);
    stage.click(210, 110);
    EXPECT_EQ(selection(), std::vector<bool>({false, true, false}));
    EXPECT_EQ(group->getValue(), 2);
    EXPECT_EQ(valueSeenByHandler, 2); // the handler already sees the new selection

    // Pressed elsewhere, released over button 3: selected, though no click completes.
    stage.press(600, 500);
    stage.move(310, 110);
    stage.release(310, 110);
    EXPECT_EQ(group->getValue(), 3);
    // Pressed over button 1, released elsewhere: nothing changes.
    for (int i = 0; i < 6; ++i)
        stage.update(16);
    stage.move(110, 110);
    stage.press(110, 110);
    stage.release(600, 500);
    EXPECT_EQ(group->getValue(), 3);

    group->setValue(7);
    EXPECT_EQ(selection(), std::vector<bool>({false, false, false}));
    EXPECT_EQ(group->getValue(), -1);
}

TEST_F(Radio, NestedContainersTakePartNestedGroupsDoNot) {
    uiWidget* panel = stage.attach(testkit::Stage::make("uiNonVisualWidget", "panel"), group);
    panel->rect = {0, 300, 800, 400};
    uiRadioButton* deep = radio(4, 100, 0, panel);
    auto* inner = stage.attach(testkit::Stage::make<uiRadioGroup>("uiRadioGroup", "inner"), group);
    inner->rect = {0, 450, 800, 600};
    uiRadioButton* own = radio(2, 100, 0, inner);

    stage.click(110, 310);
    EXPECT_TRUE(deep->isSelected());
    EXPECT_EQ(group->getValue(), 4);
    EXPECT_EQ(selection(), std::vector<bool>({false, false, false}));

    group->setValue(2); // the inner group's button of the same value stays as it is
    EXPECT_FALSE(own->isSelected());
    for (int i = 0; i < 6; ++i)
        stage.update(16);
    stage.click(110, 460);
    EXPECT_TRUE(own->isSelected());
    EXPECT_EQ(inner->getValue(), 2);
    EXPECT_EQ(selection(), std::vector<bool>({false, true, false}));
    EXPECT_FALSE(deep->isSelected());

    // Several selected: the first in child order (newest first, depth first) wins.
    buttons[1]->select(true);
    buttons[3]->select(true);
    EXPECT_EQ(group->getValue(), 3);
    buttons[3]->select(false);
    buttons[2]->select(false);
    EXPECT_EQ(group->getValue(), 1);
}

TEST_F(Radio, WithoutAGroupNothingIsSelectedAndWithoutASpriteNothingDrawn) {
    uiRadioButton* loose = radio(5, 500, 500, nullptr);
    stage.click(510, 510);
    EXPECT_FALSE(loose->isSelected());

    auto* bare = testkit::Stage::make<uiRadioButton>("uiRadioButton", "bare");
    bare->rect = {0, 0, 10, 10};
    bare->select(true);
    stage.attach(bare, group);
    EXPECT_EQ(drawnAnims().size(), 4u); // the three of the group and the loose one
}

TEST_F(Radio, SelectedDrawsAsPressedAndTheThreeAnimationLayoutHidesIdle) {
    group->setWidgetStates(false, false, false, true);
    uiRadioButton* b = radio(1, 500, 500, nullptr, UIB_HOVER | UIB_PRESSED | UIB_DONTDRAWIDLE);
    b->setParticleSystem("fx.psi");
    EXPECT_EQ(drawnAnims(), std::vector<int>());
    stage.move(510, 510);
    EXPECT_EQ(drawnAnims(), std::vector<int>({0}));
    b->select(true);
    EXPECT_EQ(drawnAnims(), std::vector<int>({1}));
    b->disable();
    EXPECT_EQ(drawnAnims(), std::vector<int>({2}));

    b->enable();
    b->select(false);
    b->resetPsys();
    stage.move(0, 0);
    EXPECT_EQ(drawnAnims(), std::vector<int>()); // undrawn, but its particles are drawn
    EXPECT_EQ(svc.gfx.count("psemit"), 1);

    b->setWidgetFlags(b->getWidgetFlags() & ~UIB_DONTDRAWIDLE);
    EXPECT_EQ(drawnAnims(), std::vector<int>({0}));
    stage.move(510, 510);
    EXPECT_EQ(drawnAnims(), std::vector<int>({1}));
    b->select(true);
    EXPECT_EQ(drawnAnims(), std::vector<int>({2}));
    b->disable();
    EXPECT_EQ(drawnAnims(), std::vector<int>({3}));
}

TEST_F(Radio, DescriptionKeysAndHotkeys) {
    testkit::Screen screen(svc, "g = uiRadioGroup\n{\n value = 2\n"
                                " child a = uiRadioButton\n {\n  sprite = dot\n  value = 1\n }\n"
                                " child b = uiRadioButton\n {\n  sprite = dot\n  value = 2\n  x = 100\n"
                                "  hotkey = KEY_ENTER\n }\n"
                                " value = 2\n value = two\n value\n"
                                " flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n");
    ASSERT_TRUE(screen);
    auto* g = static_cast<uiRadioGroup*>(screen.root());
    auto* a = static_cast<uiRadioButton*>(screen.find("a"));
    auto* b = static_cast<uiRadioButton*>(screen.find("b"));
    EXPECT_EQ(a->getValue(), 1);
    EXPECT_EQ(g->getValue(), 2); // the value after the children; malformed ones changed nothing
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
    ASSERT_TRUE(early);
    EXPECT_EQ(static_cast<uiRadioGroup*>(early.root())->getValue(), -1); // no button existed yet
}

} // namespace
