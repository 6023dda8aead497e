// gameui benchmarks: load, frames, input, look-up and hit tests over the standard scenes.
// Names read "gameui/<operation>/<shape>/<kind>/<count>"; the report divides by the `widgets` or
// `events` counter of each run.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include "gameui.h"
#include "gameui_desc.h"
#include "gameui_env.h"
#include "gameui_ops.h"

namespace {

using namespace bench;

GameuiEnv* env;
std::string dataDir = ".";

void load(benchmark::State& state, Scene s) {
    const std::string file = writeGameuiScene(dataDir, s);
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

// Frames and input: the steps the browser's timing harness repeats too.
void measured(benchmark::State& state, Scene s, Op op) {
    SceneRun run(*env, dataDir, s, op);
    if (!run.loaded()) return state.SkipWithError("the scene did not load");
    for (auto _ : state)
        run.step();
    if (isInput(op)) state.counters["events"] = run.events();
    state.counters["widgets"] = s.count;
}

// Look-up of the last widget of a nested scene by its full dotted path.
void lookup(benchmark::State& state, Scene s) {
    uiWidget* root = env->show(writeGameuiScene(dataDir, s));
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
    uiWidget* root = env->show(writeGameuiScene(dataDir, s));
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
        for (Op op : kOps)
            if (!isInput(op) || s.count <= 10000)
                benchmark::RegisterBenchmark(("gameui/" + std::string(opName(op)) + "/" + l).c_str(),
                                             measured, s, op);
        if (s.count > 10000) continue;
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
