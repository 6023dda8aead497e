#include "prefsfile.h"
#include <cstdlib>
#include <fstream>

PrefsRead readPrefs(const std::string& path, PrefsMap& out) {
    out.clear();
    std::ifstream in(path);
    if (!in) return PrefsRead::Missing;
    for (std::string line; std::getline(in, line);) {
        if (line.empty()) continue;
        const size_t eq = line.find(" = ");
        if (eq == std::string::npos || eq == 0) return PrefsRead::Damaged;
        out[line.substr(0, eq)] = line.substr(eq + 3);
    }
    return PrefsRead::Ok;
}

bool writePrefs(const std::string& path, const PrefsMap& values) {
    std::ofstream out(path, std::ios::trunc);
    for (const auto& kv : values)
        out << kv.first << " = " << kv.second << "\n";
    return static_cast<bool>(out);
}

int prefsInt(const PrefsMap& values, const std::string& key, int lo, int hi, int fallback) {
    const auto it = values.find(key);
    if (it == values.end() || it->second.empty()) return fallback;
    char* end = nullptr;
    const long v = std::strtol(it->second.c_str(), &end, 10);
    return *end || v < lo || v > hi ? fallback : static_cast<int>(v);
}
