#include "tempdir.h"
#include <fstream>
#include <random>
#include <system_error>

namespace fs = std::filesystem;

namespace testkit {

TempDir::TempDir(const fs::path& base) {
    std::error_code ec;
    const fs::path parent = base.empty() ? fs::temp_directory_path(ec) : base;
    std::random_device seed;
    std::mt19937 random(seed());
    // create_directory is false for a name another process took first: draw again.
    do
        m_path = parent / ("gameui-" + std::to_string(random()));
    while (!fs::create_directory(m_path, ec) && !ec);
}

TempDir::~TempDir() {
    std::error_code ec;
    if (!m_keep) fs::remove_all(m_path, ec);
}

std::string TempDir::write(const std::string& name, const std::string& text) const {
    const fs::path file = m_path / name;
    std::error_code ec;
    fs::create_directories(file.parent_path(), ec);
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
}

} // namespace testkit
