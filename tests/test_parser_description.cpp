// Loading UI descriptions: the example main menu from disk and from memory, keys, messages, includes,
// termination, allocation failures and the guards against cycles and runaway nesting.
#include <gtest/gtest.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include "file.h"
#include "parser.h"
#include "screen.h"
#include "testkit.h"
#include "uidialog.h"
#include "uinonvisualwidget.h"
#include "uisubsystem.h"

namespace {

// A game's own widget: a key and a flag of its own, chained to the base, and a count of its hide hooks.
class KnobWidget : public uiNonVisualWidget {
public:
    const char* getType() override { return "testKnob"; }
    int knob = 0, hides = 0;

protected:
    void _parseParams(Parser* parser, char* key) override {
        if (!s_namesEqual(key, "knob")) return uiNonVisualWidget::_parseParams(parser, key);
        const char* value = parser->GetEqualsToken() ? parser->GetToken(" ") : nullptr;
        if (value)
            knob = std::atoi(value);
        else
            _parseError("knob = int");
    }
    void _parseSingleFlag(const char* flag) override {
        if (s_namesEqual(flag, "KNOB_BIG"))
            knob = 100;
        else
            uiNonVisualWidget::_parseSingleFlag(flag);
    }
    void _hideWidget() override { ++hides; }
};

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

// The example main menu with its included options panel and its common scriptlet.
void addExample(testkit::Services& svc, const std::string& lineEnd = "\n",
                const std::string& indent = "    ") {
    for (const char* file : {"mainmenu.txt", "options.txt", "common.txt"}) {
        std::ifstream in(std::string(GAMEUI_TEST_DATA) + "/" + file, std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        svc.files.add(file, replaceAll(replaceAll(text.str(), "    ", indent), "\n", lineEnd));
    }
}

std::string childNames(uiWidget* w) {
    std::string names;
    for (const _WidgetList_s* node = w->getChildren(); node; node = node->next)
        names += node->widget->name + std::string(" ");
    return names;
}

// Rectangle and flags of a widget as "x,y,x2,y2 flags".
std::string shape(uiWidget* w) {
    if (!w) return "missing";
    const _uiRect_s& r = w->rect;
    return std::to_string(r.x) + "," + std::to_string(r.y) + "," + std::to_string(r.x2) + "," +
           std::to_string(r.y2) + " " + std::to_string(w->getWidgetFlags());
}

void expectExampleTree(uiWidget* root) {
    ASSERT_NE(root, nullptr);
    EXPECT_STREQ(root->name, "mainmenu");
    EXPECT_EQ(root->getDepth(), 2u);
    EXPECT_EQ(childNames(root), "options panel start ");
    EXPECT_EQ(shape(root), "0,0,800,600 7"); // visible, active, input focus
    EXPECT_EQ(shape(root->getChildWidget("start", 0, true)), "300,200,400,240 15") << "sized by its sprite";
    EXPECT_EQ(shape(root->getChildWidget("panel", 0, true)), "100,100,300,200 7");
    EXPECT_EQ(shape(root->getWidget("mainmenu.panel.ok", 0, true)), "0,0,64,32 7");
    uiWidget* options = root->getChildWidget("options", 0, true); // from the included file
    EXPECT_EQ(shape(options), "600,500,700,550 7");
    EXPECT_EQ(options->getParent(), root);
}

class Description : public ::testing::Test {
protected:
    void SetUp() override { svc.gfx.defineSprite("start", 100, 40); }
    testkit::Services svc;
    uiSubsystem ui;
};

} // namespace

TEST_F(Description, ExampleLoadsFromDiskAndFromMemoryWithAnyLineEndsAndIndentation) {
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(GAMEUI_TEST_DATA); // the example names its includes relative to itself
    File::setBackend(nullptr);
    uiWidget* root = ui.loadUI("mainmenu.txt");
    File::setBackend(&svc.files);
    std::filesystem::current_path(previous);
    expectExampleTree(root);
    delete root;
    uiWidget::s_freeScripletCache();

    for (const auto& [lineEnd, indent] : {std::pair{"\r\n", "\t"}, std::pair{"\r", " \t "}}) {
        SCOPED_TRACE(static_cast<int>(lineEnd[1]));
        addExample(svc, lineEnd, indent);
        testkit::Screen screen("mainmenu.txt");
        expectExampleTree(screen.root());
    }
    EXPECT_EQ(svc.log.count(), 0) << "a valid description logs nothing";
}

TEST_F(Description, EveryAllocationFailureIsReportedAndLeavesNothingBehind) {
    addExample(svc);
    // What a load of the example allocates, in order, and what each failure must report.
    const char* const expected[] = {
        "uiSubsystem: Memory Allocation Error: \"^C00FF00mainmenu.txt^c\"\f",
        "...Out of memory allocating widget: mainmenu of type uiNonVisualWidget\f",
        "...Out of memory allocating widget: start of type uiVisualWidget\f",
        "mainmenu::addChild(start): Out of Memory\f",
        "...Out of memory allocating widget: panel of type uiNonVisualWidget\f",
        "...Out of memory allocating widget: ok of type uiInputHandler\f",
        "panel::addChild(ok): Out of Memory\f",
        "mainmenu::addChild(panel): Out of Memory\f",
        "uiSubsystem: Memory Allocation Error: \"^C00FF00options.txt^c\"\f",
        "...Out of memory allocating widget: options of type uiInputHandler\f",
        "mainmenu::addChild(options): Out of Memory\f",
        "mainmenu::addGlobalInputFocusWidget(mainmenu.panel.ok): Out of Memory\f",
        "uiSubsystem: Memory Allocation Error: \"^C00FF00common.txt^c\"\f", // text
        "uiSubsystem: Memory Allocation Error: \"^C00FF00common.txt^c\"\f", // cache entry
        "uiSubsystem: Memory Allocation Error: \"^C00FF00common.txt^c\"\f", // the widget's copy
        "uiSubsystem: Memory Allocation Error: \"^C00FF00common.txt^c\"\f", // its parser
    };
    const long long before = svc.memory.outstandingBlocks();
    for (int n = 0; n <= static_cast<int>(std::size(expected)); ++n) {
        SCOPED_TRACE(n);
        svc.log.clear();
        svc.memory.failAt(n);
        uiWidget* root = ui.loadUI("mainmenu.txt");
        const bool failed = svc.memory.failed();
        svc.memory.failAt(-1);
        EXPECT_EQ(failed, n < static_cast<int>(std::size(expected)));
        if (failed)
            EXPECT_TRUE(svc.log.has(2, expected[n]));
        else
            expectExampleTree(root);
        delete root;
        uiWidget::s_freeScripletCache();
        EXPECT_EQ(svc.memory.outstandingBlocks(), before);
    }
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
    EXPECT_EQ(shape(screen.root()), "7,10,50,15 3");
    EXPECT_EQ(screen->getDepth(), 40u);
    EXPECT_EQ(screen.find("a")->getDepth(), 40u);
    EXPECT_EQ(shape(screen.find("a")),
              "0,0,9,8 " + std::to_string(WF_ROOT_COORDS | WF_IGNORE_ALPHA | WF_ALPHA_TEST | WF_ACTIVE));
    EXPECT_EQ(shape(screen.find("b")), "0,0,0,0 1");
    EXPECT_EQ(svc.log.count(), 0);

    uiSubsystem::s_registerWidget("testKnob", [] { return static_cast<uiWidget*>(new KnobWidget()); });
    testkit::Screen game(svc,
                         "k = testKnob\n{\n    visible = true\n    knob = 5\n    x = 3\n"
                         "    flags = WF_ACTIVE | KNOB_BIG\n    knob\n    nope = 1\n}\n",
                         "knob.txt");
    auto* knob = static_cast<KnobWidget*>(game.root());
    ASSERT_NE(knob, nullptr);
    EXPECT_EQ(knob->knob, 100);
    EXPECT_EQ(shape(knob), "3,0,0,0 1");
    EXPECT_EQ(knob->hides, 0) << "flags clears states without hooks";
    EXPECT_EQ(svc.log.dump(),
              "2: ...expected: ^C00FF00knob = int^c\f\n2: ...[k:8] Unknown parameter: ^C00FF00nope\f\n");
}

TEST_F(Description, EachBadLineLogsItsMessageAndLoadingGoesOn) {
    testkit::Screen screen(svc,
                           "garbage line\nroot = uiNonVisualWidget\n{\n    visible = true\n"
                           "    visible = yes\n    depth 5\n    flags WF_VISIBLE\n    visible true\n"
                           "    active true\n    inputfocus true\n    globalinputfocus root\n"
                           "    globalinputfocus =\n    #scriptlet\n    flags = WF_VISIBLE WF_ACTIVE\n"
                           "    colour = 5\n    flags = WF_ACTIVE|WF_VISIBLE | WF_NOPE\n"
                           "    depth = nosuchdepth\n    child = uiNonVisualWidget\n"
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
                              "2: ...expected: \"^C00FF00obj = type^c\"\f\n"
                              "2: ...failed to create child for: root\f\n"
                              "2: ...attempt to instance an invalid ui type: \"uiNoSuchType\"\f\n"
                              "2: ...failed to alloc widget: start of type uiNoSuchType\f\n"
                              "2: ...failed to create child for: root\f\n");
    ASSERT_TRUE(screen);
    // The failed child's lines went to the root and its "}" closed the root's block.
    EXPECT_EQ(shape(screen.root()), "7,0,0,0 0") << "the last flags line named no known flag";
    EXPECT_EQ(screen->getDepth(), 96u);
    EXPECT_EQ(screen->getChildren(), nullptr);
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
    svc.files.add("a.txt", "a = uiNonVisualWidget\n{\n    child #b.txt\n}\n");
    svc.files.add("b.txt", "b = uiNonVisualWidget\n{\n    x = 1\n    child #A.txt\n}\n");
    svc.files.add("loop.txt", "#loop.txt\nloop = uiNonVisualWidget\n{\n}\n");
    {
        testkit::Screen screen("a.txt");
        ASSERT_TRUE(screen);
        EXPECT_EQ(screen.find("b")->getChildren(), nullptr);
        EXPECT_EQ(svc.files.opens("a.txt"), 1);
        testkit::Screen loop("loop.txt"); // a root header naming its own file: the next header is used
        EXPECT_STREQ(loop->name, "loop");
    }
    EXPECT_EQ(svc.log.dump(),
              "2: ...[b.txt:4] include cycle: ^C00FF00A.txt^c is already being read; skipped\f\n"
              "2: ...failed to create child for: b\f\n"
              "2: ...[loop.txt:1] include cycle: ^C00FF00loop.txt^c is already being read; "
              "skipped\f\n");
    // The same file included twice side by side is no cycle.
    svc.log.clear();
    svc.files.add("other.txt", "o = uiNonVisualWidget\n{\n}\n");
    testkit::Screen twice(svc, "t = uiNonVisualWidget\n{\n child #other.txt\n child #other.txt\n}\n");
    EXPECT_EQ(childNames(twice.root()), "o o ");
    EXPECT_EQ(svc.log.count(), 0);

    // 300 objects, each the only child of the one before: the file is one level and every object one more,
    // so w0 to w254 fit in 256.
    std::string deep = "w0 = uiNonVisualWidget\n{\n";
    for (int i = 1; i < 300; ++i)
        deep += "child w" + std::to_string(i) + " = uiNonVisualWidget\n{\n";
    for (int i = 0; i < 300; ++i)
        deep += "}\n";
    testkit::Screen screen(svc, deep, "deep.txt");
    int levels = 0;
    for (const uiWidget* w = screen.root(); w; w = w->getChildren() ? w->getChildren()->widget : nullptr)
        ++levels;
    EXPECT_EQ(levels, 255);
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
