// A library measured side by side with gameui: the same scenes as its own layout files, its own frame
// (time pulse + render on a renderer that draws nothing) and the same pointer events.
#pragma once
#include <memory>
#include <string>
#include "scene.h"

namespace bench {

class Peer {
public:
    virtual ~Peer() = default;
    virtual const char* name() const = 0; // lower case, first word of the benchmark names
    virtual std::string layout(const Scene& scene) const = 0;
    virtual std::string fileName(const Scene& scene) const = 0; // relative to the data directory
    virtual void setDataDir(const std::string& dir) = 0;

    virtual void load(const std::string& fileName) = 0; // loads the layout and shows it as the screen
    virtual void unload() = 0;                          // destroys the screen
    virtual void frame() = 0;                           // advances 16 ms and renders
    virtual void invalidateAll() = 0;                   // every widget must be redrawn next frame
    virtual void hideHalf() = 0;                        // hides every other child of the root
    virtual void move(int x, int y) = 0;
    virtual void down(int x, int y) = 0;
    virtual void up(int x, int y) = 0;
    // Looks up the widget at the end of `chain` (node indices from the root) by path; false if unsupported.
    virtual bool lookup(const std::vector<int>& chain) = 0;
};

std::unique_ptr<Peer> makePeer(); // defined once per peer library

} // namespace bench
