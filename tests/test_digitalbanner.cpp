// The digital banner at run time: what it draws frame by frame, its priority queue, interruptions,
// pausing, time scale, copying and its description keys.
#include <cstring>
#include <string>
#include <vector>
#include "bannerfixture.h"
#include "screen.h"

using Frames = std::vector<std::vector<std::string>>;

class DigitalBannerTest : public BannerTest {
protected:
    Frames run(unsigned int ms, int count) {
        Frames frames;
        for (int i = 0; i < count; ++i)
            frames.push_back(frame(ms));
        return frames;
    }
};

TEST_F(DigitalBannerTest, SlidingPieceEntersHoldsAndLeaves) {
    banner->print(0u, "%s", "^P|LEFT;0;1000|AB;500|UP;0;400|^p"); // 20 wide: centred at 40
    const Frames expected = {
        {"AB 105,7 clip 20 alpha 255"}, // just beyond the right edge
        {"AB 75,7 clip 20 alpha 255"},
        {"AB 45,7 clip 20 alpha 255"},   // in place: entering ends on this frame
        {"AB 45,7 clip 20 alpha 255"},   // holding 0 ms
        {"AB 45,7 clip 20 alpha 255"},   // holding 500 ms: ends
        {"AB 45,7 clip 20 alpha 255"},   // leaving starts in place
        {"AB 45,-33 clip 20 alpha 255"}, // the frame overshoots: the timer is held at the end
        {},
    };
    EXPECT_EQ(run(500, 8), expected);
    EXPECT_TRUE(banner->isEmpty());
}

TEST_F(DigitalBannerTest, RisingAndDroppingPiecesAreClippedAtTheBottomEdge) {
    banner->print(0u, "%s", "^P|UP;0;400|X;0|DOWN;0;400|^p");
    const Frames expected = {
        {"X 50,47 clip 0 alpha 255"}, // one banner height below: nothing of it inside
        {"X 50,37 clip 10 alpha 255"}, {"X 50,27 clip 20 alpha 255"}, {"X 50,17 clip 30 alpha 255"},
        {"X 50,7 clip 20 alpha 255"}, // in place: the font height
        {"X 50,7 clip 20 alpha 255"}, // hold 0: one frame
        {"X 50,7 clip 20 alpha 255"},  {"X 50,17 clip 30 alpha 255"}, {"X 50,27 clip 20 alpha 255"},
        {"X 50,37 clip 10 alpha 255"}, {"X 50,47 clip 0 alpha 255"},  {},
    };
    EXPECT_EQ(run(100, 12), expected);
}

TEST_F(DigitalBannerTest, FadesFlashesAndHiddenDelays) {
    auto alphas = [this](const char* markup, unsigned int ms, int count) {
        banner->print(0u, "%s", markup);
        std::vector<int> out;
        for (int i = 0; i < count; ++i) {
            frame(ms);
            for (const testkit::GfxCall& call : svc.gfx.named("print"))
                out.push_back(call.ints[7]);
        }
        EXPECT_TRUE(banner->isEmpty());
        return out;
    };
    // Fade in after a delay of 200 ms, hold one frame, fade out.
    EXPECT_EQ(alphas("^P|ON;200;400|A;0|OFF;0;400|^p", 200, 8),
              (std::vector<int>{0, 0, 127, 255, 255, 255, 128, 0}));
    // Two flashes in, each peak a hair below full; two flashes out.
    EXPECT_EQ(alphas("^P|FLASH;2;0;600|A;0|FLASH;2;0;600|^p", 200, 9),
              (std::vector<int>{0, 254, 0, 254, 255, 255, 1, 255, 1}));
    // A sliding exit is hidden during its delay, then shown fully.
    EXPECT_EQ(alphas("^P|ON;0;0|A;0|DOWN;200;200|^p", 100, 7),
              (std::vector<int>{255, 255, 0, 0, 255, 255, 255}));
    // Phases without duration are at full at once (ON) or gone at once (OFF).
    EXPECT_EQ(alphas("^P|ON;0;0|A;0|OFF;0;0|^p", 10, 3), (std::vector<int>{255, 255, 0}));
    // OFF fades in on entering and ON fades out on leaving.
    EXPECT_EQ(alphas("^P|OFF;0;200|Q;0|ON;0;200|^p", 100, 7),
              (std::vector<int>{0, 127, 255, 255, 255, 128, 0}));
    // 10 ms frames at a scale of 0.7f are whole steps of 7 ms.
    banner->setTimeScale(0.7f);
    EXPECT_EQ(alphas("^P|ON;0;70|A;0|OFF;0;0|^p", 10, 13),
              (std::vector<int>{0, 25, 51, 76, 102, 127, 153, 178, 204, 229, 255, 255, 0}));
}

TEST_F(DigitalBannerTest, MessagesAreCentredAndPiecesStandSideBySide) {
    svc.gfx.setCharWidth("led", 'i', 7);
    ASSERT_TRUE(banner->setFont("led"));
    EXPECT_EQ(banner->_calcLeadingSpace(37), 32u); // 63 / 2 rounded up
    EXPECT_EQ(banner->_calcLeadingSpace(100), 0u);
    EXPECT_EQ(banner->_calcLeadingSpace(0), 50u);

    banner->print(0u, "%s", "^P|ON;0;0|AAi;0|OFF;0;0|^p^P|RIGHT;0;100|B;0|OFF;0;0|^p"); // 27 + 10 wide
    EXPECT_EQ(frame(100),
              (std::vector<std::string>{"AAi 37,7 clip 20 alpha 255", "B -5,7 clip 20 alpha 255"}));
    EXPECT_EQ(frame(100),
              (std::vector<std::string>{"AAi 37,7 clip 20 alpha 255", "B 64,7 clip 20 alpha 255"}));
}

TEST_F(DigitalBannerTest, QueueShowsLowerPrioritiesFirstAndKeepsPrintOrder) {
    banner->maxMessages = 3;
    banner->print(5u, "%s", "^P|ON;0;0|P5;0|OFF;0;0|^p");
    banner->print(1u, "%s", "^P|ON;0;0|P1;0|OFF;0;0|^p");
    banner->print(3u, "%s", "^P|ON;0;0|P3;0|OFF;0;0|^p");
    EXPECT_EQ(textsUntilEmpty(10), (std::vector<std::string>{"P1", "P3", "P5"}));

    banner->print(4u, "%s", "^P|ON;0;0|first;0|OFF;0;0|^p");
    banner->print(4u, "%s", "^P|ON;0;0|second;0|OFF;0;0|^p");
    EXPECT_EQ(textsUntilEmpty(10), (std::vector<std::string>{"first", "second"}));
}

TEST_F(DigitalBannerTest, FullQueueDropsTheNewcomerOrEvictsTheLast) {
    const long long blocks = svc.memory.outstandingBlocks(9);
    banner->print(5u, "%s", "^P|ON;0;0|S;-1|OFF;0;0|^p");
    frame(10); // showing
    banner->print(5u, "%s", "^P|ON;0;0|T;0|OFF;0;0|^p");
    banner->print(7u, "%s", "^P|ON;0;0|U;0|OFF;0;0|^p");
    EXPECT_EQ(banner->queued(), 1u);
    EXPECT_STREQ(banner->head()->pieces[0].text, "S");
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();
    banner->print(2u, "%s", "^P|ON;0;0|V;0|OFF;0;0|^p");
    EXPECT_EQ(banner->queued(), 1u);
    EXPECT_EQ(textsUntilEmpty(10), (std::vector<std::string>{"V"})); // S is gone for good
    EXPECT_EQ(svc.memory.outstandingBlocks(9), blocks);

    banner->maxMessages = 2;
    banner->print(5u, "%s", "^P|ON;0;0|A;0|OFF;0;0|^p");
    banner->print(6u, "%s", "^P|ON;0;0|B;0|OFF;0;0|^p");
    banner->print(3u, "%s", "^P|ON;0;0|C;0|OFF;0;0|^p"); // evicts B, the last
    banner->print(9u, "%s", "^P|ON;0;0|D;0|OFF;0;0|^p"); // A is last and no less important
    EXPECT_EQ(textsUntilEmpty(10), (std::vector<std::string>{"C", "A"}));

    banner->maxMessages = 0;
    banner->print(0u, "%s", "^P|ON;0;0|E;0|OFF;0;0|^p");
    EXPECT_TRUE(banner->isEmpty());

    // Lowering the limit below what is queued makes the queue full, not larger.
    banner->maxMessages = 3;
    for (unsigned int p : {1u, 2u, 3u})
        banner->print(p, "%s", "^P|ON;0;0|F;0|OFF;0;0|^p");
    banner->maxMessages = 1;
    banner->print(0u, "%s", "^P|ON;0;0|G;0|OFF;0;0|^p");
    EXPECT_EQ(banner->queued(), 3u);
    banner->print(9u, "%s", "^P|ON;0;0|H;0|OFF;0;0|^p");
    EXPECT_EQ(banner->queued(), 3u);
}

TEST_F(DigitalBannerTest, MoreImportantMessageInterruptsAndTheOtherResumes) {
    banner->maxMessages = 2;
    banner->print(5u, "%s", "^P|LEFT;0;1000|A;0|OFF;0;0|^p"); // from 100 to 45
    EXPECT_EQ(frame(250), (std::vector<std::string>{"A 105,7 clip 20 alpha 255"}));
    EXPECT_EQ(frame(250), (std::vector<std::string>{"A 91,7 clip 20 alpha 255"}));
    banner->print(1u, "%s", "^P|ON;0;0|B;0|OFF;0;0|^p");
    EXPECT_EQ(
        run(250, 3),
        (Frames{{"B 50,7 clip 20 alpha 255"}, {"B 50,7 clip 20 alpha 255"}, {"B 50,7 clip 20 alpha 0"}}));
    EXPECT_EQ(frame(250), (std::vector<std::string>{"A 77,7 clip 20 alpha 255"})); // timer 500 again
}

TEST_F(DigitalBannerTest, EndlessHoldLeavesWhenAMessageWaitsBehindIt) {
    banner->maxMessages = 2;
    banner->print(5u, "%s", "^P|ON;0;0|A;-1|OFF;0;400|^p");
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(frame(100), (std::vector<std::string>{"A 50,7 clip 20 alpha 255"})) << i;

    // A more important message interrupts instead; the hold goes on afterwards.
    banner->print(1u, "%s", "^P|ON;0;0|I;0|OFF;0;0|^p");
    EXPECT_EQ(textsUntilEmpty(100, 3), (std::vector<std::string>{"I"}));
    EXPECT_EQ(frame(100), (std::vector<std::string>{"A 50,7 clip 20 alpha 255"}));
    banner->setPause(true);
    EXPECT_EQ(frame(100), (std::vector<std::string>{"A 50,7 clip 20 alpha 255"}));

    // One queued behind it: leaving starts at once, still drawn in place, and takes this frame's step.
    banner->print(5u, "%s", "^P|ON;0;0|W;0|OFF;0;0|^p");
    banner->setPause(false);
    EXPECT_EQ(run(100, 5), (Frames{{"A 50,7 clip 20 alpha 255"},
                                   {"A 50,7 clip 20 alpha 192"},
                                   {"A 50,7 clip 20 alpha 128"},
                                   {"A 50,7 clip 20 alpha 64"},
                                   {"A 50,7 clip 20 alpha 0"}}));
    EXPECT_EQ(frame(100), (std::vector<std::string>{"W 50,7 clip 20 alpha 255"}));
}

TEST_F(DigitalBannerTest, EndlessHoldWithTheDefaultQueueStaysUntilReplaced) {
    banner->print(5u, "%s", "^P|ON;0;0|A;-1|OFF;0;0|^p");
    frame(100);
    banner->print(5u, "%s", "^P|ON;0;0|B;0|OFF;0;0|^p"); // no room behind it
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(frame(100), (std::vector<std::string>{"A 50,7 clip 20 alpha 255"}));
    banner->print(4u, "%s", "^P|ON;0;0|C;0|OFF;0;0|^p");
    EXPECT_EQ(textsUntilEmpty(100), (std::vector<std::string>{"C"}));
}

TEST_F(DigitalBannerTest, PauseHoldsPhasesAtTheirEnd) {
    banner->print(0u, "%s", "^P|LEFT;0;200|L;500|ON;0;200|^p");
    banner->setPause(true);
    EXPECT_EQ(run(300, 3), (Frames{{"L 105,7 clip 20 alpha 255"},
                                   {"L 50,7 clip 20 alpha 255"},
                                   {"L 50,7 clip 20 alpha 255"}})); // not beyond the end point
    banner->setPause(false);
    EXPECT_EQ(frame(300), (std::vector<std::string>{"L 50,7 clip 20 alpha 255"})); // entering ends
    EXPECT_EQ(frame(300), (std::vector<std::string>{"L 50,7 clip 20 alpha 255"})); // hold 0
    banner->setPause(true);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(frame(300), (std::vector<std::string>{"L 50,7 clip 20 alpha 255"})); // hold runs past 500
    banner->setPause(false);
    EXPECT_EQ(frame(100), (std::vector<std::string>{"L 50,7 clip 20 alpha 255"})); // hold limited: ends
    EXPECT_EQ(frame(100), (std::vector<std::string>{"L 50,7 clip 20 alpha 255"})); // leaving, timer 0
    banner->setPause(true);
    EXPECT_EQ(frame(150), (std::vector<std::string>{"L 50,7 clip 20 alpha 128"}));
    // Past its end while paused the fade stays at its end value instead of running beyond full.
    EXPECT_EQ(run(300, 2), (Frames{{"L 50,7 clip 20 alpha 0"}, {"L 50,7 clip 20 alpha 0"}}));
    EXPECT_FALSE(banner->isEmpty());
    banner->setPause(false);
    EXPECT_EQ(frame(1), (std::vector<std::string>{"L 50,7 clip 20 alpha 0"}));
    EXPECT_TRUE(banner->isEmpty());
}

TEST_F(DigitalBannerTest, TimeScaleStretchesEveryPhase) {
    banner->print(0u, "%s", "^P|LEFT;0;1000|ABCDEFGHIJ;0|OFF;0;0|^p"); // from 100 to 0
    banner->setTimeScale(0.5f);
    EXPECT_EQ(run(200, 3), (Frames{{"ABCDEFGHIJ 105,7 clip 20 alpha 255"},
                                   {"ABCDEFGHIJ 95,7 clip 20 alpha 255"},
                                   {"ABCDEFGHIJ 85,7 clip 20 alpha 255"}}));
    EXPECT_EQ(run(1, 2),
              (Frames{{"ABCDEFGHIJ 75,7 clip 20 alpha 255"}, {"ABCDEFGHIJ 75,7 clip 20 alpha 255"}}));
    banner->setTimeScale(-1.0f); // time does not run backwards
    EXPECT_EQ(run(200, 2),
              (Frames{{"ABCDEFGHIJ 75,7 clip 20 alpha 255"}, {"ABCDEFGHIJ 75,7 clip 20 alpha 255"}}));
    banner->setTimeScale(2.0f);
    EXPECT_EQ(run(100, 2),
              (Frames{{"ABCDEFGHIJ 75,7 clip 20 alpha 255"}, {"ABCDEFGHIJ 55,7 clip 20 alpha 255"}}));
}

TEST_F(DigitalBannerTest, AnimationRunsOnlyWhileDrawnAndAllocatesNothing) {
    banner->print(0u, "%s", "^P|LEFT;0;1000|ABCDEFGHIJ;0|OFF;0;0|^p");
    const long long before = svc.memory.allocations();
    frame(100);
    banner->setVisible(false, false);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(frame(100).empty());
    banner->setVisible(true, false);
    EXPECT_EQ(frame(100), (std::vector<std::string>{"ABCDEFGHIJ 95,7 clip 20 alpha 255"}));
    textsUntilEmpty(100);
    EXPECT_EQ(svc.memory.allocations(), before);

    banner->print(0u, "%s", "no pieces here");
    EXPECT_FALSE(banner->isEmpty());
    EXPECT_TRUE(frame(100).empty());
    EXPECT_TRUE(banner->isEmpty());
}

TEST_F(DigitalBannerTest, PlainPrintFormatsOnceAtTopPriority) {
    banner->maxMessages = 2;
    banner->print(3u, "%s", "^P|ON;0;0|low;-1|OFF;0;0|^p");
    frame(10);
    banner->print("^P|ON;0;0|%s;0|OFF;0;0|^p", "%d%"); // "%d%" must reach the board as written
    EXPECT_EQ(banner->head()->priority, 0u);
    EXPECT_EQ(textsUntilEmpty(10, 3), (std::vector<std::string>{"%d%"}));
}

TEST(DigitalBannerDescription, KeysSizeTheBoardNotTheRectangle) {
    testkit::Services svc;
    uiSubsystem ui;
    svc.gfx.defineFont("big", 30, 12);
    svc.gfx.failFont("nosuch");
    testkit::Screen screen(svc, "board = uiDigitalBanner\n"
                                "{\n"
                                "    x = 30\n"
                                "    y = 40\n"
                                "    depth = 9\n"
                                "    WIDTH = 120\n"
                                "    height = 30\n"
                                "    MaxMessages = 2\n"
                                "    font = big\n"
                                "    font\n"
                                "    flags = WF_VISIBLE | WF_ACTIVE\n"
                                "}\n");
    ASSERT_TRUE(screen);
    EXPECT_EQ(svc.log.count(), 1) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00font = \"val\"^c\"\f")) << svc.log.dump();
    auto* board = static_cast<uiDigitalBanner*>(screen.root());
    EXPECT_EQ(board->maxMessages, 2u);
    EXPECT_EQ(board->rect.x2, 0); // the banner takes width and height for itself

    // 120 wide, "GOAL" 48 wide: centred at 36; drawn in the font "big" on depth 9.
    board->print("^P|DOWN;0;100|GOAL;0|OFF;0;0|^p");
    ui.setTopLevelWidget(board);
    svc.gfx.clear();
    ui.render(50);
    auto prints = svc.gfx.named("print");
    ASSERT_EQ(prints.size(), 1u);
    EXPECT_EQ(prints[0].ints, (std::vector<int>{9, board->font, 0, 0, 66, 10, 30, 255}));
    EXPECT_EQ(prints[0].text, "GOAL");
    svc.gfx.clear();
    ui.render(50);
    EXPECT_EQ(svc.gfx.named("print")[0].ints[5], 25); // half way down from one banner height above
    ui.setTopLevelWidget(nullptr);

    svc.log.clear();
    testkit::Screen broken(svc, "ticker = uiDigitalBanner\n{\n    font = nosuch\n}\n", "ticker.txt");
    ASSERT_TRUE(broken);
    EXPECT_EQ(static_cast<uiDigitalBanner*>(broken.root())->font, -1);
    EXPECT_TRUE(svc.log.has(2, "...failed to create font: nosuch for ticker\f")) << svc.log.dump();
}

TEST_F(DigitalBannerTest, CopiesTakeTheSettingsButNeverTheQueue) {
    const long long blocks = svc.memory.outstandingBlocks(9);
    banner->maxMessages = 2;
    banner->setTimeScale(0.5f);
    std::strcpy(banner->name, "board");
    banner->print(1u, "%s", "^P|ON;0;0|SRC;-1|OFF;0;0|^p");
    frame(10);
    {
        uiDigitalBanner copy(*banner);
        EXPECT_TRUE(copy.isEmpty());
        EXPECT_STREQ(copy.name, "board");
        EXPECT_EQ(copy.width, 100);
        EXPECT_EQ(copy.charWidths['Z'], 10);
        EXPECT_EQ(copy.maxMessages, 2u);
        EXPECT_EQ(copy.timeScale, 0.5f);
        EXPECT_EQ(copy.getParent(), nullptr);

        copy.print(0u, "%s", "^P|ON;0;0|CPY;0|OFF;0;0|^p");
        copy = *banner; // assignment drops the copy's own queue too
        EXPECT_TRUE(copy.isEmpty());
        copy.print(0u, "%s", "^P|ON;0;0|CPY;0|OFF;0;0|^p");
        EXPECT_FALSE(copy.isEmpty());
    }
    EXPECT_EQ(banner->queued(), 1u);
    EXPECT_STREQ(banner->head()->pieces[0].text, "SRC");
    EXPECT_EQ(frame(10), (std::vector<std::string>{"SRC 40,7 clip 20 alpha 255"}));
    banner->print(0u, "%s", "^P|ON;0;0|X;0|OFF;0;0|^p");
    EXPECT_EQ(svc.memory.outstandingBlocks(9), blocks + 4); // two messages, each a record and pieces
}
