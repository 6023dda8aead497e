// Every shipped screen survives running out of memory at any point: loaded, driven with input, drawn
// and destroyed with allocation N failing, for every N until a run needs no more than N allocations.
#include <gtest/gtest.h>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>
#include "exercise.h"
#include "testkit.h"
#include "uisubsystem.h"

namespace fs = std::filesystem;

namespace {

struct Folder {
    std::vector<std::pair<std::string, std::string>> files; // name relative to the folder, contents
    std::vector<std::string> screens;                       // descriptions at the folder's top level
};

Folder readFolder(const fs::path& dir) {
    Folder folder;
    for (const auto& entry : fs::recursive_directory_iterator(dir)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        const std::string name = fs::relative(entry.path(), dir).generic_string();
        folder.files.emplace_back(name, text.str());
        if (entry.path().parent_path() == dir &&
            (entry.path().extension() == ".txt" || entry.path().extension() == ".ui"))
            folder.screens.push_back(name);
    }
    // Files that some description applies as a scriptlet are not screens of their own.
    for (const auto& file : folder.files) {
        for (size_t at = file.second.find("#scriptlet "); at != std::string::npos;
             at = file.second.find("#scriptlet ", at + 1)) {
            std::istringstream words(file.second.substr(at + 11));
            std::string scriptlet;
            words >> scriptlet;
            folder.screens.erase(std::remove(folder.screens.begin(), folder.screens.end(), scriptlet),
                                 folder.screens.end());
        }
    }
    return folder;
}

std::vector<fs::path> screenFolders() {
    std::vector<fs::path> dirs{GAMEUI_TEST_DATA};
    const fs::path examples = fs::path(GAMEUI_TEST_DATA) / ".." / ".." / "examples";
    if (fs::is_directory(examples)) {
        dirs.push_back(examples);
        for (const auto& entry : fs::directory_iterator(examples))
            if (entry.is_directory()) dirs.push_back(entry.path());
    }
    return dirs;
}

struct Outcome {
    bool failed;
    long long allocations;
    long long outstanding;
    std::string report;
    int errors;
    std::string log;
};

// One life of a screen with allocation `failAt` failing (-1: none).
Outcome runScreen(const Folder& folder, const std::string& screen, long long failAt) {
    testkit::Services svc;
    for (const auto& [name, text] : folder.files)
        svc.files.add(name, text);
    svc.memory.failAt(failAt);
    testkit::playScreen(screen.c_str());
    int errors = 0;
    for (const auto& e : svc.log.entries())
        errors += e.severity == 2;
    return {svc.memory.failed(),
            svc.memory.allocations(),
            svc.memory.outstandingBlocks(),
            svc.memory.report(),
            errors,
            svc.log.dump()};
}

} // namespace

TEST(AllocationSweep, EveryScreenFailsCleanlyAtEveryAllocation) {
    int screens = 0;
    for (const fs::path& dir : screenFolders()) {
        const Folder folder = readFolder(dir);
        for (const std::string& screen : folder.screens) {
            SCOPED_TRACE((dir / screen).string());
            ++screens;
            const Outcome clean = runScreen(folder, screen, -1);
            ASSERT_EQ(clean.outstanding, 0) << clean.report;
            ASSERT_EQ(clean.errors, 0) << clean.log; // so every error of a failing run comes from the failure
            long long n = 0;
            for (;; ++n) {
                const Outcome run = runScreen(folder, screen, n);
                if (!run.failed) break;
                ASSERT_EQ(run.outstanding, 0) << "allocation " << n << " failing leaks:\n" << run.report;
                ASSERT_GE(run.errors, 1) << "allocation " << n << " failed without an error logged:\n"
                                         << run.log;
            }
            EXPECT_EQ(n, clean.allocations); // every allocation of the screen's life failed once
        }
    }
    EXPECT_GE(screens, 3);
}
