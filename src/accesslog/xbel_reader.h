#pragma once
// The freedesktop list of recently used files, "recently-used.xbel": an XML bookmark file in
// which every <bookmark href="file:///…" modified="…Z" visited="…Z"> is one file.

#include <string>
#include <string_view>
#include <vector>

#include "platform/recent_files.h"
#include "store/dates.h"

namespace vt {

struct XbelBookmark {
    std::string path;  // the local path, percent-decoded
    std::string href;  // the address as the list holds it
    DateTime used{};   // local time of the later of "modified" and "visited"
};

enum class XbelProblem {
    None,
    Truncated,  // the file ends inside a tag or before its root element is closed (or is empty)
    NotUtf8,    // the bytes are not UTF-8, as the list must be
    Malformed,  // not well-formed XML
    NotXbel,    // well-formed XML whose root element is not <xbel>
};

struct XbelList {
    XbelProblem problem = XbelProblem::None;
    std::vector<XbelBookmark> bookmarks;  // empty when there is a problem
};

// Reads the list from its bytes; any bytes may be given. A well-formed list without bookmarks
// is no problem: the user has simply cleared the history. A bookmark whose address is not a
// local file ("https:", "file://otherhost/"), or that has no time that can be read (of
// "modified", "visited", or failing both, "added"), is left out.
XbelList ParseRecentlyUsedXbel(std::string_view bytes);

// The recent files of the list at list_path. A missing list (nothing used yet, or no home
// folder: list_path "") is no source; a list that cannot be read or parsed fails with a message
// that names it and says that nothing was logged.
class XbelRecentFiles : public RecentFiles {
public:
    explicit XbelRecentFiles(std::string list_path) : list_path_(std::move(list_path)) {}
    RecentListing List() override;

private:
    std::string list_path_;
};

}  // namespace vt
