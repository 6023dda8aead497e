// A game on gameui: its own widget type, registered by name, placed by a UI description, driven for a
// few frames through the subsystem. Everything it touches crosses the library's exported interface:
// classes and their virtual hooks, statics such as the frame clock, and the service globals.
// Prints what went wrong and exits with 1 on any failed check.
#include <cstdio>
#include <cstring>
#include <string>
#include "gameui.h"
#include "testkit.h"

namespace {

int failures = 0;

void check(bool ok, const char* what) {
    if (ok) return;
    std::printf("consumer: FAILED: %s\n", what);
    ++failures;
}

// The game's radar: a sprite (drawn by the library's base class) with a range read from its own
// description key, a sweep that follows the frame clock, and the input callbacks of a plain widget.
class Radar : public uiVisualWidget {
    UI_DECLARE_WIDGET(Radar)

public:
    int range = 0;
    unsigned int sweep = 0;

protected:
    void _parseParams(Parser* parser, char* key) override {
        if (!parser->ParamEqualsInt32(key, "range", &range)) uiVisualWidget::_parseParams(parser, key);
    }
    void _update(int x, int y) override {
        uiVisualWidget::_update(x, y);
        sweep += s_iDeltaTime;
    }
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override {
        return uiWidget::_inputEvent(kind, x, y, key, buttonDown, handled);
    }
};
UI_DEFINE_WIDGET(Radar, uiVisualWidget, "game.cpp")

const char* const kScreen = "hud = uiNonVisualWidget\n{\n    width = 800\n    height = 600\n"
                            "    child radar = Radar\n    {\n        x = 600\n        y = 20\n"
                            "        sprite = \"radar\"\n        range = 250\n    }\n"
                            "    flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS\n}\n";

int clicks = 0;

} // namespace

int main() {
    testkit::Services svc;
    svc.gfx.defineSprite("radar", 100, 100);
    svc.files.add("screens/hud.txt", kScreen);
    check(g_gfx == &svc.gfx && g_sound == &svc.sound && g_MemoryPtr == &svc.memory && !g_stringTblPtr,
          "service globals");

    uiSubsystem* ui = new uiSubsystem();
    check(ui && g_ui == ui, "the subsystem publishes itself in g_ui");
    ui->initialize(nullptr);
    uiSubsystem::s_registerWidget("Radar", &Radar::s_allocator);

    uiWidget* hud = ui->loadUI("screens/hud.txt");
    uiWidget* found = hud ? hud->getChildWidget("radar", 0, true) : nullptr;
    if (!found || !found->isType("Radar")) {
        std::printf("consumer: FAILED: the description made no Radar\n%s", svc.log.dump().c_str());
        return 1;
    }
    ui->setTopLevelWidget(hud);
    Radar* radar = static_cast<Radar*>(found);
    check(std::strcmp(radar->getType(), "Radar") == 0 && radar->isType("uiVisualWidget"), "type identity");
    check(radar->range == 250, "the game's own key reached its widget");
    radar->mouseUpCb = [](uiWidget*, void*, int, int) { return ++clicks > 0; };

    const unsigned long long firstFrame = uiWidget::s_frameNumber;
    for (int i = 0; i < 3; ++i)
        ui->render(16);
    check(uiWidget::s_frameNumber == firstFrame + 3, "the frame count is the library's");
    check(radar->sweep == 48, "the game's update ran each frame with the frame's milliseconds");
    const auto blts = svc.gfx.named("blt");
    check(blts.size() == 3 && blts.back().ints.size() == 7 &&
              blts.back().ints[1] == svc.gfx.spriteId("radar") && blts.back().ints[2] == 600 &&
              blts.back().ints[3] == 20,
          "the radar's sprite was drawn at its place each frame");

    for (e_uiEvent e : {UIE_MOUSE_MOVE, UIE_MOUSE_DOWN, UIE_MOUSE_UP})
        ui->inputEvent(e, 650, 70, 0);
    check(clicks == 1, "a click on the radar reached the game's callback");

    ui->shutdown();
    delete hud;
    delete ui;
    check(g_ui == nullptr, "destroying the subsystem clears g_ui");
    check(svc.memory.outstandingBlocks() == 0, "everything the library allocated was freed");
    check(svc.log.count() == 0, "nothing was logged");
    if (svc.log.count()) std::printf("%s", svc.log.dump().c_str());

    std::printf("consumer: %s\n", failures ? "FAILED" : "all checks passed");
    return failures ? 1 : 0;
}
