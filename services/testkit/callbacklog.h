// The input callbacks a game installs on its widgets, recorded, so a test can tell which of its
// handlers a screen calls, in what order and with what arguments.
#pragma once
#include <string>
#include <vector>
#include "uiwidget.h"

namespace testkit {

// Installs recording callbacks on widgets. Each callback a widget delivers appends a line to `events`
// ("up ok 151,121": the callback, the widget's name, the point; key callbacks give the key code) and
// answers `consume`: whether the handler handled the event.
class CallbackLog {
public:
    // The callbacks watch() can install.
    enum Kind : unsigned int {
        kOver = 1,
        kDown = 2,
        kUp = 4,
        kMove = 8,
        kKeyDown = 16,
        kKeyUp = 32,
        kAll = 63
    };

    std::vector<std::string> events; // in delivery order
    bool consume = true;             // what every callback answers

    // Installs the callbacks of `kinds` (Kind bits) on `widget`, replacing the ones it had.
    void watch(uiWidget* widget, unsigned int kinds = kAll);
};

} // namespace testkit
