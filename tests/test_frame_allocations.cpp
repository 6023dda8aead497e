// Frames and input must not allocate: a full screen holding every widget type is driven through frames,
// pointer gestures and keys, and after one warm-up pass the counting memory manager sees nothing.
#include <gtest/gtest.h>
#include "gameui.h"
#include "screen.h"
#include "testkit.h"

namespace {

// One widget of each type in its own 100 x 60 cell; radio buttons inside their group, two sprites in a
// flow layout.
const char* const kEveryWidget = R"(screen = uiNonVisualWidget
{
    width = 800
    height = 600
    child plain = uiNonVisualWidget
    {
        x = 0
        width = 100
        height = 60
    }
    child handler = uiInputHandler
    {
        x = 100
        width = 100
        height = 60
    }
    child picture = uiVisualWidget
    {
        x = 200
        sprite = art
    }
    child ok = uiButton
    {
        x = 300
        sprite = art
        rate = 10
        flags = UIB_HOVER | UIB_PRESSED
    }
    child sound = uiToggleButton
    {
        x = 400
        sprite = art
    }
    child choice = uiRadioGroup
    {
        x = 500
        width = 100
        height = 60
        child easy = uiRadioButton
        {
            sprite = art
        }
        child hard = uiRadioButton
        {
            y = 30
            sprite = art
        }
    }
    child volume = uiSliderButton
    {
        x = 600
        sprite = art
        minx = 600
        maxx = 700
    }
    child health = uiProgressBar
    {
        y = 100
        sprite = art
        smooth = true
        value = 50
    }
    child coin = uiSprite
    {
        x = 100
        y = 100
        sprite = art
        rate = 10
        loop = true
        animate = true
    }
    child sparks = uiParticleSystem
    {
        x = 200
        y = 100
        file = sparks.psi
    }
    child ticker = uiDigitalBanner
    {
        x = 300
        y = 100
        width = 100
        height = 20
        font = small
    }
    child box = uiDialog
    {
        x = 400
        y = 100
        width = 100
        height = 60
    }
    child popup = uiAnimDialog
    {
        x = 500
        y = 100
        width = 100
        height = 60
    }
    child world = uiGameContainer
    {
        x = 600
        y = 100
        width = 100
        height = 60
    }
    child badge = uiAnimWidget
    {
        x = 700
        y = 100
        sprite = art
    }
    child title = uiTextWidget
    {
        y = 200
        font = small
        text = "Score"
    }
    child player = uiEntryWidget
    {
        x = 100
        y = 200
        font = small
        entryrectx = 100
        entryrecty = 20
        cursor = art
    }
    child row = uiFlowLayout
    {
        x = 200
        y = 200
        Width = 200
        child first = uiVisualWidget
        {
            sprite = art
        }
        child second = uiVisualWidget
        {
            sprite = art
        }
    }
    visible = true
    active = true
    inputfocus = true
}
)";

int g_clicks = 0;
bool countClick(uiWidget*, void*, int, int) {
    ++g_clicks;
    return true;
}

} // namespace

TEST(FrameAllocations, FramesAndInputOnAFullScreenAllocateNothing) {
    testkit::Services svc;
    uiSubsystem ui;
    svc.gfx.defineSprite("art", 40, 30, {4, 4, 4, 4});
    svc.gfx.defineFont("small", 10, 6);
    testkit::Screen screen(svc, kEveryWidget);
    ASSERT_TRUE(screen);
    ui.setTopLevelWidget(screen.root());
    static_cast<uiDigitalBanner*>(screen.find("ticker"))->print(1, "scrolling news");
    _WidgetMap_s map{};
    map.mouseUpCb = countClick;
    screen.find("ok")->assignCallbacks(&map, nullptr);

    // Every cell: move in, press, release, then a drag across the slider; frames in between.
    auto play = [&] {
        for (int frame = 0; frame < 20; ++frame) {
            const int x = 10 + (frame % 8) * 100, y = 10 + (frame / 8 % 2) * 100;
            ui.inputEvent(UIE_MOUSE_MOVE, x, y, 0);
            ui.inputEvent(UIE_MOUSE_DOWN, x, y, 0);
            ui.inputEvent(UIE_MOUSE_UP, x, y, 0);
            ui.inputEvent(UIE_KEY_DOWN, 0, 0, 32);
            ui.inputEvent(UIE_KEY_UP, 0, 0, 32);
            ui.update(16);
            ui.render(16);
        }
        ui.inputEvent(UIE_MOUSE_DOWN, 110, 205, 0); // into the entry field, and type
        ui.inputEvent(UIE_MOUSE_UP, 110, 205, 0);
        ui.inputEvent(UIE_CHAR, 0, 0, 'a');
        ui.inputEvent(UIE_KEY_DOWN, 0, 0, 8);
        ui.inputEvent(UIE_KEY_UP, 0, 0, 8);
        ui.inputEvent(UIE_MOUSE_DOWN, 605, 5, 0);
        ui.inputEvent(UIE_MOUSE_MOVE, 650, 5, 0);
        ui.inputEvent(UIE_MOUSE_UP, 650, 5, 0);
        ui.render(16);
    };
    play(); // warm-up: sprites, focus entries and queues reach their steady size
    svc.memory.reset();
    svc.gfx.clear();
    g_clicks = 0;
    play();

    EXPECT_EQ(svc.memory.allocations(), 0) << svc.memory.report();
    EXPECT_GT(svc.gfx.count("blt"), 40); // the frames really drew the screen
    EXPECT_EQ(g_clicks, 2);              // and the input reached the button (frames 3 and 19)
    ui.setTopLevelWidget(nullptr);
}
