#include "callbacklog.h"

namespace testkit {

namespace {

bool record(void* client, const char* kind, uiWidget* w, const std::string& args) {
    auto* log = static_cast<CallbackLog*>(client);
    log->events.push_back(std::string(kind) + " " + w->name + " " + args);
    return log->consume;
}

bool point(void* client, const char* kind, uiWidget* w, int x, int y) {
    return record(client, kind, w, std::to_string(x) + "," + std::to_string(y));
}

} // namespace

void CallbackLog::watch(uiWidget* widget, unsigned int kinds) {
    _WidgetMap_s map{};
    if (kinds & kOver)
        map.mouseOverCb = [](uiWidget* w, void* c, int x, int y) { return point(c, "over", w, x, y); };
    if (kinds & kDown)
        map.mouseDownCb = [](uiWidget* w, void* c, int x, int y) { return point(c, "down", w, x, y); };
    if (kinds & kUp)
        map.mouseUpCb = [](uiWidget* w, void* c, int x, int y) { return point(c, "up", w, x, y); };
    if (kinds & kMove)
        map.mouseMoveCb = [](uiWidget* w, void* c, int x, int y) { return point(c, "move", w, x, y); };
    if (kinds & kKeyDown)
        map.keyDownCb = [](uiWidget* w, void* c, int key) {
            return record(c, "keydown", w, std::to_string(key));
        };
    if (kinds & kKeyUp)
        map.keyUpCb = [](uiWidget* w, void* c, int key) {
            return record(c, "keyup", w, std::to_string(key));
        };
    widget->assignCallbacks(&map, this);
}

} // namespace testkit
