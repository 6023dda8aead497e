// Every shipped screen survives running out of memory at any point: loaded, driven with input, drawn
// and destroyed with allocation N failing, for every N until a run needs no more than N allocations.
// And once warmed up, its frames and input allocate nothing.
#include <gtest/gtest.h>
#include <filesystem>
#include <map>
#include <set>
#include "exercise.h"
#include "folder.h"
#include "testkit.h"

namespace fs = std::filesystem;

namespace {

struct Outcome {
    bool failed;
    long long allocations, outstanding;
    int errors;
    std::string report;
};

// One life of `screen` among `files` (name relative to their folder, contents) with allocation `failAt`
// failing (-1: none).
Outcome runScreen(const std::map<std::string, std::string>& files, const std::string& screen,
                  long long failAt) {
    testkit::Services svc;
    for (const auto& [name, text] : files)
        svc.files.add(name, text);
    svc.memory.failAt(failAt);
    testkit::playScreen(screen.c_str());
    int errors = 0;
    for (const auto& e : svc.log.entries())
        errors += e.severity == 2;
    return {svc.memory.failed(), svc.memory.allocations(), svc.memory.outstandingBlocks(), errors,
            svc.memory.report() + svc.log.dump()};
}

// Allocations of a second pass of frames with a drag at every point of a grid over the screen, and keys,
// after a first pass has brought sprites, focus entries and queues to their steady size. Counts the
// screen in `drawn` when its frames drew sprites (dialogs wait hidden until the game shows them).
long long steadyAllocations(const std::map<std::string, std::string>& files, const std::string& screen,
                            int& drawn) {
    testkit::Services svc;
    for (const auto& [name, text] : files)
        svc.files.add(name, text);
    uiSubsystem ui;
    uiWidget* root = ui.loadUI(screen.c_str());
    ui.setTopLevelWidget(root);
    auto pass = [&ui] {
        for (int y = 5; y < 600; y += 30)
            for (int x = 5; x < 800; x += 30) {
                ui.inputEvent(UIE_MOUSE_MOVE, x, y, 0);
                ui.inputEvent(UIE_MOUSE_DOWN, x, y, 0);
                ui.inputEvent(UIE_MOUSE_MOVE, x + 20, y + 5, 0);
                ui.inputEvent(UIE_MOUSE_UP, x + 20, y + 5, 0);
                ui.render(16);
            }
        testkit::exercise(ui);
    };
    pass();
    svc.memory.reset();
    svc.gfx.clear();
    pass();
    const long long allocated = svc.memory.allocations();
    drawn += svc.gfx.count("blt") > 0;
    ui.setTopLevelWidget(nullptr);
    delete root;
    ui.shutdown();
    uiWidget::s_freeScripletCache();
    return allocated;
}

} // namespace

TEST(AllocationSweep, EveryScreenFailsCleanlyAtEveryAllocationAndAllocatesNothingOnceWarm) {
    std::vector<fs::path> dirs{GAMEUI_TEST_DATA};
    const fs::path examples = fs::path(GAMEUI_TEST_DATA) / ".." / ".." / "examples";
    if (fs::is_directory(examples)) {
        dirs.push_back(examples);
        for (const auto& entry : fs::directory_iterator(examples))
            if (entry.is_directory()) dirs.push_back(entry.path());
    }
    int screens = 0, drawn = 0;
    for (const fs::path& dir : dirs) {
        // Its screens are the descriptions at its top level whose first line names an object.
        const std::map<std::string, std::string> files = testkit::readFolder(dir.string());
        std::set<std::string> screenNames;
        for (const auto& [name, text] : files) {
            const std::string ext = fs::path(name).extension().string();
            if (name.find('/') == std::string::npos && (ext == ".txt" || ext == ".ui") &&
                text.find(" = ") < text.find('\n'))
                screenNames.insert(name);
        }
        for (const std::string& screen : screenNames) {
            SCOPED_TRACE((dir / screen).string());
            ++screens;
            const Outcome clean = runScreen(files, screen, -1);
            // No errors without failures, so that every error of a failing run comes from the failure.
            ASSERT_EQ(clean.outstanding + clean.errors, 0) << clean.report;
            long long n = 0;
            for (Outcome run = runScreen(files, screen, n); run.failed; run = runScreen(files, screen, ++n)) {
                ASSERT_EQ(run.outstanding, 0) << "allocation " << n << " failing leaks:\n" << run.report;
                ASSERT_GE(run.errors, 1) << "allocation " << n << " failed without an error logged";
            }
            EXPECT_EQ(n, clean.allocations); // every allocation of the screen's life failed once
            EXPECT_EQ(steadyAllocations(files, screen, drawn), 0);
        }
    }
    EXPECT_GE(screens, 3);
    EXPECT_GE(drawn, 3);
}
