#include "livereload.h"
#include <algorithm>
#include <cstdio>
#include <fstream>
#include "diagnostics.h"
#include "uisubsystem.h"
#include "screenstate.h"

namespace devtools {
namespace {

const char* const kAssetWords[] = {"sprites", "fonts", "sounds", "particle files"};

// Keeps what a load reports and passes every message on to the game's own sink.
class LoadReport : public Diagnostics {
public:
    explicit LoadReport(const std::string& file) : m_next(Logger::sink()) {
        setTopFile(file);
        Logger::setSink(this);
    }
    ~LoadReport() override { Logger::setSink(m_next); }
    LoadReport(const LoadReport&) = delete;
    LoadReport& operator=(const LoadReport&) = delete;

    void write(int severity, const char* text) override {
        Diagnostics::write(severity, text);
        if (m_next)
            m_next->write(severity, text);
        else
            std::fprintf(stderr, "%s\n", plainText(text).c_str());
    }

private:
    Logger::Sink* m_next;
};

} // namespace

LiveReload::LiveReload(const uiDevtoolsOptions& options)
    : m_options(options), m_watch(options.pollMs, options.settleMs) {}

LiveReload::~LiveReload() = default;

uiWidget* LiveReload::_build(Screen& screen, std::vector<std::string>& problems, bool* failed) {
    screen.files.clear();
    LoadReport report(screen.file);
    FileRecorder::record(&screen.files);
    uiWidget* root = g_ui ? g_ui->loadUI(screen.file.c_str()) : nullptr;
    FileRecorder::record(nullptr);
    *failed = !root;
    for (const Diagnostic& d : report.all()) {
        problems.push_back(diagnosticLine(d));
        *failed = *failed || d.severity >= Logger::kError;
    }
    if (!root && problems.empty())
        problems.push_back(screen.file + ": error: the description gave no screen");
    return root;
}

void LiveReload::_watch(Screen& screen) {
    for (const std::string& f : screen.files)
        m_watch.add(f);
    screen.assets = assetNames(screen.root);
    screen.assetFiles.clear();
    if (!m_options.assets) return;
    for (const AssetName& a : screen.assets) {
        std::vector<std::string> files;
        m_options.assets->files(a.first, a.second.c_str(), files);
        for (const std::string& f : files) {
            screen.assetFiles.emplace(f, a);
            m_watch.add(f);
        }
    }
}

uiWidget* LiveReload::load(const char* file) {
    auto screen = std::make_unique<Screen>();
    screen->file = file;
    std::vector<std::string> problems;
    bool failed;
    screen->root = _build(*screen, problems, &failed);
    if (!screen->root) return nullptr; // the library has logged why
    _watch(*screen);
    m_screens.push_back(std::move(screen));
    return m_screens.back()->root;
}

void LiveReload::forget(uiWidget* root) {
    m_screens.erase(std::remove_if(m_screens.begin(), m_screens.end(),
                                   [&](const std::unique_ptr<Screen>& s) { return s->root == root; }),
                    m_screens.end());
    _gatherProblems();
}

void LiveReload::_watchSounds() {
    m_sounds.install();
    if (!m_options.assets) return;
    for (const std::string& name : m_sounds.takePlayed()) {
        std::vector<std::string> files;
        m_options.assets->files(UIASSET_SOUND, name.c_str(), files);
        for (const std::string& f : files) {
            m_soundFiles.emplace(f, AssetName{UIASSET_SOUND, name});
            m_watch.add(f);
        }
    }
}

void LiveReload::frame(unsigned long long now) {
    _watchSounds();
    const std::vector<std::string> changed = m_watch.changed(now);
    if (changed.empty()) return;
    std::set<AssetName> assets;
    for (const std::string& f : changed) {
        const auto sound = m_soundFiles.find(f);
        if (sound != m_soundFiles.end()) assets.insert(sound->second);
    }
    std::set<std::string> unreadable;
    for (const std::string& f : changed)
        if (!std::ifstream(f)) unreadable.insert(f);
    std::vector<Screen*> affected;
    for (const auto& screen : m_screens) {
        bool hit = false;
        for (const std::string& f : changed) {
            const auto asset = screen->assetFiles.find(f);
            if (asset != screen->assetFiles.end()) assets.insert(asset->second);
            hit = hit || screen->files.count(f) || asset != screen->assetFiles.end();
        }
        if (hit) affected.push_back(screen.get());
    }
    for (const AssetName& a : assets)
        if (m_options.assets) _reloadAsset(a);
    uiWidget::s_freeScripletCache();
    for (Screen* screen : affected)
        _rebuild(*screen, unreadable);
    _gatherProblems();
}

void LiveReload::_rebuild(Screen& screen, const std::set<std::string>& unreadable) {
    std::vector<std::string> problems;
    bool failed;
    uiWidget* root = _build(screen, problems, &failed);
    for (const std::string& f : screen.files)
        m_watch.add(f); // a broken file's new includes are watched too, so that saving them retries
    for (const std::string& f : unreadable)
        if (screen.assetFiles.count(f)) {
            problems.push_back(f + ": error: cannot be read");
            failed = true;
        }
    screen.problems = failed ? problems : std::vector<std::string>();
    if (failed) {
        delete root;
        return;
    }
    uiWidget* old = screen.root;
    ScreenState state;
    state.capture(old, *g_ui);
    state.restore(root, old, *g_ui);
    screen.root = root;
    if (m_options.wire) m_options.wire(root, old, m_options.client);
    delete old;
    _watch(screen);
    ++m_reloads;
}

void LiveReload::_reloadAsset(const AssetName& asset) {
    if (m_options.assets->reload(asset.first, asset.second.c_str())) return;
    if (!m_cannotReload.insert(asset.first).second) return;
    Logger::log(Logger::kWarning,
                "devtools: the service cannot reload %s; \"%s\" and any other keep their old contents\f",
                kAssetWords[asset.first], asset.second.c_str());
}

void LiveReload::_gatherProblems() {
    m_problems.clear();
    for (const auto& screen : m_screens)
        m_problems.insert(m_problems.end(), screen->problems.begin(), screen->problems.end());
}

} // namespace devtools
