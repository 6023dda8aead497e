// The frame and input walks over trees of the library's own containers and buttons, which they enter
// without virtual calls, mixed with a game's classes derived from them, which keep their overrides.
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "testkit.h"
#include "uibutton.h"
#include "uinonvisualwidget.h"

namespace {

using Points = std::vector<std::pair<int, int>>;
std::vector<std::string>* g_seen = nullptr;

void note(const uiWidget* w, const std::string& what, int x, int y) {
    if (g_seen)
        g_seen->push_back(std::string(w->name) + " " + what + " " + std::to_string(x) + "," +
                          std::to_string(y));
}

// A game's panel: a library class with the frame and input hooks overridden.
class GamePanel : public uiNonVisualWidget {
protected:
    void _update(int x, int y) override { note(this, "update", x, y); }
    void _render(int x, int y) override { note(this, "render", x, y); }
    bool _inputEvent(e_uiEvent kind, int x, int y, int, bool, bool) override {
        note(this, "input" + std::to_string(kind), x, y);
        return false;
    }
};

class TreeWalk : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    std::vector<std::string> seen;
    uiWidget* outer = stage.add("uiNonVisualWidget", "outer", {100, 50, 700, 550});

    void SetUp() override {
        g_seen = &seen;
        svc.gfx.defineSprite("ok", 100, 40, {4, 4, 4, 4});
    }
    void TearDown() override { g_seen = nullptr; }

    uiButton* button(const char* name, _uiRect_s r, uiWidget* parent) {
        auto* b = testkit::Stage::make<uiButton>("uiButton", name);
        b->rect = r;
        b->setSprite("ok", 0, 0, false); // before taking the parent's states
        return stage.attach(b, parent);
    }
    Points draws() { // where the frame drew each sprite, in drawing order
        Points out;
        for (const std::vector<int>& blt : testkit::renderFrame(svc.gfx, stage.ui(), 16))
            out.push_back({blt[2], blt[3]});
        return out;
    }
};

TEST_F(TreeWalk, GameClassesDerivedFromLibraryClassesKeepTheirHooks) {
    auto* mine = stage.attach(new GamePanel, outer);
    std::snprintf(mine->name, sizeof mine->name, "mine");
    mine->rect = {10, 20, 300, 300};
    button("b", {5, 5, 105, 45}, mine);
    EXPECT_EQ(draws(), (Points{{115, 75}}));
    stage.move(5, 580); // far from everything, yet the game's hook sees it, in its own space
    EXPECT_EQ(seen,
              (std::vector<std::string>{"mine update 100,50", "mine render 100,50", "mine input0 -95,530"}));
}

TEST_F(TreeWalk, ContainersAndButtonsFollowTheStatesAndCoordinates) {
    uiWidget* inner = stage.add("uiNonVisualWidget", "inner", {10, 20, 400, 400}, outer);
    uiButton* a = button("a", {5, 5, 105, 45}, inner);
    uiButton* b = button("b", {30, 60, 130, 100}, outer);
    EXPECT_EQ(draws(), (Points{{130, 110}, {115, 75}}));
    // Absolute coordinates on a panel start its subtree again from the screen's corner.
    inner->setWidgetFlags(inner->getWidgetFlags() | WF_ROOT_COORDS);
    EXPECT_EQ(draws(), (Points{{130, 110}, {15, 25}}));
    // A hidden panel draws nothing below it; an inactive one stops its buttons' animations.
    inner->setVisible(false, false);
    EXPECT_EQ(draws(), (Points{{130, 110}}));
    outer->setActive(false, false);
    b->setFrame(2);
    draws();
    stage.update(5000);
    EXPECT_EQ(b->getFrame(), 2);
    outer->setActive(true, false);
    stage.update(1001);
    EXPECT_EQ(b->getFrame(), 3);
    // A button with absolute coordinates is hit where its rectangle lies on the screen.
    b->setWidgetFlags(b->getWidgetFlags() | WF_ROOT_COORDS);
    stage.move(40, 70);
    EXPECT_TRUE(b->isHovering());
    stage.move(140, 120);
    EXPECT_FALSE(b->isHovering());
    // A new animation set by the game restarts at the next event, wherever the pointer is.
    a->setAnim(2);
    a->setFrame(3);
    stage.move(600, 500);
    EXPECT_EQ(a->getFrame(), 0);
    a->setFrame(3);
    stage.move(600, 510);
    EXPECT_EQ(a->getFrame(), 3);
}

TEST_F(TreeWalk, AMoveOutsideAButtonDoesWhatEnteringItWouldDo) {
    uiButton* b = button("b", {0, 0, 60, 40}, outer); // narrower than its 100-pixel sprite
    draws();
    stage.move(150, 60); // hover starts and ends through the panel
    EXPECT_TRUE(b->isHovering());
    stage.move(600, 500);
    EXPECT_FALSE(b->isHovering());
    // A release takes the button off the top of the input-focus stack, also when it comes through the tree.
    stage.ui().pushInputFocusWidget(b);
    stage.root()->inputEvent(UIE_MOUSE_UP, 600, 500, 0, true, false);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    // An alpha-tested sprite decides alone, also beyond the rectangle.
    svc.gfx.setAlphaMask("ok", [](int, int, int x, int) { return x < 80; });
    b->setWidgetFlags(b->getWidgetFlags() | WF_ALPHA_TEST);
    stage.move(170, 60);
    EXPECT_TRUE(b->isHovering());
    stage.move(190, 60);
    EXPECT_FALSE(b->isHovering());
    EXPECT_EQ(svc.sound.played, std::vector<std::string>({"highlight", "highlight"}));
}

} // namespace
