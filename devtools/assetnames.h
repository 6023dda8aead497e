// The sprites and fonts a tree's widgets name, read off the widgets. Sounds are learnt as they play
// (SoundRecorder).
#pragma once
#include <set>
#include <string>
#include <utility>
#include "uidevtools.h"

namespace devtools {

using AssetName = std::pair<uiAssetKind, std::string>;
std::set<AssetName> assetNames(uiWidget* root);

} // namespace devtools
