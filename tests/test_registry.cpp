// The widget type registry: ids, allocation by type name, registration by games, type tests.
#include <gtest/gtest.h>
#include <cstdlib>
#include <memory>
#include "testkit.h"
#include "uinonvisualwidget.h"
#include "uisubsystem.h"

namespace {

class GameWidget : public uiNonVisualWidget {
public:
    static uiWidget* make() { return new GameWidget(); }
    const char* getType() override { return "GameWidget"; }
    bool isType(const char* t) override {
        return s_namesEqual(t, "GameWidget") || uiNonVisualWidget::isType(t);
    }
};

// Every built-in type at its slot, with its own name and the type tests of its parent (in any case).
TEST(Registry, BuiltInTypesKnowTheirSlotNameAndAncestryAndAllocationReportsFailures) {
    testkit::Services svc;
    const char* const types[][3] = {
        {"uiNonVisualWidget", "UIWIDGET", "uiVisualWidget"},
        {"uiInputHandler", "uinonvisualwidget", "uiVisualWidget"},
        {"uiVisualWidget", "uiWidget", "uiNonVisualWidget"},
        {"uiButton", "UIVISUALWIDGET", "uiToggleButton"},
        {"uiToggleButton", "uiButton", "uiRadioButton"},
        {"uiSprite", "uiVisualWidget", "uiButton"},
        {"uiTextWidget", "uiWidget", "uiVisualWidget"},
        {"uiEntryWidget", "UITEXTWIDGET", "uiVisualWidget"},
        {"uiRadioButton", "uibutton", "uiToggleButton"},
        {"uiRadioGroup", "uiNonVisualWidget", "uiButton"},
        {"uiSliderButton", "uiButton", "uiProgressBar"},
        {"uiProgressBar", "uiVisualWidget", "uiButton"},
        {"uiParticleSystem", "uiWidget", "uiVisualWidget"},
        {"uiDigitalBanner", "uiWidget", "uiTextWidget"},
        {"uiDialog", "uiNonVisualWidget", "uiAnimDialog"},
        {"uiAnimDialog", "uiDialog", "uiVisualWidget"},
        {"uiFlowLayout", "uiNonVisualWidget", "uiDialog"},
        {"uiGameContainer", "uiNonVisualWidget", "uiDialog"},
        {"uiAnimWidget", "uiVisualWidget", "uiDialog"},
    };
    for (int id = 1; id <= 19; ++id) {
        const auto& [type, parent, notA] = types[id - 1];
        EXPECT_EQ(uiWidget::getTypeId(type), id);
        const std::unique_ptr<uiWidget> w(uiWidget::allocWidget("w", type));
        ASSERT_NE(w, nullptr);
        EXPECT_STREQ(w->getType(), type);
        EXPECT_TRUE(w->isType(type) && w->isType(parent) && w->isType("uiwidget") && !w->isType(notA))
            << type;
    }
    for (const char* unknown : {"uiWidget", "UINONVISUALWIDGET", "", "nosuch"})
        EXPECT_EQ(uiWidget::getTypeId(unknown), 0);

    uiWidget* w = uiWidget::allocWidget("a-name-of-exactly-forty-characters-long", "uiNonVisualWidget");
    EXPECT_STREQ(w->name, "a-name-of-exactly-forty-charact");
    EXPECT_EQ(w->flags, 0u);
    delete w;
    EXPECT_EQ(uiWidget::allocWidget("ok", "uiWidget"), nullptr);
    svc.memory.failAt(0);
    EXPECT_EQ(uiWidget::allocWidget("ok", "uiInputHandler"), nullptr);
    EXPECT_EQ(svc.log.dump(), "2: ...attempt to instance an invalid ui type: \"uiWidget\"\f\n"
                              "2: ...Out of memory allocating widget: ok of type uiInputHandler\f\n");
    EXPECT_EQ(svc.memory.outstandingBlocks(), 0);
}

// Registration changes the process-wide table for good, and other tests register game types of their
// own: the scenario runs in a freshly started copy of the test program ("threadsafe" death tests
// re-execute it), so it sees the built-in table only.
TEST(Registry, GameTypesFillTheTableUpToItsEndMark) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            testkit::Services svc;
            uiSubsystem::s_registerWidget("AVeryLongGameWidgetTypeNameOfForty", &GameWidget::make); // cut
            uiSubsystem::s_registerWidget("uiNonVisualWidget", &GameWidget::make); // kept built in
            uiSubsystem::s_registerWidget("Nothing", nullptr);
            for (int i = 1; i <= 234; ++i)
                uiSubsystem::s_registerWidget(("Game" + std::to_string(i)).c_str(), &GameWidget::make);
            uiSubsystem::s_registerWidget("OneTooMany", &GameWidget::make);
            uiWidget* game = uiWidget::allocWidget("g", "AVeryLongGameWidgetTypeNameOfFo");
            uiWidget* builtIn = uiWidget::allocWidget("b", "uiNonVisualWidget"); // the process ends with them
            const std::string expected =
                "2: uiSubsystem::s_registerWidget: uiNonVisualWidget already registered. Skipping.\f\n"
                "2: uiSubsystem::s_registerWidget: Nothing has no allocator. Skipping.\f\n"
                "2: uiSubsystem::s_registerWidget: Maximum Widget Count Exceeded: OneTooMany\f\n";
            std::exit(game->isType("GameWidget") && game->isType("uiNonVisualWidget") &&
                              !builtIn->isType("GameWidget") && uiWidget::getTypeId("Game234") == 254 &&
                              uiWidget::getTypeId("OneTooMany") == 0 && svc.log.dump() == expected
                          ? 0
                          : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
