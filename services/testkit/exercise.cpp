#include "exercise.h"

namespace testkit {

void exercise(uiSubsystem& ui) {
    static const int kPoints[][2] = {{0, 0},     {10, 10},   {120, 110}, {310, 210},
                                     {400, 300}, {650, 520}, {-5, 900}};
    static const int kKeys[] = {KEY_ENTER, KEY_TAB,       KEY_ESCAPE,    KEY_SPACE,
                                'a',       KEY_BACKSPACE, KEY_PAD_ENTER, KEY_F1};
    ui.update(16);
    for (const auto& p : kPoints) {
        ui.inputEvent(UIE_MOUSE_MOVE, p[0], p[1], 0);
        ui.inputEvent(UIE_MOUSE_DOWN, p[0], p[1], 0);
        ui.update(16);
        ui.inputEvent(UIE_MOUSE_MOVE, p[0] + 7, p[1] + 3, 0);
        ui.inputEvent(UIE_MOUSE_UP, p[0] + 7, p[1] + 3, 0);
        ui.render(16);
    }
    for (int key : kKeys) {
        ui.inputEvent(UIE_KEY_DOWN, 0, 0, key);
        ui.inputEvent(UIE_CHAR, 0, 0, key);
        ui.inputEvent(UIE_KEY_UP, 0, 0, key);
    }
    ui.render(500);
    ui.render(5000);
}

void playScreen(const char* file) {
    {
        uiSubsystem ui;
        uiWidget* root = ui.loadUI(file);
        ui.setTopLevelWidget(root);
        exercise(ui);
        ui.setTopLevelWidget(nullptr);
        delete root;
        ui.shutdown();
    }
    uiWidget::s_freeScripletCache();
}

} // namespace testkit
