// Live reload as a designer meets it: a screen read from files in a folder, a file saved while frames
// run, and the rebuilt screen in place with what the player had done to it.
#include <gtest/gtest.h>
#include <algorithm>
#include "testkit.h"
#include "uidevtools.h"
#include "uidialog.h"
#include "uiprogressbar.h"
#include "uisliderbutton.h"
#include "uisubsystem.h"
#include "uitogglebutton.h"

namespace fs = std::filesystem;

namespace {

unsigned long long g_now = 0;

// The screen: a dialog with a slider, a toggle, a bar and a button, the button's look from a scriptlet,
// and an inner dialog with two tab entries.
std::string menu(int playX, const std::string& extra = "") {
    return "menu = uiDialog\n{\n  width = 800\n  height = 600\n"
           "  child volume = uiSliderButton\n  {\n    x = 40\n    width = 20\n    height = 10\n"
           "    minx = 40\n    maxx = 240\n  }\n"
           "  child music = uiToggleButton\n  {\n    y = 40\n    width = 20\n    height = 20\n  }\n"
           "  child bar = uiProgressBar\n  {\n    y = 80\n    width = 100\n    height = 10\n  }\n"
           "  child play = uiButton\n  {\n    x = " +
           std::to_string(playX) + "\n    y = 120\n    #scriptlet look.txt\n  }\n" + extra +
           "  child options = uiDialog\n  {\n    x = 400\n"
           "    child a = uiButton\n    {\n      width = 20\n      height = 20\n      tabentry\n    }\n"
           "    child b = uiButton\n    {\n      y = 40\n      width = 20\n      height = 20\n      "
           "tabentry\n    }\n"
           "  }\n  visible = false\n}\n";
}

// Sprites are read from NAME.png; the service cannot read one again.
struct Assets : uiDevtoolsAssets {
    void files(uiAssetKind kind, const char* name, std::vector<std::string>& out) override {
        if (kind == UIASSET_SPRITE) out.push_back(std::string(name) + ".png");
    }
    bool reload(uiAssetKind, const char* name) override {
        asked.push_back(name);
        return false;
    }
    std::vector<std::string> asked;
};

class LiveReload : public ::testing::Test {
protected:
    void SetUp() override {
        File::setBackend(nullptr); // real files, read through stdio
        fs::current_path(dir.path());
        dir.write("look.txt", "width = 40\nheight = 20\n");
        dir.write("menu.ui", menu(10));
        ui.initialize(nullptr);
        uiDevtoolsOptions o;
        o.inspector = false;
        o.font = "overlay";
        o.panelSprite = "panel";
        o.clock = [](void*) { return g_now; };
        o.wire = [](uiWidget* rebuilt, uiWidget*, void* client) {
            static_cast<LiveReload*>(client)->wire(rebuilt);
        };
        o.client = this;
        o.assets = &assets;
        dt = uiDevtools::enable(o);
        wire(dt->loadUI("menu.ui"));
        ui.setTopLevelWidget(root);
        ui.pushDialog(static_cast<uiDialog*>(root), false);
        ui.pushDialog(static_cast<uiDialog*>(at("menu.options")), false);
        ui.update(16);
    }
    void TearDown() override {
        uiDevtools::disable();
        ui.shutdown();
        ui.setTopLevelWidget(nullptr);
        delete root;
        fs::current_path(home);
    }

    uiWidget* at(const char* path) { return root->getWidget(path, 0, false); }
    void wire(uiWidget* r) {
        root = r;
        _WidgetMap_s map{};
        map.mouseUpCb = [](uiWidget*, void* count, int, int) { return ++*static_cast<int*>(count) > 0; };
        if (uiWidget* play = at("menu.play")) play->assignCallbacks(&map, &clicks);
    }
    // Runs 16 ms frames until a reload or a problem, at most `limit` ms; returns the time it took.
    unsigned long long frames(unsigned long long limit = 400) {
        const unsigned int before = dt->reloads();
        const size_t problems = dt->problems().size();
        const unsigned long long start = g_now;
        while (g_now - start < limit && dt->reloads() == before && dt->problems().size() == problems) {
            g_now += 16;
            dt->frame(16);
            ui.update(16);
        }
        return g_now - start;
    }

    testkit::Services services;
    const fs::path home = fs::current_path();
    // In memory where there is such a folder: a thousand saves to a disk wait for it.
    testkit::TempDir dir{fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::path()};
    Assets assets;
    uiSubsystem ui;
    uiDevtools* dt = nullptr;
    uiWidget* root = nullptr;
    int clicks = 0;
};

TEST_F(LiveReload, SavedScreenIsRebuiltInPlaceKeepingWhatThePlayerDid) {
    static_cast<uiSliderButton*>(at("menu.volume"))->setValue(0.5f);
    static_cast<uiToggleButton*>(at("menu.music"))->setToggle(true);
    static_cast<uiProgressBar*>(at("menu.bar"))->setValue(70, true);
    at("menu.options")->inputEvent(UIE_KEY_DOWN, 0, 0, 9, false, false); // tab from a to b
    ASSERT_TRUE(at("menu.options.b")->getInputFocus());
    uiWidget* old = root;

    dir.write("menu.ui", menu(300).substr(0, 90)); // a save in progress, then the whole text
    for (int i = 0; i < 2; ++i) {
        g_now += 16;
        dt->frame(16);
    }
    EXPECT_TRUE(dt->problems().empty()); // not read before it settles
    dir.write("menu.ui", menu(300));
    EXPECT_LE(frames(), 250u);
    ASSERT_EQ(dt->reloads(), 1u);
    EXPECT_TRUE(dt->problems().empty());
    ASSERT_NE(root, old);
    EXPECT_EQ(ui.getTopLevelWidget(), root);
    EXPECT_EQ(at("menu.play")->rect.x, 300);
    EXPECT_EQ(at("menu.play")->rect.x2, 340); // the scriptlet still applies
    EXPECT_FLOAT_EQ(static_cast<uiSliderButton*>(at("menu.volume"))->getValue(), 0.5f);
    EXPECT_TRUE(static_cast<uiToggleButton*>(at("menu.music"))->getToggle());
    EXPECT_EQ(static_cast<uiProgressBar*>(at("menu.bar"))->value, 70);
    EXPECT_EQ(ui.topDialog(), at("menu.options"));
    EXPECT_TRUE(ui.isDialogPushed(static_cast<uiDialog*>(root)));
    EXPECT_TRUE(at("menu.options.b")->getInputFocus() && !at("menu.options.a")->getInputFocus());

    // The game's callback was wired again: a click on the moved button reaches it.
    ui.popDialog(ui.topDialog(), false);
    ui.update(16);
    for (e_uiEvent e : {UIE_MOUSE_MOVE, UIE_MOUSE_DOWN, UIE_MOUSE_UP})
        ui.inputEvent(e, 310, 125, 0);
    EXPECT_EQ(clicks, 1);

    // A scriptlet edit counts too: the cache is emptied, the new size read. (Its length changes: a save
    // within the same clock tick as the last keeps the file's time.)
    dir.write("look.txt", "width = 160\nheight = 20\n");
    frames();
    EXPECT_EQ(at("menu.play")->rect.x2, 460);

    // A thousand reloads leave nothing behind.
    const long long blocks = services.memory.outstandingBlocks();
    for (int i = 0; i < 1000; ++i) {
        dir.write("menu.ui", menu(i % 2 ? 300 : 1000)); // each a new length: coarse file times
        frames();
    }
    EXPECT_EQ(dt->reloads(), 1002u);
    EXPECT_EQ(services.memory.outstandingBlocks(), blocks) << services.memory.report();
}

TEST_F(LiveReload, BrokenFilesAndUnreadableSpritesKeepTheOldScreenAndAreListedUntilFixed) {
    uiWidget* old = root;
    dir.write("menu.ui", menu(300, "  child #missing.ui\n"));
    frames();
    ASSERT_FALSE(dt->problems().empty());
    EXPECT_EQ(root, old);
    EXPECT_EQ(ui.getTopLevelWidget(), old);
    EXPECT_EQ(dt->problems()[0].rfind("menu.ui:", 0), 0u) << dt->problems()[0];
    EXPECT_NE(dt->problems()[0].find(": error: "), std::string::npos);
    services.gfx.clear();
    dt->draw();
    const std::vector<std::string> shown = services.gfx.texts("print");
    EXPECT_NE(std::find(shown.begin(), shown.end(), dt->problems()[0]), shown.end());

    dir.write("missing.ui", "extra = uiButton\n{\n  x = 5\n}\n"); // the missing include appears
    frames();
    EXPECT_TRUE(dt->problems().empty());
    EXPECT_EQ(dt->reloads(), 1u);
    EXPECT_NE(at("menu.extra"), nullptr);

    fs::remove(dir.path() / "missing.ui"); // and vanishes again
    frames();
    EXPECT_FALSE(dt->problems().empty());
    EXPECT_NE(at("menu.extra"), nullptr);

    // Changed sprites are reloaded through the service, or reported once when it cannot.
    dir.write("pic.png", "first");
    dir.write("menu.ui", menu(300, "  child pic = uiVisualWidget\n  {\n    sprite = \"pic\"\n  }\n"));
    frames();
    ASSERT_NE(at("menu.pic"), nullptr);
    for (const char* picture : {"second", "thirdly"}) { // each a new length: coarse file times
        dir.write("pic.png", picture);
        frames();
    }
    EXPECT_EQ(assets.asked, (std::vector<std::string>{"pic", "pic"}));
    EXPECT_EQ(services.log.count(1, "devtools: the service cannot reload sprites; \"pic\" and any other keep "
                                    "their old contents\f"),
              1)
        << services.log.dump();
    EXPECT_EQ(dt->reloads(), 4u);
    fs::remove(dir.path() / "pic.png"); // unreadable: the screen stays, the file is listed
    frames();
    EXPECT_EQ(dt->problems(), std::vector<std::string>{"pic.png: error: cannot be read"});
    EXPECT_EQ(dt->reloads(), 4u);
}

} // namespace
