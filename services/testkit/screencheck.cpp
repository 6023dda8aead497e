#include "screencheck.h"
#include "exercise.h"
#include "services.h"

namespace testkit {

namespace {

struct Run {
    bool failed;
    long long allocations, outstanding;
    int errors;
    std::string report;
};

// One life of the screen with allocation `failAt` failing (-1: none).
Run play(const std::map<std::string, std::string>& files, const std::string& file, long long failAt) {
    Services svc;
    for (const auto& [name, text] : files)
        svc.files.add(name, text);
    svc.memory.failAt(failAt);
    playScreen(file.c_str());
    int errors = 0;
    for (const LogEntry& e : svc.log.entries())
        errors += e.severity == Logger::kError;
    return {svc.memory.failed(), svc.memory.allocations(), svc.memory.outstandingBlocks(), errors,
            svc.memory.report() + svc.log.dump()};
}

// A press and a drag at every point of a 30-pixel grid, with a frame after each, then the workout.
void pokeEverywhere(uiSubsystem& ui) {
    for (int y = 5; y < 600; y += 30)
        for (int x = 5; x < 800; x += 30) {
            ui.inputEvent(UIE_MOUSE_MOVE, x, y, 0);
            ui.inputEvent(UIE_MOUSE_DOWN, x, y, 0);
            ui.inputEvent(UIE_MOUSE_MOVE, x + 20, y + 5, 0);
            ui.inputEvent(UIE_MOUSE_UP, x + 20, y + 5, 0);
            ui.render(16);
        }
    exercise(ui);
}

} // namespace

ScreenCheck checkScreen(const std::map<std::string, std::string>& files, const std::string& file) {
    ScreenCheck check;
    // Without failures no error, so that every error of a failing run comes from its failure.
    const Run clean = play(files, file, -1);
    if (clean.outstanding + clean.errors) return {"without failures:\n" + clean.report};
    long long n = 0;
    for (Run run = play(files, file, n); run.failed; run = play(files, file, ++n)) {
        if (run.outstanding) return {"allocation " + std::to_string(n) + " failing leaks:\n" + run.report};
        if (!run.errors) return {"allocation " + std::to_string(n) + " fails without an error logged\n"};
    }
    if (n != clean.allocations)
        check.problems += "only " + std::to_string(n) + " of " + std::to_string(clean.allocations) +
                          " allocations were made to fail\n";

    Services svc;
    for (const auto& [name, text] : files)
        svc.files.add(name, text);
    uiSubsystem ui;
    uiWidget* root = ui.loadUI(file.c_str());
    ui.setTopLevelWidget(root);
    pokeEverywhere(ui); // sprites, focus entries and queues reach their steady size
    svc.memory.reset();
    svc.gfx.clear();
    pokeEverywhere(ui);
    if (svc.memory.allocations())
        check.problems +=
            "frames and input once warm allocate " + std::to_string(svc.memory.allocations()) + " times\n";
    check.drew = svc.gfx.count("blt") > 0;
    ui.setTopLevelWidget(nullptr);
    delete root;
    ui.shutdown();
    uiWidget::s_freeScripletCache();
    return check;
}

} // namespace testkit
