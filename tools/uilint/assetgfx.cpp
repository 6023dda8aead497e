#include "assetgfx.h"
#include <filesystem>

namespace fs = std::filesystem;

namespace uilint {

AssetGfx::AssetGfx(Diagnostics& out, const std::string& assetDir)
    : m_out(out), m_checking(!assetDir.empty()) {
    if (!m_checking) return;
    std::error_code ec;
    for (fs::recursive_directory_iterator it(assetDir, ec), end; !ec && it != end; it.increment(ec)) {
        if (!it->is_regular_file()) continue;
        fs::path rel = fs::relative(it->path(), assetDir);
        m_assets.insert(rel.generic_string());
        m_assets.insert(rel.replace_extension().generic_string());
    }
}

void AssetGfx::check(const char* what, const char* name) {
    if (m_checking && name && !m_assets.count(name))
        m_out.add(2, std::string(what) + " not found in the asset folder: " + name);
}

int AssetGfx::createSprite(const char* name) {
    check("sprite", name);
    return RecordingGfx::createSprite(name);
}

int AssetGfx::createFont(const char* name) {
    check("font", name);
    return RecordingGfx::createFont(name);
}

int AssetGfx::createParticleSystemInstance(const char* owner, const char* file) {
    check("particle file", file);
    return RecordingGfx::createParticleSystemInstance(owner, file);
}

} // namespace uilint
