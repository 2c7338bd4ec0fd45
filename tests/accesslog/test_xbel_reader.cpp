#include "accesslog/xbel_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "accesslog_fakes.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

DateTime At(int d, int m, int y, int h, int mi, int s) {
    return MakeDateTime(MakeDate(d, m, y), h, mi, s);
}

// A list as GLib writes it, with the bookmarks a reader must leave out among the good ones.
const std::string kList = R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0"
      xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
      xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info"
>
  <!-- a comment <bookmark href="file:///not/this"> -->
  <bookmark href="file:///home/ana/Mis%20documentos/a%C3%B1o%2B1.txt" added="2024-03-15T09:00:00.000001Z" modified="2024-03-15T09:20:30.123456Z" visited="2024-03-15T10:00:00Z">
    <info>
      <metadata owner="http://freedesktop.org">
        <mime:mime-type type="text/plain"/>
        <bookmark:applications>
          <bookmark:application name="gedit" exec="&apos;gedit %u&apos;" modified="2024-03-15T10:00:00Z" count="1"/>
        </bookmark:applications>
      </metadata>
    </info>
  </bookmark>
  <bookmark href="https://example.org/x.html" modified="2024-03-15T09:00:00Z" visited="2024-03-15T09:00:00Z"/>
  <bookmark href="file://otherhost/share/y.txt" modified="2024-03-15T09:00:00Z"/>
  <bookmark href="file://localhost/tmp/R%26D%20%25%zz.ods" modified="2024-07-01T22:30:00Z" visited="2024-07-01T21:00:00Z"/>
  <bookmark href='file:///tmp/a&amp;b&#x20;&#233;.txt' modified="2024-03-15T09:00:00+01:00"/>
</xbel>
)";

class XbelTest : public ::testing::Test {
protected:
    test::ScopedTimeZone zone_{test::kMadrid};
};

TEST_F(XbelTest, GoodListGivesDecodedLocalPathsAndLocalTimes) {
    const XbelList list = ParseRecentlyUsedXbel(kList);
    ASSERT_EQ(list.problem, XbelProblem::None);
    ASSERT_EQ(list.bookmarks.size(), 3u);
    EXPECT_EQ(list.bookmarks[0].path, "/home/ana/Mis documentos/año+1.txt");
    EXPECT_EQ(list.bookmarks[0].href, "file:///home/ana/Mis%20documentos/a%C3%B1o%2B1.txt");
    EXPECT_EQ(list.bookmarks[0].used, At(15, 3, 2024, 11, 0, 0)) << "visited is later; winter time is UTC+1";
    EXPECT_EQ(list.bookmarks[1].path, "/tmp/R&D %%zz.ods");
    EXPECT_EQ(list.bookmarks[1].used, At(2, 7, 2024, 0, 30, 0)) << "summer time is UTC+2, past midnight";
    EXPECT_EQ(list.bookmarks[2].path, "/tmp/a&b é.txt");
    EXPECT_EQ(list.bookmarks[2].used, At(15, 3, 2024, 9, 0, 0));
}

TEST_F(XbelTest, TimesAreTheLaterOfModifiedAndVisitedInLocalTime) {
    const std::optional<DateTime> out;  // the bookmark is left out
    // clang-format off
    const std::vector<std::tuple<const char*, const char*, std::optional<DateTime>>> cases{
        {"ModifiedOnly", "modified='2024-01-10T12:00:00Z'", At(10, 1, 2024, 13, 0, 0)},
        {"VisitedLater", "modified='2024-01-10T12:00:00Z' visited='2024-01-10T12:00:01Z'", At(10, 1, 2024, 13, 0, 1)},
        {"ModifiedLater", "modified='2024-01-10T12:00:02Z' visited='2024-01-10T12:00:01Z'", At(10, 1, 2024, 13, 0, 2)},
        {"UnreadableModified", "modified='ayer' visited='2024-01-10T12:00:01Z'", At(10, 1, 2024, 13, 0, 1)},
        {"AddedWhenNothingElse", "added='2024-01-10T08:00:00Z'", At(10, 1, 2024, 9, 0, 0)},
        {"NoTimeAtAll", "added='x'", out},
        {"NoSuchDay", "modified='2024-02-30T08:00:00Z'", out},
        {"NoZone", "modified='2024-01-10T08:00:00'", out},
        {"LastSecondOfWinterTime", "modified='2024-03-31T00:59:59Z'", At(31, 3, 2024, 1, 59, 59)},
        {"FirstSecondOfSummerTime", "modified='2024-03-31T01:00:00Z'", At(31, 3, 2024, 3, 0, 0)},
        {"RepeatedHourInAutumn", "modified='2024-10-27T01:30:00Z'", At(27, 10, 2024, 2, 30, 0)}};
    // clang-format on
    for (const auto& [name, attributes, used] : cases) {
        SCOPED_TRACE(name);
        const XbelList list =
            ParseRecentlyUsedXbel(std::string("<xbel><bookmark href='file:///a' ") + attributes + "/></xbel>");
        ASSERT_EQ(list.problem, XbelProblem::None);
        if (!used) {
            EXPECT_TRUE(list.bookmarks.empty());
            continue;
        }
        ASSERT_EQ(list.bookmarks.size(), 1u);
        EXPECT_EQ(list.bookmarks[0].used, *used);
    }
}

TEST_F(XbelTest, ProblemsAreRecognised) {
    const std::string one = "<bookmark href='file:///a' modified='2024-01-10T12:00:00Z'/>";
    using P = XbelProblem;
    // clang-format off
    const std::vector<std::tuple<const char*, std::string, XbelProblem>> cases{
        {"Empty", "", P::Truncated},
        {"OnlyTheDeclaration", "<?xml version='1.0'?>\n", P::Truncated},
        {"Latin1Bytes", "<xbel><bookmark href='file:///a\xF1o' modified='2024-01-10T12:00:00Z'/></xbel>", P::NotUtf8},
        {"Utf16", std::string("\xFF\xFE<\0x\0b\0e\0l\0/\0>\0", 14), P::NotUtf8},
        {"CrossedTags", "<xbel><info>" + one + "</xbel></info>", P::Malformed},
        {"UnknownEntity", "<xbel><bookmark href='file:///a&nbsp;b'/></xbel>", P::Malformed},
        {"UnquotedValue", "<xbel><bookmark href=file:///a/></xbel>", P::Malformed},
        {"TextOutsideTheRoot", "hola<xbel/>", P::Malformed},
        {"TwoRoots", "<xbel/><xbel/>", P::Malformed},
        {"SameAttributeTwice", "<xbel><bookmark href='file:///a' href='file:///b'/></xbel>", P::Malformed},
        {"OtherRoot", "<html>" + one + "</html>", P::NotXbel},
        {"NoBookmarks", "<?xml version='1.0'?>\n<xbel version='1.0'>\n</xbel>\n", P::None},
        {"EmptyRoot", "\xEF\xBB\xBF<xbel/>", P::None}};
    // clang-format on
    for (const auto& [name, bytes, problem] : cases) {
        const XbelList list = ParseRecentlyUsedXbel(bytes);
        EXPECT_EQ(list.problem, problem) << name;
        EXPECT_TRUE(list.bookmarks.empty()) << name;
    }
}

// Wherever the writer was cut off, the list reads as truncated, never as a shorter good list.
TEST_F(XbelTest, EveryCutOfTheListIsTruncated) {
    const std::size_t complete = kList.rfind("</xbel>") + 7;
    for (std::size_t n = 0; n < complete; ++n) {
        ASSERT_EQ(ParseRecentlyUsedXbel(std::string_view(kList).substr(0, n)).problem, XbelProblem::Truncated) << n;
    }
    EXPECT_EQ(ParseRecentlyUsedXbel(std::string_view(kList).substr(0, complete)).problem, XbelProblem::None);
}

// ---- the list file -------------------------------------------------------------------------

class XbelFile : public XbelTest {
protected:
    std::string ListPath() const { return folder_.Path("Recent/recently-used.xbel"); }
    test::TempAppFolder folder_;
};

TEST_F(XbelFile, ListsEachLocalBookmarkAsARecentFile) {
    folder_.WriteFile("Recent/recently-used.xbel", kList);
    const RecentListing listing = XbelRecentFiles(ListPath()).List();
    ASSERT_EQ(listing.outcome, RecentListingOutcome::Listed);
    ASSERT_EQ(listing.files.size(), 3u);
    const RecentFile& first = listing.files[0];
    EXPECT_EQ(std::tie(first.name, first.target, first.link_path, first.modified, first.vanished),
              std::tuple("año+1.txt", "/home/ana/Mis documentos/año+1.txt",
                         "file:///home/ana/Mis%20documentos/a%C3%B1o%2B1.txt", At(15, 3, 2024, 11, 0, 0), false));
}

TEST_F(XbelFile, NoListIsNoSource) {
    EXPECT_EQ(XbelRecentFiles(ListPath()).List().outcome, RecentListingOutcome::NoSource);
    EXPECT_EQ(XbelRecentFiles("").List().outcome, RecentListingOutcome::NoSource);
}

TEST_F(XbelFile, DamagedListFailsWithAMessageNamingIt) {
    folder_.WriteFile("Recent/recently-used.xbel", kList.substr(0, 300));
    const RecentListing listing = XbelRecentFiles(ListPath()).List();
    EXPECT_EQ(listing.outcome, RecentListingOutcome::Failed);
    EXPECT_EQ(listing.error, "No se puede leer la lista de archivos recientes:\r\n\r\n" + ListPath() +
                                 "\r\n\r\nEl fichero está vacío o incompleto.\r\n\r\nNo se ha registrado ningún "
                                 "acceso; se volverá a intentar en la próxima revisión.");
}

TEST_F(XbelFile, UnreadableListFailsWithAMessageNamingIt) {
    std::filesystem::create_directories(ListPath());
    const RecentListing listing = XbelRecentFiles(ListPath()).List();
    EXPECT_EQ(listing.outcome, RecentListingOutcome::Failed);
    EXPECT_NE(listing.error.find(ListPath()), std::string::npos);
    EXPECT_NE(listing.error.find("No se ha registrado ningún acceso"), std::string::npos);
}

}  // namespace
}  // namespace vt
