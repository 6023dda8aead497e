// The example screens, and the game's when its folder is there, found at start-up and loaded with the
// test kit's recording services, then played as a player and a game would: pointer moves, presses and
// releases, key presses and releases, typed characters, frames of any length, dialogs pushed and popped,
// and the screen thrown away and loaded again. The input's first byte picks the screen; each later step
// takes a byte for its kind and the bytes its values need. Nothing may crash, leak or trip a sanitizer,
// and every log message ends with its form feed.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>
#include "fuzzkit.h"
#include "uidialog.h"

namespace fs = std::filesystem;

namespace {

// One folder of screens: its descriptions and scriptlets by the names they are opened with.
struct Folder {
    std::vector<std::pair<std::string, std::string>> files;
    std::vector<std::string> screens;
};

Folder readFolder(const fs::path& dir, bool recursive) {
    Folder folder;
    auto take = [&](const fs::directory_entry& e) {
        const std::string ext = e.path().extension().string();
        if (!e.is_regular_file() || (ext != ".ui" && ext != ".scr")) return;
        std::ifstream in(e.path(), std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        const std::string name = e.path().lexically_relative(dir).generic_string();
        folder.files.emplace_back(name, text.str());
        if (ext == ".ui") folder.screens.push_back(name);
    };
    std::error_code ec; // a folder that is not there has no screens
    if (recursive)
        for (const fs::directory_entry& e : fs::recursive_directory_iterator(dir, ec))
            take(e);
    else
        for (const fs::directory_entry& e : fs::directory_iterator(dir, ec))
            take(e);
    std::sort(folder.screens.begin(), folder.screens.end()); // the same input picks the same screen anywhere
    return folder;
}

// The screens, each with the folder its includes and scriptlets come from; read once.
struct Screen {
    const Folder* folder;
    std::string file;
};

const std::vector<Screen>& screens() {
    static const std::vector<Folder> folders = {readFolder(GAMEUI_EXAMPLES_DIR, false),
                                                readFolder(GAMEUI_EXAMPLES_DIR "/game", true)};
    static const std::vector<Screen> all = [] {
        std::vector<Screen> list;
        for (const Folder& f : folders)
            for (const std::string& s : f.screens)
                list.push_back({&f, s});
        return list;
    }();
    return all;
}

// Keys a game sends: Enter (and the keypad's), Tab, Escape, Space, Backspace, the arrows, F1 to F10,
// Alt, Ctrl and Shift; any other byte goes as it is.
const int kKeys[] = {13, 154, 9, 27, 32, 127, 8, 37, 38, 39, 40, 163, 164, 172, 136, 137, 138, 'a', 'P'};
const unsigned int kFrames[] = {0, 1, 16, 20, 33, 100, 250, 500, 5000};

class Player {
public:
    Player(uiSubsystem& ui, const std::string& file) : m_ui(ui), m_file(file) { load(); }
    ~Player() { unload(); }

    void step(fuzzkit::Bytes& in) {
        switch (in.u8() % 12) {
        case 0:
            pointer(UIE_MOUSE_MOVE, in);
            break;
        case 1:
            pointer(UIE_MOUSE_DOWN, in);
            break;
        case 2:
            pointer(UIE_MOUSE_UP, in);
            break;
        case 3:
            m_ui.inputEvent(UIE_KEY_DOWN, 0, 0, key(in));
            break;
        case 4:
            m_ui.inputEvent(UIE_KEY_UP, 0, 0, key(in));
            break;
        case 5:
            m_ui.inputEvent(UIE_CHAR, 0, 0,
                            in.u8() & 1 ? static_cast<int>(in.u32()) : static_cast<int>(in.u8()));
            break;
        case 6:
            m_ui.update(frameTime(in));
            break;
        case 7:
            m_ui.render(frameTime(in));
            break;
        case 8:
            if (uiDialog* d = dialog(in)) m_ui.pushDialog(d, in.u8() & 1);
            break;
        case 9:
            if (uiDialog* d = dialog(in)) m_ui.popDialog(d, in.u8() & 1);
            break;
        case 10:
            m_ui.clearDialogStack(in.u8() & 1);
            break;
        default:
            unload();
            load();
        }
    }

private:
    void load() {
        m_root = m_ui.loadUI(m_file.c_str());
        m_ui.setTopLevelWidget(m_root);
        m_dialogs.clear();
        std::function<void(uiWidget*)> collect = [&](uiWidget* w) {
            if (w->isType("uiDialog")) m_dialogs.push_back(static_cast<uiDialog*>(w));
            for (const _WidgetList_s* c = w->getChildren(); c; c = c->next)
                collect(c->widget);
        };
        if (m_root) collect(m_root);
    }

    // As a game leaves a screen: its dialogs and the input focus they held go before the tree.
    void unload() {
        m_ui.clearPendingDialogs();
        m_ui.clearDialogStack(false);
        m_ui.update(0);
        while (m_ui.getInputFocusWidget())
            m_ui.popInputFocusWidget();
        m_ui.setTopLevelWidget(nullptr);
        delete m_root;
        m_root = nullptr;
    }

    void pointer(e_uiEvent kind, fuzzkit::Bytes& in) {
        const int x = static_cast<int>(in.u16() % 1000) - 100;
        const int y = static_cast<int>(in.u16() % 800) - 100;
        m_ui.inputEvent(kind, x, y, 0);
    }
    static int key(fuzzkit::Bytes& in) {
        const unsigned int b = in.u8();
        return b < 128 ? kKeys[b % (sizeof kKeys / sizeof kKeys[0])] : static_cast<int>(b);
    }
    static unsigned int frameTime(fuzzkit::Bytes& in) {
        const unsigned int b = in.u8();
        return b < 200 ? kFrames[b % (sizeof kFrames / sizeof kFrames[0])] : in.u16();
    }
    uiDialog* dialog(fuzzkit::Bytes& in) {
        const unsigned int pick = in.u8();
        return m_dialogs.empty() ? nullptr : m_dialogs[pick % m_dialogs.size()];
    }

    uiSubsystem& m_ui;
    std::string m_file;
    uiWidget* m_root = nullptr;
    std::vector<uiDialog*> m_dialogs;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::vector<Screen>& all = screens();
    if (all.empty() || size == 0) return 0;
    fuzzkit::Bytes in(data, size);
    const Screen& screen = all[in.u8() % all.size()];
    testkit::Services svc;
    for (const auto& file : screen.folder->files)
        svc.files.add(file.first, file.second);
    {
        uiSubsystem ui;
        ui.initialize(nullptr);
        {
            Player player(ui, screen.file);
            for (int steps = 0; in.more() && steps < 2000; ++steps) {
                svc.gfx.clear(); // the draws are not looked at: keep memory flat over long inputs
                player.step(in);
            }
        }
        ui.shutdown();
    }
    uiWidget::s_freeScripletCache();
    fuzzkit::checkClean(svc);
    return 0;
}
