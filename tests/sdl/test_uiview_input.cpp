// uiview's input: SDL keys become the library's key codes, and session scripts become timed events.
#include <gtest/gtest.h>
#include <unistd.h>
#include <cstdio>
#include <fstream>
#include "script.h"
#include "sdlinput.h"

TEST(UiviewInput, SdlKeysTranslateAndScriptLinesBecomeEventsAtTheirTime) {
    const std::pair<SDL_Keycode, int> keys[] = {
        {SDLK_RETURN, 13},  {SDLK_KP_ENTER, 13}, {SDLK_ESCAPE, 27}, {SDLK_BACKSPACE, 127}, {SDLK_TAB, 9},
        {SDLK_F1, 163},     {SDLK_F10, 172},     {SDLK_F12, 174},   {SDLK_RALT, 136},      {SDLK_LCTRL, 137},
        {SDLK_RSHIFT, 138}, {SDLK_a, 'a'},       {SDLK_SPACE, ' '}, {SDLK_LEFT, 0}};
    for (const auto& [sdl, code] : keys)
        EXPECT_EQ(libraryKey(sdl), code) << sdl;

    char path[] = "/tmp/gameui_script_XXXXXX";
    const int fd = mkstemp(path);
    ASSERT_NE(fd, -1);
    close(fd);
    std::ofstream(path)
        << "move 10 20  # pointer\nwait 100\ndown 10 20\nkey 13\nchar ab\nwait 50\npng\nup 1 2\n";
    std::vector<ScriptEvent> events;
    ASSERT_TRUE(loadScript(path, events));
    ASSERT_EQ(events.size(), 7u);
    EXPECT_TRUE(events[0].kind == ScriptEvent::Move && events[0].time == 0u && events[0].y == 20);
    EXPECT_TRUE(events[1].kind == ScriptEvent::Down && events[1].time == 100u && events[2].key == 13);
    EXPECT_TRUE(events[3].kind == ScriptEvent::Char && events[4].key == 'b' &&
                events[5].kind == ScriptEvent::Png);
    EXPECT_EQ(events[6].time, 150u);
    std::ofstream(path) << "move 10\n"; // a coordinate missing
    events.clear();
    EXPECT_FALSE(loadScript(path, events));
    std::remove(path);
}
