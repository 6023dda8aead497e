// The player's options and progress, kept in options.txt in the data folder.
#pragma once
#include <string>

struct Settings {
    static constexpr int kLevels = 8;
    int music = 70, effects = 80; // 0..100
    bool fullscreen = false;
    int difficulty = 1;      // 0 easy, 1 normal, 2 hard
    int language = 0;        // index into kLanguages
    int stars[kLevels] = {}; // best result of each level, 0..3

    bool unlocked(int level) const { return level == 0 || stars[level - 1] > 0; }
    // Missing or damaged files leave the defaults, with a log line.
    void load(const std::string& folder);
    void save(const std::string& folder) const;
};

extern const char* const kLanguages[2]; // string table files
