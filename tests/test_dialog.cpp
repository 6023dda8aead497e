// uiDialog: states, the hide callback, restarting particle systems, tab entries and tab and click focus.
#include <gtest/gtest.h>
#include <memory>
#include "gameui.h"
#include "screen.h"
#include "testkit.h"

namespace {

using testkit::tabOrder;
using Lines = std::vector<std::string>;

class DialogTest : public ::testing::Test {
protected:
    testkit::Services svc;
    std::unique_ptr<uiSubsystem> ui{new uiSubsystem()};
    std::unique_ptr<uiDialog> dialog{static_cast<uiDialog*>(uiWidget::allocWidget("dlg", "uiDialog"))};
    testkit::CallbackLog calls;

    // An input handler in the dialog at (x, y) of size 20 x 10, its callbacks recorded.
    uiWidget* handler(const char* name, int x, int y) {
        uiWidget* w = uiWidget::allocWidget(name, "uiInputHandler");
        w->rect = {x, y, x + 20, y + 10};
        calls.watch(w);
        dialog->addChild(w, false);
        w->setWidgetStates(true, true, true, true);
        return w;
    }
    bool key(int code) { return dialog->inputEvent(UIE_KEY_DOWN, 0, 0, code, false, false); }
    bool click(int x, int y) { return dialog->inputEvent(UIE_MOUSE_DOWN, x, y, 0, false, false); }
};

TEST_F(DialogTest, IdleShowsTheSubtreeAndTakesTheFocusEntryHideDeactivatesAndCallsBack) {
    uiWidget* child = handler("child", 0, 0);
    child->setWidgetStates(false, false, false, true);
    std::unique_ptr<uiWidget> game{uiWidget::allocWidget("game", "uiNonVisualWidget")};
    ui->pushInputFocusWidget(game.get());
    uiDialog* nested = static_cast<uiDialog*>(uiWidget::allocWidget("nested", "uiDialog"));
    nested->idle();
    dialog->addChild(nested, false);
    dialog->idle();
    EXPECT_EQ(dialog->getState() * 10 + dialog->getLastState(), 11);
    EXPECT_EQ(dialog->getWidgetFlags() & 7u, 7u);
    EXPECT_EQ(child->getWidgetFlags() & 7u, 7u);
    EXPECT_EQ(ui->getInputFocusWidget(), dialog.get()); // replaced, not pushed
    ui->popInputFocusWidget();
    EXPECT_EQ(ui->getInputFocusWidget(), nullptr);
    auto hidden = [](uiWidget* w, void* log) {
        static_cast<Lines*>(log)->push_back(std::string("hide ") + w->name);
    };
    dialog->dlgHideCb(hidden, &calls.events);
    dialog->exit();
    EXPECT_EQ(dialog->getState(), 0);
    EXPECT_FALSE(dialog->setActive());
    EXPECT_FALSE(child->setActive());
    EXPECT_TRUE(dialog->getVisible()); // the render of its tree decides what disappears
    EXPECT_TRUE(nested->setActive());  // dialogs keep their own states
    EXPECT_EQ(calls.events, Lines{"hide dlg"});
    dialog->dlgHideCb(nullptr, nullptr);
    dialog->hide();
    EXPECT_EQ(calls.events, Lines{"hide dlg"});
    // Reset restarts every particle system below the dialog, children newest first.
    auto* sparks = static_cast<uiParticleSystem*>(uiWidget::allocWidget("sparks", "uiParticleSystem"));
    auto* smoke = static_cast<uiParticleSystem*>(uiWidget::allocWidget("smoke", "uiParticleSystem"));
    nested->addChild(smoke, false);
    dialog->addChild(sparks, false);
    sparks->loadPsys("sparks.psi");
    smoke->loadPsys("smoke.psi");
    svc.gfx.clear();
    dialog->reset();
    EXPECT_EQ(svc.gfx.ints("addEvent"), (std::vector<std::vector<int>>{{4, 0, 0, 0}, {4, 0, 1, 0}}));
    sparks->releaseInstance();
    smoke->releaseInstance();
}

TEST_F(DialogTest, TabAndClicksMoveTheFocusAmongTheEntries) {
    const std::vector<uiWidget*> abc = {handler("a", 0, 0), handler("b", 0, 20), handler("c", 0, 40)};
    dialog->setWidgetStates(true, true, true, false);
    for (uiWidget* w : abc)
        dialog->addTabEntry(w);
    EXPECT_EQ(tabOrder(dialog.get(), abc, 3), "abca");
    EXPECT_TRUE(calls.events.empty()); // the tab never reaches the entries
    // Other keys go on to the focused entry; a tab already handled is not the dialog's.
    key(13);
    EXPECT_TRUE(dialog->inputEvent(UIE_KEY_DOWN, 0, 0, 9, false, true));
    EXPECT_EQ(calls.events, (Lines{"over a 0,0", "keydown a 13", "over a 0,0", "keydown a 9"}));
    // Reset gives the focus back to the current entry only.
    key(9);
    dialog->setInputFocus(true, true); // focus everything, as showing the dialog does
    dialog->reset();
    EXPECT_EQ(tabOrder(dialog.get(), abc, 0), "b");
    // A click on another visible entry (in the parent's space) takes the focus and ends; others fall through.
    calls.events.clear();
    abc[2]->setVisible(false, true);
    EXPECT_TRUE(click(5, 5));
    click(5, 45);
    EXPECT_EQ(tabOrder(dialog.get(), abc, 0), "a");
    EXPECT_TRUE(click(5, 5));
    EXPECT_EQ(calls.events, (Lines{"over a 5,5", "down a 5,5"}));
    dialog->rect = {100, 50, 300, 200};
    EXPECT_TRUE(click(105, 75));
    EXPECT_EQ(tabOrder(dialog.get(), abc, 0), "b");
    // Taken out: the current entry goes and the first remaining one becomes current; all at once.
    const std::vector<uiWidget*> ac = {abc[0], abc[2]}; // b keeps the focus it had
    dialog->removeTabEntries(abc[1]);
    dialog->resetTabFocus();
    EXPECT_EQ(tabOrder(dialog.get(), ac, 2), "aca");
    dialog->removeTabEntries(dialog.get());
    EXPECT_TRUE(key(9)); // consumed even without entries
    EXPECT_EQ(tabOrder(dialog.get(), ac, 0), "a");
}

TEST_F(DialogTest, DescriptionNamesTabEntriesAndFocusTaking) {
    testkit::Screen screen(svc, "options = uiDialog\n{\n takefocus = false\n child music = uiInputHandler\n"
                                " {\n  width = 20\n  height = 10\n }\n child sound = uiInputHandler\n {\n"
                                "  y = 20\n  width = 20\n  height = 10\n }\n tabentry = options.sound\n"
                                " tabentry = options.music\n tabentry = options.nothere\n"
                                " tabentry options.music\n takefocus false\n}\n");
    auto* options = static_cast<uiDialog*>(screen.root());
    ASSERT_NE(options, nullptr);
    EXPECT_EQ(svc.log.dump(), "2: uiWidget::getWidget(): Unknown name: ^C0000FFoptions.nothere^c\f\n"
                              "2: ...tabentry: \"^C00FF00options.nothere^c does not exist.\f\n"
                              "2: ...expected: \"^C00FF00tabentry = \"string\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00takefocus = BOOLEAN^c\"\f\n");
    EXPECT_FALSE(options->takesFocus());
    std::unique_ptr<uiWidget> game{uiWidget::allocWidget("game", "uiNonVisualWidget")};
    ui->pushInputFocusWidget(game.get());
    options->idle();
    EXPECT_EQ(ui->getInputFocusWidget(), game.get()); // left alone
    options->resetTabFocus();
    const std::vector<uiWidget*> entries = {screen.find("music"), screen.find("sound")};
    EXPECT_EQ(tabOrder(options, entries, 2), "soundmusicsound");
}

// A child that could not be attached leaves the tab order with its subtree; an entry without memory is
// logged.
TEST_F(DialogTest, EntriesWithoutMemoryLeaveTheTabOrder) {
    const char* const form =
        "form = uiDialog\n{\n child name = uiInputHandler\n {\n  width = 20\n  height = 10\n"
        "  tabentry\n }\n child team = uiNonVisualWidget\n {\n  child field = uiInputHandler\n"
        "  {\n   y = 20\n   width = 20\n   height = 10\n   tabentry\n  }\n }\n}\n";
    int dropped = 0;
    for (long long n = 0;; ++n) {
        svc.memory.failAt(n);
        testkit::Screen screen(svc, form);
        const bool failed = svc.memory.failed();
        svc.memory.failAt(-1);
        auto* dlg = static_cast<uiDialog*>(screen.root());
        // Without memory for the dialog the parser goes on with the lines after its header.
        uiWidget* name = screen && screen->isType("uiDialog") ? screen.find("name") : nullptr;
        if (name && !screen.find("team") && !screen.find("field")) {
            ++dropped;
            dlg->setWidgetStates(true, true, true, false);
            dlg->resetTabFocus();
            EXPECT_EQ(tabOrder(dlg, {name}, 2), "namenamename") << "allocation " << n;
        }
        if (!failed) break;
    }
    EXPECT_GE(dropped, 1);
    uiWidget* a = handler("a", 0, 0);
    svc.log.clear();
    svc.memory.failAt(0);
    dialog->addTabEntry(a);
    EXPECT_EQ(svc.log.dump(), "2: dlg::addTabEntry(a): Out of Memory\f\n");
    dialog->setWidgetStates(true, true, true, false);
    EXPECT_TRUE(key(9));
    EXPECT_TRUE(a->getInputFocus()); // untouched
}

} // namespace
