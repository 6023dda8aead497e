#include "screenloader.h"
#include <cstdio>
#include "uibackgroundloader.h"
#include "uiprogressbar.h"
#include "uiwidget.h"

namespace {
// A request is collected this much frame time after it was made (the worker wakes every 500 ms); if the
// worker is not done yet, collecting waits for it. The pictures of a session are thus the same on every
// run, however fast the machine loads.
constexpr unsigned int kCollectMs = 600;
} // namespace

ScreenLoader::ScreenLoader(std::vector<std::string> files, uiProgressBar* bar)
    : m_files(std::move(files)), m_bar(bar), m_loader(new uiBackgroundLoader()) {
    if (m_bar) {
        m_bar->setRange(0, static_cast<int>(m_files.size()));
        m_bar->setValue(0, true);
    }
    request();
}

ScreenLoader::~ScreenLoader() {
    for (size_t i = m_handedOver ? 1 : 0; i < m_trees.size(); ++i)
        delete m_trees[i];
    delete m_loader;
}

void ScreenLoader::request() {
    if (m_loader && m_trees.size() < m_files.size()) m_loader->loadWidget(m_files[m_trees.size()].c_str());
    m_waited = 0;
}

uiWidget* ScreenLoader::frame(unsigned int ms) {
    if (!m_loader || m_handedOver) return nullptr;
    if (m_trees.size() < m_files.size()) {
        m_waited += ms;
        if (m_waited < kCollectMs) return nullptr;
        uiWidget* tree = m_loader->getWidget(nullptr);
        if (!tree) std::fprintf(stderr, "uiview: cannot load %s\n", m_files[m_trees.size()].c_str());
        m_trees.push_back(tree);
        if (m_bar) m_bar->delta(1); // the bar's own lock: a worker thread could report the same way
        request();
        return nullptr;
    }
    if (m_bar && !m_bar->isFull()) return nullptr;
    m_handedOver = true;
    return m_trees.empty() ? nullptr : m_trees.front();
}

int ScreenLoader::loaded() const {
    int n = 0;
    for (uiWidget* tree : m_trees)
        n += tree != nullptr;
    return n;
}
