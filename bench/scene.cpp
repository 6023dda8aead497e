#include "scene.h"
#include <cstdio>

namespace bench {

std::vector<Node> Scene::nodes() const {
    std::vector<Node> out;
    out.reserve(count + 1);
    out.push_back({-1, 0, 0, kScreenW, kScreenH});
    // Flat: a grid of equal cells that fills the screen. Nested: each node split into kFanOut strips
    // along its longer side. Neither overlaps, so a point hits at most one widget per level.
    int cols = 1;
    while (cols * cols * kScreenH < count * kScreenW)
        ++cols;
    const int rows = (count + cols - 1) / cols;
    for (int i = 1; i <= count; ++i) {
        if (shape == Shape::Flat) {
            const int cw = kScreenW / cols, ch = kScreenH / rows;
            out.push_back({0, ((i - 1) % cols) * cw, ((i - 1) / cols) * ch, cw, ch});
        } else {
            const int parent = (i - 1) / kFanOut;
            const int k = (i - 1) % kFanOut;
            const Node p = out[parent];
            if (p.w >= p.h)
                out.push_back({parent, k * (p.w / kFanOut), 0, p.w / kFanOut, p.h});
            else
                out.push_back({parent, 0, k * (p.h / kFanOut), p.w, p.h / kFanOut});
        }
    }
    return out;
}

bool Scene::isButton(int node) const {
    if (kind != Kind::Button || node == 0) return false;
    return shape == Shape::Flat || node * kFanOut + 1 > count; // nested: leaves only
}

std::string Scene::label() const {
    return std::string(shape == Shape::Flat ? "flat" : "nested") + "/" +
           (kind == Kind::Container ? "container" : "button") + "/" + std::to_string(count);
}

std::string Scene::fileName(const char* library, const char* extension) const {
    return std::string(library) + "_" + std::to_string(static_cast<int>(shape)) + "_" +
           std::to_string(static_cast<int>(kind)) + "_" + std::to_string(count) + extension;
}

std::vector<Scene> Scene::standard() {
    std::vector<Scene> out;
    for (int count : {1000, 10000})
        for (Shape s : {Shape::Flat, Shape::Nested})
            for (Kind k : {Kind::Container, Kind::Button})
                out.push_back({s, k, count});
    return out;
}

std::vector<std::pair<int, int>> pointerPath(const Scene&) {
    // A diagonal sweep and back across the screen in 64 steps: enters and leaves many widgets.
    std::vector<std::pair<int, int>> out;
    for (int i = 0; i < 32; ++i)
        out.push_back({5 + i * 24, 5 + i * 18});
    for (int i = 0; i < 32; ++i)
        out.push_back({kScreenW - 10 - i * 24, 7 + i * 18});
    return out;
}

std::vector<std::vector<int>> childLists(const std::vector<Node>& nodes) {
    std::vector<std::vector<int>> children(nodes.size());
    for (size_t i = 1; i < nodes.size(); ++i)
        children[nodes[i].parent].push_back(static_cast<int>(i));
    return children;
}

std::vector<int> ancestry(const std::vector<Node>& nodes, int node) {
    std::vector<int> chain;
    for (int n = node; n >= 0; n = nodes[n].parent)
        chain.insert(chain.begin(), n);
    return chain;
}

void writeFile(const std::string& path, const std::string& text) {
    if (FILE* f = std::fopen(path.c_str(), "wb")) {
        std::fwrite(text.data(), 1, text.size(), f);
        std::fclose(f);
    }
}

} // namespace bench
