#include "assetfolder.h"
#include <filesystem>

namespace fs = std::filesystem;

namespace uilint {

AssetFolder::AssetFolder(const std::string& dir) : m_checking(!dir.empty()) {
    if (!m_checking) return;
    std::error_code ec;
    for (fs::recursive_directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
        if (!it->is_regular_file()) continue;
        fs::path rel = fs::relative(it->path(), dir);
        m_assets.insert(rel.generic_string());
        m_assets.insert(rel.replace_extension().generic_string());
    }
}

} // namespace uilint
