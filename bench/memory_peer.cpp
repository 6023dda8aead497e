// Memory of a peer library (linked with one *_peer.cpp): heap bytes per widget of each loaded scene, and
// allocations per frame and per input event, counted by replacing the global operator new. Prints JSON
// in the form of memory_gameui.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>
#include "heapbytes.h"
#include "peer.h"

namespace {
std::atomic<long long> g_news{0};
}

void* operator new(std::size_t size) {
    ++g_news;
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

int main(int argc, char** argv) {
    using namespace bench;
    const std::string dir = argc > 1 ? argv[1] : ".";
    std::unique_ptr<Peer> peer = makePeer();
    peer->setDataDir(dir);
    std::printf("{\n  \"scenes\": {");
    bool first = true;
    const char* max = std::getenv("BENCH_PEER_MAX");
    const int maxCount = max ? std::atoi(max) : 1000;
    for (const Scene& s : Scene::standard()) {
        if (s.count > maxCount) continue;
        const std::string file = peer->fileName(s);
        writeFile(dir + "/" + file, peer->layout(s));
        const long long heap0 = heapBytesInUse();
        peer->load(file);
        const long long heap = heapBytesInUse() - heap0;
        for (int i = 0; i < 2; ++i) // caches and first-frame work out of the way
            peer->frame();
        const int frames = 20;
        g_news = 0;
        for (int i = 0; i < frames; ++i)
            peer->frame();
        const double perFrame = static_cast<double>(g_news) / frames;
        const auto path = pointerPath(s);
        long long news = 0;
        for (int pass = 0; pass < 2; ++pass) {
            g_news = 0;
            for (const auto& p : path) {
                peer->move(p.first, p.second);
                peer->down(p.first, p.second);
                peer->up(p.first, p.second);
            }
            news = g_news;
        }
        peer->unload();
        std::printf("%s\n    \"%s\": {\"heap_bytes_per_widget\": %.1f, \"allocs_per_frame\": %g, "
                    "\"allocs_per_event\": %g}",
                    first ? "" : ",", s.label().c_str(), static_cast<double>(heap) / s.count, perFrame,
                    static_cast<double>(news) / (path.size() * 3));
        first = false;
    }
    std::printf("\n  }\n}\n");
    return 0;
}
