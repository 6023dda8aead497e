// The line tokenizer that descriptions and scriptlets are read with.
#include <gtest/gtest.h>
#include "parser.h"
#include "testkit.h"

namespace {

// Every line's tokens, tokens joined by "|" and lines by "/".
std::string tokenize(std::string text) {
    Parser parser(&text[0]);
    std::string lines;
    for (int n = 0; parser.ParseLine(); ++n) {
        lines += n ? "/" : "";
        for (int t = 0; const char* token = parser.GetToken(" "); ++t)
            lines += (t ? "|" : "") + std::string(token);
    }
    return lines;
}

// The key on one line and what the ParamEquals reader given made of its value, or "kept" when it refused.
template <class Read> std::string param(std::string line, Read read) {
    Parser parser(&line[0]);
    parser.ParseLine();
    return read(parser, parser.GetToken(" "));
}

} // namespace

TEST(Parser, SplitsLinesAtEveryLineEndAndUnquotesTokens) {
    EXPECT_EQ(tokenize("a b\nc\r\nd\re"), "a|b/c/d/e");
    EXPECT_EQ(tokenize("a\n\n\r\n\rb\n"), "a////b");
    EXPECT_EQ(tokenize(""), "");
    EXPECT_EQ(tokenize("\t x \t =\ty\t"), "x|=|y");
    EXPECT_EQ(tokenize("name = \"two words\" tail \"\"\nopen \"runs to the end\nnext"),
              "name|=|two words|tail|/open|runs to the end/next");

    std::string text = "x =5 y\ntext =   Hello,  world \t\r\ntext = \"  padded \" ignored\ntext =\n";
    Parser parser(&text[0]);
    ASSERT_TRUE(parser.ParseLine());
    EXPECT_STREQ(parser.GetToken(" "), "x");
    EXPECT_TRUE(parser.GetEqualsToken()); // may touch the value
    EXPECT_STREQ(parser.GetToken(" "), "5");
    EXPECT_FALSE(parser.GetEqualsToken());
    // GetString takes the quoted text or the trimmed rest of the line.
    for (const char* expected : {"Hello,  world", "  padded ", ""}) {
        parser.ParseLine();
        parser.GetToken(" ");
        parser.GetEqualsToken();
        EXPECT_STREQ(parser.GetString(), expected);
    }
    EXPECT_EQ(parser.GetLineNumber(), 4);
    EXPECT_FALSE(parser.ParseLine());
    EXPECT_EQ(parser.GetToken(" "), nullptr);
    Parser none(nullptr);
    EXPECT_STREQ(none.GetString(), "");
    EXPECT_FALSE(none.ParseLine());
}

TEST(Parser, ParamEqualsReadsValuesWithKeysInAnyCaseAndKeepsTheValueOnMistakes) {
    testkit::Services svc;
    auto i32 = [](const char* line) {
        return param(line, [](Parser& p, const char* key) {
            int v = 7;
            return p.ParamEqualsInt32(key, "x", &v) ? std::to_string(v) : "other key";
        });
    };
    const std::pair<const char*, const char*> ints[] = {
        {"X = -42", "-42"},
        {"x = 0xFF0000FF", "-16776961"},
        {"x = +010", "10"},
        {"y = 1", "other key"},
        {"x 5", "7"},
        {"x =", "7"},
        {"x = five", "7"},
        {"x = 5px", "7"},
        {"x = 2147483648", "7"},
        {"x = 0x100000000", "7"},
    };
    for (const auto& [line, value] : ints)
        EXPECT_EQ(i32(line), value) << line;
    EXPECT_EQ(svc.log.count(2, "...line 1: expected: ^C00FF00x = INT^c\f"), 6) << svc.log.dump();
    svc.log.clear();

    EXPECT_EQ(param("rate = 4000000000",
                    [](Parser& p, const char* k) {
                        unsigned int u = 3;
                        p.ParamEqualsUInt32(k, "rate", &u);
                        return std::to_string(u);
                    }),
              "4000000000");
    EXPECT_EQ(param("BezierControls = 0.1 -2e1",
                    [](Parser& p, const char* k) {
                        float f = 0, g = 0;
                        p.ParamEqualsFloat32_2(k, "beziercontrols", &f, &g);
                        return std::to_string(f) + " " + std::to_string(g);
                    }),
              "0.100000 -20.000000");
    EXPECT_EQ(param("Loc = 10 \"-20\" trailing words",
                    [](Parser& p, const char* k) {
                        int a = 0, b = 0;
                        p.ParamEqualsInt32_2(k, "loc", &a, &b);
                        return std::to_string(a) + " " + std::to_string(b);
                    }),
              "10 -20");
    std::string flags;
    for (const char* word : {"true", "TRUE", "1", "yes", "On", "false", "False", "0", "NO", "off"})
        flags += param(std::string("spaceevenly = ") + word, [](Parser& p, const char* k) {
            bool v = false;
            p.ParamEqualsBoolean(k, "SpaceEvenly", &v);
            return v ? "1" : "0";
        });
    EXPECT_EQ(flags, "1100000000"); // only true and false: the other six are refused and keep the value
    EXPECT_EQ(svc.log.count(), 6) << svc.log.dump();
}
