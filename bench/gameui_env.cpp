#include "gameui_env.h"

namespace bench {

GameuiEnv::GameuiEnv() {
    g_gfx = &m_gfx;
    Logger::setSink(&m_sink);
    m_ui = new uiSubsystem;
    m_ui->initialize(nullptr);
}

GameuiEnv::~GameuiEnv() {
    m_ui->shutdown();
    delete m_ui;
    Logger::setSink(nullptr);
    g_gfx = nullptr;
}

uiWidget* GameuiEnv::show(const std::string& file) {
    uiWidget* root = m_ui->loadUI(file.c_str());
    m_ui->setTopLevelWidget(root);
    return root;
}

void hideHalf(uiWidget* root) {
    bool hide = false;
    for (const _WidgetList_s* n = root->getChildren(); n; n = n->next, hide = !hide)
        if (hide) n->widget->setVisible(false, true);
}

} // namespace bench
