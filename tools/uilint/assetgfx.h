// A graphics service for uilint: answers like the test kit's recording service and reports every
// sprite, font and particle file a description asks for that the asset folder lacks.
#pragma once
#include "assetfolder.h"
#include "diagnostics.h"
#include "recordinggfx.h"

namespace uilint {

class AssetGfx : public testkit::RecordingGfx {
public:
    AssetGfx(devtools::Diagnostics& out, const AssetFolder& assets) : m_out(out), m_assets(assets) {}

    int createSprite(const char* name) override;
    int createFont(const char* name) override;
    int createParticleSystemInstance(const char* owner, const char* file) override;

private:
    devtools::Diagnostics& m_out;
    const AssetFolder& m_assets;
};

// Reports `name` (a sprite, font, sound or particle file, as `what` says) when the folder lacks it.
void checkAsset(devtools::Diagnostics& out, const AssetFolder& assets, const char* what, const char* name);

} // namespace uilint
