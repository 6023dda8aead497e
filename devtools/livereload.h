// Live reload: the screens loaded through it, the files each one was read from, and the rebuild that
// puts a screen back in place when one of them is saved.
#pragma once
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>
#include "assetnames.h"
#include "filerecorder.h"
#include "filewatch.h"
#include "soundrecorder.h"
#include "uidevtools.h"

namespace devtools {

class LiveReload {
public:
    explicit LiveReload(const uiDevtoolsOptions& options);
    ~LiveReload();
    LiveReload(const LiveReload&) = delete;
    LiveReload& operator=(const LiveReload&) = delete;

    uiWidget* load(const char* file);
    void forget(uiWidget* root);
    // Looks for saved files (at `now`, in milliseconds) and rebuilds the screens they belong to.
    void frame(unsigned long long now);

    const std::vector<std::string>& problems() const { return m_problems; }
    unsigned int reloads() const { return m_reloads; }

private:
    struct Screen {
        std::string file;
        uiWidget* root = nullptr;
        std::set<std::string> files; // read by the load, found or not
        std::set<AssetName> assets;  // named by its widgets
        std::map<std::string, AssetName> assetFiles;
        std::vector<std::string> problems; // of its last failed rebuild
    };

    // Loads the screen's description with what the load reported; *failed when it reported errors.
    uiWidget* _build(Screen& screen, std::vector<std::string>& problems, bool* failed);
    void _watch(Screen& screen);
    void _rebuild(Screen& screen, const std::set<std::string>& unreadable);
    void _reloadAsset(const AssetName& asset);
    void _gatherProblems();
    void _watchSounds();

    const uiDevtoolsOptions& m_options;
    FileRecorder m_recorder;
    FileWatch m_watch;
    std::vector<std::unique_ptr<Screen>> m_screens;
    SoundRecorder m_sounds;
    std::map<std::string, AssetName> m_soundFiles; // sounds belong to no one screen
    std::vector<std::string> m_problems;
    std::set<uiAssetKind> m_cannotReload; // kinds already reported
    unsigned int m_reloads = 0;
};

} // namespace devtools
