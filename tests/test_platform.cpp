// The built-in platform helpers.
#include <gtest/gtest.h>
#include "platform.h"
#include "testkit.h"

TEST(Platform, BuiltInBackendRemembersTheCursor) {
    ASSERT_EQ(Platform::backend(), nullptr);
    Platform::ShowCursor(false);
    EXPECT_FALSE(Platform::IsCursorShown());
    Platform::ShowCursor(true);
    EXPECT_TRUE(Platform::IsCursorShown());
    Platform::SetCursorPos(320, 240);
    int x = 0, y = 0;
    Platform::GetCursorPos(x, y);
    EXPECT_EQ(x, 320);
    EXPECT_EQ(y, 240);
    Platform::Sleep(0);
    Platform::Sleep(1);
}

TEST(Platform, AnInstalledBackendTakesOver) {
    Platform::ShowCursor(true);
    {
        testkit::Services services;
        services.platform.setCursor(5, 6);
        Platform::ShowCursor(false);
        int x = 0, y = 0;
        Platform::GetCursorPos(x, y);
        EXPECT_EQ(x, 5);
        EXPECT_EQ(services.platform.shows, std::vector<bool>{false});
    }
    EXPECT_TRUE(Platform::IsCursorShown()); // the built-in state was not touched
}
