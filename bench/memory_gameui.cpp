// Exact memory figures of gameui, read from a counting memory manager: bytes per widget of each built-in
// type, bytes per widget of the loaded scenes, and allocations per frame and per input event. Prints one
// JSON object.
#include <cstdio>
#include <string>
#include "countingmemorymgr.h"
#include "gameui.h"
#include "gameui_desc.h"
#include "gameui_env.h"
#include "heapbytes.h"

namespace {

using namespace bench;

long long poolBytes(const testkit::CountingMemoryMgr& m) {
    long long sum = 0;
    for (int pool = 0; pool < MemoryMgr::kPools; ++pool)
        sum += m.outstandingBytes(pool);
    return sum;
}

const char* const kTypes[] = {"uiNonVisualWidget", "uiInputHandler", "uiVisualWidget",   "uiButton",
                              "uiToggleButton",    "uiSprite",       "uiRadioButton",    "uiRadioGroup",
                              "uiSliderButton",    "uiProgressBar",  "uiParticleSystem", "uiDigitalBanner",
                              "uiDialog",          "uiAnimDialog",   "uiGameContainer",  "uiAnimWidget",
                              "uiTextWidget",      "uiEntryWidget",  "uiFlowLayout"};

void perType(testkit::CountingMemoryMgr& mem, std::string& json) {
    json += "  \"bytes_per_type\": {";
    bool first = true;
    for (const char* type : kTypes) {
        const long long before = poolBytes(mem);
        uiWidget* w = uiWidget::allocWidget("probe", type);
        if (!w) continue;
        json += std::string(first ? "" : ",") + "\n    \"" + type +
                "\": " + std::to_string(poolBytes(mem) - before);
        first = false;
        delete w;
    }
    json += "\n  },\n";
}

// What the load costs on the process heap with the built-in memory manager (block headers and the
// allocator's own overhead included), the figure comparable with libraries that allocate directly.
long long heapBytesOfLoad(GameuiEnv& env, const std::string& file) {
    MemoryMgr* counting = g_MemoryPtr;
    MemoryMgr builtIn;
    g_MemoryPtr = &builtIn;
    const long long heap0 = heapBytesInUse();
    uiWidget* root = env.ui().loadUI(file.c_str());
    const long long heap = heapBytesInUse() - heap0;
    delete root;
    g_MemoryPtr = counting;
    return heap;
}

void perScene(GameuiEnv& env, testkit::CountingMemoryMgr& mem, const std::string& dir, std::string& json) {
    json += "  \"scenes\": {";
    bool first = true;
    for (const Scene& s : Scene::standard()) {
        const std::string file = dir + "/memory_" + std::to_string(s.count) + ".txt";
        writeFile(file, gameuiDescription(s));
        const long long heap = heapBytesOfLoad(env, file);
        const long long bytes0 = poolBytes(mem), blocks0 = mem.outstandingBlocks();
        uiWidget* root = env.show(file);
        const long long bytes = poolBytes(mem) - bytes0;
        const long long blocks = mem.outstandingBlocks() - blocks0;

        const int frames = 100;
        mem.reset();
        for (int i = 0; i < frames; ++i)
            env.ui().render(16);
        const double perFrame = static_cast<double>(mem.allocations()) / frames;

        const auto path = pointerPath(s);
        double perEvent[2];
        for (int focus = 0; focus < 2; ++focus) {
            if (focus) env.ui().pushInputFocusWidget(root);
            for (int pass = 0; pass < 2; ++pass) { // the first pass warms the focus stack up
                uiWidget::s_frameNumber += 100;    // out of every button's click guard
                mem.reset();
                for (const auto& p : path) {
                    env.ui().inputEvent(UIE_MOUSE_MOVE, p.first, p.second, 0);
                    env.ui().inputEvent(UIE_MOUSE_DOWN, p.first, p.second, 0);
                    env.ui().inputEvent(UIE_MOUSE_UP, p.first, p.second, 0);
                }
            }
            perEvent[focus] = static_cast<double>(mem.allocations()) / (path.size() * 3);
            if (focus) env.ui().popInputFocusWidget();
        }
        env.ui().setTopLevelWidget(nullptr);
        delete root;

        char line[512];
        std::snprintf(line, sizeof line,
                      "%s\n    \"%s\": {\"bytes_per_widget\": %.1f, \"blocks_per_widget\": %.2f, "
                      "\"heap_bytes_per_widget\": %.1f, \"allocs_per_frame\": %g, \"allocs_per_event\": %g, "
                      "\"allocs_per_event_focus\": %g}",
                      first ? "" : ",", s.label().c_str(), static_cast<double>(bytes) / s.count,
                      static_cast<double>(blocks) / s.count, static_cast<double>(heap) / s.count, perFrame,
                      perEvent[0], perEvent[1]);
        json += line;
        first = false;
    }
    json += "\n  }\n";
}

} // namespace

int main(int argc, char** argv) {
    const std::string dir = argc > 1 ? argv[1] : ".";
    testkit::CountingMemoryMgr mem;
    MemoryMgr* previous = g_MemoryPtr;
    g_MemoryPtr = &mem;
    std::string json = "{\n";
    {
        GameuiEnv env;
        perType(mem, json);
        perScene(env, mem, dir, json);
    }
    json += "}\n";
    g_MemoryPtr = previous;
    std::fputs(json.c_str(), stdout);
    return 0;
}
