#include "accesslog/access_pages.h"

#include <gtest/gtest.h>

#include <string>

#include "accesslog_fakes.h"
#include "fake_clock.h"
#include "scripted_dialogs.h"
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

struct MonthCase {
    Date date;
    int days;
};

class MonthIndex : public ::testing::TestWithParam<MonthCase> {};

TEST_P(MonthIndex, HasOneLinkPerDayOfTheMonth) {
    const auto& [date, days] = GetParam();
    EXPECT_EQ(DiasDelMes(date), days);
    const std::string head = EscribirCabeceraLog(date);
    EXPECT_EQ(Count(head, "<a href='#DIA"), static_cast<std::size_t>(days));
    EXPECT_NE(head.find("<a href='#DIA" + std::to_string(days) + "'>"), std::string::npos);
    EXPECT_EQ(Count(head, "</a> | \r\n") + Count(head, "</a> - - \r\n"), static_cast<std::size_t>(days));
}

INSTANTIATE_TEST_SUITE_P(Table, MonthIndex,
                         ::testing::Values(MonthCase{MakeDate(15, 2, 2024), 29}, MonthCase{MakeDate(28, 2, 2023), 28},
                                           MonthCase{MakeDate(1, 2, 2000), 29}, MonthCase{MakeDate(1, 2, 1900), 28},
                                           MonthCase{MakeDate(30, 4, 2024), 30}, MonthCase{MakeDate(1, 3, 2024), 31},
                                           MonthCase{MakeDate(31, 12, 2024), 31}));

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

struct EntryCase {
    const char* path;
    const char* link;  // the second line
};

class EntryLines : public ::testing::TestWithParam<EntryCase> {};

TEST_P(EntryLines, EscapeThePathInTextAndAddress) {
    EXPECT_EQ(AccessEntryLines("09:05:07", GetParam().path),
              std::string("09:05:07\r\n") + GetParam().link + "\r\n<br>\r\n");
}

INSTANTIATE_TEST_SUITE_P(
    Table, EntryLines,
    ::testing::Values(
        EntryCase{"/home/ana/informe.odt", " <a href='file:///home/ana/informe.odt'>/home/ana/informe.odt</a>"},
        EntryCase{"C:\\Docs\\a b.txt", " <a href='file:///C:\\Docs\\a b.txt'>C:\\Docs\\a b.txt</a>"},
        EntryCase{"/tmp/o'neil & <b>.txt",
                  " <a href='file:///tmp/o&#39;neil &amp; &lt;b&gt;.txt'>/tmp/o'neil &amp; &lt;b&gt;.txt</a>"},
        EntryCase{"/tmp/\"q\".txt", " <a href='file:///tmp/\"q\".txt'>/tmp/\"q\".txt</a>"}));

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
    EXPECT_EQ(dialogs_.Shown()[0].text, "Aún no existe un LOG para hoy.");
    EXPECT_EQ(dialogs_.Shown()[0].icon, MsgIcon::Information);
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

struct RecentItemCase {
    const char* view;
    const char* folder;
    const char* opened;  // "" when nothing is opened and the user is told
};

class RecentFolderItem : public AccesosMenu, public ::testing::WithParamInterface<RecentItemCase> {};

TEST_P(RecentFolderItem, OpensTheDesktopViewElseTheFolder) {
    shell_folders_.view = GetParam().view;
    shell_folders_.recent = GetParam().folder;
    AbrirCarpetaRecientes(folder_.Paths(), shell_folders_, shell_, dialogs_);
    if (std::string(GetParam().opened).empty()) {
        EXPECT_TRUE(shell_.opened.empty());
        EXPECT_EQ(dialogs_.Texts(), std::vector<std::string>{"No se encuentra la carpeta de archivos recientes."});
    } else {
        EXPECT_EQ(shell_.opened, std::vector<std::string>{GetParam().opened + (" | " + folder_.Folder())});
        EXPECT_TRUE(dialogs_.Shown().empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Table, RecentFolderItem,
                         ::testing::Values(RecentItemCase{"recent:///", "/h/.local/share", "recent:///"},
                                           RecentItemCase{"", "/h/.local/share", "/h/.local/share/"},
                                           RecentItemCase{"", "/h/Recent/", "/h/Recent/"}, RecentItemCase{"", "", ""}));

}  // namespace
}  // namespace vt
