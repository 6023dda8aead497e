// The benchmarks of a peer library (linked with one *_peer.cpp): the work of bench_gameui.cpp, named
// "<peer>/<operation>/<shape>/<kind>/<count>" so that the report puts them side by side. Scenes of up to
// BENCH_PEER_MAX widgets (1,000): CEGUI needs minutes for a flat screen of 10,000.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include "peer.h"

namespace {

using namespace bench;

Peer* peer;

std::string prepare(const Scene& s, std::string* text = nullptr) {
    const char* dir = std::getenv("BENCH_DATA");
    const std::string file = peer->fileName(s);
    const std::string layout = peer->layout(s);
    writeFile(std::string(dir ? dir : ".") + "/" + file, layout);
    if (text) *text = layout;
    return file;
}

void load(benchmark::State& state, Scene s) {
    std::string text;
    const std::string file = prepare(s, &text);
    for (auto _ : state) {
        peer->load(file);
        state.PauseTiming();
        peer->unload();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
    state.counters["widgets"] = s.count;
}

enum class FrameKind { Idle, HalfHidden, Dirty };

void frame(benchmark::State& state, Scene s, FrameKind kind) {
    peer->load(prepare(s));
    if (kind == FrameKind::HalfHidden) peer->hideHalf();
    peer->frame();
    for (auto _ : state) {
        if (kind == FrameKind::Dirty) peer->invalidateAll();
        peer->frame();
    }
    state.counters["widgets"] = s.count;
    peer->unload();
}

void input(benchmark::State& state, Scene s, bool clicks) {
    peer->load(prepare(s));
    peer->frame();
    const auto path = pointerPath(s);
    for (auto _ : state)
        for (const auto& p : path) {
            peer->move(p.first, p.second);
            if (clicks) {
                peer->down(p.first, p.second);
                peer->up(p.first, p.second);
            }
        }
    state.counters["events"] = static_cast<double>(path.size() * (clicks ? 3 : 1));
    state.counters["widgets"] = s.count;
    peer->unload();
}

void lookup(benchmark::State& state, Scene s) {
    peer->load(prepare(s));
    const std::vector<int> chain = ancestry(s.nodes(), s.count);
    for (auto _ : state)
        if (!peer->lookup(chain)) state.SkipWithError("no look-up by path");
    state.counters["widgets"] = s.count;
    peer->unload();
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::unique_ptr<Peer> p = makePeer();
    peer = p.get();
    const char* dir = std::getenv("BENCH_DATA");
    peer->setDataDir(dir ? dir : ".");
    const std::string n = peer->name();
    const char* max = std::getenv("BENCH_PEER_MAX");
    const int maxCount = max ? std::atoi(max) : 1000;
    for (const Scene& s : Scene::standard()) {
        if (s.count > maxCount) continue;
        const std::string l = s.label();
        benchmark::RegisterBenchmark((n + "/load/" + l).c_str(), load, s)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark((n + "/frame/" + l).c_str(), frame, s, FrameKind::Idle);
        benchmark::RegisterBenchmark((n + "/frame_half_hidden/" + l).c_str(), frame, s,
                                     FrameKind::HalfHidden);
        benchmark::RegisterBenchmark((n + "/frame_dirty/" + l).c_str(), frame, s, FrameKind::Dirty);
        benchmark::RegisterBenchmark((n + "/move/" + l).c_str(), input, s, false);
        benchmark::RegisterBenchmark((n + "/click/" + l).c_str(), input, s, true);
        if (s.shape == Shape::Nested)
            benchmark::RegisterBenchmark((n + "/getwidget/" + l).c_str(), lookup, s);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
