// The log service: formatting, dispatch to sinks and the built-in stderr sink's markup handling.
#include <gtest/gtest.h>
#include <thread>
#include "logger.h"
#include "testkit.h"

namespace {

std::string render(const char* text, bool ansi, std::size_t capacity = 256) {
    std::vector<char> out(capacity);
    const std::size_t n = Logger::renderMarkup(text, ansi, out.data(), out.size());
    EXPECT_EQ(n, std::string(out.data()).size());
    return out.data();
}

} // namespace

TEST(Logger, MarkupIsStrippedOrTurnedIntoTerminalColoursByTheBuiltInSink) {
    const char* text = "getWidget(): Unknown name: ^CFFFF00menu.ok^c\f";
    EXPECT_EQ(render(text, true), "getWidget(): Unknown name: \x1b[38;2;255;255;0mmenu.ok\x1b[0m");
    EXPECT_EQ(render("^C00ff80green^c", true), "\x1b[38;2;0;255;128mgreen\x1b[0m");
    // Not markup: kept as written. Only the final form feed is dropped.
    EXPECT_EQ(render("^CXYZ123 ^C12345 a^b ^\f middle\f", false), "^CXYZ123 ^C12345 a^b ^\f middle");
    EXPECT_EQ(render(nullptr, false), "");
    EXPECT_EQ(render("^CFF0000abcdef^c", false, 4), "abc");

    Logger::setSink(nullptr);
    testing::internal::CaptureStderr(); // no terminal: plain text
    Logger::log(2, "...[%s:%d] Unknown parameter: ^C00FF00%s^c\f", "menu", 12, "colour");
    Logger::log(1, "Depth %s invalid.\f", "top");
    Logger::log(0, "plain\f");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "error: ...[menu:12] Unknown parameter: colour\nwarning: Depth top invalid.\nplain\n");
}

TEST(LoggerThread, SinksGetTheWholeTextFromEveryThreadAndTheirClients) {
    const int first = Logger::registerClient("loader 1");
    EXPECT_GT(first, 0);
    EXPECT_GT(Logger::registerClient("loader 2"), first);
    testkit::Services svc;
    Logger::registerClient("worker");
    EXPECT_EQ(svc.log.clients(), std::vector<std::string>{"worker"});
    Logger::log(1, "^CFF0000%s^c is %d\f", "x", 3);
    EXPECT_TRUE(svc.log.has(1, "^CFF0000x^c is 3\f"));
    const std::string longName(3 * Logger::kMaxMessage, 'n'); // long messages are cut, the form feed kept
    Logger::log(2, "name %s\f", longName.c_str());
    EXPECT_EQ(svc.log.entries().back().text, "name " + std::string(Logger::kMaxMessage - 7, 'n') + "\f");

    svc.log.clear();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([t] {
            for (int i = 0; i < 250; ++i)
                Logger::log(1, "thread %d message %d\f", t, i);
        });
    for (std::thread& t : threads)
        t.join();
    EXPECT_EQ(svc.log.count(), 1000);
    EXPECT_TRUE(svc.log.has(1, "thread 3 message 249\f"));
}
