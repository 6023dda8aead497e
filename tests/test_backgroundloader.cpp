// Loading descriptions on the background loader's worker thread while the game runs frames.
#include <gtest/gtest.h>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include "testkit.h"
#include "uibackgroundloader.h"
#include "uinonvisualwidget.h"
#include "uisubsystem.h"
#include "uivisualwidget.h"

namespace {

const char kWorkerName[] = "^CFFFF00BackgroundLoader^c";
const char kMenu[] = "menu = uiNonVisualWidget\n"
                     "{\n"
                     "    width = 800\n"
                     "    child start = uiVisualWidget\n"
                     "    {\n"
                     "        sprite = \"start\"\n"
                     "        flags = WF_VISIBLE | WF_ACTIVE\n"
                     "    }\n"
                     "}\n";

// Holds the parse that reaches it (through the progress callback) until the test opens it.
class Gate {
public:
    static void onProgress(uiWidget* w, void* client, e_uiProgressEvent event) {
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

// A widget that tells when it is destroyed.
class Tracked : public uiNonVisualWidget {
public:
    explicit Tracked(bool* destroyed) : m_destroyed(destroyed) {}
    ~Tracked() override { *m_destroyed = true; }

private:
    bool* m_destroyed;
};

class BackgroundLoader : public ::testing::Test {
protected:
    testkit::Services svc;
    uiSubsystem* ui = nullptr;

    void SetUp() override {
        ui = new uiSubsystem();
        ui->initialize(nullptr);
        svc.files.add("menu.txt", kMenu);
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

TEST_F(BackgroundLoader, WorkerRegistersWithTheServicesAndEndsWithTheLoader) {
    uiBackgroundLoader* loader = new uiBackgroundLoader();
    EXPECT_EQ(loader->getWidget(nullptr), nullptr); // waits for the worker to start
    EXPECT_EQ(loader->getState(), 1);
    EXPECT_EQ(svc.gfx.threads(), std::vector<std::string>{kWorkerName});
    EXPECT_EQ(svc.files.registeredThreads(), 1);
    EXPECT_EQ(svc.log.clients(), std::vector<std::string>{kWorkerName});
    delete loader; // the tear-down checks that the registrations ended with it
}

TEST_F(BackgroundLoader, LoadsARealFileOnTheWorkerWhileFramesRun) {
    File::setBackend(nullptr); // the files on disk
    const std::string path = std::string(GAMEUI_TEST_DATA) + "/loader_screen.txt";
    uiWidget* screen = uiWidget::allocWidget("screen", "uiVisualWidget");
    static_cast<uiVisualWidget*>(screen)->setSprite("backdrop", 0, 0, false);
    screen->setWidgetStates(true, true, true, true);
    ui->setTopLevelWidget(screen);

    struct Threads {
        std::mutex lock;
        std::thread::id parsedOn;
    } threads;
    uiWidget::registerProgCb(
        [](uiWidget*, void* client, e_uiProgressEvent) {
            auto* t = static_cast<Threads*>(client);
            std::lock_guard<std::mutex> guard(t->lock);
            t->parsedOn = std::this_thread::get_id();
        },
        &threads);

    uiBackgroundLoader* loader = new uiBackgroundLoader();
    loader->loadWidget(path.c_str());
    int frames = 0;
    while (loader->getState() != 1) {
        ui->update(16);
        ui->render(16);
        ++frames;
    }
    uiWidget* loaded = loader->getWidget(nullptr);
    ASSERT_NE(loaded, nullptr) << svc.log.dump();
    EXPECT_EQ(loader->getWidget(nullptr), nullptr); // handed over once
    {
        std::lock_guard<std::mutex> guard(threads.lock);
        EXPECT_NE(threads.parsedOn, std::this_thread::get_id());
    }
    EXPECT_STREQ(loaded->name, "loading");
    ASSERT_NE(loaded->getChildWidget("logo", 0, true), nullptr);
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();

    // The tree was initialised and activated on the worker: it draws as soon as the game shows it.
    delete loader;
    svc.gfx.clear();
    ui->setTopLevelWidget(loaded);
    ui->render(16);
    EXPECT_EQ(svc.gfx.count("blt"), 3); // two logo tiles and the spinner
    EXPECT_EQ(svc.gfx.named("blt")[0].ints.back(), 128);
    ui->setTopLevelWidget(nullptr);
    delete loaded;
    delete screen;
}

TEST_F(BackgroundLoader, RequestsTakeTheNameAsGivenAndHandOverTheResultOnce) {
    uiBackgroundLoader* loader = new uiBackgroundLoader();
    const std::string longName(200, 'n');
    loader->loadWidget(longName.c_str());
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    EXPECT_EQ(svc.files.opens(longName.substr(0, 127)), 1);
    EXPECT_TRUE(
        svc.log.has(2, "uiSubsystem: could not open file: \"^C00FF00" + longName.substr(0, 127) + "^c\"\f"));

    loader->loadWidget(nullptr);
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    EXPECT_EQ(svc.files.opens(""), 1);

    loader->loadWidget("menu.txt");
    uiWidget* menu = loader->getWidget(nullptr);
    ASSERT_NE(menu, nullptr);
    EXPECT_STREQ(menu->name, "menu");
    EXPECT_EQ(loader->getState(), 1);

    // Without a subsystem there is nothing to load through.
    g_ui = nullptr;
    loader->loadWidget("menu.txt");
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    g_ui = ui;
    EXPECT_TRUE(svc.log.has(2, "uiBackgroundLoader: no uiSubsystem to load \"^C00FF00menu.txt^c\"\f"));
    delete loader;
    delete menu;
}

TEST_F(BackgroundLoader, OwnsWhatItHoldsUntilItIsTakenOrReplaced) {
    bool firstGone = false, secondGone = false;
    uiBackgroundLoader* loader = new uiBackgroundLoader();
    EXPECT_EQ(loader->getWidget(new Tracked(&firstGone)), nullptr);
    loader->loadWidget("menu.txt");
    uiWidget* menu = loader->getWidget(new Tracked(&secondGone));
    EXPECT_TRUE(firstGone); // deleted by the load that replaced it
    ASSERT_NE(menu, nullptr);
    delete menu;
    EXPECT_FALSE(secondGone);
    delete loader; // still holds the second one
    EXPECT_TRUE(secondGone);

    // A result that was never taken goes with the loader too.
    loader = new uiBackgroundLoader();
    loader->loadWidget("menu.txt");
    while (loader->getState() != 1)
        ui->update(16);
    delete loader;
}

TEST_F(BackgroundLoader, TerminateLetsTheRunningLoadFinishAndRefusesNewRequests) {
    Gate gate;
    uiBackgroundLoader* loader = loaderHeldInALoad(gate);
    loader->terminate();
    EXPECT_EQ(loader->getState(), 2);
    gate.open();
    uiWidget* menu = loader->getWidget(nullptr);
    ASSERT_NE(menu, nullptr);
    EXPECT_STREQ(menu->name, "menu");

    loader->loadWidget("menu.txt"); // refused: nobody would carry it out
    EXPECT_EQ(loader->getState(), 1);
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    EXPECT_EQ(svc.files.opens("menu.txt"), 1);
    delete loader;
    delete menu;
}

TEST_F(BackgroundLoader, ForceTerminateMakesTheRunningLoadGiveUp) {
    Gate gate;
    uiBackgroundLoader* loader = loaderHeldInALoad(gate);
    ui->forceTerminate();
    gate.open();
    EXPECT_EQ(loader->getWidget(nullptr), nullptr);
    ui->initialize(nullptr);

    // Once the flag is cleared the same loader loads again.
    loader->loadWidget("menu.txt");
    uiWidget* menu = loader->getWidget(nullptr);
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
    // TearDown checks that the loaded tree, its sprite and the worker's registrations are gone.
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
        if (!failed) {
            EXPECT_FALSE(svc.log.has(2, noWorker));
            delete loader;
            break;
        }
        if (!loader) continue; // no memory for the loader itself: new yields null
        ++withoutWorker;
        EXPECT_TRUE(svc.log.has(2, noWorker)) << svc.log.dump();
        EXPECT_EQ(loader->getState(), 1);
        EXPECT_EQ(loader->getWidget(nullptr), nullptr);
        loader->loadWidget("menu.txt");
        EXPECT_EQ(loader->getState(), 1); // loaded before loadWidget returned
        uiWidget* menu = loader->getWidget(nullptr);
        ASSERT_NE(menu, nullptr);
        EXPECT_STREQ(menu->name, "menu");
        delete menu;
        delete loader;
        EXPECT_TRUE(svc.gfx.threads().empty());
    }
    EXPECT_EQ(withoutWorker, 2); // no lock, no thread object
}

} // namespace
