// Every shipped screen survives running out of memory at any point: loaded, driven with input, drawn
// and destroyed with allocation N failing, for every N until a run needs no more than N allocations.
// And once warmed up, its frames and input allocate nothing.
#include <gtest/gtest.h>
#include <filesystem>
#include "folder.h"
#include "screencheck.h"

namespace fs = std::filesystem;

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
        const std::map<std::string, std::string> files = testkit::readFolder(dir.string());
        for (const auto& [name, text] : files) {
            // The screens: descriptions at the folder's top level whose first line names an object.
            const std::string ext = fs::path(name).extension().string();
            if (name.find('/') != std::string::npos || (ext != ".txt" && ext != ".ui") ||
                text.find(" = ") > text.find('\n'))
                continue;
            SCOPED_TRACE((dir / name).string());
            const testkit::ScreenCheck check = testkit::checkScreen(files, name);
            EXPECT_EQ(check.problems, "");
            ++screens;
            drawn += check.drew;
        }
    }
    EXPECT_GE(screens, 3);
    EXPECT_GE(drawn, 3);
}
