// Progress bars: a clamped value, shown smoothly or at once as the clipped part of the sprite, and
// advanced from a loader thread while frames run.
#include <gtest/gtest.h>
#include <climits>
#include <cmath>
#include <thread>
#include "screen.h"
#include "stage.h"
#include "testkit.h"
#include "uiprogressbar.h"
#include "uisubsystem.h"

namespace {

struct BarScreen {
    testkit::Services svc;
    testkit::Stage stage;
    uiProgressBar* bar = testkit::Stage::make<uiProgressBar>("uiProgressBar", "load");

    BarScreen() {
        svc.gfx.defineSprite("bar.spr", 200, 80);
        bar->setSprite("bar.spr", 0, 0, false);
        bar->rect = {10, 20, 210, 100}; // 200 by 80
        bar->setDepth(4u);
        stage.root()->rect = {100, 50, 900, 650};
        stage.attach(bar);
    }

    // One frame; the bar's draw call without depth, sprite, anim, frame and alpha.
    std::vector<int> drawn(unsigned int ms = 16) {
        svc.gfx.clear();
        stage.render(ms);
        auto blts = svc.gfx.named("blt");
        if (blts.size() != 1) return {};
        const std::vector<int>& b = blts[0].ints;
        return std::vector<int>(b.begin() + 2, b.end() - 3);
    }
};

} // namespace

TEST(ProgressBar, KeepsItsValueWithinTheRange) {
    BarScreen s;
    s.bar->setValue(150, false);
    EXPECT_EQ(s.bar->value, 100);
    EXPECT_EQ(s.bar->displayValue, 0.0f); // shown from the next update
    s.bar->setValue(-5, true);
    EXPECT_EQ(s.bar->value, 0);
    EXPECT_EQ(s.bar->displayValue, 0.0f);

    s.bar->delta(1000);
    EXPECT_EQ(s.bar->value, 100);
    s.bar->delta(INT_MAX);
    EXPECT_EQ(s.bar->value, 100);
    s.bar->delta(INT_MIN);
    EXPECT_EQ(s.bar->value, 0);
    s.bar->setStep(7);
    s.bar->step();
    s.bar->step();
    EXPECT_EQ(s.bar->value, 14);

    // A new range does not clamp the value again; the next change does.
    s.bar->setRange(20, 30);
    EXPECT_EQ(s.bar->value, 14);
    s.bar->delta(0);
    EXPECT_EQ(s.bar->value, 20);
    // Ends swapped: raised to the lower end, then lowered to the upper end.
    s.bar->setRange(100, 0);
    s.bar->setValue(50, false);
    EXPECT_EQ(s.bar->value, 0);
}

TEST(ProgressBar, DrawsTheFilledPartForEachOrientation) {
    BarScreen s;
    s.bar->setValue(50, false);
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 100, 80})); // left 100 of 200 columns

    s.bar->vertical = true;
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 110, 0, 40, 200, 40})); // lower 40 rows, from the bottom
    s.bar->invert = true;
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 200, 40})); // upper 40 rows
    s.bar->setValue(75, false);
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 200, 20}));
    s.bar->vertical = false; // invert means nothing across
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 150, 80}));

    // The shown value is divided by the width of the range, not offset by its lower end.
    s.bar->setRange(50, 150);
    s.bar->setValue(50, false);
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 100, 80}));

    // Drawn with the widget's depth, sprite, anim, frame and alpha, even at alpha 0.
    s.bar->setAnim(2);
    s.bar->setFrame(3);
    s.bar->setAlpha(0, 0, 0, false);
    s.svc.gfx.clear();
    s.stage.render(16);
    auto blts = s.svc.gfx.named("blt");
    ASSERT_EQ(blts.size(), 1u);
    EXPECT_EQ(blts[0].ints, (std::vector<int>{4, s.bar->getSpriteId(), 110, 70, 100, 80, 2, 3, 0}));
}

TEST(ProgressBar, FillsSmoothlyAndIsFullOnlyWhenTheFillArrives) {
    BarScreen s;
    s.bar->smooth = true;
    s.bar->setValue(100, false);
    s.stage.update(20);
    EXPECT_FLOAT_EQ(s.bar->displayValue, 10.0f);
    s.stage.update(20);
    EXPECT_FLOAT_EQ(s.bar->displayValue, 19.0f);
    s.stage.update(20);
    EXPECT_FLOAT_EQ(s.bar->displayValue, 27.1f);

    float last = s.bar->displayValue;
    int frames = 3;
    while (s.bar->displayValue < 100.0f && frames < 200) {
        EXPECT_FALSE(s.bar->isFull());
        last = s.bar->displayValue;
        s.stage.update(20);
        ++frames;
    }
    EXPECT_EQ(s.bar->displayValue, 100.0f); // snapped, not crept up to
    EXPECT_LT(last, 99.99f);
    EXPECT_TRUE(s.bar->isFull());
    EXPECT_LT(frames, 100);

    // Emptying approaches without snapping and never goes below the value.
    s.bar->setValue(0, false);
    float previous = 100.0f;
    for (int i = 0; i < 120; ++i) {
        s.stage.update(20);
        EXPECT_LT(s.bar->displayValue, previous);
        EXPECT_GT(s.bar->displayValue, 0.0f);
        previous = s.bar->displayValue;
    }
    EXPECT_FALSE(s.bar->isFull());

    // A frame longer than the rate lands on the value in either direction, without overshooting.
    s.bar->rate = 10;
    s.stage.update(20);
    EXPECT_EQ(s.bar->displayValue, 0.0f);
    s.bar->setValue(60, false);
    s.stage.update(20);
    EXPECT_EQ(s.bar->displayValue, 60.0f);
}

TEST(ProgressBar, RateZeroAndEmptyRangesDivideByNothing) {
    BarScreen s;
    s.bar->smooth = true;
    s.bar->rate = 0;
    s.bar->setValue(40, false);
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 80, 80}));
    EXPECT_EQ(s.bar->displayValue, 40.0f);

    // An empty range is drawn all or nothing, by isFull().
    s.bar->rate = 200;
    s.bar->setRange(70, 70);
    s.bar->setValue(0, false);
    EXPECT_EQ(s.bar->value, 70);
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 0, 80}));
    for (int i = 0; i < 100 && !s.bar->isFull(); ++i)
        s.stage.update(20);
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 200, 80}));

    s.bar->setRange(0, 0);
    s.bar->setValue(0, true);
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 200, 80}));

    // A shown value that is no number is drawn empty and replaced by the value at the next update.
    s.bar->setRange(0, 100);
    s.bar->setValue(30, false);
    s.bar->displayValue = std::nanf("");
    EXPECT_FALSE(s.bar->isFull());
    s.bar->render(0, 0);
    EXPECT_EQ(s.svc.gfx.named("blt").back().ints[4], 0);
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 60, 80}));
    s.bar->displayValue = INFINITY;
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 60, 80}));
}

TEST(ProgressBar, WithoutALockStillCountsAndDraws) {
    testkit::Services svc;
    svc.gfx.defineSprite("bar.spr", 200, 80);
    svc.memory.failAt(1); // the bar itself, then its lock
    uiWidget* w = uiWidget::allocWidget("load", "uiProgressBar");
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(svc.memory.failed());
    EXPECT_TRUE(svc.log.has(2, "uiProgressBar: could not create the value lock: Out of Memory\f"));

    uiProgressBar* bar = static_cast<uiProgressBar*>(w);
    bar->setSprite("bar.spr", 0, 0, true);
    bar->rect = {0, 0, 200, 80};
    bar->setWidgetStates(true, true, false, false);
    bar->step();
    bar->delta(24);
    bar->update(0, 0);
    bar->render(0, 0);
    auto blts = svc.gfx.named("blt");
    ASSERT_EQ(blts.size(), 1u);
    EXPECT_EQ(blts[0].ints[4], 50);
    delete w;
    EXPECT_EQ(svc.memory.outstandingBlocks(), 0);
}

// A loader thread reports progress while the game renders frames; the bar's lock keeps every step, and
// taking the subsystem lock around a step (the documented order) never deadlocks with the frame.
TEST(ProgressBarThread, StepsFromALoaderThreadWhileFramesRun) {
    BarScreen s;
    constexpr int kSteps = 20000;
    s.bar->setRange(0, kSteps);
    s.bar->smooth = true;
    std::thread loader([&] {
        for (int i = 0; i < kSteps; ++i) {
            if (i % 100 == 0) {
                s.stage.ui().updateLock(true);
                s.bar->step();
                s.stage.ui().updateLock(false);
            } else {
                s.bar->delta(1);
            }
        }
    });
    for (int i = 0; i < 200; ++i)
        s.stage.render(16);
    loader.join();
    EXPECT_EQ(s.bar->value, kSteps);
    s.bar->rate = 0;
    EXPECT_EQ(s.drawn(), (std::vector<int>{110, 70, 200, 80}));
    EXPECT_TRUE(s.bar->isFull());
}

TEST(ProgressBar, DescriptionSetsRangeShownValueAndDrawingMode) {
    testkit::Services svc;
    uiSubsystem ui;
    svc.gfx.defineSprite("meter.spr", 40, 100);
    testkit::Screen screen(svc, "meter = uiProgressBar\n"
                                "{\n"
                                "    sprite = meter.spr\n"
                                "    min_range = 0\n"
                                "    max_range = 200\n"
                                "    value = 150\n"
                                "    step = 25\n"
                                "    rate = 100\n"
                                "    Smooth = true\n"
                                "    VERTICAL = true\n"
                                "    invert true\n"
                                "    flags = WF_VISIBLE | WF_ACTIVE\n"
                                "}\n");
    ASSERT_TRUE(screen);
    EXPECT_EQ(svc.log.count(), 1) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00invert = BOOLEAN^c\"\f")) << svc.log.dump();
    auto* meter = static_cast<uiProgressBar*>(screen.root());
    EXPECT_EQ(meter->value, 0);
    EXPECT_EQ(meter->displayValue, 150.0f);
    EXPECT_FALSE(meter->invert);

    // Two steps make the value 50; a 50 ms frame at rate 100 takes the shown value halfway there.
    meter->step();
    meter->step();
    ui.setTopLevelWidget(screen.root());
    svc.gfx.clear();
    ui.render(50);
    auto blts = svc.gfx.named("blt");
    ASSERT_EQ(blts.size(), 1u);
    EXPECT_FLOAT_EQ(meter->displayValue, 100.0f);
    // 100 of 200 shown: the lower 50 of 100 rows.
    EXPECT_EQ(blts[0].ints, (std::vector<int>{0, meter->getSpriteId(), 0, 50, 0, 50, 40, 50, 0, 0, 255}));
}
