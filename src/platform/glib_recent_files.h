#pragma once
// The freedesktop list of recently used files, "recently-used.xbel", read with GLib's
// bookmark-file reader: the library that writes the list on every desktop that has one.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recent_files.h"
#include "store/text_file.h"

namespace vt {

struct RecentlyUsedList {
    std::string problem;            // "" when the list reads; else why not, for the user
    std::vector<RecentFile> files;  // empty when there is a problem
};

// Reads the list from its bytes; any bytes may be given. Each bookmark of a local file
// ("file:///…", "file://localhost/…") is one file: its path decoded, its time the later of the
// bookmark's modified and visited times (failing both, the added time) in local time. Other
// addresses, and a bookmark without any time of its own, are left out. A well-formed list without
// bookmarks is no problem: the user has simply cleared the history.
RecentlyUsedList ReadRecentlyUsedList(std::string_view bytes);

// The recent files of the list at list_path. A missing list (nothing used yet, or no home
// folder: list_path "") is no source; a list that cannot be read fails with a message that names
// it and says that nothing was logged. While a damaged list stays as it is (the same time and
// size), its later failures are marked as already told, so the user hears of it once.
class GlibRecentFiles : public RecentFiles {
public:
    explicit GlibRecentFiles(std::string list_path) : list_path_(std::move(list_path)) {}
    RecentListing List() override;

private:
    struct Stamp {
        std::optional<FileTime> modified;
        std::size_t size = 0;
        bool operator==(const Stamp&) const = default;
    };
    RecentListing Fail(const Stamp& stamp, const std::string& reason);

    std::string list_path_;
    std::optional<Stamp> told_;  // the damaged list the user was last told about
};

}  // namespace vt
