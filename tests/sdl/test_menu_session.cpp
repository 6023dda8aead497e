// The main menu example driven as a game would: a click on "options" pushes the options dialog, which
// then stands on top of the dialog stack and shows on screen.
#include <gtest/gtest.h>
#include <unistd.h>
#include <climits>
#include "sdlgfx.h"
#include "uidialog.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace {

struct Menu {
    uiSubsystem* ui;
    uiDialog* options;
};

bool openOptions(uiWidget*, void* client, int, int) {
    auto* menu = static_cast<Menu*>(client);
    menu->ui->pushDialog(menu->options, true);
    return true;
}

void frames(uiSubsystem& ui, SdlGfx& gfx, int count) {
    for (int i = 0; i < count; ++i) {
        ui.render(20);
        gfx.present();
    }
}

bool isThumbColour(SdlGfx& gfx, int x, int y) {
    SDL_Color c{};
    return gfx.readPixel(x, y, c) && c.r == 230 && c.g == 190 && c.b == 60;
}

} // namespace

TEST(MenuSession, ClickOnOptionsPushesTheOptionsDialogOverTheMenu) {
    char cwd[PATH_MAX];
    ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
    ASSERT_EQ(chdir(GAMEUI_SOURCE_DIR "/examples"), 0); // descriptions name their files from here
    {
        SdlGfx gfx(".", 800, 600);
        g_gfx = &gfx;
        auto* ui = new uiSubsystem();
        ui->initialize(nullptr);
        uiWidget* root = ui->loadUI("menu.ui");
        ASSERT_NE(root, nullptr);
        ui->setTopLevelWidget(root);
        auto* menuDialog = static_cast<uiDialog*>(root->getWidget("game.menu", 0, true));
        Menu menu{ui, static_cast<uiDialog*>(root->getWidget("game.options", 0, true))};
        ASSERT_TRUE(menuDialog && menu.options);
        _WidgetMap_s map{};
        map.mouseUpCb = openOptions;
        root->getWidget("game.menu.options", 0, true)->assignCallbacks(&map, &menu);

        ui->pushDialog(menuDialog, true);
        frames(*ui, gfx, 40); // the menu slides in and settles
        EXPECT_EQ(ui->topDialog(), menuDialog);
        EXPECT_FALSE(isThumbColour(gfx, 490, 196));

        ui->inputEvent(UIE_MOUSE_MOVE, 150, 280, 0);
        ui->inputEvent(UIE_MOUSE_DOWN, 150, 280, 0);
        ui->inputEvent(UIE_MOUSE_UP, 150, 280, 0);
        frames(*ui, gfx, 40);
        EXPECT_EQ(ui->topDialog(), menu.options);
        EXPECT_TRUE(ui->isDialogPushed(menuDialog));
        EXPECT_TRUE(isThumbColour(gfx, 490, 196)); // the volume thumb where the dialog came to rest

        ui->shutdown();
        delete root;
        delete ui;
        g_gfx = nullptr;
    }
    ASSERT_EQ(chdir(cwd), 0);
}
