#include "gameui_desc.h"
#include <functional>

namespace bench {

std::string gameuiName(int node) {
    return node == 0 ? "screen" : "w" + std::to_string(node);
}

std::string gameuiPath(const std::vector<Node>& nodes, int node) {
    std::string path;
    for (int n : ancestry(nodes, node))
        path += (path.empty() ? "" : ".") + gameuiName(n);
    return path;
}

std::string gameuiDescription(const Scene& scene) {
    const std::vector<Node> nodes = scene.nodes();
    const std::vector<std::vector<int>> children = childLists(nodes);

    // Written without indentation, as a tool would generate it: 100,000 buttons then stay within the
    // loader's 16 MiB file limit.
    std::string out;
    out.reserve(nodes.size() * 112);
    std::function<void(int)> write = [&](int n) {
        const Node& node = nodes[n];
        const bool button = scene.isButton(n);
        const char* type = button ? "uiButton" : "uiNonVisualWidget";
        out += (n == 0 ? "" : "child ") + gameuiName(n) + " = " + type + "\n{\n";
        out += "x = " + std::to_string(node.x) + "\ny = " + std::to_string(node.y) + "\n";
        out += "width = " + std::to_string(node.w) + "\nheight = " + std::to_string(node.h) + "\n";
        if (button) out += "sprite = \"button\"\nflags = UIB_HOVER | UIB_PRESSED\n";
        for (int c : children[n])
            write(c);
        // State keys last, at the root only: they reach the whole tree at once.
        if (n == 0) out += "visible = true\nactive = true\ninputfocus = true\n";
        out += "}\n";
    };
    write(0);
    return out;
}

std::string writeGameuiScene(const std::string& dir, const Scene& scene) {
    const std::string file = dir + "/" + scene.fileName("gameui", ".txt");
    writeFile(file, gameuiDescription(scene));
    return file;
}

} // namespace bench
