// The line tokenizer that descriptions and scriptlets are read with.
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "parser.h"
#include "testkit.h"

namespace {

// Every line's tokens, a line per entry, tokens joined by "|".
std::vector<std::string> tokenize(std::string text) {
    Parser parser(&text[0]);
    std::vector<std::string> lines;
    while (parser.ParseLine()) {
        std::string line;
        while (const char* token = parser.GetToken(" "))
            line += (line.empty() ? "" : "|") + std::string(token);
        lines.push_back(line);
    }
    return lines;
}

// A parser over one line, for the ParamEquals tests; keeps its own copy of the text.
struct OneLine {
    explicit OneLine(std::string line) : text(std::move(line)), parser(&text[0]) {
        parser.ParseLine();
        key = parser.GetToken(" ");
    }
    std::string text;
    Parser parser;
    const char* key;
};

} // namespace

TEST(Parser, SplitsLinesAtEveryLineEnd) {
    EXPECT_EQ(tokenize("a b\nc\r\nd\re"), (std::vector<std::string>{"a|b", "c", "d", "e"}));
    EXPECT_EQ(tokenize("a\n\n\r\n\rb\n"), (std::vector<std::string>{"a", "", "", "", "b"}));
    EXPECT_EQ(tokenize(""), std::vector<std::string>{});
    EXPECT_EQ(tokenize("\t x \t =\ty\t"), (std::vector<std::string>{"x|=|y"}));

    std::string text = "one\r\ntwo\rthree";
    Parser parser(&text[0]);
    std::vector<int> numbers;
    while (parser.ParseLine())
        numbers.push_back(parser.GetLineNumber());
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(parser.GetToken(" "), nullptr);
    EXPECT_FALSE(parser.ParseLine());
}

TEST(Parser, QuotedTokensComeBackWithoutQuotes) {
    EXPECT_EQ(tokenize("sprite = \"start\""), (std::vector<std::string>{"sprite|=|start"}));
    EXPECT_EQ(tokenize("name = \"two words\" tail"), (std::vector<std::string>{"name|=|two words|tail"}));
    EXPECT_EQ(tokenize("a \"\" b"), (std::vector<std::string>{"a||b"}));
    EXPECT_EQ(tokenize("open \"runs to the end\nnext"),
              (std::vector<std::string>{"open|runs to the end", "next"}));
}

TEST(Parser, EqualsTokenMayTouchTheValue) {
    std::string text = "x =5 y";
    Parser parser(&text[0]);
    ASSERT_TRUE(parser.ParseLine());
    EXPECT_STREQ(parser.GetToken(" "), "x");
    EXPECT_TRUE(parser.GetEqualsToken());
    EXPECT_STREQ(parser.GetToken(" "), "5");
    EXPECT_FALSE(parser.GetEqualsToken());
    EXPECT_STREQ(parser.GetToken(" "), "y");
    EXPECT_FALSE(parser.GetEqualsToken());
}

TEST(Parser, GetStringTakesQuotesOrTheTrimmedRestOfTheLine) {
    std::string text = "text =   Hello,  world \t\r\ntext = \"  padded \" ignored\ntext =\n";
    Parser parser(&text[0]);
    parser.ParseLine();
    parser.GetToken(" ");
    parser.GetEqualsToken();
    EXPECT_STREQ(parser.GetString(), "Hello,  world");
    EXPECT_STREQ(parser.GetToken(" "), nullptr);
    parser.ParseLine();
    parser.GetToken(" ");
    parser.GetEqualsToken();
    EXPECT_STREQ(parser.GetString(), "  padded ");
    parser.ParseLine();
    parser.GetToken(" ");
    parser.GetEqualsToken();
    const char* empty = parser.GetString();
    ASSERT_NE(empty, nullptr);
    EXPECT_STREQ(empty, "");

    Parser before(nullptr);
    ASSERT_NE(before.GetString(), nullptr);
    EXPECT_FALSE(before.ParseLine());
}

TEST(Parser, ParamEqualsReadsNumbersWithKeysInAnyCase) {
    testkit::Services services;
    int i = 0;
    OneLine width("WIDTH = -42");
    EXPECT_FALSE(width.parser.ParamEqualsInt32(width.key, "height", &i));
    EXPECT_TRUE(width.parser.ParamEqualsInt32(width.key, "width", &i));
    EXPECT_EQ(i, -42);

    OneLine hex("colour = 0xFF0000FF");
    EXPECT_TRUE(hex.parser.ParamEqualsInt32(hex.key, "colour", &i));
    EXPECT_EQ(static_cast<unsigned int>(i), 0xFF0000FFu);
    OneLine leadingZero("x = +010");
    EXPECT_TRUE(leadingZero.parser.ParamEqualsInt32(leadingZero.key, "x", &i));
    EXPECT_EQ(i, 10); // decimal, not octal

    unsigned int u = 0;
    OneLine rate("rate = 4000000000");
    EXPECT_TRUE(rate.parser.ParamEqualsUInt32(rate.key, "rate", &u));
    EXPECT_EQ(u, 4000000000u);

    float f = 0, g = 0;
    OneLine value("value = 0.25");
    EXPECT_TRUE(value.parser.ParamEqualsFloat32(value.key, "value", &f));
    EXPECT_FLOAT_EQ(f, 0.25f);
    OneLine bezier("BezierControls = 0.1 -2e1");
    EXPECT_TRUE(bezier.parser.ParamEqualsFloat32_2(bezier.key, "beziercontrols", &f, &g));
    EXPECT_FLOAT_EQ(f, 0.1f);
    EXPECT_FLOAT_EQ(g, -20.0f);

    int a = 0, b = 0;
    OneLine loc("Loc = 10 \"-20\" trailing words");
    EXPECT_TRUE(loc.parser.ParamEqualsInt32_2(loc.key, "loc", &a, &b));
    EXPECT_EQ(a, 10);
    EXPECT_EQ(b, -20);

    for (const char* yes : {"true", "TRUE", "1", "yes", "On"}) {
        bool v = false;
        OneLine line(std::string("spaceevenly = ") + yes);
        EXPECT_TRUE(line.parser.ParamEqualsBoolean(line.key, "SpaceEvenly", &v));
        EXPECT_TRUE(v) << yes;
    }
    for (const char* no : {"false", "False", "0", "NO", "off"}) {
        bool v = true;
        OneLine line(std::string("spaceevenly = ") + no);
        EXPECT_TRUE(line.parser.ParamEqualsBoolean(line.key, "SpaceEvenly", &v));
        EXPECT_FALSE(v) << no;
    }
    EXPECT_EQ(services.log.count(), 0) << services.log.dump();
}

TEST(Parser, MalformedValuesLogOneErrorAndKeepTheValue) {
    struct Case {
        const char* text;
        const char* message;
    };
    const Case ints[] = {
        {"x 5", "...line 1: expected: ^C00FF00x = INT^c\f"},
        {"x =", "...line 1: expected: ^C00FF00x = INT^c\f"},
        {"X = five", "...line 1: expected: ^C00FF00X = INT^c\f"},
        {"x = 5px", "...line 1: expected: ^C00FF00x = INT^c\f"},
        {"x = 2147483648", "...line 1: expected: ^C00FF00x = INT^c\f"},
        {"x = 0x100000000", "...line 1: expected: ^C00FF00x = INT^c\f"},
    };
    for (const Case& c : ints) {
        testkit::Services services;
        int value = 7;
        OneLine line(c.text);
        EXPECT_TRUE(line.parser.ParamEqualsInt32(line.key, "x", &value)) << c.text;
        EXPECT_EQ(value, 7) << c.text;
        EXPECT_EQ(services.log.count(), 1) << c.text;
        EXPECT_TRUE(services.log.has(2, c.message)) << services.log.dump();
    }

    testkit::Services services;
    std::string text = "/* header */\n\r\nrate = -1\nvalue = nan\nflag = maybe\nloc = 1\nbezier = 1 x\n";
    Parser parser(&text[0]);
    unsigned int u = 3;
    float f = 1.5f, g = 2.5f;
    bool flag = true;
    int a = 1, b = 2;
    parser.ParseLine();
    parser.ParseLine();
    parser.ParseLine();
    EXPECT_TRUE(parser.ParamEqualsUInt32(parser.GetToken(" "), "rate", &u));
    parser.ParseLine();
    EXPECT_TRUE(parser.ParamEqualsFloat32(parser.GetToken(" "), "value", &f));
    parser.ParseLine();
    EXPECT_TRUE(parser.ParamEqualsBoolean(parser.GetToken(" "), "flag", &flag));
    parser.ParseLine();
    EXPECT_TRUE(parser.ParamEqualsInt32_2(parser.GetToken(" "), "loc", &a, &b));
    parser.ParseLine();
    EXPECT_TRUE(parser.ParamEqualsFloat32_2(parser.GetToken(" "), "bezier", &f, &g));
    EXPECT_EQ(u, 3u);
    EXPECT_EQ(f, 1.5f);
    EXPECT_EQ(g, 2.5f);
    EXPECT_TRUE(flag);
    EXPECT_EQ(a, 1);
    EXPECT_EQ(b, 2);
    std::vector<testkit::LogEntry> log = services.log.entries();
    ASSERT_EQ(log.size(), 5u) << services.log.dump();
    EXPECT_EQ(log[0].text, "...line 3: expected: ^C00FF00rate = UNSIGNED^c\f");
    EXPECT_EQ(log[1].text, "...line 4: expected: ^C00FF00value = FLOAT^c\f");
    EXPECT_EQ(log[2].text, "...line 5: expected: ^C00FF00flag = BOOLEAN^c\f");
    EXPECT_EQ(log[3].text, "...line 6: expected: ^C00FF00loc = INT INT^c\f");
    EXPECT_EQ(log[4].text, "...line 7: expected: ^C00FF00bezier = FLOAT FLOAT^c\f");
    for (const testkit::LogEntry& e : log)
        EXPECT_EQ(e.severity, 2);
}
