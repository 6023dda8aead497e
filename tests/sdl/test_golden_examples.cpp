// Golden images: the example sessions and the game's rendered off screen match the committed reference
// frames.
#include <SDL_image.h>
#include <gtest/gtest.h>
#include <fstream>
#include <sstream>
#include "testkit.h"

namespace fs = std::filesystem;

namespace {

// Channels may differ by this much (rounding of scaled or blended pixels) ...
constexpr int kChannelTolerance = 8;
// ... and this share of pixels may differ by more.
constexpr double kPixelShare = 0.002;

// Share of pixels differing by more than the tolerance; 1 when the pictures cannot be compared.
double differingShare(const std::string& a, const std::string& b) {
    SDL_Surface* sa = IMG_Load(a.c_str());
    SDL_Surface* sb = IMG_Load(b.c_str());
    SDL_Surface* ca = sa ? SDL_ConvertSurfaceFormat(sa, SDL_PIXELFORMAT_RGBA32, 0) : nullptr;
    SDL_Surface* cb = sb ? SDL_ConvertSurfaceFormat(sb, SDL_PIXELFORMAT_RGBA32, 0) : nullptr;
    double share = 1.0;
    if (ca && cb && ca->w == cb->w && ca->h == cb->h) {
        long differing = 0;
        for (int y = 0; y < ca->h; ++y) {
            const auto* ra = static_cast<const Uint8*>(ca->pixels) + y * ca->pitch;
            const auto* rb = static_cast<const Uint8*>(cb->pixels) + y * cb->pitch;
            for (int x = 0; x < ca->w * 4; x += 4)
                differing += std::abs(ra[x] - rb[x]) > kChannelTolerance ||
                             std::abs(ra[x + 1] - rb[x + 1]) > kChannelTolerance ||
                             std::abs(ra[x + 2] - rb[x + 2]) > kChannelTolerance;
        }
        share = static_cast<double>(differing) / (static_cast<double>(ca->w) * ca->h);
    }
    for (SDL_Surface* s : {sa, sb, ca, cb})
        SDL_FreeSurface(s);
    return share;
}

// The file's text, trailing blanks and newlines cut.
std::string readAll(const std::string& path) {
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    std::string s = text.str();
    return s.substr(0, s.find_last_not_of(" \n") + 1);
}

// Runs a session (its frames written to @OUT@) from the project's folder, and compares every golden frame
// of tests/golden/<name> with the session's. The session must run clean: a missing sound, sprite or font
// is logged as a warning.
void expectSessionMatches(const std::string& name, std::string cmd) {
    const std::string golden = GAMEUI_SOURCE_DIR "/tests/golden/" + name;
    testkit::TempDir out;
    for (size_t at; (at = cmd.find("@OUT@")) != std::string::npos;)
        cmd.replace(at, 5, out.path().string());
    cmd = "cd " GAMEUI_SOURCE_DIR " && SDL_AUDIODRIVER=dummy " + cmd + " >/dev/null 2>" + (out / "log.txt");
    EXPECT_EQ(std::system(cmd.c_str()), 0) << cmd;
    std::istringstream log(readAll(out / "log.txt"));
    for (std::string line; std::getline(log, line);)
        EXPECT_TRUE(line.rfind("warning: ", 0) != 0 && line.rfind("error: ", 0) != 0) << name << ": " << line;
    int frames = 0;
    for (const fs::directory_entry& e : fs::directory_iterator(golden)) {
        const std::string frame = e.path().filename().string();
        if (e.path().extension() != ".png") continue;
        ++frames;
        EXPECT_LE(differingShare(e.path().string(), out / frame), kPixelShare)
            << name << "/" << frame << " differs from its reference (new frame in " << out.path() << ")";
    }
    EXPECT_GT(frames, 0) << golden;
    if (::testing::Test::HasFailure()) out.keep();
}

class Golden : public ::testing::TestWithParam<const char*> {};

TEST_P(Golden, SessionFramesMatchTheReferences) {
    const std::string name = GetParam();
    if (name == "game") // its saved files in the session's folder, so that it starts from the defaults
        return expectSessionMatches(name, STARCATCHER_PATH " " +
                                              readAll(GAMEUI_SOURCE_DIR "/examples/game/demo.args") +
                                              " --prefs @OUT@/prefs --script examples/game/demo.script"
                                              " --png @OUT@/frame%04d.png");
    expectSessionMatches(name, UIVIEW_PATH " examples/" + name + ".ui " +
                                   readAll(GAMEUI_SOURCE_DIR "/examples/" + name + ".args") +
                                   " --script examples/" + name + ".script --png @OUT@/frame%03d.png");
}

INSTANTIATE_TEST_SUITE_P(Examples, Golden,
                         ::testing::Values("menu", "levels", "options", "entry", "loading", "scoreboard",
                                           "game"));

} // namespace
