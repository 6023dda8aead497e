#include "assetfiles.h"
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace assets {

std::string joinPath(const std::string& dir, const std::string& name) {
    if (dir.empty() || name.empty() || name[0] == '/') return name;
    return dir.back() == '/' ? dir + name : dir + "/" + name;
}

bool fileExists(const std::string& path) {
    std::ifstream in(path);
    return in.good();
}

bool readDescriptor(const std::string& path, std::vector<DescriptorLine>& lines) {
    std::ifstream in(path);
    if (!in) return false;
    std::string text;
    while (std::getline(in, text)) {
        const size_t hash = text.find('#');
        if (hash != std::string::npos) text.resize(hash);
        std::istringstream words(text);
        DescriptorLine line;
        for (std::string word; words >> word;)
            if (word != "=") line.push_back(word);
        if (!line.empty()) lines.push_back(std::move(line));
    }
    return true;
}

float numberAt(const DescriptorLine& line, size_t i, float fallback) {
    if (i + 1 >= line.size()) return fallback;
    char* end = nullptr;
    const float value = std::strtof(line[i + 1].c_str(), &end);
    return end && *end == '\0' ? value : fallback;
}

} // namespace assets
