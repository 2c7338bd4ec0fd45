#include "accesslog/folder_recent_files.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <system_error>
#include <vector>

#include "accesslog/local_time.h"
#include "accesslog/shell_link.h"
#include "store/error_text.h"
#include "store/sorted_list.h"
#include "store/text_file.h"

namespace vt {

namespace {

std::string Join(const std::string& folder, const std::string& name) {
    return !folder.empty() && folder.back() == '/' ? folder + name : folder + "/" + name;
}

bool EndsWithLnk(const std::string& name) {
    return name.size() > 4 && UpperCaseForList(name.substr(name.size() - 4)) == ".LNK";
}

// The path a symbolic link points to; a relative one is taken from the link's folder, as the
// system resolves it. Nothing when the link is gone.
std::optional<std::string> LinkTarget(const std::string& folder, const std::string& path, std::size_t size_hint) {
    std::string target(size_hint > 0 ? size_hint + 1 : 256, '\0');
    for (;;) {
        const ssize_t n = ::readlink(path.c_str(), target.data(), target.size());
        if (n < 0) {
            return std::nullopt;
        }
        if (static_cast<std::size_t>(n) < target.size()) {
            target.resize(static_cast<std::size_t>(n));
            break;
        }
        target.resize(target.size() * 2);  // the link grew since lstat
    }
    return !target.empty() && target.front() == '/' ? target : Join(folder, target);
}

}  // namespace

FolderEntry ReadFolderEntry(const std::string& folder, const std::string& name) {
    FolderEntry entry;
    RecentFile& file = entry.file;
    file.name = name;
    file.link_path = Join(folder, name);
    struct stat st {};
    if (::lstat(file.link_path.c_str(), &st) != 0) {
        if (errno == ENOENT) {
            entry.listed = true;
            file.vanished = true;
        } else {
            entry.error = "No se puede leer " + file.link_path + " (" + ErrorText(errno) + ").";
        }
        return entry;
    }
    if (S_ISDIR(st.st_mode)) {
        return entry;
    }
    entry.listed = true;
    file.modified = LocalFromEpochSeconds(static_cast<std::int64_t>(st.st_mtim.tv_sec));
    if (S_ISLNK(st.st_mode)) {
        const auto target = LinkTarget(folder, file.link_path, static_cast<std::size_t>(st.st_size));
        if (!target) {
            file.vanished = true;
        } else {
            file.target = *target;
        }
    } else if (S_ISREG(st.st_mode) && EndsWithLnk(name)) {
        const FileContents contents = ReadWholeFile(file.link_path);
        if (contents.outcome == ReadOutcome::Missing) {
            file.vanished = true;
        } else if (contents.outcome == ReadOutcome::Read) {
            // A shortcut that cannot be read as one has no target and is logged as itself.
            file.target = ReadShellLinkTarget(contents.bytes);
        }
    }
    return entry;
}

RecentListing FolderRecentFiles::List() {
    RecentListing listing;
    if (folder_.empty()) {
        listing.outcome = RecentListingOutcome::NoSource;
        return listing;
    }
    DIR* dir = ::opendir(folder_.c_str());
    if (dir == nullptr) {
        if (errno == ENOENT || errno == ENOTDIR) {
            listing.outcome = RecentListingOutcome::NoSource;
        } else {
            listing.outcome = RecentListingOutcome::Failed;
            listing.error = "No se puede leer la carpeta de archivos recientes " + folder_ + " (" + ErrorText(errno) +
                            ").\r\n\r\nNo se ha registrado ningún acceso.";
        }
        return listing;
    }
    std::vector<std::string> names;
    for (;;) {
        errno = 0;
        const dirent* item = ::readdir(dir);
        if (item == nullptr) {
            break;
        }
        const std::string name = item->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
    }
    const int list_error = errno;
    ::closedir(dir);
    if (list_error != 0) {
        listing.outcome = RecentListingOutcome::Failed;
        listing.error = "No se puede leer la carpeta de archivos recientes " + folder_ + " (" + ErrorText(list_error) +
                        ").\r\n\r\nNo se ha registrado ningún acceso.";
        return listing;
    }
    for (const std::string& name : names) {
        FolderEntry entry = ReadFolderEntry(folder_, name);
        if (!entry.error.empty()) {
            listing.outcome = RecentListingOutcome::Failed;
            listing.files.clear();
            listing.error = entry.error + "\r\n\r\nNo se ha registrado ningún acceso.";
            return listing;
        }
        if (entry.listed) {
            listing.files.push_back(std::move(entry.file));
        }
    }
    return listing;
}

}  // namespace vt
