// uiview's input: SDL keys become the library's key codes, and a script line it cannot read stops the
// session (the golden sessions run the well-formed ones).
#include <gtest/gtest.h>
#include "script.h"
#include "sdlinput.h"
#include "testkit.h"

TEST(UiviewInput, SdlKeysTranslateAndUnreadableScriptLinesAreRefused) {
    const std::pair<SDL_Keycode, int> keys[] = {
        {SDLK_RETURN, 13},  {SDLK_KP_ENTER, 13}, {SDLK_ESCAPE, 27}, {SDLK_BACKSPACE, 127}, {SDLK_TAB, 9},
        {SDLK_F1, 163},     {SDLK_F10, 172},     {SDLK_F12, 174},   {SDLK_RALT, 136},      {SDLK_LCTRL, 137},
        {SDLK_RSHIFT, 138}, {SDLK_a, 'a'},       {SDLK_SPACE, ' '}, {SDLK_LEFT, 0}};
    for (const auto& [sdl, code] : keys)
        EXPECT_EQ(libraryKey(sdl), code) << sdl;

    testkit::TempDir dir;
    std::vector<ScriptEvent> events;
    for (const char* bad : {"move 10\n", "wait\n", "key\n", "char\n", "jump 1 2\n"})
        EXPECT_FALSE(loadScript(dir.write("bad.script", std::string("png\n") + bad), events)) << bad;
    EXPECT_FALSE(loadScript(dir / "none.script", events));
}
