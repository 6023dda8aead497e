#include "stage.h"

namespace testkit {

Stage::Stage(int width, int height) {
    m_root = uiWidget::allocWidget("root", "uiNonVisualWidget");
    if (!m_root) return;
    m_root->rect = {0, 0, width, height};
    m_root->setWidgetStates(true, true, true, true);
    m_ui.setTopLevelWidget(m_root);
}

Stage::~Stage() {
    m_ui.setTopLevelWidget(nullptr);
    delete m_root;
}

void Stage::click(int x, int y) {
    move(x, y);
    press(x, y);
    release(x, y);
}

std::vector<std::vector<int>> renderFrame(RecordingGfx& gfx, uiSubsystem& ui, unsigned int ms,
                                          const std::string& fn) {
    gfx.clear();
    ui.render(ms);
    return gfx.ints(fn);
}

std::vector<std::vector<int>> renderLooks(RecordingGfx& gfx, uiSubsystem& ui, unsigned int ms,
                                          const std::vector<size_t>& columns) {
    std::vector<std::vector<int>> looks;
    for (const std::vector<int>& blt : renderFrame(gfx, ui, ms)) {
        looks.emplace_back();
        for (size_t c : columns)
            looks.back().push_back(blt.at(c));
    }
    return looks;
}

} // namespace testkit
