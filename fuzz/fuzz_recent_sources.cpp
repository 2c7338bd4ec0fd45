// Feeds arbitrary bytes to the two readers of the desktop's recent files, as a damaged or hostile
// "recently-used.xbel" or ".lnk" file would reach them, and the paths they give to the page
// writer. Nothing may crash, a damaged list gives no bookmarks, every path read is a clean local
// path, and an escaped path cannot open or close a tag in the page.
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

#include "accesslog/access_pages.h"
#include "accesslog/html_text.h"
#include "accesslog/shell_link.h"
#include "accesslog/xbel_reader.h"
#include "store/cp1252.h"

namespace {

void Check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool IsUtf8(std::string_view text) {
    for (std::size_t pos = 0; pos < text.size();) {
        const vt::Utf8Char c = vt::DecodeUtf8At(text, pos);
        if (!c.valid) {
            return false;
        }
        pos += c.length;
    }
    return true;
}

void CheckPagePath(const std::string& path) {
    const std::string lines = vt::AccessEntryLines("12:00:00", path);
    Check(vt::EscapeHtmlText(path).find_first_of("<>") == std::string::npos);
    Check(vt::EscapeHtmlAttribute(path, '\'').find_first_of("<>'") == std::string::npos);
    // Exactly the link's own tags: one opening "<a", one "</a>", one "<br>".
    Check(lines.find('<') == lines.find(" <a href='") + 1);
    (void)vt::Utf8ToCp1252(lines);  // any path must convert for the page without trouble
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // Local times depend on the zone; a fixed one keeps every run reproducible.
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);

    const vt::XbelList list = vt::ParseRecentlyUsedXbel(bytes);
    Check(list.problem == vt::XbelProblem::None || list.bookmarks.empty());
    for (const vt::XbelBookmark& bookmark : list.bookmarks) {
        Check(!bookmark.path.empty() && bookmark.path.front() == '/');
        Check(bookmark.path.find('\0') == std::string::npos);
        Check(bookmark.href.rfind("file://", 0) == 0);
        CheckPagePath(bookmark.path);
    }

    const std::string target = vt::ReadShellLinkTarget(bytes);
    Check(IsUtf8(target));
    Check(target.find('\0') == std::string::npos);
    CheckPagePath(target);
    return 0;
}
