// A uiview session without its window system: the screen shown, the click actions bound to its widgets,
// the screens loading in the background, and a script's timed events played frame by frame. The SDL
// program and the browser build both run their frames through it.
#pragma once
#include <memory>
#include <string>
#include <vector>
#include "options.h"
#include "screenloader.h"
#include "script.h"
#include "uiwidget.h"

class uiDialog;
class uiSubsystem;

class Session {
public:
    Session(const ViewOptions& options, uiSubsystem* ui);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Shows `root` with the start-up settings, starts the background loads and the statistics overlay.
    void start(uiWidget* root);
    // Before frame `number` of `ms` milliseconds is drawn: loads arriving, the top dialog settling.
    void advance(unsigned int ms, int number);
    // `replaced` was rebuilt as `root` (its files were saved): clicks and banners again, the old tree gone.
    void rewire(uiWidget* root, uiWidget* replaced);
    // Ends the loader's worker, shuts the subsystem down and deletes the screens shown.
    void close();
    bool quit() const { return m_quit; }
    int actions() const { return m_actions; }
    const ScreenLoader* loader() const { return m_loader.get(); }
    int switchedAt() const { return m_switchedAt; }

private:
    struct BoundAction {
        Session* session;
        ClickAction action;
    };
    static bool onClick(uiWidget*, void* client, int, int);
    void show(uiWidget* root);
    void bindActions();
    void printBanners(uiWidget* root);
    void startLoading();
    void settleTopDialog();

    const ViewOptions& m_options;
    uiSubsystem* m_ui;
    uiWidget* m_root = nullptr;
    bool m_quit = false;
    int m_actions = 0;
    std::vector<BoundAction> m_bound;
    std::unique_ptr<ScreenLoader> m_loader; // --load: the next screens
    std::vector<uiWidget*> m_shown;         // roots shown so far, deleted at the end
    int m_switchedAt = -1;                  // frame of the switch to the loaded screen
    uiDialog* m_settled = nullptr;          // the top dialog last reset
};

// Hands one scripted event to `deliver` (null: straight to the subsystem); keys and characters happen
// where the pointer is.
using Deliver = void (*)(uiSubsystem& ui, e_uiEvent kind, int x, int y, int key);
void sendScripted(const ScriptEvent& e, uiSubsystem& ui, Deliver deliver = nullptr);
