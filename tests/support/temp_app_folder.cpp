#include "temp_app_folder.h"

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>
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

bool WithPermissionsEnforced(const std::function<void()>& body) {
    if (::geteuid() != 0) {
        body();
        return true;
    }
    // Capabilities belong to a thread, so dropping them on a thread of its own leaves the rest of
    // the test run as it was.
    bool dropped = false;
    std::thread worker([&] {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        __user_cap_data_struct data[2]{};
        if (::syscall(SYS_capget, &header, data) != 0) {
            return;
        }
        data[0].effective = 0;
        data[1].effective = 0;
        dropped = ::syscall(SYS_capset, &header, data) == 0;
        if (dropped) {
            body();
        }
    });
    worker.join();
    return dropped;
}

}  // namespace vt::test
