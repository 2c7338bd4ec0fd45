#pragma once
// The other source of recent files: a folder of shortcuts, one per file used, as Windows keeps
// its Recent folder. A ".lnk" file stands for the local path in its link information, a symbolic
// link for the path it points to, anything else for nothing (it is logged under its own path).

#include <string>

#include "platform/recent_files.h"

namespace vt {

// What the folder holds under one name.
struct FolderEntry {
    bool listed = false;  // false for a subfolder, which is no recent file, and on error
    RecentFile file;
    std::string error;  // why the entry could not be read, for the user; "" otherwise
};

// Reads one entry of the folder: its time (the entry's own, a link's not its target's) and
// target. An entry gone since the folder was listed comes back listed and vanished.
FolderEntry ReadFolderEntry(const std::string& folder, const std::string& name);

class FolderRecentFiles : public RecentFiles {
public:
    explicit FolderRecentFiles(std::string folder) : folder_(std::move(folder)) {}
    // A missing folder (or "") is no source; a folder that cannot be listed, or an entry that
    // cannot be read for any reason but having vanished, fails the listing.
    RecentListing List() override;

private:
    std::string folder_;
};

}  // namespace vt
