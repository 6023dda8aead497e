// Scenes written as gameui UI descriptions.
#pragma once
#include <string>
#include "scene.h"

namespace bench {

std::string gameuiDescription(const Scene& scene);
// Writes the scene's description into `dir`; returns the file's path.
std::string writeGameuiScene(const std::string& dir, const Scene& scene);
std::string gameuiName(int node); // "screen" for the root, "w<node>" below
// The dotted path from the root to `node`, as uiWidget::getWidget takes it.
std::string gameuiPath(const std::vector<Node>& nodes, int node);

} // namespace bench
