// The example screens together show every instantiable built-in widget type: each examples/*.ui is
// loaded as uiview loads it, and the types found in the trees must cover the built-in list.
#include <gtest/gtest.h>
#include <dirent.h>
#include <unistd.h>
#include <climits>
#include <set>
#include <string>
#include "sdlgfx.h"
#include "uisubsystem.h"
#include "uiwidget.h"

namespace {

void collectTypes(uiWidget* w, std::set<std::string>& types) {
    types.insert(w->getType());
    for (const _WidgetList_s* node = w->getChildren(); node; node = node->next)
        collectTypes(node->widget, types);
}

} // namespace

TEST(ExampleScreens, TogetherUseEveryBuiltInWidgetType) {
    char cwd[PATH_MAX];
    ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
    ASSERT_EQ(chdir(GAMEUI_SOURCE_DIR "/examples"), 0); // descriptions name their files from here
    std::set<std::string> types;
    int screens = 0;
    {
        SdlGfx gfx(".", 800, 600);
        g_gfx = &gfx;
        auto* ui = new uiSubsystem();
        ui->initialize(nullptr);
        DIR* dir = opendir(".");
        ASSERT_NE(dir, nullptr);
        while (dirent* e = readdir(dir)) {
            const std::string name = e->d_name;
            if (name.size() < 4 || name.compare(name.size() - 3, 3, ".ui") != 0) continue;
            uiWidget* root = ui->loadUI(name.c_str());
            EXPECT_NE(root, nullptr) << name;
            if (!root) continue;
            ++screens;
            collectTypes(root, types);
            delete root;
        }
        closedir(dir);
        ui->shutdown();
        delete ui;
        g_gfx = nullptr;
    }
    ASSERT_EQ(chdir(cwd), 0);
    EXPECT_GE(screens, 5); // entry, levels, loading, menu, options
    for (const char* type :
         {"uiNonVisualWidget", "uiInputHandler", "uiVisualWidget", "uiButton", "uiToggleButton", "uiSprite",
          "uiTextWidget", "uiEntryWidget", "uiRadioButton", "uiRadioGroup", "uiSliderButton", "uiProgressBar",
          "uiParticleSystem", "uiDigitalBanner", "uiDialog", "uiAnimDialog", "uiFlowLayout",
          "uiGameContainer", "uiAnimWidget"})
        EXPECT_EQ(types.count(type), 1u) << "no example screen has a " << type;
}
