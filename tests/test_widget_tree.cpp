// The widget tree: ownership, coordinates, frame recursions, states and their hooks, lookup by path.
#include <gtest/gtest.h>
#include "testkit.h"

namespace {

using testkit::ProbeWidget, testkit::probe;

class WidgetTree : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Journal journal;
    static int basis(uiWidget* w) { // where w's coordinates start, as x * 1000 + y
        int x, y;
        w->getBasisCoords(&x, &y);
        return x * 1000 + y;
    }
};

TEST_F(WidgetTree, RecursionsVisitParentThenChildrenNewestFirstAtTheirAbsolutePositions) {
    ProbeWidget* root = probe("root", {7, 9, 800, 600});
    ProbeWidget* parent = probe("parent", {100, 50, 300, 250}, root);
    probe("a", {10, 20, 30, 40}, parent);
    probe("b", {1, 2, 3, 4}, parent);
    ProbeWidget* c = probe("c", {5, 5, 10, 10}, parent);
    probe("cc", {1, 1, 2, 2}, c);
    root->setWidgetStates(true, true, true, true);
    journal.take();
    root->render(0, 0);
    EXPECT_EQ(journal.take(), "root:render 0,0 parent:render 7,9 c:render 107,59 cc:render 112,64 "
                              "b:render 107,59 a:render 107,59 ");
    // A root-coordinates widget is placed from (0, 0) and hands its own position to its children; the
    // basis of its children stops at it.
    EXPECT_EQ(basis(c), 107059);
    c->flags |= WF_ROOT_COORDS;
    root->update(0, 0);
    EXPECT_EQ(journal.lines[2] + " " + journal.lines[3], "c:update 0,0 cc:update 5,5");
    EXPECT_EQ(basis(c), 0);
    parent->flags |= WF_ROOT_COORDS;
    c->flags &= ~static_cast<unsigned int>(WF_ROOT_COORDS);
    EXPECT_EQ(basis(c), 100050);
    // Active but hidden: updated, not drawn, and the children are cut off with it though still visible.
    parent->setVisible(false, false);
    journal.take();
    root->render(0, 0);
    EXPECT_EQ(journal.take(), "root:render 0,0 ");
    EXPECT_TRUE(c->getVisible());
    // Bounds include the near edges and exclude the far ones.
    c->rect = {-5, 10, 20, 30};
    EXPECT_TRUE(c->testBounds(-5, 10) && c->testBounds(19, 29));
    EXPECT_FALSE(c->testBounds(20, 10) || c->testBounds(-5, 30));
    delete root;
}

TEST_F(WidgetTree, StateHooksFireOnlyOnRealChangesAndRecursionsSkipDialogsAndOverriddenSubtrees) {
    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    probe("plain", {0, 0, 1, 1}, root);
    ProbeWidget* dialog = probe("dialog", {0, 0, 1, 1}, root);
    dialog->dialog = true;
    ProbeWidget* keeper = probe("keeper", {0, 0, 1, 1}, root);
    keeper->overrideVisible(true);
    ProbeWidget* grandchild = probe("grandchild", {0, 0, 1, 1}, keeper);
    root->setVisible(true, false);
    root->setVisible(true, false);
    root->setActive(true, false);
    root->setActive(false, false);
    root->setActive(false, false);
    root->setInputFocus(true, false);
    root->setInputFocus(false, false);
    EXPECT_EQ(journal.take(), "root:show root:activate root:deactivate root:gain root:lose ");
    root->setVisible(true, true); // root itself unchanged, the recursion still runs
    EXPECT_EQ(journal.take(), "plain:show ");
    EXPECT_FALSE(dialog->getVisible() || keeper->getVisible() || grandchild->getVisible());
    root->setWidgetStates(false, true, true, true);
    EXPECT_EQ(journal.take(), "root:hide plain:hide root:activate keeper:activate grandchild:activate "
                              "plain:activate root:gain keeper:gain grandchild:gain plain:gain ");
    // A focus veto refuses before any hook or recursion; losing focus is never vetoed.
    int asked = 0;
    root->setInputFocus(false, true);
    journal.take();
    root->inputFocusCb([](uiWidget*, void* c) { return ++*static_cast<int*>(c) < 0; }, &asked); // refuses
    root->setInputFocus(true, true);
    EXPECT_FALSE(root->getInputFocus() || grandchild->getInputFocus());
    EXPECT_TRUE(journal.lines.empty());
    root->flags |= WF_INPUT_FOCUS;
    root->setInputFocus(false, false);
    EXPECT_FALSE(root->getInputFocus());
    EXPECT_EQ(asked, 1);
    delete root;
}

TEST_F(WidgetTree, AttachDetachDepthsAndDestruction) {
    const long long before = svc.memory.outstandingBlocks();
    ProbeWidget* root = probe("root", {0, 0, 1, 1});
    root->setWidgetStates(false, true, true, false);
    ProbeWidget* a = probe("a", {0, 0, 1, 1});
    root->addChild(a, true); // inherits the states
    EXPECT_EQ(a->flags & 7u, unsigned(WF_ACTIVE | WF_INPUT_FOCUS));
    ProbeWidget* b = probe("b", {0, 0, 1, 1}, root);
    a->detachFromParent();
    a->detachFromParent(); // no parent: nothing happens
    EXPECT_TRUE(!a->getParent() && root->getChildren()->widget == b && !root->getChildren()->next);
    // A parent pointer whose parent does not list the widget: reported, nothing changes.
    a->claimParent(root);
    a->detachFromParent();
    EXPECT_EQ(a->getParent(), root);
    a->claimParent(nullptr);
    // A failed allocation leaves the tree as it was; a widget without memory is never constructed.
    svc.memory.failAt(0);
    root->addChild(a, true);
    EXPECT_EQ(a->getParent(), nullptr);
    svc.memory.failAt(0);
    EXPECT_EQ(new ProbeWidget(), nullptr);
    EXPECT_EQ(svc.log.dump(), "2: Parent[root] child[a] mismatch detected on detachFromParent()\f\n"
                              "2: root::addChild(a): Out of Memory\f\n");
    delete a;
    // Depth names resolve by table and by parent.
    uiWidget::defineDepth("hud", 40);
    uiWidget::defineDepth("x", 96);
    EXPECT_EQ(uiWidget::s_getDepthValue("7") * 1000 + uiWidget::s_getDepthValue("HUD"), 7040);
    EXPECT_STREQ(uiWidget::s_getDepthName(31), "31");
    EXPECT_EQ(uiWidget::s_getDepthValue("x"), 96);
    root->setDepth("hud");
    b->setDepth("#PARENT");
    EXPECT_EQ(b->getDepth(), 40u);
    root->setDepth("#parent");
    EXPECT_EQ(root->getDepth(), 0u);
    EXPECT_TRUE(svc.log.has(1, "Unknown depth value: x\f"));
    EXPECT_TRUE(svc.log.has(1, "Depth #parent invalid for top-level widget.\f"));
    // Destroying a root destroys each widget once and frees everything.
    probe("c", {0, 0, 1, 1}, b);
    probe("d", {0, 0, 1, 1}, root);
    root->addGlobalInputFocusWidget("root.d");
    root->initialize();
    journal.take();
    delete root;
    EXPECT_EQ(journal.take(), "root:destroy d:destroy b:destroy c:destroy ");
    EXPECT_EQ(svc.memory.outstandingBlocks(), before);
}

} // namespace
