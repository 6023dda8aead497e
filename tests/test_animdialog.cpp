// Animated dialogs and widgets loaded from descriptions and driven through the subsystem: entering and
// exiting frame by frame, masks, sub-animations, sounds, a click's road, and the keys' messages.
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>
#include "gameui.h"
#include "screen.h"
#include "testkit.h"

namespace {

using Ints = std::vector<int>;
using Log = std::vector<std::string>;

void logHide(uiWidget* w, void* data) {
    static_cast<Log*>(data)->push_back(std::string("hide ") + w->name);
}

class AnimDialogTest : public ::testing::Test {
protected:
    testkit::Services svc;
    std::unique_ptr<uiSubsystem> ui{new uiSubsystem()};
    Log hides;

    // Loads a dialog, makes it the top-level widget and records its hides.
    uiDialog* show(testkit::Screen& screen) {
        auto* d = static_cast<uiDialog*>(screen.root());
        ui->setTopLevelWidget(d);
        d->dlgHideCb(&logHide, &hides);
        return d;
    }
    // One rendered frame; its blt calls, each as its seven int arguments.
    std::vector<Ints> frame(unsigned int ms) {
        svc.gfx.clear();
        ui->render(ms);
        std::vector<Ints> blts;
        for (const testkit::GfxCall& call : svc.gfx.named("blt"))
            blts.push_back(call.ints);
        return blts;
    }
    // The dialog's state after each of `n` frames of `ms`.
    Ints states(uiDialog* d, int n, unsigned int ms = 100) {
        Ints s;
        for (int i = 0; i < n; ++i) {
            ui->render(ms);
            s.push_back(d->getState());
        }
        return s;
    }
};

// Slides in from (0, 100) to (200, 100) on an ease-out curve; leaves under a fading mask of 2 x 3 tiles.
const char* const kMenu = R"(menu = uiAnimDialog
{
    x = 0
    y = 100
    AnimIn style = BezierLerp
    AnimIn Time = 500
    AnimIn Loc = 200 100
    AnimIn BezierControls = 1 1
    AnimIn sound = slide
    AnimOut style = SpriteMask
    AnimOut Time = 1000
    AnimOut Loc = 200 100
    AnimOut AlphaStart = 255
    AnimOut AlphaTarget = 0
    AnimOut sprite = mask
    AnimOut spritedepth = 5
    AnimOut SpriteVertCount = 2
    AnimOut SpriteHorzCount = 3
    AnimOut sound = whoosh
}
)";

TEST_F(AnimDialogTest, EntersAndExitsThroughTheStackFrameByFrameWithoutAllocating) {
    svc.gfx.defineSprite("mask", 16, 8);
    testkit::Screen screen(svc, kMenu);
    uiDialog* menu = show(screen);
    const int mask = svc.gfx.spriteId("mask");

    ui->pushDialog(menu, true);
    Ints xs, states;
    std::vector<bool> focused;
    long long stacked = 0; // allocations once the push has made its stack and focus entries
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(frame(100).empty()) << "no mask while entering, frame " << i + 1;
        if (i == 0) stacked = svc.memory.allocations();
        xs.push_back(menu->rect.x);
        states.push_back(menu->getState());
        focused.push_back(menu->getInputFocus() && ui->topDialogIsIdle(menu));
    }
    EXPECT_EQ(xs, (Ints{0, 97, 156, 187, 200, 200})); // t = 0, 0.2, 0.4, 0.6, 0.8, then loc
    EXPECT_EQ(states, (Ints{2, 2, 2, 2, 1, 1}));
    EXPECT_EQ(focused, (std::vector<bool>{false, false, false, false, false, true}));
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
    EXPECT_EQ(menu->getState(), 4);
    EXPECT_TRUE(ui->isDialogPushed(menu));

    frame(250);
    EXPECT_FALSE(ui->isDialogPushed(menu)); // popped at the start of this frame
    EXPECT_TRUE(hides.empty());
    frame(250);
    EXPECT_EQ(hides, Log{"hide menu"}); // hidden at the start of the following frame
    EXPECT_EQ(menu->getState(), 0);
    EXPECT_FALSE(menu->getVisible());
    frame(250);
    EXPECT_EQ(hides.size(), 1u);
    EXPECT_EQ(svc.memory.allocations(), queued); // exiting, popping and hiding allocate nothing
}

// OK closes the dialog: the click travels through the focus stack to the handler, which queues the pop.
const char* const kConfirm = R"(confirm = uiAnimDialog
{
    width = 800
    height = 600
    child ok = uiInputHandler
    {
        x = 100
        y = 100
        width = 80
        height = 30
        flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS
    }
    AnimIn style = Trivial
    AnimIn Time = 200
    AnimOut style = Trivial
    AnimOut Time = 300
}
)";

bool closeOnClick(uiWidget* w, void* client, int, int) {
    ++*static_cast<int*>(client);
    g_ui->popDialog(static_cast<uiDialog*>(w->getRootWidget()), true);
    return true;
}

TEST_F(AnimDialogTest, ClicksReachTheDialogOnlyWhileItIsIdle) {
    testkit::Screen screen(svc, kConfirm);
    uiDialog* confirm = show(screen);
    uiWidget* ok = screen.find("ok");
    int clicks = 0;
    _WidgetMap_s map = {nullptr, nullptr, nullptr, &closeOnClick, nullptr, nullptr, nullptr};
    ok->assignCallbacks(&map, &clicks);
    auto click = [&] {
        ui->inputEvent(UIE_MOUSE_MOVE, 120, 110, 0);
        ui->inputEvent(UIE_MOUSE_DOWN, 120, 110, 0);
        ui->inputEvent(UIE_MOUSE_UP, 120, 110, 0);
    };

    ui->pushDialog(confirm, true);
    ui->render(100);
    click(); // entering: no input yet
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(states(confirm, 2), (Ints{1, 1}));
    EXPECT_TRUE(ok->getInputFocus());

    click();
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(confirm->getState(), 1); // the pop is only queued
    ui->render(100);
    click(); // exiting: ignored
    EXPECT_EQ(states(confirm, 4), (Ints{3, 4, 4, 0}));
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(hides, Log{"hide confirm"});
    EXPECT_EQ(ui->topDialog(), nullptr);
    EXPECT_FALSE(ok->getVisible());
}

TEST_F(AnimDialogTest, APushWaitsForTheTopDialogToFinishEntering) {
    testkit::Screen screen(svc, kConfirm);
    uiDialog* confirm = show(screen);
    std::unique_ptr<uiDialog> popup{static_cast<uiDialog*>(uiWidget::allocWidget("popup", "uiDialog"))};
    ui->pushDialog(confirm, true);
    ui->pushDialog(popup.get(), true);
    ui->update(100);
    ui->update(100); // confirm finishes entering in this update, after the queue ran
    EXPECT_EQ(confirm->getState(), 1);
    EXPECT_EQ(ui->topDialog(), confirm);
    ui->update(100);
    EXPECT_EQ(ui->topDialog(), popup.get());
}

// A panel slides in on its own curve, longer than the dialog's; an unmapped sub-animation with a long
// time does not hold the dialog back.
const char* const kPanels = R"(screen = uiAnimDialog
{
    child panel = uiNonVisualWidget
    {
        x = 10
        y = 20
    }
    AnimIn style = Trivial
    AnimIn Time = 200
    SubAnimCount = 2
    SubAnimIn 0 widget = panel
    SubAnimIn 0 style = BezierLerp
    SubAnimIn 0 Time = 400
    SubAnimIn 0 Loc = 110 20
    SubAnimIn 1 Time = 5000
}
)";

TEST_F(AnimDialogTest, SubAnimationsMoveTheirWidgetsAndHoldTheDialog) {
    testkit::Screen screen(svc, kPanels);
    uiDialog* dialog = show(screen);
    uiWidget* panel = screen.find("panel");
    panel->rect.x = 70; // moved by the game; the entrance starts from where the panel was mapped

    ui->pushDialog(dialog, true);
    Ints xs, states;
    for (int i = 0; i < 5; ++i) {
        ui->render(100);
        xs.push_back(panel->rect.x);
        states.push_back(dialog->getState());
    }
    EXPECT_EQ(xs, (Ints{10, 11, 22, 110, 110})); // ease-in: t = 0, 0.25, 0.5, 0.75 then loc
    EXPECT_EQ(states, (Ints{2, 2, 2, 1, 1}));
}

// Hidden on the dialog's own record keeps it out of sight for the record's time, its update running.
TEST_F(AnimDialogTest, HiddenOnItsOwnRecordDelaysTheDialog) {
    testkit::Screen screen(svc, "late = uiAnimDialog\n{\n AnimIn style = Hidden\n AnimIn Time = 300\n"
                                " AnimOut style = Hidden\n AnimOut Time = 200\n}\n");
    uiDialog* late = show(screen);
    auto visibility = [&] {
        std::vector<bool> v;
        for (int i = 0; i < 4; ++i) {
            ui->render(100);
            v.push_back(late->getVisible());
        }
        return v;
    };
    ui->pushDialog(late, true);
    EXPECT_EQ(visibility(), (std::vector<bool>{false, false, false, true}));
    EXPECT_TRUE(ui->topDialogIsIdle(late));
    ui->popDialog(late, true);
    EXPECT_EQ(visibility(), (std::vector<bool>{false, false, false, false}));
    EXPECT_EQ(hides, Log{"hide late"});
}

TEST_F(AnimDialogTest, WithoutStylesTheDialogEntersAndExitsAtOnce) {
    testkit::Screen screen(svc, "plain = uiAnimDialog\n{\n    x = 30\n    AnimIn Loc = 5 6\n}\n");
    uiDialog* plain = show(screen);
    ui->pushDialog(plain, true);
    ui->update(16);
    EXPECT_EQ(plain->getState(), 1);
    EXPECT_TRUE(plain->getInputFocus()); // activated at once: it did not come from entering
    EXPECT_EQ(plain->rect.x, 30);        // entering without style does not move it

    ui->popDialog(plain, false);
    ui->update(16);
    EXPECT_EQ(plain->getState(), 0);
    EXPECT_EQ(plain->rect.x, 0);  // hide() places it at its out location
    ui->pushDialog(plain, false); // idle() places it at its in location
    ui->update(16);
    EXPECT_EQ(plain->rect.x, 5);
    EXPECT_EQ(plain->rect.y, 6);
    EXPECT_TRUE(svc.sound.played.empty());
}

// An icon fades from 0 to 200 while sliding from (0, 0) to (100, 0); the dialog waits for it.
const char* const kIcon = R"(intro = uiAnimDialog
{
    child icon = uiVisualWidget
    {
        sprite = icon
        flags = WF_ACTIVE | WF_VISIBLE
    }
    AnimIn style = Trivial
    SubAnimCount = 1
    SubAnimIn 0 widget = icon
    SubAnimIn 0 style = AlphaFadeWithBezierLerp
    SubAnimIn 0 Time = 400
    SubAnimIn 0 AlphaStart = 0
    SubAnimIn 0 AlphaTarget = 200
    SubAnimIn 0 Loc = 100 0
}
)";

TEST_F(AnimDialogTest, FadingSubAnimationsLeaveTheFadeToTheirWidgets) {
    testkit::Screen screen(svc, kIcon);
    uiDialog* intro = show(screen);
    ui->pushDialog(intro, true);
    std::vector<std::pair<int, int>> drawn; // x and alpha of the icon per frame
    for (int i = 0; i < 4; ++i) {
        const std::vector<Ints> blts = frame(100);
        ASSERT_EQ(blts.size(), 1u);
        drawn.emplace_back(blts[0][2], blts[0][6]);
    }
    EXPECT_EQ(drawn, (std::vector<std::pair<int, int>>{{0, 50}, {1, 100}, {12, 150}, {100, 200}}));
    EXPECT_EQ(intro->getState(), 1);
}

// Mask alphas stay within 0 to 255; a record of time 0 completes in its first update.
const char* const kFlash = R"(flash = uiAnimDialog
{
    AnimIn style = SpriteMask
    AnimIn Time = 200
    AnimIn AlphaStart = 300
    AnimIn AlphaTarget = 600
    AnimIn sprite = flash
    AnimIn SpriteVertCount = 1
    AnimIn SpriteHorzCount = 1
    AnimOut style = SpriteMask
    AnimOut AlphaStart = 255
    AnimOut sprite = flash
    AnimOut SpriteVertCount = 1
    AnimOut SpriteHorzCount = 1
    AnimOut Loc = 50 60
}
)";

TEST_F(AnimDialogTest, MaskAlphaIsClampedAndATimelessRecordEndsAtOnce) {
    testkit::Screen screen(svc, kFlash);
    uiDialog* flash = show(screen);
    ui->pushDialog(flash, true);
    Ints alphas;
    for (int i = 0; i < 3; ++i)
        for (const Ints& blt : frame(100))
            alphas.push_back(blt[6]);
    EXPECT_EQ(alphas, (Ints{255, 255, 255}));

    ui->popDialog(flash, true);
    EXPECT_TRUE(frame(100).empty()); // ended at alpha target 0 within the update
    EXPECT_EQ(flash->getState(), 4);
    EXPECT_EQ(flash->rect.x, 50);
    EXPECT_EQ(flash->rect.y, 60);
}

TEST_F(AnimDialogTest, VisibilityReachesOverriddenChildrenButSparesFadingOnes) {
    testkit::Screen screen(svc, "fader = uiAnimDialog\n{\n child label = uiNonVisualWidget\n {\n"
                                "  flags = WF_OVERRIDE_VISIBLE\n }\n child logo = uiNonVisualWidget\n {\n }\n"
                                " AnimOut style = Trivial\n AnimOut Time = 1000\n SubAnimCount = 1\n"
                                " SubAnimOut 0 widget = fader.logo\n SubAnimOut 0 style = AlphaFade\n"
                                " SubAnimOut 0 Time = 1000\n}\n");
    uiDialog* fader = show(screen);
    uiWidget* label = screen.find("label");
    uiWidget* logo = screen.find("logo");
    fader->setVisible(true, true);
    EXPECT_TRUE(label->getVisible()); // the override does not keep it out

    ui->pushDialog(fader, false);
    ui->popDialog(fader, true);
    ui->update(16);
    ASSERT_EQ(fader->getState(), 3);
    fader->setVisible(false, true);
    EXPECT_FALSE(label->getVisible());
    EXPECT_TRUE(logo->getVisible()); // still fading out
}

TEST_F(AnimDialogTest, DescriptionMistakesAreReported) {
    testkit::Screen screen(svc, R"(bad = uiAnimDialog
{
    child a = uiNonVisualWidget
    {
    }
    AnimIn style BezierLerp
    AnimIn style = Wobble
    AnimIn Colour = 3
    AnimIn sprite mask
    AnimOut spritedepth
    AnimOut sound whoosh
    SubAnimIn 0 Time = 10
    SubAnimCount = 1
    SubAnimIn x widget = a
    SubAnimOut 3 Time = 10
    SubAnimIn 0 widget a
    SubAnimIn 0 widget = nothere
    SubAnimIn 0 widget = a
    SubAnimCount = 65537
}
)");
    ASSERT_TRUE(screen);
    const Log expected = {
        "...expected: \"^C00FF00style = \"val\"^c\"\f",
        "...anim style type \"^C00FF00Wobble^c\" unknown\f",
        "...unknown command for anim: \"^C00FF00Colour^c\"\f",
        "...expected: \"^C00FF00sprite = val^c\"\f",
        "...expected: \"^C00FF00spritedepth = val^c\"\f",
        "...expected: \"^C00FF00sound = val^c\"\f",
        "...invalid SubAnim id: 0\f",
        "...expected: \"^C00FF00subanimin id ...^c\"\f",
        "...invalid SubAnim id: 3\f",
        "...expected: \"^C00FF00widget = \"val\"^c\"\f",
        "uiWidget::getWidget(): Unknown name: ^C0000FFnothere^c\f",
        "uiAnimDialog[^CFFFF00bad^c]: Failed to map subAnim widget: ^CFF0000nothere^c\f",
        "...line 19: SubAnimCount = 65537 is above the limit of 65536 sub-animations\f",
    };
    Log logged;
    for (const auto& entry : svc.log.entries()) {
        EXPECT_EQ(entry.severity, 2) << entry.text;
        logged.push_back(entry.text);
    }
    EXPECT_EQ(logged, expected);
}

TEST_F(AnimDialogTest, MaskSpritesAreGivenBackWithTheDialog) {
    {
        testkit::Screen screen(svc, "masked = uiAnimDialog\n{\n child a = uiNonVisualWidget\n {\n }\n"
                                    " AnimIn sprite = inmask\n AnimOut sprite = outmask\n"
                                    " AnimOut sprite = outmask2\n SubAnimCount = 1\n SubAnimIn 0 widget = a\n"
                                    " SubAnimIn 0 sprite = subin\n SubAnimOut 0 sprite = subout\n"
                                    " SubAnimCount = 1\n SubAnimIn 0 sprite = again\n}\n");
        EXPECT_EQ(svc.gfx.liveSprites(), 3); // inmask, outmask2, again
    }
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    EXPECT_EQ(svc.gfx.overReleases(), 0);
}

// An animated widget never draws its sprite, only the mask of its current record (none until it has
// animated); it passes visibility to overridden children and gives its masks back.
TEST_F(AnimDialogTest, AnimatedWidgetDrawsMasksOnlyAndGivesThemBack) {
    {
        testkit::Screen screen(svc, "badge = uiAnimWidget\n{\n sprite = icon\n AnimIn style = SpriteMask\n"
                                    " AnimIn sprite = glow\n AnimIn SpriteVertCount = 1\n"
                                    " AnimIn SpriteHorzCount = 1\n flags = WF_ACTIVE | WF_VISIBLE\n"
                                    " child label = uiNonVisualWidget\n {\n"
                                    "  flags = WF_OVERRIDE_VISIBLE | WF_VISIBLE\n }\n}\n");
        uiWidget* badge = screen.root();
        ASSERT_NE(badge, nullptr);
        ui->setTopLevelWidget(badge);
        for (int i = 0; i < 3; ++i)
            EXPECT_TRUE(frame(100).empty());
        badge->setVisible(false, true);
        EXPECT_FALSE(screen.find("label")->getVisible());
        EXPECT_EQ(svc.gfx.liveSprites(), 2); // icon and glow
    }
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
}

// A title that no game code enters (the class has no public header): it starts idle and shows its in
// record as finished, a mask at its target alpha, where the description placed it.
const char* const kTitle = R"(title = uiAnimWidget
{
    x = 240
    y = 80
    AnimIn sprite = logo
    AnimIn SpriteHorzCount = 2
    AnimIn SpriteVertCount = 1
    AnimIn style = SpriteMask
    AnimIn AlphaTarget = 300
    AnimIn Loc = 0 0
    AnimOut style = SpriteMask
    AnimOut sprite = shade
    AnimOut AlphaTarget = 90
    flags = WF_ACTIVE | WF_VISIBLE
}
)";

TEST_F(AnimDialogTest, AnimatedWidgetStartsWithItsEntranceFinishedInPlace) {
    svc.gfx.defineSprite("logo", 30, 10);
    testkit::Screen screen(svc, kTitle);
    ASSERT_TRUE(screen);
    ui->setTopLevelWidget(screen.root());
    const int logo = svc.gfx.spriteId("logo");
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(frame(20),
                  (std::vector<Ints>{{0, logo, 240, 80, 0, 0, 255}, {0, logo, 270, 80, 0, 0, 255}}));
    EXPECT_EQ(screen->rect.x, 240);
    EXPECT_EQ(screen->rect.y, 80);
}

} // namespace
