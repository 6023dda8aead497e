// The game's small saved files: "key = value" lines in the user's data folder.
#pragma once
#include <map>
#include <string>

using PrefsMap = std::map<std::string, std::string>;

enum class PrefsRead { Missing, Damaged, Ok };
// Reads `path`; Damaged when a line is not "key = value".
PrefsRead readPrefs(const std::string& path, PrefsMap& out);
bool writePrefs(const std::string& path, const PrefsMap& values);
// The whole number of `key`, or `fallback` when it is missing, not a number or outside lo..hi.
int prefsInt(const PrefsMap& values, const std::string& key, int lo, int hi, int fallback);
