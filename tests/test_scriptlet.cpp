// Scriptlets: shared parameter files applied to widgets, read once through a cache of 32 files.
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>
#include "screen.h"
#include "testkit.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace {

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

std::string fileName(int i) {
    return "s" + std::to_string(i) + ".txt";
}

} // namespace

TEST_F(Scriptlet, AppliesItsLinesAtOnceAndReadsTheFileOnce) {
    svc.files.add("common.txt", "/*\nshared\n*/\nx = 10\nvisible = true\n");
    std::vector<uiWidget*> group;
    for (int i = 0; i < 100; ++i) {
        uiWidget* w = widget();
        w->addChild(uiWidget::allocWidget("child", "uiNonVisualWidget"), false);
        w->applyScriptlet(i % 2 ? "Common.TXT" : "common.txt"); // names ignore case
        group.push_back(w);
    }
    EXPECT_EQ(svc.files.opens("common.txt") + svc.files.opens("Common.TXT"), 1);
    for (uiWidget* w : group) {
        EXPECT_EQ(w->rect.x, 10);
        EXPECT_TRUE(w->getVisible());
        EXPECT_TRUE(w->getChildren()->widget->getVisible()) << "state keys recurse as in a description";
    }
    EXPECT_EQ(svc.log.count(), 0);
}

TEST_F(Scriptlet, LinesInADescriptionBlockApplyWhereTheScriptletStands) {
    svc.files.add("move.txt", "x = 10\ny = 5\n}\ny = 99\n");
    testkit::Screen screen(svc, "root = uiNonVisualWidget\n{\n    #scriptlet move.txt\n    x = 20\n}\n");
    ASSERT_TRUE(screen);
    EXPECT_EQ(screen->rect.x, 20) << "later lines override the scriptlet";
    EXPECT_EQ(screen->rect.y, 5) << "a \"}\" line ends the scriptlet";
}

TEST_F(Scriptlet, TheLeastRecentlyUsedOfThirtyThreeFilesIsDroppedAndFreeingEmptiesTheCache) {
    for (int i = 0; i <= 32; ++i)
        svc.files.add(fileName(i).c_str(), "x = " + std::to_string(i) + "\n");
    uiWidget* w = widget();
    for (int i = 0; i < 32; ++i)
        w->applyScriptlet(fileName(i).c_str());
    w->applyScriptlet(fileName(0).c_str()); // now the most recently used: s1 is the oldest
    w->applyScriptlet(fileName(32).c_str());
    EXPECT_EQ(w->rect.x, 32);

    w->applyScriptlet(fileName(0).c_str());
    EXPECT_EQ(svc.files.opens(fileName(0).c_str()), 1);
    w->applyScriptlet(fileName(1).c_str());
    EXPECT_EQ(svc.files.opens(fileName(1).c_str()), 2) << "the dropped file is read again";
    EXPECT_EQ(w->rect.x, 1);
    for (int i = 2; i <= 32; ++i)
        EXPECT_EQ(svc.files.opens(fileName(i).c_str()), 1) << i;
    int entries = 0;
    for (const _ScriptletCache_s* e = uiWidget::s_scriptletCacheHead; e; e = e->next)
        ++entries;
    EXPECT_EQ(entries, 32);

    // Freeing the cache makes the next application read again.
    uiWidget::s_freeScripletCache();
    EXPECT_EQ(uiWidget::s_scriptletCacheTail, nullptr);
    w->applyScriptlet(fileName(5).c_str());
    EXPECT_EQ(svc.files.opens(fileName(5).c_str()), 2);
    uiWidget::s_freeScripletCache();
    uiWidget::s_freeScripletCache(); // empty: nothing happens
    EXPECT_EQ(svc.memory.outstandingBlocks(0), 0);
}

TEST_F(Scriptlet, FailuresApplyNothingAndAreTriedAgain) {
    uiWidget* w = widget();
    w->applyScriptlet("missing.txt");
    w->applyScriptlet("missing.txt");
    EXPECT_EQ(svc.log.count(), 2) << "a missing file is reported at every application";
    EXPECT_TRUE(svc.log.has(2, "uiSubsystem: could not open file: \"^C00FF00missing.txt^c\"\f"));

    const char* const outOfMemory = "uiSubsystem: Memory Allocation Error: \"^C00FF00a.txt^c\"\f";
    svc.files.add("a.txt", "x = 1\n");
    auto applyFailing = [&](int n) {
        svc.log.clear();
        svc.memory.failAt(n);
        w->applyScriptlet("a.txt");
        svc.memory.failAt(-1);
        EXPECT_EQ(w->rect.x, 0);
        EXPECT_TRUE(svc.log.has(2, outOfMemory));
    };
    // Not cached yet, the text is allocated first, then the cache entry: neither failure is cached.
    for (int n = 0; n < 2; ++n) {
        applyFailing(n);
        EXPECT_EQ(uiWidget::s_scriptletCacheHead, nullptr);
    }
    applyFailing(2); // the widget's copy: the cache keeps the file
    ASSERT_NE(uiWidget::s_scriptletCacheHead, nullptr);
    applyFailing(1); // cached: the copy, then the parser
    EXPECT_EQ(svc.files.opens("a.txt"), 3) << "cached by the third attempt";
    w->applyScriptlet("a.txt");
    EXPECT_EQ(w->rect.x, 1);
    EXPECT_EQ(svc.files.opens("a.txt"), 3);

    svc.files.add("b.txt", "x = 2\n");
    svc.files.failRead("b.txt");
    w->applyScriptlet("b.txt");
    EXPECT_TRUE(svc.log.has(2, "uiSubsystem: File I/O Error: \"^C00FF00b.txt^c\"\f"));
    EXPECT_EQ(w->rect.x, 1);
    uiWidget::s_freeScripletCache();
    EXPECT_EQ(svc.memory.outstandingBlocks(0), 0);
}

TEST_F(Scriptlet, BadLinesAreReportedWithTheScriptletsLineNumbers) {
    svc.files.add("bad.txt", "x = 1\ncolour = red\n#scriptlet bad.txt\n{\nvisible = maybe\n");
    uiWidget* w = widget("panel");
    w->applyScriptlet("bad.txt");
    EXPECT_TRUE(svc.log.has(2, "...[panel:2] Unknown parameter: ^C00FF00colour\f"));
    EXPECT_TRUE(
        svc.log.has(2, "...[bad.txt:3] include cycle: ^C00FF00bad.txt^c is already being read; skipped\f"));
    EXPECT_TRUE(svc.log.has(2, "...Expected: true or false\f"));
    EXPECT_EQ(svc.log.count(), 3);
    EXPECT_EQ(w->rect.x, 1);
}

TEST_F(Scriptlet, ThreadsShareTheCache) {
    for (int i = 0; i < 40; ++i)
        svc.files.add(fileName(i).c_str(), "x = " + std::to_string(i) + "\n");
    uiWidget* a = widget("a");
    uiWidget* b = widget("b");
    auto apply = [](uiWidget* w, int offset) {
        for (int round = 0; round < 200; ++round) {
            const int i = (round * 7 + offset) % 40;
            w->applyScriptlet(fileName(i).c_str());
            if (w->rect.x != i) ADD_FAILURE() << w->name << " got " << w->rect.x << " for " << i;
        }
    };
    std::thread other(apply, b, 3);
    apply(a, 0);
    other.join();
    EXPECT_EQ(svc.log.count(), 0);
}
