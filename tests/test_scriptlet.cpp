// Scriptlets: shared parameter files applied to widgets, read once through a cache of 32 files.
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include "screen.h"
#include "testkit.h"

namespace {

std::string fileName(int i) {
    return "s" + std::to_string(i) + ".txt";
}

class Scriptlet : public ::testing::Test {
protected:
    ~Scriptlet() override { uiWidget::s_freeScripletCache(); }
    // Widgets to apply scriptlets to, deleted at the end of the test.
    uiWidget* widget(const char* name = "w") {
        widgets.emplace_back(uiWidget::allocWidget(name, "uiNonVisualWidget"));
        return widgets.back().get();
    }
    testkit::Services svc;
    std::vector<std::unique_ptr<uiWidget>> widgets;
};

TEST_F(Scriptlet, AppliesItsLinesWhereItStandsAndReadsTheFileOnce) {
    svc.files.add("common.txt", "/*\nshared\n*/\nx = 10\nvisible = true\n");
    for (int i = 0; i < 100; ++i) {
        uiWidget* w = widget();
        w->addChild(uiWidget::allocWidget("child", "uiNonVisualWidget"), false);
        w->applyScriptlet(i % 2 ? "Common.TXT" : "common.txt"); // names ignore case
        EXPECT_EQ(w->rect.x, 10);
        EXPECT_TRUE(w->getChildren()->widget->getVisible()) << "state keys recurse as in a description";
    }
    EXPECT_EQ(svc.files.opens("common.txt") + svc.files.opens("Common.TXT"), 1);
    // In a description block later lines override the scriptlet, and a "}" line ends it.
    svc.files.add("move.txt", "x = 10\ny = 5\n}\ny = 99\n");
    testkit::Screen screen(svc, "root = uiNonVisualWidget\n{\n    #scriptlet move.txt\n    x = 20\n}\n");
    EXPECT_EQ(screen->rect.x * 100 + screen->rect.y, 2005);
    // Bad lines are reported with the scriptlet's line numbers.
    svc.files.add("bad.txt", "x = 1\ncolour = red\n#scriptlet bad.txt\n{\nvisible = maybe\n");
    uiWidget* panel = widget("panel");
    panel->applyScriptlet("bad.txt");
    EXPECT_EQ(panel->rect.x, 1);
    EXPECT_EQ(svc.log.dump(),
              "2: ...[panel:2] Unknown parameter: ^C00FF00colour\f\n"
              "2: ...[bad.txt:3] include cycle: ^C00FF00bad.txt^c is already being read; skipped\f\n"
              "2: ...Expected: true or false\f\n");
}

TEST_F(Scriptlet, TheLeastRecentlyUsedOfThirtyThreeFilesIsDroppedAndFreeingEmptiesTheCache) {
    for (int i = 0; i <= 32; ++i)
        svc.files.add(fileName(i), "x = " + std::to_string(i) + "\n");
    uiWidget* w = widget();
    for (int i = 0; i < 32; ++i)
        w->applyScriptlet(fileName(i).c_str());
    w->applyScriptlet(fileName(0).c_str()); // now the most recently used: s1 is the oldest
    w->applyScriptlet(fileName(32).c_str());
    w->applyScriptlet(fileName(0).c_str());
    EXPECT_EQ(svc.files.opens(fileName(0)), 1);
    w->applyScriptlet(fileName(1).c_str());
    EXPECT_EQ(w->rect.x, 1);
    std::string opens;
    for (int i = 1; i <= 32; ++i)
        opens += std::to_string(svc.files.opens(fileName(i)));
    EXPECT_EQ(opens, "2" + std::string(31, '1')) << "the dropped file is read again";
    uiWidget::s_freeScripletCache(); // the next application reads again
    w->applyScriptlet(fileName(5).c_str());
    EXPECT_EQ(svc.files.opens(fileName(5)), 2);
    uiWidget::s_freeScripletCache();
    uiWidget::s_freeScripletCache(); // empty: nothing happens
    EXPECT_EQ(svc.memory.outstandingBlocks(0), 0);
}

TEST_F(Scriptlet, FailuresApplyNothingAndAreTriedAgain) {
    uiWidget* w = widget();
    w->applyScriptlet("missing.txt");
    w->applyScriptlet("missing.txt");
    EXPECT_EQ(svc.log.count(2, "uiSubsystem: could not open file: \"^C00FF00missing.txt^c\"\f"), 2)
        << "a missing file is reported at every application";
    svc.files.add("a.txt", "x = 1\n");
    // Not cached yet, the text is allocated first, then the cache entry: neither failure is cached; the
    // widget's copy fails with the file cached; then the copy, then the parser.
    const std::pair<int, bool> failures[] = {{0, false}, {1, false}, {2, true}, {1, true}};
    for (const auto& [failAt, cached] : failures) {
        svc.log.clear();
        svc.memory.failAt(failAt);
        w->applyScriptlet("a.txt");
        svc.memory.failAt(-1);
        EXPECT_EQ(w->rect.x, 0);
        EXPECT_EQ(svc.log.dump(), "2: uiSubsystem: Memory Allocation Error: \"^C00FF00a.txt^c\"\f\n");
        EXPECT_EQ(uiWidget::s_scriptletCacheHead != nullptr, cached) << failAt;
    }
    w->applyScriptlet("a.txt");
    EXPECT_EQ(w->rect.x, 1);
    EXPECT_EQ(svc.files.opens("a.txt"), 3);
}

TEST_F(Scriptlet, ThreadsShareTheCache) {
    for (int i = 0; i < 40; ++i)
        svc.files.add(fileName(i), "x = " + std::to_string(i) + "\n");
    auto apply = [](uiWidget* w, int offset) {
        for (int round = 0; round < 200; ++round) {
            const int i = (round * 7 + offset) % 40;
            w->applyScriptlet(fileName(i).c_str());
            if (w->rect.x != i) ADD_FAILURE() << w->name << " got " << w->rect.x << " for " << i;
        }
    };
    std::thread other(apply, widget("b"), 3);
    apply(widget("a"), 0);
    other.join();
    EXPECT_EQ(svc.log.count(), 0);
}

} // namespace
