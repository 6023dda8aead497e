// A fixed amount of work for instruction counts (linked with one *_peer.cpp, gameui's included):
//   valgrind --tool=callgrind --collect-atstart=no probe_<library> DIR [COUNT]
// loads, frames (idle, and after every widget changed), pointer moves, clicks and look-ups on the four
// standard scenes of COUNT widgets (1,000 by default; layout files go to DIR). Only the library's calls
// are collected; each operation is dumped on its own, named "<operation> <scene> <units>", and
// bench/count_instructions.py divides its count by the units (widgets loaded or framed, events, calls).
// Each operation runs once uncounted first, so one-time set-up does not count.
#include <valgrind/callgrind.h>
#include <cstdlib>
#include <functional>
#include <string>
#include "peer.h"

namespace {

using namespace bench;

constexpr int kLoads = 1, kFrames = 10, kSweeps = 2, kLookups = 100;

// Runs `work` then `after` once uncounted, then `times` times with only `work` counted, and dumps the count
// as `name` with its units.
void count(
    const std::string& name, const Scene& s, long long units, int times, const std::function<void()>& work,
    const std::function<void()>& after = [] {}) {
    work();
    after();
    for (int i = 0; i < times; ++i) {
        CALLGRIND_TOGGLE_COLLECT;
        work();
        CALLGRIND_TOGGLE_COLLECT;
        after();
    }
    const std::string dump = name + " " + s.label() + " " + std::to_string(units * times);
    CALLGRIND_DUMP_STATS_AT(dump.c_str());
}

void probe(Peer& peer, const std::string& dir, const Scene& s) {
    const std::string file = peer.fileName(s);
    writeFile(dir + "/" + file, peer.layout(s));
    // Destroying the tree is not part of loading it.
    count(
        "load", s, s.count, kLoads, [&] { peer.load(file); }, [&] { peer.unload(); });
    peer.load(file);
    count("frame", s, s.count, kFrames, [&] { peer.frame(); });
    count("frame_dirty", s, s.count, kFrames, [&] {
        peer.invalidateAll();
        peer.frame();
    });
    const auto path = pointerPath(s);
    // Frames pass between sweeps, as in a game: no click falls within a button's double-click guard.
    const auto frames = [&] {
        for (int f = 0; f < 8; ++f)
            peer.frame();
    };
    count(
        "move", s, static_cast<long long>(path.size()), kSweeps,
        [&] {
            for (const auto& p : path)
                peer.move(p.first, p.second);
        },
        frames);
    count(
        "click", s, static_cast<long long>(path.size()) * 3, kSweeps,
        [&] {
            for (const auto& p : path) {
                peer.move(p.first, p.second);
                peer.down(p.first, p.second);
                peer.up(p.first, p.second);
            }
        },
        frames);
    if (s.shape == Shape::Nested) {
        const std::vector<int> chain = ancestry(s.nodes(), s.count);
        count("getwidget", s, 1, kLookups, [&] { peer.lookup(chain); });
    }
    peer.unload();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const std::string dir = argv[1];
    const int widgets = argc > 2 ? std::atoi(argv[2]) : 1000;
    std::unique_ptr<Peer> peer = makePeer();
    peer->setDataDir(dir);
    for (const Shape shape : {Shape::Flat, Shape::Nested})
        for (const Kind kind : {Kind::Container, Kind::Button})
            probe(*peer, dir, Scene{shape, kind, widgets});
    return 0;
}
