// Sliders: the value from the thumb's place, a drag across several frames through the subsystem with
// the game's move and release handlers, tracks without room, and the "minx" / "maxx" keys.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include "screen.h"
#include "stage.h"
#include "testkit.h"
#include "uisliderbutton.h"

namespace {

struct Drag {
    uiSliderButton* slider = nullptr;
    std::vector<std::string> seen;
};

bool onMove(uiWidget* w, void* client, int x, int y) {
    auto* drag = static_cast<Drag*>(client);
    char line[64];
    std::snprintf(line, sizeof line, "move %d,%d value %.2f", x, y, drag->slider->getValue());
    drag->seen.push_back(line);
    return true;
}

bool onRelease(uiWidget*, void* client, int x, int y) {
    static_cast<Drag*>(client)->seen.push_back("up " + std::to_string(x) + "," + std::to_string(y));
    return true;
}

// A 20-pixel thumb on a track from 100 to 300, in a panel whose origin lies at (40, 0) on the screen.
const char* const kScreen =
    "panel = uiNonVisualWidget\n{\n x = 40\n width = 760\n height = 600\n"
    " child s = uiSliderButton\n {\n  sprite = thumb\n  x = 100\n  y = 50\n"
    "  flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n  minx = 100\n  maxx = 300\n }\n"
    " flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n";

class Slider : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    std::unique_ptr<testkit::Screen> screen;
    uiSliderButton* slider = nullptr;
    Drag drag;

    void SetUp() override {
        svc.gfx.defineSprite("thumb", 20, 20);
        screen = std::make_unique<testkit::Screen>(svc, kScreen);
        ASSERT_TRUE(*screen);
        stage.ui().setTopLevelWidget(screen->root());
        slider = static_cast<uiSliderButton*>(screen->find("s"));
        drag.slider = slider;
        _WidgetMap_s map{nullptr, nullptr, nullptr, &onRelease, &onMove, nullptr, nullptr};
        slider->assignCallbacks(&map, &drag);
    }
    void TearDown() override { stage.ui().setTopLevelWidget(stage.root()); }
    void placeThumb(int x) { slider->rect = {x, 50, x + 20, 70}; }
};

TEST_F(Slider, ValueFollowsTheThumbAndPlacesIt) {
    placeThumb(100);
    EXPECT_FLOAT_EQ(slider->getValue(), 0.0f);
    placeThumb(200);
    EXPECT_FLOAT_EQ(slider->getValue(), 0.5f);
    placeThumb(300);
    EXPECT_FLOAT_EQ(slider->getValue(), 1.0f);
    placeThumb(350);
    EXPECT_FLOAT_EQ(slider->getValue(), 1.25f); // not clamped

    slider->setValue(0.5f);
    EXPECT_EQ(slider->rect.x, 200);
    EXPECT_EQ(slider->rect.x2, 220);
    slider->setValue(0.33f); // 200 * 0.33 - 10 = 56, truncated
    EXPECT_EQ(slider->rect.x, 166);
    slider->setValue(-0.5f);
    EXPECT_EQ(slider->rect.x, 0);
}

TEST_F(Slider, DragsAcrossFramesWithTheGamesHandlers) {
    slider->setValue(0.5f); // thumb from 200 to 220 in the panel, 240 to 260 on the screen
    stage.render(16);
    stage.move(250, 60);
    stage.press(250, 60);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), slider);

    stage.move(245, 60); // within the thumb: it stays
    stage.render(16);
    EXPECT_EQ(slider->rect.x, 200);

    stage.move(210, 90);            // 30 pixels left of the thumb, and below it
    EXPECT_EQ(slider->rect.x, 200); // moves at the next update
    stage.update(16);
    EXPECT_EQ(slider->rect.x, 170);
    EXPECT_EQ(slider->rect.x2, 190);
    EXPECT_FLOAT_EQ(slider->getValue(), 0.35f);

    stage.move(0, 60); // far left: the thumb stops at the left end
    stage.update(16);
    EXPECT_EQ(slider->rect.x, 100);
    stage.move(790, 60); // far right: the right edge stops at maxx + the thumb's width
    stage.update(16);
    EXPECT_EQ(slider->rect.x, 300);
    EXPECT_EQ(slider->rect.x2, 320);

    stage.release(700, 500); // outside: still the end of the drag
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.move(400, 60);
    stage.update(16);
    EXPECT_EQ(slider->rect.x, 300);

    EXPECT_EQ(drag.seen,
              std::vector<std::string>({"move 205,60 value 0.50", "move 170,90 value 0.50",
                                        "move -40,60 value 0.35", "move 750,60 value 0.00", "up 660,500"}));
    EXPECT_TRUE(svc.sound.played.empty());
}

TEST_F(Slider, ATrackWithoutRoomReadsZero) {
    testkit::Screen flat(
        svc, "s = uiSliderButton\n{\n sprite = thumb\n x = 100\n minx = 100\n maxx = 100\n}\n", "flat.txt");
    ASSERT_TRUE(flat);
    auto* s = static_cast<uiSliderButton*>(flat.root());
    EXPECT_TRUE(s->setActive()); // "maxx" activated it
    EXPECT_EQ(s->getValue(), 0.0f);
    s->setValue(0.7f);
    EXPECT_EQ(s->rect.x, 100);
    EXPECT_EQ(s->rect.x2, 120);

    s->rect = {100, 0, 140, 20}; // a thumb wider than its track
    EXPECT_EQ(s->getValue(), 0.0f);
    s->setValue(1.0f);
    EXPECT_EQ(s->rect.x, 100);

    placeThumb(200); // values that are no numbers, or too far out, keep the thumb on the screen's scale
    slider->setValue(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(slider->rect.x, 100);
    slider->setValue(std::numeric_limits<float>::infinity());
    EXPECT_GT(slider->rect.x, 1000000);
    EXPECT_EQ(slider->rect.x2 - slider->rect.x, 20);
    EXPECT_TRUE(std::isfinite(slider->getValue()));
}

TEST_F(Slider, DescriptionKeys) {

    // "maxx" before "sprite": no thumb yet, so the track ends at maxx itself.
    testkit::Screen early(
        svc, "s = uiSliderButton\n{\n minx = 0\n maxx = 100\n sprite = thumb\n minx = x\n}\n", "early.txt");
    ASSERT_TRUE(early);
    auto* s = static_cast<uiSliderButton*>(early.root());
    EXPECT_EQ(s->getSpriteId(), -1);
    s->rect = {0, 0, 20, 20};
    s->setValue(1.0f);
    EXPECT_EQ(s->rect.x2, 100);
    EXPECT_EQ(svc.log.count(), 1) << svc.log.dump();
}

} // namespace
