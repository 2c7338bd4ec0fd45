#include "accesslog/xbel_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "accesslog_fakes.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

DateTime At(int d, int m, int y, int h, int mi, int s) {
    return MakeDateTime(MakeDate(d, m, y), h, mi, s);
}

// A list as GLib writes it, with a web bookmark and a comment a reader must leave out.
const std::string kList = R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0" xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks">
  <!-- a comment <bookmark href="file:///not/this"> -->
  <bookmark href="file:///home/ana/Mis%20documentos/a%C3%B1o%2B1.txt" modified="2024-03-15T09:20:30.123456Z" visited="2024-03-15T10:00:00Z">
    <info><metadata owner="http://freedesktop.org"><bookmark:applications>
      <bookmark:application name="gedit" exec="&apos;gedit %u&apos;" modified="2024-03-15T10:00:00Z" count="1"/>
    </bookmark:applications></metadata></info>
  </bookmark>
  <bookmark href="https://example.org/x.html" modified="2024-03-15T09:00:00Z"/>
  <bookmark href="file://localhost/tmp/R%26D.ods" modified="2024-07-01T22:30:00Z" visited="2024-07-01T21:00:00Z"/>
</xbel>
)";

// Local time is Madrid's: UTC+1 in winter, UTC+2 in summer; the later of modified and visited.
TEST(Xbel, GoodListGivesDecodedLocalPathsAndLocalTimes) {
    test::ScopedTimeZone zone(test::kMadrid);
    const XbelList list = ParseRecentlyUsedXbel(kList);
    ASSERT_EQ(list.problem, XbelProblem::None);
    ASSERT_EQ(list.bookmarks.size(), 2u);
    EXPECT_EQ(list.bookmarks[0].path, "/home/ana/Mis documentos/año+1.txt");
    EXPECT_EQ(list.bookmarks[0].used, At(15, 3, 2024, 11, 0, 0)) << "visited is later";
    EXPECT_EQ(list.bookmarks[1].path, "/tmp/R&D.ods");
    EXPECT_EQ(list.bookmarks[1].used, At(2, 7, 2024, 0, 30, 0)) << "modified is later";
}

// A list cut short, a list in UTF-16, and a list without bookmarks, which is no problem.
TEST(Xbel, ProblemsAreRecognised) {
    for (const auto& [bytes, problem] : std::vector<std::pair<std::string, XbelProblem>>{
             {kList.substr(0, kList.rfind("</xbel>") + 6), XbelProblem::Truncated},
             {std::string("\xFF\xFE<\0x\0b\0e\0l\0/\0>\0", 14), XbelProblem::NotUtf8},
             {"<?xml version='1.0'?>\n<xbel version='1.0'>\n</xbel>\n", XbelProblem::None}}) {
        const XbelList list = ParseRecentlyUsedXbel(bytes);
        EXPECT_EQ(list.problem, problem) << static_cast<int>(problem);
        EXPECT_TRUE(list.bookmarks.empty()) << static_cast<int>(problem);
    }
}

TEST(XbelFile, DamagedListFailsWithAMessageNamingIt) {
    test::TempAppFolder folder;
    const std::string path = folder.Path("Recent/recently-used.xbel");
    folder.WriteFile("Recent/recently-used.xbel", kList.substr(0, 300));
    const RecentListing listing = XbelRecentFiles(path).List();
    EXPECT_EQ(listing.outcome, RecentListingOutcome::Failed);
    EXPECT_EQ(listing.error, "No se puede leer la lista de archivos recientes:\r\n\r\n" + path +
                                 "\r\n\r\nEl fichero está vacío o incompleto.\r\n\r\nNo se ha registrado ningún "
                                 "acceso; se volverá a intentar en la próxima revisión.");
}

}  // namespace
}  // namespace vt
