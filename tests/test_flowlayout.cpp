// The flow layout: rows and columns placed on activation, evenly spread rows, growth of the layout's
// rectangle, and a pass without memory.
#include <gtest/gtest.h>
#include <cstdlib>
#include "exercise.h"
#include "screen.h"
#include "testkit.h"
#include "uiflowlayout.h"
#include "uivisualwidget.h"

namespace {

class FlowLayout : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiFlowLayout* layout = stage.add<uiFlowLayout>("uiFlowLayout", "flow", {});
    std::vector<uiWidget*> items;

    // Lays out children of the given sizes, added in this order at a place the pass must overwrite, with
    // `set` applied to the inactive layout first; the places as "x,y" in the order added, and the
    // layout's extent.
    template <class Set> std::string place(std::vector<std::pair<int, int>> sizes, Set set) {
        stage.root()->setActive(false, true);
        for (auto [w, h] : sizes)
            items.push_back(stage.add("uiNonVisualWidget", "item", {7, 7, 7 + w, 7 + h}, layout));
        set(*layout);
        stage.root()->setActive(true, true);
        std::string out;
        for (uiWidget* w : items)
            out += std::to_string(w->rect.x) + "," + std::to_string(w->rect.y) + " ";
        return out + "-> " + std::to_string(layout->rect.x2) + "," + std::to_string(layout->rect.y2);
    }
};

TEST_F(FlowLayout, RowsAndColumnsBreakBeforeAChildWouldPassTheirLimit) {
    const struct {
        std::vector<std::pair<int, int>> sizes;
        void (*set)(uiFlowLayout&);
        const char* placed;
    } cases[] = {
        {{{40, 20}, {40, 30}, {40, 10}},
         [](uiFlowLayout& l) { l.width = 100, l.minSpaceX = 10, l.minSpaceY = 5; },
         "0,0 50,0 0,35 -> 90,45"},
        {{{40, 20}, {40, 30}, {40, 10}},
         [](uiFlowLayout& l) { l.minSpaceX = 10; },
         "0,0 50,0 100,0 -> 140,30"},
        {{{150, 20}, {40, 30}, {40, 10}}, [](uiFlowLayout& l) { l.width = 100; }, "0,0 0,20 40,20 -> 150,50"},
        {{{20, 30}, {35, 30}, {10, 30}},
         [](uiFlowLayout& l) { l.setFlowType(uiFlowLayout::VERTICAL), l.height = 60, l.minSpaceX = 4; },
         "0,0 0,30 39,0 -> 49,60"},
        // Even spacing spreads each row over the width, the minimum gaps counting towards its total.
        {{{20, 10}, {20, 10}, {20, 10}},
         [](uiFlowLayout& l) { l.width = 100, l.spaceEvenly = true; },
         "0,0 40,0 80,0 -> 100,10"},
        {{{20, 10}, {20, 10}, {20, 10}},
         [](uiFlowLayout& l) { l.width = 100, l.spaceEvenly = true, l.minSpaceX = 10; },
         "0,0 30,0 60,0 -> 80,10"},
        // Rows gather strictly below the width: 50 + 40 is spread with gap 10; 30 + 100 does not join.
        {{{50, 10}, {40, 10}, {30, 10}, {100, 10}, {60, 10}},
         [](uiFlowLayout& l) { l.width = 100, l.minSpaceY = 2, l.spaceEvenly = true; },
         "0,0 60,0 0,12 0,24 0,36 -> 100,46"},
        // 45 + (45 + 10) reaches 100: no row is gathered, but a child ending exactly at the width fits.
        {{{45, 10}, {45, 10}},
         [](uiFlowLayout& l) { l.width = 100, l.minSpaceX = 10, l.spaceEvenly = true; },
         "0,0 55,0 -> 100,10"},
    };
    for (const auto& c : cases) {
        items.clear();
        layout = stage.add<uiFlowLayout>("uiFlowLayout", "flow", {});
        EXPECT_EQ(place(c.sizes, c.set), c.placed);
    }
    EXPECT_TRUE(items[0]->setActive()) << "children are activated too";
}

TEST_F(FlowLayout, PlacesOnlyWhenItBecomesActiveNeverShrinksAndGivesUpWithoutMemory) {
    EXPECT_EQ(place({{40, 20}, {40, 20}}, [](uiFlowLayout& l) { l.width = 100; }), "0,0 40,0 -> 80,20");
    items[1]->rect.x = 7;
    layout->setActive(true, true);
    EXPECT_EQ(items[1]->rect.x, 7) << "an active layout does not place again";
    // Placed again in the order the children were added; a child that keeps its own state is placed but
    // not activated; the layout's rectangle only grows.
    items[0]->setWidth(10);
    items[1]->setWidth(10);
    EXPECT_EQ(place({{10, 5}}, [](uiFlowLayout&) {}), "0,0 10,0 20,0 -> 80,20");
    layout->setActive(false, true);
    items[2]->overrideActive(true);
    layout->setActive(true, true);
    EXPECT_FALSE(items[2]->setActive());

    layout->setActive(false, true);
    for (uiWidget* item : items)
        item->rect = {7, 7, 47, 27};
    const long long buffers = svc.memory.outstandingBlocks(uiWidget::kBufPool);
    svc.memory.failAt(0);
    layout->setActive(true, true);
    EXPECT_TRUE(svc.memory.failed());
    EXPECT_EQ(svc.log.dump(), "2: flow::_activate(): Out of Memory\f\n");
    EXPECT_EQ(items[1]->rect.x, 7);
    EXPECT_TRUE(layout->setActive()) << "the layout still becomes active";
    layout->setActive(false, true);
    layout->setActive(true, true);
    EXPECT_EQ(items[1]->rect.x, 40);
    EXPECT_EQ(svc.memory.outstandingBlocks(uiWidget::kBufPool), buffers) << "the array is given back";

    // Children take their size on activation before they are placed; an empty layout allocates nothing.
    svc.gfx.defineSprite("icon", 30, 30);
    uiFlowLayout* icons = stage.add<uiFlowLayout>("uiFlowLayout", "icons", {});
    icons->setActive(false, true);
    icons->width = 70;
    icons->minSpaceX = 5;
    for (int i = 0; i < 3; ++i)
        stage.add<uiVisualWidget>("uiVisualWidget", "icon", {}, icons)->setSprite("icon", 0, 0, false);
    uiFlowLayout* empty = stage.add<uiFlowLayout>("uiFlowLayout", "empty", {});
    empty->setActive(false, true);
    const long long before = svc.memory.allocations();
    empty->setActive(true, true);
    EXPECT_EQ(svc.memory.allocations(), before);
    icons->setActive(true, true);
    std::string placed;
    for (const _WidgetList_s* node = icons->getChildren(); node; node = node->next)
        placed += std::to_string(node->widget->rect.x) + "," + std::to_string(node->widget->rect.y) + " ";
    EXPECT_EQ(placed, "0,30 35,0 0,0 "); // newest first
}

TEST_F(FlowLayout, CopiesTakeTheSettingsButNeitherChildrenNorParent) {
    place({{40, 20}}, [](uiFlowLayout& l) { l.width = 100, l.spaceEvenly = true; });
    uiFlowLayout copy(*layout);
    uiFlowLayout assigned;
    assigned = *layout;
    for (uiFlowLayout* c : {&copy, &assigned}) {
        EXPECT_EQ(c->width, 100);
        EXPECT_TRUE(c->spaceEvenly);
        EXPECT_EQ(c->rect.x2, layout->rect.x2);
        EXPECT_EQ(c->getChildren(), nullptr);
        EXPECT_EQ(c->getParent(), nullptr);
    }
}

TEST_F(FlowLayout, DescriptionKeysMistakesAndExtremeValues) {
    testkit::Screen screen(
        svc, "flow = uiFlowLayout\n{\n    flowtype = Vertical\n    FlowType = diagonal\n"
             "    FlowType horizontal\n    height = 60\n    minspacex = 4\n    minspacey = 1\n"
             "    spaceevenly = true\n    spaceevenly = false\n"
             "    child a = uiNonVisualWidget\n    {\n        width = 20\n        height = 30\n    }\n"
             "    child b = uiNonVisualWidget\n    {\n        width = 35\n        height = 29\n    }\n"
             "    child c = uiNonVisualWidget\n    {\n        width = 10\n        height = 30\n    }\n"
             "    active = true\n}\n");
    auto* flow = static_cast<uiFlowLayout*>(screen.root());
    ASSERT_NE(flow, nullptr);
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00flowtype = vertical | horizontal^c\"\f"), 2)
        << svc.log.dump();
    EXPECT_EQ(flow->getFlowType(), uiFlowLayout::VERTICAL);
    EXPECT_FALSE(flow->spaceEvenly);
    // A column of a and b (30 + 1 + 29 = 60 fits), then c in the next column, 4 past b's width.
    EXPECT_EQ(screen.find("b")->rect.y * 10000 + screen.find("c")->rect.x * 100 + screen.find("c")->rect.y,
              313900);

    svc.log.clear();
    testkit::Screen hostile(
        svc,
        "hostile = uiNonVisualWidget\n{\n    child flow = uiFlowLayout\n    {\n        Width = -2147483648\n"
        "        MinSpaceX = 2147483647\n        MinSpaceY = -2147483648\n        SpaceEvenly = true\n"
        "        child wide = uiNonVisualWidget\n        {\n            x2 = 2147483647\n"
        "            y2 = -2147483648\n        }\n        child label = uiTextWidget\n        {\n"
        "            font = big\n            padding = 2147483647\n            justify = CENTER\n"
        "            text = \"abc\"\n        }\n        child field = uiEntryWidget\n        {\n"
        "            font = big\n            cursor = caret\n            justify = CENTER\n"
        "            entryrectx = 2147483647\n            entryrecty = -2147483648\n"
        "            padding = -2147483648\n            text = \"xyz\"\n        }\n    }\n"
        "    child far = uiEntryWidget\n    {\n        x = 2147483000\n        y = -2147483000\n"
        "        font = big\n        cursor = caret\n        entryrectx = 2147483647\n"
        "        padding = 2147483647\n        text = \"abc\"\n    }\n    child right = uiTextWidget\n    {\n"
        "        font = big\n        padding = -2147483648\n        justify = RIGHT\n        text = \"abc\"\n"
        "    }\n    flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS\n}\n",
        "hostile.txt");
    ASSERT_TRUE(hostile);
    // Placing, drawing, typing and measuring run without overflowing (the sanitizer build checks).
    stage.ui().setTopLevelWidget(hostile.root());
    testkit::exercise(stage.ui());
    stage.ui().setTopLevelWidget(stage.root());
    // Widget positions stay within a million pixels of 0: values beyond are brought to that edge, with a
    // warning where a description gave them.
    EXPECT_EQ(svc.log.count(), 4) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(1, "...line 11: x2 = 2147483647 is out of range, 1048576 used\f"));
    EXPECT_TRUE(svc.log.has(1, "...line 35: y = -2147483000 is out of range, -1048576 used\f"));
    for (const char* path : {"flow", "flow.wide", "flow.label", "flow.field", "far", "right"}) {
        const _uiRect_s& r = hostile.find(path)->rect;
        for (int edge : {r.x, r.y, r.x2, r.y2})
            EXPECT_LE(std::abs(edge), 1 << 20) << path;
    }
}

} // namespace
