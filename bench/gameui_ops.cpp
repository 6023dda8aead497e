#include "gameui_ops.h"
#include "gameui_desc.h"

namespace bench {

const char* opName(Op op) {
    static const char* const names[] = // in the order of Op
        {"frame", "frame_half_hidden", "move", "click", "move_focus", "click_focus"};
    return names[static_cast<int>(op)];
}

bool isInput(Op op) {
    return op != Op::Frame && op != Op::FrameHalfHidden;
}

namespace {

bool clicks(Op op) {
    return op == Op::Click || op == Op::ClickFocus;
}

bool throughFocus(Op op) {
    return op == Op::MoveFocus || op == Op::ClickFocus;
}

} // namespace

SceneRun::SceneRun(GameuiEnv& env, const std::string& dataDir, const Scene& scene, Op op)
    : m_env(env), m_op(op), m_root(env.show(writeGameuiScene(dataDir, scene))) {
    if (!m_root) return;
    if (op == Op::FrameHalfHidden) hideHalf(m_root);
    if (throughFocus(op)) env.ui().pushInputFocusWidget(m_root);
    if (isInput(op)) m_path = pointerPath(scene);
}

SceneRun::~SceneRun() {
    if (!m_root) return;
    if (throughFocus(m_op)) m_env.ui().popInputFocusWidget();
    m_env.ui().setTopLevelWidget(nullptr);
    delete m_root;
}

void SceneRun::step() {
    if (!isInput(m_op)) {
        m_env.ui().render(16);
        return;
    }
    uiWidget::s_frameNumber += 100; // frames pass between sweeps, so no click falls in a button's guard
    for (const auto& p : m_path) {
        m_env.ui().inputEvent(UIE_MOUSE_MOVE, p.first, p.second, 0);
        if (clicks(m_op)) {
            m_env.ui().inputEvent(UIE_MOUSE_DOWN, p.first, p.second, 0);
            m_env.ui().inputEvent(UIE_MOUSE_UP, p.first, p.second, 0);
        }
    }
}

int SceneRun::events() const {
    return static_cast<int>(m_path.size()) * (clicks(m_op) ? 3 : 1);
}

} // namespace bench
