// Input delivery through a widget tree: the widget first, then children newest first, then its
// global-input-focus widgets; callbacks by event kind; panned interface sounds.
#include <gtest/gtest.h>
#include <algorithm>
#include "probe_widget.h"
#include "testkit.h"

namespace {

struct Calls {
    std::vector<std::string> seen;
    bool result = true;
};

bool onOver(uiWidget* w, void* c, int x, int y) {
    static_cast<Calls*>(c)->seen.push_back(std::string(w->name) + " over " + std::to_string(x) + "," +
                                           std::to_string(y));
    return true; // ignored
}
bool onDown(uiWidget* w, void* c, int x, int y) {
    static_cast<Calls*>(c)->seen.push_back(std::string(w->name) + " down");
    return static_cast<Calls*>(c)->result;
}
bool onUp(uiWidget* w, void* c, int x, int y) {
    static_cast<Calls*>(c)->seen.push_back(std::string(w->name) + " up");
    return static_cast<Calls*>(c)->result;
}
bool onMove(uiWidget* w, void* c, int, int) {
    static_cast<Calls*>(c)->seen.push_back(std::string(w->name) + " move");
    return true;
}
bool onKeyDown(uiWidget* w, void* c, int key) {
    static_cast<Calls*>(c)->seen.push_back(std::string(w->name) + " key " + std::to_string(key));
    return static_cast<Calls*>(c)->result;
}
bool onKeyUp(uiWidget* w, void* c, int key) {
    static_cast<Calls*>(c)->seen.push_back(std::string(w->name) + " keyup " + std::to_string(key));
    return static_cast<Calls*>(c)->result;
}

_WidgetMap_s allCallbacks() {
    return {nullptr, &onOver, &onDown, &onUp, &onMove, &onKeyDown, &onKeyUp};
}

class WidgetInput : public ::testing::Test {
protected:
    testkit::Services svc;
    Journal journal;
    Calls calls;
    void SetUp() override { ProbeWidget::journal = &journal; }
    void TearDown() override { ProbeWidget::journal = nullptr; }
};

TEST_F(WidgetInput, CallbacksFollowTheEventKindAndTheBounds) {
    ProbeWidget* w = probe("w", {10, 10, 20, 20});
    w->setWidgetStates(true, true, true, false);
    _WidgetMap_s map = allCallbacks();
    w->assignCallbacks(&map, &calls);
    EXPECT_EQ(w->mouseUpCb, &onUp); // the table's release entry goes to the release field
    EXPECT_EQ(w->mouseMoveCb, &onMove);

    EXPECT_TRUE(w->inputEvent(UIE_MOUSE_DOWN, 12, 13, 0, false, false));
    EXPECT_FALSE(w->inputEvent(UIE_MOUSE_DOWN, 12, 13, 0, true, false)); // button already held: no press
    EXPECT_TRUE(w->inputEvent(UIE_MOUSE_UP, 12, 13, 0, true, false));
    EXPECT_TRUE(w->inputEvent(UIE_KEY_DOWN, 500, 500, 65, false, false)); // keys need no point inside
    EXPECT_TRUE(w->inputEvent(UIE_KEY_UP, 500, 500, 66, false, false));
    EXPECT_FALSE(w->inputEvent(UIE_MOUSE_MOVE, 15, 15, 0, false, false)); // move is never called here
    EXPECT_FALSE(w->inputEvent(UIE_MOUSE_DOWN, 20, 15, 0, false, false)); // outside
    EXPECT_EQ(calls.seen, (std::vector<std::string>{"w over 12,13", "w down", "w over 12,13", "w over 12,13",
                                                    "w up", "w key 65", "w keyup 66", "w over 15,15"}));
    // An event already handled by an earlier receiver reaches no callback.
    calls.seen.clear();
    w->inputEvent(UIE_MOUSE_DOWN, 12, 13, 0, false, true);
    EXPECT_TRUE(calls.seen.empty());
    delete w;
}

TEST_F(WidgetInput, TheFirstReceiverThatTakesTheEventEndsTheWalk) {
    ProbeWidget* root = probe("root", {0, 0, 800, 600});
    probe("a", {100, 100, 200, 200}, root);
    ProbeWidget* b = probe("b", {100, 100, 200, 200}, root);
    ProbeWidget* c = probe("c", {100, 100, 200, 200}, root);
    root->setWidgetStates(true, true, true, true);
    journal.lines.clear();

    c->consume = true;
    EXPECT_TRUE(root->inputEvent(UIE_MOUSE_DOWN, 150, 160, 0, false, false));
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"root:input 150,160", "c:input 150,160"}));

    // A widget without input focus neither sees the event nor lets its subtree see it.
    journal.lines.clear();
    c->setInputFocus(false, false);
    journal.lines.clear();
    b->consume = true;
    EXPECT_TRUE(root->inputEvent(UIE_MOUSE_DOWN, 150, 160, 0, false, false));
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"root:input 150,160", "b:input 150,160"}));

    // A widget's mouse-down callback that returns true keeps the event from its children.
    journal.lines.clear();
    _WidgetMap_s map = allCallbacks();
    root->assignCallbacks(&map, &calls);
    EXPECT_TRUE(root->inputEvent(UIE_MOUSE_DOWN, 150, 160, 0, false, false));
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"root:input 150,160"}));

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
    EXPECT_TRUE(svc.log.has(2, "addGlobalInputFocusWidget(): unknown widget: ^CFFFF00root.missing^c\f"));
    EXPECT_TRUE(svc.log.has(2, "uiWidget::getWidget(): Unknown name: ^C0000FFroot.missing^c\f"));

    target->consume = true;
    journal.lines.clear();
    // Offered to left (and its empty subtree) at (20, 30) in root space; left does not take it, so its
    // global widget gets the same absolute point in its own space: (20, 30) - (400, 300).
    EXPECT_TRUE(left->inputEvent(UIE_KEY_DOWN, 20, 30, 0, false, false));
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"left:input 20,30", "target:input -380,-270"}));

    // Lists that lead back (the root naming itself, target naming left) hand an event on once per
    // widget instead of without end.
    target->consume = false;
    root->addGlobalInputFocusWidget("root");
    target->addGlobalInputFocusWidget("root.left");
    root->initialize();
    journal.lines.clear();
    EXPECT_FALSE(left->inputEvent(UIE_KEY_DOWN, 20, 30, 0, false, false));
    EXPECT_EQ(journal.lines,
              (std::vector<std::string>{"left:input 20,30", "target:input -380,-270", "left:input 20,30"}));
    journal.lines.clear();
    EXPECT_FALSE(root->inputEvent(UIE_KEY_DOWN, 0, 0, 0, false, false));
    EXPECT_EQ(std::count(journal.lines.begin(), journal.lines.end(), "root:input 0,0"), 2)
        << "the root sees the event itself and once more through its own list, then no more";
    delete root;
}

// A hotkey handler: records each key and sends key 2 from `from` while it is given key 1.
struct Relay {
    std::vector<int> keys;
    uiWidget* from;
};
bool relayKey(uiWidget*, void* client, int key) {
    auto* relay = static_cast<Relay*>(client);
    relay->keys.push_back(key);
    if (key == 1) relay->from->inputEvent(UIE_KEY_DOWN, 0, 0, 2, false, false);
    return false;
}

TEST_F(WidgetInput, GlobalListsDeliverAlongEveryPathAndNestedEventsStartAfresh) {
    ProbeWidget* root = probe("root", {0, 0, 800, 600});
    ProbeWidget* src = probe("src", {}, root);
    ProbeWidget* e = probe("e", {}, root);
    // src names x and y, which both name d, which names e: e is reached along two paths.
    probe("x", {}, root)->addGlobalInputFocusWidget("root.d");
    probe("y", {}, root)->addGlobalInputFocusWidget("root.d");
    probe("d", {}, root)->addGlobalInputFocusWidget("root.e");
    src->addGlobalInputFocusWidget("root.x");
    src->addGlobalInputFocusWidget("root.y");
    // A chain of 100 widgets that leads to src: no fixed count of forwarders cuts a long list short.
    ProbeWidget* chain = src;
    for (int i = 99; i >= 0; --i) {
        const std::string name = "c" + std::to_string(i);
        probe(name.c_str(), {}, root)
            ->addGlobalInputFocusWidget(("root." + std::string(chain->name)).c_str());
        chain = static_cast<ProbeWidget*>(root->getChildWidget(name.c_str(), 0, true));
    }
    root->setWidgetStates(true, true, true, true);
    root->initialize();
    Relay relay{{}, src};
    e->keyDownCb = relayKey;
    e->cbClient = &relay;
    // Each key 1 that reaches e sends key 2 from src while src is still handing key 1 on.
    for (ProbeWidget* start : {src, chain}) {
        relay.keys.clear();
        EXPECT_FALSE(start->inputEvent(UIE_KEY_DOWN, 0, 0, 1, false, false));
        EXPECT_EQ(relay.keys, (std::vector<int>{1, 2, 2, 1, 2, 2})) << start->name;
    }
    delete root;
}

TEST_F(WidgetInput, RootCoordinateChildrenSeeThePointPlusTheirParentsPosition) {
    ProbeWidget* root = probe("root", {0, 0, 800, 600});
    ProbeWidget* parent = probe("parent", {100, 50, 300, 250}, root);
    ProbeWidget* child = probe("child", {110, 60, 120, 70}, parent);
    child->flags |= WF_ROOT_COORDS;
    root->setWidgetStates(true, true, true, true);
    root->inputEvent(UIE_MOUSE_DOWN, 115, 65, 0, false, false);
    EXPECT_EQ(journal.lines.back(), "child:input 115,65");
    delete root;
}

TEST_F(WidgetInput, NonVisualWidgetsNeverCallCallbacksWhileInputHandlersDo) {
    _WidgetMap_s map = allCallbacks();
    uiWidget* plain = uiWidget::allocWidget("plain", "uiNonVisualWidget");
    uiWidget* handler = uiWidget::allocWidget("handler", "uiInputHandler");
    for (uiWidget* w : {plain, handler}) {
        w->rect = {0, 0, 100, 100};
        w->setWidgetStates(true, true, true, false);
        w->assignCallbacks(&map, &calls);
    }
    EXPECT_FALSE(plain->inputEvent(UIE_MOUSE_DOWN, 10, 10, 0, false, false));
    EXPECT_TRUE(calls.seen.empty());
    EXPECT_TRUE(handler->inputEvent(UIE_MOUSE_DOWN, 10, 10, 0, false, false));
    EXPECT_EQ(calls.seen, (std::vector<std::string>{"handler over 10,10", "handler down"}));
    delete plain;
    delete handler;
}

TEST_F(WidgetInput, PannedSoundsFollowTheWidgetsPlaceOnScreen) {
    ProbeWidget* parent = probe("parent", {0, 0, 200, 100});
    ProbeWidget* w = probe("w", {350, 0, 450, 10}, parent);
    svc.gfx.screenWidth = 800;
    EXPECT_NE(w->_playWithPan("click", 0, 1.5f, 0), nullptr);
    w->_playWithPan("click", WP_RIGHT, 1.0f, 0);             // 450 / 800 * 1.8 - 0.9
    w->_playWithPan("click", WP_POS | WP_WIDTH, 1.0f, 1000); // 1000 / 1000
    w->_playWithPan("click", WP_LEFT | WP_PARENT, 1.0f, 0);  // 350 / 200: limited to 0.9
    w->rect.x = 0;
    w->_playWithPan("click", WP_LEFT, 1.0f, 0);
    w->_playWithPan("click", WP_WIDTH, 1.0f, 0); // zero range: centred
    ASSERT_EQ(svc.sound.plays.size(), 6u);
    EXPECT_EQ(svc.sound.plays[0].name, "click");
    EXPECT_FLOAT_EQ(svc.sound.plays[0].freq, 1.5f);
    EXPECT_NEAR(svc.sound.plays[0].pan, 0.0f, 1e-6);
    EXPECT_NEAR(svc.sound.plays[1].pan, 0.1125f, 1e-6);
    EXPECT_NEAR(svc.sound.plays[2].pan, 0.9f, 1e-6);
    EXPECT_NEAR(svc.sound.plays[3].pan, 0.9f, 1e-6);
    EXPECT_NEAR(svc.sound.plays[4].pan, -0.9f, 1e-6);
    EXPECT_NEAR(svc.sound.plays[5].pan, 0.0f, 1e-6);

    w->_playWithPan("click", WP_WORLD, 1.0f, 0);
    EXPECT_TRUE(svc.log.has(2, "_playWithPan( WP_WORLD ): Not Implemented\f"));
    svc.sound.silent = true;
    EXPECT_EQ(w->_playWithPan("click", 0, 1.0f, 0), nullptr);
    delete parent;
}

} // namespace
