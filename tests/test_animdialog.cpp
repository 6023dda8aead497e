// Animated dialogs and widgets from descriptions: entering and exiting frame by frame, masks, sounds,
// messages.
#include <gtest/gtest.h>
#include <memory>
#include "gameui.h"
#include "runtime/uianimwidget.h"
#include "screen.h"
#include "testkit.h"

namespace {

using Ints = std::vector<int>;
using Log = std::vector<std::string>;

// Enters or exits an animated widget; its class is not exported, so UBSan's dynamic type check is off here.
__attribute__((no_sanitize("vptr"))) void play(uiWidget* w, bool in) {
    in ? static_cast<uiAnimWidget*>(w)->enter() : static_cast<uiAnimWidget*>(w)->exit();
}

class AnimDialogTest : public ::testing::Test {
protected:
    testkit::Services svc;
    std::unique_ptr<uiSubsystem> ui{new uiSubsystem()};
    std::string hides;

    // Loads a dialog, makes it the top-level widget and records its hides.
    uiDialog* show(testkit::Screen& screen) {
        auto* d = static_cast<uiDialog*>(screen.root());
        ui->setTopLevelWidget(d);
        d->dlgHideCb([](uiWidget* w, void* log) { *static_cast<std::string*>(log) += w->name; }, &hides);
        return d;
    }
    std::vector<Ints> frame(unsigned int ms) { return testkit::renderFrame(svc.gfx, *ui, ms); } // its blts
    // What `probe` reads after each of `n` rendered frames of `ms`, each recorded from a clean slate.
    template <class F> Ints frames(int n, unsigned int ms, F probe) {
        Ints out;
        for (int i = 0; i < n; ++i)
            out.push_back((svc.gfx.clear(), ui->render(ms), probe()));
        return out;
    }
    int blt(int arg) { return svc.gfx.ints("blt").at(0).at(arg); } // an argument of the first blt
};

// Slides in from (0, 100) to (200, 100) on an ease-out curve; leaves under a fading mask of 2 x 3 tiles.
const char* const kMenu = "menu = uiAnimDialog\n{\n y = 100\n AnimIn style = BezierLerp\n AnimIn Time = 500\n"
                          " AnimIn Loc = 200 100\n AnimIn BezierControls = 1 1\n AnimIn sound = slide\n"
                          " AnimOut style = SpriteMask\n AnimOut Time = 1000\n AnimOut Loc = 200 100\n"
                          " AnimOut AlphaStart = 255\n AnimOut AlphaTarget = 0\n AnimOut sprite = mask\n"
                          " AnimOut spritedepth = 5\n AnimOut SpriteVertCount = 2\n"
                          " AnimOut SpriteHorzCount = 3\n AnimOut sound = whoosh\n}\n";

TEST_F(AnimDialogTest, EntersAndExitsThroughTheStackFrameByFrameWithoutAllocating) {
    svc.gfx.defineSprite("mask", 16, 8);
    testkit::Screen screen(svc, kMenu);
    uiDialog* menu = show(screen);
    const int mask = svc.gfx.spriteId("mask");
    ui->pushDialog(menu, true);
    EXPECT_TRUE(frame(100).empty()) << "no mask while entering";
    const long long stacked = svc.memory.allocations(); // the push made its stack and focus entries
    EXPECT_EQ(frames(5, 100, [&] { return menu->rect.x * 10 + menu->getState(); }),
              (Ints{972, 1562, 1872, 2001, 2001})); // x at t = 0.2 .. 0.8 then the end, and the state
    EXPECT_TRUE(menu->getInputFocus() && ui->topDialogIsIdle(menu));
    EXPECT_EQ(svc.sound.played, Log{"slide"});
    EXPECT_EQ(svc.memory.allocations(), stacked);
    ui->popDialog(menu, true);
    const long long queued = svc.memory.allocations();
    auto tiles = [&](int alpha) {
        std::vector<Ints> expected;
        for (int row = 0; row < 2; ++row)
            for (int column = 0; column < 3; ++column)
                expected.push_back({5, mask, 200 + column * 16, 100 + row * 8, 0, 0, alpha});
        return expected;
    };
    EXPECT_EQ(frame(250), tiles(255));
    EXPECT_EQ(menu->getState(), 3);
    EXPECT_FALSE(menu->getInputFocus());
    EXPECT_EQ(svc.sound.played, (Log{"slide", "whoosh"}));
    EXPECT_EQ(frame(250), tiles(191));
    EXPECT_EQ(frame(250), tiles(127));
    EXPECT_TRUE(frame(250).empty()); // the mask finished at alpha 0 in this update
    EXPECT_TRUE(menu->getState() == 4 && ui->isDialogPushed(menu));
    // Popped at the start of the next frame, hidden (once) at the start of the one after.
    EXPECT_EQ(frames(3, 250, [&] { return ui->isDialogPushed(menu) * 10 + (hides == "menu"); }),
              (Ints{0, 1, 1}));
    EXPECT_EQ(menu->getState() + menu->getVisible(), 0);
    EXPECT_EQ(svc.memory.allocations(), queued); // entering, exiting, popping and hiding allocate nothing
}

TEST_F(AnimDialogTest, HiddenRecordsDelayAndRecordsWithoutStyleActAtOnce) {
    testkit::Screen screen(svc, "late = uiAnimDialog\n{\n AnimIn style = Hidden\n AnimIn Time = 300\n"
                                " AnimOut style = Hidden\n AnimOut Time = 200\n}\n");
    uiDialog* late = show(screen);
    auto visible = [&] { return int(late->getVisible()); };
    ui->pushDialog(late, true); // out of sight while each record runs
    EXPECT_EQ(frames(4, 100, visible), (Ints{0, 0, 0, 1}));
    EXPECT_TRUE(ui->topDialogIsIdle(late));
    ui->popDialog(late, true);
    EXPECT_EQ(frames(4, 100, visible), (Ints{0, 0, 0, 0}));
    EXPECT_EQ(hides, "late");
    testkit::Screen plainScreen(svc, "plain = uiAnimDialog\n{\n x = 30\n AnimIn Loc = 5 6\n}\n", "plain.txt");
    uiDialog* plain = show(plainScreen);
    ui->pushDialog(plain, true);
    ui->update(16);
    // Activated at once (it did not come from entering) and not moved by entering without style.
    EXPECT_TRUE(plain->getState() == 1 && plain->getInputFocus() && plain->rect.x == 30);
    ui->popDialog(plain, false);
    ui->update(16);
    EXPECT_EQ(plain->getState() * 100 + plain->rect.x, 0); // hide() places it at its out location
    ui->pushDialog(plain, false);                          // idle() places it at its in location
    ui->update(16);
    EXPECT_EQ(plain->rect.x * 10 + plain->rect.y, 56);
    EXPECT_TRUE(svc.sound.played.empty());
}

// An icon fades in while sliding; mask alphas stay within 0..255; a record of time 0 ends in one update.
TEST_F(AnimDialogTest, FadesAndMasksStayInRange) {
    testkit::Screen screen(svc, "intro = uiAnimDialog\n{\n child icon = uiVisualWidget\n {\n  sprite = icon\n"
                                "  flags = WF_ACTIVE | WF_VISIBLE\n }\n AnimIn style = Trivial\n"
                                " SubAnimCount = 1\n SubAnimIn 0 widget = icon\n"
                                " SubAnimIn 0 style = AlphaFadeWithBezierLerp\n SubAnimIn 0 Time = 400\n"
                                " SubAnimIn 0 AlphaStart = 0\n SubAnimIn 0 AlphaTarget = 200\n"
                                " SubAnimIn 0 Loc = 100 0\n}\n");
    uiDialog* intro = show(screen);
    ui->pushDialog(intro, true);
    EXPECT_EQ(frames(4, 100, [&] { return blt(2) * 1000 + blt(6); }),
              (Ints{50, 1100, 12150, 100200})); // x, alpha
    EXPECT_EQ(intro->getState(), 1);
    testkit::Screen flashScreen(
        svc,
        "flash = uiAnimDialog\n{\n AnimIn style = SpriteMask\n AnimIn Time = 200\n AnimIn AlphaStart = 300\n"
        " AnimIn AlphaTarget = 600\n AnimIn sprite = flash\n AnimIn SpriteVertCount = 1\n"
        " AnimIn SpriteHorzCount = 1\n AnimOut style = SpriteMask\n AnimOut AlphaStart = 255\n"
        " AnimOut sprite = flash\n AnimOut SpriteVertCount = 1\n AnimOut SpriteHorzCount = 1\n"
        " AnimOut Loc = 50 60\n}\n",
        "flash.txt");
    uiDialog* flash = show(flashScreen);
    ui->pushDialog(flash, true);
    EXPECT_EQ(frames(3, 100, [&] { return blt(6); }), (Ints{255, 255, 255}));
    ui->popDialog(flash, true);
    EXPECT_TRUE(frame(100).empty()); // ended at alpha target 0 within the update
    EXPECT_EQ(flash->getState() * 10000 + flash->rect.x * 100 + flash->rect.y, 45060);
}

TEST_F(AnimDialogTest, VisibilityReachesOverriddenChildrenButSparesFadingOnes) {
    testkit::Screen screen(svc, "fader = uiAnimDialog\n{\n child label = uiNonVisualWidget\n {\n"
                                "  flags = WF_OVERRIDE_VISIBLE\n }\n child logo = uiNonVisualWidget\n {\n }\n"
                                " AnimOut style = Trivial\n AnimOut Time = 1000\n SubAnimCount = 1\n"
                                " SubAnimOut 0 widget = fader.logo\n SubAnimOut 0 style = AlphaFade\n"
                                " SubAnimOut 0 Time = 1000\n}\n");
    uiDialog* fader = show(screen);
    fader->setVisible(true, true);
    EXPECT_TRUE(screen.find("label")->getVisible()); // the override does not keep it out
    ui->pushDialog(fader, false);
    ui->popDialog(fader, true);
    ui->update(16);
    ASSERT_EQ(fader->getState(), 3);
    fader->setVisible(false, true);
    EXPECT_FALSE(screen.find("label")->getVisible());
    EXPECT_TRUE(screen.find("logo")->getVisible()); // still fading out
}

TEST_F(AnimDialogTest, DescriptionMistakesAreReportedAndMaskSpritesGivenBack) {
    {
        testkit::Screen screen(svc,
                               "bad = uiAnimDialog\n{\n child a = uiNonVisualWidget\n {\n }\n"
                               " AnimIn style BezierLerp\n AnimIn Colour = 3\n AnimOut sound whoosh\n"
                               " SubAnimIn 0 Time = 10\n SubAnimCount = 1\n SubAnimIn x widget = a\n"
                               " AnimIn sprite = inmask\n AnimOut sprite = outmask\n"
                               " AnimOut sprite = outmask2\n SubAnimIn 0 sprite = subin\n"
                               " SubAnimCount = 1\n SubAnimIn 0 sprite = again\n SubAnimCount = 65537\n}\n");
        ASSERT_TRUE(screen);
        EXPECT_EQ(svc.log.dump(), "2: ...expected: \"^C00FF00style = \"val\"^c\"\f\n"
                                  "2: ...unknown command for anim: \"^C00FF00Colour^c\"\f\n"
                                  "2: ...expected: \"^C00FF00sound = val^c\"\f\n"
                                  "2: ...invalid SubAnim id: 0\f\n"
                                  "2: ...expected: \"^C00FF00subanimin id ...^c\"\f\n"
                                  "2: ...line 18: SubAnimCount = 65537 is above the limit of 65536 "
                                  "sub-animations\f\n");
        EXPECT_EQ(svc.gfx.liveSprites(), 3); // inmask, outmask2, again
    }
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    EXPECT_EQ(svc.gfx.overReleases(), 0);
}

// An animated widget draws only its record's mask; not yet entered, it is idle with its in record done.
TEST_F(AnimDialogTest, AnimatedWidgetsShowTheirMasksOnlyAndPlayTheirSounds) {
    svc.gfx.defineSprite("logo", 30, 10);
    {
        testkit::Screen screen(svc,
                               "title = uiAnimWidget\n{\n x = 240\n y = 80\n sprite = icon\n"
                               " AnimIn sprite = logo\n AnimIn SpriteHorzCount = 2\n"
                               " AnimIn SpriteVertCount = 1\n AnimIn style = SpriteMask\n"
                               " AnimIn AlphaTarget = 300\n AnimIn Loc = 0 0\n AnimIn sound = ping\n"
                               " AnimOut style = SpriteMask\n AnimOut sprite = shade\n AnimOut Time = 100\n"
                               " AnimOut sound = pong\n globalinputfocus = title.nobody\n"
                               " flags = WF_ACTIVE | WF_VISIBLE\n child label = uiNonVisualWidget\n {\n"
                               "  flags = WF_OVERRIDE_VISIBLE | WF_VISIBLE\n }\n}\n");
        uiWidget* title = screen.root();
        ASSERT_NE(title, nullptr);
        EXPECT_TRUE(svc.log.has(2, "addGlobalInputFocusWidget(): unknown widget: ^CFFFF00title.nobody^c\f"))
            << "initialised as every widget is";
        ui->setTopLevelWidget(title);
        const int logo = svc.gfx.spriteId("logo");
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(frame(20),
                      (std::vector<Ints>{{0, logo, 240, 80, 0, 0, 255}, {0, logo, 270, 80, 0, 0, 255}}));
        EXPECT_EQ(title->rect.x * 1000 + title->rect.y, 240080);
        play(title, false);
        play(title, true);
        EXPECT_EQ(svc.sound.played, (Log{"pong", "ping"}));
        title->setVisible(false, true);
        EXPECT_FALSE(screen.find("label")->getVisible());
        EXPECT_EQ(svc.gfx.liveSprites(), 3); // icon, logo and shade
    }
    // A Hidden entrance keeps the widget out of sight while it runs and shows it at its end.
    testkit::Screen late(svc, "late = uiAnimWidget\n{\n AnimIn style = Hidden\n AnimIn Time = 200\n}\n",
                         "late.txt");
    uiWidget* widget = late.root();
    ui->setTopLevelWidget(widget);
    play(widget, true);
    EXPECT_EQ(frames(3, 100, [&] { return int(widget->getVisible()); }), (Ints{0, 1, 1}));
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
}

} // namespace
