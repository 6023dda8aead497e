// Input delivery through a widget tree: the widget first, then children newest first, then its
// global-input-focus widgets; callbacks by event kind; panned interface sounds.
#include <gtest/gtest.h>
#include <algorithm>
#include "testkit.h"

namespace {

using testkit::ProbeWidget, testkit::probe;

class WidgetInput : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Journal journal;
    testkit::CallbackLog calls;
};

TEST_F(WidgetInput, CallbacksFollowTheEventKindAndTheBoundsOnlyInInputHandlers) {
    uiWidget* plain = uiWidget::allocWidget("plain", "uiNonVisualWidget");
    uiWidget* w = uiWidget::allocWidget("w", "uiInputHandler");
    _WidgetMap_s map = testkit::CallbackLog::map();
    for (uiWidget* widget : {plain, w}) {
        widget->rect = {10, 10, 20, 20};
        widget->setWidgetStates(true, true, true, false);
        widget->assignCallbacks(&map, &calls);
    }
    EXPECT_FALSE(plain->inputEvent(UIE_MOUSE_DOWN, 12, 13, 0, false, false)); // never calls callbacks
    EXPECT_EQ(w->mouseUpCb, map.mouseUpCb); // the table's release entry goes to the release field
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
    EXPECT_EQ(calls.seen, "w over 12,13; w down 12,13; w over 12,13; w over 12,13; w up 12,13; w key 65; "
                          "w keyup 66; w over 15,13; ");
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
    calls.install(root);
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
    // Offered to left at (20, 30) in root space; left does not take it, so its global widget gets the same
    // absolute point in its own space: (20, 30) - (400, 300).
    EXPECT_TRUE(left->inputEvent(UIE_KEY_DOWN, 20, 30, 0, false, false));
    EXPECT_EQ(journal.take(), "left:input 20,30 target:input -380,-270 ");

    // Lists that lead back (the root naming itself, target naming left) hand an event on once per
    // widget instead of without end.
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

// src names x and y, which both name d, which names e: e is reached along two paths; a chain of 100
// widgets leads to src, so that no fixed count of forwarders cuts a long list short. Each key 1 that
// reaches e sends key 2 from src while src is still handing key 1 on: nested events start afresh.
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
    // Right edge: 450 / 800 * 1.8 - 0.9; 1000 of a width of 1000; 350 of the parent's 200, limited; a
    // zero range is centred.
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
