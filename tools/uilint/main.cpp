// uilint: checks UI description files, and what they include and the scriptlets they apply, by loading
// them with the library itself (nothing is drawn) and reporting every warning and error it logs, each at
// its file and line, together with what only shows after loading or when played (LoadWatch).
//
//   uilint [--format text|json] [--assets DIR] FILE...
//
// Text output is "file:line: error: message", as compilers write it; the exit status is 1 when any
// error was found, 2 on bad arguments.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>
#include "assetgfx.h"
#include "diagnostics.h"
#include "loadwatch.h"
#include "uisubsystem.h"

namespace fs = std::filesystem;

namespace {

// Loads one file the way a game would, from the file's own folder so that includes and scriptlets
// resolve the same way, and keeps what the library reports about it.
std::vector<devtools::Diagnostic> lint(const fs::path& file, const uilint::AssetFolder& folder) {
    devtools::Diagnostics out;
    uilint::AssetGfx gfx(out, folder);
    const fs::path home = fs::current_path();
    const fs::path dir = file.parent_path();
    const std::string name = file.filename().string();
    out.setTopFile(name);
    gfxSubsystem* prevGfx = g_gfx;
    g_gfx = &gfx;
    Logger::setSink(&out);
    if (!dir.empty()) fs::current_path(dir);
    {
        uilint::LoadWatch watch(out, folder);
        uiSubsystem ui;
        // Sprites are asked for when a widget first becomes active: wake what the file left inactive.
        uiWidget* root = ui.loadUI(name.c_str());
        if (root) watch.wake(root);
        watch.finish();
        delete root;
        ui.shutdown();
    }
    uiWidget::s_freeScripletCache();
    fs::current_path(home);
    Logger::setSink(nullptr);
    g_gfx = prevGfx;
    std::vector<devtools::Diagnostic> found = out.all();
    for (devtools::Diagnostic& d : found)
        d.file = (dir / d.file).generic_string();
    return found;
}

std::string jsonString(const std::string& s) {
    std::string out = "\"";
    for (unsigned char c : s) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20) {
            char esc[8];
            std::snprintf(esc, sizeof esc, "\\u%04x", c);
            out += esc;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}

const char* severityName(int severity) {
    return severity >= 2 ? "error" : "warning";
}

void printText(const std::vector<devtools::Diagnostic>& all) {
    for (const devtools::Diagnostic& d : all)
        std::printf("%s\n", devtools::diagnosticLine(d).c_str());
}

void printJson(const std::vector<devtools::Diagnostic>& all) {
    std::printf("[");
    for (size_t i = 0; i < all.size(); ++i) {
        const devtools::Diagnostic& d = all[i];
        std::printf("%s\n  {\"file\": %s, \"line\": %d, \"severity\": \"%s\", \"message\": %s}", i ? "," : "",
                    jsonString(d.file).c_str(), d.line, severityName(d.severity),
                    jsonString(d.message).c_str());
    }
    std::printf("\n]\n");
}

int usage() {
    std::fprintf(stderr, "usage: uilint [--format text|json] [--assets DIR] FILE...\n");
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    bool json = false;
    std::string assets;
    std::vector<fs::path> files;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--format") == 0 && i + 1 < argc) {
            const std::string format = argv[++i];
            if (format != "text" && format != "json") return usage();
            json = format == "json";
        } else if (std::strcmp(argv[i], "--assets") == 0 && i + 1 < argc) {
            assets = fs::absolute(argv[++i]).string();
        } else if (argv[i][0] == '-') {
            return usage();
        } else {
            files.emplace_back(argv[i]);
        }
    }
    if (files.empty()) return usage();

    const uilint::AssetFolder folder(assets);
    std::vector<devtools::Diagnostic> all;
    for (const fs::path& file : files) {
        std::vector<devtools::Diagnostic> found = lint(file, folder);
        all.insert(all.end(), found.begin(), found.end());
    }
    json ? printJson(all) : printText(all);
    for (const devtools::Diagnostic& d : all)
        if (d.severity >= 2) return 1;
    return 0;
}
