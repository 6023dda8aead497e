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
    std::vector<std::vector<int>> children(nodes.size());
    for (size_t i = 1; i < nodes.size(); ++i)
        children[nodes[i].parent].push_back(static_cast<int>(i));

    std::string out;
    out.reserve(nodes.size() * 128);
    std::function<void(int, const std::string&)> write = [&](int n, const std::string& indent) {
        const Node& node = nodes[n];
        const bool button = scene.isButton(n);
        const char* type = button ? "uiButton" : "uiNonVisualWidget";
        out += indent + (n == 0 ? "" : "child ") + gameuiName(n) + " = " + type + "\n" + indent + "{\n";
        const std::string in = indent + "    ";
        out += in + "x = " + std::to_string(node.x) + "\n" + in + "y = " + std::to_string(node.y) + "\n";
        out += in + "width = " + std::to_string(node.w) + "\n" + in + "height = " + std::to_string(node.h) +
               "\n";
        if (button) out += in + "sprite = \"button\"\n" + in + "flags = UIB_HOVER | UIB_PRESSED\n";
        for (int c : children[n])
            write(c, in);
        // State keys last, at the root only: they reach the whole tree at once.
        if (n == 0) out += in + "visible = true\n" + in + "active = true\n" + in + "inputfocus = true\n";
        out += indent + "}\n";
    };
    write(0, "");
    return out;
}

} // namespace bench
