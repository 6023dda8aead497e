// The subsystem frame: clock, roles, input routing through the focus stack, modifiers, cursor and the
// statistics overlay.
#include <gtest/gtest.h>
#include "testkit.h"
using testkit::Journal, testkit::ProbeWidget, testkit::probe;

namespace {

class Subsystem : public ::testing::Test {
protected:
    testkit::Services svc;
    Journal journal;
    uiSubsystem* ui = new uiSubsystem();
    ProbeWidget* root = probe("root", {0, 0, 800, 600});

    void SetUp() override {
        ui->initialize(nullptr);
        root->setWidgetStates(true, true, true, true);
        journal.lines.clear(); // records from here on
    }
    void TearDown() override { // the subsystem's destruction alone frees what it holds
        delete root;
        delete ui;
        EXPECT_EQ(g_ui, nullptr);
        EXPECT_EQ(svc.memory.outstandingBlocks(), 0) << svc.memory.report();
    }
};

TEST_F(Subsystem, FramesStepTheClockAndVisitTheChosenTrees) {
    const unsigned long long start = uiWidget::s_frameNumber;
    ui->setTopLevelWidget(root);
    ui->update(16);
    EXPECT_FLOAT_EQ(uiWidget::s_fDeltaTime, 0.016f);
    ui->render(33);
    EXPECT_EQ(uiWidget::s_iDeltaTime, 33u);
    EXPECT_EQ(uiWidget::s_frameNumber, start + 2);
    // With an active widget and no visible one, render updates the active tree and draws the top level.
    ProbeWidget* other = probe("other", {0, 0, 10, 10});
    other->setWidgetStates(true, true, true, false);
    ui->setActiveWidget(other);
    EXPECT_EQ(ui->render(1), 1);
    ui->setVisibleWidget(other);
    ui->setActiveWidget(nullptr);
    ui->render(1);
    EXPECT_EQ(journal.text(),
              "root:update 0,0 root:update 0,0 root:render 0,0 other:show other:activate other:gain "
              "other:update 0,0 root:render 0,0 root:update 0,0 other:render 0,0 ");
    ui->setVisibleWidget(nullptr);
    delete other;
    ui->update(20000001); // beyond float's 24 bits: no rounding before the scaling
    EXPECT_EQ(uiWidget::s_fDeltaTime, 20000.002f);
    EXPECT_EQ(ui->getMousePositionX() * 1000 + ui->getMousePositionY(), -50050);
    ui->pushInputFocusWidget(root);
    ui->pushInputFocusWidget(nullptr);
}

TEST_F(Subsystem, InputGoesToTheFocusWidgetInItsOwnSpaceElseToTheTopLevel) {
    ProbeWidget* parent = probe("parent", {100, 50, 300, 250}, root);
    ProbeWidget* focus = probe("focus", {0, 0, 50, 50}, parent);
    parent->setWidgetStates(true, true, true, true);
    journal.lines.clear();
    ui->inputEvent(UIE_MOUSE_DOWN, 110, 60, 0); // dropped: no focus and no top level
    EXPECT_TRUE(journal.lines.empty());
    ui->setTopLevelWidget(root);
    ui->inputEvent(UIE_MOUSE_DOWN, 110, 60, 0);
    EXPECT_EQ(journal.lines.front(), "root:input 110,60");
    journal.lines.clear();
    ui->pushInputFocusWidget(focus);
    ui->inputEvent(UIE_MOUSE_UP, 110, 60, 0);
    EXPECT_EQ(journal.text(), "focus:input 10,10 ");
    // A focus entry holding null sends input back to the top level.
    journal.lines.clear();
    ui->setInputFocusWidget(nullptr);
    ui->inputEvent(UIE_MOUSE_MOVE, 5, 6, 0);
    EXPECT_EQ(journal.lines.front(), "root:input 5,6");
    ui->popInputFocusWidget();
    ui->popInputFocusWidget(); // empty: nothing happens
    ui->setInputFocusWidget(focus);
    EXPECT_EQ(ui->getInputFocusWidget(), focus);
    ui->popInputFocusWidget();
    EXPECT_EQ(ui->getInputFocusWidget(), nullptr); // set on an empty stack made exactly one entry

    // Trace uses the focus widget without translation.
    EXPECT_EQ(ui->trace(0, 1, 1, "uiInputHandler"), nullptr);
    ui->pushInputFocusWidget(parent);
    _uiTrace_s* hit = ui->trace(0, 150, 150, nullptr);
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->widget, parent);
    EXPECT_EQ(hit->x, 150);
    svc.memory.free(9, hit);
}

TEST_F(Subsystem, KeysUseTheStoredPointerAndModifiersFollowKeyEventsOnly) {
    static std::string seen; // what the callbacks saw
    _WidgetMap_s map{};
    map.mouseOverCb = [](uiWidget*, void*, int x, int y) {
        seen += "over " + std::to_string(x) + "," + std::to_string(y) + "; ";
        return true;
    };
    map.mouseDownCb = [](uiWidget*, void*, int x, int) {
        seen += "down " + std::to_string(x) + " mouse " + std::to_string(g_ui->getMousePositionX()) + "; ";
        return true;
    };
    map.keyDownCb = [](uiWidget*, void*, int key) {
        seen += "key " + std::to_string(key) + (g_ui->ctrlKeyDown() ? " ctrl" : "") + "; ";
        return true;
    };
    root->assignCallbacks(&map, nullptr);
    ui->setTopLevelWidget(root);
    ui->inputEvent(UIE_MOUSE_MOVE, 30, 40, 0);
    ui->inputEvent(UIE_MOUSE_DOWN, 31, 41, 0);
    ui->inputEvent(UIE_MOUSE_DOWN, 31, 41, 0); // button already held: no second press
    ui->inputEvent(UIE_MOUSE_UP, 31, 41, 0);
    ui->inputEvent(UIE_KEY_DOWN, 999, 999, KEY_CTRL);
    EXPECT_TRUE(ui->ctrlKeyDown() && !ui->altKeyDown() && !ui->shiftKeyDown());
    ui->inputEvent(UIE_CHAR, 0, 0, KEY_CTRL);
    ui->inputEvent(UIE_KEY_UP, 0, 0, KEY_CTRL);
    EXPECT_FALSE(ui->ctrlKeyDown());
    ui->inputEvent(UIE_KEY_DOWN, 0, 0, KEY_SHIFT);
    ui->inputEvent(UIE_KEY_DOWN, 0, 0, KEY_ALT);
    ui->inputEvent(UIE_CHAR, 0, 0, KEY_ALT);
    EXPECT_TRUE(ui->shiftKeyDown() && ui->altKeyDown());
    EXPECT_EQ(seen,
              "over 30,40; over 31,41; down 31 mouse 30; over 31,41; over 31,41; over 30,40; "
              "key 137 ctrl; over 30,40; over 30,40; over 30,40; key 138; over 30,40; key 136; over 30,40; ");
}

TEST_F(Subsystem, CustomCursorFollowsTheMouseAndTheOverlayPrintsEightLinesAtTheTopDepth) {
    ui->setCustomCursor(nullptr);
    ProbeWidget* cursor = probe("cursor", {0, 0, 16, 16}, root);
    cursor->setVisible(false, false);
    svc.platform.setCursor(70, 80);
    ui->setCustomCursor(cursor);
    EXPECT_TRUE(cursor->getVisible());
    EXPECT_EQ(cursor->rect.x * 1000 + cursor->rect.y, 70080);
    ui->setTopLevelWidget(root);
    ui->inputEvent(UIE_MOUSE_MOVE, 200, 300, 0);
    EXPECT_EQ(cursor->rect.x * 1000 + cursor->rect.y, 200300);
    EXPECT_EQ(cursor->rect.x2, 16); // size fields stay as they are
    ui->setCustomCursor(nullptr);
    EXPECT_FALSE(cursor->getVisible());
    EXPECT_EQ(svc.platform.shows, (std::vector<bool>{true, false, true}));

    svc.gfx.defineFont("stats", 12, 8);
    svc.gfx.maxDepth = 90;
    svc.gfx.stats = {59.996f, 1, 2, 3, 4, 5, 6, 7};
    ui->gfxStatistics(true, nullptr);
    EXPECT_TRUE(testkit::renderFrame(svc.gfx, *ui, 16, "print").empty()); // no font yet
    ui->gfxStatistics(true, "stats");
    EXPECT_EQ(svc.gfx.count("createFont"), 1);
    const auto prints = testkit::renderFrame(svc.gfx, *ui, 16, "print");
    ui->update(16); // never draws
    EXPECT_EQ(svc.gfx.texts("print"),
              (std::vector<std::string>{"FPS:   60.00", "TMEM:  1", "CMEM:  2", "MXMEM: 3", "BLT:   7",
                                        "TEXT:  5", "PSYS:  6", "TOTAL: 4"}));
    for (size_t i = 0; i < prints.size(); ++i) // at the left edge, one line below the other
        EXPECT_EQ(prints[i][0] * 1000 + (prints[i][2] | prints[i][3] | prints[i][4]) * 100 + prints[i][5],
                  90000 + 12 * int(i));
    ui->gfxStatistics(false, nullptr);
    EXPECT_EQ(testkit::renderFrame(svc.gfx, *ui, 16, "print").size(), 1u);
    EXPECT_EQ(svc.gfx.texts("print"), std::vector<std::string>{" "});
    EXPECT_EQ(svc.gfx.ints("print").at(0)[5], 0); // on the first line
    EXPECT_EQ(svc.gfx.count("createFont"), 0);    // switching on and off creates no fonts
}

} // namespace
