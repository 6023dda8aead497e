// The subsystem lock on the platform's own primitive: it keeps frames out while another thread holds it,
// and code inside a frame may take it again.
#include <gtest/gtest.h>
#include <atomic>
#include <thread>
#include "probe_widget.h"
#include "stage.h"
#include "testkit.h"

namespace {

// Takes the subsystem lock inside its own update, as widget code that calls the setters does.
class Relocker : public ProbeWidget {
public:
    int updates = 0;

protected:
    void _update(int, int) override {
        g_ui->updateLock(true);
        g_ui->setActiveWidget(nullptr);
        g_ui->updateLock(false);
        ++updates;
    }
};

TEST(SubsystemLockThread, HeldLockKeepsFramesOutAndAFrameMayTakeItAgain) {
    testkit::Services svc;
    testkit::Stage stage;
    Relocker* w = stage.attach(new Relocker());

    stage.update(16); // would never return if the lock were not recursive
    EXPECT_EQ(w->updates, 1);

    stage.ui().updateLock(true);
    const unsigned long long before = uiWidget::s_frameNumber;
    std::atomic<bool> started{false};
    std::thread game([&] {
        started = true;
        stage.update(16);
    });
    while (!started)
        std::this_thread::yield();
    for (int i = 0; i < 1000; ++i)
        std::this_thread::yield();
    // However long the frame thread ran, it cannot have stepped the clock past the held lock.
    EXPECT_EQ(uiWidget::s_frameNumber, before);
    EXPECT_EQ(w->updates, 1);
    stage.ui().updateLock(false);
    game.join();
    EXPECT_EQ(uiWidget::s_frameNumber, before + 1);
    EXPECT_EQ(w->updates, 2);
}

} // namespace
