// Golden images: the example sessions rendered off screen match the committed reference frames.
#include <SDL_image.h>
#include <gtest/gtest.h>
#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

// Channels may differ by this much (rounding of scaled or blended pixels) ...
constexpr int kChannelTolerance = 8;
// ... and this share of pixels may differ by more.
constexpr double kPixelShare = 0.002;

std::vector<std::string> goldenFrames(const std::string& dir) {
    std::vector<std::string> names;
    if (DIR* d = opendir(dir.c_str())) {
        while (dirent* e = readdir(d)) {
            const std::string name = e->d_name;
            if (name.size() > 4 && name.compare(name.size() - 4, 4, ".png") == 0) names.push_back(name);
        }
        closedir(d);
    }
    return names;
}

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
                for (int c = 0; c < 3; ++c)
                    if (std::abs(ra[x + c] - rb[x + c]) > kChannelTolerance) {
                        ++differing;
                        break;
                    }
        }
        share = static_cast<double>(differing) / (static_cast<double>(ca->w) * ca->h);
    }
    for (SDL_Surface* s : {sa, sb, ca, cb})
        SDL_FreeSurface(s);
    return share;
}

std::string readAll(const std::string& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    std::string s = text.str();
    while (!s.empty() && (s.back() == '\n' || s.back() == ' '))
        s.pop_back();
    return s;
}

// Runs a session into a fresh folder and compares every golden frame of tests/golden/<name> with it. The
// session must run clean: a missing sound, sprite or font is logged as a warning.
void expectSessionMatches(const std::string& name, const std::string& command) {
    const std::string root = GAMEUI_SOURCE_DIR;
    char pattern[] = "/tmp/gameui_golden_XXXXXX"; // a directory of its own: test runs may overlap
    ASSERT_NE(mkdtemp(pattern), nullptr);
    const std::string out = pattern;
    const std::vector<std::string> frames = goldenFrames(root + "/tests/golden/" + name);
    ASSERT_FALSE(frames.empty());
    std::string cmd = command;
    for (size_t at; (at = cmd.find("@OUT@")) != std::string::npos;)
        cmd.replace(at, 5, out);
    cmd = "cd " + root + " && SDL_AUDIODRIVER=dummy " + cmd + " >/dev/null 2>" + out + "/log.txt";
    ASSERT_EQ(std::system(cmd.c_str()), 0) << cmd;
    std::istringstream log(readAll(out + "/log.txt"));
    for (std::string line; std::getline(log, line);)
        EXPECT_TRUE(line.rfind("warning: ", 0) != 0 && line.rfind("error: ", 0) != 0) << name << ": " << line;
    for (const std::string& frame : frames)
        EXPECT_LE(differingShare(root + "/tests/golden/" + name + "/" + frame, out + "/" + frame),
                  kPixelShare)
            << name << "/" << frame << " differs from its reference (new frame in " << out << ")";
    if (!::testing::Test::HasFailure()) std::system(("rm -rf " + out).c_str());
}

} // namespace

class GoldenExample : public ::testing::TestWithParam<const char*> {};

TEST_P(GoldenExample, SessionFramesMatchTheReferences) {
    const std::string name = GetParam();
    expectSessionMatches(name, std::string(UIVIEW_PATH) + " examples/" + name + ".ui " +
                                   readAll(std::string(GAMEUI_SOURCE_DIR) + "/examples/" + name + ".args") +
                                   " --script examples/" + name + ".script --png @OUT@/frame%03d.png");
}

INSTANTIATE_TEST_SUITE_P(Examples, GoldenExample,
                         ::testing::Values("menu", "levels", "options", "entry", "loading", "scoreboard"));

// The game's session, its saved files in the session's folder so that it starts from the defaults.
TEST(GoldenGame, SessionFramesMatchTheReferences) {
    expectSessionMatches("game", std::string(STARCATCHER_PATH) + " " +
                                     readAll(std::string(GAMEUI_SOURCE_DIR) + "/examples/game/demo.args") +
                                     " --prefs @OUT@/prefs --script examples/game/demo.script"
                                     " --png @OUT@/frame%04d.png");
}
