#include "loadwatch.h"
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

// The tokens of a line as the library's parser hands them out, an "=" always on its own.
std::vector<std::string> tokens(const std::string& line) {
    std::string copy = line;
    Parser parser(&copy[0]);
    std::vector<std::string> out;
    if (!parser.ParseLine()) return out;
    for (;;) {
        if (parser.GetEqualsToken()) {
            out.emplace_back("=");
        } else if (const char* token = parser.GetToken(" ")) {
            out.emplace_back(token);
        } else {
            return out;
        }
    }
}

} // namespace

LoadWatch::LoadWatch(devtools::Diagnostics& out, const AssetFolder& assets) : m_out(out), m_assets(assets) {
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
    if (uiLoadPlace(&file, &line)) m_headers[widget] = {file, line};
}

// A widget whose header stands in another file than its parent's is the root object of its file.
void LoadWatch::done(uiWidget* widget) {
    const char* file;
    int line;
    if (!uiLoadPlace(&file, &line)) return;
    const uiWidget* parent = widget->getParent();
    if (!parent || m_headers[parent].file != file) m_roots.push_back({file, widget->name, line});
    const auto header = m_headers.find(widget);
    if (header != m_headers.end() && header->second.file == file) checkOpening(widget, header->second, line);
}

// The library reads an object's lines only once its "{" line has come; `closing` is the line that
// ended the object.
void LoadWatch::checkOpening(const uiWidget* widget, const devtools::Place& header, int closing) {
    const std::string* last = lineText(header.file, closing);
    const std::vector<std::string> end = last ? tokens(*last) : std::vector<std::string>();
    if (end.empty() || end[0] != "}") return; // never closed: the library has reported it
    bool inComment = false;
    std::vector<std::string> t;
    int ignored = 0;
    for (int line = nextStatement(header.file, header.line + 1, &inComment, &t); line && line < closing;
         line = nextStatement(header.file, line + 1, &inComment, &t)) {
        if (t[0] == "{") {
            if (ignored)
                m_out.addAt(header.file, ignored, 1,
                            "line before the { of " + std::string(widget->name) + " is ignored");
            return;
        }
        if (!ignored) ignored = line;
    }
    m_out.addAt(header.file, header.line, 2,
                "block of " + std::string(widget->name) +
                    " never opened: { missing; its lines up to } are ignored");
}

void LoadWatch::wake(uiWidget* widget) {
    const auto header = m_headers.find(widget);
    if (header != m_headers.end()) m_out.setWaking(header->second, &m_values[widget]);
    widget->setActive(true, false);
    m_out.clearWaking();
    for (const _WidgetList_s* node = widget->getChildren(); node; node = node->next)
        wake(node->widget);
}

void LoadWatch::finish() {
    for (const FileRoot& root : m_roots) {
        bool scriptlet = false;
        for (const std::string& s : m_scriptlets)
            scriptlet = scriptlet || uiWidget::s_namesEqual(s.c_str(), root.file.c_str());
        if (scriptlet) continue;
        bool inComment = false;
        std::vector<std::string> t;
        if (const int line = nextStatement(root.file, root.end + 1, &inComment, &t))
            m_out.addAt(root.file, line, 2, "text after the closing } of " + root.name + " is not read");
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

int LoadWatch::nextStatement(const std::string& file, int line, bool* inComment,
                             std::vector<std::string>* t) {
    for (; const std::string* text = lineText(file, line); ++line) {
        *t = tokens(*text);
        if (t->empty()) continue;
        if ((*t)[0] == "/*" || (*t)[0] == "*/") {
            *inComment = (*t)[0] == "/*";
            continue;
        }
        if (!*inComment) return line;
    }
    return 0;
}

// Called right after the widget has read the line: the place being read is still that line.
void LoadWatch::paramRead(uiWidget* widget) {
    const char* file;
    int line;
    if (!uiLoadPlace(&file, &line)) return;
    const std::string* text = lineText(file, line);
    if (!text) return;
    const std::vector<std::string> t = tokens(*text);
    const devtools::Place place{file, line};
    for (size_t i = 0; i + 1 < t.size(); ++i)
        if (t[i + 1] == "=" && i + 2 < t.size()) {
            m_values[widget].push_back({t[i + 2], place});
            m_out.valueNamed({t[i + 2], place});
            break;
        }
    if (t.empty()) return;
    const char* key = t[0].c_str();
    const bool valued = t.size() >= 3 && t[1] == "=";
    if (uiWidget::s_namesEqual(key, "globalinputfocus")) {
        if (valued) m_out.pathNamed(t[2].substr(0, kMaxPath), place);
    } else if (uiWidget::s_namesEqual(key, "#scriptlet")) {
        if (t.size() >= 2) m_scriptlets.push_back(t[1]);
    } else if (uiWidget::s_namesEqual(key, "tabentry")) {
        if ((t.size() < 2 || t[1] != "=") && !widget->isType("uiDialog") && !underDialog(widget))
            m_out.add(1, "tabentry: no dialog above " + std::string(widget->name) + "; the key does nothing");
    } else {
        for (size_t i = 0; i + 2 < t.size(); ++i)
            for (const AssetKey& asset : kAssetKeys)
                if (uiWidget::s_namesEqual(t[i].c_str(), asset.key) && t[i + 1] == "=")
                    return checkAsset(m_out, m_assets, asset.what, t[i + 2].c_str());
    }
}

} // namespace uilint
