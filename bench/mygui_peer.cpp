// MyGUI 3.4 on a render platform of our own that draws nothing: textures and vertex buffers are plain
// memory, a frame fills the vertex buffers of every changed layer and hands them to a target that does
// nothing. Containers are "Widget" with an empty skin, buttons "Button" with a one-texture skin.
#include <MyGUI.h>
#include <MyGUI_DataFileStream.h>
#include <MyGUI_DataManager.h>
#include <MyGUI_IRenderTarget.h>
#include <MyGUI_ITexture.h>
#include <MyGUI_IVertexBuffer.h>
#include <MyGUI_OverlappedLayer.h>
#include <MyGUI_RenderManager.h>
#include <fstream>
#include <map>
#include <vector>
#include "peer.h"

namespace bench {
namespace {

class NullVertexBuffer : public MyGUI::IVertexBuffer {
public:
    void setVertexCount(size_t n) override { m_vertices.resize(n); }
    size_t getVertexCount() const override { return m_vertices.size(); }
    MyGUI::Vertex* lock() override { return m_vertices.data(); }
    void unlock() override {}

private:
    std::vector<MyGUI::Vertex> m_vertices;
};

class NullTexture : public MyGUI::ITexture {
public:
    explicit NullTexture(const std::string& name) : m_name(name) {}
    const std::string& getName() const override { return m_name; }
    void createManual(int w, int h, MyGUI::TextureUsage, MyGUI::PixelFormat) override {
        m_w = w;
        m_h = h;
    }
    void loadFromFile(const std::string&) override {}
    void saveToFile(const std::string&) override {}
    void setShader(const std::string&) override {}
    void destroy() override {}
    void* lock(MyGUI::TextureUsage) override { return nullptr; }
    void unlock() override {}
    bool isLocked() const override { return false; }
    int getWidth() const override { return m_w; }
    int getHeight() const override { return m_h; }
    MyGUI::PixelFormat getFormat() const override { return MyGUI::PixelFormat::R8G8B8A8; }
    MyGUI::TextureUsage getUsage() const override { return MyGUI::TextureUsage::Default; }
    size_t getNumElemBytes() const override { return 4; }

private:
    std::string m_name;
    int m_w = 64, m_h = 64;
};

class NullRenderManager : public MyGUI::RenderManager, public MyGUI::IRenderTarget {
public:
    MyGUI::IVertexBuffer* createVertexBuffer() override { return new NullVertexBuffer; }
    void destroyVertexBuffer(MyGUI::IVertexBuffer* b) override { delete b; }
    MyGUI::ITexture* createTexture(const std::string& name) override {
        auto& t = m_textures[name];
        t = std::make_unique<NullTexture>(name);
        return t.get();
    }
    void destroyTexture(MyGUI::ITexture* t) override { m_textures.erase(t->getName()); }
    MyGUI::ITexture* getTexture(const std::string& name) override {
        auto it = m_textures.find(name);
        return it == m_textures.end() ? nullptr : it->second.get();
    }
    const MyGUI::IntSize& getViewSize() const override { return m_size; }
    MyGUI::VertexColourType getVertexFormat() const override { return MyGUI::VertexColourType::ColourABGR; }
    void setViewSize(int w, int h) override {
        m_size = {w, h};
        onResizeView(m_size);
    }
    void registerShader(const std::string&, const std::string&, const std::string&) override {}
    void begin() override {}
    void end() override {}
    void doRender(MyGUI::IVertexBuffer*, MyGUI::ITexture*, size_t) override {}
    const MyGUI::RenderTargetInfo& getInfo() const override { return m_info; }

    void frame() {
        onFrameEvent(0.016f);
        onRenderToTarget(this, m_update);
        m_update = false;
    }

private:
    std::map<std::string, std::unique_ptr<NullTexture>> m_textures;
    MyGUI::IntSize m_size{kScreenW, kScreenH};
    MyGUI::RenderTargetInfo m_info;
    bool m_update = true;
};

class DirDataManager : public MyGUI::DataManager {
public:
    std::string dir;
    MyGUI::IDataStream* getData(const std::string& name) const override {
        auto* stream = new std::ifstream(getDataPath(name), std::ios::binary);
        if (!*stream) {
            delete stream;
            return nullptr;
        }
        return new MyGUI::DataFileStream(stream);
    }
    void freeData(MyGUI::IDataStream* data) override { delete data; }
    bool isDataExist(const std::string& name) const override {
        return std::ifstream(getDataPath(name)).good();
    }
    const MyGUI::VectorString& getDataListNames(const std::string&) const override { return m_none; }
    const std::string& getDataPath(const std::string& name) const override {
        m_path = dir + "/" + name;
        return m_path;
    }

private:
    MyGUI::VectorString m_none;
    mutable std::string m_path;
};

const char* const kCore = R"(<?xml version="1.0" encoding="UTF-8"?>
<MyGUI type="List">
    <List file="bench_mygui_layers.xml"/>
    <List file="bench_mygui_skins.xml"/>
</MyGUI>
)";
const char* const kLayers = R"(<?xml version="1.0" encoding="UTF-8"?>
<MyGUI type="Layer">
    <Layer name="Main" type="OverlappedLayer"/>
</MyGUI>
)";
const char* const kSkins = R"(<?xml version="1.0" encoding="UTF-8"?>
<MyGUI type="Resource" version="1.1">
    <Resource type="ResourceSkin" name="Empty" size="20 20"/>
    <Resource type="ResourceSkin" name="Button" size="20 20" texture="button.png">
        <BasisSkin type="SubSkin" offset="0 0 20 20" align="Stretch">
            <State name="disabled" offset="0 0 20 20"/>
            <State name="normal" offset="20 0 20 20"/>
            <State name="highlighted" offset="40 0 20 20"/>
            <State name="pushed" offset="0 20 20 20"/>
        </BasisSkin>
    </Resource>
</MyGUI>
)";

class MyguiPeer : public Peer {
public:
    ~MyguiPeer() override {
        if (!m_gui) return;
        unload();
        m_gui->shutdown();
        delete m_gui;
        delete m_render;
        delete m_data;
        delete m_log;
    }
    const char* name() const override { return "mygui"; }
    void setDataDir(const std::string& dir) override {
        writeFile(dir + "/bench_mygui_core.xml", kCore);
        writeFile(dir + "/bench_mygui_layers.xml", kLayers);
        writeFile(dir + "/bench_mygui_skins.xml", kSkins);
        writeFile(dir + "/button.png", "");
        m_log = new MyGUI::LogManager();
        m_log->setSTDOutputEnabled(false);
        m_log->createDefaultSource(dir + "/mygui.log");
        m_data = new DirDataManager;
        m_data->dir = dir;
        m_render = new NullRenderManager;
        m_gui = new MyGUI::Gui;
        m_gui->initialise("bench_mygui_core.xml");
        // A layer takes the pointer only once told so.
        auto* layer =
            static_cast<MyGUI::OverlappedLayer*>(MyGUI::LayerManager::getInstance().getByName("Main"));
        layer->setPick(true);
    }
    std::string fileName(const Scene& s) const override { return s.fileName("mygui", ".layout"); }
    std::string layout(const Scene& s) const override {
        const std::vector<Node> nodes = s.nodes();
        const std::vector<std::vector<int>> children = childLists(nodes);
        std::string out =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<MyGUI type=\"Layout\" version=\"3.2.0\">\n";
        write(s, nodes, children, 0, out, "  ");
        return out + "</MyGUI>\n";
    }
    void load(const std::string& file) override {
        MyGUI::VectorWidgetPtr widgets = MyGUI::LayoutManager::getInstance().loadLayout(file);
        m_root = widgets.empty() ? nullptr : widgets.front();
        m_file = file;
    }
    // MyGUI keeps a loaded layout file parsed, as a resource named after it, and builds later loads of the
    // file from that: dropping it makes every load read the file, as the other libraries' loads do.
    void unload() override {
        if (m_root) MyGUI::WidgetManager::getInstance().destroyWidget(m_root);
        m_root = nullptr;
        MyGUI::ResourceManager::getInstance().removeByName(m_file);
    }
    void frame() override { m_render->frame(); }
    // Moving the root moves every widget: every vertex must be computed again.
    void invalidateAll() override {
        m_shift = !m_shift;
        m_root->setPosition(m_shift ? 1 : 0, 0);
    }
    void hideHalf() override {
        for (size_t i = 1; i < m_root->getChildCount(); i += 2)
            m_root->getChildAt(i)->setVisible(false);
    }
    void move(int x, int y) override { MyGUI::InputManager::getInstance().injectMouseMove(x, y, 0); }
    void down(int x, int y) override {
        MyGUI::InputManager::getInstance().injectMousePress(x, y, MyGUI::MouseButton::Left);
    }
    void up(int x, int y) override {
        MyGUI::InputManager::getInstance().injectMouseRelease(x, y, MyGUI::MouseButton::Left);
    }
    // MyGUI looks widgets up by name in a subtree, not by path.
    bool lookup(const std::vector<int>& chain) override {
        return m_root->findWidget("w" + std::to_string(chain.back())) != nullptr;
    }

private:
    static void write(const Scene& s, const std::vector<Node>& nodes,
                      const std::vector<std::vector<int>>& children, int n, std::string& out,
                      const std::string& indent) {
        const Node& node = nodes[n];
        const bool button = s.isButton(n);
        out += indent + "<Widget type=\"" + (button ? "Button" : "Widget") + "\" skin=\"" +
               (button ? "Button" : "Empty") + "\" position=\"" + std::to_string(node.x) + " " +
               std::to_string(node.y) + " " + std::to_string(node.w) + " " + std::to_string(node.h) + "\"" +
               (n == 0 ? " layer=\"Main\"" : "") + " name=\"" + (n ? "w" + std::to_string(n) : "screen") +
               "\"";
        if (children[n].empty()) {
            out += "/>\n";
            return;
        }
        out += ">\n";
        for (int c : children[n])
            write(s, nodes, children, c, out, indent + "  ");
        out += indent + "</Widget>\n";
    }

    MyGUI::LogManager* m_log = nullptr;
    DirDataManager* m_data = nullptr;
    NullRenderManager* m_render = nullptr;
    MyGUI::Gui* m_gui = nullptr;
    MyGUI::Widget* m_root = nullptr;
    std::string m_file;
    bool m_shift = false;
};

} // namespace

std::unique_ptr<Peer> makePeer() {
    return std::make_unique<MyguiPeer>();
}

} // namespace bench
