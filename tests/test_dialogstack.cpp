// The subsystem's queued dialog stack: what each command does to the stack, the dialogs and the input
// focus stack, when commands wait, and that nothing stalls or is left hidden too late.
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>
#include "gameui.h"
#include "testkit.h"

namespace {

using Log = std::vector<std::string>;

void logHide(uiWidget* w, void* data) {
    static_cast<Log*>(data)->push_back(std::string("hide ") + w->name);
}

class DialogStackTest : public ::testing::Test {
protected:
    testkit::Services svc;
    std::unique_ptr<uiSubsystem> ui{new uiSubsystem()};
    std::vector<std::unique_ptr<uiWidget>> owned;
    Log hides;
    uiWidget* bottom = nullptr; // the focus stack never empties below it
    uiWidget* game = nullptr;   // the game's own focus widget

    void SetUp() override {
        bottom = widget("bottom", "uiNonVisualWidget");
        game = widget("game", "uiNonVisualWidget");
        ui->pushInputFocusWidget(bottom);
        ui->pushInputFocusWidget(game);
    }

    uiWidget* widget(const char* name, const char* type) {
        owned.emplace_back(uiWidget::allocWidget(name, type));
        return owned.back().get();
    }

    uiDialog* dialog(const char* name, const char* type = "uiDialog") {
        uiDialog* d = static_cast<uiDialog*>(widget(name, type));
        d->dlgHideCb(&logHide, &hides);
        return d;
    }

    // Pushes the dialogs at once, in order, and runs the frame that stacks them.
    void stackNow(std::initializer_list<uiDialog*> dialogs) {
        for (uiDialog* d : dialogs)
            ui->pushDialog(d, false);
        ui->update(16);
    }

    // The focus entries above `bottom`, top first. Leaves the stack holding only `bottom`.
    std::vector<uiWidget*> takeFocusStack() {
        std::vector<uiWidget*> entries;
        for (int i = 0; i < 16 && ui->getInputFocusWidget() != bottom; ++i) {
            entries.push_back(ui->getInputFocusWidget());
            ui->popInputFocusWidget();
        }
        return entries;
    }

    using Focus = std::vector<uiWidget*>;
};

TEST_F(DialogStackTest, ImmediatePushAndPopTakeEffectAtTheNextFrame) {
    uiDialog* d = dialog("d");
    ui->pushDialog(d, false);
    EXPECT_EQ(ui->topDialog(), nullptr); // queued until the next frame
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), d);
    EXPECT_TRUE(ui->topDialogIsIdle(d));
    EXPECT_EQ(d->getWidgetFlags() & 7u, WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS);

    ui->popDialog(d, false);
    ui->update(16);
    EXPECT_FALSE(ui->isDialogPushed(d));
    EXPECT_EQ(d->getState(), 0);
    EXPECT_EQ(hides, Log{"hide d"});
}

// What each way of pushing and popping leaves on the focus stack above the game's entry.
TEST_F(DialogStackTest, EachCommandKindLeavesItsOwnFocusEntries) {
    enum Pop { kNone, kImmediate, kTransition };
    auto entries = [&](uiDialog* d, bool pushWithTransition, bool popTop, Pop pop) {
        ui->pushDialog(d, pushWithTransition);
        ui->update(16);
        if (pop != kNone) ui->popDialog(popTop ? nullptr : d, pop == kTransition);
        ui->update(16);
        EXPECT_EQ(ui->topDialog() != nullptr, pop == kNone);
        Focus focus = takeFocusStack();
        ui->clearDialogStack(false);
        ui->update(16);
        takeFocusStack();
        ui->pushInputFocusWidget(game);
        return focus;
    };
    uiDialog* d = dialog("d");
    EXPECT_EQ(entries(d, false, false, kImmediate), (Focus{game}));
    EXPECT_EQ(entries(d, true, false, kNone), (Focus{d, d})) << "replaced, then pushed";
    EXPECT_EQ(entries(d, false, true, kImmediate), (Focus{nullptr, game})) << "the top's entry is handed on";
    EXPECT_EQ(entries(d, true, true, kTransition), (Focus{d})) << "a null entry is dropped too";
    EXPECT_EQ(entries(d, true, false, kImmediate), (Focus{nullptr})) << "compared before popping";
}

TEST_F(DialogStackTest, TransitionPopOfAPlainDialogCompletesInItsFrame) {
    uiDialog* d = dialog("d");
    uiDialog* next = dialog("next");
    ui->pushDialog(d, true);
    ui->update(16);

    ui->popDialog(d, true);
    ui->pushDialog(next, false); // proves the queue went on
    ui->update(16);
    EXPECT_EQ(d->getState(), 0);
    EXPECT_EQ(hides, Log{"hide d"}); // hidden once, by its own exit
    EXPECT_FALSE(ui->isDialogPushed(d));
    EXPECT_EQ(ui->topDialog(), next);
    ui->update(16);
    EXPECT_EQ(hides, Log{"hide d"});
    // The popped dialog's entry was handed to the dialog below (none), then `next` pushed its own.
    EXPECT_EQ(takeFocusStack(), (Focus{next, nullptr, d}));
}

TEST_F(DialogStackTest, ImmediateClearHidesEveryDialogTopFirst) {
    uiDialog* d1 = dialog("d1");
    uiDialog* d2 = dialog("d2");
    stackNow({d1, d2});
    EXPECT_EQ(ui->topDialog(), d2);
    EXPECT_TRUE(ui->isDialogPushed(d1));

    ui->clearDialogStack(false);
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), nullptr);
    EXPECT_EQ(hides, (Log{"hide d2", "hide d1"}));
    EXPECT_EQ(takeFocusStack(), (Focus{nullptr, d1, game}));
}

TEST_F(DialogStackTest, TransitionClearPopsOneDialogPerFrame) {
    uiDialog* d1 = dialog("d1");
    uiDialog* d2 = dialog("d2");
    uiDialog* later = dialog("later");
    stackNow({d1, d2});

    ui->clearDialogStack(true);
    ui->pushDialog(later, false); // waits behind the clear
    ui->update(16);
    EXPECT_EQ(hides, Log{"hide d2"});
    EXPECT_EQ(ui->topDialog(), d1);
    EXPECT_EQ(d1->getState(), 1);
    ui->update(16);
    EXPECT_EQ(hides, (Log{"hide d2", "hide d1"}));
    EXPECT_EQ(ui->topDialog(), later);
    EXPECT_FALSE(ui->isDialogPushed(d1));
    EXPECT_EQ(takeFocusStack(), (Focus{later, d1, game}));
}

TEST_F(DialogStackTest, PopOfADialogBelowTheTopIsDropped) {
    uiDialog* d1 = dialog("d1");
    uiDialog* d2 = dialog("d2");
    uiDialog* d3 = dialog("d3");
    stackNow({d1, d2});
    ui->popDialog(d1, true);
    ui->popDialog(d1, false);
    ui->pushDialog(d3, false);
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), d3);
    EXPECT_TRUE(ui->isDialogPushed(d1));
    EXPECT_EQ(d1->getState(), 1);
    EXPECT_TRUE(hides.empty());

    // Pops and clears that find the stack empty are dropped without complaint.
    ui->clearDialogStack(false);
    ui->popDialog(nullptr, true);
    ui->popDialog(nullptr, false);
    ui->clearDialogStack(true);
    ui->pushDialog(d1, false);
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), d1);
    EXPECT_FALSE(ui->isDialogPushed(d2));
    EXPECT_EQ(svc.log.count(), 0);
}

TEST_F(DialogStackTest, PlainDialogsPushedWithTransitionEnterInTheSameFrame) {
    uiDialog* d1 = dialog("d1");
    uiDialog* d2 = dialog("d2");
    ui->pushDialog(d1, true);
    ui->pushDialog(d2, true);
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), d2);
    EXPECT_TRUE(ui->isDialogPushed(d1));
    EXPECT_TRUE(ui->topDialogIsIdle(d2));
    EXPECT_FALSE(ui->topDialogIsIdle(d1));
    EXPECT_FALSE(ui->topDialogIsIdle(nullptr));
}

TEST_F(DialogStackTest, ClearingPendingCommandsLeavesTheStack) {
    uiDialog* d = dialog("d");
    ui->pushDialog(d, false);
    ui->update(16);
    ui->popDialog(d, false);
    ui->clearDialogStack(false);
    ui->clearPendingDialogs();
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), d);
    EXPECT_EQ(d->getState(), 1);
    ui->reportDialogStack();
    EXPECT_EQ(svc.log.count(), 0);
}

TEST_F(DialogStackTest, MoreThanThirtyTwoCommandsWarnButNoneIsLost) {
    std::vector<uiDialog*> dialogs;
    ui->pushDialog(nullptr, true); // queues nothing
    for (int i = 0; i < 33; ++i) {
        dialogs.push_back(dialog(("d" + std::to_string(i)).c_str()));
        ui->pushDialog(dialogs.back(), false);
        EXPECT_EQ(svc.log.count(), i < 32 ? 0 : 1) << i;
    }
    EXPECT_TRUE(svc.log.has(1, "DialogStackCmd queue exceeds 32 count\f"));
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), dialogs.back());
    for (uiDialog* d : dialogs)
        EXPECT_TRUE(ui->isDialogPushed(d)) << d->name;
}

// Animated dialogs without out animation reach the exited state at once, so several transition pops can
// complete in one frame; each popped dialog is hidden at the start of the following frame.
TEST_F(DialogStackTest, EveryDialogPoppedByTransitionIsHiddenNextFrame) {
    uiDialog* a1 = dialog("a1", "uiAnimDialog");
    uiDialog* a2 = dialog("a2", "uiAnimDialog");
    ui->pushDialog(a1, true);
    ui->pushDialog(a2, true);
    ui->update(16);
    ASSERT_EQ(ui->topDialog(), a2);

    ui->popDialog(nullptr, true);
    ui->popDialog(nullptr, true);
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), nullptr);
    EXPECT_EQ(a1->getState(), 4);
    EXPECT_EQ(a2->getState(), 4);
    EXPECT_TRUE(hides.empty());

    ui->update(16);
    EXPECT_EQ(hides, (Log{"hide a2", "hide a1"}));
    EXPECT_EQ(a1->getState(), 0);
    EXPECT_EQ(a2->getState(), 0);
    ui->update(16);
    EXPECT_EQ(hides.size(), 2u);
}

TEST_F(DialogStackTest, ADialogPushedAgainBeforeItsHideIsHiddenFirstThenEntered) {
    uiDialog* a = dialog("a", "uiAnimDialog");
    ui->setTopLevelWidget(a);
    ui->pushDialog(a, true);
    ui->update(16);
    ui->popDialog(a, true);
    ui->pushDialog(a, true);
    ui->update(16);
    EXPECT_EQ(hides, Log{"hide a"});
    EXPECT_EQ(ui->topDialog(), a);
    ui->update(16);
    EXPECT_EQ(hides, Log{"hide a"}); // not hidden again while it is back on the stack
    EXPECT_EQ(a->getState(), 1);
    EXPECT_TRUE(a->setActive());
    EXPECT_TRUE(ui->topDialogIsIdle(a));
}

TEST_F(DialogStackTest, WithoutMemoryAQueuedCommandIsLostAndAStackNodeTriedAgain) {
    uiDialog* d = dialog("d");
    svc.memory.failAt(0);
    ui->pushDialog(d, false);
    EXPECT_TRUE(svc.log.has(2, "_addDialogStackCmd(): Out of Memory\f"));
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), nullptr);

    ui->pushDialog(d, false);
    svc.memory.failAt(0);
    ui->update(16);
    EXPECT_TRUE(svc.log.has(2, "_pushDialog(d): Out of Memory\f"));
    EXPECT_EQ(ui->topDialog(), nullptr);
    EXPECT_EQ(d->getState(), 0);
    ui->update(16);
    EXPECT_EQ(ui->topDialog(), d);
    EXPECT_EQ(takeFocusStack(), (Focus{d, game}));
}

TEST_F(DialogStackTest, DestroyingTheSubsystemFreesQueueStackAndPendingHides) {
    uiDialog* a = dialog("a", "uiAnimDialog");
    uiDialog* d = dialog("d");
    ui->pushDialog(a, true);
    ui->pushDialog(d, false);
    ui->update(16);
    ui->popDialog(d, false);
    ui->popDialog(a, true); // a exits at once and awaits its hide
    ui->pushDialog(d, false);
    ui->update(16);
    ui->pushDialog(a, true);
    ui->popDialog(nullptr, true);
    ui.reset();
    owned.clear();
    EXPECT_EQ(svc.memory.outstandingBlocks(9), 0);
}

// A subsystem as a game might extend it, reaching the stack's own pop.
struct ExtendedSubsystem : uiSubsystem {
    using uiSubsystem::_popDialog;
};

TEST(DialogStack, PoppingAnEmptyStackIsReported) {
    testkit::Services svc;
    std::unique_ptr<ExtendedSubsystem> ui{new ExtendedSubsystem()};
    ui->_popDialog();
    EXPECT_TRUE(svc.log.has(2, "_popDialog(): Stack underflow\f"));
    EXPECT_EQ(ui->topDialog(), nullptr);
}

} // namespace
