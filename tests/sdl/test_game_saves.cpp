// The example game's saved files: read back as written; a missing or damaged file gives the defaults and
// one log line (information when missing, a warning when damaged).
#include <gtest/gtest.h>
#include "highscores.h"
#include "settings.h"
#include "testkit.h"

TEST(GameSaves, ReadBackAsWrittenAndBadFilesGiveDefaults) {
    testkit::LogCapture log;
    Logger::setSink(&log);
    testkit::TempDir tmp;
    const std::string dir = tmp / "";
    HighScores scores;
    EXPECT_EQ(scores.rankOf(450), 1);
    scores.insert("ADA", 450);
    EXPECT_EQ(scores.rankOf(100), -1); // the last row is 200 now
    scores.save(dir);
    HighScores read;
    read.load(dir);
    for (int i = 0; i < HighScores::kRows; ++i)
        EXPECT_TRUE(read.rows[i].name == scores.rows[i].name && read.rows[i].points == scores.rows[i].points)
            << i;
    Settings settings;
    settings.language = 1;
    settings.stars[2] = 3;
    settings.save(dir);
    Settings back;
    back.load(dir);
    EXPECT_TRUE(back.language == 1 && back.stars[2] == 3 && back.unlocked(3) && !back.unlocked(2));
    EXPECT_EQ(log.count(), 0) << log.dump();

    const struct {
        const char* scores; // null: no file
        int severity;
    } bad[] = {{nullptr, 0},
               {"name1 = X\ngarbage\n", 1},
               {"name1 = X\npoints1 = 5\n", 1},
               {"name1 = A\npoints1 = 1\nname2 = B\npoints2 = 9\nname3 = C\npoints3 = 0\nname4 = D\n"
                "points4 = 0\nname5 = E\npoints5 = 0\n",
                1}};
    for (const auto& file : bad) {
        std::filesystem::remove(tmp / "scores.txt");
        if (file.scores) tmp.write("scores.txt", file.scores);
        log.clear();
        HighScores loaded;
        loaded.load(dir);
        EXPECT_TRUE(loaded.rows[0].name == "NOVA" && loaded.rows[0].points == 500) << file.severity;
        ASSERT_EQ(log.count(), 1) << log.dump();
        EXPECT_EQ(log.entries()[0].severity, file.severity);
    }
    tmp.write("options.txt", "music\n");
    back.load(dir);
    EXPECT_TRUE(back.language == 0 && back.stars[2] == 0);
    EXPECT_EQ(log.count(), 2) << log.dump(); // the warning of the options file too
    Logger::setSink(nullptr);
}
