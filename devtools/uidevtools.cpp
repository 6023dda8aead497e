#include "uidevtools.h"
#include <chrono>
#include "inspector.h"
#include "livereload.h"
#include "gfxsubsystem.h"
#include "uisubsystem.h"

namespace {

uiDevtools* g_devtools = nullptr;

void drawProblems(devtools::Overlay& overlay, const std::vector<std::string>& problems) {
    if (problems.empty() || !overlay.ready()) return;
    const int h = overlay.lineHeight();
    const int width = g_gfx->getScreenWidth() > 0 ? g_gfx->getScreenWidth() : 800;
    const int top = 4;
    overlay.panel({4, top, width - 4, top + (static_cast<int>(problems.size()) + 1) * h + 8}, 230);
    overlay.text(10, top + 4, "The screen keeps running as it was: fix and save", 255);
    int y = top + 4 + h;
    for (const std::string& line : problems) {
        overlay.text(10, y, line, 255);
        y += h;
    }
}

} // namespace

uiDevtools::uiDevtools(const uiDevtoolsOptions& options) : m_options(options) {
    if (options.watch) m_reload = std::make_unique<devtools::LiveReload>(m_options);
    if (options.inspector) m_inspector = std::make_unique<devtools::Inspector>(m_options);
    m_overlay = std::make_unique<devtools::Overlay>(m_options);
}

uiDevtools::~uiDevtools() = default;

uiDevtools* uiDevtools::enable(const uiDevtoolsOptions& options) {
    disable();
    g_devtools = new uiDevtools(options);
    return g_devtools;
}

void uiDevtools::disable() {
    delete g_devtools;
    g_devtools = nullptr;
}

uiDevtools* uiDevtools::get() {
    return g_devtools;
}

unsigned long long uiDevtools::_now() const {
    if (m_options.clock) return m_options.clock(m_options.client);
    return static_cast<unsigned long long>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                               std::chrono::steady_clock::now().time_since_epoch())
                                               .count());
}

uiWidget* uiDevtools::loadUI(const char* file) {
    if (m_reload) return m_reload->load(file);
    return g_ui ? g_ui->loadUI(file) : nullptr;
}

void uiDevtools::forget(uiWidget* root) {
    if (m_reload) m_reload->forget(root);
}

bool uiDevtools::inputEvent(e_uiEvent kind, int x, int y, int key) {
    return m_inspector && m_inspector->inputEvent(kind, x, y, key);
}

void uiDevtools::frame(unsigned int ms) {
    if (m_reload) m_reload->frame(_now());
    if (m_inspector) m_inspector->frame(ms);
}

void uiDevtools::draw() {
    if (m_inspector) m_inspector->draw(*m_overlay);
    drawProblems(*m_overlay, problems());
}

const std::vector<std::string>& uiDevtools::problems() const {
    static const std::vector<std::string> none;
    return m_reload ? m_reload->problems() : none;
}

unsigned int uiDevtools::reloads() const {
    return m_reload ? m_reload->reloads() : 0;
}

bool uiDevtools::inspectorOpen() const {
    return m_inspector && m_inspector->open();
}

uiWidget* uiDevtools::inspected() const {
    return m_inspector && m_inspector->open() ? m_inspector->selected() : nullptr;
}
