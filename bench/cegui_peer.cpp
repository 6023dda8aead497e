// CEGUI 0.8 on its NullRenderer: DefaultWindow containers, TaharezLook/Button buttons.
#include <CEGUI/CEGUI.h>
#include <CEGUI/RendererModules/Null/Renderer.h>
#include "peer.h"

namespace bench {
namespace {

const char* const kData = "/usr/share/cegui-0.8.7/";

std::string area(const Node& n) {
    return "{{0," + std::to_string(n.x) + "},{0," + std::to_string(n.y) + "},{0," +
           std::to_string(n.x + n.w) + "},{0," + std::to_string(n.y + n.h) + "}}";
}

class CeguiPeer : public Peer {
public:
    CeguiPeer() {
        CEGUI::NullRenderer::bootstrapSystem();
        auto* rp =
            static_cast<CEGUI::DefaultResourceProvider*>(CEGUI::System::getSingleton().getResourceProvider());
        for (const char* group : {"schemes", "imagesets", "fonts", "looknfeel", "xml_schemas"})
            rp->setResourceGroupDirectory(group, std::string(kData) + group + "/");
        CEGUI::ImageManager::setImagesetDefaultResourceGroup("imagesets");
        CEGUI::Font::setDefaultResourceGroup("fonts");
        CEGUI::Scheme::setDefaultResourceGroup("schemes");
        CEGUI::WidgetLookManager::setDefaultResourceGroup("looknfeel");
        CEGUI::WindowManager::setDefaultResourceGroup("layouts");
        CEGUI::SchemeManager::getSingleton().createFromFile("TaharezLook.scheme");
        // The NullRenderer's display is 0 x 0 until told otherwise, and the pointer, held inside it, would
        // never be over a window.
        CEGUI::System::getSingleton().notifyDisplaySizeChanged(CEGUI::Sizef(kScreenW, kScreenH));
        CEGUI::MouseCursor& cursor = CEGUI::System::getSingleton().getDefaultGUIContext().getMouseCursor();
        cursor.setConstraintArea(nullptr);
        cursor.hide();
    }
    ~CeguiPeer() override {
        unload();
        CEGUI::NullRenderer::destroySystem();
    }
    const char* name() const override { return "cegui"; }
    void setDataDir(const std::string& dir) override {
        auto* rp =
            static_cast<CEGUI::DefaultResourceProvider*>(CEGUI::System::getSingleton().getResourceProvider());
        rp->setResourceGroupDirectory("layouts", dir + "/");
    }
    std::string fileName(const Scene& s) const override { return s.fileName("cegui", ".layout"); }
    std::string layout(const Scene& s) const override {
        const std::vector<Node> nodes = s.nodes();
        const std::vector<std::vector<int>> children = childLists(nodes);
        std::string out = "<?xml version=\"1.0\" ?>\n<GUILayout version=\"4\">\n";
        out.reserve(nodes.size() * 160);
        write(s, nodes, children, 0, out, "  ");
        return out + "</GUILayout>\n";
    }
    void load(const std::string& file) override {
        m_root = CEGUI::WindowManager::getSingleton().loadLayoutFromFile(file);
        CEGUI::System::getSingleton().getDefaultGUIContext().setRootWindow(m_root);
    }
    void unload() override {
        if (!m_root) return;
        CEGUI::System::getSingleton().getDefaultGUIContext().setRootWindow(nullptr);
        CEGUI::WindowManager::getSingleton().destroyWindow(m_root);
        CEGUI::WindowManager::getSingleton().cleanDeadPool();
        m_root = nullptr;
    }
    void frame() override {
        CEGUI::System& sys = CEGUI::System::getSingleton();
        sys.injectTimePulse(0.016f);
        sys.getDefaultGUIContext().injectTimePulse(0.016f);
        sys.renderAllGUIContexts();
    }
    void invalidateAll() override { m_root->invalidate(true); }
    void hideHalf() override {
        for (size_t i = 1; i < m_root->getChildCount(); i += 2)
            m_root->getChildAtIdx(i)->hide();
    }
    void move(int x, int y) override {
        ctx().injectMousePosition(static_cast<float>(x), static_cast<float>(y));
    }
    void down(int, int) override { ctx().injectMouseButtonDown(CEGUI::LeftButton); }
    void up(int, int) override { ctx().injectMouseButtonUp(CEGUI::LeftButton); }
    bool lookup(const std::vector<int>& chain) override {
        std::string path;
        for (size_t i = 1; i < chain.size(); ++i)
            path += (i > 1 ? "/w" : "w") + std::to_string(chain[i]);
        return m_root->getChild(path) != nullptr;
    }

private:
    static CEGUI::GUIContext& ctx() { return CEGUI::System::getSingleton().getDefaultGUIContext(); }
    static void write(const Scene& s, const std::vector<Node>& nodes,
                      const std::vector<std::vector<int>>& children, int n, std::string& out,
                      const std::string& indent) {
        const char* type = s.isButton(n) ? "TaharezLook/Button" : "DefaultWindow";
        out += indent + "<Window type=\"" + type + "\" name=\"" + (n ? "w" + std::to_string(n) : "screen") +
               "\">\n";
        out += indent + "  <Property name=\"Area\" value=\"" + area(nodes[n]) + "\" />\n";
        for (int c : children[n])
            write(s, nodes, children, c, out, indent + "  ");
        out += indent + "</Window>\n";
    }
    CEGUI::Window* m_root = nullptr;
};

} // namespace

std::unique_ptr<Peer> makePeer() {
    return std::make_unique<CeguiPeer>();
}

} // namespace bench
