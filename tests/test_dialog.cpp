// uiDialog on its own: states and activation, the hide callback, tab entries and the tab and click focus
// movement.
#include <gtest/gtest.h>
#include <array>
#include <memory>
#include <string>
#include <vector>
#include "gameui.h"
#include "screen.h"
#include "testkit.h"

namespace {

struct Calls {
    std::vector<std::string> seen;
};

bool recordDown(uiWidget* w, void* client, int, int) {
    static_cast<Calls*>(client)->seen.push_back(std::string("down ") + w->name);
    return true;
}

bool recordKey(uiWidget* w, void* client, int key) {
    static_cast<Calls*>(client)->seen.push_back(std::string("key ") + w->name + " " + std::to_string(key));
    return true;
}

void recordHide(uiWidget* w, void* data) {
    static_cast<Calls*>(data)->seen.push_back(std::string("hide ") + w->name);
}

// An input handler at (x, y) of size 20 x 10 under `parent`, reporting mouse-downs and key-downs.
uiWidget* addHandler(uiWidget* parent, const char* name, int x, int y, Calls* calls) {
    uiWidget* w = uiWidget::allocWidget(name, "uiInputHandler");
    w->rect = {x, y, x + 20, y + 10};
    _WidgetMap_s map = {nullptr, nullptr, &recordDown, nullptr, nullptr, &recordKey, nullptr};
    w->assignCallbacks(&map, calls);
    parent->addChild(w, false);
    w->setWidgetStates(true, true, true, true);
    return w;
}

class DialogTest : public ::testing::Test {
protected:
    testkit::Services svc;
    std::unique_ptr<uiSubsystem> ui{new uiSubsystem()};
    std::unique_ptr<uiDialog> dialog{static_cast<uiDialog*>(uiWidget::allocWidget("dlg", "uiDialog"))};
    Calls calls;

    // Three handlers stacked 20 pixels apart, added as tab entries a, b, c in that order.
    std::array<uiWidget*, 3> threeEntries() {
        std::array<uiWidget*, 3> entries = {addHandler(dialog.get(), "a", 0, 0, &calls),
                                            addHandler(dialog.get(), "b", 0, 20, &calls),
                                            addHandler(dialog.get(), "c", 0, 40, &calls)};
        dialog->setWidgetStates(true, true, true, false);
        for (uiWidget* w : entries)
            dialog->addTabEntry(w);
        return entries;
    }

    bool key(int code) { return dialog->inputEvent(UIE_KEY_DOWN, 0, 0, code, false, false); }
    bool click(int x, int y) { return dialog->inputEvent(UIE_MOUSE_DOWN, x, y, 0, false, false); }
};

TEST_F(DialogTest, IdleShowsTheSubtreeAndTakesTheFocusEntry) {
    uiWidget* child = addHandler(dialog.get(), "child", 0, 0, &calls);
    child->setWidgetStates(false, false, false, true);
    std::unique_ptr<uiWidget> game{uiWidget::allocWidget("game", "uiNonVisualWidget")};
    ui->pushInputFocusWidget(game.get());

    dialog->idle();
    EXPECT_EQ(dialog->getState(), 1);
    EXPECT_EQ(dialog->getLastState(), 1);
    EXPECT_EQ(dialog->getWidgetFlags() & 7u, WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS);
    EXPECT_EQ(child->getWidgetFlags() & 7u, WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS);
    EXPECT_EQ(ui->getInputFocusWidget(), dialog.get()); // replaced, not pushed
    ui->popInputFocusWidget();
    EXPECT_EQ(ui->getInputFocusWidget(), nullptr);
}

TEST_F(DialogTest, HideDeactivatesKeepsVisibilityAndCallsBack) {
    uiWidget* child = addHandler(dialog.get(), "child", 0, 0, &calls);
    std::unique_ptr<uiDialog> nested{static_cast<uiDialog*>(uiWidget::allocWidget("nested", "uiDialog"))};
    dialog->idle();
    nested->idle();
    uiDialog* nestedRaw = nested.release();
    dialog->addChild(nestedRaw, false);
    dialog->dlgHideCb(&recordHide, &calls);
    dialog->setUserValue(42);

    dialog->exit();
    EXPECT_EQ(dialog->getState(), 0);
    EXPECT_FALSE(dialog->setActive());
    EXPECT_FALSE(child->setActive());
    EXPECT_TRUE(dialog->getVisible());   // the render of its tree decides what disappears
    EXPECT_TRUE(nestedRaw->setActive()); // dialogs keep their own states
    EXPECT_EQ(calls.seen, std::vector<std::string>{"hide dlg"});
    EXPECT_EQ(dialog->getUserValue(), 42);

    dialog->dlgHideCb(nullptr, nullptr);
    dialog->hide();
    EXPECT_EQ(calls.seen.size(), 1u);
}

TEST_F(DialogTest, TabCyclesThroughTheEntriesInTheOrderAddedAndResetRefocusesTheCurrent) {
    const auto [a, b, c] = threeEntries();
    EXPECT_TRUE(a->getInputFocus());
    EXPECT_FALSE(b->getInputFocus());
    EXPECT_FALSE(c->getInputFocus());

    std::vector<std::string> focused;
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(key(9));
        for (uiWidget* w : {a, b, c})
            if (w->getInputFocus()) focused.push_back(w->name);
    }
    EXPECT_EQ(focused, (std::vector<std::string>{"b", "c", "a"}));
    EXPECT_TRUE(calls.seen.empty()); // the tab never reaches the entries

    // Other keys go on to the focused entry; a tab already handled is not the dialog's.
    key(13);
    EXPECT_TRUE(dialog->inputEvent(UIE_KEY_DOWN, 0, 0, 9, false, true));
    EXPECT_EQ(calls.seen, (std::vector<std::string>{"key a 13", "key a 9"}));
    EXPECT_TRUE(a->getInputFocus());

    // Reset gives the focus back to the current entry only.
    key(9);
    dialog->setInputFocus(true, true); // focus everything, as showing the dialog does
    dialog->reset();
    EXPECT_FALSE(a->getInputFocus());
    EXPECT_TRUE(b->getInputFocus());
    EXPECT_FALSE(c->getInputFocus());
}

TEST_F(DialogTest, TabIsConsumedEvenWithoutEntries) {
    addHandler(dialog.get(), "child", 0, 0, &calls);
    dialog->setWidgetStates(true, true, true, false);
    EXPECT_TRUE(key(9));
    EXPECT_TRUE(calls.seen.empty());
    EXPECT_TRUE(key(32)); // the child's key callback answers
    EXPECT_EQ(calls.seen, std::vector<std::string>{"key child 32"});
}

TEST_F(DialogTest, ClickMovesTheTabFocusToAnotherVisibleEntry) {
    const auto [a, b, c] = threeEntries();
    c->setVisible(false, true);

    EXPECT_TRUE(click(5, 25)); // on b: focus moves, and the click ends there
    EXPECT_FALSE(a->getInputFocus());
    EXPECT_TRUE(b->getInputFocus());
    EXPECT_TRUE(calls.seen.empty());

    click(5, 45); // on the hidden c: no move, and c takes no input
    EXPECT_TRUE(b->getInputFocus());
    EXPECT_FALSE(c->getInputFocus());

    EXPECT_TRUE(click(5, 25)); // on the current entry: falls through to it
    EXPECT_EQ(calls.seen, std::vector<std::string>{"down b"});

    // The entries are tested in the space of their parent: a dialog moved on screen moves its entries.
    dialog->rect = {100, 50, 300, 200};
    EXPECT_TRUE(click(105, 55));
    EXPECT_TRUE(a->getInputFocus());
}

TEST_F(DialogTest, ResetRestartsEveryParticleSystemBelowTheDialog) {
    uiWidget* panel = uiWidget::allocWidget("panel", "uiNonVisualWidget");
    dialog->addChild(panel, false);
    auto* sparks = static_cast<uiParticleSystem*>(uiWidget::allocWidget("sparks", "uiParticleSystem"));
    auto* smoke = static_cast<uiParticleSystem*>(uiWidget::allocWidget("smoke", "uiParticleSystem"));
    dialog->addChild(sparks, false);
    panel->addChild(smoke, false);
    sparks->loadPsys("sparks.psi");
    smoke->loadPsys("smoke.psi");
    svc.gfx.clear();

    dialog->reset();
    std::vector<std::vector<int>> events;
    for (const testkit::GfxCall& call : svc.gfx.named("addEvent"))
        events.push_back(call.ints);
    // Children newest first: the sparks, then the panel and the smoke in it.
    EXPECT_EQ(events, (std::vector<std::vector<int>>{{4, 0, sparks->getId(), 0}, {4, 0, smoke->getId(), 0}}));
    EXPECT_NE(smoke->getId(), sparks->getId());
    sparks->releaseInstance();
    smoke->releaseInstance();
}

TEST_F(DialogTest, TabEntryWithoutMemoryIsReportedAndLeftOut) {
    uiWidget* a = addHandler(dialog.get(), "a", 0, 0, &calls);
    svc.memory.failAt(0);
    dialog->addTabEntry(a);
    EXPECT_TRUE(svc.log.has(2, "dlg::addTabEntry(a): Out of Memory\f"));
    EXPECT_TRUE(a->getInputFocus()); // untouched
    dialog->setWidgetStates(true, true, true, false);
    EXPECT_TRUE(key(9));
    EXPECT_TRUE(a->getInputFocus());
}

// Tab entries named by path, in file order, and a dialog that leaves the focus stack alone.
const char* const kOptions = R"(options = uiDialog
{
    takefocus = false
    child music = uiInputHandler
    {
        y = 0
        height = 10
        width = 20
    }
    child sound = uiInputHandler
    {
        y = 20
        height = 10
        width = 20
    }
    tabentry = options.sound
    tabentry = options.music
    tabentry = options.nothere
    tabentry options.music
    takefocus false
}
)";

TEST_F(DialogTest, DescriptionNamesTabEntriesAndFocusTaking) {
    testkit::Screen screen(svc, kOptions);
    auto* options = static_cast<uiDialog*>(screen.root());
    ASSERT_NE(options, nullptr);
    const std::vector<std::string> messages = {
        "uiWidget::getWidget(): Unknown name: ^C0000FFoptions.nothere^c\f",
        "...tabentry: \"^C00FF00options.nothere^c does not exist.\f",
        "...expected: \"^C00FF00tabentry = \"string\"^c\"\f",
        "...expected: \"^C00FF00takefocus = BOOLEAN^c\"\f",
    };
    std::vector<std::string> logged;
    for (const testkit::LogEntry& entry : svc.log.entries()) {
        EXPECT_EQ(entry.severity, 2) << entry.text;
        logged.push_back(entry.text);
    }
    EXPECT_EQ(logged, messages);

    EXPECT_FALSE(options->takesFocus());
    std::unique_ptr<uiWidget> game{uiWidget::allocWidget("game", "uiNonVisualWidget")};
    ui->pushInputFocusWidget(game.get());
    options->idle();
    EXPECT_EQ(ui->getInputFocusWidget(), game.get()); // left alone

    options->resetTabFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 3; ++i) {
        for (const char* name : {"music", "sound"})
            if (screen.find(name)->getInputFocus()) order.push_back(name);
        options->inputEvent(UIE_KEY_DOWN, 0, 0, 9, false, false);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"sound", "music", "sound"}));
}

// Widgets join the tab order from their own blocks; a child that cannot be attached (no memory for its
// list node) is deleted, and its entries, its own and those below it, leave the tab order with it.
const char* const kForm = R"(form = uiDialog
{
    child name = uiInputHandler
    {
        width = 20
        height = 10
        tabentry
    }
    child team = uiNonVisualWidget
    {
        child field = uiInputHandler
        {
            y = 20
            width = 20
            height = 10
            tabentry
        }
    }
}
)";

TEST_F(DialogTest, AChildDroppedWhileLoadingLeavesTheTabOrder) {
    int dropped = 0;
    for (long long n = 0;; ++n) {
        svc.memory.failAt(n);
        testkit::Screen screen(svc, kForm);
        const bool failed = svc.memory.failed();
        svc.memory.failAt(-1);
        auto* form = static_cast<uiDialog*>(screen.root());
        // Without memory for the dialog the parser goes on with the lines after its header.
        uiWidget* name = screen && screen->isType("uiDialog") ? screen.find("name") : nullptr;
        if (name && !screen.find("team") && !screen.find("field")) {
            ++dropped;
            form->setWidgetStates(true, true, true, false);
            form->resetTabFocus();
            for (int i = 0; i < 2; ++i) {
                EXPECT_TRUE(form->inputEvent(UIE_KEY_DOWN, 0, 0, 9, false, false));
                EXPECT_TRUE(name->getInputFocus()) << "allocation " << n;
            }
        }
        if (!failed) break;
    }
    EXPECT_GE(dropped, 1);

    // Taken out by hand: the current entry goes, the first remaining one becomes current.
    std::array<uiWidget*, 3> abc = threeEntries();
    EXPECT_TRUE(key(9)); // b is current
    dialog->removeTabEntries(abc[1]);
    dialog->resetTabFocus();
    EXPECT_TRUE(abc[0]->getInputFocus());
    EXPECT_FALSE(abc[2]->getInputFocus());
    EXPECT_TRUE(key(9));
    EXPECT_TRUE(abc[2]->getInputFocus());
    EXPECT_TRUE(key(9));
    EXPECT_TRUE(abc[0]->getInputFocus());
    dialog->removeTabEntries(dialog.get()); // all of them
    EXPECT_TRUE(key(9));
    EXPECT_TRUE(abc[0]->getInputFocus());
}

} // namespace
