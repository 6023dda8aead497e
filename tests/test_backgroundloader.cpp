// Loading descriptions on the background loader's worker thread while the game runs frames.
#include <gtest/gtest.h>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include "testkit.h"
#include "uibackgroundloader.h"
#include "uisubsystem.h"

namespace {

// Holds the parse that reaches it (through the progress callback) until the test opens it.
class Gate {
public:
    static void onProgress(uiWidget*, void* client, e_uiProgressEvent event) {
        if (event == UIPROG_CREATED) static_cast<Gate*>(client)->arrive();
    }
    // True once a parse waits at the gate; the bound only keeps a broken loader from hanging the suite.
    bool waitArrived() {
        std::unique_lock<std::mutex> lock(m_lock);
        return m_cv.wait_for(lock, std::chrono::seconds(60), [this] { return m_arrived; });
    }
    void open() {
        std::lock_guard<std::mutex> lock(m_lock);
        m_open = true;
        m_cv.notify_all();
    }

private:
    void arrive() {
        std::unique_lock<std::mutex> lock(m_lock);
        m_arrived = true;
        m_cv.notify_all();
        m_cv.wait(lock, [this] { return m_open; });
    }
    std::mutex m_lock;
    std::condition_variable m_cv;
    bool m_arrived = false, m_open = false;
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
    // A loader whose worker is held by `gate` inside a load of menu.txt, at the creation of its root.
    uiBackgroundLoader* loaderHeldInALoad(Gate& gate) {
        uiWidget::registerProgCb(&Gate::onProgress, &gate);
        uiBackgroundLoader* loader = new uiBackgroundLoader();
        loader->loadWidget("menu.txt");
        EXPECT_TRUE(gate.waitArrived());
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

    // The tree is parsed on the worker, initialised and activated there: it draws as soon as it is shown.
    std::thread::id parsedOn;
    uiWidget::registerProgCb(
        [](uiWidget*, void* client, e_uiProgressEvent) {
            *static_cast<std::thread::id*>(client) = std::this_thread::get_id();
        },
        &parsedOn);
    uiWidget* screen = uiWidget::allocWidget("screen", "uiNonVisualWidget");
    ui->setTopLevelWidget(screen);
    loader->loadWidget("menu.txt");
    while (loader->getState() != 1) {
        ui->update(16);
        ui->render(16);
    }
    uiWidget::registerProgCb(nullptr, nullptr);
    uiWidget* menu = loader->getWidget(nullptr);
    ASSERT_NE(menu, nullptr) << svc.log.dump();
    EXPECT_EQ(loader->getWidget(nullptr), nullptr); // handed over once
    EXPECT_NE(parsedOn, std::this_thread::get_id());
    EXPECT_STREQ(menu->getChildWidget("start", 0, true)->name, "start");
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

TEST_F(BackgroundLoader, TerminateLetsTheRunningLoadFinishAndForceTerminateMakesItGiveUp) {
    Gate gate;
    uiBackgroundLoader* loader = loaderHeldInALoad(gate);
    loader->terminate();
    EXPECT_EQ(loader->getState(), 2);
    gate.open();
    uiWidget* menu = loader->getWidget(nullptr);
    ASSERT_NE(menu, nullptr);
    loader->loadWidget("menu.txt"); // refused: nobody would carry it out
    EXPECT_EQ(loader->getState(), 1);
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    EXPECT_EQ(svc.files.opens("menu.txt"), 1);
    delete loader;
    delete menu;

    Gate forced;
    loader = loaderHeldInALoad(forced);
    ui->forceTerminate();
    forced.open();
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    ui->initialize(nullptr); // once the flag is cleared the same loader loads again
    loader->loadWidget("menu.txt");
    menu = loader->getWidget(nullptr);
    EXPECT_NE(menu, nullptr);
    delete menu;
    // The game may stop loads at any moment, unsynchronised with the worker: the load either finished
    // before it noticed or gave up, and nothing is left half-built.
    uiWidget::registerProgCb(nullptr, nullptr);
    loader->loadWidget("menu.txt");
    ui->forceTerminate();
    menu = loader->getWidget(nullptr);
    if (menu) {
        EXPECT_NE(menu->getChildWidget("start", 0, false), nullptr);
    }
    delete menu;
    ui->initialize(nullptr);
    delete loader;
}

TEST_F(BackgroundLoader, DestructionWaitsForTheRunningLoadAndDeletesItsTree) {
    Gate gate;
    uiBackgroundLoader* loader = loaderHeldInALoad(gate);
    std::thread opener([&gate] { gate.open(); });
    delete loader; // blocks until the worker has finished the load and ended
    opener.join();
    EXPECT_EQ(svc.gfx.count("createSprite"), 1);
    // The tear-down checks that the loaded tree, its sprite and the worker's registrations are gone.
}

TEST_F(BackgroundLoader, WithoutAWorkerFilesLoadOnTheCallingThread) {
    const std::string noWorker =
        "uiBackgroundLoader: could not start the worker thread; files load on the calling thread\f";
    int withoutWorker = 0;
    for (long long n = 0;; ++n) {
        svc.log.clear();
        svc.memory.failAt(n);
        uiBackgroundLoader* loader = new uiBackgroundLoader();
        const bool failed = svc.memory.failed();
        svc.memory.failAt(-1);
        EXPECT_EQ(svc.log.has(2, noWorker), failed && loader) << svc.log.dump();
        if (!failed) {
            delete loader;
            break;
        }
        if (!loader) continue; // no memory for the loader itself: new yields null
        ++withoutWorker;
        EXPECT_EQ(loader->getState(), 1);
        EXPECT_EQ(loader->getWidget(nullptr), nullptr);
        loader->loadWidget("menu.txt");
        EXPECT_EQ(loader->getState(), 1); // loaded before loadWidget returned
        uiWidget* menu = loader->getWidget(nullptr);
        ASSERT_NE(menu, nullptr);
        delete menu;
        delete loader;
        EXPECT_TRUE(svc.gfx.threads().empty());
    }
    EXPECT_EQ(withoutWorker, 2); // no lock, no thread object
}

} // namespace
