// Loading descriptions on the background loader's worker thread while the game runs frames.
#include <gtest/gtest.h>
#include <atomic>
#include <thread>
#include "testkit.h"
#include "uibackgroundloader.h"
#include "uisubsystem.h"

namespace {

// Holds the parse that reaches it (through the progress callback) until the test opens it. A flag, not
// a mutex: the worker waits inside the loader's lock, which the test's thread takes too.
struct Gate {
    std::atomic<bool> held{true};
    std::atomic<bool> arrived{false};
    static void onProgress(uiWidget*, void* client, e_uiProgressEvent event) {
        auto* gate = static_cast<Gate*>(client);
        if (event != UIPROG_CREATED) return;
        gate->arrived = true;
        while (gate->held)
            std::this_thread::yield();
    }
};

class BackgroundLoader : public ::testing::Test {
protected:
    testkit::Services svc;
    uiSubsystem* ui = new uiSubsystem();

    void SetUp() override {
        svc.files.add("menu.txt",
                      "menu = uiNonVisualWidget\n{\n    child start = uiVisualWidget\n    {\n"
                      "        sprite = \"start\"\n        flags = WF_VISIBLE | WF_ACTIVE\n    }\n"
                      "    flags = WF_VISIBLE | WF_ACTIVE\n}\n");
    }
    void TearDown() override {
        uiWidget::registerProgCb(nullptr, nullptr);
        ui->shutdown();
        delete ui;
        EXPECT_TRUE(svc.gfx.threads().empty());
        EXPECT_EQ(svc.files.registeredThreads(), 0);
        EXPECT_EQ(svc.gfx.liveSprites(), 0);
        EXPECT_EQ(svc.memory.outstandingBlocks(), 0) << svc.memory.report();
    }
    // A loader whose worker is held by `gate` inside a load of menu.txt, at its root.
    uiBackgroundLoader* loaderHeldInALoad(Gate& gate) {
        uiWidget::registerProgCb(&Gate::onProgress, &gate);
        uiBackgroundLoader* loader = new uiBackgroundLoader();
        loader->loadWidget("menu.txt");
        while (!gate.arrived)
            std::this_thread::yield();
        return loader;
    }
};

TEST_F(BackgroundLoader, LoadsOnTheWorkerWhileFramesRunAndHandsTheResultOverOnce) {
    uiBackgroundLoader* loader = new uiBackgroundLoader();
    EXPECT_EQ(loader->getWidget(nullptr), nullptr); // waits for the worker to start
    const std::vector<std::string> worker{"^CFFFF00BackgroundLoader^c"};
    EXPECT_EQ(svc.gfx.threads(), worker); // the worker registers with the services
    EXPECT_EQ(svc.files.registeredThreads(), 1);
    EXPECT_EQ(svc.log.clients(), worker);

    // Frames run while the worker parses; the tree comes initialised and activated: it draws at once.
    uiWidget* screen = uiWidget::allocWidget("screen", "uiNonVisualWidget");
    ui->setTopLevelWidget(screen);
    loader->loadWidget("menu.txt");
    while (loader->getState() != 1) {
        ui->update(16);
        ui->render(16);
    }
    uiWidget* menu = loader->getWidget(nullptr);
    ASSERT_NE(menu, nullptr) << svc.log.dump();
    EXPECT_EQ(loader->getWidget(nullptr), nullptr); // handed over once
    ui->setTopLevelWidget(menu);
    EXPECT_EQ(testkit::renderFrame(svc.gfx, *ui, 16).size(), 1u);
    ui->setTopLevelWidget(nullptr);
    delete menu;
    delete screen;

    // Names are taken as given, cut to 127 characters; a null name is an empty one.
    const std::string longName(200, 'n');
    loader->loadWidget(longName.c_str());
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    EXPECT_EQ(svc.files.opens(longName.substr(0, 127)), 1);
    loader->loadWidget(nullptr);
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    EXPECT_EQ(svc.files.opens(""), 1);
    // Without a subsystem there is nothing to load through.
    g_ui = nullptr;
    loader->loadWidget("menu.txt");
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    g_ui = ui;
    EXPECT_TRUE(svc.log.has(2, "uiBackgroundLoader: no uiSubsystem to load \"^C00FF00menu.txt^c\"\f"));
    delete loader; // the tear-down checks that the registrations ended with it
}

TEST_F(BackgroundLoader, TerminateAndDestructionLetTheRunningLoadFinishAndForceTerminateMakesItGiveUp) {
    Gate held;
    uiBackgroundLoader* loader = loaderHeldInALoad(held);
    held.held = false;
    delete loader; // waits for the worker to finish the load, and deletes the tree it built
    EXPECT_EQ(svc.gfx.count("createSprite") * 10 + svc.gfx.liveSprites(), 10); // finished, then deleted

    Gate gate;
    loader = loaderHeldInALoad(gate);
    loader->terminate();
    EXPECT_EQ(loader->getState(), 2);
    gate.held = false;
    uiWidget* menu = loader->getWidget(nullptr);
    ASSERT_NE(menu, nullptr);
    loader->loadWidget("menu.txt"); // refused: nobody would carry it out
    EXPECT_EQ(loader->getState(), 1);
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    EXPECT_EQ(svc.files.opens("menu.txt"), 2); // the load above and this one
    delete loader;
    delete menu;

    Gate forced;
    loader = loaderHeldInALoad(forced);
    ui->forceTerminate();
    forced.held = false;
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    ui->initialize(nullptr); // once the flag is cleared the same loader loads again
    loader->loadWidget("menu.txt");
    menu = loader->getWidget(nullptr);
    EXPECT_NE(menu, nullptr);
    delete menu;
    // Stopped at any moment, unsynchronised with the worker, a load finishes or gives up: never half-built.
    uiWidget::registerProgCb(nullptr, nullptr);
    loader->loadWidget("menu.txt");
    ui->forceTerminate();
    menu = loader->getWidget(nullptr);
    EXPECT_TRUE(!menu || menu->getChildWidget("start", 0, false));
    delete menu;
    ui->initialize(nullptr);
    delete loader;
}

TEST_F(BackgroundLoader, WithoutAWorkerFilesLoadOnTheCallingThread) {
    const std::string noWorker =
        "uiBackgroundLoader: could not start the worker thread; files load on the calling thread\f";
    int withoutWorker = 0;
    for (long long n = 0;; ++n) {
        svc.log.clear();
        svc.memory.failAt(n);
        uiBackgroundLoader* loader = new uiBackgroundLoader(); // null without memory for itself
        const bool failed = svc.memory.failed();
        svc.memory.failAt(-1);
        EXPECT_EQ(svc.log.has(2, noWorker), failed && loader) << svc.log.dump();
        if (failed && loader) { // no lock or no thread: each load is done before loadWidget returns
            ++withoutWorker;
            EXPECT_EQ(loader->getWidget(nullptr), nullptr);
            loader->loadWidget("menu.txt");
            EXPECT_EQ(loader->getState(), 1);
            delete loader->getWidget(nullptr);
            EXPECT_EQ(svc.gfx.count("createSprite"), withoutWorker);
            EXPECT_TRUE(svc.gfx.threads().empty());
        }
        delete loader;
        if (!failed) break;
    }
    EXPECT_EQ(withoutWorker, 2);
}

} // namespace
