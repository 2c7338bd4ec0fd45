#include "temp_app_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace vt::test {

namespace fs = std::filesystem;

TempAppFolder::TempAppFolder(std::string exe_base_name) {
    std::string pattern = (fs::temp_directory_path() / "vendrako-XXXXXX").string();
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    if (mkdtemp(buf.data()) == nullptr) {
        throw std::runtime_error("mkdtemp failed");
    }
    paths_.AppFolder = std::string(buf.data()) + "/";
    paths_.ExeBaseName = std::move(exe_base_name);
}

TempAppFolder::~TempAppFolder() {
    std::error_code ec;
    // Give back write permission first, so that tests that lock files down can be cleaned up.
    for (auto it = fs::recursive_directory_iterator(paths_.AppFolder, ec); !ec && it != fs::end(it); it.increment(ec)) {
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
    }
    fs::remove_all(paths_.AppFolder, ec);
}

void TempAppFolder::WriteFile(const std::string& relative, const std::string& bytes) const {
    const fs::path path = Path(relative);
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

std::string TempAppFolder::ReadFile(const std::string& relative) const {
    std::ifstream in(Path(relative), std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

bool TempAppFolder::Exists(const std::string& relative) const {
    return fs::exists(Path(relative));
}

}  // namespace vt::test
