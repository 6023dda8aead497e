#include "loadwatch.h"
#include <cstring>
#include <fstream>
#include <iterator>
#include "assetgfx.h"
#include "parser.h"
#include "uiloadplace.h"

namespace uilint {
namespace {

struct AssetKey {
    const char* key;
    const char* what;
};
constexpr AssetKey kAssetKeys[] = {{"clicksound", "sound"},
                                   {"highlightsound", "sound"},
                                   {"sound", "sound"},
                                   {"particlesystem", "particle file"}};

constexpr size_t kMaxPath = 127; // the library keeps global input focus paths this long

bool underDialog(uiWidget* widget) {
    for (uiWidget* w = widget->getParent(); w; w = w->getParent())
        if (w->isType("uiDialog")) return true;
    return false;
}

std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    const size_t end = text.find('\0') == std::string::npos ? text.size() : text.find('\0');
    while (start < end) {
        size_t stop = text.find_first_of("\r\n", start);
        if (stop == std::string::npos || stop > end) stop = end;
        lines.push_back(text.substr(start, stop - start));
        start = stop + (text.compare(stop, 2, "\r\n") == 0 ? 2 : 1);
    }
    return lines;
}

} // namespace

LoadWatch::LoadWatch(Diagnostics& out, const AssetFolder& assets) : m_out(out), m_assets(assets) {
    uiWidget::registerProgCb(&LoadWatch::s_progress, this);
}

LoadWatch::~LoadWatch() {
    uiWidget::registerProgCb(nullptr, nullptr);
}

void LoadWatch::s_progress(uiWidget* widget, void* client, e_uiProgressEvent event) {
    if (!widget) return;
    LoadWatch* watch = static_cast<LoadWatch*>(client);
    if (event == UIPROG_CREATED) watch->created(widget);
    if (event == UIPROG_DONE) watch->done(widget);
    if (event == UIPROG_PARAM) watch->paramRead(widget);
}

void LoadWatch::created(uiWidget* widget) {
    const char* file;
    int line;
    if (uiLoadPlace(&file, &line)) m_createdIn[widget] = file;
}

// A widget whose header stands in another file than its parent's is the root object of its file.
void LoadWatch::done(uiWidget* widget) {
    const char* file;
    int line;
    if (!uiLoadPlace(&file, &line)) return;
    const uiWidget* parent = widget->getParent();
    if (!parent || m_createdIn[parent] != file) m_roots.push_back({file, widget->name, line});
}

void LoadWatch::finish() {
    for (const FileRoot& root : m_roots) {
        bool scriptlet = false;
        for (const std::string& s : m_scriptlets)
            scriptlet = scriptlet || uiWidget::s_namesEqual(s.c_str(), root.file.c_str());
        if (scriptlet) continue;
        bool inComment = false;
        for (int line = root.end + 1; const std::string* text = lineText(root.file, line); ++line) {
            std::string copy = *text;
            Parser parser(&copy[0]);
            const char* token = parser.ParseLine() ? parser.GetToken(" ") : nullptr;
            if (!token) continue;
            if (std::strcmp(token, "/*") == 0 || std::strcmp(token, "*/") == 0) {
                inComment = token[0] == '/';
                continue;
            }
            if (inComment) continue;
            m_out.addAt(root.file, line, 2, "text after the closing } of " + root.name + " is not read");
            break;
        }
    }
}

const std::string* LoadWatch::lineText(const std::string& file, int line) {
    auto it = m_files.find(file);
    if (it == m_files.end()) {
        std::ifstream in(file, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        it = m_files.emplace(file, splitLines(text)).first;
    }
    if (line < 1 || line > static_cast<int>(it->second.size())) return nullptr;
    return &it->second[line - 1];
}

// Called right after the widget has read the line: the place being read is still that line.
void LoadWatch::paramRead(uiWidget* widget) {
    const char* file;
    int line;
    if (!uiLoadPlace(&file, &line)) return;
    const std::string* text = lineText(file, line);
    if (!text) return;
    std::string copy = *text;
    Parser parser(&copy[0]);
    const char* key = parser.ParseLine() ? parser.GetToken(" ") : nullptr;
    if (!key) return;
    if (uiWidget::s_namesEqual(key, "globalinputfocus")) {
        const char* path = parser.GetEqualsToken() ? parser.GetToken(" ") : nullptr;
        if (path) m_out.pathNamed(std::string(path).substr(0, kMaxPath), file, line);
        return;
    }
    if (uiWidget::s_namesEqual(key, "#scriptlet")) {
        if (const char* name = parser.GetToken(" ")) m_scriptlets.push_back(name);
        return;
    }
    if (uiWidget::s_namesEqual(key, "tabentry")) {
        if (!widget->isType("uiDialog") && !underDialog(widget))
            m_out.add(1, "tabentry: no dialog above " + std::string(widget->name) + "; the key does nothing");
        return;
    }
    for (const char* token = key; token; token = parser.GetToken(" ")) {
        for (const AssetKey& asset : kAssetKeys) {
            if (!uiWidget::s_namesEqual(token, asset.key)) continue;
            if (parser.GetEqualsToken()) checkAsset(m_out, m_assets, asset.what, parser.GetToken(" "));
            return;
        }
    }
}

} // namespace uilint
