// uilint, run as a designer runs it: description files in a folder, the program's report and exit status.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <cstdio>
#include "tempdir.h"

namespace {

class Uilint : public ::testing::Test {
protected:
    // Runs uilint from the folder with `args`; returns its exit status and keeps its output.
    int run(const std::string& args) {
        const std::string cmd = "cd '" + dir.path().string() + "' && '" GAMEUI_UILINT "' " + args + " 2>&1";
        FILE* p = popen(cmd.c_str(), "r");
        output.clear();
        char buf[512];
        while (size_t n = fread(buf, 1, sizeof buf, p))
            output.append(buf, n);
        int status = pclose(p);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    testkit::TempDir dir;
    std::string output;
};

const char* const kPanelHead = "panel = uiNonVisualWidget\n{\n";

} // namespace

TEST_F(Uilint, ACleanScreenWithIncludesAndScriptletsPassesAndAssetsAreCheckedOnlyWhenAsked) {
    dir.write("menu.txt",
              std::string(kPanelHead) +                                                      // 1-2
                  "    child ok = uiButton\n    {\n"                                         // 3-4
                  "        sprite = \"buttons/ok\"\n        flags = WF_ACTIVE\n    }\n"      // 5-7
                  "    child no = uiButton\n    {\n"                                         // 8-9
                  "        sprite = \"missing\"\n        flags = WF_ACTIVE\n"                // 10-11
                  "        clicksound = \"clack\"\n        highlightsound = \"ding\"\n"      // 12-13
                  "        particlesystem = \"sparks.psi\"\n    }\n"                         // 14-15
                  "    child off = uiSprite\n    {\n        sprite = \"asleep\"\n    }\n"    // 16-19
                  "    child label = uiTextWidget\n    {\n        font = \"serif\"\n    }\n" // 20-23
                  "    child #parts/options.txt\n    #scriptlet common.txt\n"
                  "    globalinputfocus = panel.ok\n}\n/*\n  comments after the object are fine\n*/\n");
    dir.write("parts/options.txt", "options = uiInputHandler\n{\n    x = 4\n}\n");
    // A scriptlet has no root object: lines after a child's block are its own.
    dir.write("common.txt", "x = 0\nchild tip = uiInputHandler\n{\n}\ny = 0\n");
    dir.write("assets/buttons/ok.png", "png");
    dir.write("assets/ding.wav", "wav");
    EXPECT_EQ(run("menu.txt"), 0) << output;
    EXPECT_EQ(output, "");
    EXPECT_EQ(run("--assets assets menu.txt"), 1);
    // A sprite is placed at the key that named it, whether its widget asked for it while the file was
    // read (at its flags line) or after loading.
    EXPECT_EQ(output, "menu.txt:10: error: sprite not found in the asset folder: missing\n"
                      "menu.txt:12: error: sound not found in the asset folder: clack\n"
                      "menu.txt:14: error: particle file not found in the asset folder: sparks.psi\n"
                      "menu.txt:22: error: font not found in the asset folder: serif\n"
                      "menu.txt:18: error: sprite not found in the asset folder: asleep\n");
    dir.write("assets/sparks.psi", "psi");
    dir.write("assets/serif.ttf", "ttf");
    dir.write("assets/clack.ogg", "ogg");
    EXPECT_EQ(run("--format json --assets assets menu.txt"), 1);
    EXPECT_EQ(output, "[{\"file\":\"menu.txt\",\"line\":10,\"severity\":\"error\",\"message\":\"sprite not "
                      "found in the asset folder: missing\"},{\"file\":\"menu.txt\",\"line\":18,\"severity\":"
                      "\"error\",\"message\":\"sprite not found in the asset folder: asleep\"}]\n");
    EXPECT_EQ(run("--format yaml menu.txt"), 2);
}

TEST_F(Uilint, ReportsUnknownNamesMalformedValuesAndUnresolvedPathsAtTheirLines) {
    dir.write("menu.txt", "menu = uiAnimDialog\n{\n"                 // 1-2
                          "    colour = 5\n"                         // 3: key
                          "    child a = uiNoSuchType\n"             // 4: type
                          "    depth = deep\n"                       // 5: depth name
                          "    SubAnimCount = 1\n"                   // 6
                          "    child ok = uiButton\n    {\n"         // 7-8
                          "        globalinputfocus = menu.nobody\n" // 9: resolved after loading
                          "    }\n"                                  // 10
                          "    SubAnimIn 0 widget = menu.gone\n"     // 11
                          "    tabentry = menu.ghost\n"              // 12
                          "    #scriptlet focus.txt\n}\n");          // 13
    dir.write("focus.txt", "globalinputfocus = menu.nobody\n");
    // A widget that joins the tab order of the dialogs above it, with none above; lines end as the parser
    // ends them: a lone CR and CR LF count once each.
    dir.write("lone.txt", "lone = uiNonVisualWidget\r\n{\r\r\n    tabentry\r\n    globalinputfocus\n}\r\n");
    EXPECT_EQ(run("menu.txt lone.txt"), 1);
    EXPECT_EQ(output, "menu.txt:3: error: [menu:3] Unknown parameter: colour\n"
                      "menu.txt:4: error: attempt to instance an invalid ui type: \"uiNoSuchType\"\n"
                      "menu.txt:4: error: failed to alloc widget: a of type uiNoSuchType\n"
                      "menu.txt:4: error: failed to create child for: menu\n"
                      "menu.txt:5: warning: Unknown depth value: deep\n"
                      "menu.txt:11: error: uiWidget::getWidget(): Unknown name: menu.gone\n"
                      "menu.txt:11: error: uiAnimDialog[menu]: Failed to map subAnim widget: menu.gone\n"
                      "menu.txt:12: error: uiWidget::getWidget(): Unknown name: menu.ghost\n"
                      "menu.txt:12: error: tabentry: \"menu.ghost does not exist.\n"
                      "menu.txt:9: error: uiWidget::getWidget(): Unknown name: menu.nobody\n"
                      "focus.txt:1: error: uiWidget::getWidget(): Unknown name: menu.nobody\n"
                      "menu.txt:9: error: addGlobalInputFocusWidget(): unknown widget: menu.nobody\n"
                      "focus.txt:1: error: addGlobalInputFocusWidget(): unknown widget: menu.nobody\n"
                      "lone.txt:4: warning: tabentry: no dialog above lone; the key does nothing\n"
                      "lone.txt:5: error: expected: \"globalinputfocus = val\"\n");
}

TEST_F(Uilint, ReportsBracesCommentsIncludesAndScriptletsThatAreMissingOrCyclic) {
    dir.write("open.txt", std::string(kPanelHead) + "    x = 1\n    /*\n    y = 2\n");
    // One "}" too many closes the root early: the rest of the file is never read.
    dir.write("extra.txt", std::string(kPanelHead) +
                               "    child a = uiButton\n    {\n    }\n    }\n"
                               "    /*\n    a comment is not text\n    */\n    x = 3\n}\n");
    // A "{" on the header line is not read: the block never opens and its lines are skipped.
    dir.write("noopen.txt", "panel = uiNonVisualWidget {\n    x = 1\n}\n");
    dir.write("late.txt", std::string("panel = uiNonVisualWidget\n    x = 1\n/*\n*/\n{\n}\n"));
    dir.write("sub/menu.txt", std::string(kPanelHead) + "    child #gone.txt\n    #scriptlet nothere.txt\n"
                                                        "    child #loop.txt\n}\n");
    dir.write("sub/loop.txt", "loop = uiNonVisualWidget\n{\n    child #loop.txt\n}\n");
    EXPECT_EQ(run("open.txt extra.txt noopen.txt late.txt sub/menu.txt"), 1);
    EXPECT_EQ(output,
              "open.txt:4: error: [open.txt:4] comment never closed: */ missing\n"
              "open.txt:2: error: [open.txt:2] block of panel never closed: } missing\n"
              "extra.txt:10: error: text after the closing } of panel is not read\n"
              "noopen.txt:1: error: block of panel never opened: { missing; its lines up to } are ignored\n"
              "late.txt:2: warning: line before the { of panel is ignored\n"
              "sub/menu.txt:3: error: uiSubsystem: could not open file: \"gone.txt\"\n"
              "sub/menu.txt:3: error: failed to create child for: panel\n"
              "sub/menu.txt:4: error: uiSubsystem: could not open file: \"nothere.txt\"\n"
              "sub/loop.txt:3: error: [loop.txt:3] include cycle: loop.txt is already being read; skipped\n"
              "sub/loop.txt:3: error: failed to create child for: loop\n");
}
