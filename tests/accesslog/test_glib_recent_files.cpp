#include "platform/glib_recent_files.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "accesslog_fakes.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

// A list as GLib writes it, with a DOCTYPE and blanks around "=" as other writers put them, and
// among the good bookmarks the ones a reader must leave out (a web page, another host, a broken
// escape). Times are shown in the local zone, the later of modified and visited.
TEST(GlibRecentFiles, ListsEachLocalBookmarkWithItsDecodedPathAndLocalTime) {
    const test::ScopedTimeZone zone{test::kMadrid};
    test::TempAppFolder folder;
    folder.WriteFile("recently-used.xbel", ReadWholeFile(VT_TEST_DATA "accesslog/recently-used.xbel").bytes);
    const RecentListing listing = GlibRecentFiles(folder.Path("recently-used.xbel")).List();
    ASSERT_EQ(listing.outcome, RecentListingOutcome::Listed);
    ASSERT_EQ(listing.files.size(), 3u);
    const RecentFile& first = listing.files[0];
    EXPECT_EQ(std::tie(first.name, first.target, first.link_path, first.modified, first.vanished),
              std::tuple("año+1.txt", "/home/ana/Mis documentos/año+1.txt",
                         "file:///home/ana/Mis%20documentos/a%C3%B1o%2B1.txt",
                         MakeDateTime(MakeDate(15, 3, 2024), 11, 0, 0), false));
    EXPECT_EQ(std::tie(listing.files[1].target, listing.files[1].modified),
              std::tuple("/tmp/R&D %.ods", MakeDateTime(MakeDate(2, 7, 2024), 0, 30, 0)));
    EXPECT_EQ(std::tie(listing.files[2].target, listing.files[2].modified),
              std::tuple("/tmp/a&b é.txt", MakeDateTime(MakeDate(15, 3, 2024), 9, 0, 0)));
}

}  // namespace
}  // namespace vt
