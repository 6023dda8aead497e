// A folder of a game's files on disk read into memory, so that tests can serve its screens, scriptlets
// and assets through MemoryFiles and load them as the game does.
#pragma once
#include <map>
#include <string>

namespace testkit {

// Every file under the folder `dir` (subfolders included) by its path relative to `dir`, with "/"
// separators, and its contents. Empty when `dir` is not a folder.
std::map<std::string, std::string> readFolder(const std::string& dir);

} // namespace testkit
