// Asset files of the SDL services: names resolve inside one asset directory, and the small descriptor
// files (sprites, fonts, particle effects) share one line format: a key, an optional "=", then values.
// '#' starts a comment.
#pragma once
#include <string>
#include <vector>

namespace sdlsvc {

using DescriptorLine = std::vector<std::string>; // key first, values after it

std::string joinPath(const std::string& dir, const std::string& name);
bool fileExists(const std::string& path);
// Reads a descriptor; false when the file cannot be opened.
bool readDescriptor(const std::string& path, std::vector<DescriptorLine>& lines);
// Number value i (0 = first after the key) of a line, or the fallback when it is missing or not a number.
float numberAt(const DescriptorLine& line, size_t i, float fallback);

} // namespace sdlsvc
