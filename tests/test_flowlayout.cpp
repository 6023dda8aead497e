// The flow layout: rows and columns placed on activation, evenly spread rows, growth of the layout's
// rectangle, and a pass without memory.
#include <gtest/gtest.h>
#include <cstdlib>
#include "screen.h"
#include "testkit.h"
#include "uiflowlayout.h"
#include "uivisualwidget.h"

namespace {

using Sizes = std::vector<std::pair<int, int>>;

// The layout's settings; a height makes it a column.
struct Flow {
    int width = 0, height = 0, minSpaceX = 0, minSpaceY = 0;
    bool even = false;
};

class FlowLayout : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiFlowLayout* layout = stage.add<uiFlowLayout>("uiFlowLayout", "flow", {});
    std::vector<uiWidget*> items;

    // Lays out children of these sizes (at a place the pass must overwrite) with `f` applied to the
    // inactive layout; the places as "x,y" in the order added, and the layout's extent.
    std::string place(const Sizes& sizes, Flow f = {}) {
        stage.root()->setActive(false, true);
        for (auto [w, h] : sizes)
            items.push_back(stage.add("uiNonVisualWidget", "item", {7, 7, 7 + w, 7 + h}, layout));
        layout->setFlowType(f.height ? uiFlowLayout::VERTICAL : uiFlowLayout::HORIZONTAL);
        layout->width = f.width, layout->height = f.height, layout->spaceEvenly = f.even;
        layout->minSpaceX = f.minSpaceX, layout->minSpaceY = f.minSpaceY;
        stage.root()->setActive(true, true);
        std::string out;
        for (uiWidget* w : items)
            out += std::to_string(w->rect.x) + "," + std::to_string(w->rect.y) + " ";
        return out + "-> " + std::to_string(layout->rect.x2) + "," + std::to_string(layout->rect.y2);
    }
};

TEST_F(FlowLayout, RowsAndColumnsBreakBeforeAChildWouldPassTheirLimit) {
    const Sizes three = {{40, 20}, {40, 30}, {40, 10}}, row = {{20, 10}, {20, 10}, {20, 10}};
    auto fresh = [this](const Sizes& sizes, Flow f) {
        items.clear();
        layout = stage.add<uiFlowLayout>("uiFlowLayout", "flow", {});
        return place(sizes, f);
    };
    EXPECT_EQ(fresh(three, {100, 0, 10, 5}), "0,0 50,0 0,35 -> 90,45");
    EXPECT_EQ(fresh(three, {0, 0, 10}), "0,0 50,0 100,0 -> 140,30");
    EXPECT_EQ(fresh({{150, 20}, {40, 30}, {40, 10}}, {100}), "0,0 0,20 40,20 -> 150,50");
    EXPECT_EQ(fresh({{20, 30}, {35, 30}, {10, 30}}, {0, 60, 4}), "0,0 0,30 39,0 -> 49,60");
    // Even spacing spreads each row over the width, the minimum gaps counting towards its total.
    EXPECT_EQ(fresh(row, {100, 0, 0, 0, true}), "0,0 40,0 80,0 -> 100,10");
    EXPECT_EQ(fresh(row, {100, 0, 10, 0, true}), "0,0 30,0 60,0 -> 80,10");
    // Rows gather strictly below the width: 50 + 40 is spread with gap 10; 30 + 100 does not join.
    EXPECT_EQ(fresh({{50, 10}, {40, 10}, {30, 10}, {100, 10}, {60, 10}}, {100, 0, 0, 2, true}),
              "0,0 60,0 0,12 0,24 0,36 -> 100,46");
    // 45 + (45 + 10) reaches 100: no row is gathered, but a child ending exactly at the width fits.
    EXPECT_EQ(fresh({{45, 10}, {45, 10}}, {100, 0, 10, 0, true}), "0,0 55,0 -> 100,10");
    uiFlowLayout copy(*layout), assigned; // copies take the settings and extent, neither children nor parent
    assigned = copy;
    for (uiFlowLayout* c : {&copy, &assigned})
        EXPECT_EQ((std::vector<int>{c->width, c->minSpaceX, c->spaceEvenly, c->rect.x2, !c->getChildren(),
                                    !c->getParent()}),
                  (std::vector<int>{100, 10, 1, 100, 1, 1}));
    EXPECT_TRUE(items[0]->setActive()) << "children are activated too";
}

TEST_F(FlowLayout, PlacesOnlyWhenItBecomesActiveNeverShrinksAndGivesUpWithoutMemory) {
    EXPECT_EQ(place({{40, 20}, {40, 20}}, {100}), "0,0 40,0 -> 80,20");
    items[1]->rect.x = 7;
    layout->setActive(true, true);
    EXPECT_EQ(items[1]->rect.x, 7) << "an active layout does not place again";
    // Placed again in the order added; a child keeping its own state is not activated; the extent only grows.
    items[0]->setWidth(10);
    items[1]->setWidth(10);
    EXPECT_EQ(place({{10, 5}}), "0,0 10,0 20,0 -> 80,20");
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
    EXPECT_EQ(svc.log.dump(), "2: flow::_activate(): Out of Memory\f\n");
    EXPECT_EQ(items[1]->rect.x, 7);
    EXPECT_TRUE(layout->setActive()) << "the layout still becomes active";
    layout->setActive(false, true);
    layout->setActive(true, true);
    EXPECT_EQ(items[1]->rect.x, 40);
    EXPECT_EQ(svc.memory.outstandingBlocks(uiWidget::kBufPool), buffers) << "the array is given back";

    // Children take their size on activation before they are placed.
    svc.gfx.defineSprite("icon", 30, 30);
    stage.root()->setActive(false, true);
    items.clear();
    layout = stage.add<uiFlowLayout>("uiFlowLayout", "icons", {});
    for (int i = 0; i < 3; ++i)
        items.push_back(stage.add<uiVisualWidget>("uiVisualWidget", "icon", {}, layout));
    for (uiWidget* icon : items)
        static_cast<uiVisualWidget*>(icon)->setSprite("icon", 0, 0, false);
    EXPECT_EQ(place({}, {70, 0, 5}), "0,0 35,0 0,30 -> 65,60");
}

TEST_F(FlowLayout, DescriptionKeysMistakesAndExtremeValues) {
    testkit::Screen screen(
        svc, "flow = uiFlowLayout\n{\nflowtype = Vertical\nFlowType = diagonal\nFlowType horizontal\n"
             "height = 60\nminspacex = 4\nminspacey = 1\nspaceevenly = true\nspaceevenly = false\n"
             "child a = uiNonVisualWidget\n{\nwidth = 20\nheight = 30\n}\n"
             "child b = uiNonVisualWidget\n{\nwidth = 35\nheight = 29\n}\n"
             "child c = uiNonVisualWidget\n{\nwidth = 10\nheight = 30\n}\nactive = true\n}\n");
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
        "flow = uiFlowLayout\n{\nFlowType = vertical\nFlowType = horizontal\n"
        "Width = -2147483648\nMinSpaceX = 2147483647\nMinSpaceY = -2147483648\n"
        "SpaceEvenly = true\nchild wide = uiNonVisualWidget\n{\nx2 = 2147483647\n"
        "y2 = -2147483648\n}\nchild b = uiNonVisualWidget\n{\nx = -2147483000\nx2 = 9\n}\n"
        "flags = WF_VISIBLE | WF_ACTIVE\n}\n",
        "hostile.txt");
    ASSERT_TRUE(hostile);
    EXPECT_EQ(static_cast<uiFlowLayout*>(hostile.root())->getFlowType(), uiFlowLayout::HORIZONTAL);
    // Positions stay within a million pixels of 0, with a warning where a description went beyond.
    EXPECT_EQ(svc.log.count(), 3) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(1, "...line 11: x2 = 2147483647 is out of range, 1048576 used\f"));
    for (const char* path : {"", "wide", "b"}) {
        const _uiRect_s& r = (*path ? hostile.find(path) : hostile.root())->rect;
        for (int edge : {r.x, r.y, r.x2, r.y2})
            EXPECT_LE(std::abs(edge), 1 << 20) << path;
    }
}

} // namespace
