// A graphics service for uilint: answers like the test kit's recording service and, given an asset
// folder, reports every sprite, font and particle file a description asks for that the folder lacks.
// An asset matches a file named exactly like it or like it plus an extension, in the folder or below.
#pragma once
#include <set>
#include <string>
#include "diagnostics.h"
#include "recordinggfx.h"

namespace uilint {

class AssetGfx : public testkit::RecordingGfx {
public:
    AssetGfx(Diagnostics& out, const std::string& assetDir); // an empty folder checks nothing

    int createSprite(const char* name) override;
    int createFont(const char* name) override;
    int createParticleSystemInstance(const char* owner, const char* file) override;

private:
    void check(const char* what, const char* name);

    Diagnostics& m_out;
    bool m_checking;
    std::set<std::string> m_assets; // relative paths, with and without their extension
};

} // namespace uilint
