// The digital banner at run time: what it draws frame by frame, its priority queue, interruptions,
// pausing, time scale, copying and its description keys.
#include "bannerfixture.h"
#include "screen.h"

namespace {

// A message of one piece that appears and disappears at once and stays `hold` ms (-1: until replaced).
std::string shown(const std::string& text, int hold = 0) {
    return "^P|ON;0;0|" + text + ";" + std::to_string(hold) + "|OFF;0;0|^p";
}

using DigitalBannerTest = BannerTest;

TEST_F(DigitalBannerTest, PiecesSlideFadeFlashAndAreClippedAtTheBottomEdge) {
    banner->print(0u, "%s", "^P|LEFT;0;1000|AB;500|UP;0;400|^p"); // 20 wide: centred at 40
    // Enters from beyond the right edge, holds 500 ms, leaves upwards; the last step overshoots.
    EXPECT_EQ(frame(500, 8), "AB@105,7 | AB@75,7 | AB@45,7 | AB@45,7 | AB@45,7 | AB@45,7 | AB@45,-33 | ");
    EXPECT_TRUE(banner->isEmpty());
    banner->print(0u, "%s", "^P|UP;0;400|X;0|DOWN;0;400|^p"); // from one banner height below, and back
    EXPECT_EQ(frame(100, 12), "X@50,47/c0 | X@50,37/c10 | X@50,27 | X@50,17/c30 | X@50,7 | X@50,7 | X@50,7 | "
                              "X@50,17/c30 | X@50,27 | X@50,37/c10 | X@50,47/c0 | ");

    auto alphas = [this](const std::string& markup, unsigned int ms, int count) {
        banner->print(0u, "%s", markup.c_str());
        std::string out;
        for (int i = 0; i < count; ++i) {
            frame(ms);
            for (const std::vector<int>& print : svc.gfx.ints("print"))
                out += (out.empty() ? "" : " ") + std::to_string(print[7]);
        }
        EXPECT_TRUE(banner->isEmpty()) << markup;
        return out;
    };
    // Fade in after a delay of 200 ms, hold one frame, fade out.
    EXPECT_EQ(alphas("^P|ON;200;400|A;0|OFF;0;400|^p", 200, 8), "0 0 127 255 255 255 128 0");
    // Two flashes in, each peak a hair below full; two flashes out.
    EXPECT_EQ(alphas("^P|FLASH;2;0;600|A;0|FLASH;2;0;600|^p", 200, 9), "0 254 0 254 255 255 1 255 1");
    // A sliding exit is hidden during its delay, then shown fully.
    EXPECT_EQ(alphas("^P|ON;0;0|A;0|DOWN;200;200|^p", 100, 7), "255 255 0 0 255 255 255");
    // With a duration OFF fades in on entering and ON fades out on leaving.
    EXPECT_EQ(alphas("^P|OFF;0;200|Q;0|ON;0;200|^p", 100, 7), "0 127 255 255 255 128 0");
    // 10 ms frames at a scale of 0.7f are whole steps of 7 ms.
    banner->setTimeScale(0.7f);
    EXPECT_EQ(alphas("^P|ON;0;70|A;0|OFF;0;0|^p", 10, 13), "0 25 51 76 102 127 153 178 204 229 255 255 0");
}

TEST_F(DigitalBannerTest, MessagesAreCentredAndPiecesStandSideBySide) {
    svc.gfx.setCharWidth("led", 'i', 7);
    ASSERT_TRUE(banner->setFont("led"));
    EXPECT_EQ(banner->_calcLeadingSpace(37), 32u); // 63 / 2 rounded up
    EXPECT_EQ(banner->_calcLeadingSpace(100), 0u);
    banner->print(0u, "%s", (shown("AAi") + "^P|RIGHT;0;100|B;0|OFF;0;0|^p").c_str()); // 27 + 10 wide
    EXPECT_EQ(frame(100, 2), "AAi@37,7 B@-5,7 | AAi@37,7 B@64,7");
}

TEST_F(DigitalBannerTest, TheQueueOrdersByPriorityAndAFullQueueDropsOrEvicts) {
    banner->maxMessages = 3;
    for (unsigned int p : {5u, 1u, 3u})
        banner->print(p, "%s", shown("P" + std::to_string(p)).c_str());
    EXPECT_EQ(textsUntilEmpty(10), "P1 P3 P5");
    banner->print(4u, "%s", shown("first").c_str());
    banner->print(4u, "%s", shown("second").c_str());
    EXPECT_EQ(textsUntilEmpty(10), "first second");

    const long long blocks = svc.memory.outstandingBlocks(9);
    banner->maxMessages = 1;
    banner->print(5u, "%s", shown("S", -1).c_str());
    frame(10); // showing
    banner->print(5u, "%s", shown("T").c_str());
    banner->print(7u, "%s", shown("U").c_str());
    EXPECT_EQ(banner->queued(), 1u);
    EXPECT_EQ(frame(100, 3), "S@50,7 | S@50,7 | S@50,7") << "no room behind it: the endless hold stays";
    banner->print(2u, "%s", shown("V").c_str());
    EXPECT_EQ(textsUntilEmpty(10), "V"); // S is gone for good
    EXPECT_EQ(svc.memory.outstandingBlocks(9), blocks);

    banner->maxMessages = 2;
    for (const char* m : {"A5", "B6", "C3", "D9"})
        banner->print(unsigned(m[1] - '0'), "%s", shown(m).c_str());
    EXPECT_EQ(textsUntilEmpty(10), "C3 A5"); // C evicts B, the last; A is last and no less important than D
    banner->maxMessages = 0;
    banner->print(0u, "%s", shown("E").c_str());
    EXPECT_TRUE(banner->isEmpty());
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();
}

TEST_F(DigitalBannerTest, MoreImportantMessagesInterruptAndEndlessHoldsLeaveForWaitingOnes) {
    banner->maxMessages = 2;
    banner->print(5u, "%s", "^P|LEFT;0;1000|A;0|OFF;0;0|^p"); // from 100 to 45
    EXPECT_EQ(frame(250, 2), "A@105,7 | A@91,7");
    banner->print(1u, "%s", shown("B").c_str());
    EXPECT_EQ(frame(250, 4), "B@50,7 | B@50,7 | B@50,7/a0 | A@77,7"); // the other resumes at its time
    textsUntilEmpty(100);

    banner->print(5u, "%s", "^P|ON;0;0|A;-1|OFF;0;400|^p");
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(frame(100), "A@50,7") << i;
    banner->print(1u, "%s", shown("I").c_str()); // a more important one interrupts; the hold goes on after
    EXPECT_EQ(textsUntilEmpty(100, 3), "I");
    banner->setPause(true);
    EXPECT_EQ(frame(100, 2), "A@50,7 | A@50,7");
    // One queued behind it: leaving starts at once, in place, and takes this frame's step.
    banner->print(5u, "%s", shown("W").c_str());
    banner->setPause(false);
    EXPECT_EQ(frame(100, 6), "A@50,7 | A@50,7/a192 | A@50,7/a128 | A@50,7/a64 | A@50,7/a0 | W@50,7");
}

TEST_F(DigitalBannerTest, PauseHoldsPhasesTimeScaleStretchesThemAndHiddenBannersWait) {
    banner->print(0u, "%s", "^P|LEFT;0;200|L;500|ON;0;200|^p");
    banner->setPause(true);
    EXPECT_EQ(frame(300, 3), "L@105,7 | L@50,7 | L@50,7"); // not beyond the end point
    banner->setPause(false);
    EXPECT_EQ(frame(300, 2), "L@50,7 | L@50,7"); // entering ends, hold 0
    banner->setPause(true);
    EXPECT_EQ(frame(300, 5), "L@50,7 | L@50,7 | L@50,7 | L@50,7 | L@50,7"); // the hold runs past 500
    banner->setPause(false);
    EXPECT_EQ(frame(100, 2), "L@50,7 | L@50,7"); // the hold ends; leaving, timer 0
    banner->setPause(true);
    // Past its end while paused the fade stays at its end value.
    EXPECT_EQ(frame(150), "L@50,7/a128");
    EXPECT_EQ(frame(300, 2), "L@50,7/a0 | L@50,7/a0");
    EXPECT_FALSE(banner->isEmpty());
    banner->setPause(false);
    EXPECT_EQ(frame(1), "L@50,7/a0");
    EXPECT_TRUE(banner->isEmpty());

    banner->print(0u, "%s", "^P|LEFT;0;1000|ABCDEFGHIJ;0|OFF;0;0|^p"); // from 100 to 0
    banner->setTimeScale(0.5f);
    EXPECT_EQ(frame(200, 3), "ABCDEFGHIJ@105,7 | ABCDEFGHIJ@95,7 | ABCDEFGHIJ@85,7");
    EXPECT_EQ(frame(1, 2), "ABCDEFGHIJ@75,7 | ABCDEFGHIJ@75,7");
    banner->setTimeScale(-1.0f); // time does not run backwards
    EXPECT_EQ(frame(200, 2), "ABCDEFGHIJ@75,7 | ABCDEFGHIJ@75,7");
    banner->setTimeScale(2.0f);
    const long long before = svc.memory.allocations();
    EXPECT_EQ(frame(100, 2), "ABCDEFGHIJ@75,7 | ABCDEFGHIJ@55,7");
    banner->setVisible(false, false); // runs only while drawn
    EXPECT_EQ(frame(100, 3), " |  | ");
    banner->setVisible(true, false);
    EXPECT_EQ(frame(100), "ABCDEFGHIJ@35,7");
    textsUntilEmpty(100);
    EXPECT_EQ(svc.memory.allocations(), before) << "animating allocates nothing";
}

TEST_F(DigitalBannerTest, CopiesTakeTheSettingsButNeverTheQueueAndPlainPrintFormatsOnceAtTopPriority) {
    const long long blocks = svc.memory.outstandingBlocks(9);
    banner->maxMessages = 2;
    banner->setTimeScale(0.5f);
    banner->print(1u, "%s", shown("SRC", -1).c_str());
    {
        uiDigitalBanner copy(*banner), assigned;
        assigned.print(0u, "%s", shown("OWN").c_str());
        assigned = *banner; // drops its own queue
        for (uiDigitalBanner* c : {&copy, &assigned})
            EXPECT_EQ((std::vector<float>{float(c->width), float(c->charWidths['Z']), float(c->maxMessages),
                                          c->timeScale, float(c->isEmpty()), float(!c->getParent())}),
                      (std::vector<float>{100, 10, 2, 0.5f, 1, 1}));
        copy.print(0u, "%s", shown("CPY").c_str());
    }
    EXPECT_EQ(frame(10), "SRC@40,7");
    EXPECT_EQ(svc.memory.outstandingBlocks(9), blocks + 2); // the one message: a record and its pieces
    banner->print("^P|ON;0;0|%s;0|OFF;0;0|^p", "%d%");      // "%d%" reaches the board as written
    EXPECT_EQ(banner->head()->priority, 0u);
    EXPECT_EQ(textsUntilEmpty(10, 3), "%d%");
}

TEST_F(DigitalBannerTest, DescriptionKeysSizeTheBoardNotTheRectangle) {
    svc.gfx.defineFont("big", 30, 12);
    svc.gfx.failFont("nosuch");
    testkit::Screen screen(svc,
                           "board = uiDigitalBanner\n{\nx = 30\ny = 40\ndepth = 9\nWIDTH = 120\nheight = 30\n"
                           "MaxMessages = 2\nfont = big\nfont\nflags = WF_VISIBLE | WF_ACTIVE\n"
                           "child ticker = uiDigitalBanner\n{\nfont = nosuch\n}\n}\n");
    auto* board = static_cast<uiDigitalBanner*>(screen.root());
    ASSERT_NE(board, nullptr);
    EXPECT_EQ(board->maxMessages * 100 + board->rect.x2, 200u); // width and height size the board only
    // "GOAL", 48 wide, centred on 120, in "big" on depth 9, sliding down from one board height above.
    board->print("^P|DOWN;0;100|GOAL;0|OFF;0;0|^p");
    stage.ui().setTopLevelWidget(board);
    EXPECT_EQ(testkit::renderFrame(svc.gfx, stage.ui(), 50, "print"),
              (std::vector<std::vector<int>>{{9, board->font, 0, 0, 66, 10, 30, 255}}));
    stage.ui().setTopLevelWidget(stage.root());
    EXPECT_EQ(static_cast<uiDigitalBanner*>(screen.find("ticker"))->font, -1);
    EXPECT_EQ(svc.log.dump(), "2: ...expected: \"^C00FF00font = \"val\"^c\"\f\n"
                              "2: ...failed to create font: nosuch for ticker\f\n");
}

} // namespace
