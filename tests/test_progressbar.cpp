// Progress bars: a clamped value, shown smoothly or at once as the clipped part of the sprite, and
// advanced from a loader thread while frames run.
#include <gtest/gtest.h>
#include <climits>
#include <cmath>
#include <memory>
#include <thread>
#include "screen.h"
#include "testkit.h"
#include "uiprogressbar.h"

namespace {

using Ints = std::vector<int>;

class ProgressBar : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiProgressBar* bar = stage.add<uiProgressBar>("uiProgressBar", "load", {10, 20, 210, 100}); // 200 by 80

    void SetUp() override {
        svc.gfx.defineSprite("bar.spr", 200, 80);
        bar->setSprite("bar.spr", 0, 0, true);
        bar->setDepth(4u);
        stage.root()->rect = {100, 50, 900, 650};
    }
    // One frame; the bar's draw call without depth, sprite, anim, frame and alpha.
    Ints drawn(unsigned int ms = 16) {
        const std::vector<Ints> blts = testkit::renderFrame(svc.gfx, stage.ui(), ms);
        return blts.size() == 1 ? Ints(blts[0].begin() + 2, blts[0].end() - 3) : Ints{};
    }
};

TEST_F(ProgressBar, KeepsItsValueWithinTheRangeAndDrawsTheFilledPartForEachOrientation) {
    Ints values;
    auto note = [&] { values.push_back(bar->value); };
    bar->setValue(150, false);
    note();
    EXPECT_EQ(bar->displayValue, 0.0f); // shown from the next update
    bar->setValue(-5, true);
    note();
    for (int change : {1000, INT_MAX, INT_MIN}) {
        bar->delta(change);
        note();
    }
    bar->setStep(7);
    bar->step();
    bar->step();
    note();
    bar->setRange(20, 30); // a new range does not clamp the value again; the next change does
    note();
    bar->delta(0);
    note();
    bar->setRange(100, 0); // ends swapped: raised to the lower end, then lowered to the upper end
    bar->setValue(50, false);
    note();
    EXPECT_EQ(values, (Ints{100, 0, 100, 100, 0, 14, 14, 20, 0}));

    bar->setRange(0, 100);
    bar->setValue(50, false);
    EXPECT_EQ(drawn(), (Ints{110, 70, 100, 80})); // left 100 of 200 columns
    bar->vertical = true;
    EXPECT_EQ(drawn(), (Ints{110, 110, 0, 40, 200, 40})); // lower 40 rows, from the bottom
    bar->invert = true;
    EXPECT_EQ(drawn(), (Ints{110, 70, 200, 40})); // upper 40 rows
    bar->setValue(75, false);
    EXPECT_EQ(drawn(), (Ints{110, 70, 200, 20}));
    bar->vertical = false; // invert means nothing across
    EXPECT_EQ(drawn(), (Ints{110, 70, 150, 80}));
    // The shown value is divided by the width of the range, not offset by its lower end.
    bar->setRange(50, 150);
    bar->setValue(50, false);
    EXPECT_EQ(drawn(), (Ints{110, 70, 100, 80}));
    // Drawn with the widget's depth, sprite, anim, frame and alpha, even at alpha 0.
    bar->setAnim(2);
    bar->setFrame(3);
    bar->setAlpha(0, 0, 0, false);
    EXPECT_EQ(testkit::renderFrame(svc.gfx, stage.ui(), 16),
              (std::vector<Ints>{{4, bar->getSpriteId(), 110, 70, 100, 80, 2, 3, 0}}));
}

TEST_F(ProgressBar, FillsSmoothlyAndIsFullOnlyWhenTheFillArrives) {
    bar->smooth = true;
    bar->setValue(100, false);
    std::vector<float> shown;
    for (int i = 0; i < 100 && !bar->isFull(); ++i) {
        stage.update(20);
        shown.push_back(bar->displayValue);
    }
    EXPECT_EQ(std::vector<float>(shown.begin(), shown.begin() + 3),
              (std::vector<float>{10.0f, 19.0f, 27.1f}));
    EXPECT_EQ(bar->displayValue, 100.0f); // snapped, not crept up to
    EXPECT_LT(shown.end()[-2], 99.99f);
    EXPECT_LT(shown.size(), 100u);
    // Emptying approaches without snapping and never goes below the value.
    bar->setValue(0, false);
    for (int i = 0; i < 120; ++i) {
        const float previous = bar->displayValue;
        stage.update(20);
        ASSERT_LT(bar->displayValue, previous);
        ASSERT_GT(bar->displayValue, 0.0f);
    }
    // A frame longer than the rate lands on the value in either direction, without overshooting; a rate
    // of 0 shows the value at once.
    bar->rate = 10;
    stage.update(20);
    EXPECT_EQ(bar->displayValue, 0.0f);
    bar->setValue(60, false);
    stage.update(20);
    EXPECT_EQ(bar->displayValue, 60.0f);
    bar->rate = 0;
    bar->setValue(40, false);
    EXPECT_EQ(drawn(), (Ints{110, 70, 80, 80}));

    // An empty range is drawn all or nothing, by isFull().
    bar->rate = 200;
    bar->setRange(70, 70);
    bar->setValue(0, false);
    EXPECT_EQ(drawn(), (Ints{110, 70, 0, 80}));
    stage.update(20, 100);
    EXPECT_EQ(drawn(), (Ints{110, 70, 200, 80}));
    // A shown value that is no number is drawn empty and replaced by the value at the next update.
    bar->setRange(0, 100);
    bar->setValue(30, false);
    bar->displayValue = std::nanf("");
    EXPECT_FALSE(bar->isFull());
    bar->render(0, 0);
    EXPECT_EQ(svc.gfx.ints("blt").back()[4], 0);
    EXPECT_EQ(drawn(), (Ints{110, 70, 60, 80}));
    bar->displayValue = INFINITY;
    EXPECT_EQ(drawn(), (Ints{110, 70, 60, 80}));
}

// A loader thread reports progress while the game renders frames; the bar's lock keeps every step, and
// taking the subsystem lock around a step (the documented order) never deadlocks with the frame.
TEST_F(ProgressBar, StepsFromALoaderThreadWhileFramesRunAndCountsWithoutALock) {
    constexpr int kSteps = 20000;
    bar->setRange(0, kSteps);
    bar->smooth = true;
    std::thread loader([&] {
        for (int i = 0; i < kSteps; ++i) {
            const bool locked = i % 100 == 0;
            if (locked) stage.ui().updateLock(true);
            locked ? bar->step() : bar->delta(1);
            if (locked) stage.ui().updateLock(false);
        }
    });
    for (int i = 0; i < 200; ++i)
        stage.render(16);
    loader.join();
    EXPECT_EQ(bar->value, kSteps);

    svc.memory.failAt(1); // the bar itself, then its lock
    std::unique_ptr<uiProgressBar> lockless(testkit::Stage::make<uiProgressBar>("uiProgressBar", "lockless"));
    EXPECT_TRUE(svc.log.has(2, "uiProgressBar: could not create the value lock: Out of Memory\f"));
    lockless->setWidgetStates(true, true, false, false);
    lockless->step();
    lockless->delta(24);
    lockless->update(0, 0);
    EXPECT_EQ(lockless->displayValue, 25.0f);
}

TEST(ProgressBarDescription, SetsRangeShownValueAndDrawingMode) {
    testkit::Services svc;
    uiSubsystem ui;
    svc.gfx.defineSprite("meter.spr", 40, 100);
    testkit::Screen screen(svc,
                           "meter = uiProgressBar\n{\n sprite = meter.spr\n min_range = 0\n max_range = 200\n"
                           " value = 150\n step = 25\n rate = 100\n Smooth = true\n VERTICAL = true\n"
                           " invert true\n flags = WF_VISIBLE | WF_ACTIVE\n}\n");
    auto* meter = static_cast<uiProgressBar*>(screen.root());
    ASSERT_NE(meter, nullptr);
    EXPECT_EQ(svc.log.dump(), "2: ...expected: \"^C00FF00invert = BOOLEAN^c\"\f\n");
    EXPECT_EQ(meter->value, 0);
    EXPECT_EQ(meter->displayValue, 150.0f);
    EXPECT_FALSE(meter->invert);
    // Two steps make the value 50; a 50 ms frame at rate 100 takes the shown value halfway there: 100 of
    // 200 shown, the lower 50 of 100 rows.
    meter->step();
    meter->step();
    ui.setTopLevelWidget(screen.root());
    EXPECT_EQ(testkit::renderFrame(svc.gfx, ui, 50),
              (std::vector<Ints>{{0, meter->getSpriteId(), 0, 50, 0, 50, 40, 50, 0, 0, 255}}));
    EXPECT_FLOAT_EQ(meter->displayValue, 100.0f);
}

} // namespace
