// Banner message markup: which messages the banner takes, what it reads from them, and the exact log
// line of every rejected one.
#include <string>
#include "bannerfixture.h"

namespace {

const char* const kCloseSyntax = "Digital Banner message could not be added: Invalid Syntax ('^p').\f";
const char* const kOpenSyntax = "Digital Banner message could not be added: Invalid Syntax ('^P').\f";
const char* const kBarSyntax = "Digital Banner message could not be added: Invalid Syntax ('|').\f";
const char* const kSemicolonSyntax = "Digital Banner message could not be added: Invalid Syntax (';').\f";
const char* const kTooWide =
    "Digital Banner message could not be added: Message Length Exceeds Banner Width.\f";
const char* const kNoMemory = "Digital Banner could not add message: Out of memory.\f";

std::string badAction(const std::string& word) {
    return "Digital Banner message could not be added: Invalid Piece Action ('" + word + "').\f";
}

using MarkupTest = BannerTest;

} // namespace

TEST_F(MarkupTest, RejectedMessagesLogOneExactErrorAndLeaveTheQueue) {
    struct Case {
        const char* markup;
        std::string log;
    };
    const Case cases[] = {
        {"^P|ON;0;0|A;0|OFF;0;0|^p ^P|ON;0;0|B;0|OFF;0;0|^p", kOpenSyntax},      // something between pieces
        {"^P|ON;0;500^P|A;0|OFF;0;500|^p", kOpenSyntax},                         // "^P" inside a piece
        {"^P|ON;0;500|A;0|OFF;0;500|", kCloseSyntax},                            // no closing
        {"^p^P|ON;0;500|A;0|OFF;0;500|", kCloseSyntax},                          // closing before opening
        {"^P ON;0;500|A;0|OFF;0;500|^p", kBarSyntax},                            // no bar after ^P
        {"^P|ON;0;abc|A;0|OFF;0;500|^p", kBarSyntax},                            // duration not a number
        {"^P|ON;0;500|A;|OFF;0;500|^p", kBarSyntax},                             // empty hold
        {"^P|FLASH;0;500|A;0|OFF;0;500|^p", kSemicolonSyntax},                   // FLASH without its count
        {"^P|ON;x;500|A;0|OFF;0;500|^p", kSemicolonSyntax},                      // delay not a number
        {"^P|ON;0;500|A^p", kSemicolonSyntax},                                   // no ";" after the text
        {"^P|ON;0^p", kSemicolonSyntax},                                         // no ";" after the delay
        {"^P|on;0;500|A;0|OFF;0;500|^p", badAction("on")},                       // words are case-sensitive
        {"^P|ON;0;500|A;0|BLINK;0;500|^p", badAction("BLINK")},                  // leaving action
        {"^P|ON;0;0|ABCDEFGHIJK;0|OFF;0;0|^p", kTooWide},                        // 110 units on 100
        {"^P|ON;0;0|ABCDEF;0|OFF;0;0|^p^P|ON;0;0|GHIJK;0|OFF;0;0|^p", kTooWide}, // widths add up
    };
    const long long records = svc.memory.outstandingBlocks(9), buffers = svc.memory.outstandingBlocks(0);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.markup);
        svc.log.clear();
        banner->print(0u, "%s", c.markup);
        EXPECT_TRUE(banner->isEmpty());
        EXPECT_EQ(banner->queued(), 0u);
        ASSERT_EQ(svc.log.count(), 1) << svc.log.dump();
        EXPECT_EQ(svc.log.entries()[0].severity, 2);
        EXPECT_EQ(svc.log.entries()[0].text, c.log);
    }
    EXPECT_EQ(svc.memory.outstandingBlocks(9), records) << svc.memory.report();
    EXPECT_EQ(svc.memory.outstandingBlocks(0), buffers) << svc.memory.report();
}

TEST_F(MarkupTest, AcceptedMessagesAreReadPartByPart) {
    struct Case {
        const char* markup;
        unsigned int pieces;
        int length;
    };
    const Case cases[] = {
        {"^P|LEFT;0;1000|SCORE;1500|UP;0;400|^p^P|FLASH;3;0;900|100;-1|DOWN;200;400|^p", 2, 80},
        {"^P|ON;0;500|A;0|OFF;0;500|^p ", 1, 10},            // trailing characters are ignored
        {"^P|ON;0;500|A;0|OFF;0;500|^p trailing ^p", 1, 10}, // even a stray closing
        {"^P|ON;0;0|ABCDEFGHIJ;0|OFF;0;0|^p", 1, 100},       // exactly as wide as the banner
        {"^P|ON;0;0|;0|OFF;0;0|^p", 1, 0},                   // an empty text
        {"no pieces at all", 0, 0},
        {"^P|ON;0;0|A;0|OFF;0;0|xy^p^P|ON;0;0|B;0|OFF;0;0|^p", 2, 20}, // junk before a closing is ignored
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.markup);
        svc.log.clear();
        banner->print(0u, "%s", c.markup);
        ASSERT_NE(banner->head(), nullptr) << svc.log.dump();
        EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();
        EXPECT_EQ(banner->head()->pieceCount, c.pieces);
        EXPECT_EQ(banner->head()->length, c.length);
        EXPECT_EQ(banner->head()->priority, 0u);
        EXPECT_FALSE(banner->head()->started);
        banner->_removeMessage(banner->head());
    }

    banner->print(7u, "%s", "^P|LEFT;0;1000|SCORE;1500|UP;0;400|^p^P|FLASH;3;0;900|100;-1|DOWN;200;400|^p");
    dbMessage_t* m = banner->head();
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->priority, 7u);
    // Each piece as "in action/flashes/delay/duration, text, hold, out action/delay/duration".
    auto piece = [](const dbMessagePiece_t& p) {
        auto phase = [](const dbPieceAction_t& a, bool flashes) {
            return std::to_string(a.action) + (flashes ? "/" + std::to_string(a.flashes) : "") + "/" +
                   std::to_string(a.delay) + "/" + std::to_string(a.duration);
        };
        return phase(p.in, p.in.action == PA_FLASH) + " " + p.text + " " + std::to_string(p.hold) + " " +
               phase(p.out, false);
    };
    EXPECT_EQ(piece(m->pieces[0]), "3/0/1000 SCORE 1500 5/0/400"); // LEFT ... UP
    EXPECT_EQ(piece(m->pieces[1]), "2/3/0/900 100 -1 6/200/400");  // FLASH ... DOWN
}

TEST_F(MarkupTest, IntegersTakeBasePrefixesBlanksSignsAndTrailingText) {
    const struct {
        const char* hold;
        int value;
    } cases[] = {{"0x10", 16}, {"010", 8}, {"  -1", -1}, {"+25", 25}, {"12ms", 12}, {"0", 0}, {"0x", 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.hold);
        std::string markup = std::string("^P|FLASH;0x3;010;0x20|A;") + c.hold + "|OFF;0;500|^p";
        banner->print(0u, "%s", markup.c_str());
        ASSERT_NE(banner->head(), nullptr) << svc.log.dump();
        const dbMessagePiece_t& piece = banner->head()->pieces[0];
        EXPECT_EQ(piece.hold, c.value);
        EXPECT_EQ(piece.in.flashes, 3);
        EXPECT_EQ(piece.in.delay, 8);
        EXPECT_EQ(piece.in.duration, 32);
        banner->_removeMessage(banner->head());
    }
    // Values beyond 32 bits are held at the ends of the range rather than wrapped.
    banner->print(0u, "%s", "^P|ON;0;99999999999|A;-99999999999|OFF;0;0|^p");
    ASSERT_NE(banner->head(), nullptr);
    EXPECT_EQ(banner->head()->pieces[0].in.duration, 2147483647);
    EXPECT_EQ(banner->head()->pieces[0].hold, -2147483647 - 1);
}

TEST_F(MarkupTest, ActionWordsAndTextWidths) {
    const char* words[] = {"ON", "OFF", "FLASH", "LEFT", "RIGHT", "UP", "DOWN"};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(banner->_getAction(words[i]), i) << words[i];
    for (const char* other : {"on", "Flash", "ONE", "", " UP"})
        EXPECT_EQ(banner->_getAction(other), PA_NONE) << other;

    svc.gfx.setCharWidth("led", 'W', 17);
    svc.gfx.setCharWidth("led", 0xA9, 3);
    ASSERT_TRUE(banner->setFont("led"));
    EXPECT_EQ(banner->_strlen(""), 0);
    EXPECT_EQ(banner->_strlen("AW"), 27);
    EXPECT_EQ(banner->_strlen("\xC3\xA9"), 13); // bytes, not characters: 0xC3 is 10 wide, 0xA9 is 3
    EXPECT_EQ(banner->_strlen("WWWW"), 68);
}

TEST_F(MarkupTest, EmptyTextsAndMissingMessagesAreDroppedQuietly) {
    banner->print(0u, "%s", "");
    EXPECT_TRUE(banner->isEmpty());
    dbMessage_t* m = banner->_addMessage(3);
    ASSERT_NE(m, nullptr);
    banner->_extractMessage(nullptr, m);
    EXPECT_TRUE(banner->isEmpty());
    char text[] = "^P|ON;0;0|A;0|OFF;0;0|^p";
    banner->_extractMessage(text, nullptr);
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();
}

TEST_F(MarkupTest, PrintKeepsAt127Bytes) {
    // A 127-byte message fits whole; two more bytes cut off its closing.
    const std::string filler(127 - std::string("^P|ON;0;0|;0|OFF;0;0|^p").size(), 'i');
    svc.gfx.setCharWidth("led", 'i', 0);
    ASSERT_TRUE(banner->setFont("led"));
    const std::string fits = "^P|ON;0;0|" + filler + ";0|OFF;0;0|^p";
    ASSERT_EQ(fits.size(), 127u);
    banner->print(0u, "%s", fits.c_str());
    ASSERT_NE(banner->head(), nullptr) << svc.log.dump();
    EXPECT_EQ(std::string(banner->head()->pieces[0].text), filler);
    banner->_removeMessage(banner->head());

    banner->print(0u, "%s", ("^P|ON;0;0|ii" + filler + ";0|OFF;0;0|^p").c_str());
    EXPECT_TRUE(banner->isEmpty());
    EXPECT_TRUE(svc.log.has(2, kCloseSyntax)) << svc.log.dump();
}

TEST_F(MarkupTest, ParsingAgainReplacesThePieces) {
    banner->print(0u, "%s", "^P|ON;0;0|A;0|OFF;0;0|^p^P|ON;0;0|B;0|OFF;0;0|^p");
    dbMessage_t* m = banner->head();
    ASSERT_NE(m, nullptr);
    const long long blocks = svc.memory.outstandingBlocks(9);
    char text[] = "^P|ON;0;0|CCC;0|OFF;0;0|^p";
    banner->_extractMessage(text, m);
    EXPECT_EQ(m->pieceCount, 1u);
    EXPECT_EQ(m->length, 30); // measured afresh, not added to the first parse
    EXPECT_STREQ(m->pieces[0].text, "CCC");
    EXPECT_EQ(svc.memory.outstandingBlocks(9), blocks);
}

TEST_F(MarkupTest, EveryAllocationFailureIsCleanAndOnlyRecordsAreLogged) {
    // print takes its work buffer, the message record and the piece block, in that order.
    for (long long n = 0;; ++n) {
        SCOPED_TRACE(n);
        svc.log.clear();
        const long long before = svc.memory.outstandingBlocks(9), buffers = svc.memory.outstandingBlocks(0);
        svc.memory.failAt(n);
        banner->print(0u, "%s", "^P|ON;0;0|A;0|OFF;0;0|^p");
        if (!svc.memory.failed()) {
            EXPECT_EQ(n, 3);
            EXPECT_FALSE(banner->isEmpty());
            break;
        }
        EXPECT_TRUE(banner->isEmpty());
        EXPECT_EQ(svc.memory.outstandingBlocks(9), before);
        EXPECT_EQ(svc.memory.outstandingBlocks(0), buffers);
        if (n == 0) {
            EXPECT_EQ(svc.log.count(), 0) << svc.log.dump(); // no work buffer: silently nothing
        } else {
            ASSERT_EQ(svc.log.count(), 1) << svc.log.dump();
            EXPECT_TRUE(svc.log.has(2, kNoMemory));
        }
    }
    svc.memory.failAt(-1);
}
