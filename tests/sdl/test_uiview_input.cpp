// uiview's input: SDL keys become the library's key codes, and session scripts become timed events.
#include <gtest/gtest.h>
#include <unistd.h>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include "script.h"
#include "sdlinput.h"

TEST(UiviewInput, SdlKeysTranslateToTheLibrarysCodes) {
    EXPECT_EQ(libraryKey(SDLK_RETURN), 13);
    EXPECT_EQ(libraryKey(SDLK_KP_ENTER), 13);
    EXPECT_EQ(libraryKey(SDLK_ESCAPE), 27);
    EXPECT_EQ(libraryKey(SDLK_BACKSPACE), 127);
    EXPECT_EQ(libraryKey(SDLK_TAB), 9);
    EXPECT_EQ(libraryKey(SDLK_F1), 163);
    EXPECT_EQ(libraryKey(SDLK_F10), 172);
    EXPECT_EQ(libraryKey(SDLK_F12), 174);
    EXPECT_EQ(libraryKey(SDLK_RALT), 136);
    EXPECT_EQ(libraryKey(SDLK_LCTRL), 137);
    EXPECT_EQ(libraryKey(SDLK_RSHIFT), 138);
    EXPECT_EQ(libraryKey(SDLK_a), 'a');
    EXPECT_EQ(libraryKey(SDLK_SPACE), ' ');
    EXPECT_EQ(libraryKey(SDLK_LEFT), 0);
}

TEST(UiviewInput, ScriptLinesBecomeEventsAtTheirTime) {
    char path[] = "/tmp/gameui_script_XXXXXX";
    const int fd = mkstemp(path);
    ASSERT_NE(fd, -1);
    close(fd);
    std::ofstream(path)
        << "move 10 20  # pointer\nwait 100\ndown 10 20\nkey 13\nchar ab\nwait 50\npng\nup 1 2\n";
    std::vector<ScriptEvent> events;
    ASSERT_TRUE(loadScript(path, events));
    ASSERT_EQ(events.size(), 7u);
    EXPECT_EQ(events[0].kind, ScriptEvent::Move);
    EXPECT_EQ(events[0].time, 0u);
    EXPECT_EQ(events[0].y, 20);
    EXPECT_EQ(events[1].kind, ScriptEvent::Down);
    EXPECT_EQ(events[1].time, 100u);
    EXPECT_EQ(events[2].key, 13);
    EXPECT_EQ(events[3].kind, ScriptEvent::Char);
    EXPECT_EQ(events[4].key, 'b');
    EXPECT_EQ(events[5].kind, ScriptEvent::Png);
    EXPECT_EQ(events[6].time, 150u);

    std::ofstream(path) << "move 10\n"; // a coordinate missing
    events.clear();
    EXPECT_FALSE(loadScript(path, events));
    std::remove(path);
}
