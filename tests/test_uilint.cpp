// uilint, run as a designer runs it: description files in a folder, the program's report and exit status.
#include <gtest/gtest.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/wait.h>

namespace fs = std::filesystem;

namespace {

class Uilint : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = fs::temp_directory_path() /
                ("uilint-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(m_dir);
        fs::create_directories(m_dir);
    }
    void TearDown() override { fs::remove_all(m_dir); }

    void write(const std::string& name, const std::string& text) {
        fs::create_directories((m_dir / name).parent_path());
        std::ofstream(m_dir / name, std::ios::binary) << text;
    }

    // Runs uilint from the folder with `args`; returns its exit status and keeps its output.
    int run(const std::string& args) {
        const std::string cmd = "cd '" + m_dir.string() + "' && '" GAMEUI_UILINT "' " + args + " 2>&1";
        FILE* p = popen(cmd.c_str(), "r");
        output.clear();
        char buf[512];
        while (size_t n = fread(buf, 1, sizeof buf, p))
            output.append(buf, n);
        int status = pclose(p);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    bool reported(const std::string& text) const { return output.find(text) != std::string::npos; }

    fs::path m_dir;
    std::string output;
};

const char* const kPanelHead = "panel = uiNonVisualWidget\n{\n";

} // namespace

TEST_F(Uilint, ACleanScreenWithIncludesAndScriptletsPasses) {
    write(
        "menu.txt",
        std::string(kPanelHead) +
            "    width = 100\n    child ok = uiButton\n    {\n        sprite = \"ok\"\n    }\n"
            "    child #parts/options.txt\n    #scriptlet common.txt\n    globalinputfocus = panel.ok\n}\n");
    write("parts/options.txt", "options = uiInputHandler\n{\n    x = 4\n}\n");
    write("common.txt", "x = 0\ny = 0\n");
    EXPECT_EQ(run("menu.txt"), 0) << output;
    EXPECT_EQ(output, "");
}

TEST_F(Uilint, ReportsParserErrorsAtTheirFileAndLine) {
    write("menu.txt", std::string(kPanelHead) +                // lines 1-2
                          "    colour = 5\n"                   // 3
                          "    flags = WF_VISIBLE | WF_NOPE\n" // 4
                          "    x = abc\n"                      // 5
                          "    depth 3\n"                      // 6
                          "    child a = uiNoSuchType\n"       // 7
                          "}\n");
    EXPECT_EQ(run("menu.txt"), 1);
    EXPECT_TRUE(reported("menu.txt:3: error: [panel:3] Unknown parameter: colour\n")) << output;
    EXPECT_TRUE(reported("menu.txt:4: error: Unknown flag: WF_NOPE\n")) << output;
    EXPECT_TRUE(reported("menu.txt:5: error: ")) << output;
    EXPECT_TRUE(reported("menu.txt:6: error: expected: \"depth = val\"\n")) << output;
    EXPECT_TRUE(reported("menu.txt:7: error: failed to alloc widget: a of type uiNoSuchType\n")) << output;
}

TEST_F(Uilint, ReportsUnclosedBlocksAndComments) {
    write("menu.txt", std::string(kPanelHead) + "    x = 1\n    /*\n    y = 2\n");
    EXPECT_EQ(run("menu.txt"), 1);
    EXPECT_TRUE(reported("menu.txt:4: error: [menu.txt:4] comment never closed: */ missing\n")) << output;
    EXPECT_TRUE(reported("error: [menu.txt:2] block of panel never closed: } missing\n")) << output;
}

TEST_F(Uilint, ReportsIncludesAndScriptletsThatAreMissingOrCyclic) {
    write("sub/menu.txt", std::string(kPanelHead) + "    child #gone.txt\n    #scriptlet nothere.txt\n"
                                                    "    child #loop.txt\n}\n");
    write("sub/loop.txt", "loop = uiNonVisualWidget\n{\n    child #loop.txt\n}\n");
    EXPECT_EQ(run("sub/menu.txt"), 1);
    EXPECT_TRUE(reported("sub/menu.txt:3: error: uiSubsystem: could not open file: \"gone.txt\"\n"))
        << output;
    EXPECT_TRUE(reported("sub/menu.txt:4: error: ")) << output;
    EXPECT_TRUE(reported("nothere.txt")) << output;
    EXPECT_TRUE(reported(
        "sub/loop.txt:3: error: [loop.txt:3] include cycle: loop.txt is already being read; skipped\n"))
        << output;
}

TEST_F(Uilint, ReportsUnresolvedFocusPathsAgainstTheFile) {
    write("menu.txt", std::string(kPanelHead) + "    globalinputfocus = panel.nobody\n}\n");
    EXPECT_EQ(run("menu.txt"), 1);
    EXPECT_TRUE(reported("menu.txt: error: addGlobalInputFocusWidget(): unknown widget: panel.nobody\n"))
        << output;
}

TEST_F(Uilint, ChecksAssetsOnlyWhenAskedAndPrintsJson) {
    write("menu.txt", std::string(kPanelHead) +                                                 // lines 1-2
                          "    child ok = uiButton\n    {\n"                                    // 3-4
                          "        sprite = \"buttons/ok\"\n        flags = WF_ACTIVE\n    }\n" // 5-7
                          "    child no = uiButton\n    {\n"                                    // 8-9
                          "        sprite = \"missing\"\n        flags = WF_ACTIVE\n    }\n"    // 10-12
                          "    child off = uiSprite\n    {\n        sprite = \"asleep\"\n    }\n}\n");
    write("assets/buttons/ok.png", "png");
    EXPECT_EQ(run("menu.txt"), 0) << output;
    EXPECT_EQ(run("--assets assets menu.txt"), 1);
    // An active widget asks at its flags line; one the file leaves inactive is checked after loading.
    EXPECT_EQ(output, "menu.txt:11: error: sprite not found in the asset folder: missing\n"
                      "menu.txt: error: sprite not found in the asset folder: asleep\n");
    EXPECT_EQ(run("--format json --assets assets menu.txt"), 1);
    EXPECT_EQ(
        output,
        "[\n  {\"file\": \"menu.txt\", \"line\": 11, \"severity\": \"error\", \"message\": \"sprite not "
        "found in the asset folder: missing\"},\n  {\"file\": \"menu.txt\", \"line\": 0, \"severity\": "
        "\"error\", \"message\": \"sprite not found in the asset folder: asleep\"}\n]\n");
    EXPECT_EQ(run("--format yaml menu.txt"), 2);
}
