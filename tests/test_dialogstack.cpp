// The queued dialog stack: each command's effect on the stack, the dialogs and the focus stack; waiting.
#include <gtest/gtest.h>
#include <memory>
#include "gameui.h"
#include "testkit.h"

namespace {

using Focus = std::vector<uiWidget*>;

// A game's subsystem, reaching the stack's own pop.
struct ExtendedSubsystem : uiSubsystem {
    using uiSubsystem::_popDialog;
};

class DialogStackTest : public ::testing::Test {
protected:
    testkit::Services svc;
    std::unique_ptr<ExtendedSubsystem> ui{new ExtendedSubsystem()};
    std::vector<std::unique_ptr<uiWidget>> owned;
    std::string hides;
    uiWidget* bottom = widget("bottom", "uiNonVisualWidget"); // the focus stack never empties below it
    uiWidget* game = widget("game", "uiNonVisualWidget");     // the game's own focus widget

    void SetUp() override {
        ui->pushInputFocusWidget(bottom);
        ui->pushInputFocusWidget(game);
    }
    uiWidget* widget(const char* name, const char* type) {
        owned.emplace_back(uiWidget::allocWidget(name, type));
        return owned.back().get();
    }
    uiDialog* dialog(const char* name, const char* type = "uiDialog") {
        uiDialog* d = static_cast<uiDialog*>(widget(name, type));
        d->dlgHideCb([](uiWidget* w, void* log) { *static_cast<std::string*>(log) += w->name; }, &hides);
        return d;
    }
    // Per frame of `n`: the top dialog ("-" for none), a slash and the dialogs hidden since the last frame.
    std::string frame(int n = 1) {
        std::string seen;
        for (int i = 0; i < n; ++i) {
            ui->update(16);
            seen += std::string(ui->topDialog() ? ui->topDialog()->name : "-") + "/" + hides;
            hides.clear();
        }
        return seen;
    }
    Focus takeFocusStack() { return testkit::popFocusStack(*ui, bottom); }
};

// What each way of pushing and popping leaves on the focus stack above the game's entry.
TEST_F(DialogStackTest, CommandsTakeEffectAtTheNextFrameEachWithItsOwnFocusEntries) {
    uiDialog* d = dialog("d");
    ui->pushDialog(d, false);
    EXPECT_EQ(ui->topDialog(), nullptr); // queued until the next frame
    EXPECT_EQ(frame(), "d/");
    EXPECT_EQ(d->getWidgetFlags() & 7u, 7u);
    ui->popDialog(d, false);
    EXPECT_EQ(frame(), "-/d");
    takeFocusStack();
    enum Pop { kNone, kImmediate, kTransition };
    auto entries = [&](bool pushWithTransition, bool popTop, Pop pop) {
        ui->pushInputFocusWidget(game);
        ui->pushDialog(d, pushWithTransition);
        ui->update(16);
        if (pop != kNone) ui->popDialog(popTop ? nullptr : d, pop == kTransition);
        ui->update(16);
        EXPECT_EQ(ui->topDialog() != nullptr, pop == kNone);
        Focus focus = takeFocusStack();
        ui->clearDialogStack(false);
        ui->update(16);
        takeFocusStack();
        return focus;
    };
    EXPECT_EQ(entries(false, false, kImmediate), (Focus{game}));
    EXPECT_EQ(entries(true, false, kNone), (Focus{d, d})) << "replaced, then pushed";
    EXPECT_EQ(entries(false, true, kImmediate), (Focus{nullptr, game})) << "the top's entry is handed on";
    EXPECT_EQ(entries(true, true, kTransition), (Focus{d})) << "a null entry is dropped too";
    EXPECT_EQ(entries(true, false, kImmediate), (Focus{nullptr})) << "compared before popping";
}

TEST_F(DialogStackTest, PopsAndClearsOfPlainDialogs) {
    uiDialog* d1 = dialog("d1");
    uiDialog* d2 = dialog("d2");
    uiDialog* d3 = dialog("d3");
    ui->pushDialog(d1, true); // plain dialogs pushed with transition enter in the same frame
    ui->pushDialog(d2, true);
    EXPECT_EQ(frame(), "d2/");
    EXPECT_TRUE(ui->topDialogIsIdle(d2) && !ui->topDialogIsIdle(d1));
    // A pop of a dialog below the top is dropped; the queue goes on.
    ui->popDialog(d1, true);
    ui->popDialog(d1, false);
    ui->pushDialog(d3, false);
    EXPECT_EQ(frame(), "d3/");
    EXPECT_EQ(d1->getState(), 1);
    // A transition pop of a plain dialog completes in its frame; it is hidden once, by its own exit.
    ui->popDialog(d3, true);
    EXPECT_EQ(frame(2), "d2/d3d2/");
    // A transition clear pops one dialog per frame; commands behind it wait.
    ui->clearDialogStack(true);
    ui->pushDialog(d3, false);
    EXPECT_EQ(frame(2), "d1/d2d3/d1");
    takeFocusStack();
    // An immediate clear hides every dialog, top first; clearing pending commands leaves the stack.
    ui->pushDialog(d1, false);
    frame();
    ui->popDialog(d1, false);
    ui->clearPendingDialogs();
    EXPECT_EQ(frame(), "d1/");
    ui->clearDialogStack(false);
    EXPECT_EQ(frame(), "-/d1d3");
    // Pops and clears that find the stack empty are dropped without complaint.
    ui->popDialog(nullptr, true);
    ui->popDialog(nullptr, false);
    ui->clearDialogStack(true);
    ui->pushDialog(d1, false);
    EXPECT_EQ(frame(), "d1/");
    EXPECT_EQ(svc.log.count(), 0);
}

// Animated dialogs without out animation exit at once; each is hidden at the start of the next frame.
TEST_F(DialogStackTest, AnimatedDialogsAreHiddenTheFrameAfterTheirExit) {
    uiDialog* a1 = dialog("a1", "uiAnimDialog");
    uiDialog* a2 = dialog("a2", "uiAnimDialog");
    ui->pushDialog(a1, true);
    ui->pushDialog(a2, true);
    ASSERT_EQ(frame(), "a2/");
    ui->popDialog(nullptr, true);
    ui->popDialog(nullptr, true);
    EXPECT_EQ(frame(), "-/");
    EXPECT_EQ(a1->getState() * 10 + a2->getState(), 44);
    EXPECT_EQ(frame(2), "-/a2a1-/");
    EXPECT_EQ(a1->getState() * 10 + a2->getState(), 0);
    ui->setTopLevelWidget(a1);
    ui->pushDialog(a1, true);
    frame();
    ui->popDialog(a1, true);
    ui->pushDialog(a1, true);
    EXPECT_EQ(frame(2), "a1/a1a1/"); // not hidden again while it is back on the stack
    EXPECT_TRUE(a1->setActive() && ui->topDialogIsIdle(a1));
}

TEST_F(DialogStackTest, QueueLimitsMemoryFailuresAndDestruction) {
    std::vector<uiDialog*> dialogs;
    ui->pushDialog(nullptr, true); // queues nothing
    for (int i = 0; i < 33; ++i) {
        dialogs.push_back(dialog(("d" + std::to_string(i)).c_str()));
        ui->pushDialog(dialogs.back(), false);
    }
    EXPECT_EQ(svc.log.dump(), "1: DialogStackCmd queue exceeds 32 count\f\n"); // but none is lost
    EXPECT_EQ(frame(), "d32/");
    for (uiDialog* d : dialogs)
        EXPECT_TRUE(ui->isDialogPushed(d)) << d->name;
    ui->clearDialogStack(false);
    frame();
    takeFocusStack();
    // Without memory a queued command is lost and a stack node is tried again at the next frame.
    uiDialog* d = dialogs[0];
    svc.log.clear();
    svc.memory.failAt(0);
    ui->pushDialog(d, false);
    EXPECT_EQ(frame(), "-/");
    ui->pushDialog(d, false);
    svc.memory.failAt(0);
    EXPECT_EQ(frame(), "-/");
    EXPECT_EQ(d->getState(), 0);
    EXPECT_EQ(frame(), "d0/");
    EXPECT_EQ(takeFocusStack(), (Focus{d}));
    EXPECT_EQ(svc.log.dump(),
              "2: _addDialogStackCmd(): Out of Memory\f\n2: _pushDialog(d0): Out of Memory\f\n");
    // Destroying the subsystem frees the queue, the stack and pending hides.
    uiDialog* a = dialog("a", "uiAnimDialog");
    ui->pushDialog(a, true);
    frame();
    ui->popDialog(d, false);
    ui->popDialog(a, true); // a exits at once and awaits its hide
    ui->pushDialog(d, false);
    frame();
    ui->pushDialog(a, true);
    ui->popDialog(nullptr, true);
    ui.reset();
    owned.clear();
    EXPECT_EQ(svc.memory.outstandingBlocks(9), 0);
    ExtendedSubsystem empty;
    empty._popDialog();
    EXPECT_TRUE(svc.log.has(2, "_popDialog(): Stack underflow\f"));
}

} // namespace
