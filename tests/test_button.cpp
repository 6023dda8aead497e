// Buttons as a game uses them: clicks driven through the subsystem, the drawn animation by state, frame
// stepping, sounds, hotkeys, particle systems, enabling and the description keys.
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include "screen.h"
#include "stage.h"
#include "testkit.h"
#include "uibutton.h"

namespace {

struct Clicks {
    std::vector<std::string> seen;
    bool result = true;
};

bool onClick(uiWidget* w, void* client, int x, int y) {
    static_cast<Clicks*>(client)->seen.push_back(std::string(w->name) + " " + std::to_string(x) + "," +
                                                 std::to_string(y));
    return static_cast<Clicks*>(client)->result;
}

// The drawn image of one blt: animation, frame, alpha.
struct Draw {
    int anim, frame, alpha;
    bool operator==(const Draw& o) const { return anim == o.anim && frame == o.frame && alpha == o.alpha; }
};
std::ostream& operator<<(std::ostream& os, const Draw& d) {
    return os << "{anim " << d.anim << ", frame " << d.frame << ", alpha " << d.alpha << "}";
}

class Button : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    Clicks clicks;
    uiButton* button = nullptr;

    void SetUp() override {
        svc.gfx.defineSprite("ok", 100, 40, {4, 4, 4, 4, 3, 5, 6, 7});
        button = makeButton("ok", 100, 100);
    }

    // A button at (x, y) sized by its sprite, attached to the stage with a click handler.
    uiButton* makeButton(const char* name, int x, int y, unsigned int buttonFlags = 0) {
        auto* b = testkit::Stage::make<uiButton>("uiButton", name);
        b->rect = {x, y, 0, 0};
        b->setWidgetFlags(b->getWidgetFlags() | buttonFlags);
        b->setSprite("ok", 0, 0, false);
        stage.attach(b);
        _WidgetMap_s map{nullptr, nullptr, nullptr, &onClick, nullptr, nullptr, nullptr};
        b->assignCallbacks(&map, &clicks);
        return b;
    }

    // Renders one frame and returns what the button drew.
    std::vector<Draw> frame(unsigned int ms = 16) {
        svc.gfx.clear();
        stage.render(ms);
        std::vector<Draw> draws;
        for (const testkit::GfxCall& c : svc.gfx.named("blt"))
            draws.push_back({c.ints[4], c.ints[5], c.ints[6]});
        return draws;
    }
    int drawnAnim() {
        std::vector<Draw> d = frame();
        return d.empty() ? -1 : d[0].anim;
    }
};

TEST_F(Button, ClickGoesThroughTheFocusStackToMouseUpCb) {
    EXPECT_EQ(button->rect.x2, 200); // sized by the sprite on activation
    stage.move(150, 120);
    EXPECT_TRUE(button->isHovering());
    EXPECT_EQ(svc.sound.played, std::vector<std::string>({"highlight"}));

    stage.press(150, 120);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), button);
    EXPECT_TRUE(clicks.seen.empty());

    stage.release(151, 121);
    EXPECT_EQ(clicks.seen, std::vector<std::string>({"ok 151,121"}));
    EXPECT_EQ(svc.sound.played, std::vector<std::string>({"highlight", "click"}));
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    EXPECT_TRUE(button->isHovering());

    // A release that ends no press is consumed without a click.
    stage.release(150, 120);
    EXPECT_EQ(clicks.seen.size(), 1u);
    stage.keyUp(-1); // a button without a hotkey has none, whatever the key code
    EXPECT_EQ(clicks.seen.size(), 1u);
}

TEST_F(Button, ReleasingElsewhereCancelsTheClick) {
    stage.move(150, 120);
    stage.press(150, 120);
    stage.move(400, 400); // reaches the button first through the focus stack
    EXPECT_FALSE(button->isHovering());
    stage.release(400, 400);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.move(150, 120);
    stage.release(150, 120); // back over the button: the press was cancelled
    EXPECT_TRUE(clicks.seen.empty());
    EXPECT_EQ(svc.sound.played, std::vector<std::string>({"highlight", "highlight"}));
}

TEST_F(Button, APressWithinFiveFramesOfAClickIsSwallowed) {
    stage.click(150, 120);
    ASSERT_EQ(clicks.seen.size(), 1u);
    for (int i = 0; i < 5; ++i)
        stage.update(16);

    stage.press(150, 120);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr); // not pressed, not pushed
    stage.release(150, 120);
    EXPECT_EQ(clicks.seen.size(), 1u);

    stage.update(16); // the sixth frame count since the click
    stage.click(150, 120);
    EXPECT_EQ(clicks.seen.size(), 2u);
}

TEST_F(Button, AnimationFollowsTheStateInBothLayouts) {
    button->setAnim(4);
    EXPECT_EQ(drawnAnim(), 4); // no hover or pressed animation: always the idle one
    stage.move(150, 120);
    EXPECT_EQ(drawnAnim(), 4);

    button->setWidgetFlags(button->getWidgetFlags() | UIB_HOVER | UIB_PRESSED);
    stage.move(400, 400);
    EXPECT_EQ(drawnAnim(), 4);
    stage.move(150, 120);
    EXPECT_EQ(drawnAnim(), 5);
    stage.press(150, 120);
    EXPECT_EQ(drawnAnim(), 6);
    button->disable();
    EXPECT_EQ(drawnAnim(), 7);

    button->enable();
    button->setWidgetFlags(button->getWidgetFlags() | UIB_DONTDRAWIDLE);
    stage.move(400, 400);
    EXPECT_EQ(drawnAnim(), 4); // idle is still drawn
    stage.move(150, 120);
    EXPECT_EQ(drawnAnim(), 4);
    stage.press(150, 120);
    EXPECT_EQ(drawnAnim(), 5);
    button->disable();
    EXPECT_EQ(drawnAnim(), 6);
}

TEST_F(Button, FramesStepByRateAndRestartOnStateChange) {
    button->setWidgetFlags(button->getWidgetFlags() | UIB_HOVER);
    button->setAnim(4); // 3 frames; the hover animation 5 has 5
    EXPECT_EQ(frame(0), std::vector<Draw>({{4, 0, 255}}));
    // The rate is 1000 ms: 1000 is not more than the rate, 1001 is.
    EXPECT_EQ(frame(1000), std::vector<Draw>({{4, 0, 255}}));
    EXPECT_EQ(frame(1), std::vector<Draw>({{4, 1, 255}}));
    EXPECT_EQ(frame(2500), std::vector<Draw>({{4, 0, 255}})); // two frames further, modulo 3

    stage.move(150, 120); // hover: animation 5 from frame 0
    EXPECT_EQ(frame(0), std::vector<Draw>({{5, 0, 255}}));
    EXPECT_EQ(frame(3500), std::vector<Draw>({{5, 3, 255}}));
    button->setAlpha(0, 0, 0, false);
    EXPECT_EQ(frame(0), std::vector<Draw>({{5, 3, 0}})); // drawn also when transparent
}

// The screens below are whole trees of their own, made the top-level widget for the test.
class ButtonScreen : public Button {
protected:
    std::unique_ptr<testkit::Screen> screen;
    uiButton* load(const std::string& description) {
        screen = std::make_unique<testkit::Screen>(svc, description);
        if (!*screen) return nullptr;
        stage.ui().setTopLevelWidget(screen->root());
        return static_cast<uiButton*>(screen->root());
    }
    void TearDown() override { stage.ui().setTopLevelWidget(stage.root()); }
};

TEST_F(ButtonScreen, RateFromTheDescriptionStepsAndZeroHoldsTheFrame) {
    ASSERT_TRUE(load(
        "b = uiButton\n{\n sprite = ok\n rate = 100\n flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n"));
    EXPECT_EQ(frame(0), std::vector<Draw>({{0, 0, 255}}));
    EXPECT_EQ(frame(100), std::vector<Draw>({{0, 0, 255}}));
    EXPECT_EQ(frame(150), std::vector<Draw>({{0, 2, 255}})); // 250 ms: two frames, 50 kept
    EXPECT_EQ(frame(50), std::vector<Draw>({{0, 2, 255}}));  // 100 again: not more than the rate
    EXPECT_EQ(frame(1), std::vector<Draw>({{0, 3, 255}}));

    ASSERT_TRUE(load(
        "b = uiButton\n{\n sprite = ok\n rate = 0\n flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n"));
    EXPECT_EQ(frame(16), std::vector<Draw>({{0, 0, 255}}));
    EXPECT_EQ(frame(5000), std::vector<Draw>({{0, 0, 255}}));
}

// A graphics service that reports animations without frames.
class NoFramesGfx : public testkit::RecordingGfx {
public:
    int getSpriteFrameCount(int, int) override { return 0; }
};

TEST_F(Button, AnimationsWithoutFramesHoldTheFirstFrame) {
    NoFramesGfx gfx;
    g_gfx = &gfx;
    stage.render(5000);
    stage.render(5000); // 5 frames further, of none
    std::vector<testkit::GfxCall> draws = gfx.named("blt");
    g_gfx = &svc.gfx;
    EXPECT_EQ(draws.size(), 2u);
    for (const testkit::GfxCall& d : draws)
        EXPECT_EQ(d.ints[5], 0);
}

TEST_F(ButtonScreen, HotkeyClicksAtTheButtonsCorner) {
    uiButton* b = load("b = uiButton\n{\n sprite = ok\n x = 10\n y = 10\n hotkey = KEY_F3\n"
                       " flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n");
    ASSERT_TRUE(b);
    _WidgetMap_s map{nullptr, nullptr, nullptr, &onClick, nullptr, nullptr, nullptr};
    b->assignCallbacks(&map, &clicks);

    stage.keyDown(165);
    EXPECT_TRUE(clicks.seen.empty());
    stage.keyUp(165); // the pointer is far away, at (-50, -50)
    EXPECT_EQ(clicks.seen, std::vector<std::string>({"b 10,10"}));
    EXPECT_EQ(svc.sound.played, std::vector<std::string>({"highlight", "click"}));
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.keyUp(164);
    EXPECT_EQ(clicks.seen.size(), 1u);

    // With an alpha-tested sprite whose corner is transparent the hotkey finds nothing to click.
    svc.gfx.setAlphaMask("ok", [](int, int, int x, int y) { return x > 0 || y > 0; });
    b->setWidgetFlags(b->getWidgetFlags() | WF_ALPHA_TEST);
    stage.keyUp(165);
    EXPECT_EQ(clicks.seen.size(), 1u);

    b->disable();
    b->setWidgetFlags(b->getWidgetFlags() & ~WF_ALPHA_TEST);
    stage.keyUp(165);
    EXPECT_EQ(clicks.seen.size(), 1u);
}

TEST_F(Button, DisabledButtonTakesNoInputAndLeavesTheFocusStack) {
    stage.move(150, 120);
    stage.press(150, 120);
    ASSERT_EQ(stage.ui().getInputFocusWidget(), button);
    button->disable();
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    EXPECT_FALSE(button->isHovering());
    EXPECT_FALSE(button->getInputFocus());

    svc.sound.clear();
    stage.click(150, 120);
    EXPECT_TRUE(clicks.seen.empty());
    EXPECT_TRUE(svc.sound.played.empty());

    button->enable(); // no hooks: no sound, no hover
    EXPECT_TRUE(button->getInputFocus());
    EXPECT_TRUE(svc.sound.played.empty());
    stage.click(150, 120);
    EXPECT_EQ(clicks.seen.size(), 1u);
}

TEST_F(Button, ParticleSystemStartsOnClickRestartsAndIsReleasedWhenDead) {
    button->setParticleSystem("sparks.psi");
    frame();
    EXPECT_EQ(svc.gfx.count("createParticleSystemInstance"), 0);

    stage.click(150, 120);
    ASSERT_EQ(svc.gfx.count("createParticleSystemInstance"), 1);
    EXPECT_EQ(svc.gfx.named("createParticleSystemInstance")[0].text, "sparks.psi");
    EXPECT_EQ(svc.gfx.particleOwner(0), "ok");

    svc.gfx.clear();
    stage.render(16);
    std::vector<std::string> order;
    for (const testkit::GfxCall& c : svc.gfx.calls)
        if (c.fn == "updateParticleSystem" || c.fn == "blt" || c.fn == "psemit") order.push_back(c.fn);
    EXPECT_EQ(order, std::vector<std::string>({"updateParticleSystem", "blt", "psemit"}));
    testkit::GfxCall update = svc.gfx.named("updateParticleSystem")[0];
    EXPECT_EQ(update.ints, std::vector<int>({0, 150, 120})); // the sprite's centre
    EXPECT_FLOAT_EQ(update.floats[0], 0.016f);
    EXPECT_EQ(svc.gfx.named("psemit")[0].floats, std::vector<float>({1.0f}));

    for (int i = 0; i < 6; ++i)
        stage.update(16);
    svc.gfx.clear();
    stage.click(150, 120); // running: restarted, not created again
    EXPECT_EQ(svc.gfx.count("createParticleSystemInstance"), 0);
    ASSERT_EQ(svc.gfx.count("addEvent"), 1);
    EXPECT_EQ(svc.gfx.named("addEvent")[0].ints, std::vector<int>({4, 0, 0, 0}));

    svc.gfx.setParticleDead(0, true);
    svc.gfx.clear();
    stage.update(16);
    ASSERT_EQ(svc.gfx.count("releaseParticleSystemInstance"), 1);
    EXPECT_EQ(svc.gfx.named("releaseParticleSystemInstance")[0].text, "ok");
    EXPECT_EQ(frame().size(), 1u);
    EXPECT_EQ(svc.gfx.count("psemit"), 0);

    for (int i = 0; i < 6; ++i)
        stage.update(16);
    stage.click(150, 120); // a new instance
    EXPECT_EQ(svc.gfx.count("createParticleSystemInstance"), 1);
    EXPECT_EQ(svc.gfx.particleOwner(1), "ok");
}

TEST_F(Button, NewButtonsTakeTheDefaultSoundsInForceAtConstruction) {
    uiButton::setDefaultSounds("tick", "hum");
    uiButton* later = makeButton("later", 300, 300);
    uiButton::setDefaultSounds("click", "highlight");
    stage.click(350, 320);
    stage.click(150, 120);
    EXPECT_EQ(svc.sound.played, std::vector<std::string>({"hum", "tick", "highlight", "click"}));
    later->setClickSound("");
    for (int i = 0; i < 6; ++i)
        stage.update(16);
    stage.click(350, 320);
    EXPECT_EQ(svc.sound.played.back(), ""); // played even when empty
}

TEST_F(Button, APressWithoutAFocusEntryStillClicks) {
    // The release reaches the button through the tree.
    stage.move(150, 120);
    svc.memory.failAt(0);
    stage.press(150, 120);
    EXPECT_TRUE(svc.memory.failed());
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.release(150, 120);
    EXPECT_EQ(clicks.seen.size(), 1u);
}

TEST_F(Button, DestroyingAPressedButtonTakesItOffTheFocusStack) {
    stage.move(150, 120);
    stage.press(150, 120);
    ASSERT_EQ(stage.ui().getInputFocusWidget(), button);
    button->detachFromParent();
    delete button;
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.release(150, 120); // nothing left to reach
    EXPECT_TRUE(clicks.seen.empty());

    // A button that never held the pointer does not wait for the subsystem lock when it goes: trees
    // are deleted on loading threads while a frame runs.
    uiButton* idle = makeButton("idle", 300, 300);
    idle->detachFromParent();
    stage.ui().updateLock(true);
    std::thread loader([idle] { delete idle; });
    loader.join();
    stage.ui().updateLock(false);
}

TEST_F(ButtonScreen, DescriptionKeysAndMessages) {
    uiButton* b = load("b = uiButton\n{\n sprite = ok\n flags = uib_hover | UIB_PRESSED | UIB_DONTDRAWIDLE\n"
                       " clicksound = \"big click\"\n HIGHLIGHTSOUND = glow\n particlesystem = fx.psi\n"
                       " hotkey = KEY_SPACE\n hotkey = KEY_TAB\n hotkey KEY_ENTER\n clicksound\n"
                       " highlightsound\n particlesystem\n}\n");
    ASSERT_TRUE(b);
    EXPECT_EQ(b->getWidgetFlags(), UIB_HOVER | UIB_PRESSED | UIB_DONTDRAWIDLE);
    EXPECT_TRUE(svc.log.has(2, "...unknown hotkey: \"^C00FF00KEY_TAB^c\"\f"));
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00hotkey = \"val\"^c\"\f"));
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00clicksound = \"string\"^c\"\f"));
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00highlightsound = \"string\"^c\"\f"));
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00particlesystem = \"string\"^c\"\f"));
    EXPECT_EQ(svc.log.count(), 5) << svc.log.dump();

    b->setWidgetStates(true, true, true, false);
    stage.click(10, 10);
    EXPECT_EQ(svc.sound.played, std::vector<std::string>({"glow", "big click"}));
    EXPECT_EQ(svc.gfx.named("createParticleSystemInstance")[0].text, "fx.psi");
    for (int i = 0; i < 6; ++i)
        stage.update(16);
    stage.keyUp(32); // KEY_SPACE stayed: the unknown name changed nothing
    EXPECT_EQ(svc.sound.played, std::vector<std::string>({"glow", "big click", "big click"}));
}

} // namespace
