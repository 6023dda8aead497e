// The inspector over a screen: which widget it picks under the pointer, what its panel says, how its keys
// walk the tree, and that it keeps the input while open.
#include <gtest/gtest.h>
#include <algorithm>
#include <string>
#include "inspector.h"
#include "testkit.h"
#include "uibutton.h"
#include "uidevtools.h"
#include "widgetinfo.h"

namespace {

class Inspector : public ::testing::Test {
protected:
    void SetUp() override {
        panel = stage.add("uiNonVisualWidget", "panel", {100, 100, 300, 300});
        ok = stage.add<uiButton>("uiButton", "ok", {10, 10, 60, 40}, panel);
        pinned = stage.add("uiVisualWidget", "pinned", {500, 500, 520, 520}, panel);
        pinned->setWidgetFlags(pinned->getWidgetFlags() | WF_ROOT_COORDS);
        low = stage.add("uiVisualWidget", "low", {400, 100, 450, 150});
        high = stage.add("uiVisualWidget", "high", {400, 100, 450, 150});
        low->setDepth(20u);
        high->setDepth(10u); // added later, drawn earlier: `low` is on top by depth and by order
    }

    bool send(e_uiEvent kind, int key, int x = 0, int y = 0) { return dt->inputEvent(kind, x, y, key); }

    testkit::Services services;
    testkit::Stage stage;
    uiWidget *panel, *ok, *pinned, *low, *high;
    uiDevtools* dt = nullptr;
};

TEST_F(Inspector, PicksTheWidgetDrawnOnTopUnderThePoint) {
    uiWidget* root = stage.root();
    struct Case {
        int x, y;
        uiWidget* expected;
    };
    const Case cases[] = {{120, 120, ok},     {159, 139, ok},   {160, 139, panel}, {150, 200, panel},
                          {510, 510, pinned}, {610, 590, root}, {420, 120, low}};
    for (const Case& c : cases)
        EXPECT_EQ(devtools::Inspector::pick(root, c.x, c.y), c.expected) << c.x << "," << c.y;
    high->setDepth(20u); // equal depths: the one drawn last
    EXPECT_EQ(devtools::Inspector::pick(root, 420, 120), low);
    low->setVisible(false, true);
    EXPECT_EQ(devtools::Inspector::pick(root, 420, 120), high);
    panel->setVisible(false, true); // a hidden parent hides its children
    EXPECT_EQ(devtools::Inspector::pick(root, 120, 120), root);
}

TEST_F(Inspector, PanelDecodesTheWidget) {
    stage.ui().pushInputFocusWidget(ok); // as a pressed button holds the pointer
    ok->setWidgetFlags(ok->getWidgetFlags() | UIB_HOVER | 0x800000);
    const std::vector<std::string> lines = devtools::Inspector::describe(ok);
    ASSERT_GE(lines.size(), 7u);
    EXPECT_EQ(lines[0], "root.panel.ok");
    EXPECT_EQ(lines[1].rfind("uiButton  depth 0", 0), 0u) << lines[1];
    EXPECT_EQ(lines[2], "local  10,10 - 60,40");
    EXPECT_EQ(lines[3], "screen 110,110 - 160,140  (50 x 30)");
    EXPECT_EQ(lines[4], "flags 0x820007");
    EXPECT_EQ(lines[5], "  active visible input-focus has-hover-anim pressed 0x800000");
    EXPECT_EQ(lines[6].rfind("sprite \"\"  anim 0  frame 0  alpha 255", 0), 0u) << lines[6];
    EXPECT_EQ(devtools::screenRect(pinned).x, 500);
    EXPECT_EQ(devtools::flagNames(pinned), "active visible input-focus root-coords");

    low->setActive(false, false);
    const std::vector<std::string> tree = devtools::Inspector::tree(stage.root(), ok);
    EXPECT_NE(std::find(tree.begin(), tree.end(), ">     ok  uiButton"), tree.end());
    EXPECT_NE(std::find(tree.begin(), tree.end(), "    low  uiVisualWidget  [inactive]"), tree.end());
}

std::string g_copied;

TEST_F(Inspector, TakesTheInputWhileOpenAndWalksTheTree) {
    uiDevtoolsOptions o;
    o.watch = false;
    o.font = "overlay";
    o.lineSprite = "line";
    o.copyText = [](const char* text, void*) { g_copied = text; };
    o.gameInput = [](e_uiEvent kind, int key, void*) { return kind == UIE_KEY_DOWN && key == 'q'; };
    dt = uiDevtools::enable(o);
    EXPECT_FALSE(send(UIE_MOUSE_MOVE, 0, 120, 120)); // closed: the game's
    EXPECT_TRUE(send(UIE_KEY_DOWN, 174));
    EXPECT_TRUE(dt->inspectorOpen());
    EXPECT_TRUE(send(UIE_MOUSE_MOVE, 0, 120, 120));
    EXPECT_EQ(dt->inspected(), ok);
    EXPECT_FALSE(send(UIE_KEY_DOWN, 'q')); // the game's own key passes

    const struct {
        int key;
        uiWidget* to;
    } walk[] = {{'u', panel},  {'d', pinned}, {'n', ok},          {'n', ok},
                {'b', pinned}, {'u', panel},  {'u', stage.root()}};
    for (const auto& step : walk) {
        EXPECT_TRUE(send(UIE_KEY_DOWN, step.key));
        EXPECT_EQ(dt->inspected(), step.to) << char(step.key);
    }
    send(UIE_KEY_DOWN, 'd');
    send(UIE_KEY_DOWN, 'c');
    EXPECT_EQ(g_copied, "root.high");

    // The panel is drawn through the graphics service, the widget outlined.
    services.gfx.clear();
    dt->draw();
    const std::vector<std::string> printed = services.gfx.texts("print");
    EXPECT_NE(std::find(printed.begin(), printed.end(), "root.high"), printed.end());
    EXPECT_GE(services.gfx.count("blt"), 4);

    send(UIE_KEY_DOWN, 174);
    EXPECT_FALSE(dt->inspectorOpen());
    EXPECT_FALSE(send(UIE_KEY_DOWN, 'u'));
    uiDevtools::disable();
}

} // namespace
