#include "highscores.h"
#include "logger.h"
#include "prefsfile.h"

int HighScores::rankOf(int points) const {
    for (int i = 0; i < kRows; ++i)
        if (points > rows[i].points) return i;
    return -1;
}

void HighScores::insert(const std::string& name, int points) {
    const int rank = rankOf(points);
    if (rank < 0) return;
    for (int i = kRows - 1; i > rank; --i)
        rows[i] = rows[i - 1];
    rows[rank] = Row{name.empty() ? "?" : name, points};
}

void HighScores::load(const std::string& folder) {
    PrefsMap p;
    const std::string path = folder + "scores.txt";
    const PrefsRead result = readPrefs(path, p);
    const bool read = result == PrefsRead::Ok;
    HighScores loaded;
    bool damaged = result == PrefsRead::Damaged;
    for (int i = 0; read && i < kRows; ++i) {
        const std::string key = std::to_string(i + 1);
        const auto name = p.find("name" + key);
        const int points = prefsInt(p, "points" + key, 0, 99999999, -1);
        if (name == p.end() || name->second.empty() || name->second.size() > 12 || points < 0 ||
            (i > 0 && points > loaded.rows[i - 1].points)) {
            damaged = true;
            break;
        }
        loaded.rows[i] = Row{name->second, points};
    }
    if (read && !damaged) {
        *this = loaded;
        return;
    }
    *this = HighScores();
    if (damaged)
        Logger::log(Logger::kWarning, "game: %s is damaged, default high scores used\f", path.c_str());
    else
        Logger::log(Logger::kInfo, "game: no high-score file yet, default high scores used\f");
}

void HighScores::save(const std::string& folder) const {
    PrefsMap p;
    for (int i = 0; i < kRows; ++i) {
        p["name" + std::to_string(i + 1)] = rows[i].name;
        p["points" + std::to_string(i + 1)] = std::to_string(rows[i].points);
    }
    if (!writePrefs(folder + "scores.txt", p))
        Logger::log(Logger::kWarning, "game: cannot save the high scores in %s\f", folder.c_str());
}
