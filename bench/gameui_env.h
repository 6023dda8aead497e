// What every gameui benchmark runs in: the built-in memory manager, a graphics service that does nothing,
// a log sink that drops messages, and one initialized subsystem.
#pragma once
#include <string>
#include "logger.h"
#include "nullgfx.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace bench {

class QuietSink : public Logger::Sink {
public:
    void write(int, const char*) override {}
};

class GameuiEnv {
public:
    GameuiEnv();
    ~GameuiEnv();
    uiSubsystem& ui() { return *m_ui; }
    // Loads `file` as the top-level screen; the caller deletes the root.
    uiWidget* show(const std::string& file);

private:
    NullGfx m_gfx;
    QuietSink m_sink;
    uiSubsystem* m_ui;
};

// Hides every other child of `root`, the second first.
void hideHalf(uiWidget* root);

} // namespace bench
