// The screens every library in the benchmark loads: the same tree of widgets, written as each library's
// own layout file. Node 0 is the full-screen root container; nodes 1..count are the measured widgets.
#pragma once
#include <string>
#include <vector>

namespace bench {

enum class Shape { Flat, Nested }; // flat: all children of the root; nested: a tree of fan-out 8
enum class Kind { Container, Button };

struct Node {
    int parent;     // -1 for the root
    int x, y, w, h; // relative to the parent
};

struct Scene {
    Shape shape;
    Kind kind;
    int count;

    std::vector<Node> nodes() const; // breadth first, so a parent comes before its children
    // Button scenes: every widget of a flat scene, the leaves of a nested one (panels of buttons).
    bool isButton(int node) const;
    std::string label() const; // "flat/button/1000"
    // The name of this scene's layout file for a library: "<library>_<shape>_<kind>_<count><extension>".
    std::string fileName(const char* library, const char* extension) const;
    static std::vector<Scene> standard(); // the scenes every library runs
};

constexpr int kFanOut = 8;
constexpr int kScreenW = 800;
constexpr int kScreenH = 600;

// Positions inside the scene where the pointer lands during input benchmarks: on widgets and between.
std::vector<std::pair<int, int>> pointerPath(const Scene& scene);

// The children of every node, by index, in the order of `nodes`.
std::vector<std::vector<int>> childLists(const std::vector<Node>& nodes);

// The chain of node indices from the root to `node`, root first.
std::vector<int> ancestry(const std::vector<Node>& nodes, int node);

void writeFile(const std::string& path, const std::string& text);

} // namespace bench
