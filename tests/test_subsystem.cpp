// The subsystem frame: clock, roles, input routing through the focus stack, modifiers, cursor, overlay.
#include <gtest/gtest.h>
#include "probe_widget.h"
#include "testkit.h"
#include "uisubsystem.h"

namespace {

class Subsystem : public ::testing::Test {
protected:
    testkit::Services svc;
    Journal journal;
    uiSubsystem* ui = nullptr;
    ProbeWidget* root = nullptr;

    void SetUp() override {
        ProbeWidget::journal = &journal;
        ui = new uiSubsystem();
        ui->initialize(nullptr);
        root = probe("root", {0, 0, 800, 600});
        root->setWidgetStates(true, true, true, true);
        journal.lines.clear();
    }
    void TearDown() override {
        delete root;
        ui->shutdown();
        delete ui;
        ProbeWidget::journal = nullptr;
    }
};

TEST_F(Subsystem, ConstructionPublishesItselfAndDestructionFreesEverything) {
    EXPECT_EQ(g_ui, ui);
    EXPECT_EQ(ui->getMousePositionX(), -50);
    EXPECT_EQ(ui->getMousePositionY(), -50);
    ui->pushInputFocusWidget(root);
    ui->pushInputFocusWidget(nullptr);
    delete ui;
    EXPECT_EQ(g_ui, nullptr);
    delete root;
    root = nullptr;
    EXPECT_EQ(svc.memory.outstandingBlocks(), 0) << svc.memory.report();
    ui = new uiSubsystem();
}

TEST_F(Subsystem, FramesStepTheClockAndVisitTheChosenTrees) {
    const unsigned long long start = uiWidget::s_frameNumber;
    ui->setTopLevelWidget(root);
    ui->update(16);
    EXPECT_EQ(uiWidget::s_iDeltaTime, 16u);
    EXPECT_FLOAT_EQ(uiWidget::s_fDeltaTime, 0.016f);
    ui->render(33);
    EXPECT_EQ(uiWidget::s_frameNumber, start + 2);
    EXPECT_EQ(journal.lines,
              (std::vector<std::string>{"root:update 0,0", "root:update 0,0", "root:render 0,0"}));

    // With an active widget and no visible one, render updates the active tree and draws the top level.
    ProbeWidget* other = probe("other", {0, 0, 10, 10});
    other->setWidgetStates(true, true, true, false);
    ui->setActiveWidget(other);
    journal.lines.clear();
    EXPECT_EQ(ui->render(1), 1);
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"other:update 0,0", "root:render 0,0"}));
    ui->setVisibleWidget(other);
    ui->setActiveWidget(nullptr);
    journal.lines.clear();
    ui->render(1);
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"root:update 0,0", "other:render 0,0"}));
    ui->setVisibleWidget(nullptr);
    delete other;
    ui->update(20000001); // beyond float's 24 bits: no rounding before the scaling
    EXPECT_EQ(uiWidget::s_fDeltaTime, 20000.002f);
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
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"focus:input 10,10"}));
    EXPECT_EQ(ui->getInputFocusWidget(), focus);

    // A focus entry holding null sends input back to the top level.
    journal.lines.clear();
    ui->setInputFocusWidget(nullptr);
    ui->inputEvent(UIE_MOUSE_MOVE, 5, 6, 0);
    EXPECT_EQ(journal.lines.front(), "root:input 5,6");
    ui->popInputFocusWidget();
    ui->popInputFocusWidget(); // empty: nothing happens
    EXPECT_EQ(ui->getInputFocusWidget(), nullptr);
    ui->setInputFocusWidget(focus);
    EXPECT_EQ(ui->getInputFocusWidget(), focus);
    ui->popInputFocusWidget();
    EXPECT_EQ(ui->getInputFocusWidget(), nullptr); // set on an empty stack made exactly one entry
}

struct Seen {
    std::vector<std::string> events;
};
bool recordDown(uiWidget* w, void* c, int x, int y) {
    static_cast<Seen*>(c)->events.push_back("down " + std::to_string(x) + "," + std::to_string(y) +
                                            " mouse " + std::to_string(g_ui->getMousePositionX()));
    return true;
}
bool recordUp(uiWidget* w, void* c, int x, int y) {
    static_cast<Seen*>(c)->events.push_back("up");
    return true;
}
bool recordKey(uiWidget* w, void* c, int key) {
    static_cast<Seen*>(c)->events.push_back("key " + std::to_string(key) +
                                            (g_ui->ctrlKeyDown() ? " ctrl" : ""));
    return true;
}
bool recordOver(uiWidget* w, void* c, int x, int y) {
    static_cast<Seen*>(c)->events.push_back("over " + std::to_string(x) + "," + std::to_string(y));
    return true;
}

TEST_F(Subsystem, KeysUseTheStoredPointerAndModifiersFollowKeyEventsOnly) {
    Seen seen;
    _WidgetMap_s map{nullptr, &recordOver, &recordDown, &recordUp, nullptr, &recordKey, nullptr};
    root->assignCallbacks(&map, &seen);
    ui->setTopLevelWidget(root);

    ui->inputEvent(UIE_MOUSE_MOVE, 30, 40, 0);
    EXPECT_EQ(ui->getMousePositionX(), 30);
    ui->inputEvent(UIE_MOUSE_DOWN, 31, 41, 0);
    ui->inputEvent(UIE_MOUSE_DOWN, 31, 41, 0); // button already held: no second press
    ui->inputEvent(UIE_MOUSE_UP, 31, 41, 0);
    ui->inputEvent(UIE_KEY_DOWN, 999, 999, 137);
    EXPECT_TRUE(ui->ctrlKeyDown());
    ui->inputEvent(UIE_CHAR, 0, 0, 137);
    ui->inputEvent(UIE_KEY_UP, 0, 0, 137);
    EXPECT_FALSE(ui->ctrlKeyDown());
    ui->inputEvent(UIE_KEY_DOWN, 0, 0, 138);
    ui->inputEvent(UIE_KEY_DOWN, 0, 0, 136);
    EXPECT_TRUE(ui->shiftKeyDown());
    EXPECT_TRUE(ui->altKeyDown());
    ui->inputEvent(UIE_CHAR, 0, 0, 136);
    EXPECT_TRUE(ui->altKeyDown());
    EXPECT_EQ(seen.events, (std::vector<std::string>{"over 30,40", "over 31,41", "down 31,41 mouse 30",
                                                     "over 31,41", "over 31,41", "up", "over 30,40",
                                                     "key 137 ctrl", "over 30,40", "over 30,40", "over 30,40",
                                                     "key 138", "over 30,40", "key 136", "over 30,40"}));
}

TEST_F(Subsystem, TraceUsesTheFocusWidgetWithoutTranslation) {
    EXPECT_EQ(ui->trace(0, 1, 1, nullptr), nullptr);
    ProbeWidget* panel = probe("panel", {100, 100, 200, 200}, root);
    ui->setTopLevelWidget(root);
    _uiTrace_s* hit = ui->trace(0, 150, 150, "ProbeWidget");
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->widget, root);
    svc.memory.free(9, hit);
    ui->pushInputFocusWidget(panel);
    hit = ui->trace(0, 150, 150, nullptr);
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->widget, panel);
    EXPECT_EQ(hit->x, 150);
    svc.memory.free(9, hit);
}

TEST_F(Subsystem, CustomCursorFollowsTheMouseAndSwapsWithTheSystemCursor) {
    ui->setCustomCursor(nullptr);
    EXPECT_EQ(svc.platform.shows, (std::vector<bool>{true}));

    ProbeWidget* cursor = probe("cursor", {0, 0, 16, 16}, root);
    cursor->setVisible(false, false);
    svc.platform.setCursor(70, 80);
    ui->setCustomCursor(cursor);
    EXPECT_TRUE(cursor->getVisible());
    EXPECT_EQ(cursor->rect.x, 70);
    EXPECT_EQ(cursor->rect.y, 80);
    EXPECT_EQ(svc.platform.shows, (std::vector<bool>{true, false}));

    ui->setTopLevelWidget(root);
    ui->inputEvent(UIE_MOUSE_MOVE, 200, 300, 0);
    EXPECT_EQ(cursor->rect.x, 200);
    EXPECT_EQ(cursor->rect.y, 300);
    EXPECT_EQ(cursor->rect.x2, 16); // size fields stay as they are
    ui->setCustomCursor(nullptr);
    EXPECT_FALSE(cursor->getVisible());
    EXPECT_EQ(svc.platform.shows.back(), true);
}

TEST_F(Subsystem, StatisticsOverlayPrintsEightLinesAtTheTopDepth) {
    svc.gfx.defineFont("stats", 12, 8);
    svc.gfx.maxDepth = 90;
    svc.gfx.stats = {59.996f, 1, 2, 3, 4, 5, 6, 7};
    ui->gfxStatistics(true, nullptr);
    ui->render(16);
    EXPECT_EQ(svc.gfx.count("print"), 0); // no font yet

    ui->gfxStatistics(true, "stats");
    ASSERT_EQ(svc.gfx.count("createFont"), 1);
    svc.gfx.clear();
    ui->render(16);
    ui->update(16); // never draws
    const auto prints = svc.gfx.named("print");
    ASSERT_EQ(prints.size(), 8u);
    const std::vector<std::string> texts{"FPS:   60.00", "TMEM:  1", "CMEM:  2", "MXMEM: 3",
                                         "BLT:   7",     "TEXT:  5", "PSYS:  6", "TOTAL: 4"};
    for (size_t i = 0; i < prints.size(); ++i) {
        EXPECT_EQ(prints[i].text, texts[i]);
        // depth, font, set, justify, x, y, clip height, alpha
        EXPECT_EQ(prints[i].ints[0], 90);
        EXPECT_EQ(prints[i].ints[5], static_cast<int>(12 * i));
    }

    ui->gfxStatistics(false, nullptr);
    svc.gfx.clear();
    ui->render(16);
    ASSERT_EQ(svc.gfx.count("print"), 1);
    EXPECT_EQ(svc.gfx.named("print")[0].text, " ");
    EXPECT_EQ(svc.gfx.count("createFont"), 0); // switching on and off creates no fonts
}

TEST(SubsystemMemory, RunsWithoutALockAndRefusesFocusEntriesWithoutMemory) {
    testkit::Services svc;
    svc.memory.failAt(1); // the subsystem object itself succeeds, its lock does not
    uiSubsystem* ui = new uiSubsystem();
    ASSERT_NE(ui, nullptr);
    EXPECT_TRUE(svc.log.has(2, "uiSubsystem: could not create the subsystem lock: Out of Memory\f"));
    uiWidget* w = uiWidget::allocWidget("w", "uiInputHandler");
    ui->updateLock(true);
    ui->updateLock(false);
    ui->setTopLevelWidget(w);
    ui->render(16);

    svc.memory.failAt(0);
    ui->pushInputFocusWidget(w);
    EXPECT_TRUE(svc.log.has(2, "uiSubsystem::pushInputFocusWidget(w): Out of Memory\f"));
    EXPECT_EQ(ui->getInputFocusWidget(), nullptr);
    svc.memory.failAt(0);
    ui->setInputFocusWidget(w);
    EXPECT_EQ(ui->getInputFocusWidget(), nullptr);
    delete w;
    delete ui;
    EXPECT_EQ(svc.memory.outstandingBlocks(), 0);

    svc.memory.failAt(0);
    EXPECT_EQ(new uiSubsystem(), nullptr); // no memory for the subsystem itself: new yields null
}

} // namespace
