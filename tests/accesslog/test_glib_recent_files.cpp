#include "platform/glib_recent_files.h"

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

// A list as GLib writes it, with a DOCTYPE and blanks around "=" as other writers put them, and
// the bookmarks a reader must leave out among the good ones.
const std::string kList = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE xbel PUBLIC "+//IDN python.org//DTD XML Bookmark Exchange Language 1.0//EN//XML" "xbel-1.0.dtd">
<xbel version = "1.0"
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
  <bookmark href="file:///tmp/bad%zz.txt" modified="2024-03-15T09:00:00Z"/>
  <bookmark href="file://localhost/tmp/R%26D%20%25.ods" modified ="2024-07-01T22:30:00Z" visited= "2024-07-01T21:00:00Z"/>
  <bookmark href='file:///tmp/a&amp;b&#x20;&#233;.txt' modified="2024-03-15T09:00:00+01:00"/>
</xbel>
)";

class GlibRecentFilesTest : public ::testing::Test {
protected:
    std::string ListPath() const { return folder_.Path("Recent/recently-used.xbel"); }
    test::ScopedTimeZone zone_{test::kMadrid};
    test::TempAppFolder folder_;
};

TEST_F(GlibRecentFilesTest, ListsEachLocalBookmarkWithItsDecodedPathAndLocalTime) {
    folder_.WriteFile("Recent/recently-used.xbel", kList);
    const RecentListing listing = GlibRecentFiles(ListPath()).List();
    ASSERT_EQ(listing.outcome, RecentListingOutcome::Listed);
    ASSERT_EQ(listing.files.size(), 3u);
    const RecentFile& first = listing.files[0];
    EXPECT_EQ(std::tie(first.name, first.target, first.link_path, first.modified, first.vanished),
              std::tuple("año+1.txt", "/home/ana/Mis documentos/año+1.txt",
                         "file:///home/ana/Mis%20documentos/a%C3%B1o%2B1.txt", At(15, 3, 2024, 11, 0, 0), false))
        << "visited is later; winter time is UTC+1";
    EXPECT_EQ(listing.files[1].target, "/tmp/R&D %.ods");
    EXPECT_EQ(listing.files[1].modified, At(2, 7, 2024, 0, 30, 0)) << "summer time is UTC+2, past midnight";
    EXPECT_EQ(listing.files[2].target, "/tmp/a&b é.txt");
    EXPECT_EQ(listing.files[2].modified, At(15, 3, 2024, 9, 0, 0));
}

TEST_F(GlibRecentFilesTest, TimeIsTheLaterOfModifiedAndVisitedElseAdded) {
    const std::optional<DateTime> out;  // the bookmark is left out
    // clang-format off
    const std::vector<std::tuple<const char*, const char*, std::optional<DateTime>>> cases{
        {"ModifiedOnly", "modified='2024-01-10T12:00:00Z'", At(10, 1, 2024, 13, 0, 0)},
        {"VisitedOnly", "visited='2024-01-10T12:00:00Z'", At(10, 1, 2024, 13, 0, 0)},
        {"VisitedLater", "modified='2024-01-10T12:00:00Z' visited='2024-01-10T12:00:01Z'", At(10, 1, 2024, 13, 0, 1)},
        {"ModifiedLater", "modified='2024-01-10T12:00:02Z' visited='2024-01-10T12:00:01Z' added='2024-01-11T00:00:00Z'",
         At(10, 1, 2024, 13, 0, 2)},
        {"AddedWhenNothingElse", "added='2024-01-10T08:00:00Z'", At(10, 1, 2024, 9, 0, 0)},
        {"NoTimeAtAll", "", out},
        {"LastSecondOfWinterTime", "modified='2024-03-31T00:59:59Z'", At(31, 3, 2024, 1, 59, 59)},
        {"FirstSecondOfSummerTime", "modified='2024-03-31T01:00:00Z'", At(31, 3, 2024, 3, 0, 0)},
        {"RepeatedHourInAutumn", "modified='2024-10-27T01:30:00Z'", At(27, 10, 2024, 2, 30, 0)}};
    // clang-format on
    for (const auto& [name, attributes, used] : cases) {
        SCOPED_TRACE(name);
        const RecentlyUsedList list = ReadRecentlyUsedList(
            std::string("<xbel version='1.0'><bookmark href='file:///a' ") + attributes + "/></xbel>");
        ASSERT_EQ(list.problem, "");
        ASSERT_EQ(list.files.size(), used ? 1u : 0u);
        if (used) {
            EXPECT_EQ(list.files[0].modified, *used);
        }
    }
}

TEST_F(GlibRecentFilesTest, DamageIsNamed) {
    const std::string one = "<bookmark href='file:///a' modified='2024-01-10T12:00:00Z'/>";
    const char *incomplete = "El fichero está vacío o incompleto.", *utf8 = "El fichero no está codificado en UTF-8.",
               *xml = "El fichero no es un documento XML válido.",
               *xbel = "El fichero no es una lista de marcadores XBEL válida.";
    // clang-format off
    const std::vector<std::tuple<const char*, std::string, const char*>> cases{
        {"Empty", "", incomplete},
        {"OnlyTheDeclaration", "<?xml version='1.0'?>\n", incomplete},
        {"Latin1Bytes", "<xbel version='1.0'><bookmark href='file:///a\xF1o' modified='2024-01-10T12:00:00Z'/></xbel>", utf8},
        {"Utf16", std::string("\xFF\xFE<\0x\0b\0e\0l\0/\0>\0", 14), utf8},
        {"CrossedTags", "<xbel version='1.0'><bookmark href='file:///a'></xbel>", xml},
        {"UnknownEntity", "<xbel version='1.0'><bookmark href='file:///a&nbsp;b'/></xbel>", xml},
        {"UnquotedValue", "<xbel version='1.0'><bookmark href=file:///a/></xbel>", xml},
        {"OtherRoot", "<html>" + one + "</html>", xbel},
        {"TwoRoots", "<xbel version='1.0'/><xbel version='1.0'/>", xbel},
        {"NoVersion", "<xbel>" + one + "</xbel>", xbel},
        {"TimeThatIsNoTime", "<xbel version='1.0'><bookmark href='file:///a' modified='ayer'/></xbel>", xbel},
        {"NoBookmarks", "<?xml version='1.0'?>\n<xbel version='1.0'>\n</xbel>\n", ""},
        {"ByteOrderMark", "\xEF\xBB\xBF<xbel version='1.0'/>", ""}};
    // clang-format on
    for (const auto& [name, bytes, problem] : cases) {
        const RecentlyUsedList list = ReadRecentlyUsedList(bytes);
        EXPECT_EQ(list.problem, problem) << name;
        EXPECT_TRUE(list.files.empty()) << name;
    }
}

// Wherever the writer was cut off, the list reads as incomplete, never as a shorter good list.
TEST_F(GlibRecentFilesTest, EveryCutOfTheListIsIncomplete) {
    const std::size_t complete = kList.rfind("</xbel>") + 7;
    for (std::size_t n = 0; n < complete; ++n) {
        ASSERT_EQ(ReadRecentlyUsedList(std::string_view(kList).substr(0, n)).problem,
                  "El fichero está vacío o incompleto.")
            << n;
    }
    EXPECT_EQ(ReadRecentlyUsedList(std::string_view(kList).substr(0, complete)).files.size(), 3u);
}

// No list is nothing to say; a damaged one is told once for as long as it stays as it is.
TEST_F(GlibRecentFilesTest, DamagedListIsToldOncePerChange) {
    GlibRecentFiles recent(ListPath());
    EXPECT_EQ(recent.List().outcome, RecentListingOutcome::NoSource);
    EXPECT_EQ(GlibRecentFiles("").List().outcome, RecentListingOutcome::NoSource);
    const std::string damaged = kList.substr(0, 300);
    const std::string message = "No se puede leer la lista de archivos recientes:\r\n\r\n" + ListPath() +
                                "\r\n\r\nEl fichero está vacío o incompleto.\r\n\r\nNo se ha registrado ningún acceso; "
                                "se volverá a intentar en la próxima revisión.";
    // the list's bytes before each listing ("=" keeps them as they are), and whether it was told before
    for (const auto& [bytes, told_before] : std::vector<std::pair<std::string, bool>>{
             {damaged, false}, {"=", true}, {damaged + " ", false}, {"=", true}, {kList, false}, {damaged, false}}) {
        if (bytes != "=") {
            folder_.WriteFile("Recent/recently-used.xbel", bytes);
        }
        const RecentListing listing = recent.List();
        if (bytes == kList) {
            EXPECT_EQ(listing.outcome, RecentListingOutcome::Listed);
            continue;
        }
        EXPECT_EQ(std::tie(listing.outcome, listing.error, listing.told_before),
                  std::tuple(RecentListingOutcome::Failed, message, told_before));
    }
    std::filesystem::remove(ListPath());
    std::filesystem::create_directories(ListPath());
    const RecentListing unreadable = recent.List();
    EXPECT_EQ(unreadable.outcome, RecentListingOutcome::Failed);
    EXPECT_NE(unreadable.error.find("No se puede abrir el fichero ("), std::string::npos);
    EXPECT_FALSE(unreadable.told_before);
}

}  // namespace
}  // namespace vt
