// The flow layout: rows and columns placed on activation, evenly spread rows, growth of the layout's
// rectangle, and a pass without memory.
#include <gtest/gtest.h>
#include <cstdlib>
#include <vector>
#include "exercise.h"
#include "screen.h"
#include "testkit.h"
#include "uiflowlayout.h"
#include "uivisualwidget.h"

namespace {

using Ints = std::vector<int>;

class FlowLayout : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiFlowLayout* layout = testkit::Stage::make<uiFlowLayout>("uiFlowLayout", "flow");
    std::vector<uiWidget*> items;

    void TearDown() override {
        if (!layout->getParent()) delete layout;
    }
    // Children of the given sizes, added in this order, each at a position the pass must overwrite.
    void children(std::vector<std::pair<int, int>> sizes) {
        for (auto [w, h] : sizes)
            items.push_back(stage.add("uiNonVisualWidget", "item", {7, 7, 7 + w, 7 + h}, layout));
    }
    // Attaching the layout to the active screen activates it: the pass runs.
    void show() { stage.attach(layout); }
    Ints edges(int _uiRect_s::*edge) const {
        Ints out;
        for (uiWidget* w : items)
            out.push_back(w->rect.*edge);
        return out;
    }
    Ints xs() const { return edges(&_uiRect_s::x); }
    Ints ys() const { return edges(&_uiRect_s::y); }
};

TEST_F(FlowLayout, RowsBreakBeforeAChildWouldPassTheWidth) {
    layout->width = 100;
    layout->minSpaceX = 10;
    layout->minSpaceY = 5;
    children({{40, 20}, {40, 30}, {40, 10}});
    show();
    EXPECT_EQ(xs(), (Ints{0, 50, 0}));
    EXPECT_EQ(ys(), (Ints{0, 0, 35}));
    EXPECT_EQ(items[1]->rect.x2, 90) << "the size moves along";
    EXPECT_EQ(items[1]->rect.y2, 30);
    EXPECT_EQ(layout->rect.x2, 90);
    EXPECT_EQ(layout->rect.y2, 45);
    EXPECT_TRUE(items[0]->setActive()) << "children are activated too";
}

TEST_F(FlowLayout, AZeroWidthNeverBreaksAndAWideFirstChildKeepsItsRow) {
    children({{40, 20}, {40, 30}, {40, 10}});
    layout->minSpaceX = 10;
    show();
    EXPECT_EQ(xs(), (Ints{0, 50, 100}));
    EXPECT_EQ(ys(), (Ints{0, 0, 0}));

    stage.root()->setActive(false, true);
    items[0]->setWidth(150);
    layout->width = 100;
    stage.root()->setActive(true, true);
    EXPECT_EQ(xs(), (Ints{0, 0, 50}));
    EXPECT_EQ(ys(), (Ints{0, 20, 20}));
    EXPECT_EQ(layout->rect.x2, 150);
}

TEST_F(FlowLayout, ColumnsBreakBeforeAChildWouldPassTheHeight) {
    layout->setFlowType(uiFlowLayout::VERTICAL);
    layout->height = 60;
    layout->minSpaceX = 4;
    children({{20, 30}, {35, 30}, {10, 30}});
    show();
    EXPECT_EQ(xs(), (Ints{0, 0, 39}));
    EXPECT_EQ(ys(), (Ints{0, 30, 0}));
    EXPECT_EQ(layout->rect.x2, 49);
    EXPECT_EQ(layout->rect.y2, 60);
}

TEST_F(FlowLayout, EvenSpacingSpreadsEachRowOverTheWidth) {
    layout->width = 100;
    layout->spaceEvenly = true;
    children({{20, 10}, {20, 10}, {20, 10}});
    show();
    EXPECT_EQ(xs(), (Ints{0, 40, 80}));
    EXPECT_EQ(layout->spaceX, 20);

    // The minimum gaps count towards the row's total.
    stage.root()->setActive(false, true);
    layout->minSpaceX = 10;
    stage.root()->setActive(true, true);
    EXPECT_EQ(xs(), (Ints{0, 30, 60}));
}

TEST_F(FlowLayout, EvenSpacingGathersRowsStrictlyBelowTheWidth) {
    layout->width = 100;
    layout->minSpaceY = 2;
    layout->spaceEvenly = true;
    children({{50, 10}, {40, 10}, {30, 10}, {100, 10}, {60, 10}});
    show();
    // 50 + 40 joins (90 < 100) and is spread with gap 10; 30 + 100 does not join, so 30 forms a row of
    // its own and keeps that gap; 100 and 60 each form one too.
    EXPECT_EQ(xs(), (Ints{0, 60, 0, 0, 0}));
    EXPECT_EQ(ys(), (Ints{0, 0, 12, 24, 36}));
    EXPECT_EQ(layout->spaceX, 10);
}

TEST_F(FlowLayout, ARowThatWouldJustReachTheWidthIsNotGatheredButStillFits) {
    layout->width = 100;
    layout->minSpaceX = 10;
    layout->spaceEvenly = true;
    children({{45, 10}, {45, 10}});
    show();
    // 45 + (45 + 10) reaches 100, so each child is a row of its own with the minimum gap; placing does
    // not break before a child that ends exactly at the width.
    EXPECT_EQ(xs(), (Ints{0, 55}));
    EXPECT_EQ(ys(), (Ints{0, 0}));
}

TEST_F(FlowLayout, PlacesOnlyWhenItBecomesActiveAndNeverShrinks) {
    layout->width = 100;
    children({{40, 20}, {40, 20}});
    show();
    EXPECT_EQ(xs(), (Ints{0, 40}));

    items[1]->rect.x = 7;
    layout->setActive(true, true);
    EXPECT_EQ(items[1]->rect.x, 7) << "an active layout does not place again";

    // Deactivated and activated again: placed again, in the order the children were added.
    children({{10, 5}});
    items[0]->setWidth(10);
    items[1]->setWidth(10);
    layout->setActive(false, true);
    layout->setActive(true, true);
    EXPECT_EQ(xs(), (Ints{0, 10, 20}));
    EXPECT_EQ(layout->rect.x2, 80) << "the layout's rectangle only grows";
    EXPECT_TRUE(items[2]->setActive());

    // A child that keeps its own state is placed but not activated.
    layout->setActive(false, true);
    items[2]->overrideActive(true);
    layout->setActive(true, true);
    EXPECT_FALSE(items[2]->setActive());
    EXPECT_EQ(items[2]->rect.x, 20);
}

TEST_F(FlowLayout, ChildrenTakeTheirSizeOnActivationBeforeTheyArePlaced) {
    svc.gfx.defineSprite("icon", 30, 30);
    layout->width = 70;
    layout->minSpaceX = 5;
    for (int i = 0; i < 3; ++i) {
        auto* icon = stage.add<uiVisualWidget>("uiVisualWidget", "icon", {0, 0, 0, 0}, layout);
        icon->setSprite("icon", 0, 0, false);
        items.push_back(icon);
    }
    show();
    EXPECT_EQ(xs(), (Ints{0, 35, 0}));
    EXPECT_EQ(ys(), (Ints{0, 0, 30}));
}

TEST_F(FlowLayout, APassWithoutMemoryLeavesTheChildrenWhereTheyAre) {
    layout->width = 100;
    children({{40, 20}, {40, 20}});
    show();
    layout->setActive(false, true);
    for (uiWidget* item : items)
        item->rect = {7, 7, 47, 27};
    const long long buffers = svc.memory.outstandingBlocks(uiWidget::kBufPool);

    svc.memory.failAt(0);
    layout->setActive(true, true);
    EXPECT_TRUE(svc.memory.failed());
    EXPECT_TRUE(svc.log.has(2, "flow::_activate(): Out of Memory\f")) << svc.log.dump();
    EXPECT_EQ(xs(), (Ints{7, 7}));
    EXPECT_TRUE(layout->setActive()) << "the layout still becomes active";

    layout->setActive(false, true);
    layout->setActive(true, true);
    EXPECT_EQ(xs(), (Ints{0, 40}));
    EXPECT_EQ(svc.memory.outstandingBlocks(uiWidget::kBufPool), buffers) << "the array is given back";
}

TEST_F(FlowLayout, AnEmptyLayoutAllocatesNothing) {
    show();
    layout->setActive(false, true);
    const long long before = svc.memory.allocations();
    layout->setActive(true, true);
    EXPECT_EQ(svc.memory.allocations(), before);
    EXPECT_EQ(layout->rect.x2, 0);
}

TEST_F(FlowLayout, CopiesTakeTheSettingsButNeitherChildrenNorParent) {
    layout->width = 100;
    layout->spaceEvenly = true;
    children({{40, 20}});
    show();
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

TEST_F(FlowLayout, DescriptionKeysAndMistakes) {
    testkit::Screen screen(
        svc, "flow = uiFlowLayout\n{\n"
             "    flowtype = Vertical\n"
             "    FlowType = diagonal\n"
             "    FlowType horizontal\n"
             "    height = 60\n"
             "    minspacex = 4\n"
             "    minspacey = 1\n"
             "    spaceevenly = true\n"
             "    spaceevenly = false\n"
             "    child a = uiNonVisualWidget\n    {\n        width = 20\n        height = 30\n    }\n"
             "    child b = uiNonVisualWidget\n    {\n        width = 35\n        height = 29\n    }\n"
             "    child c = uiNonVisualWidget\n    {\n        width = 10\n        height = 30\n    }\n"
             "    active = true\n"
             "}\n");
    auto* flow = static_cast<uiFlowLayout*>(screen.root());
    ASSERT_NE(flow, nullptr);
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00flowtype = vertical | horizontal^c\"\f"), 2)
        << svc.log.dump();
    EXPECT_EQ(svc.log.count(), 2);
    EXPECT_EQ(flow->getFlowType(), uiFlowLayout::VERTICAL);
    EXPECT_FALSE(flow->spaceEvenly);
    // A column of a and b (30 + 1 + 29 = 60 fits), then c in the next column, 4 past b's width.
    EXPECT_EQ(screen.find("b")->rect.y, 31);
    EXPECT_EQ(screen.find("c")->rect.x, 39);
    EXPECT_EQ(screen.find("c")->rect.y, 0);
}

TEST_F(FlowLayout, ExtremeValuesInDescriptionsStayDefined) {
    testkit::Screen screen(svc, "hostile = uiNonVisualWidget\n{\n"
                                "    child flow = uiFlowLayout\n    {\n"
                                "        Width = -2147483648\n"
                                "        MinSpaceX = 2147483647\n"
                                "        MinSpaceY = -2147483648\n"
                                "        SpaceEvenly = true\n"
                                "        child wide = uiNonVisualWidget\n        {\n"
                                "            x2 = 2147483647\n"
                                "            y2 = -2147483648\n"
                                "        }\n"
                                "        child label = uiTextWidget\n        {\n"
                                "            font = big\n"
                                "            padding = 2147483647\n"
                                "            justify = CENTER\n"
                                "            text = \"abc\"\n"
                                "        }\n"
                                "        child field = uiEntryWidget\n        {\n"
                                "            font = big\n"
                                "            cursor = caret\n"
                                "            justify = CENTER\n"
                                "            entryrectx = 2147483647\n"
                                "            entryrecty = -2147483648\n"
                                "            padding = -2147483648\n"
                                "            text = \"xyz\"\n"
                                "        }\n"
                                "    }\n"
                                "    child far = uiEntryWidget\n    {\n"
                                "        x = 2147483000\n"
                                "        y = -2147483000\n"
                                "        font = big\n"
                                "        cursor = caret\n"
                                "        entryrectx = 2147483647\n"
                                "        padding = 2147483647\n"
                                "        text = \"abc\"\n"
                                "    }\n"
                                "    child right = uiTextWidget\n    {\n"
                                "        font = big\n"
                                "        padding = -2147483648\n"
                                "        justify = RIGHT\n"
                                "        text = \"abc\"\n"
                                "    }\n"
                                "    flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS\n"
                                "}\n");
    ASSERT_TRUE(screen);
    // Placing, drawing, typing and measuring run without overflowing (the sanitizer build checks).
    stage.ui().setTopLevelWidget(screen.root());
    testkit::exercise(stage.ui());
    stage.ui().setTopLevelWidget(stage.root());
    // Widget positions stay within a million pixels of 0: values beyond are brought to that edge, with a
    // warning where a description gave them.
    EXPECT_EQ(svc.log.count(), 4) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(1, "...line 11: x2 = 2147483647 is out of range, 1048576 used\f"));
    EXPECT_TRUE(svc.log.has(1, "...line 35: y = -2147483000 is out of range, -1048576 used\f"));
    for (const char* path : {"flow", "flow.wide", "flow.label", "flow.field", "far", "right"}) {
        const _uiRect_s& r = screen.find(path)->rect;
        for (int edge : {r.x, r.y, r.x2, r.y2})
            EXPECT_LE(std::abs(edge), 1 << 20) << path;
    }
}

} // namespace
