// The timed operations of the gameui benchmarks on a loaded scene: the Google Benchmark program and the
// plain timing harness that also runs in the browser repeat the same steps.
#pragma once
#include <string>
#include <utility>
#include <vector>
#include "gameui_env.h"
#include "scene.h"

namespace bench {

enum class Op { Frame, FrameHalfHidden, Move, Click, MoveFocus, ClickFocus };
constexpr Op kOps[] = {Op::Frame, Op::FrameHalfHidden, Op::Move, Op::Click, Op::MoveFocus, Op::ClickFocus};

const char* opName(Op op); // "frame", "frame_half_hidden", "move", "click", "move_focus", "click_focus"
bool isInput(Op op);

// A scene written to `dataDir`, loaded as the top-level screen and prepared for one operation; destroyed
// with this object.
class SceneRun {
public:
    SceneRun(GameuiEnv& env, const std::string& dataDir, const Scene& scene, Op op);
    ~SceneRun();
    SceneRun(const SceneRun&) = delete;
    SceneRun& operator=(const SceneRun&) = delete;

    bool loaded() const { return m_root != nullptr; }
    void step();        // one iteration: a 16 ms frame, or one sweep of the pointer path
    int events() const; // events one step sends (0 for frames)

private:
    GameuiEnv& m_env;
    Op m_op;
    uiWidget* m_root;
    std::vector<std::pair<int, int>> m_path;
};

} // namespace bench
