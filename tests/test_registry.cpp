// The widget type registry: ids, allocation by type name, registration by games, type tests.
#include <gtest/gtest.h>
#include <cstdlib>
#include <string>
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

uiWidget* noMemory() {
    return nullptr;
}

TEST(Registry, TypeIdsAreExactSlotIndicesAndTheBaseHasNone) {
    testkit::Services svc;
    EXPECT_EQ(uiWidget::getTypeId("uiNonVisualWidget"), 1);
    EXPECT_EQ(uiWidget::getTypeId("uiInputHandler"), 2);
    EXPECT_EQ(uiWidget::getTypeId("uiWidget"), 0);
    EXPECT_EQ(uiWidget::getTypeId("UINONVISUALWIDGET"), 0);
    EXPECT_EQ(uiWidget::getTypeId(""), 0);
    EXPECT_EQ(uiWidget::getTypeId("nosuch"), 0);
}

TEST(Registry, AllocationByNameCutsLongNamesAndReportsEachFailure) {
    testkit::Services svc;
    uiWidget* w = uiWidget::allocWidget("a-name-of-exactly-forty-characters-long", "uiNonVisualWidget");
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(std::string(w->name), std::string("a-name-of-exactly-forty-charact"));
    EXPECT_EQ(w->flags, 0u);
    EXPECT_EQ(w->getParent(), nullptr);
    delete w;

    EXPECT_EQ(uiWidget::allocWidget("ok", "uiWidget"), nullptr);
    EXPECT_TRUE(svc.log.has(2, "...attempt to instance an invalid ui type: \"uiWidget\"\f"));
    EXPECT_EQ(uiWidget::allocWidget("a", "UINONVISUALWIDGET"), nullptr);
    EXPECT_TRUE(svc.log.has(2, "...attempt to instance an invalid ui type: \"UINONVISUALWIDGET\"\f"));

    svc.memory.failAt(0);
    EXPECT_EQ(uiWidget::allocWidget("ok", "uiInputHandler"), nullptr);
    EXPECT_TRUE(svc.log.has(2, "...Out of memory allocating widget: ok of type uiInputHandler\f"));
    EXPECT_EQ(svc.memory.outstandingBlocks(), 0);
}

// Every built-in type: its slot, its own name, and the type tests of its parent (in any case).
TEST(Registry, BuiltInTypesKnowTheirSlotNameAndAncestry) {
    testkit::Services svc;
    const struct {
        const char* type;
        int id;
        const char* parent;
        const char* notA;
    } types[] = {
        {"uiNonVisualWidget", 1, "UIWIDGET", "uiVisualWidget"},
        {"uiInputHandler", 2, "uinonvisualwidget", "uiVisualWidget"},
        {"uiVisualWidget", 3, "uiWidget", "uiNonVisualWidget"},
        {"uiButton", 4, "UIVISUALWIDGET", "uiToggleButton"},
        {"uiToggleButton", 5, "uiButton", "uiRadioButton"},
        {"uiSprite", 6, "uiVisualWidget", "uiButton"},
        {"uiTextWidget", 7, "uiWidget", "uiVisualWidget"},
        {"uiEntryWidget", 8, "UITEXTWIDGET", "uiVisualWidget"},
        {"uiRadioButton", 9, "uibutton", "uiToggleButton"},
        {"uiRadioGroup", 10, "uiNonVisualWidget", "uiButton"},
        {"uiSliderButton", 11, "uiButton", "uiProgressBar"},
        {"uiProgressBar", 12, "uiVisualWidget", "uiButton"},
        {"uiParticleSystem", 13, "uiWidget", "uiVisualWidget"},
        {"uiDigitalBanner", 14, "uiWidget", "uiTextWidget"},
        {"uiDialog", 15, "uiNonVisualWidget", "uiAnimDialog"},
        {"uiAnimDialog", 16, "uiDialog", "uiVisualWidget"},
        {"uiFlowLayout", 17, "uiNonVisualWidget", "uiDialog"},
        {"uiGameContainer", 18, "uiNonVisualWidget", "uiDialog"},
        {"uiAnimWidget", 19, "uiVisualWidget", "uiDialog"},
    };
    for (const auto& t : types) {
        SCOPED_TRACE(t.type);
        EXPECT_EQ(uiWidget::getTypeId(t.type), t.id);
        uiWidget* w = uiWidget::allocWidget("w", t.type);
        ASSERT_NE(w, nullptr);
        EXPECT_STREQ(w->getType(), t.type);
        EXPECT_TRUE(w->isType(t.type));
        EXPECT_TRUE(w->isType(t.parent));
        EXPECT_TRUE(w->isType("uiwidget"));
        EXPECT_FALSE(w->isType(t.notA));
        delete w;
    }
}

// Registration changes the process-wide table for good, and other tests register game types of their
// own: each scenario runs in a freshly started copy of the test program ("threadsafe" death tests
// re-execute it), so it sees the built-in table only.
TEST(Registry, GameTypesFillTheTableUpToItsEndMark) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            testkit::Services svc;
            uiSubsystem::s_registerWidget("GameWidget", &GameWidget::make);
            const int first = uiWidget::getTypeId("GameWidget");
            uiWidget* w = uiWidget::allocWidget("g", "GameWidget");
            const bool madeGameWidget =
                w && std::string(w->getType()) == "GameWidget" && w->isType("uiNonVisualWidget");
            delete w;

            uiSubsystem::s_registerWidget("uiNonVisualWidget", &GameWidget::make);
            uiWidget* builtIn = uiWidget::allocWidget("b", "uiNonVisualWidget");
            const bool keptBuiltIn =
                std::string(builtIn->getType()) == "uiNonVisualWidget" &&
                svc.log.has(2, "uiSubsystem::s_registerWidget: uiNonVisualWidget already "
                               "registered. Skipping.\f");
            delete builtIn;

            for (int i = 1; i < 235; ++i)
                uiSubsystem::s_registerWidget(("Game" + std::to_string(i)).c_str(), &GameWidget::make);
            const int last = uiWidget::getTypeId("Game234");
            svc.log.clear();
            uiSubsystem::s_registerWidget("OneTooMany", &GameWidget::make);
            const bool full =
                svc.log.has(2,
                            "uiSubsystem::s_registerWidget: Maximum Widget Count Exceeded: OneTooMany\f") &&
                uiWidget::getTypeId("OneTooMany") == 0;
            std::exit(first == 20 && madeGameWidget && keptBuiltIn && last == 254 && full ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(Registry, LongTypeNamesAreCutAndNullAllocatorsRefused) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            testkit::Services svc;
            uiSubsystem::s_registerWidget("AVeryLongGameWidgetTypeNameOfForty", &GameWidget::make);
            const bool cut = uiWidget::getTypeId("AVeryLongGameWidgetTypeNameOfFo") == 20;
            uiSubsystem::s_registerWidget("Nothing", nullptr);
            uiSubsystem::s_registerWidget("Empty", &noMemory);
            const bool refused =
                uiWidget::getTypeId("Nothing") == 0 && uiWidget::getTypeId("Empty") == 21 &&
                svc.log.has(2, "uiSubsystem::s_registerWidget: Nothing has no allocator. Skipping.\f");
            const bool reported = uiWidget::allocWidget("e", "Empty") == nullptr &&
                                  svc.log.has(2, "...Out of memory allocating widget: e of type Empty\f");
            std::exit(cut && refused && reported ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
