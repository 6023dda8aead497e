// Follows a load through the library's progress reports. Each parameter line a widget has just read is
// looked at again, split by the library's own tokenizer, for what the library resolves only later or
// never asks for while loading:
//   - "globalinputfocus = path": the path is resolved after loading; the key's place is kept so that
//     the library's message about an unknown path lands on it;
//   - "tabentry" without a value in a widget with no dialog above it: the key does nothing (warning);
//   - sounds ("clicksound", "highlightsound", "sound") and a button's particle file ("particlesystem"),
//     which are only asked of the services when played: checked against the asset folder;
//   - a block that never opened with "{" (its lines up to "}" are ignored; error) and lines between a
//     header and its "{" (ignored; warning), checked when the object is done;
//   - text after the closing "}" of a description's root object, which the library never reads (a "}"
//     too many above it, most of the time): reported by finish(), once the scriptlets are known.
// It also keeps each widget's header and the values its keys named, so that wake() can place what a
// widget asks for when it first becomes active after loading (its sprite) at the key that named it.
#pragma once
#include <map>
#include <string>
#include <vector>
#include "assetfolder.h"
#include "diagnostics.h"
#include "uiwidget.h"

namespace uilint {

class LoadWatch {
public:
    LoadWatch(devtools::Diagnostics& out, const AssetFolder& assets); // installs the progress callback
    ~LoadWatch();                                                     // and removes it
    // After loading: activates every widget of the tree, one at a time, as a game showing it would.
    void wake(uiWidget* root);
    void finish(); // after loading: reports text after the root objects of the files read
    LoadWatch(const LoadWatch&) = delete;
    LoadWatch& operator=(const LoadWatch&) = delete;

private:
    struct FileRoot {
        std::string file, name;
        int end; // the line that closed the root object
    };

    static void s_progress(uiWidget* widget, void* client, e_uiProgressEvent event);
    void created(uiWidget* widget);
    void done(uiWidget* widget);
    void paramRead(uiWidget* widget);
    void checkOpening(const uiWidget* widget, const devtools::Place& header, int closing);
    // The text of `line` (from 1) of `file`, split into lines as the parser splits them; null if none.
    const std::string* lineText(const std::string& file, int line);
    // The first line from `line` on that holds a statement (a token outside comments, which are skipped
    // as the library skips them), with its tokens; 0 at the end of the file. *inComment carries over.
    int nextStatement(const std::string& file, int line, bool* inComment, std::vector<std::string>* tokens);

    devtools::Diagnostics& m_out;
    const AssetFolder& m_assets;
    std::map<std::string, std::vector<std::string>> m_files;
    std::map<const uiWidget*, devtools::Place> m_headers;
    std::map<const uiWidget*, std::vector<devtools::NamedValue>> m_values; // what each widget's keys named
    std::vector<FileRoot> m_roots;
    std::vector<std::string> m_scriptlets; // files named by "#scriptlet": they have no root object
};

} // namespace uilint
