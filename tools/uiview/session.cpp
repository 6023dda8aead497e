#include "session.h"
#include <cstdio>
#include <fstream>
#include "uidialog.h"
#include "uidigitalbanner.h"
#include "uigamecontainer.h"
#include "uiprogressbar.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace {

bool flipToggle(uiWidget*, void*, int, int) {
    return true; // a toggle button flips when its click handler agrees
}

// Toggle buttons flip on click as a game's handler would let them.
void bindToggles(uiWidget* w) {
    if (w->isType("uiToggleButton")) {
        _WidgetMap_s map{};
        map.mouseUpCb = flipToggle;
        w->assignCallbacks(&map, nullptr);
    }
    for (const _WidgetList_s* node = w->getChildren(); node; node = node->next)
        bindToggles(node->widget);
}

void toSubsystem(uiSubsystem& ui, e_uiEvent kind, int x, int y, int key) {
    ui.inputEvent(kind, x, y, key);
}

} // namespace

void sendScripted(const ScriptEvent& e, uiSubsystem& ui, Deliver deliver) {
    if (!deliver) deliver = toSubsystem;
    const int mx = ui.getMousePositionX(), my = ui.getMousePositionY();
    switch (e.kind) {
    case ScriptEvent::Move:
        deliver(ui, UIE_MOUSE_MOVE, e.x, e.y, 0);
        break;
    case ScriptEvent::Down:
        deliver(ui, UIE_MOUSE_DOWN, e.x, e.y, 0);
        break;
    case ScriptEvent::Up:
        deliver(ui, UIE_MOUSE_UP, e.x, e.y, 0);
        break;
    case ScriptEvent::Key:
        deliver(ui, UIE_KEY_DOWN, mx, my, e.key);
        deliver(ui, UIE_KEY_UP, mx, my, e.key);
        break;
    case ScriptEvent::Char:
        deliver(ui, UIE_CHAR, mx, my, e.key);
        break;
    case ScriptEvent::Png:
        break;
    }
}

Session::Session(const ViewOptions& options, uiSubsystem* ui) : m_options(options), m_ui(ui) {
    for (const ClickAction& a : options.actions)
        m_bound.push_back(BoundAction{this, a});
}

void Session::close() {
    m_loader.reset(); // ends the worker before the subsystem shuts down
    m_ui->shutdown();
    for (uiWidget* shown : m_shown)
        delete shown;
    m_shown.clear();
}

bool Session::onClick(uiWidget*, void* client, int, int) {
    auto* bound = static_cast<BoundAction*>(client);
    Session& s = *bound->session;
    ++s.m_actions;
    if (bound->action.verb == "quit")
        s.m_quit = true;
    else if (bound->action.verb == "pop")
        s.m_ui->popDialog(s.m_ui->topDialog(), true);
    else if (bound->action.verb == "pause") {
        if (uiWidget* c = s.m_root->getWidget(bound->action.dialog.c_str(), 0, true))
            if (c->isType("uiGameContainer")) {
                auto* container = static_cast<uiGameContainer*>(c);
                container->setPaused(!container->getPaused());
            }
    } else if (uiWidget* d = s.m_root->getWidget(bound->action.dialog.c_str(), 0, true))
        if (d->isType("uiDialog")) s.m_ui->pushDialog(static_cast<uiDialog*>(d), true);
    return true;
}

// Actions name widgets of any of the screens shown: those of other screens are left out.
void Session::bindActions() {
    for (BoundAction& b : m_bound) {
        uiWidget* w = m_root->getWidget(b.action.widget.c_str(), 0, false);
        if (!w) continue;
        _WidgetMap_s map{};
        map.mouseUpCb = onClick;
        w->assignCallbacks(&map, &b);
    }
}

void Session::printBanners(uiWidget* root) {
    for (const auto& b : m_options.banners) {
        uiWidget* w = root->getWidget(b.first.c_str(), 0, false);
        if (!w) continue; // a banner of another screen
        std::ifstream in(b.second);
        if (!w->isType("uiDigitalBanner") || !in) {
            std::fprintf(stderr, "uiview: no banner %s or no messages in %s\n", b.first.c_str(),
                         b.second.c_str());
            continue;
        }
        unsigned int priority = 0;
        for (std::string line; std::getline(in, line);)
            if (!line.empty()) static_cast<uiDigitalBanner*>(w)->print(priority++, "%s", line.c_str());
    }
}

// Makes `root` the screen: top-level widget (pushed when it is a dialog), with the start-up settings
// and the click actions that name its widgets.
void Session::show(uiWidget* root) {
    m_root = root;
    m_shown.push_back(root);
    m_ui->clearDialogStack(false);
    m_ui->setTopLevelWidget(root);
    if (root->isType("uiDialog")) m_ui->pushDialog(static_cast<uiDialog*>(root), true);
    for (const auto& v : m_options.values)
        if (uiWidget* bar = root->getWidget(v.first.c_str(), 0, false))
            if (bar->isType("uiProgressBar")) static_cast<uiProgressBar*>(bar)->setValue(v.second, false);
    printBanners(root);
    for (const std::string& path : m_options.push)
        if (uiWidget* d = root->getWidget(path.c_str(), 0, false))
            if (d->isType("uiDialog")) m_ui->pushDialog(static_cast<uiDialog*>(d), true);
    bindToggles(root);
    bindActions();
}

void Session::start(uiWidget* root) {
    show(root);
    startLoading();
    if (m_options.stats) m_ui->gfxStatistics(true, m_options.statsFont.c_str());
}

// --load: starts loading the next screens, fed into the bar at --progress.
void Session::startLoading() {
    const ViewOptions& o = m_options;
    if (o.load.empty()) return;
    uiProgressBar* bar = nullptr;
    if (!o.progress.empty()) {
        uiWidget* w = m_root->getWidget(o.progress.c_str(), 0, true);
        if (w && w->isType("uiProgressBar"))
            bar = static_cast<uiProgressBar*>(w);
        else
            std::fprintf(stderr, "uiview: no progress bar %s\n", o.progress.c_str());
    }
    m_loader = std::make_unique<ScreenLoader>(o.load, bar);
}

// A dialog that comes to the top is reset once it is idle, as a game does when it shows one: showing
// gave every widget in it input focus, the reset leaves it with the current tab entry alone.
void Session::settleTopDialog() {
    uiDialog* top = m_ui->topDialog();
    if (top == m_settled || !top || !m_ui->topDialogIsIdle(top)) return;
    top->reset();
    m_settled = top;
}

void Session::advance(unsigned int ms, int number) {
    if (m_loader)
        if (uiWidget* next = m_loader->frame(ms)) {
            show(next);
            m_switchedAt = number;
        }
    settleTopDialog();
}

void Session::rewire(uiWidget* root, uiWidget* replaced) {
    for (uiWidget*& shown : m_shown)
        if (shown == replaced) shown = root;
    if (m_root == replaced) m_root = root;
    m_settled = m_ui->topDialog(); // the reload kept its tab position: no reset
    printBanners(root);
    bindToggles(root);
    bindActions();
}
