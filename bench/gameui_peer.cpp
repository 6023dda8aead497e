// gameui behind the interface of the peers, so that the instruction counts run the same work on all
// three libraries. Every gameui frame walks and draws the whole tree: there is nothing to invalidate.
#include "gameui_desc.h"
#include "gameui_env.h"
#include "peer.h"

namespace bench {
namespace {

class GameuiPeer : public Peer {
public:
    ~GameuiPeer() override { unload(); }
    const char* name() const override { return "gameui"; }
    std::string layout(const Scene& s) const override { return gameuiDescription(s); }
    std::string fileName(const Scene& s) const override { return s.fileName("gameui", ".txt"); }
    void setDataDir(const std::string& dir) override { m_dir = dir + "/"; }

    void load(const std::string& file) override { m_root = m_env.show(m_dir + file); }
    void unload() override {
        m_env.ui().setTopLevelWidget(nullptr);
        delete m_root;
        m_root = nullptr;
    }
    void frame() override { m_env.ui().render(16); }
    void invalidateAll() override {}
    void hideHalf() override { bench::hideHalf(m_root); }
    void move(int x, int y) override { m_env.ui().inputEvent(UIE_MOUSE_MOVE, x, y, 0); }
    void down(int x, int y) override { m_env.ui().inputEvent(UIE_MOUSE_DOWN, x, y, 0); }
    void up(int x, int y) override { m_env.ui().inputEvent(UIE_MOUSE_UP, x, y, 0); }
    bool lookup(const std::vector<int>& chain) override {
        std::string path = gameuiName(0);
        for (size_t i = 1; i < chain.size(); ++i)
            path += "." + gameuiName(chain[i]);
        return m_root->getWidget(path.c_str(), 0, false) != nullptr;
    }

private:
    GameuiEnv m_env;
    std::string m_dir;
    uiWidget* m_root = nullptr;
};

} // namespace

std::unique_ptr<Peer> makePeer() {
    return std::make_unique<GameuiPeer>();
}

} // namespace bench
