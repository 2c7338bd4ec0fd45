// Feeds arbitrary bytes to the two readers of the desktop's recent files, as a damaged or hostile
// "recently-used.xbel" (read through GLib) or ".lnk" file would reach them, and the paths they
// give to the page writer. Nothing may crash, a damaged list gives no files, every path read is
// a clean local path, and a path in the page can neither open or close a tag nor break its line,
// and goes into Windows-1252 without loss.
#include <strings.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

#include "accesslog/access_pages.h"
#include "accesslog/html_text.h"
#include "accesslog/shell_link.h"
#include "platform/glib_recent_files.h"
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
    // Three lines, whatever the path holds, and nothing the page cannot carry.
    Check(lines.find_first_of("\r\n") == 8 && lines.find_first_of("\r\n", 10) == lines.rfind("\r\n<br>\r\n"));
    Check(vt::Cp1252ToUtf8(vt::Utf8ToCp1252(lines)) == lines);
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

    const vt::RecentlyUsedList list = vt::ReadRecentlyUsedList(bytes);
    Check(list.problem.empty() || list.files.empty());
    for (const vt::RecentFile& file : list.files) {
        Check(!file.target.empty() && file.target.front() == '/');
        Check(file.target.find('\0') == std::string::npos);
        Check(strncasecmp(file.link_path.c_str(), "file:", 5) == 0);  // also "FILE:", "file:/path"
        CheckPagePath(file.target);
    }

    const std::string target = vt::ReadShellLinkTarget(bytes);
    Check(IsUtf8(target));
    Check(target.find('\0') == std::string::npos);
    CheckPagePath(target);
    return 0;
}
