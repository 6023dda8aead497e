// The frame and input benchmarks of gameui on the standard scenes, timed without Google Benchmark so that
// the same program runs natively and in the browser (built with Emscripten):
//   timing_gameui DATA_DIR [SECONDS]
// Each operation steps in batches of at least 2 ms of wall time until SECONDS (0.1) have passed, and the
// fastest batch gives its time: on a shared machine it is the one least disturbed, and the browser offers
// no CPU time. One JSON line per operation goes to standard output (the page's console): its name, as the
// benchmark program names it without the library, nanoseconds per step, the units a step covers (widgets
// framed or events sent) and the steps taken. The first line names the compiler, the last {"done": true}.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include "gameui_ops.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr double kBatchSeconds = 0.002; // well above the browser's 5 µs clock steps

double timeSteps(bench::SceneRun& run, long count) {
    const Clock::time_point start = Clock::now();
    for (long i = 0; i < count; ++i)
        run.step();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Seconds per step of the fastest batch. Batches double until they last kBatchSeconds; shorter ones, like
// the first steps while the browser still compiles the code, do not count. `steps` counts every step.
double fastestStep(bench::SceneRun& run, double seconds, long& steps) {
    long batch = 1;
    double best = 0;
    for (double total = 0; total < seconds || best == 0;) {
        const double t = timeSteps(run, batch);
        total += t;
        steps += batch;
        if (t < kBatchSeconds)
            batch *= 2;
        else if (best == 0 || t / static_cast<double>(batch) < best)
            best = t / static_cast<double>(batch);
    }
    return best;
}

std::string compiler() {
#ifdef __EMSCRIPTEN__
    return "Emscripten " + std::to_string(__EMSCRIPTEN_major__) + "." + std::to_string(__EMSCRIPTEN_minor__) +
           "." + std::to_string(__EMSCRIPTEN_tiny__) + " (" __VERSION__ ")";
#elif defined(__clang__)
    return __VERSION__;
#else
    return "GCC " __VERSION__;
#endif
}

} // namespace

int main(int argc, char** argv) {
    using namespace bench;
    if (argc < 2) return 2;
    const std::string dir = argv[1];
    const double seconds = argc > 2 ? std::atof(argv[2]) : 0.1;
    std::printf("{\"compiler\": \"%s\"}\n", compiler().c_str());
    GameuiEnv env;
    for (const Scene& s : Scene::standard())
        for (Op op : kOps) {
            SceneRun run(env, dir, s, op);
            if (!run.loaded()) {
                std::printf("{\"error\": \"%s did not load\"}\n", s.label().c_str());
                return 1;
            }
            long steps = 0;
            const double perStep = fastestStep(run, seconds, steps);
            std::printf("{\"name\": \"%s/%s\", \"ns_per_step\": %.1f, \"units\": %d, \"steps\": %ld}\n",
                        opName(op), s.label().c_str(), perStep * 1e9, isInput(op) ? run.events() : s.count,
                        steps);
        }
    std::printf("{\"done\": true}\n");
    return 0;
}
