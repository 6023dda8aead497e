// Loading: the play screen's descriptions load on the background loader while the bar fills; the
// round starts once the bar is full.
#include <memory>
#include "game.h"
#include "uibackgroundloader.h"
#include "uiprogressbar.h"
#include "uitextwidget.h"

namespace {

// The play screen and the dialogs it shares with the menu; each later tree joins the first one.
const char* const kFiles[] = {"play.ui", "options.ui", "scores.ui"};
constexpr int kFileCount = sizeof kFiles / sizeof kFiles[0];
// Each file is collected this much frame time after it was asked for (the worker wakes every 500 ms;
// collecting waits for it), so the bar moves the same way on every run.
constexpr unsigned int kCollectMs = 600;

class Loading : public Screen {
public:
    using Screen::Screen;
    void enter() override {
        if (auto* title = game.find<uiTextWidget>(m_root, "loading.title", "uiTextWidget"))
            title->print(0, "loading.level", game.level + 1);
        m_bar = game.find<uiProgressBar>(m_root, "loading.bar", "uiProgressBar");
        if (m_bar) {
            m_bar->setRange(0, kFileCount);
            m_bar->setValue(0, true);
        }
        m_loader.reset(new uiBackgroundLoader());
        m_tree = nullptr;
        m_next = 0;
        _request();
    }
    void leave() override {
        m_loader.reset(); // ends the worker
        delete m_tree;    // a tree never handed over
        m_tree = nullptr;
    }
    void frame(unsigned int ms) override {
        if (!m_loader) return;
        if (m_next < kFileCount) {
            m_waited += ms;
            if (m_waited < kCollectMs) return;
            _collect();
            return;
        }
        if (m_bar && !m_bar->isFull()) return;
        if (!m_tree) return game.show(SCREEN_MENU);
        game.adoptPlayTree(m_tree);
        m_tree = nullptr;
        game.show(SCREEN_PLAY);
    }

private:
    void _request() {
        m_waited = 0;
        if (m_loader && m_next < kFileCount) m_loader->loadWidget(kFiles[m_next]);
    }
    void _collect() {
        uiWidget* tree = m_loader->getWidget(nullptr);
        if (m_next == 0)
            m_tree = tree;
        else if (m_tree && tree)
            m_tree->addChild(tree, false);
        else
            delete tree;
        if (m_bar) m_bar->delta(1);
        ++m_next;
        _request();
    }

    std::unique_ptr<uiBackgroundLoader> m_loader;
    uiProgressBar* m_bar = nullptr;
    uiWidget* m_tree = nullptr;
    int m_next = 0;
    unsigned int m_waited = 0;
};

} // namespace

std::unique_ptr<Screen> makeLoading(Game& game) {
    return std::make_unique<Loading>(game);
}
