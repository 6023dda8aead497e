#include "assetgfx.h"

namespace uilint {

void checkAsset(devtools::Diagnostics& out, const AssetFolder& assets, const char* what, const char* name) {
    if (assets.checking() && name && !assets.has(name))
        out.addAsset(2, std::string(what) + " not found in the asset folder: " + name);
}

int AssetGfx::createSprite(const char* name) {
    checkAsset(m_out, m_assets, "sprite", name);
    return RecordingGfx::createSprite(name);
}

int AssetGfx::createFont(const char* name) {
    checkAsset(m_out, m_assets, "font", name);
    return RecordingGfx::createFont(name);
}

int AssetGfx::createParticleSystemInstance(const char* owner, const char* file) {
    checkAsset(m_out, m_assets, "particle file", file);
    return RecordingGfx::createParticleSystemInstance(owner, file);
}

} // namespace uilint
