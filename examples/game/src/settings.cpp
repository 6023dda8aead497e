#include "settings.h"
#include <string>
#include "logger.h"
#include "prefsfile.h"

const char* const kLanguages[2] = {"text/en.txt", "text/de.txt"};

void Settings::load(const std::string& folder) {
    PrefsMap p;
    const std::string path = folder + "options.txt";
    const PrefsRead read = readPrefs(path, p);
    if (read != PrefsRead::Ok) {
        if (read == PrefsRead::Damaged)
            Logger::log(Logger::kWarning, "game: %s is damaged, default options used\f", path.c_str());
        else
            Logger::log(Logger::kInfo, "game: no options file yet, default options used\f");
        *this = Settings();
        return;
    }
    music = prefsInt(p, "music", 0, 100, music);
    effects = prefsInt(p, "effects", 0, 100, effects);
    fullscreen = prefsInt(p, "fullscreen", 0, 1, 0) != 0;
    difficulty = prefsInt(p, "difficulty", 0, 2, difficulty);
    language = prefsInt(p, "language", 0, 1, language);
    for (int i = 0; i < kLevels; ++i)
        stars[i] = prefsInt(p, "stars" + std::to_string(i + 1), 0, 3, 0);
}

void Settings::save(const std::string& folder) const {
    PrefsMap p{{"music", std::to_string(music)},
               {"effects", std::to_string(effects)},
               {"fullscreen", fullscreen ? "1" : "0"},
               {"difficulty", std::to_string(difficulty)},
               {"language", std::to_string(language)}};
    for (int i = 0; i < kLevels; ++i)
        p["stars" + std::to_string(i + 1)] = std::to_string(stars[i]);
    if (!writePrefs(folder + "options.txt", p))
        Logger::log(Logger::kWarning, "game: cannot save the options in %s\f", folder.c_str());
}
