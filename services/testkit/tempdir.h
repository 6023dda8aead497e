// A folder of real files for a test (save files, assets, descriptions read from disk): made empty under
// a unique name, removed with its contents when the object goes, so that suites of several builds can run
// the same test at the same time.
#pragma once
#include <filesystem>
#include <string>

namespace testkit {

class TempDir {
public:
    // A new folder in `base` (the system's temporary folder when empty).
    explicit TempDir(const std::filesystem::path& base = {});
    ~TempDir(); // removes the folder unless keep() was called
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    // The folder, made when the TempDir was.
    const std::filesystem::path& path() const { return m_path; }
    // The folder's path as text, with `name` appended when given.
    std::string operator/(const std::string& name) const { return (m_path / name).string(); }
    // Writes `text` to the file `name` (its folders made as needed); returns its path.
    std::string write(const std::string& name, const std::string& text) const;
    // Leaves the folder behind, for a person to look at what a failed test wrote.
    void keep() { m_keep = true; }

private:
    std::filesystem::path m_path;
    bool m_keep = false;
};

} // namespace testkit
