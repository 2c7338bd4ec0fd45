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

std::size_t Count(const std::string& text, const std::string& what) {
    std::size_t n = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
        ++n;
    }
    return n;
}

// ---- the month's length and its index ------------------------------------------------------

TEST(MonthIndex, HasOneLinkPerDayOfTheMonth) {
    const std::vector<std::pair<Date, int>> cases{{MakeDate(15, 2, 2024), 29}, {MakeDate(28, 2, 2023), 28},
                                                  {MakeDate(1, 2, 2000), 29},  {MakeDate(1, 2, 1900), 28},
                                                  {MakeDate(30, 4, 2024), 30}, {MakeDate(1, 3, 2024), 31},
                                                  {MakeDate(31, 12, 2024), 31}};
    for (const auto& [date, days] : cases) {
        SCOPED_TRACE(FormatDate(date));
        EXPECT_EQ(DiasDelMes(date), days);
        const std::string head = EscribirCabeceraLog(date);
        EXPECT_EQ(Count(head, "<a href='#DIA"), static_cast<std::size_t>(days));
        EXPECT_NE(head.find("<a href='#DIA" + std::to_string(days) + "'>"), std::string::npos);
        EXPECT_EQ(Count(head, "</a> | \r\n") + Count(head, "</a> - - \r\n"), static_cast<std::size_t>(days));
    }
}

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

TEST(AccessPage, DayHeadingNamesTheDayAndItsWeekday) {
    EXPECT_EQ(DayHeading(MakeDate(5, 3, 2024)), "<hr>\r\n<p><a name='DIA05'></a><b>DIA 05 (Martes)</b></p>\r\n");
    EXPECT_EQ(DayHeading(MakeDate(31, 3, 2024)), "<hr>\r\n<p><a name='DIA31'></a><b>DIA 31 (Domingo)</b></p>\r\n");
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

TEST_F(AccesosMenu, PagePathIsYearMonthAndSpanishMonthName) {
    EXPECT_EQ(RutaLogAccesos(folder_.Paths(), MakeDate(14, 3, 2024), true), folder_.Path("LOG/2024.03.MARZO.htm"));
    EXPECT_EQ(RutaLogAccesos(folder_.Paths(), MakeDate(1, 12, 987), true), folder_.Path("LOG/0987.12.DICIEMBRE.htm"));
    EXPECT_EQ(RutaLogAccesos(folder_.Paths(), MakeDate(1, 1, 2024), false), folder_.Path("LOG/"));
    EXPECT_TRUE(folder_.Exists("LOG")) << "asking for a path creates the folder";
    EXPECT_FALSE(folder_.Exists("LOG/2024.03.MARZO.htm")) << "but never the page";
}

TEST_F(AccesosMenu, TodayWithoutAPageTellsTheUserAndCreatesNothing) {
    AbrirLogDeHoy(folder_.Paths(), clock_, dialogs_, shell_);
    ASSERT_EQ(dialogs_.Shown().size(), 1u);
    const MessageBox& box = dialogs_.Shown()[0];
    EXPECT_EQ(std::tie(box.text, box.icon), std::tuple("Aún no existe un LOG para hoy.", MsgIcon::Information));
    EXPECT_TRUE(shell_.opened.empty());
    EXPECT_FALSE(folder_.Exists("LOG/2024.03.MARZO.htm"));
}

TEST_F(AccesosMenu, TodayOpensThisMonthsPage) {
    folder_.WriteFile("LOG/2024.03.MARZO.htm", "x");
    AbrirLogDeHoy(folder_.Paths(), clock_, dialogs_, shell_);
    AbrirCarpetaLogs(folder_.Paths(), clock_, shell_);
    EXPECT_TRUE(dialogs_.Shown().empty());
    EXPECT_EQ(shell_.opened, (std::vector<std::string>{folder_.Path("LOG/2024.03.MARZO.htm") + " | " + folder_.Folder(),
                                                       folder_.Path("LOG/") + " | " + folder_.Folder()}));
}

// The desktop's view when there is one, else the folder; "" when nothing is opened and the user is told.
TEST(RecentFolderItem, OpensTheDesktopViewElseTheFolder) {
    const std::vector<std::array<const char*, 3>> cases{{"recent:///", "/h/.local/share", "recent:///"},
                                                        {"", "/h/.local/share", "/h/.local/share/"},
                                                        {"", "/h/Recent/", "/h/Recent/"},
                                                        {"", "", ""}};
    for (const auto& [view, recent, opened] : cases) {
        SCOPED_TRACE(std::string(view) + " " + recent);
        test::TempAppFolder folder;
        test::ScriptedDialogs dialogs;
        test::RecordingShellOpen shell;
        test::FakeShellFolders shell_folders;
        shell_folders.view = view;
        shell_folders.recent = recent;
        AbrirCarpetaRecientes(folder.Paths(), shell_folders, shell, dialogs);
        if (std::string(opened).empty()) {
            EXPECT_TRUE(shell.opened.empty());
            EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"No se encuentra la carpeta de archivos recientes."});
        } else {
            EXPECT_EQ(shell.opened, std::vector<std::string>{opened + (" | " + folder.Folder())});
            EXPECT_TRUE(dialogs.Shown().empty());
        }
    }
}

}  // namespace
}  // namespace vt
