// The input walk passes an idle library button by without entering it, and calls a library button's
// hooks directly; a game's class derived from uiButton always takes the full path through its virtual
// hooks. This target loads the same random row of buttons twice, once as uiButton and once as a derived
// class that changes nothing, drives both with the same events and frames, and requires every observable
// result to match: what inputEvent hands back to the callbacks, hover, flags, animation and frame of each
// button, the top of the input-focus stack, the sounds played and every draw.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>
#include "fuzzkit.h"
#include "uibutton.h"

namespace {

class FullPathButton : public uiButton {
    UI_DECLARE_WIDGET(FullPathButton)
};
UI_DEFINE_WIDGET(FullPathButton, uiButton, __FILE__)

const char* const kHotkeys[] = {"KEY_F1", "KEY_ENTER", "KEY_SPACE", "KEY_ESCAPE"};
const int kKeys[] = {KEY_F1, KEY_ENTER, KEY_SPACE, KEY_ESCAPE, 'a'};

// A row of up to six buttons, each placed, sized and flagged by the input.
std::string description(fuzzkit::Bytes& in, const char* type) {
    std::string text = "row = uiNonVisualWidget\n{\n  width = 800\n  height = 600\n"
                       "  flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS\n";
    const unsigned int count = 1 + in.u8() % 6;
    for (unsigned int i = 0; i < count; ++i) {
        const unsigned int f = in.u8();
        char button[512];
        std::snprintf(button, sizeof button,
                      "  child b%u = %s\n  {\n    x = %u\n    y = %u\n    width = %u\n    height = %u\n"
                      "    %s\n    anim = %u\n    rate = %u\n    hotkey = \"%s\"\n"
                      "    flags = WF_VISIBLE%s%s%s%s%s\n  }\n",
                      i, type, in.u8() * 3, in.u8() * 2, in.u8() % 120, in.u8() % 60,
                      f & 1 ? "sprite = \"btn\"" : "", in.u8() % 3, in.u8() * 40, kHotkeys[in.u8() % 4],
                      f & 2 ? " | WF_ACTIVE" : "", f & 4 ? " | WF_INPUT_FOCUS" : "",
                      f & 8 ? " | UIB_HOVER" : "", f & 16 ? " | UIB_PRESSED" : "",
                      f & 32 ? " | UIB_DONTDRAWIDLE" : "");
        text += button;
    }
    return text + "}\n";
}

// Callbacks write what they were handed into the run's journal; odd-numbered buttons take the event.
std::vector<std::string>* g_journal = nullptr;

bool note(uiWidget* w, const char* what, int a, int b) {
    char line[96];
    std::snprintf(line, sizeof line, "%s %s %d %d", w->name, what, a, b);
    g_journal->push_back(line);
    return (w->name[1] - '0') % 2 == 1;
}
bool over(uiWidget* w, void*, int x, int y) {
    return note(w, "over", x, y);
}
bool down(uiWidget* w, void*, int x, int y) {
    return note(w, "down", x, y);
}
bool up(uiWidget* w, void*, int x, int y) {
    return note(w, "up", x, y);
}
bool move(uiWidget* w, void*, int x, int y) {
    return note(w, "move", x, y);
}
bool keyDown(uiWidget* w, void*, int key) {
    return note(w, "keydown", key, 0);
}
bool keyUp(uiWidget* w, void*, int key) {
    return note(w, "keyup", key, 0);
}

void journalState(uiSubsystem& ui, uiWidget* row, testkit::Services& svc, std::vector<std::string>& out) {
    for (const _WidgetList_s* c = row->getChildren(); c; c = c->next) {
        const uiButton* b = static_cast<const uiButton*>(c->widget);
        char line[96];
        std::snprintf(line, sizeof line, "%s flags %x hover %d anim %d frame %d", b->name,
                      b->getWidgetFlags(), b->isHovering(), b->anim, b->frame);
        out.push_back(line);
    }
    const uiWidget* top = ui.getInputFocusWidget();
    out.push_back(std::string("focus ") + (top ? top->name : "-"));
    for (const std::string& sound : svc.sound.played)
        out.push_back("sound " + sound);
    svc.sound.clear();
}

std::vector<std::string> play(const uint8_t* data, size_t size, const char* type) {
    std::vector<std::string> journal;
    g_journal = &journal;
    testkit::Services svc;
    svc.gfx.defineSprite("btn", 40, 20, {2, 3, 1, 2, 4});
    fuzzkit::Bytes in(data, size);
    svc.files.add("row.txt", description(in, type));
    {
        uiSubsystem ui;
        uiWidget* row = ui.loadUI("row.txt");
        if (!row) __builtin_trap(); // the row loads whatever its numbers
        for (const _WidgetList_s* c = row->getChildren(); c; c = c->next) {
            uiWidget* b = c->widget;
            b->mouseOverCb = over;
            b->mouseDownCb = down;
            b->mouseUpCb = up;
            b->mouseMoveCb = move;
            b->keyDownCb = keyDown;
            b->keyUpCb = keyUp;
        }
        ui.setTopLevelWidget(row);
        while (in.more()) {
            const unsigned int op = in.u8() % 6;
            if (op < 3) {
                const e_uiEvent kinds[] = {UIE_MOUSE_MOVE, UIE_MOUSE_DOWN, UIE_MOUSE_UP};
                ui.inputEvent(kinds[op], static_cast<int>(in.u16() % 820) - 10,
                              static_cast<int>(in.u16() % 620) - 10, 0);
            } else if (op < 5) {
                ui.inputEvent(op == 3 ? UIE_KEY_DOWN : UIE_KEY_UP, 0, 0, kKeys[in.u8() % 5]);
            } else {
                svc.gfx.clear();
                ui.render(in.u8() * 4);
                for (const std::vector<int>& draw : svc.gfx.ints("blt")) {
                    std::string line = "blt";
                    for (int v : draw)
                        line += " " + std::to_string(v);
                    journal.push_back(line);
                }
            }
            journalState(ui, row, svc, journal);
        }
        ui.setTopLevelWidget(nullptr);
        delete row;
        ui.shutdown();
    }
    fuzzkit::checkClean(svc);
    g_journal = nullptr;
    return journal;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool registered =
        (uiSubsystem::s_registerWidget("FullPathButton", &FullPathButton::s_allocator), true);
    (void)registered;
    const std::vector<std::string> direct = play(data, size, "uiButton");
    const std::vector<std::string> full = play(data, size, "FullPathButton");
    if (direct != full) {
        for (size_t i = 0; i < direct.size() || i < full.size(); ++i) {
            const char* a = i < direct.size() ? direct[i].c_str() : "(end)";
            const char* b = i < full.size() ? full[i].c_str() : "(end)";
            if (std::string(a) != b) {
                std::fprintf(stderr, "step %zu: library button \"%s\", derived button \"%s\"\n", i, a, b);
                break;
            }
        }
        std::abort();
    }
    return 0;
}
