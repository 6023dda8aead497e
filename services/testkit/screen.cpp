#include "screen.h"
#include "uisubsystem.h"

namespace testkit {

uiWidget* loadScreen(const char* file) {
    if (g_ui) return g_ui->loadUI(file);
    uiSubsystem subsystem;
    return subsystem.loadUI(file);
}

Screen::Screen(Services& svc, const std::string& description, const char* file) {
    svc.files.add(file, description);
    m_root = loadScreen(file);
}

Screen::Screen(const char* file) : m_root(loadScreen(file)) {}

Screen::~Screen() {
    delete m_root;
    uiWidget::s_freeScripletCache();
}

std::string treeText(uiWidget* w) {
    const _uiRect_s& r = w->rect;
    std::string text =
        w->name + (" " + std::to_string(r.x) + "," + std::to_string(r.y) + "," + std::to_string(r.x2) + "," +
                   std::to_string(r.y2) + " " + std::to_string(w->getWidgetFlags()));
    for (const _WidgetList_s* node = w->getChildren(); node; node = node->next)
        text += (node == w->getChildren() ? " (" : ", ") + treeText(node->widget) + (node->next ? "" : ")");
    return text;
}

uiWidget* Screen::find(const char* path) const {
    return m_root ? m_root->getChildWidget(path, 0, false) : nullptr;
}

} // namespace testkit
