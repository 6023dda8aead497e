// Loading UI descriptions: the example main menu from disk and from memory, keys, messages, includes,
// termination, allocation failures and the guards against cycles and runaway nesting.
#include <gtest/gtest.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include "file.h"
#include "parser.h"
#include "screen.h"
#include "testkit.h"
#include "uidialog.h"
#include "uinonvisualwidget.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace {

// A game's own widget: a key and a flag of its own, chained to the base, and a count of its hide hooks.
class KnobWidget : public uiNonVisualWidget {
public:
    static uiWidget* make() { return new KnobWidget(); }
    const char* getType() override { return "testKnob"; }
    bool isType(const char* t) override {
        return s_namesEqual(t, "testKnob") || uiNonVisualWidget::isType(t);
    }
    int knob = 0;
    int hides = 0;

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

std::string readFixture(const char* name) {
    std::ifstream in(std::string(GAMEUI_TEST_DATA) + "/" + name, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

const char* const kExampleFiles[] = {"mainmenu.txt", "options.txt", "common.txt"};

// The example main menu with its included options panel and its common scriptlet.
void addExample(testkit::Services& svc, const std::string& lineEnd = "\n",
                const std::string& indent = "    ") {
    for (const char* file : kExampleFiles)
        svc.files.add(file, replaceAll(replaceAll(readFixture(file), "    ", indent), "\n", lineEnd));
}

std::string childNames(uiWidget* w) {
    std::string names;
    for (const _WidgetList_s* node = w->getChildren(); node; node = node->next)
        names += std::string(node->widget->name) + " ";
    return names;
}

constexpr unsigned int kStates = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS;

void expectRect(uiWidget* w, int x, int y, int x2, int y2) {
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->rect.x, x) << w->name;
    EXPECT_EQ(w->rect.y, y) << w->name;
    EXPECT_EQ(w->rect.x2, x2) << w->name;
    EXPECT_EQ(w->rect.y2, y2) << w->name;
}

void expectExampleTree(uiWidget* root) {
    ASSERT_NE(root, nullptr);
    EXPECT_STREQ(root->name, "mainmenu");
    expectRect(root, 0, 0, 800, 600);
    EXPECT_EQ(root->getDepth(), 2u);
    EXPECT_EQ(root->getWidgetFlags(), kStates);
    EXPECT_EQ(childNames(root), "options panel start ");

    uiWidget* start = root->getChildWidget("start", 0, true);
    expectRect(start, 300, 200, 400, 240); // sized by its sprite
    EXPECT_EQ(start->getWidgetFlags(), kStates | WF_ALPHA_TEST);
    expectRect(root->getChildWidget("panel", 0, true), 100, 100, 300, 200);
    uiWidget* ok = root->getWidget("mainmenu.panel.ok", 0, true);
    expectRect(ok, 0, 0, 64, 32);
    EXPECT_EQ(ok->getWidgetFlags(), kStates);
    uiWidget* options = root->getChildWidget("options", 0, true); // from the included file
    expectRect(options, 600, 500, 700, 550);
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

    const std::pair<const char*, const char*> variants[] = {{"\r\n", "\t"}, {"\r", " \t "}};
    for (const auto& [lineEnd, indent] : variants) {
        SCOPED_TRACE(testing::Message() << "line end " << static_cast<int>(lineEnd[0]) << lineEnd[1]);
        addExample(svc, lineEnd, indent);
        testkit::Screen screen("mainmenu.txt");
        expectExampleTree(screen.root());
    }
    EXPECT_EQ(svc.log.count(), 0) << "a valid description logs nothing";
}

TEST_F(Description, ProgressIsReportedPerObjectAndParameterLine) {
    addExample(svc);
    std::string events;
    uiWidget::registerProgCb(
        [](uiWidget* w, void* client, e_uiProgressEvent event) {
            *static_cast<std::string*>(client) +=
                std::string(1, "CPD"[event]) + ":" + (w ? w->name : "-") + " ";
        },
        &events);
    {
        testkit::Screen screen("mainmenu.txt");
        svc.files.add("bad.txt", "root = uiNonVisualWidget\n{\n child x = uiNoSuchType\n}\n");
        testkit::Screen bad("bad.txt");
    }
    uiWidget::registerProgCb(nullptr, nullptr);

    const std::string params5 = "P:mainmenu P:mainmenu P:mainmenu P:mainmenu P:mainmenu ";
    EXPECT_EQ(events,
              "C:mainmenu " + params5 +                                                 //
                  "C:start P:start P:start P:start P:start P:start D:start P:mainmenu " //
                  "C:panel P:panel P:panel P:panel P:panel C:ok P:ok P:ok D:ok P:panel D:panel P:mainmenu "
                  "C:options P:options P:options P:options P:options D:options P:mainmenu "
                  "P:mainmenu "                       // globalinputfocus
                  "P:mainmenu P:mainmenu P:mainmenu " // the scriptlet's two lines, then its own line
                  "P:mainmenu D:mainmenu "            // flags
                  "C:root C:- P:root D:root ");       // a failed child is reported as null
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
    for (int n = 0;; ++n) {
        SCOPED_TRACE(testing::Message() << "allocation " << n);
        svc.log.clear();
        svc.memory.failAt(n);
        uiWidget* root = ui.loadUI("mainmenu.txt");
        const bool failed = svc.memory.failed();
        svc.memory.failAt(-1);
        if (!failed) {
            EXPECT_EQ(n, static_cast<int>(std::size(expected)));
            expectExampleTree(root);
        } else if (n < static_cast<int>(std::size(expected))) {
            EXPECT_TRUE(svc.log.has(2, expected[n]));
        } else {
            ADD_FAILURE() << "more allocations than expected";
        }
        delete root;
        uiWidget::s_freeScripletCache();
        EXPECT_EQ(svc.memory.outstandingBlocks(), before);
        if (!failed || n > 100) break;
    }
}

TEST_F(Description, BaseKeysSetRectangleDepthFlagsAndStates) {
    uiWidget::defineDepth("hud", 40);
    testkit::Screen screen(svc, "root = uiNonVisualWidget\n"
                                "{\n"
                                "    WIDTH = 50\n" // before x: x2 = 50
                                "    y = 10\n"
                                "    height = 5\n"  // after y: y2 = 15
                                "    x = 7\n"       // does not move x2
                                "    depth = HUD\n" // depth names ignore case
                                "    visible = TRUE\n"
                                "    child a = uiNonVisualWidget\n"
                                "    {\n"
                                "        depth = #parent\n"
                                "        x2 = 9\n"
                                "        y2 = 8\n"
                                "        flags = wf_root_coords | WF_IGNORE_ALPHA | WF_ALPHA_TEST\n"
                                "    }\n"
                                "    child b = uiNonVisualWidget\n"
                                "    {\n"
                                "        active = true\n"
                                "        inputfocus = true\n"
                                "        visible = true\n"
                                "        flags = WF_ACTIVE\n" // clears the state bits it does not name
                                "    }\n"
                                "    active = true\n"
                                "}\n"
                                "x = 1000\n");
    ASSERT_TRUE(screen);
    expectRect(screen.root(), 7, 10, 50, 15);
    EXPECT_EQ(screen->getDepth(), 40u);
    // "visible = true" came before the children existed; "active = true" after them reached them both.
    EXPECT_EQ(screen->getWidgetFlags(), WF_VISIBLE | WF_ACTIVE);
    uiWidget* a = screen.find("a");
    EXPECT_EQ(a->getDepth(), 40u);
    expectRect(a, 0, 0, 9, 8);
    EXPECT_EQ(a->getWidgetFlags(), WF_ROOT_COORDS | WF_IGNORE_ALPHA | WF_ALPHA_TEST | WF_ACTIVE);
    EXPECT_EQ(screen.find("b")->getWidgetFlags(), WF_ACTIVE);
    EXPECT_EQ(svc.log.count(), 0);
}

TEST_F(Description, GameWidgetKeysAndFlagsChainToTheBase) {
    uiSubsystem::s_registerWidget("testKnob", &KnobWidget::make);
    testkit::Screen screen(svc, "k = testKnob\n"
                                "{\n"
                                "    visible = true\n"
                                "    knob = 5\n"
                                "    x = 3\n"
                                "    flags = WF_ACTIVE | KNOB_BIG\n" // clears visible silently
                                "    knob\n"
                                "    nope = 1\n"
                                "}\n");
    auto* knob = static_cast<KnobWidget*>(screen.root());
    ASSERT_NE(knob, nullptr);
    EXPECT_EQ(knob->knob, 100);
    EXPECT_EQ(knob->rect.x, 3);
    EXPECT_EQ(knob->getWidgetFlags(), WF_ACTIVE);
    EXPECT_EQ(knob->hides, 0) << "flags clears states without hooks";
    ASSERT_EQ(svc.log.count(), 2);
    EXPECT_TRUE(svc.log.has(2, "...expected: ^C00FF00knob = int^c\f"));
    EXPECT_TRUE(svc.log.has(2, "...[k:8] Unknown parameter: ^C00FF00nope\f"));
}

TEST_F(Description, EachBadLineLogsItsMessageAndLoadingGoesOn) {
    testkit::Screen screen(svc, "garbage line\n"                               // 1
                                "root = uiNonVisualWidget\n"                   // 2
                                "{\n"                                          // 3
                                "    visible = true\n"                         // 4
                                "    visible = yes\n"                          // 5
                                "    depth 5\n"                                // 6
                                "    flags WF_VISIBLE\n"                       // 7
                                "    visible true\n"                           // 8
                                "    active true\n"                            // 9
                                "    inputfocus true\n"                        // 10
                                "    globalinputfocus root\n"                  // 11
                                "    globalinputfocus =\n"                     // 12
                                "    #scriptlet\n"                             // 13
                                "    flags = WF_VISIBLE WF_ACTIVE\n"           // 14
                                "    colour = 5\n"                             // 15
                                "    flags = WF_ACTIVE|WF_VISIBLE | WF_NOPE\n" // 16
                                "    depth = nosuchdepth\n"                    // 17
                                "    child = uiNonVisualWidget\n"              // 18
                                "    child start = uiNoSuchType\n"             // 19
                                "    {\n"                                      // 20
                                "        x = 7\n"                              // 21
                                "    }\n"                                      // 22
                                "    x = 99\n"                                 // 23
                                "}\n");
    const std::vector<std::pair<int, std::string>> expected = {
        {2, "...expected: \"^C00FF00obj = type^c\"\f"},
        {2, "...Expected: true or false\f"},
        {2, "...expected: \"^C00FF00depth = val^c\"\f"},
        {2, "...expected: \"^C00FF00flags = FLAGS^c\"\f"},
        {2, "...expected: \"^C00FF00visible = BOOLEAN^c\"\f"},
        {2, "...expected: \"^C00FF00active = BOOLEAN^c\"\f"},
        {2, "...expected: \"^C00FF00inputfocus = BOOLEAN^c\"\f"},
        {2, "...expected: \"^C00FF00globalinputfocus = val^c\"\f"},
        {2, "...expected: \"^C00FF00globalinputfocus = val^c\"\f"},
        {2, "...expected: \"^C00FF00#scriptlet file^c\"\f"},
        {2, "Invalid syntax: expected \"|\"\f"},
        {2, "...[root:15] Unknown parameter: ^C00FF00colour\f"},
        {2, "Unknown flag: WF_ACTIVE|WF_VISIBLE\f"},
        {2, "Unknown flag: WF_NOPE\f"},
        {1, "Unknown depth value: nosuchdepth\f"},
        {2, "...expected: \"^C00FF00obj = type^c\"\f"},
        {2, "...failed to create child for: root\f"},
        {2, "...attempt to instance an invalid ui type: \"uiNoSuchType\"\f"},
        {2, "...failed to alloc widget: start of type uiNoSuchType\f"},
        {2, "...failed to create child for: root\f"},
    };
    std::vector<std::pair<int, std::string>> logged;
    for (const auto& entry : svc.log.entries())
        logged.emplace_back(entry.severity, entry.text);
    EXPECT_EQ(logged, expected);

    ASSERT_TRUE(screen);
    // The failed child's lines went to the root and its "}" closed the root's block.
    EXPECT_EQ(screen->rect.x, 7);
    EXPECT_EQ(screen->getWidgetFlags(), 0u) << "the last flags line named no known flag";
    EXPECT_EQ(screen->getDepth(), 96u);
    EXPECT_EQ(screen->getChildren(), nullptr);
}

TEST_F(Description, FileProblemsAreReportedWithTheFileName) {
    EXPECT_EQ(ui.loadUI("missing.txt"), nullptr);
    EXPECT_TRUE(svc.log.has(2, "uiSubsystem: could not open file: \"^C00FF00missing.txt^c\"\f"));

    svc.files.add("a.txt", "a = uiNonVisualWidget\n{\n}\n");
    svc.files.failRead("a.txt");
    EXPECT_EQ(ui.loadUI("a.txt"), nullptr);
    EXPECT_TRUE(svc.log.has(2, "uiSubsystem: File I/O Error: \"^C00FF00a.txt^c\"\f"));

    svc.files.add("empty.txt", "");
    EXPECT_EQ(ui.loadUI("empty.txt"), nullptr);

    // Sixteen MiB are still read; one byte more is refused before any memory is taken.
    std::string big = "a = uiNonVisualWidget\n{\n}\n";
    big.resize(16u * 1024u * 1024u, ' '); // nothing after the root's "}" is parsed
    svc.files.add("limit.txt", big);
    big += " ";
    svc.files.add("big.txt", big);
    svc.log.clear();
    {
        testkit::Screen limit("limit.txt");
        EXPECT_TRUE(limit);
    }
    EXPECT_EQ(svc.log.count(), 0);
    const long long allocations = svc.memory.allocations();
    EXPECT_EQ(ui.loadUI("big.txt"), nullptr);
    EXPECT_TRUE(svc.log.has(
        2, "uiSubsystem: file too large: \"^C00FF00big.txt^c\" (16777217 bytes, limit 16777216)\f"));
    EXPECT_EQ(svc.memory.allocations(), allocations);
    EXPECT_EQ(svc.files.openHandles(), 0);
}

TEST_F(Description, HeadersBlocksAndIncludes) {
    svc.files.add("other.txt", "other = uiNonVisualWidget\n{\n x = 4\n}\n");
    svc.files.add("inner.txt", "inner = uiInputHandler\n{\n    child #other.txt\n    width = 3\n}\n");
    svc.files.add("noblock.txt", "a = uiNonVisualWidget\n  x = 5\n}\nx = 6\n");
    {
        // A file whose only line names another file is that file's root.
        testkit::Screen screen(svc, "#other.txt\n");
        ASSERT_TRUE(screen);
        EXPECT_STREQ(screen->name, "other");
        EXPECT_EQ(screen->rect.x, 4);
    }
    {
        testkit::Screen screen(svc, "outer = uiNonVisualWidget\n{\n    child #inner.txt\n}\n");
        ASSERT_TRUE(screen);
        EXPECT_EQ(childNames(screen.root()), "inner ");
        uiWidget* other = screen->getWidget("outer.inner.other", 0, true);
        ASSERT_NE(other, nullptr);
        EXPECT_EQ(other->rect.x, 4);
        EXPECT_EQ(screen.find("inner")->rect.x2, 3);
    }
    {
        // Without a "{" line the block's lines are skipped up to the closing "}".
        testkit::Screen screen("noblock.txt");
        ASSERT_TRUE(screen);
        EXPECT_EQ(screen->rect.x, 0);
    }
    // The parent becomes the root's parent pointer; attaching is the caller's business.
    uiWidget* parent = uiWidget::allocWidget("p", "uiNonVisualWidget");
    svc.files.add("child.txt", "c = uiNonVisualWidget\n{\n    depth = #parent\n}\n");
    parent->setDepth(9u);
    uiWidget* child = uiWidget::loadUI("child.txt", parent);
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(child->getParent(), parent);
    EXPECT_EQ(child->getDepth(), 9u);
    EXPECT_EQ(parent->getChildren(), nullptr);
    delete child;
    delete parent;
    EXPECT_EQ(svc.log.count(), 0);
}

TEST_F(Description, ForceTerminateDiscardsThePartialTree) {
    addExample(svc);
    const long long before = svc.memory.outstandingBlocks();
    uiWidget::registerProgCb(
        [](uiWidget* w, void*, e_uiProgressEvent event) {
            if (w && event == UIPROG_CREATED && std::string(w->name) == "panel") g_ui->forceTerminate();
        },
        nullptr);
    EXPECT_EQ(ui.loadUI("mainmenu.txt"), nullptr);
    uiWidget::registerProgCb(nullptr, nullptr);
    EXPECT_EQ(svc.memory.outstandingBlocks(), before);
    EXPECT_EQ(svc.files.opens("options.txt"), 0) << "nothing after the terminated line is read";

    ui.initialize(nullptr); // clears the request
    testkit::Screen screen("mainmenu.txt");
    expectExampleTree(screen.root());
}

TEST_F(Description, IncludeCyclesAreSkippedWithTheirPlace) {
    svc.files.add("self.txt", "self = uiNonVisualWidget\n{\n    child #SELF.txt\n}\n");
    svc.files.add("a.txt", "a = uiNonVisualWidget\n{\n    child #b.txt\n}\n");
    svc.files.add("b.txt", "b = uiNonVisualWidget\n{\n    x = 1\n    child #a.txt\n}\n");
    svc.files.add("loop.txt", "#loop.txt\nloop = uiNonVisualWidget\n{\n}\n");
    {
        testkit::Screen screen("self.txt");
        ASSERT_TRUE(screen);
        EXPECT_EQ(screen->getChildren(), nullptr);
        EXPECT_TRUE(svc.log.has(
            2, "...[self.txt:3] include cycle: ^C00FF00SELF.txt^c is already being read; skipped\f"));
        EXPECT_TRUE(svc.log.has(2, "...failed to create child for: self\f"));
    }
    {
        testkit::Screen screen("a.txt");
        ASSERT_TRUE(screen);
        uiWidget* b = screen.find("b");
        ASSERT_NE(b, nullptr);
        EXPECT_EQ(b->getChildren(), nullptr);
        EXPECT_TRUE(
            svc.log.has(2, "...[b.txt:4] include cycle: ^C00FF00a.txt^c is already being read; skipped\f"));
        EXPECT_EQ(svc.files.opens("a.txt"), 1);
    }
    {
        // A root header naming its own file: the next header of the file is used instead.
        testkit::Screen screen("loop.txt");
        ASSERT_TRUE(screen);
        EXPECT_STREQ(screen->name, "loop");
        EXPECT_TRUE(svc.log.has(
            2, "...[loop.txt:1] include cycle: ^C00FF00loop.txt^c is already being read; skipped\f"));
    }
    // The same file included twice side by side is no cycle.
    svc.log.clear();
    svc.files.add("other.txt", "o = uiNonVisualWidget\n{\n}\n");
    testkit::Screen twice(svc, "t = uiNonVisualWidget\n{\n child #other.txt\n child #other.txt\n}\n");
    EXPECT_EQ(childNames(twice.root()), "o o ");
    EXPECT_EQ(svc.log.count(), 0);
}

TEST_F(Description, NestingDeeperThan256LevelsIsRefused) {
    // 300 objects, each the only child of the one before: w0 { child w1 { child w2 ...
    std::string deep = "w0 = uiNonVisualWidget\n{\n";
    for (int i = 1; i < 300; ++i)
        deep += "child w" + std::to_string(i) + " = uiNonVisualWidget\n{\n";
    for (int i = 0; i < 300; ++i)
        deep += "}\n";
    testkit::Screen screen(svc, deep, "deep.txt");
    ASSERT_TRUE(screen);
    int levels = 0;
    for (const uiWidget* w = screen.root(); w; w = w->getChildren() ? w->getChildren()->widget : nullptr)
        ++levels;
    // The file is one level and every object one more: w0 to w254 fit in 256.
    EXPECT_EQ(levels, 255);
    EXPECT_TRUE(svc.log.has(2, "...[deep.txt:511] nesting deeper than 256 levels: ^C00FF00w255^c skipped\f"));
    EXPECT_TRUE(svc.log.has(2, "...failed to create child for: w254\f"));

    // A chain of includes counts as well: each file and its root object are two levels.
    for (int i = 0; i < 200; ++i)
        svc.files.add(("f" + std::to_string(i) + ".txt").c_str(),
                      "f = uiNonVisualWidget\n{\n    child #f" + std::to_string(i + 1) + ".txt\n}\n");
    svc.log.clear();
    testkit::Screen chain("f0.txt");
    ASSERT_TRUE(chain);
    EXPECT_TRUE(
        svc.log.has(2, "...[f127.txt:3] nesting deeper than 256 levels: ^C00FF00f128.txt^c skipped\f"));
    EXPECT_EQ(svc.files.opens("f128.txt"), 0);
}

TEST_F(Description, TabentryJoinsTheTabOrderOfEveryDialogAbove) {
    testkit::Screen screen(svc, "dlg = uiDialog\n"
                                "{\n"
                                "    child panel = uiNonVisualWidget\n"
                                "    {\n"
                                "        child a = uiInputHandler\n"
                                "        {\n"
                                "            tabentry\n"
                                "        }\n"
                                "        child b = uiInputHandler\n"
                                "        {\n"
                                "            TABENTRY\n"
                                "        }\n"
                                "        child c = uiInputHandler\n"
                                "        {\n"
                                "        }\n"
                                "    }\n"
                                "}\n");
    auto* dialog = static_cast<uiDialog*>(screen.root());
    ASSERT_NE(dialog, nullptr);
    dialog->idle();
    dialog->resetTabFocus();
    std::string order;
    for (int i = 0; i < 3; ++i) {
        for (const char* name : {"a", "b", "c"})
            if (screen.find((std::string("panel.") + name).c_str())->getInputFocus()) order += name;
        dialog->inputEvent(UIE_KEY_DOWN, 0, 0, 9, false, false);
    }
    EXPECT_EQ(order, "acbcac") << "c keeps its focus and is not in the tab order";

    // Without a dialog above it the key does nothing.
    testkit::Screen plain(svc, "p = uiNonVisualWidget\n{\n    tabentry\n}\n", "plain.txt");
    EXPECT_TRUE(plain);
    EXPECT_EQ(svc.log.count(), 0);
}
