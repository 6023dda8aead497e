// Banner message markup: which messages the banner takes, what it reads from them, and the exact log
// line of every rejected one.
#include "bannerfixture.h"

namespace {

std::string rejected(const std::string& why) {
    return "2: Digital Banner message could not be added: " + why + ".\f\n";
}

using MarkupTest = BannerTest;

TEST_F(MarkupTest, RejectedMessagesLogOneExactErrorAndLeaveTheQueue) {
    const std::string open = rejected("Invalid Syntax ('^P')"), close = rejected("Invalid Syntax ('^p')"),
                      bar = rejected("Invalid Syntax ('|')"), semicolon = rejected("Invalid Syntax (';')"),
                      wide = rejected("Message Length Exceeds Banner Width");
    const std::pair<const char*, std::string> cases[] = {
        {"^P|ON;0;0|A;0|OFF;0;0|^p ^P|ON;0;0|B;0|OFF;0;0|^p", open},               // something between pieces
        {"^P|ON;0;500^P|A;0|OFF;0;500|^p", open},                                  // "^P" inside a piece
        {"^P|ON;0;500|A;0|OFF;0;500|", close},                                     // no closing
        {"^p^P|ON;0;500|A;0|OFF;0;500|", close},                                   // closing before opening
        {"^P ON;0;500|A;0|OFF;0;500|^p", bar},                                     // no bar after ^P
        {"^P|ON;0;abc|A;0|OFF;0;500|^p", bar},                                     // duration not a number
        {"^P|ON;0;500|A;|OFF;0;500|^p", bar},                                      // empty hold
        {"^P|FLASH;0;500|A;0|OFF;0;500|^p", semicolon},                            // FLASH without its count
        {"^P|ON;x;500|A;0|OFF;0;500|^p", semicolon},                               // delay not a number
        {"^P|ON;0;500|A^p", semicolon},                                            // no ";" after the text
        {"^P|ON;0^p", semicolon},                                                  // no ";" after the delay
        {"^P|on;0;500|A;0|OFF;0;500|^p", rejected("Invalid Piece Action ('on')")}, // case-sensitive
        {"^P|ON;0;500|A;0|BLINK;0;500|^p", rejected("Invalid Piece Action ('BLINK')")},
        {"^P|ON;0;0|ABCDEFGHIJK;0|OFF;0;0|^p", wide},                        // 110 units on 100
        {"^P|ON;0;0|ABCDEF;0|OFF;0;0|^p^P|ON;0;0|GHIJK;0|OFF;0;0|^p", wide}, // widths add up
    };
    const long long records = svc.memory.outstandingBlocks(9), buffers = svc.memory.outstandingBlocks(0);
    for (const auto& [markup, log] : cases) {
        svc.log.clear();
        banner->print(0u, "%s", markup);
        EXPECT_TRUE(banner->isEmpty()) << markup;
        EXPECT_EQ(svc.log.dump(), log) << markup;
    }
    EXPECT_EQ(svc.memory.outstandingBlocks(9), records) << svc.memory.report();
    EXPECT_EQ(svc.memory.outstandingBlocks(0), buffers) << svc.memory.report();
}

TEST_F(MarkupTest, AcceptedMessagesAreReadPartByPart) {
    // A new message as "pieces/length", taken off the queue again.
    auto read = [this](const char* markup) {
        banner->print(0u, "%s", markup);
        dbMessage_t* m = banner->head();
        const std::string out = m ? std::to_string(m->pieceCount) + "/" + std::to_string(m->length) : "none";
        EXPECT_FALSE(m && m->started);
        banner->_removeMessage(m);
        return out;
    };
    EXPECT_EQ(read("^P|ON;0;500|A;0|OFF;0;500|^p trailing ^p"), "1/10"); // trailing text, even a closing
    EXPECT_EQ(read("^P|ON;0;0|ABCDEFGHIJ;0|OFF;0;0|^p"), "1/100");       // exactly as wide as the banner
    EXPECT_EQ(read("^P|ON;0;0|;0|OFF;0;0|^p"), "1/0");                   // an empty text
    EXPECT_EQ(read("no pieces at all"), "0/0");
    EXPECT_EQ(read("^P|ON;0;0|A;0|OFF;0;0|xy^p^P|ON;0;0|B;0|OFF;0;0|^p"), "2/20"); // junk before a closing
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();

    banner->print(7u, "%s", "^P|LEFT;0;1000|SCORE;1500|UP;0;400|^p^P|FLASH;3;0;900|100;-1|DOWN;200;400|^p");
    dbMessage_t* m = banner->head();
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->priority * 1000 + m->length, 7080u);
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

    // Numbers take base prefixes, blanks, signs and trailing text; beyond 32 bits they stop at the ends.
    const char* const holds[] = {"0x10", "010", "  -1", "+25",          "12ms",
                                 "0",    "0x",  "-0x8", "-99999999999", "99999999999"};
    const char* const values[] = {"16", "8", "-1", "25", "12", "0", "0", "-8", "-2147483648", "2147483647"};
    for (int i = 0; i < 10; ++i) {
        banner->print(0u, "%s",
                      (std::string("^P|FLASH;0x3;010;0x20|A;") + holds[i] + "|OFF;0;500|^p").c_str());
        ASSERT_NE(banner->head(), nullptr) << svc.log.dump();
        EXPECT_EQ(piece(banner->head()->pieces[0]), "2/3/8/32 A " + std::string(values[i]) + " 1/0/500")
            << holds[i];
        banner->_removeMessage(banner->head());
    }
}

TEST_F(MarkupTest, EmptyTooLongAndOutOfMemoryMessagesLeaveNothing) {
    banner->print(0u, "%s", "");
    EXPECT_TRUE(banner->isEmpty());
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();

    // print keeps 127 bytes: a 127-byte message fits whole; two more bytes cut off its closing.
    const std::string filler(127 - std::string("^P|ON;0;0|;0|OFF;0;0|^p").size(), 'i');
    svc.gfx.setCharWidth("led", 'i', 0);
    ASSERT_TRUE(banner->setFont("led"));
    banner->print(0u, "%s", ("^P|ON;0;0|" + filler + ";0|OFF;0;0|^p").c_str());
    ASSERT_NE(banner->head(), nullptr) << svc.log.dump();
    EXPECT_EQ(std::string(banner->head()->pieces[0].text), filler);
    banner->_removeMessage(banner->head());
    banner->print(0u, "%s", ("^P|ON;0;0|ii" + filler + ";0|OFF;0;0|^p").c_str());
    EXPECT_TRUE(banner->isEmpty());
    EXPECT_EQ(svc.log.dump(), rejected("Invalid Syntax ('^p')"));

    // print takes its work buffer (silently nothing without), the message record and the piece block.
    for (long long n = 0; n < 4; ++n) {
        svc.log.clear();
        const long long before = svc.memory.outstandingBlocks(9), buffers = svc.memory.outstandingBlocks(0);
        svc.memory.failAt(n);
        banner->print(0u, "%s", "^P|ON;0;0|A;0|OFF;0;0|^p");
        svc.memory.failAt(-1);
        EXPECT_EQ(banner->isEmpty(), n < 3) << n;
        if (n == 3) break;
        EXPECT_EQ(svc.memory.outstandingBlocks(9) * 100 + svc.memory.outstandingBlocks(0),
                  before * 100 + buffers);
        EXPECT_EQ(svc.log.dump(),
                  n == 0 ? "" : "2: Digital Banner could not add message: Out of memory.\f\n");
    }
}

} // namespace
