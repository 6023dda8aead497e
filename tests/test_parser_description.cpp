// Reading UI descriptions: the line tokenizer and its value readers; the example main menu, keys,
// messages, includes, file limits and the guards against cycles and runaway nesting.
#include <gtest/gtest.h>
#include <cstdlib>
#include <regex>
#include "folder.h"
#include "parser.h"
#include "screen.h"
#include "testkit.h"
#include "uinonvisualwidget.h"
#include "uisubsystem.h"

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

// A game's own widget: a key and a flag of its own, chained to the base, and a count of its hide hooks.
class KnobWidget : public uiNonVisualWidget {
public:
    const char* getType() override { return "testKnob"; }
    int knob = 0, hides = 0;

protected:
    void _parseParams(Parser* parser, char* key) override {
        if (!s_namesEqual(key, "knob")) return uiNonVisualWidget::_parseParams(parser, key);
        if (!parser->GetEqualsToken()) return _parseError("knob = int");
        knob = std::atoi(parser->GetToken(" "));
    }
    void _parseSingleFlag(const char* flag) override {
        if (!s_namesEqual(flag, "KNOB_BIG")) return uiNonVisualWidget::_parseSingleFlag(flag);
        knob = 100;
    }
    void _hideWidget() override { ++hides; }
};

class Description : public ::testing::Test {
protected:
    void SetUp() override { svc.gfx.defineSprite("start", 100, 40); }
    testkit::Services svc;
    uiSubsystem ui;
};

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
    std::string text = "X = -42\nx = 0xFF0000FF\nx = +010\ny = 1\nx 5\nx =\nx = five\nx = 5px\n"
                       "x = 2147483648\nx = 0x100000000\nrate = 4000000000\nBezierControls = 0.1 -2e1\n"
                       "Loc = 10 \"-20\" trailing words\n";
    for (const char* word :
         {"false", "1", "TRUE", "0", "False", "yes", "true", "NO", "false", "On", "true", "off"})
        text += std::string("spaceevenly = ") + word + "\n";
    // Each line read by the reader of its key; a refused value keeps what it was (7, or the flag's last).
    Parser p(&text[0]);
    std::string read;
    bool flag = true;
    while (p.ParseLine()) {
        const char* key = p.GetToken(" ");
        int i = 7, a = 0, b = 0;
        unsigned int u = 3;
        float f = 0, g = 0;
        if (p.ParamEqualsInt32(key, "x", &i))
            read += std::to_string(i);
        else if (p.ParamEqualsUInt32(key, "rate", &u))
            read += std::to_string(u);
        else if (p.ParamEqualsFloat32_2(key, "beziercontrols", &f, &g))
            read += std::to_string(f) + "," + std::to_string(g);
        else if (p.ParamEqualsInt32_2(key, "loc", &a, &b))
            read += std::to_string(a) + "," + std::to_string(b);
        else if (p.ParamEqualsBoolean(key, "SpaceEvenly", &flag))
            read += flag ? "T" : "F";
        else
            read += "other";
        read += " ";
    }
    EXPECT_EQ(read, "-42 -16776961 10 other 7 7 7 7 7 7 4000000000 0.100000,-20.000000 10,-20 "
                    "F F T T F F T T F F T T ");
    // Each refusal names the key and the line.
    EXPECT_EQ(svc.log.count(), 12);
    EXPECT_TRUE(svc.log.has(2, "...line 5: expected: ^C00FF00x = INT^c\f"));
    EXPECT_TRUE(svc.log.has(2, "...line 25: expected: ^C00FF00spaceevenly = BOOLEAN^c\f"));
}

// The example main menu with its included options panel and its common scriptlet, written with Windows
// line ends and tabs: the start button is sized by its sprite; options comes from the included file.
TEST_F(Description, ExampleLoadsWithWindowsLineEndsAndTabs) {
    for (const auto& [name, text] : testkit::readFolder(GAMEUI_TEST_DATA))
        svc.files.add(name, std::regex_replace(std::regex_replace(text, std::regex("    "), "\t"),
                                               std::regex("\n"), "\r\n"));
    testkit::Screen screen("mainmenu.txt");
    ASSERT_TRUE(screen);
    EXPECT_EQ(screen->getDepth(), 2u);
    EXPECT_EQ(testkit::treeText(screen.root()),
              "mainmenu 0,0,800,600 7 (options 600,500,700,550 7, panel 100,100,300,200 7 "
              "(ok 0,0,64,32 7), start 300,200,400,240 15)");
    EXPECT_EQ(svc.log.count(), 0) << "a valid description logs nothing";
}

TEST_F(Description, KeysSetRectangleDepthFlagsAndStatesAndGameWidgetsChainToThem) {
    uiWidget::defineDepth("hud", 40);
    testkit::Screen screen(svc, "root = uiNonVisualWidget\n{\n"
                                "    WIDTH = 50\n    y = 10\n    height = 5\n    x = 7\n" // x2 50, y2 15
                                "    depth = HUD\n    visible = TRUE\n"
                                "    child a = uiNonVisualWidget\n    {\n        depth = #parent\n"
                                "        x2 = 9\n        y2 = 8\n"
                                "        flags = wf_root_coords | WF_IGNORE_ALPHA | WF_ALPHA_TEST\n    }\n"
                                "    child b = uiNonVisualWidget\n    {\n        active = true\n"
                                "        inputfocus = true\n        visible = true\n"
                                "        flags = WF_ACTIVE\n    }\n" // clears the state bits it does not name
                                "    active = true\n}\nx = 1000\n");
    ASSERT_TRUE(screen);
    // "visible = true" came before the children existed; "active = true" after them reached them both.
    EXPECT_EQ(testkit::treeText(screen.root()),
              "root 7,10,50,15 3 (b 0,0,0,0 1, a 0,0,9,8 " +
                  std::to_string(WF_ROOT_COORDS | WF_IGNORE_ALPHA | WF_ALPHA_TEST | WF_ACTIVE) + ")");
    EXPECT_EQ(screen->getDepth() + screen.find("a")->getDepth(), 80u);
    EXPECT_EQ(svc.log.count(), 0);

    uiSubsystem::s_registerWidget("testKnob", [] { return static_cast<uiWidget*>(new KnobWidget()); });
    testkit::Screen game(svc,
                         "k = testKnob\n{\n    visible = true\n    knob = 5\n    x = 3\n"
                         "    flags = WF_ACTIVE | KNOB_BIG\n    knob\n    nope = 1\n}\n",
                         "knob.txt");
    auto* knob = static_cast<KnobWidget*>(game.root());
    ASSERT_NE(knob, nullptr);
    EXPECT_EQ(knob->knob, 100);
    EXPECT_EQ(testkit::treeText(knob), "k 3,0,0,0 1");
    EXPECT_EQ(knob->hides, 0) << "flags clears states without hooks";
    EXPECT_EQ(svc.log.dump(),
              "2: ...expected: ^C00FF00knob = int^c\f\n2: ...[k:8] Unknown parameter: ^C00FF00nope\f\n");
}

TEST_F(Description, EachBadLineLogsItsMessageAndLoadingGoesOn) {
    testkit::Screen screen(
        svc, "garbage line\nroot = uiNonVisualWidget\n{\n    visible = true\n"
             "    visible = yes\n    depth 5\n    flags WF_VISIBLE\n    visible true\n"
             "    active true\n    inputfocus true\n    globalinputfocus root\n"
             "    globalinputfocus =\n    #scriptlet\n    flags = WF_VISIBLE WF_ACTIVE\n"
             "    colour = 5\n    flags = WF_ACTIVE|WF_VISIBLE | WF_NOPE\n"
             "    depth = nosuchdepth\n    y = 3\n    height = tall\n    child = uiNonVisualWidget\n"
             "    child start = uiNoSuchType\n    {\n        x = 7\n    }\n    x = 99\n}\n");
    EXPECT_EQ(svc.log.dump(), "2: ...expected: \"^C00FF00obj = type^c\"\f\n"
                              "2: ...Expected: true or false\f\n"
                              "2: ...expected: \"^C00FF00depth = val^c\"\f\n"
                              "2: ...expected: \"^C00FF00flags = FLAGS^c\"\f\n"
                              "2: ...expected: \"^C00FF00visible = BOOLEAN^c\"\f\n"
                              "2: ...expected: \"^C00FF00active = BOOLEAN^c\"\f\n"
                              "2: ...expected: \"^C00FF00inputfocus = BOOLEAN^c\"\f\n"
                              "2: ...expected: \"^C00FF00globalinputfocus = val^c\"\f\n"
                              "2: ...expected: \"^C00FF00globalinputfocus = val^c\"\f\n"
                              "2: ...expected: \"^C00FF00#scriptlet file^c\"\f\n"
                              "2: Invalid syntax: expected \"|\"\f\n"
                              "2: ...[root:15] Unknown parameter: ^C00FF00colour\f\n"
                              "2: Unknown flag: WF_ACTIVE|WF_VISIBLE\f\n"
                              "2: Unknown flag: WF_NOPE\f\n"
                              "1: Unknown depth value: nosuchdepth\f\n"
                              "2: ...line 19: expected: ^C00FF00height = INT^c\f\n"
                              "2: ...expected: \"^C00FF00obj = type^c\"\f\n"
                              "2: ...failed to create child for: root\f\n"
                              "2: ...attempt to instance an invalid ui type: \"uiNoSuchType\"\f\n"
                              "2: ...failed to alloc widget: start of type uiNoSuchType\f\n"
                              "2: ...failed to create child for: root\f\n");
    ASSERT_TRUE(screen);
    // The failed child's lines went to the root and its "}" closed the root's block; a malformed size
    // left the far edge where it was; the last flags line named no known flag.
    EXPECT_EQ(testkit::treeText(screen.root()), "root 7,3,0,0 0");
    EXPECT_EQ(screen->getDepth(), 96u);
}

TEST_F(Description, FileProblemsAreReportedWithTheFileName) {
    svc.files.add("a.txt", "a = uiNonVisualWidget\n{\n}\n");
    svc.files.failRead("a.txt");
    svc.files.add("empty.txt", "");
    // Sixteen MiB are still read; one byte more is refused before any memory is taken.
    std::string big = "a = uiNonVisualWidget\n{\n}\n";
    big.resize(16u * 1024u * 1024u, ' '); // nothing after the root's "}" is parsed
    svc.files.add("limit.txt", big);
    svc.files.add("big.txt", big + " ");
    {
        testkit::Screen limit("limit.txt");
        EXPECT_TRUE(limit);
    }
    for (const char* file : {"missing.txt", "a.txt", "empty.txt"})
        EXPECT_EQ(ui.loadUI(file), nullptr);
    const long long allocations = svc.memory.allocations();
    EXPECT_EQ(ui.loadUI("big.txt"), nullptr);
    EXPECT_EQ(svc.memory.allocations(), allocations);
    EXPECT_EQ(svc.log.dump(), "2: uiSubsystem: could not open file: \"^C00FF00missing.txt^c\"\f\n"
                              "2: uiSubsystem: File I/O Error: \"^C00FF00a.txt^c\"\f\n"
                              "2: uiSubsystem: file too large: \"^C00FF00big.txt^c\" (16777217 bytes, limit "
                              "16777216)\f\n");
    EXPECT_EQ(svc.files.openHandles(), 0);
}

TEST_F(Description, IncludeCyclesAreSkippedWithTheirPlaceAndNestingIsLimited) {
    // The same file included twice side by side is no cycle; a file including its includer is.
    svc.files.add("a.txt", "a = uiNonVisualWidget\n{\n    child #b.txt\n    child #b.txt\n}\n");
    svc.files.add("b.txt", "b = uiNonVisualWidget\n{\n    x = 1\n    child #A.txt\n}\n");
    svc.files.add("loop.txt", "#loop.txt\nloop = uiNonVisualWidget\n{\n}\n");
    {
        testkit::Screen screen("a.txt");
        EXPECT_EQ(testkit::treeText(screen.root()), "a 0,0,0,0 0 (b 1,0,0,0 0, b 1,0,0,0 0)");
        EXPECT_EQ(svc.files.opens("a.txt"), 1);
        testkit::Screen loop("loop.txt"); // a root header naming its own file: the next header is used
        EXPECT_STREQ(loop->name, "loop");
    }
    const std::string cycle =
        "2: ...[b.txt:4] include cycle: ^C00FF00A.txt^c is already being read; skipped\f\n"
        "2: ...failed to create child for: b\f\n";
    EXPECT_EQ(svc.log.dump(),
              cycle + cycle +
                  "2: ...[loop.txt:1] include cycle: ^C00FF00loop.txt^c is already being read; "
                  "skipped\f\n");

    // 300 objects, each the only child of the one before: the file is one level and every object one more,
    // so w0 to w254 fit in 256.
    std::string deep = "w0 = uiNonVisualWidget\n{\n";
    for (int i = 1; i < 300; ++i)
        deep += "child w" + std::to_string(i) + " = uiNonVisualWidget\n{\n";
    for (int i = 0; i < 300; ++i)
        deep += "}\n";
    testkit::Screen screen(svc, deep, "deep.txt");
    EXPECT_TRUE(svc.log.has(2, "...[deep.txt:511] nesting deeper than 256 levels: ^C00FF00w255^c skipped\f"));
    // A chain of includes counts as well: each file and its root object are two levels.
    for (int i = 0; i < 200; ++i)
        svc.files.add("f" + std::to_string(i) + ".txt",
                      "f = uiNonVisualWidget\n{\n    child #f" + std::to_string(i + 1) + ".txt\n}\n");
    testkit::Screen chain("f0.txt");
    EXPECT_TRUE(
        svc.log.has(2, "...[f127.txt:3] nesting deeper than 256 levels: ^C00FF00f128.txt^c skipped\f"));
    EXPECT_EQ(svc.files.opens("f128.txt"), 0);
}
