// The sprite-drawing widget: lazy sprites, dynamic loading, fades, tiling, sorted drawing, hit tests.
#include <gtest/gtest.h>
#include <algorithm>
#include "screen.h"
#include "testkit.h"
#include "uivisualwidget.h"

namespace {

using Ints = std::vector<int>;

// A visual widget that delivers the input callbacks, as the controls built on it do.
class ClickableVisual : public uiVisualWidget {
protected:
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override {
        return uiWidget::_inputEvent(kind, x, y, key, buttonDown, handled);
    }
};

// A game's sprite widget whose releaseSprite keeps the sprite.
class KeepingVisual : public uiVisualWidget {
public:
    int releases = 0;
    void releaseSprite() override { ++releases; }
};

// A game's sprite widget that refuses some sprite names.
class PickyVisual : public uiVisualWidget {
public:
    const char* getType() override { return "testPickyVisual"; }
    bool setSprite(const char* sprite, int a, int f, bool activate) override {
        return std::string(sprite) != "forbidden" && uiVisualWidget::setSprite(sprite, a, f, activate);
    }
};

class VisualWidget : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;

    void TearDown() override {
        uiWidget::s_dynamicLoading = true;
        EXPECT_EQ(svc.gfx.overReleases(), 0);
    }
    // A visual widget made through the type registry as descriptions make it; shown unless asked not to.
    uiVisualWidget* visual(const char* name, _uiRect_s r, const char* sprite, uiWidget* parent = nullptr) {
        auto* w = testkit::Stage::make<uiVisualWidget>("uiVisualWidget", name);
        w->rect = r;
        if (sprite) w->setSprite(sprite, 0, 0, false);
        return stage.attach(w, parent);
    }
    std::vector<Ints> frame() { return testkit::renderFrame(svc.gfx, stage.ui(), 16); }
};

TEST_F(VisualWidget, SpritesLiveWithActivationAreSwappedAndSizeAnEmptyRectangle) {
    svc.gfx.defineSprite("start", 40, 30);
    auto* sized = testkit::Stage::make<uiVisualWidget>("uiVisualWidget", "sized");
    sized->rect = {5, 7, 0, 0};
    sized->setSprite("start", 0, 0, false);
    EXPECT_EQ(svc.gfx.count("createSprite"), 0); // recorded only
    stage.attach(sized);
    uiVisualWidget* fixed = visual("fixed", {5, 7, 25, 17}, "start");
    EXPECT_EQ(svc.gfx.count("createSprite"), 2);
    EXPECT_EQ((Ints{sized->rect.x2, sized->rect.y2, fixed->rect.x2, fixed->rect.y2}), (Ints{45, 37, 25, 17}));
    EXPECT_EQ(svc.gfx.count("setupAlphaTestSprite"), 0);

    // Dynamic loading gives sprites back while inactive and creates them again on activation.
    stage.root()->setActive(false, true);
    EXPECT_EQ(sized->getSpriteId(), -1);
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    stage.root()->setActive(true, true);
    EXPECT_EQ(svc.gfx.count("createSprite"), 4);
    EXPECT_NE(sized->getSpriteId(), -1);

    // Without it the handle survives deactivation; releaseSprite keeps the name for the next activation.
    uiWidget::s_dynamicLoading = false;
    const int id = sized->getSpriteId();
    stage.root()->setActive(false, true);
    stage.root()->setActive(true, true);
    EXPECT_EQ(sized->getSpriteId(), id);
    EXPECT_EQ(svc.gfx.count("createSprite"), 4);
    sized->releaseSprite();
    fixed->releaseSprite();
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    stage.root()->setActive(false, true);
    stage.root()->setActive(true, true);
    EXPECT_EQ(svc.gfx.count("createSprite"), 6);
    EXPECT_STREQ(sized->spriteName, "start");

    // While active, a recorded sprite replaces the old one but creates nothing until reactivated.
    EXPECT_TRUE(sized->setSprite("new", 2, 3, false));
    EXPECT_EQ(sized->getSpriteId(), -1);
    EXPECT_TRUE(sized->setSprite("new", 2, 3, true));
    EXPECT_EQ(svc.gfx.texts("createSprite").back(), "new");
    EXPECT_EQ(frame().at(1), (Ints{0, sized->getSpriteId(), 5, 7, 2, 3, 255}));
    const std::string longName(200, 's'); // names are cut to 127 characters
    sized->setSprite(longName.c_str(), 0, 0, true);
    EXPECT_EQ(svc.gfx.texts("createSprite").back(), longName.substr(0, 127));

    // A sprite that cannot be created draws nothing and is not reported.
    svc.gfx.failSprite("missing");
    stage.root()->setActive(false, true);
    uiVisualWidget* missing = visual("missing", {3, 4, 0, 0}, "missing");
    stage.root()->setActive(true, true);
    EXPECT_EQ(missing->getSpriteId(), -1);
    EXPECT_EQ(missing->rect.x2, 0);
    EXPECT_EQ(frame().size(), 2u);
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();

    // Swaps and deactivation give the sprite back without the game's releaseSprite.
    uiWidget::s_dynamicLoading = true;
    auto* keeper = stage.attach(new KeepingVisual());
    EXPECT_TRUE(keeper->setSprite("start", 0, 0, true));
    const int live = svc.gfx.liveSprites();
    EXPECT_TRUE(keeper->setSprite("new", 0, 0, true));
    EXPECT_EQ(svc.gfx.liveSprites(), live);
    stage.root()->setActive(false, true);
    EXPECT_EQ(svc.gfx.liveSprites() * 10 + keeper->releases, 0);
}

TEST_F(VisualWidget, DrawsAtItsCornerWithItsDepthAlphaSortLevelAndTiles) {
    svc.gfx.defineSprite("start", 10, 20);
    uiWidget* panel = stage.add("uiNonVisualWidget", "panel", {100, 50, 300, 250});
    auto* w = testkit::Stage::make<uiVisualWidget>("uiVisualWidget", "w");
    w->rect = {10, 20, 0, 0};
    w->setDepth(7u);
    w->setSprite("start", 1, 2, false);
    stage.attach(w, panel);
    const int id = w->getSpriteId();
    EXPECT_EQ(frame(), (std::vector<Ints>{{7, id, 110, 70, 1, 2, 255}}));
    w->setAlpha(0, 0, 0, false);
    EXPECT_TRUE(frame().empty());
    w->setAlpha(1, 0, 0, false);
    w->setSortLevel(4); // the same draw through the sorted call
    EXPECT_TRUE(frame().empty());
    EXPECT_EQ(svc.gfx.ints("bltSort"), (std::vector<Ints>{{7, 4, id, 110, 70, 1, 2, 1}}));
    w->setSortLevel(-1);
    EXPECT_EQ(frame().size(), 1u);
    EXPECT_EQ(svc.gfx.count("bltSort"), 0);

    // Tiles go row by row at the sprite's size; a count of 0 or below draws nothing.
    w->tileVertCount = 2;
    w->tileHorzCount = 3;
    Ints at;
    for (const Ints& blt : frame())
        at.push_back(blt[2] * 1000 + blt[3]);
    EXPECT_EQ(at, (Ints{110070, 120070, 130070, 110090, 120090, 130090}));
    w->tileHorzCount = 0;
    EXPECT_TRUE(frame().empty());
    w->tileHorzCount = 1;
    w->tileVertCount = -2;
    EXPECT_TRUE(frame().empty());
}

TEST_F(VisualWidget, AlphaTestedWidgetsAreHitOnlyWhereTheSpriteIsOpaque) {
    svc.gfx.defineSprite("round", 20, 20);
    svc.gfx.setAlphaMask("round", [](int, int, int x, int) { return x < 10; });
    auto* w = new ClickableVisual();
    w->rect = {100, 100, 0, 0};
    w->flags |= WF_ALPHA_TEST;
    w->setSprite("round", 0, 0, false);
    int clicks = 0;
    w->mouseDownCb = [](uiWidget*, void* client, int, int) { return ++*static_cast<int*>(client), true; };
    w->cbClient = &clicks;
    stage.attach(w);
    EXPECT_EQ(svc.gfx.count("setupAlphaTestSprite"), 1);

    // Opaque left half, transparent right half, and the test is relative to the widget's corner.
    auto hits = [&](int x, int y) {
        _uiTrace_s* hit = stage.ui().trace(0, x, y, "uiVisualWidget");
        const bool found = hit && hit->widget == w;
        if (hit) g_MemoryPtr->free(uiWidget::kUIPool, hit);
        return found;
    };
    EXPECT_TRUE(hits(105, 105));
    EXPECT_FALSE(hits(115, 105));
    EXPECT_EQ(svc.gfx.ints("alphaTestSprite").back(), (Ints{w->getSpriteId(), 0, 0, 15, 5}));
    stage.click(115, 105);
    EXPECT_EQ(clicks, 0);
    stage.press(105, 105);
    EXPECT_EQ(clicks, 1);
    w->releaseSprite(); // without a sprite the rectangle decides
    EXPECT_TRUE(hits(115, 105));

    // The plain visual widget delivers no callbacks of its own; the controls built on it do.
    stage.release(105, 105);
    uiVisualWidget* plain = visual("plain", {300, 300, 350, 350}, "start");
    plain->mouseDownCb = w->mouseDownCb;
    plain->cbClient = &clicks;
    stage.press(310, 310);
    EXPECT_EQ(clicks, 1);
}

TEST_F(VisualWidget, DescriptionKeysAndMessages) {
    svc.gfx.defineSprite("start", 10, 20, {1, 4, 2});
    svc.gfx.defineSprite("three", 10, 10, {3});
    if (uiWidget::getTypeId("testPickyVisual") == 0)
        uiSubsystem::s_registerWidget("testPickyVisual",
                                      [] { return static_cast<uiWidget*>(new PickyVisual()); });
    testkit::Screen menu(
        svc, "menu = uiVisualWidget\n{\n sprite \"start\"\n sprite =\n sprite = \"three\"\n"
             " flags = WF_ACTIVE | WF_ALPHA_TEST\n frame = 2\n frame = 3\n"
             " child picky = testPickyVisual\n {\n  sprite = \"forbidden\"\n  sprite = allowed\n }\n"
             " child start = uiVisualWidget\n {\n  x = 5\n  y = 6\n  sprite = \"start\"\n  anim = 2\n"
             "  frame = 1\n  alpha = 300\n  tilevertcount = 2\n  TileHorzCount = 3\n"
             "  flags = WF_ALPHA_TEST | WF_VISIBLE | WF_ACTIVE\n }\n child slip = uiVisualWidget\n"
             " {\n  tilevertcount = 1000\n  tilehorzcount = 16\n  tilehorzcount = 1000\n }\n}\n");
    ASSERT_TRUE(menu);
    EXPECT_EQ(svc.log.dump(), "2: ...expected: \"^C00FF00sprite = \"val\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00sprite = \"val\"^c\"\f\n"
                              "2: ...frame is out of animation bounds.\f\n"
                              "2: ...failed to create sprite: forbidden for picky\f\n"
                              "1: ...line 30: tilehorzcount = 1000 makes more than 16384 tiles, 16 used\f\n");
    EXPECT_EQ(static_cast<uiVisualWidget*>(menu.find("slip"))->tileHorzCount, 16);
    auto* root = static_cast<uiVisualWidget*>(menu.root());
    EXPECT_EQ(root->getFrame(), 3); // kept although out of bounds
    EXPECT_STREQ(root->spriteName, "three");
    EXPECT_STREQ(static_cast<uiVisualWidget*>(menu.find("picky"))->spriteName, "allowed");
    // WF_ACTIVE named first created the sprite before the alpha test was asked for: it is not prepared,
    // yet the hit test already asks the sprite. The child naming both at once is prepared.
    EXPECT_EQ(svc.gfx.count("setupAlphaTestSprite"), 1);
    EXPECT_TRUE(root->testBounds(2, 2));
    EXPECT_EQ(svc.gfx.count("alphaTestSprite"), 1);

    auto* start = static_cast<uiVisualWidget*>(menu.find("start"));
    EXPECT_EQ((Ints{start->rect.x2, start->rect.y2, start->getAlpha()}), (Ints{15, 26, 300 % 256}));
    svc.gfx.clear();
    start->render(0, 0);
    std::vector<Ints> draws = svc.gfx.ints("blt");
    ASSERT_EQ(draws.size(), 6u);
    EXPECT_EQ(draws[0], (Ints{0, start->getSpriteId(), 5, 6, 2, 1, 44}));
    EXPECT_EQ(draws[5], (Ints{0, start->getSpriteId(), 25, 26, 2, 1, 44}));
}

} // namespace
