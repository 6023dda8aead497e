// Asset files of the graphics and sound services (SDL and browser alike): names resolve inside one asset
// directory, and the small descriptor files (sprites, fonts, particle effects) share one line format: a key,
// an optional "=", then values.
// '#' starts a comment.
#pragma once
#include <memory>
#include <string>
#include <vector>

namespace assets {

using DescriptorLine = std::vector<std::string>; // key first, values after it

std::string joinPath(const std::string& dir, const std::string& name);
bool fileExists(const std::string& path);
// Reads a descriptor; false when the file cannot be opened.
bool readDescriptor(const std::string& path, std::vector<DescriptorLine>& lines);
// Number value i (0 = first after the key) of a line, or the fallback when it is missing or not a number.
float numberAt(const DescriptorLine& line, size_t i, float fallback);

// The handle (index in `loaded`) of the resource called `name`, counting one more user of a loaded one;
// otherwise a new R named `name` filled by load(R&), or -1 when load fails. Handles are never reused:
// a released resource leaves an empty slot. R has `name` and `refs` (starting at 1).
template <class R, class Load>
int acquireByName(std::vector<std::unique_ptr<R>>& loaded, const char* name, Load load) {
    if (!name || !*name) return -1;
    for (size_t i = 0; i < loaded.size(); ++i)
        if (loaded[i] && loaded[i]->name == name) {
            ++loaded[i]->refs;
            return static_cast<int>(i);
        }
    auto resource = std::make_unique<R>();
    resource->name = name;
    if (!load(*resource)) return -1;
    loaded.push_back(std::move(resource));
    return static_cast<int>(loaded.size() - 1);
}

// One user fewer of the resource called `name`; the last one empties its slot, so that a stale handle
// finds nothing instead of another resource.
template <class R> void releaseByName(std::vector<std::unique_ptr<R>>& loaded, const char* name) {
    if (!name) return;
    for (auto& resource : loaded)
        if (resource && resource->name == name) {
            if (--resource->refs <= 0) resource.reset();
            return;
        }
}

} // namespace assets
