#include "accesslog/access_pages.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "accesslog_fakes.h"
#include "fake_clock.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

// ---- the month's length and its index ------------------------------------------------------

// February 2015 begins on a Sunday and ends on a Saturday: the index starts with "- -".
TEST(AccessPage, HeadOfAMonthByteForByte) {
    std::string expected =
        "<html><head><title>FEBRERO 2015</title></head>\r\n"
        "<body style='font-family: Arial; font-size: 14px' vlink='#0000FF' alink='#0000FF' link='#0000FF'>\r\n"
        "<p>\r\n<b>FEBRERO 2015</b>\r\n</p>\r\n<p>\r\n";
    for (int day = 1; day <= 28; ++day) {
        const std::string dd = (day < 10 ? "0" : "") + std::to_string(day);
        expected += "<a href='#DIA" + dd + "'>" + dd + "</a> " + (day % 7 == 1 ? "- -" : "|") + " \r\n";
    }
    expected += "</p>\r\n";
    EXPECT_EQ(EscribirCabeceraLog(MakeDate(20, 2, 2015)), expected);
    EXPECT_NE(expected.find("<a href='#DIA01'>01</a> - - \r\n<a href='#DIA02'>02</a> | \r\n"), std::string::npos);
}

// The page is Windows-1252, so what it cannot hold goes as a character reference; the address
// percent-encodes what would end or bend it; a line break cannot break the one-line layout.
TEST(AccessPage, EntryLinesCarryAnyPathByteForByte) {
    // clang-format off
    const std::vector<std::pair<const char*, const char*>> cases{  // the path, and the second line's bytes
        {"/home/ana/informe.odt", " <a href='file:///home/ana/informe.odt'>/home/ana/informe.odt</a>"},
        {"C:\\Docs\\a b.txt", " <a href='file:///C:\\Docs\\a b.txt'>C:\\Docs\\a b.txt</a>"},
        {"/tmp/o'neil & <b>.txt", " <a href='file:///tmp/o&#39;neil &amp; &lt;b&gt;.txt'>/tmp/o'neil &amp; &lt;b&gt;.txt</a>"},
        {"/tmp/\"q\".txt", " <a href='file:///tmp/\"q\".txt'>/tmp/\"q\".txt</a>"},
        {"/srv/a/\u65E5\u672C.txt", " <a href='file:///srv/a/%E6%97%A5%E6%9C%AC.txt'>/srv/a/&#26085;&#26412;.txt</a>"},
        {"/d/a\u00F1o \u20AC\u0152.txt", " <a href='file:///d/a%C3%B1o %E2%82%AC%C5%92.txt'>/d/a\xF1o \x80\x8C.txt</a>"},
        {"/d/100%#1?.txt", " <a href='file:///d/100%25%231%3F.txt'>/d/100%#1?.txt</a>"},
        {"/d/a\nb\r\tc\x7F", " <a href='file:///d/a%0Ab%0D%09c%7F'>/d/a&#9226;b&#9229;&#9225;c&#9249;</a>"},
        {"/d/\U0001F600\u0085\xFFx", " <a href='file:///d/%F0%9F%98%80%C2%85%FFx'>/d/&#128512;&#65533;&#65533;x</a>"}};
    // clang-format on
    for (const auto& [path, link] : cases) {
        EXPECT_EQ(Utf8ToCp1252(AccessEntryLines("09:05:07", path)), std::string("09:05:07\r\n") + link + "\r\n<br>\r\n")
            << path;
    }
}

// ---- paths and the "Accesos" items ----------------------------------------------------------

class AccesosMenu : public ::testing::Test {
protected:
    test::TempAppFolder folder_;
    test::FakeClock clock_{MakeDateTime(MakeDate(14, 3, 2024), 10)};
    test::ScriptedDialogs dialogs_;
    test::RecordingShellOpen shell_;
    test::FakeShellFolders shell_folders_;
};

TEST_F(AccesosMenu, TodayOpensThisMonthsPage) {
    folder_.WriteFile("LOG/2024.03.MARZO.htm", "x");
    AbrirLogDeHoy(folder_.Paths(), clock_, dialogs_, shell_);
    AbrirCarpetaLogs(folder_.Paths(), clock_, shell_);
    EXPECT_TRUE(dialogs_.Shown().empty());
    EXPECT_EQ(shell_.opened, (std::vector<std::string>{folder_.Path("LOG/2024.03.MARZO.htm") + " | " + folder_.Folder(),
                                                       folder_.Path("LOG/") + " | " + folder_.Folder()}));
}

}  // namespace
}  // namespace vt
