// The sprite-drawing widget: lazy sprites, dynamic loading, fades, tiling, sorted drawing, hit tests.
#include <gtest/gtest.h>
#include <algorithm>
#include <vector>
#include "parser.h"
#include "screen.h"
#include "testkit.h"
#include "uinonvisualwidget.h"
#include "uisubsystem.h"
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
    static uiWidget* make() { return new PickyVisual(); }
    const char* getType() override { return "testPickyVisual"; }
    bool setSprite(const char* sprite, int a, int f, bool activate) override {
        return std::string(sprite) != "forbidden" && uiVisualWidget::setSprite(sprite, a, f, activate);
    }
};

bool countClick(uiWidget*, void* client, int, int) {
    ++*static_cast<int*>(client);
    return true;
}

class VisualWidget : public ::testing::Test {
protected:
    testkit::Services svc;
    uiSubsystem* ui = nullptr;
    uiWidget* screen = nullptr;

    void SetUp() override {
        ui = new uiSubsystem();
        ui->initialize(nullptr);
        screen = uiWidget::allocWidget("screen", "uiNonVisualWidget");
        screen->rect = {0, 0, 800, 600};
        ui->setTopLevelWidget(screen);
    }
    void TearDown() override {
        uiWidget::s_dynamicLoading = true;
        delete screen;
        ui->shutdown();
        delete ui;
        EXPECT_EQ(svc.gfx.liveSprites(), 0);
        EXPECT_EQ(svc.gfx.overReleases(), 0);
        EXPECT_EQ(svc.memory.outstandingBlocks(), 0) << svc.memory.report();
    }

    // A visual widget under the screen, made through the type registry as descriptions make it.
    uiVisualWidget* visual(const char* name, _uiRect_s r, const char* sprite) {
        auto* w = static_cast<uiVisualWidget*>(uiWidget::allocWidget(name, "uiVisualWidget"));
        w->rect = r;
        if (sprite) w->setSprite(sprite, 0, 0, false);
        screen->addChild(w, false);
        return w;
    }
    void showAll() { screen->setWidgetStates(true, true, true, true); }
};

TEST_F(VisualWidget, CreatesTheSpriteOnActivationAndTakesItsSizeWhenLeftEmpty) {
    svc.gfx.defineSprite("start", 40, 30);
    uiVisualWidget* sized = visual("sized", {5, 7, 0, 0}, "start");
    uiVisualWidget* fixed = visual("fixed", {5, 7, 25, 17}, "start");
    EXPECT_EQ(svc.gfx.count("createSprite"), 0); // recorded only
    EXPECT_EQ(sized->getSpriteId(), -1);

    showAll();
    EXPECT_EQ(svc.gfx.count("createSprite"), 2);
    EXPECT_NE(sized->getSpriteId(), -1);
    EXPECT_EQ(sized->rect.x2, 45);
    EXPECT_EQ(sized->rect.y2, 37);
    EXPECT_EQ(fixed->rect.x2, 25);
    EXPECT_EQ(fixed->rect.y2, 17);
    EXPECT_EQ(svc.gfx.count("setupAlphaTestSprite"), 0);
}

TEST_F(VisualWidget, DynamicLoadingGivesSpritesBackWhileInactive) {
    uiVisualWidget* w = visual("w", {0, 0, 10, 10}, "start");
    showAll();
    EXPECT_EQ(svc.gfx.liveSprites(), 1);
    screen->setActive(false, true);
    EXPECT_EQ(w->getSpriteId(), -1);
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    ASSERT_EQ(svc.gfx.named("releaseSprite").size(), 1u);
    EXPECT_EQ(svc.gfx.named("releaseSprite")[0].text, "start");
    screen->setActive(true, true);
    EXPECT_EQ(svc.gfx.count("createSprite"), 2);
    EXPECT_NE(w->getSpriteId(), -1);

    // Without dynamic loading the handle survives deactivation; releaseSprite keeps the name.
    uiWidget::s_dynamicLoading = false;
    const int id = w->getSpriteId();
    screen->setActive(false, true);
    screen->setActive(true, true);
    EXPECT_EQ(w->getSpriteId(), id);
    EXPECT_EQ(svc.gfx.count("createSprite"), 2);
    w->releaseSprite();
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    screen->setActive(false, true);
    screen->setActive(true, true);
    EXPECT_EQ(svc.gfx.count("createSprite"), 3);
    EXPECT_STREQ(w->spriteName, "start");
}

TEST_F(VisualWidget, SetSpriteSwapsTheSpriteNowOrAtTheNextActivation) {
    uiVisualWidget* w = visual("w", {0, 0, 10, 10}, "old");
    showAll();
    // While active, a recorded sprite replaces the old one but creates nothing until reactivated.
    EXPECT_TRUE(w->setSprite("new", 2, 3, false));
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    EXPECT_EQ(w->getSpriteId(), -1);
    EXPECT_TRUE(w->setSprite("new", 2, 3, true));
    EXPECT_EQ(svc.gfx.named("createSprite").back().text, "new");
    ui->render(16);
    EXPECT_EQ(svc.gfx.named("blt").back().ints, (Ints{0, w->getSpriteId(), 0, 0, 2, 3, 255}));

    // Names are cut to 127 characters.
    const std::string longName(200, 's');
    w->setSprite(longName.c_str(), 0, 0, true);
    EXPECT_EQ(std::string(w->spriteName), longName.substr(0, 127));
    EXPECT_EQ(svc.gfx.named("createSprite").back().text, longName.substr(0, 127));
}

TEST_F(VisualWidget, SwapsAndDeactivationGiveTheSpriteBackWithoutTheGamesReleaseSprite) {
    auto* w = new KeepingVisual();
    w->setSprite("old", 0, 0, false);
    screen->addChild(w, false);
    showAll();
    EXPECT_TRUE(w->setSprite("new", 0, 0, true));
    EXPECT_EQ(svc.gfx.named("createSprite").back().text, "new");
    EXPECT_EQ(svc.gfx.liveSprites(), 1);
    screen->setActive(false, true);
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    EXPECT_EQ(w->releases, 0);
}

TEST_F(VisualWidget, ASpriteThatCannotBeCreatedDrawsNothingAndIsNotReported) {
    svc.gfx.failSprite("missing");
    uiVisualWidget* w = visual("w", {3, 4, 0, 0}, "missing");
    showAll();
    ui->render(16);
    EXPECT_EQ(w->getSpriteId(), -1);
    EXPECT_EQ(w->rect.x2, 0);
    EXPECT_EQ(svc.gfx.count("blt"), 0);
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();
}

TEST_F(VisualWidget, FadesAdvanceByTheFrameTimeWhileActive) {
    uiVisualWidget* w = visual("w", {0, 0, 10, 10}, "start");
    showAll();
    const long long before = svc.memory.allocations();
    std::vector<int> seen;

    w->setAlpha(0, 1000, 0, false);
    for (int i = 0; i < 11; ++i) {
        ui->update(100);
        seen.push_back(w->getAlpha());
    }
    EXPECT_EQ(seen[0], 229);
    EXPECT_EQ(seen[4], 127);
    EXPECT_EQ(seen[9], 0);
    EXPECT_EQ(seen[10], 0);
    EXPECT_TRUE(std::is_sorted(seen.rbegin(), seen.rend()));

    // The first frame at or beyond the fade time lands exactly on the target.
    w->setAlpha(255, 0, 0, false);
    w->setAlpha(128, 500, 0, false);
    for (int i = 0; i < 31; ++i)
        ui->update(16);
    EXPECT_EQ(w->getAlpha(), 129); // 496 ms of 500
    ui->update(16);
    EXPECT_EQ(w->getAlpha(), 128);
    ui->update(16);
    EXPECT_EQ(w->getAlpha(), 128);

    // A delay holds the alpha; the frame that ends it does not start blending yet.
    w->setAlpha(255, 0, 0, false);
    w->setAlpha(0, 1000, 300, false);
    seen.clear();
    for (int i = 0; i < 4; ++i) {
        ui->update(100);
        seen.push_back(w->getAlpha());
    }
    EXPECT_EQ(seen, (Ints{255, 255, 255, 229}));

    // Inactive widgets keep their alpha: the fade pauses.
    w->setActive(false, false);
    ui->update(100);
    EXPECT_EQ(w->getAlpha(), 229);
    w->setActive(true, false);
    ui->update(100);
    EXPECT_EQ(w->getAlpha(), 204);
    EXPECT_EQ(svc.memory.allocations(), before + 0) << "frames allocate nothing";
}

TEST_F(VisualWidget, ImmediateAlphaPassesToChildrenUnlessTheyIgnoreIt) {
    uiVisualWidget* parent = visual("parent", {0, 0, 10, 10}, nullptr);
    auto* child = static_cast<uiVisualWidget*>(uiWidget::allocWidget("child", "uiVisualWidget"));
    auto* deaf = static_cast<uiVisualWidget*>(uiWidget::allocWidget("deaf", "uiVisualWidget"));
    auto* grandchild = static_cast<uiVisualWidget*>(uiWidget::allocWidget("grandchild", "uiVisualWidget"));
    parent->addChild(child, false);
    parent->addChild(deaf, false);
    deaf->addChild(grandchild, false);
    deaf->flags |= WF_IGNORE_ALPHA;

    parent->setAlpha(50, 0, 0, true);
    EXPECT_EQ(parent->getAlpha(), 50);
    EXPECT_EQ(child->getAlpha(), 50);
    EXPECT_EQ(deaf->getAlpha(), 255);
    EXPECT_EQ(grandchild->getAlpha(), 255);
    parent->setAlpha(90, 0, 0, false);
    EXPECT_EQ(child->getAlpha(), 50);
}

TEST_F(VisualWidget, DrawsAtItsCornerWithItsDepthAndAlpha) {
    svc.gfx.defineSprite("start", 10, 20);
    uiWidget* panel = uiWidget::allocWidget("panel", "uiNonVisualWidget");
    panel->rect = {100, 50, 300, 250};
    screen->addChild(panel, false);
    auto* w = static_cast<uiVisualWidget*>(uiWidget::allocWidget("w", "uiVisualWidget"));
    w->rect = {10, 20, 0, 0};
    w->setDepth(7u);
    w->setSprite("start", 1, 2, false);
    panel->addChild(w, false);
    showAll();

    ui->render(16);
    ASSERT_EQ(svc.gfx.count("blt"), 1);
    EXPECT_EQ(svc.gfx.named("blt")[0].ints, (Ints{7, w->getSpriteId(), 110, 70, 1, 2, 255}));

    svc.gfx.clear();
    w->setAlpha(0, 0, 0, false);
    ui->render(16);
    EXPECT_EQ(svc.gfx.count("blt"), 0);
    w->setAlpha(1, 0, 0, false);
    ui->render(16);
    EXPECT_EQ(svc.gfx.named("blt").at(0).ints.back(), 1);

    // A sort level sends the same draw through the sorted call.
    svc.gfx.clear();
    w->setSortLevel(4);
    ui->render(16);
    EXPECT_EQ(svc.gfx.count("blt"), 0);
    ASSERT_EQ(svc.gfx.count("bltSort"), 1);
    EXPECT_EQ(svc.gfx.named("bltSort")[0].ints, (Ints{7, 4, w->getSpriteId(), 110, 70, 1, 2, 1}));
    w->setSortLevel(-1);
    svc.gfx.clear();
    ui->render(16);
    EXPECT_EQ(svc.gfx.count("bltSort"), 0);
    EXPECT_EQ(svc.gfx.count("blt"), 1);
}

TEST_F(VisualWidget, TilesRowByRowAtTheSpriteSize) {
    svc.gfx.defineSprite("tile", 10, 20);
    uiVisualWidget* w = visual("w", {5, 5, 0, 0}, "tile");
    w->tileVertCount = 2;
    w->tileHorzCount = 3;
    showAll();
    svc.gfx.clear();
    ui->render(16);
    std::vector<std::pair<int, int>> at;
    for (const testkit::GfxCall& c : svc.gfx.named("blt"))
        at.emplace_back(c.ints[2], c.ints[3]);
    EXPECT_EQ(at, (std::vector<std::pair<int, int>>{{5, 5}, {15, 5}, {25, 5}, {5, 25}, {15, 25}, {25, 25}}));

    svc.gfx.clear();
    w->tileHorzCount = 0;
    ui->render(16);
    EXPECT_EQ(svc.gfx.count("blt"), 0);
    w->tileHorzCount = 1;
    w->tileVertCount = -2;
    ui->render(16);
    EXPECT_EQ(svc.gfx.count("blt"), 0);
}

TEST_F(VisualWidget, AlphaTestedWidgetsAreHitOnlyWhereTheSpriteIsOpaque) {
    svc.gfx.defineSprite("round", 20, 20);
    svc.gfx.setAlphaMask("round", [](int, int, int x, int) { return x < 10; });
    auto* w = new ClickableVisual();
    w->rect = {100, 100, 0, 0};
    w->flags |= WF_ALPHA_TEST;
    w->setSprite("round", 0, 0, false);
    int clicks = 0;
    w->mouseDownCb = countClick;
    w->cbClient = &clicks;
    screen->addChild(w, false);
    showAll();
    EXPECT_EQ(svc.gfx.count("setupAlphaTestSprite"), 1);

    // Opaque left half, transparent right half, and the test is relative to the widget's corner.
    _uiTrace_s* hit = ui->trace(0, 105, 105, "uiVisualWidget");
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->widget, w);
    g_MemoryPtr->free(uiWidget::kUIPool, hit);
    EXPECT_EQ(ui->trace(0, 115, 105, "uiVisualWidget"), nullptr);
    EXPECT_EQ(svc.gfx.named("alphaTestSprite").back().ints, (Ints{w->getSpriteId(), 0, 0, 15, 5}));

    ui->inputEvent(UIE_MOUSE_DOWN, 115, 105, 0);
    ui->inputEvent(UIE_MOUSE_UP, 115, 105, 0);
    EXPECT_EQ(clicks, 0);
    ui->inputEvent(UIE_MOUSE_DOWN, 105, 105, 0);
    EXPECT_EQ(clicks, 1);

    // Without a sprite the rectangle decides.
    w->releaseSprite();
    hit = ui->trace(0, 115, 105, "uiVisualWidget");
    ASSERT_NE(hit, nullptr);
    g_MemoryPtr->free(uiWidget::kUIPool, hit);

    // The plain visual widget delivers no callbacks of its own; the controls built on it do.
    uiVisualWidget* plain = visual("plain", {300, 300, 350, 350}, "start");
    plain->mouseDownCb = countClick;
    plain->cbClient = &clicks;
    showAll();
    ui->inputEvent(UIE_MOUSE_UP, 105, 105, 0);
    ui->inputEvent(UIE_MOUSE_DOWN, 310, 310, 0);
    EXPECT_EQ(clicks, 1);
}

TEST_F(VisualWidget, DescriptionKeysSetTheSpriteTilingAndAlpha) {
    svc.gfx.defineSprite("start", 10, 20, {1, 4, 2});
    testkit::Screen menu(svc, "menu = uiNonVisualWidget\n"
                              "{\n"
                              "    child start = uiVisualWidget\n"
                              "    {\n"
                              "        x = 5\n"
                              "        y = 6\n"
                              "        sprite = \"start\"\n"
                              "        anim = 2\n"
                              "        frame = 1\n"
                              "        alpha = 300\n"
                              "        tilevertcount = 2\n"
                              "        TileHorzCount = 3\n"
                              "        flags = WF_ALPHA_TEST | WF_VISIBLE | WF_ACTIVE\n"
                              "    }\n"
                              "    child floor = uiVisualWidget\n"
                              "    {\n"
                              "        sprite = \"start\"\n"
                              "        tilehorzcount = 320\n"
                              "    }\n"
                              "    child slip = uiVisualWidget\n"
                              "    {\n"
                              "        tilevertcount = 1000\n"
                              "        tilehorzcount = 1000\n"
                              "    }\n"
                              "    flags = WF_VISIBLE | WF_ACTIVE\n"
                              "}\n");
    ASSERT_TRUE(menu);
    auto* start = static_cast<uiVisualWidget*>(menu.find("start"));
    ASSERT_NE(start, nullptr);
    EXPECT_EQ(svc.log.count(), 1) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(1, "...line 23: tilehorzcount = 1000 makes more than 16384 tiles, 16 used\f"));
    EXPECT_EQ(static_cast<uiVisualWidget*>(menu.find("slip"))->tileHorzCount, 16);
    EXPECT_EQ(svc.gfx.count("setupAlphaTestSprite"), 1);
    EXPECT_EQ(start->rect.x2, 15); // sized by the sprite
    EXPECT_EQ(start->rect.y2, 26);
    EXPECT_EQ(start->getAlpha(), 300 % 256);

    svc.gfx.clear();
    menu->render(0, 0);
    std::vector<testkit::GfxCall> draws = svc.gfx.named("blt");
    ASSERT_EQ(draws.size(), 320u + 6u) << "a 4-pixel floor across 1280 pixels";
    draws.erase(draws.begin(), draws.begin() + 320); // the floor, a later child, draws first
    EXPECT_EQ(draws[0].ints, (Ints{0, start->getSpriteId(), 5, 6, 2, 1, 44}));
    EXPECT_EQ(draws[5].ints, (Ints{0, start->getSpriteId(), 25, 26, 2, 1, 44}));
}

TEST_F(VisualWidget, DescriptionMessagesNameWhatIsWrong) {
    svc.gfx.defineSprite("three", 10, 10, {3});
    if (uiWidget::getTypeId("testPickyVisual") == 0)
        uiSubsystem::s_registerWidget("testPickyVisual", &PickyVisual::make);
    testkit::Screen menu(svc, "menu = uiVisualWidget\n"
                              "{\n"
                              "    sprite \"start\"\n"
                              "    sprite =\n"
                              "    sprite = \"three\"\n"
                              "    flags = WF_ACTIVE | WF_ALPHA_TEST\n"
                              "    frame = 2\n"
                              "    frame = 3\n"
                              "    colour = 5\n"
                              "    child picky = testPickyVisual\n"
                              "    {\n"
                              "        sprite = \"forbidden\"\n"
                              "        sprite = \"allowed\"\n"
                              "    }\n"
                              "}\n");
    ASSERT_TRUE(menu);
    const std::string expected = "...expected: \"^C00FF00sprite = \"val\"^c\"\f";
    std::vector<std::string> texts;
    for (const testkit::LogEntry& e : svc.log.entries()) {
        EXPECT_EQ(e.severity, 2) << e.text;
        texts.push_back(e.text);
    }
    EXPECT_EQ(texts, (std::vector<std::string>{expected, expected, "...frame is out of animation bounds.\f",
                                               "...[menu:9] Unknown parameter: ^C00FF00colour\f",
                                               "...failed to create sprite: forbidden for picky\f"}));
    auto* root = static_cast<uiVisualWidget*>(menu.root());
    EXPECT_EQ(root->getFrame(), 3); // kept although out of bounds
    EXPECT_STREQ(root->spriteName, "three");
    EXPECT_STREQ(static_cast<uiVisualWidget*>(menu.find("picky"))->spriteName, "allowed");

    // WF_ACTIVE named first created the sprite before the alpha test was asked for: it is not prepared,
    // yet the hit test already asks the sprite.
    EXPECT_EQ(svc.gfx.count("setupAlphaTestSprite"), 0);
    EXPECT_TRUE(root->testBounds(2, 2));
    EXPECT_EQ(svc.gfx.count("alphaTestSprite"), 1);
}

} // namespace
