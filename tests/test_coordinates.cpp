// Widget positions and sizes stay within a million pixels of 0, whatever a description or the game's
// input says, so that the offsets summed down a tree never leave the int range.
#include <gtest/gtest.h>
#include <climits>
#include "exercise.h"
#include "screen.h"
#include "testkit.h"

TEST(Coordinates, ExtremeDescriptionValuesAndPointerPositionsStayInRange) {
    testkit::Services svc;
    uiSubsystem ui;
    testkit::Screen screen(svc,
                           "root = uiNonVisualWidget\n{\n    x = 2147483647\n    width = 2147483647\n"
                           "    height = 600\n    child ok = uiButton\n    {\n        x = 1048576\n"
                           "        y = -2147483648\n        width = -2147483648\n        height = 40\n"
                           "        child label = uiVisualWidget\n        {\n            x = 1048576\n"
                           "            x2 = -5\n        }\n    }\n    child title = uiAnimDialog\n    {\n"
                           "        AnimIn style = BezierLerp\n        AnimIn Time = 100\n"
                           "        AnimIn Loc = -2147483648 2147483647\n    }\n"
                           "    flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS\n}\n");
    ASSERT_TRUE(screen);
    EXPECT_EQ(svc.log.dump(), "1: ...line 3: x = 2147483647 is out of range, 1048576 used\f\n"
                              "1: ...line 4: width = 2147483647 is out of range, 1048576 used\f\n"
                              "1: ...line 9: y = -2147483648 is out of range, -1048576 used\f\n"
                              "1: ...line 10: width = -2147483648 is out of range, -1048576 used\f\n"
                              "1: ...line 22: Loc = -2147483648 is out of range, -1048576 used\f\n"
                              "1: ...line 22: Loc = 2147483647 is out of range, 1048576 used\f\n");
    EXPECT_EQ(screen->rect.x2, 1 << 20) << "the far edge of a size beyond the range stops at its edge";
    EXPECT_EQ(screen.find("ok")->rect.x2, 0) << "a size counts from the kept position";
    EXPECT_EQ(screen.find("ok.label")->rect.x2, -5) << "values within the range stay as given";

    // Frames, the animation and input far outside the screen run without overflowing (the sanitizer
    // build checks every sum).
    ui.setTopLevelWidget(screen.root());
    testkit::exercise(ui);
    for (int edge : {INT_MIN, INT_MAX}) {
        ui.inputEvent(UIE_MOUSE_MOVE, edge, edge, 0);
        ui.inputEvent(UIE_MOUSE_DOWN, edge, -edge - 1, 0);
        ui.inputEvent(UIE_MOUSE_UP, edge, edge, 0);
        ui.render(16);
    }
    EXPECT_EQ(ui.getMousePositionX(), 1 << 20) << "the pointer is kept within the range too";
    screen->setWidth(INT_MAX);
    EXPECT_EQ(screen->rect.x2, 1 << 20);
    ui.setTopLevelWidget(nullptr);
}
