// A fixed amount of work on one scene, for instruction counts under callgrind:
//   probe_gameui load|frame|move|click flat|nested container|button COUNT ITERATIONS
// Runs ITERATIONS loads of the scene (each tree deleted again), ITERATIONS frames (render), or ITERATIONS
// sweeps of the benchmarks' pointer path.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include "gameui.h"
#include "gameui_desc.h"
#include "gameui_env.h"

using namespace bench;

int main(int argc, char** argv) {
    if (argc != 6) {
        std::fprintf(stderr,
                     "usage: %s load|frame|move|click flat|nested container|button COUNT ITERATIONS\n",
                     argv[0]);
        return 2;
    }
    const std::string op = argv[1];
    const Scene s{std::strcmp(argv[2], "flat") == 0 ? Shape::Flat : Shape::Nested,
                  std::strcmp(argv[3], "button") == 0 ? Kind::Button : Kind::Container, std::atoi(argv[4])};
    const int iterations = std::atoi(argv[5]);
    const std::string file = "probe_scene.txt";
    writeFile(file, gameuiDescription(s));

    GameuiEnv env;
    uiWidget* root = env.show(file);
    if (!root) {
        std::fprintf(stderr, "the scene did not load\n");
        return 1;
    }
    const auto path = pointerPath(s);
    for (int i = 0; i < iterations; ++i) {
        if (op == "load") {
            delete env.ui().loadUI(file.c_str());
            continue;
        }
        if (op == "frame") {
            env.ui().render(16);
            continue;
        }
        uiWidget::s_frameNumber += 100;
        for (const auto& p : path) {
            env.ui().inputEvent(UIE_MOUSE_MOVE, p.first, p.second, 0);
            if (op == "click") {
                env.ui().inputEvent(UIE_MOUSE_DOWN, p.first, p.second, 0);
                env.ui().inputEvent(UIE_MOUSE_UP, p.first, p.second, 0);
            }
        }
    }
    env.ui().setTopLevelWidget(nullptr);
    delete root;
    return 0;
}
