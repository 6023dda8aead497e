// The example screens as a game runs them: together they show every instantiable built-in widget type,
// and a click on "options" in the main menu pushes the options dialog, which then stands on top of the
// dialog stack and shows on screen.
#include <gtest/gtest.h>
#include <dirent.h>
#include <unistd.h>
#include <climits>
#include <set>
#include "sdlgfx.h"
#include "uidialog.h"
#include "uisubsystem.h"

namespace {

void collectTypes(uiWidget* w, std::set<std::string>& types) {
    types.insert(w->getType());
    for (const _WidgetList_s* node = w->getChildren(); node; node = node->next)
        collectTypes(node->widget, types);
}

class ExampleScreens : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
        ASSERT_EQ(chdir(GAMEUI_SOURCE_DIR "/examples"), 0); // descriptions name their files from here
        g_gfx = &gfx;
        ui->initialize(nullptr);
    }
    void TearDown() override {
        ui->shutdown();
        delete ui;
        g_gfx = nullptr;
        ASSERT_EQ(chdir(cwd), 0);
    }
    void frames(int count) {
        for (int i = 0; i < count; ++i) {
            ui->render(20);
            gfx.present();
        }
    }
    char cwd[PATH_MAX];
    SdlGfx gfx{".", 800, 600};
    uiSubsystem* ui = new uiSubsystem();
};

TEST_F(ExampleScreens, TogetherUseEveryBuiltInWidgetType) {
    std::set<std::string> types;
    int screens = 0;
    DIR* dir = opendir(".");
    ASSERT_NE(dir, nullptr);
    while (dirent* e = readdir(dir)) {
        const std::string name = e->d_name;
        if (name.size() < 4 || name.compare(name.size() - 3, 3, ".ui") != 0) continue;
        uiWidget* root = ui->loadUI(name.c_str());
        ASSERT_NE(root, nullptr) << name;
        ++screens;
        collectTypes(root, types);
        delete root;
    }
    closedir(dir);
    EXPECT_GE(screens, 5); // entry, levels, loading, menu, options
    for (const char* type :
         {"uiNonVisualWidget", "uiInputHandler", "uiVisualWidget", "uiButton", "uiToggleButton", "uiSprite",
          "uiTextWidget", "uiEntryWidget", "uiRadioButton", "uiRadioGroup", "uiSliderButton", "uiProgressBar",
          "uiParticleSystem", "uiDigitalBanner", "uiDialog", "uiAnimDialog", "uiFlowLayout",
          "uiGameContainer", "uiAnimWidget"})
        EXPECT_EQ(types.count(type), 1u) << "no example screen has a " << type;
}

TEST_F(ExampleScreens, ClickOnOptionsPushesTheOptionsDialogOverTheMenu) {
    uiWidget* root = ui->loadUI("menu.ui");
    ASSERT_NE(root, nullptr);
    ui->setTopLevelWidget(root);
    auto* menu = static_cast<uiDialog*>(root->getWidget("game.menu", 0, true));
    auto* options = static_cast<uiDialog*>(root->getWidget("game.options", 0, true));
    ASSERT_TRUE(menu && options);
    _WidgetMap_s map{};
    map.mouseUpCb = [](uiWidget*, void* dialog, int, int) {
        g_ui->pushDialog(static_cast<uiDialog*>(dialog), true);
        return true;
    };
    root->getWidget("game.menu.options", 0, true)->assignCallbacks(&map, options);
    // The volume thumb's colour where the options dialog comes to rest.
    auto thumbShown = [&] {
        SDL_Color c{};
        return gfx.readPixel(490, 196, c) && c.r == 230 && c.g == 190 && c.b == 60;
    };
    ui->pushDialog(menu, true);
    frames(40); // the menu slides in and settles
    EXPECT_EQ(ui->topDialog(), menu);
    EXPECT_FALSE(thumbShown());
    for (e_uiEvent e : {UIE_MOUSE_MOVE, UIE_MOUSE_DOWN, UIE_MOUSE_UP})
        ui->inputEvent(e, 150, 280, 0);
    frames(40);
    EXPECT_EQ(ui->topDialog(), options);
    EXPECT_TRUE(ui->isDialogPushed(menu));
    EXPECT_TRUE(thumbShown());
    ui->setTopLevelWidget(nullptr);
    delete root;
}

} // namespace
