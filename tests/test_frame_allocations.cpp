// Frames and input must not allocate: a full screen holding every widget type is driven through frames,
// pointer gestures and keys, and after one warm-up pass the counting memory manager sees nothing.
#include <gtest/gtest.h>
#include "gameui.h"
#include "screen.h"
#include "testkit.h"

namespace {

// One widget of each type in its own 100 x 60 cell; radio buttons inside their group, two sprites in a
// flow layout.
const char* const kEveryWidget =
    "screen = uiNonVisualWidget\n{\n width = 800\n height = 600\n"
    " child plain = uiNonVisualWidget\n {\n  width = 100\n  height = 60\n }\n"
    " child handler = uiInputHandler\n {\n  x = 100\n  width = 100\n  height = 60\n }\n"
    " child picture = uiVisualWidget\n {\n  x = 200\n  sprite = art\n }\n"
    " child ok = uiButton\n {\n  x = 300\n  sprite = art\n  rate = 10\n  flags = UIB_HOVER | UIB_PRESSED\n "
    "}\n"
    " child sound = uiToggleButton\n {\n  x = 400\n  sprite = art\n }\n"
    " child choice = uiRadioGroup\n {\n  x = 500\n  width = 100\n  height = 60\n"
    "  child easy = uiRadioButton\n  {\n   sprite = art\n  }\n"
    "  child hard = uiRadioButton\n  {\n   y = 30\n   sprite = art\n  }\n }\n"
    " child volume = uiSliderButton\n {\n  x = 600\n  sprite = art\n  minx = 600\n  maxx = 700\n }\n"
    " child health = uiProgressBar\n {\n  y = 100\n  sprite = art\n  smooth = true\n  value = 50\n }\n"
    " child coin = uiSprite\n {\n  x = 100\n  y = 100\n  sprite = art\n  rate = 10\n  loop = true\n"
    "  animate = true\n }\n"
    " child sparks = uiParticleSystem\n {\n  x = 200\n  y = 100\n  file = sparks.psi\n }\n"
    " child ticker = uiDigitalBanner\n {\n  x = 300\n  y = 100\n  width = 100\n  height = 20\n  font = "
    "small\n }\n"
    " child box = uiDialog\n {\n  x = 400\n  y = 100\n  width = 100\n  height = 60\n }\n"
    " child popup = uiAnimDialog\n {\n  x = 500\n  y = 100\n  width = 100\n  height = 60\n }\n"
    " child world = uiGameContainer\n {\n  x = 600\n  y = 100\n  width = 100\n  height = 60\n }\n"
    " child badge = uiAnimWidget\n {\n  x = 700\n  y = 100\n  sprite = art\n }\n"
    " child title = uiTextWidget\n {\n  y = 200\n  font = small\n  text = \"Score\"\n }\n"
    " child player = uiEntryWidget\n {\n  x = 100\n  y = 200\n  font = small\n  entryrectx = 100\n"
    "  entryrecty = 20\n  cursor = art\n }\n"
    " child row = uiFlowLayout\n {\n  x = 200\n  y = 200\n  Width = 200\n"
    "  child first = uiVisualWidget\n  {\n   sprite = art\n  }\n"
    "  child second = uiVisualWidget\n  {\n   sprite = art\n  }\n }\n"
    " visible = true\n active = true\n inputfocus = true\n}\n";

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
