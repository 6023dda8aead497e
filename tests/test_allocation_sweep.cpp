// Every shipped screen survives running out of memory at any point: loaded, driven with input, drawn
// and destroyed with allocation N failing, for every N until a run needs no more than N allocations.
#include <gtest/gtest.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include "exercise.h"
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

} // namespace

TEST(AllocationSweep, EveryScreenFailsCleanlyAtEveryAllocation) {
    std::vector<fs::path> dirs{GAMEUI_TEST_DATA};
    const fs::path examples = fs::path(GAMEUI_TEST_DATA) / ".." / ".." / "examples";
    if (fs::is_directory(examples)) {
        dirs.push_back(examples);
        for (const auto& entry : fs::directory_iterator(examples))
            if (entry.is_directory()) dirs.push_back(entry.path());
    }
    int screens = 0;
    for (const fs::path& dir : dirs) {
        // The folder's files; descriptions at its top level are screens unless some file applies them as
        // a scriptlet.
        std::map<std::string, std::string> files;
        std::set<std::string> screenNames, scriptlets;
        for (const auto& entry : fs::recursive_directory_iterator(dir)) {
            if (!entry.is_regular_file()) continue;
            std::ostringstream text;
            text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            const std::string name = fs::relative(entry.path(), dir).generic_string();
            files[name] = text.str();
            const std::string ext = entry.path().extension().string();
            if (entry.path().parent_path() == dir && (ext == ".txt" || ext == ".ui"))
                screenNames.insert(name);
            for (size_t at = files[name].find("#scriptlet "); at != std::string::npos;
                 at = files[name].find("#scriptlet ", at + 1)) {
                std::istringstream words(files[name].substr(at + 11));
                std::string scriptlet;
                words >> scriptlet;
                scriptlets.insert(scriptlet);
            }
        }
        for (const std::string& screen : screenNames) {
            if (scriptlets.count(screen)) continue;
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
        }
    }
    EXPECT_GE(screens, 3);
}
