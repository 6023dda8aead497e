// The high-score table, kept in scores.txt in the data folder.
#pragma once
#include <string>

struct HighScores {
    static constexpr int kRows = 5;
    struct Row {
        std::string name;
        int points;
    };
    Row rows[kRows] = {{"NOVA", 500}, {"ORION", 400}, {"VEGA", 300}, {"LYRA", 200}, {"ALTAIR", 100}};

    // The rank (0 = best) a score would take, or -1 when it does not reach the table.
    int rankOf(int points) const;
    void insert(const std::string& name, int points);
    // Missing or damaged files leave the defaults, with a log line.
    void load(const std::string& folder);
    void save(const std::string& folder) const;
};
