// Platform helpers on std::thread. The cursor is only remembered: there is no window system here.
#include "platform.h"
#include <atomic>
#include <chrono>
#include <thread>
#include "neverdestroyed.h"

namespace {

ui::NeverDestroyed<Platform::Backend> s_builtin;
std::atomic<Platform::Backend*> s_backend{nullptr};
std::atomic<bool> s_cursorShown{true};
struct CursorPos {
    int x, y;
};
std::atomic<CursorPos> s_cursorPos{CursorPos{0, 0}};

Platform::Backend& current() {
    Platform::Backend* backend = s_backend.load();
    return backend ? *backend : s_builtin.value;
}

} // namespace

Platform::Backend::~Backend() = default;

void Platform::Backend::sleep(unsigned int ms) {
    if (ms == 0)
        std::this_thread::yield();
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

void Platform::Backend::showCursor(bool show) {
    s_cursorShown.store(show);
}

void Platform::Backend::getCursorPos(int& x, int& y) {
    CursorPos pos = s_cursorPos.load();
    x = pos.x;
    y = pos.y;
}

void Platform::Sleep(unsigned int ms) {
    current().sleep(ms);
}
void Platform::ShowCursor(bool show) {
    current().showCursor(show);
}
void Platform::GetCursorPos(int& x, int& y) {
    current().getCursorPos(x, y);
}
bool Platform::IsCursorShown() {
    return s_cursorShown.load();
}
void Platform::SetCursorPos(int x, int y) {
    s_cursorPos.store(CursorPos{x, y});
}
void Platform::setBackend(Backend* backend) {
    s_backend.store(backend);
}
Platform::Backend* Platform::backend() {
    return s_backend.load();
}
