// uilint: checks UI description files, and what they include and the scriptlets they apply, by loading
// them with the library itself (nothing is drawn) and reporting every warning and error it logs, each at
// its file and line, together with what only shows after loading or when played (LoadWatch).
//
//   uilint [--format text|json] [--assets DIR] FILE...
//
// Text output is "file:line: error: message", as compilers write it; the exit status is 1 when any
// error was found, 2 on bad arguments.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
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

const char* severityName(int severity) {
    return severity >= Logger::kError ? "error" : "warning";
}

void printText(const std::vector<devtools::Diagnostic>& all) {
    for (const devtools::Diagnostic& d : all)
        std::printf("%s\n", devtools::diagnosticLine(d).c_str());
}

// One array of objects on one line; bytes that are not UTF-8 become U+FFFD rather than stopping the output.
void printJson(const std::vector<devtools::Diagnostic>& all) {
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (const devtools::Diagnostic& d : all)
        out.push_back({{"file", d.file},
                       {"line", d.line},
                       {"severity", severityName(d.severity)},
                       {"message", d.message}});
    std::puts(out.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace).c_str());
}

} // namespace

int main(int argc, char** argv) {
    std::string format = "text", assets;
    std::vector<fs::path> files;
    CLI::App app("Checks UI description files by loading them with the library.\n", "uilint");
    app.footer("Exit status: 1 when any error was found, 2 when the command line is not understood.");
    app.add_option("--format", format, "output: file:line: lines, or a JSON array")
        ->check(CLI::IsMember({"text", "json"}));
    app.add_option("--assets", assets, "folder to find sprites, fonts, sounds and particle files in")
        ->type_name("DIR");
    app.add_option("FILE", files, "descriptions to check")->required();
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e) == 0 ? 0 : 2;
    }

    const uilint::AssetFolder folder(assets.empty() ? assets : fs::absolute(assets).string());
    std::vector<devtools::Diagnostic> all;
    for (const fs::path& file : files) {
        std::vector<devtools::Diagnostic> found = lint(file, folder);
        all.insert(all.end(), found.begin(), found.end());
    }
    format == "json" ? printJson(all) : printText(all);
    for (const devtools::Diagnostic& d : all)
        if (d.severity >= Logger::kError) return 1;
    return 0;
}
