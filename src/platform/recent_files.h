#pragma once
#include <string>
#include <vector>

#include "store/dates.h"

namespace vt {

// One file the desktop lists as recently used.
struct RecentFile {
    std::string name;       // the entry's own name, which the scan's skip rule looks at
    std::string target;     // the file it stands for; "" when that is not known
    std::string link_path;  // the entry's own full path (the shortcut itself), logged when target is ""
    DateTime modified{};    // local wall-clock time of the last use
    bool vanished = false;  // gone between the listing and the reading of its details
};

enum class RecentListingOutcome {
    Listed,    // files holds the whole list
    NoSource,  // there is no list on this desktop (yet): nothing to read, nothing to say
    Failed,    // the list is there but cannot be read; error says why, for the user
};

struct RecentListing {
    RecentListingOutcome outcome = RecentListingOutcome::Listed;
    std::vector<RecentFile> files;
    std::string error;
    // Failed just as the last time, with nothing changed since: the user has been told already.
    bool told_before = false;
};

// The desktop's list of recently used files, read whole on each call.
class RecentFiles {
public:
    virtual ~RecentFiles() = default;
    virtual RecentListing List() = 0;
};

}  // namespace vt
