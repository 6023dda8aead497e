// A scriptlet applied to a live screen, to its root and to a widget inside, between frames.
// Input: the scriptlet, then "--- <name>" lines starting each further file it may include.
#include "fuzzkit.h"

namespace {
const char* const kScreen = R"(menu = uiNonVisualWidget
{
    width = 800
    height = 600
    child start = uiButton
    {
        x = 300
        y = 200
        sprite = "start"
    }
    child panel = uiNonVisualWidget
    {
        x = 100
        y = 100
        width = 200
        height = 100
        child volume = uiSliderButton
        {
            sprite = "knob"
        }
        child bar = uiProgressBar
        {
            sprite = "bar"
        }
    }
    flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS
}
)";
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    testkit::Services svc;
    fuzzkit::addFiles(svc, data, size, "fuzz.txt");
    svc.files.add("menu.txt", kScreen); // after the input's files, so that none of them replaces it
    {
        uiSubsystem ui;
        uiWidget* root = ui.loadUI("menu.txt");
        if (!root) __builtin_trap(); // the fixed screen must load
        ui.setTopLevelWidget(root);
        ui.update(16);
        root->applyScriptlet("fuzz.txt");
        if (uiWidget* panel = root->getChildWidget("panel", 0, false)) panel->applyScriptlet("fuzz.txt");
        testkit::exercise(ui);
        ui.setTopLevelWidget(nullptr);
        delete root;
        ui.shutdown();
    }
    uiWidget::s_freeScripletCache();
    fuzzkit::checkClean(svc);
    return 0;
}
