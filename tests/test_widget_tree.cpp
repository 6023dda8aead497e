// The widget tree: ownership, coordinates, frame recursions, states and their hooks; input delivery (the
// widget, then children newest first, then its global-input-focus widgets), callbacks, panned sounds.
#include <gtest/gtest.h>
#include <algorithm>
#include "testkit.h"

namespace {

using testkit::ProbeWidget, testkit::probe;

class WidgetTree : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Journal journal;
    testkit::CallbackLog calls;
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
    // A root-coordinates widget starts from (0, 0), and its children's basis stops at it.
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

using WidgetInput = WidgetTree;

TEST_F(WidgetInput, CallbacksFollowTheEventKindAndTheBoundsOnlyInInputHandlers) {
    uiWidget* plain = uiWidget::allocWidget("plain", "uiNonVisualWidget");
    uiWidget* w = uiWidget::allocWidget("w", "uiInputHandler");
    for (uiWidget* widget : {plain, w}) {
        widget->rect = {10, 10, 20, 20};
        widget->setWidgetStates(true, true, true, false);
        calls.watch(widget);
    }
    EXPECT_FALSE(plain->inputEvent(UIE_MOUSE_DOWN, 12, 13, 0, false, false)); // never calls callbacks
    const std::tuple<e_uiEvent, int, bool> events[] = {
        {UIE_MOUSE_DOWN, 12, false}, {UIE_MOUSE_DOWN, 12, true}, {UIE_MOUSE_UP, 12, true},
        {UIE_KEY_DOWN, 500, false},  {UIE_KEY_UP, 500, false},   {UIE_MOUSE_MOVE, 15, false},
        {UIE_MOUSE_DOWN, 20, false}};
    std::string results;
    for (auto [kind, x, held] : events)
        results += w->inputEvent(kind, x, 13, kind == UIE_KEY_DOWN ? 65 : 66, held, false) ? "1" : "0";
    // A held button is no press, keys need no point inside, move is never called here, (20, 13) is outside.
    EXPECT_EQ(results, "1011100");
    w->inputEvent(UIE_MOUSE_DOWN, 12, 13, 0, false, true); // already handled: no callback
    EXPECT_EQ(calls.events,
              (std::vector<std::string>{"over w 12,13", "down w 12,13", "over w 12,13", "over w 12,13",
                                        "up w 12,13", "keydown w 65", "keyup w 66", "over w 15,13"}));
    delete plain;
    delete w;
}

TEST_F(WidgetInput, TheFirstReceiverThatTakesTheEventEndsTheWalk) {
    ProbeWidget* root = probe("root", {0, 0, 800, 600});
    probe("a", {100, 100, 200, 200}, root);
    ProbeWidget* b = probe("b", {100, 100, 200, 200}, root);
    ProbeWidget* c = probe("c", {100, 100, 200, 200}, root);
    ProbeWidget* d = probe("d", {110, 60, 120, 70}, b);
    d->flags |= WF_ROOT_COORDS; // sees the point plus its parent's position
    root->setWidgetStates(true, true, true, true);
    auto walk = [&] {
        journal.take();
        const bool taken = root->inputEvent(UIE_MOUSE_DOWN, 150, 160, 0, false, false);
        return journal.take() + (taken ? "taken" : "left");
    };
    c->consume = true;
    EXPECT_EQ(walk(), "root:input 150,160 c:input 150,160 taken");
    c->setInputFocus(false, false); // neither sees the event nor lets its subtree see it
    EXPECT_EQ(walk(), "root:input 150,160 b:input 150,160 d:input 150,160 a:input 150,160 left");
    b->consume = true;
    EXPECT_EQ(walk(), "root:input 150,160 b:input 150,160 taken");
    // A widget's mouse-down callback that returns true keeps the event from its children.
    calls.watch(root);
    EXPECT_EQ(walk(), "root:input 150,160 taken");
    // Without focus the handled flag comes back unchanged.
    root->setInputFocus(false, false);
    EXPECT_TRUE(root->inputEvent(UIE_MOUSE_DOWN, 1, 1, 0, false, true));
    EXPECT_FALSE(root->inputEvent(UIE_MOUSE_DOWN, 1, 1, 0, false, false));
    delete root;
}

TEST_F(WidgetInput, GlobalInputFocusWidgetsComeLastWithTheirOwnCoordinates) {
    ProbeWidget* root = probe("root", {0, 0, 800, 600});
    ProbeWidget* left = probe("left", {10, 10, 100, 100}, root);
    ProbeWidget* right = probe("right", {400, 300, 500, 400}, root);
    ProbeWidget* target = probe("target", {5, 5, 50, 50}, right);
    root->setWidgetStates(true, true, true, true);
    left->addGlobalInputFocusWidget("root.right.target");
    left->addGlobalInputFocusWidget("root.missing");
    root->initialize();
    EXPECT_EQ(svc.log.dump(), "2: uiWidget::getWidget(): Unknown name: ^C0000FFroot.missing^c\f\n"
                              "2: addGlobalInputFocusWidget(): unknown widget: ^CFFFF00root.missing^c\f\n");
    target->consume = true;
    journal.take();
    // left does not take the key, so its global widget gets the same point in its own space.
    EXPECT_TRUE(left->inputEvent(UIE_KEY_DOWN, 20, 30, 0, false, false));
    EXPECT_EQ(journal.take(), "left:input 20,30 target:input -380,-270 ");

    // Lists that lead back hand an event on once per widget instead of without end.
    target->consume = false;
    root->addGlobalInputFocusWidget("root");
    target->addGlobalInputFocusWidget("root.left");
    root->initialize();
    EXPECT_FALSE(left->inputEvent(UIE_KEY_DOWN, 20, 30, 0, false, false));
    EXPECT_EQ(journal.take(), "left:input 20,30 target:input -380,-270 left:input 20,30 ");
    EXPECT_FALSE(root->inputEvent(UIE_KEY_DOWN, 0, 0, 0, false, false));
    EXPECT_EQ(std::count(journal.lines.begin(), journal.lines.end(), "root:input 0,0"), 2)
        << "the root sees the event itself and once more through its own list, then no more";
    delete root;
}

// src names x and y, which name d, which names e (two paths); a chain of 100 widgets leads to src. Each key 1
// reaching e sends key 2 from src while src still hands key 1 on: nested events start afresh.
TEST_F(WidgetInput, GlobalListsDeliverAlongEveryPathAndNestedEventsStartAfresh) {
    ProbeWidget* root = probe("root", {0, 0, 800, 600});
    ProbeWidget* src = probe("src", {}, root);
    ProbeWidget* e = probe("e", {}, root);
    probe("x", {}, root)->addGlobalInputFocusWidget("root.d");
    probe("y", {}, root)->addGlobalInputFocusWidget("root.d");
    probe("d", {}, root)->addGlobalInputFocusWidget("root.e");
    src->addGlobalInputFocusWidget("root.x");
    src->addGlobalInputFocusWidget("root.y");
    ProbeWidget* chain = src;
    for (int i = 99; i >= 0; --i) {
        ProbeWidget* next = probe(("c" + std::to_string(i)).c_str(), {}, root);
        next->addGlobalInputFocusWidget(("root." + std::string(chain->name)).c_str());
        chain = next;
    }
    root->setWidgetStates(true, true, true, true);
    root->initialize();
    struct Relay {
        std::vector<int> keys;
        uiWidget* from;
    } relay{{}, src};
    e->keyDownCb = [](uiWidget*, void* client, int key) {
        auto* r = static_cast<Relay*>(client);
        r->keys.push_back(key);
        if (key == 1) r->from->inputEvent(UIE_KEY_DOWN, 0, 0, 2, false, false);
        return false;
    };
    e->cbClient = &relay;
    for (ProbeWidget* start : {src, chain}) {
        relay.keys.clear();
        EXPECT_FALSE(start->inputEvent(UIE_KEY_DOWN, 0, 0, 1, false, false));
        EXPECT_EQ(relay.keys, (std::vector<int>{1, 2, 2, 1, 2, 2})) << start->name;
    }
    delete root;
}

// Pans run from -0.9 at the left to 0.9 at the right of the screen (800 wide), the parent or a given width.
TEST_F(WidgetInput, PannedSoundsFollowTheWidgetsPlaceOnScreen) {
    ProbeWidget* parent = probe("parent", {0, 0, 200, 100});
    ProbeWidget* w = probe("w", {350, 0, 450, 10}, parent);
    // 450 / 800 * 1.8 - 0.9; 1000 of 1000; 350 of the parent's 200, limited; a zero range is centred.
    const std::tuple<int, unsigned, int, float> cases[] = {{350, 0, 0, 0.0f},
                                                           {350, WP_RIGHT, 0, 0.1125f},
                                                           {350, WP_POS | WP_WIDTH, 1000, 0.9f},
                                                           {350, WP_LEFT | WP_PARENT, 0, 0.9f},
                                                           {0, WP_LEFT, 0, -0.9f},
                                                           {0, WP_WIDTH, 0, 0.0f}};
    for (auto [x, mode, width, pan] : cases) {
        w->rect.x = x;
        ASSERT_NE(w->_playWithPan("click", mode, 1.5f, width), nullptr);
        EXPECT_NEAR(svc.sound.plays.back().pan, pan, 1e-6) << mode;
    }
    EXPECT_EQ(svc.sound.plays[0].name, "click");
    EXPECT_FLOAT_EQ(svc.sound.plays[0].freq, 1.5f);
    w->_playWithPan("click", WP_WORLD, 1.0f, 0);
    EXPECT_TRUE(svc.log.has(2, "_playWithPan( WP_WORLD ): Not Implemented\f"));
    svc.sound.silent = true;
    EXPECT_EQ(w->_playWithPan("click", 0, 1.0f, 0), nullptr);
    delete parent;
}

} // namespace
