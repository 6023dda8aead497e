// The asset folder uilint checks names against: every file under it, by its path relative to the folder,
// with and without its extension.
#pragma once
#include <set>
#include <string>

namespace uilint {

class AssetFolder {
public:
    explicit AssetFolder(const std::string& dir); // an empty path: nothing is checked

    bool checking() const { return m_checking; }
    bool has(const std::string& name) const { return m_assets.count(name) != 0; }

private:
    bool m_checking;
    std::set<std::string> m_assets;
};

} // namespace uilint
