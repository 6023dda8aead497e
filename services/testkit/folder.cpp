#include "folder.h"
#include <filesystem>
#include <fstream>
#include <sstream>

namespace testkit {

std::map<std::string, std::string> readFolder(const std::string& dir) {
    namespace fs = std::filesystem;
    std::map<std::string, std::string> files;
    std::error_code error;
    for (fs::recursive_directory_iterator it(dir, error), end; !error && it != end; it.increment(error)) {
        if (!it->is_regular_file()) continue;
        std::ostringstream text;
        text << std::ifstream(it->path(), std::ios::binary).rdbuf();
        files[fs::relative(it->path(), dir).generic_string()] = text.str();
    }
    return files;
}

} // namespace testkit
