// gameui benchmarks: load, frames, input, look-up and hit tests over the standard scenes.
// Names read "gameui/<operation>/<shape>/<kind>/<count>"; the report divides by the `widgets` or
// `events` counter of each run.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include "gameui.h"
#include "gameui_desc.h"
#include "gameui_env.h"

namespace {

using namespace bench;

GameuiEnv* env;
std::string dataDir = ".";

std::string sceneFile(const Scene& s) {
    std::string file = dataDir + "/" + s.fileName("gameui", ".txt");
    writeFile(file, gameuiDescription(s));
    return file;
}

void load(benchmark::State& state, Scene s) {
    const std::string file = sceneFile(s);
    const std::string text = gameuiDescription(s);
    for (auto _ : state) {
        uiWidget* root = env->ui().loadUI(file.c_str());
        if (!root) return state.SkipWithError("the scene did not load");
        state.PauseTiming();
        delete root;
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
    state.counters["widgets"] = s.count;
}

void frame(benchmark::State& state, Scene s, bool halfHidden) {
    uiWidget* root = env->show(sceneFile(s));
    if (!root) return state.SkipWithError("the scene did not load");
    if (halfHidden) hideHalf(root);
    for (auto _ : state)
        env->ui().render(16);
    state.counters["widgets"] = s.count;
    env->ui().setTopLevelWidget(nullptr);
    delete root;
}

void input(benchmark::State& state, Scene s, bool clicks, bool throughFocus) {
    uiWidget* root = env->show(sceneFile(s));
    if (!root) return state.SkipWithError("the scene did not load");
    if (throughFocus) env->ui().pushInputFocusWidget(root);
    const auto path = pointerPath(s);
    for (auto _ : state) {
        uiWidget::s_frameNumber += 100; // frames pass between sweeps, so no click falls in a button's guard
        for (const auto& p : path) {
            env->ui().inputEvent(UIE_MOUSE_MOVE, p.first, p.second, 0);
            if (clicks) {
                env->ui().inputEvent(UIE_MOUSE_DOWN, p.first, p.second, 0);
                env->ui().inputEvent(UIE_MOUSE_UP, p.first, p.second, 0);
            }
        }
    }
    state.counters["events"] = static_cast<double>(path.size() * (clicks ? 3 : 1));
    state.counters["widgets"] = s.count;
    if (throughFocus) env->ui().popInputFocusWidget();
    env->ui().setTopLevelWidget(nullptr);
    delete root;
}

// Look-up of the last widget of a nested scene by its full dotted path.
void lookup(benchmark::State& state, Scene s) {
    uiWidget* root = env->show(sceneFile(s));
    if (!root) return state.SkipWithError("the scene did not load");
    const std::vector<Node> nodes = s.nodes();
    const std::string path = gameuiPath(nodes, s.count);
    for (auto _ : state)
        benchmark::DoNotOptimize(root->getWidget(path.c_str(), 0, false));
    state.counters["depth"] = static_cast<double>(ancestry(nodes, s.count).size());
    state.counters["widgets"] = s.count;
    env->ui().setTopLevelWidget(nullptr);
    delete root;
}

// Hit test for a button at the bottom right of a nested scene: the walk visits the subtrees before it.
void trace(benchmark::State& state, Scene s) {
    uiWidget* root = env->show(sceneFile(s));
    if (!root) return state.SkipWithError("the scene did not load");
    for (auto _ : state) {
        _uiTrace_s* hit = env->ui().trace(0, kScreenW - 2, kScreenH - 2, "uiButton");
        benchmark::DoNotOptimize(hit);
        g_MemoryPtr->free(uiWidget::kUIPool, hit);
    }
    state.counters["widgets"] = s.count;
    env->ui().setTopLevelWidget(nullptr);
    delete root;
}

void registerAll() {
    std::vector<Scene> scenes = Scene::standard();
    for (Shape sh : {Shape::Flat, Shape::Nested})
        for (Kind k : {Kind::Container, Kind::Button})
            scenes.push_back({sh, k, 100000});
    for (const Scene& s : scenes) {
        const std::string l = s.label();
        benchmark::RegisterBenchmark(("gameui/load/" + l).c_str(), load, s)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("gameui/frame/" + l).c_str(), frame, s, false);
        benchmark::RegisterBenchmark(("gameui/frame_half_hidden/" + l).c_str(), frame, s, true);
        if (s.count > 10000) continue;
        benchmark::RegisterBenchmark(("gameui/move/" + l).c_str(), input, s, false, false);
        benchmark::RegisterBenchmark(("gameui/click/" + l).c_str(), input, s, true, false);
        benchmark::RegisterBenchmark(("gameui/move_focus/" + l).c_str(), input, s, false, true);
        benchmark::RegisterBenchmark(("gameui/click_focus/" + l).c_str(), input, s, true, true);
        if (s.shape == Shape::Nested) {
            benchmark::RegisterBenchmark(("gameui/getwidget/" + l).c_str(), lookup, s);
            if (s.kind == Kind::Button) benchmark::RegisterBenchmark(("gameui/trace/" + l).c_str(), trace, s);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (const char* d = std::getenv("BENCH_DATA")) dataDir = d;
    benchmark::Initialize(&argc, argv);
    GameuiEnv e;
    env = &e;
    registerAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
