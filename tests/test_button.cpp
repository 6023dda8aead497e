// Buttons as a game uses them: clicks driven through the subsystem, the drawn animation by state, frame
// stepping, sounds, hotkeys, particle systems, enabling and the description keys.
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include "screen.h"
#include "testkit.h"
#include "uibutton.h"

namespace {

using Ints = std::vector<int>;
using Names = std::vector<std::string>;

class Button : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    testkit::CallbackLog log;
    uiButton* button = nullptr;
    std::unique_ptr<testkit::Screen> screen;

    void SetUp() override {
        svc.gfx.defineSprite("ok", 100, 40, {4, 4, 4, 4, 3, 5, 6, 7});
        button = makeButton("ok", 100, 100);
    }
    void TearDown() override { stage.ui().setTopLevelWidget(stage.root()); }

    // A button at (x, y) sized by its sprite, attached to the stage, its clicks logged.
    uiButton* makeButton(const char* name, int x, int y) {
        auto* b = stage.add<uiButton>("uiButton", name, {x, y, 0, 0});
        b->setSprite("ok", 0, 0, true);
        log.watch(b, testkit::CallbackLog::kUp);
        return b;
    }
    // A description loaded as the top-level widget instead of the stage's tree, its clicks logged.
    uiButton* load(const std::string& description) {
        screen = std::make_unique<testkit::Screen>(svc, description);
        stage.ui().setTopLevelWidget(screen->root());
        log.watch(screen->root(), testkit::CallbackLog::kUp);
        return static_cast<uiButton*>(screen->root());
    }
    // Animation, frame and alpha of each draw of one frame.
    std::vector<Ints> frame(unsigned int ms = 16) {
        return testkit::renderLooks(svc.gfx, stage.ui(), ms, {4, 5, 6});
    }
    int drawnAnim() {
        std::vector<Ints> d = frame();
        return d.empty() ? -1 : d[0][0];
    }
};

TEST_F(Button, ClickGoesThroughTheFocusStackAndIsCancelledByLeavingLosingFocusOrDisabling) {
    EXPECT_EQ(button->rect.x2, 200); // sized by the sprite on activation
    // Without memory for the focus entry the release still reaches the button through the tree.
    stage.move(150, 120);
    svc.memory.failAt(0);
    stage.press(150, 120);
    EXPECT_TRUE(svc.memory.failed());
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.release(150, 120);
    stage.update(16, 6);
    stage.press(150, 120);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), button);
    stage.release(151, 121);
    EXPECT_EQ(log.events, (Names{"up ok 150,120", "up ok 151,121"}));
    EXPECT_EQ(svc.sound.played, (Names{"highlight", "click", "click"}));
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    EXPECT_TRUE(button->isHovering());
    stage.release(150, 120); // a release that ends no press is consumed without a click
    stage.keyUp(-1);         // a button without a hotkey has none, whatever the key code
    // A press within five frames of a click is swallowed; the sixth frame count since the click takes one.
    stage.update(16, 5);
    stage.press(150, 120);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr); // not pressed, not pushed
    stage.release(150, 120);
    stage.update(16);
    stage.press(150, 120);
    stage.move(400, 400); // reaches the button first through the focus stack
    EXPECT_FALSE(button->isHovering());
    stage.release(400, 400);
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.move(150, 120);
    stage.release(150, 120); // back over the button: the press was cancelled
    EXPECT_EQ(svc.sound.played, (Names{"highlight", "click", "click", "highlight"}));

    // Deactivation and losing focus each end the hover and cancel the press.
    for (bool deactivate : {true, false}) {
        stage.move(150, 120);
        stage.press(150, 120);
        deactivate ? button->setActive(false, false) : button->setInputFocus(false, false);
        EXPECT_FALSE(button->isHovering());
        deactivate ? button->setActive(true, false) : button->setInputFocus(true, false);
        stage.release(150, 120);
    }
    EXPECT_EQ(log.events.size(), 2u);
    // So does disabling, which also leaves the focus stack; enabling again plays nothing.
    stage.move(150, 120);
    stage.press(150, 120);
    button->disable();
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    EXPECT_FALSE(button->isHovering());
    EXPECT_FALSE(button->getInputFocus());
    svc.sound.clear();
    stage.click(150, 120);
    button->enable();
    EXPECT_TRUE(button->getInputFocus());
    EXPECT_TRUE(svc.sound.played.empty());
    stage.click(150, 120);
    EXPECT_EQ(log.events.size(), 3u);
    EXPECT_EQ(svc.sound.played, (Names{"highlight", "click"}));

    // Deleted in the middle of a gesture, it takes its focus entry along.
    stage.update(16, 6);
    stage.press(150, 120);
    ASSERT_EQ(stage.ui().getInputFocusWidget(), button);
    button->detachFromParent();
    delete button;
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    stage.release(150, 120);
    EXPECT_EQ(log.events.size(), 3u);
    // A button that never held the pointer does not wait for the subsystem lock when it goes: trees are
    // deleted on loading threads while a frame runs.
    uiButton* idle = makeButton("idle", 300, 300);
    idle->detachFromParent();
    stage.ui().updateLock(true);
    std::thread([idle] { delete idle; }).join();
    stage.ui().updateLock(false);
}

TEST_F(Button, AnimationFollowsTheStateInBothLayoutsAndFramesStepByRate) {
    button->setAnim(4);
    EXPECT_EQ(drawnAnim(), 4); // no hover or pressed animation: always the idle one
    stage.move(150, 120);
    EXPECT_EQ(drawnAnim(), 4);
    button->setWidgetFlags(button->getWidgetFlags() | UIB_HOVER | UIB_PRESSED);
    Ints anims;
    auto look = [&](int x, bool press, bool disable) {
        stage.move(x, 120);
        if (press) stage.press(x, 120);
        if (disable) button->disable();
        anims.push_back(drawnAnim());
        button->enable();
        if (press) stage.release(400, 400);
    };
    for (bool threeAnims : {false, true}) {
        if (threeAnims) button->setWidgetFlags(button->getWidgetFlags() | UIB_DONTDRAWIDLE);
        for (int x : {400, 150})
            look(x, false, false);
        look(150, true, false);
        look(150, true, true);
    }
    EXPECT_EQ(anims, (Ints{4, 5, 6, 7, 4, 4, 5, 6})); // idle is still drawn in the three-animation layout

    button->setWidgetFlags(button->getWidgetFlags() & ~UIB_DONTDRAWIDLE);
    stage.move(400, 400);
    button->setAnim(4); // 3 frames; the hover animation 5 has 5
    EXPECT_EQ(frame(0), (std::vector<Ints>{{4, 0, 255}}));
    // The rate is 1000 ms: 1000 is not more than the rate, 1001 is.
    EXPECT_EQ(frame(1000), (std::vector<Ints>{{4, 0, 255}}));
    EXPECT_EQ(frame(1), (std::vector<Ints>{{4, 1, 255}}));
    EXPECT_EQ(frame(2500), (std::vector<Ints>{{4, 0, 255}})); // two frames further, modulo 3
    stage.move(150, 120);                                     // hover: animation 5 from frame 0
    EXPECT_EQ(frame(0), (std::vector<Ints>{{5, 0, 255}}));
    EXPECT_EQ(frame(3500), (std::vector<Ints>{{5, 3, 255}}));
    button->setAlpha(0, 0, 0, false);
    EXPECT_EQ(frame(0), (std::vector<Ints>{{5, 3, 0}})); // drawn also when transparent

    // A rate from the description keeps the remainder; a rate of 0 holds the frame.
    load("b = uiButton\n{\n sprite = ok\n rate = 100\n flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n");
    Ints frames;
    for (unsigned int ms : {0, 100, 150, 50, 1})
        frames.push_back(frame(ms).at(0)[1]);
    EXPECT_EQ(frames, (Ints{0, 0, 2, 2, 3})); // 250 ms: two frames, 50 kept; 100 again is not more
    load("b = uiButton\n{\n sprite = ok\n rate = 0\n flags = WF_ACTIVE | WF_VISIBLE | WF_INPUT_FOCUS\n}\n");
    EXPECT_EQ(frame(5000), (std::vector<Ints>{{0, 0, 255}}));

    // A graphics service that reports animations without frames: the first frame is held.
    struct NoFramesGfx : testkit::RecordingGfx {
        int getSpriteFrameCount(int, int) override { return 0; }
    } gfx;
    g_gfx = &gfx;
    stage.ui().setTopLevelWidget(stage.root());
    stage.render(5000);
    stage.render(5000);
    g_gfx = &svc.gfx;
    EXPECT_EQ(gfx.ints("blt").at(1)[5], 0);
}

TEST_F(Button, ParticleSystemStartsOnClickRestartsAndIsReleasedWhenDead) {
    button->setParticleSystem("sparks.psi");
    frame();
    EXPECT_EQ(svc.gfx.count("createParticleSystemInstance"), 0);
    stage.click(150, 120);
    EXPECT_EQ(svc.gfx.particleOwner(0), "ok");
    testkit::renderFrame(svc.gfx, stage.ui(), 16);
    // Advanced at the sprite's centre, drawn after the button.
    EXPECT_EQ(svc.gfx.transcript({"updateParticleSystem", "blt", "psemit"}),
              "updateParticleSystem 0 150 120 0.016; blt 0 0 100 100 0 0 255; psemit 0 0 1; ");
    stage.update(16, 6);
    svc.gfx.clear();
    stage.click(150, 120); // running: restarted, not created again
    EXPECT_EQ(svc.gfx.count("createParticleSystemInstance"), 0);
    EXPECT_EQ(svc.gfx.ints("addEvent"), (std::vector<Ints>{{4, 0, 0, 0}}));
    svc.gfx.setParticleDead(0, true);
    svc.gfx.clear();
    stage.update(16);
    EXPECT_EQ(svc.gfx.texts("releaseParticleSystemInstance"), Names{"ok"});
    EXPECT_EQ(frame().size(), 1u);
    EXPECT_EQ(svc.gfx.count("psemit"), 0);
    stage.update(16, 6);
    stage.click(150, 120); // a new instance
    EXPECT_EQ(svc.gfx.particleOwner(1), "ok");
}

TEST_F(Button, DescriptionKeysAndTheHotkeyClickingAtTheCorner) {
    uiButton* b = load("b = uiButton\n{\n sprite = ok\n x = 10\n y = 10\n flags = uib_hover | UIB_PRESSED |"
                       " UIB_DONTDRAWIDLE\n clicksound = \"big click\"\n HIGHLIGHTSOUND = glow\n"
                       " particlesystem = fx.psi\n hotkey = KEY_SPACE\n hotkey = KEY_TAB\n hotkey KEY_ENTER\n"
                       " clicksound\n highlightsound\n particlesystem\n}\n");
    EXPECT_EQ(b->getWidgetFlags(), UIB_HOVER | UIB_PRESSED | UIB_DONTDRAWIDLE);
    EXPECT_EQ(svc.log.dump(), "2: ...unknown hotkey: \"^C00FF00KEY_TAB^c\"\f\n"
                              "2: ...expected: \"^C00FF00hotkey = \"val\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00clicksound = \"string\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00highlightsound = \"string\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00particlesystem = \"string\"^c\"\f\n");
    b->setWidgetStates(true, true, true, false);
    stage.keyDown(32);
    EXPECT_TRUE(log.events.empty());
    stage.keyUp(32); // KEY_SPACE stayed; it clicks at the corner wherever the pointer is
    EXPECT_EQ(log.events, Names{"up b 10,10"});
    EXPECT_EQ(stage.ui().getInputFocusWidget(), nullptr);
    EXPECT_EQ(svc.gfx.texts("createParticleSystemInstance"), Names{"fx.psi"});
    stage.update(16, 6);
    stage.click(20, 20);
    EXPECT_EQ(svc.sound.played, (Names{"glow", "big click", "big click"}));
    stage.keyUp(13);
    // With an alpha-tested sprite whose corner is transparent the hotkey finds nothing to click.
    svc.gfx.setAlphaMask("ok", [](int, int, int x, int y) { return x > 0 || y > 0; });
    b->setWidgetFlags(b->getWidgetFlags() | WF_ALPHA_TEST);
    stage.keyUp(32);
    b->disable();
    b->setWidgetFlags(b->getWidgetFlags() & ~WF_ALPHA_TEST);
    stage.keyUp(32);
    EXPECT_EQ(log.events.size(), 2u);
}

} // namespace
