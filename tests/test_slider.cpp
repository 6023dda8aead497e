// Sliders: the value from the thumb's place, a drag across several frames through the subsystem with
// the game's move and release handlers, tracks without room, and the "minx" / "maxx" keys.
#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include "screen.h"
#include "testkit.h"
#include "uisliderbutton.h"

namespace {

// A 20-pixel thumb on a track from 100 to 300, in a panel whose origin lies at (40, 0) on the screen.
class Slider : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    std::unique_ptr<testkit::Screen> screen;
    uiSliderButton* slider = nullptr;
    testkit::CallbackLog log;

    void SetUp() override {
        svc.gfx.defineSprite("thumb", 20, 20);
        screen = std::make_unique<testkit::Screen>(
            svc, "panel = uiNonVisualWidget\n{\n x = 40\n width = 760\n height = 600\n child s = "
                 "uiSliderButton\n {\n"
                 "  sprite = thumb\n  x = 100\n  y = 50\n  flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n"
                 "  minx = 100\n  maxx = 300\n }\n flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n");
        stage.ui().setTopLevelWidget(screen->root());
        slider = static_cast<uiSliderButton*>(screen->find("s"));
        log.watch(slider, testkit::CallbackLog::kMove | testkit::CallbackLog::kUp);
    }
    void TearDown() override { stage.ui().setTopLevelWidget(stage.root()); }
    std::string thumb() const {
        return std::to_string(slider->rect.x) + ".." + std::to_string(slider->rect.x2);
    }
};

TEST_F(Slider, ValueFollowsTheThumbAndPlacesIt) {
    std::vector<float> values;
    for (int x : {100, 200, 300, 350}) {
        slider->rect = {x, 50, x + 20, 70};
        values.push_back(slider->getValue());
    }
    EXPECT_EQ(values, (std::vector<float>{0.0f, 0.5f, 1.0f, 1.25f})); // not clamped
    std::string placed;
    for (float v : {0.5f, 0.33f, -0.5f}) { // 200 * 0.33 - 10 = 56, truncated
        slider->setValue(v);
        placed += thumb() + " ";
    }
    EXPECT_EQ(placed, "200..220 166..186 0..20 ");
    // Values that are no numbers, or too far out, keep the thumb on the screen's scale.
    slider->setValue(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(slider->rect.x, 100);
    slider->setValue(std::numeric_limits<float>::infinity());
    EXPECT_GT(slider->rect.x, 1000000);
    EXPECT_EQ(slider->rect.x2 - slider->rect.x, 20);
    EXPECT_TRUE(std::isfinite(slider->getValue()));
}

TEST_F(Slider, DragsAcrossFramesWithTheGamesHandlers) {
    slider->setValue(0.5f); // thumb from 200 to 220 in the panel, 240 to 260 on the screen
    stage.render(16);
    stage.move(250, 60);
    stage.press(250, 60);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), slider);
    std::string thumbs;
    for (auto [x, y] : {std::pair{245, 60}, {210, 90}, {0, 60}, {790, 60}}) { // within the thumb first
        stage.move(x, y);
        thumbs += thumb() + " ";
        stage.update(16); // moves at the next update
        thumbs += thumb() + " | ";
    }
    // 30 pixels left of the thumb, and below it; far left the thumb stops at the left end, far right its
    // right edge stops at maxx + the thumb's width.
    EXPECT_EQ(thumbs, "200..220 200..220 | 200..220 170..190 | 170..190 100..120 | 100..120 300..320 | ");
    stage.release(700, 500); // outside: still the end of the drag
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.move(400, 60);
    stage.update(16);
    EXPECT_EQ(slider->rect.x, 300);
    EXPECT_EQ(log.events, (std::vector<std::string>{"move s 205,60", "move s 170,90", "move s -40,60",
                                                    "move s 750,60", "up s 660,500"}));
    EXPECT_TRUE(svc.sound.played.empty());
}

TEST_F(Slider, TracksWithoutRoomReadZeroAndTheKeysComeInOrder) {
    testkit::Screen flat(
        svc, "s = uiSliderButton\n{\n sprite = thumb\n x = 100\n minx = 100\n maxx = 100\n}\n", "flat.txt");
    auto* s = static_cast<uiSliderButton*>(flat.root());
    EXPECT_TRUE(s->setActive()); // "maxx" activated it
    EXPECT_EQ(s->getValue(), 0.0f);
    s->setValue(0.7f);
    EXPECT_EQ(s->rect.x * 1000 + s->rect.x2, 100120);
    s->rect = {100, 0, 140, 20}; // a thumb wider than its track
    EXPECT_EQ(s->getValue(), 0.0f);
    s->setValue(1.0f);
    EXPECT_EQ(s->rect.x, 100);

    // "maxx" before "sprite": no thumb yet, so the track ends at maxx itself.
    testkit::Screen early(
        svc, "s = uiSliderButton\n{\n minx = 0\n maxx = 100\n sprite = thumb\n minx = x\n}\n", "early.txt");
    auto* e = static_cast<uiSliderButton*>(early.root());
    EXPECT_EQ(e->getSpriteId(), -1);
    e->rect = {0, 0, 20, 20};
    e->setValue(1.0f);
    EXPECT_EQ(e->rect.x2, 100);
    EXPECT_EQ(svc.log.count(), 1) << svc.log.dump();
}

} // namespace
