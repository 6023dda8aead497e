// The widget tree: ownership, coordinates, frame recursions, states and their hooks, lookup by path.
#include <gtest/gtest.h>
#include "probe_widget.h"
#include "testkit.h"
#include "uisubsystem.h"

namespace {

class WidgetTree : public ::testing::Test {
protected:
    testkit::Services svc;
    Journal journal;
    void SetUp() override { ProbeWidget::journal = &journal; }
    void TearDown() override { ProbeWidget::journal = nullptr; }
};

TEST_F(WidgetTree, RecursionsVisitParentThenChildrenNewestFirstAtTheirAbsolutePositions) {
    ProbeWidget* root = probe("root", {0, 0, 800, 600});
    ProbeWidget* parent = probe("parent", {100, 50, 300, 250}, root);
    probe("a", {10, 20, 30, 40}, parent);
    probe("b", {1, 2, 3, 4}, parent);
    ProbeWidget* c = probe("c", {5, 5, 10, 10}, parent);
    probe("cc", {1, 1, 2, 2}, c);
    root->setWidgetStates(true, true, true, true);
    journal.lines.clear();

    root->render(0, 0);
    EXPECT_EQ(journal.lines,
              (std::vector<std::string>{"root:render 0,0", "parent:render 0,0", "c:render 100,50",
                                        "cc:render 105,55", "b:render 100,50", "a:render 100,50"}));

    // A root-coordinates child is placed from (0, 0) and hands its own position to its children.
    journal.lines.clear();
    c->flags |= WF_ROOT_COORDS;
    root->update(0, 0);
    EXPECT_EQ(journal.lines[2], "c:update 0,0");
    EXPECT_EQ(journal.lines[3], "cc:update 5,5");

    // Active but hidden: updated, not drawn, and the children are cut off with it though still visible.
    parent->setVisible(false, false);
    journal.lines.clear();
    root->render(0, 0);
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"root:render 0,0"}));
    EXPECT_TRUE(c->getVisible());
    delete root;
}

TEST_F(WidgetTree, BasisCoordinatesStopAtARootCoordinatesAncestorAndBoundsExcludeFarEdges) {
    ProbeWidget* root = probe("root", {7, 9, 800, 600});
    ProbeWidget* parent = probe("parent", {100, 50, 300, 250}, root);
    ProbeWidget* child = probe("child", {10, 20, 30, 40}, parent);
    int x, y;
    child->getBasisCoords(&x, &y);
    EXPECT_EQ(x, 107);
    EXPECT_EQ(y, 59);
    parent->flags |= WF_ROOT_COORDS;
    child->getBasisCoords(&x, &y);
    EXPECT_EQ(x, 100);
    EXPECT_EQ(y, 50);
    child->flags |= WF_ROOT_COORDS;
    child->getBasisCoords(&x, &y);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 0);

    child->rect = {-5, 10, 20, 30};
    EXPECT_TRUE(child->testBounds(-5, 10));
    EXPECT_TRUE(child->testBounds(19, 29));
    EXPECT_FALSE(child->testBounds(20, 10));
    EXPECT_FALSE(child->testBounds(-5, 30));
    delete root;
}

TEST_F(WidgetTree, StateHooksFireOnlyOnRealChanges) {
    ProbeWidget* w = probe("w", {0, 0, 1, 1});
    w->setVisible(true, false);
    w->setVisible(true, false);
    w->setActive(true, false);
    w->setActive(false, false);
    w->setActive(false, false);
    w->setInputFocus(true, false);
    w->setInputFocus(false, false);
    EXPECT_EQ(journal.lines,
              (std::vector<std::string>{"w:show", "w:activate", "w:deactivate", "w:gain", "w:lose"}));
    EXPECT_TRUE(w->getVisible());
    EXPECT_FALSE(w->setActive());
    delete w;
}

TEST_F(WidgetTree, RecursiveStateChangesSkipDialogsAndOverriddenSubtreesButRecurseEvenWithoutOwnChange) {
    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    probe("plain", {0, 0, 1, 1}, root);
    ProbeWidget* dialog = probe("dialog", {0, 0, 1, 1}, root);
    dialog->dialog = true;
    ProbeWidget* keeper = probe("keeper", {0, 0, 1, 1}, root);
    keeper->overrideVisible(true);
    ProbeWidget* grandchild = probe("grandchild", {0, 0, 1, 1}, keeper);

    root->setVisible(true, false);
    journal.lines.clear();
    root->setVisible(true, true); // root itself unchanged, the recursion still runs
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"plain:show"}));
    EXPECT_FALSE(dialog->getVisible());
    EXPECT_FALSE(keeper->getVisible());
    EXPECT_FALSE(grandchild->getVisible());

    journal.lines.clear();
    root->setWidgetStates(false, true, true, true);
    EXPECT_EQ(journal.lines,
              (std::vector<std::string>{"root:hide", "plain:hide", "root:activate", "keeper:activate",
                                        "grandchild:activate", "plain:activate", "root:gain", "keeper:gain",
                                        "grandchild:gain", "plain:gain"}));
    delete root;
}

bool refuse(uiWidget*, void* client) {
    ++*static_cast<int*>(client);
    return false;
}

TEST_F(WidgetTree, FocusVetoRefusesBeforeAnyHookOrRecursion) {
    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    ProbeWidget* child = probe("child", {0, 0, 1, 1}, root);
    int asked = 0;
    root->inputFocusCb(&refuse, &asked);
    root->setInputFocus(true, true);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(root->getInputFocus());
    EXPECT_FALSE(child->getInputFocus());
    EXPECT_TRUE(journal.lines.empty());
    // Losing focus is never vetoed.
    root->flags |= WF_INPUT_FOCUS;
    root->setInputFocus(false, false);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(root->getInputFocus());
    delete root;
}

TEST_F(WidgetTree, PathLookupNamesEveryLevelAndLogsOnlyTopLevelFailures) {
    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    ProbeWidget* panel = probe("panel", {0, 0, 1, 1}, root);
    ProbeWidget* ok = probe("ok", {0, 0, 1, 1}, panel);
    probe("ok", {0, 0, 1, 1}, root); // same name on another level is not confused with panel.ok

    EXPECT_EQ(root->getWidget("ROOT.Panel.OK", 0, true), ok);
    EXPECT_EQ(root->getChildWidget("panel.ok", 0, true), ok);
    EXPECT_EQ(root->getWidget("root", 0, true), root);
    EXPECT_EQ(svc.log.count(), 0);

    EXPECT_EQ(root->getWidget("panel.ok", 0, true), nullptr);
    EXPECT_EQ(svc.log.count(), 1);
    EXPECT_TRUE(svc.log.has(2, "uiWidget::getWidget(): Unknown name: ^C0000FFpanel.ok^c\f"));
    EXPECT_EQ(root->getWidget("root.nothing", 0, false), nullptr);
    EXPECT_EQ(root->getChildWidget("nothing", 0, true), nullptr);
    EXPECT_TRUE(svc.log.has(2, "uiWidget::getWidget(): Unknown name: ^C0000FFnothing^c\f"));
    EXPECT_EQ(svc.log.count(), 2);
    EXPECT_EQ(root->getWidget("root.panel.ok", 1, true), ok);
    delete root;
}

TEST_F(WidgetTree, AttachCanInheritStatesAndDetachReportsAMismatchedParent) {
    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    root->setWidgetStates(true, false, true, false);
    ProbeWidget* a = probe("a", {0, 0, 1, 1});
    root->addChild(a, true);
    EXPECT_EQ(a->flags & (WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS), unsigned(WF_VISIBLE | WF_INPUT_FOCUS));
    ProbeWidget* b = probe("b", {0, 0, 1, 1}, root);
    a->detachFromParent();
    EXPECT_EQ(a->getParent(), nullptr);
    ASSERT_NE(root->getChildren(), nullptr);
    EXPECT_EQ(root->getChildren()->widget, b);
    EXPECT_EQ(root->getChildren()->next, nullptr);
    a->detachFromParent(); // no parent: nothing happens
    EXPECT_EQ(svc.log.count(), 0);

    // A parent pointer whose parent does not list the widget: reported, nothing changes.
    a->claimParent(root);
    a->detachFromParent();
    EXPECT_TRUE(svc.log.has(2, "Parent[root] child[a] mismatch detected on detachFromParent()\f"));
    EXPECT_EQ(a->getParent(), root);
    EXPECT_EQ(root->getChildren()->widget, b);
    a->claimParent(nullptr);
    delete a;
    delete root;
}

TEST_F(WidgetTree, DestroyingARootDestroysEachWidgetOnceAndFreesEverything) {
    const long long before = svc.memory.outstandingBlocks();
    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    ProbeWidget* a = probe("a", {0, 0, 1, 1}, root);
    probe("b", {0, 0, 1, 1}, a);
    probe("c", {0, 0, 1, 1}, root);
    root->addGlobalInputFocusWidget("root.c");
    root->initialize();
    delete root;
    EXPECT_EQ(journal.lines,
              (std::vector<std::string>{"root:destroy", "c:destroy", "a:destroy", "b:destroy"}));
    EXPECT_EQ(svc.memory.outstandingBlocks(), before);
    EXPECT_EQ(svc.memory.outstandingBlocks(9), 0);
}

TEST_F(WidgetTree, FailedAllocationsLeaveTheTreeConsistent) {
    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    ProbeWidget* child = probe("child", {0, 0, 1, 1});
    svc.memory.failAt(0);
    root->addChild(child, true);
    EXPECT_TRUE(svc.log.has(2, "root::addChild(child): Out of Memory\f"));
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(root->getChildren(), nullptr);

    svc.memory.failAt(0);
    EXPECT_EQ(new ProbeWidget(), nullptr); // a widget without memory is never constructed
    EXPECT_TRUE(journal.lines.empty());
    delete child;
    delete root;
    EXPECT_EQ(svc.memory.outstandingBlocks(), 0);
}

TEST_F(WidgetTree, DepthNamesResolveByTableAndParent) {
    EXPECT_EQ(uiWidget::s_getDepthValue("7"), 7);
    EXPECT_STREQ(uiWidget::s_getDepthName(31), "31");
    uiWidget::defineDepth("hud", 40);
    EXPECT_EQ(uiWidget::s_getDepthValue("HUD"), 40);
    uiWidget::defineDepth("x", 96);
    EXPECT_EQ(svc.log.count(), 0);
    EXPECT_EQ(uiWidget::s_getDepthValue("x"), 96);
    EXPECT_TRUE(svc.log.has(1, "Unknown depth value: x\f"));

    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    ProbeWidget* child = probe("child", {0, 0, 1, 1}, root);
    root->setDepth("hud");
    child->setDepth("#PARENT");
    EXPECT_EQ(child->getDepth(), 40u);
    root->setDepth("#parent");
    EXPECT_EQ(root->getDepth(), 0u);
    EXPECT_TRUE(svc.log.has(1, "Depth #parent invalid for top-level widget.\f"));
    delete root;
}

TEST_F(WidgetTree, TraceFindsTheFirstWidgetOfTheWantedTypeInPreOrder) {
    ProbeWidget* root = probe("root", {0, 0, 800, 600});
    ProbeWidget* panel = probe("panel", {100, 100, 300, 300}, root);
    uiWidget* handler = uiWidget::allocWidget("button", "uiInputHandler");
    handler->rect = {10, 10, 50, 50};
    panel->addChild(handler, false);

    _uiTrace_s* hit = root->trace(0, 120, 130, nullptr);
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->widget, root);
    svc.memory.free(9, hit);

    hit = root->trace(0, 120, 130, "uiInputHandler");
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->widget, handler);
    EXPECT_EQ(hit->x, 20); // the point as the handler's own _trace saw it
    EXPECT_EQ(hit->y, 30);
    svc.memory.free(9, hit);

    EXPECT_EQ(root->trace(0, 100 + 50, 130, "uiInputHandler"), nullptr); // x2 is outside
    delete root;
}

} // namespace
