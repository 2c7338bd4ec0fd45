#include "accesslog/recent_scan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "accesslog/access_pages.h"
#include "accesslog_fakes.h"
#include "fake_clock.h"
#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

DateTime At(const char* text) {
    return ParseDateTime(text).value();
}

std::string Heading(const char* dd, const char* weekday) {
    return std::string("<hr>\r\n<p><a name='DIA") + dd + "'></a><b>DIA " + dd + " (" + weekday + ")</b></p>\r\n";
}

std::string Entry(const char* time, const std::string& path) {
    return std::string(time) + "\r\n <a href='file://" + path + "'>" + path + "</a>\r\n<br>\r\n";
}

std::string Head(int month) {
    return EscribirCabeceraLog(MakeDate(1, month, 2024));
}

const std::string kB = "ANTES\r\n";  // what a page held before the run

class RecentScan : public ::testing::Test {
protected:
    ScanOutcome Run() { return TratarArchivosRecientes(folder_.Paths(), settings_, clock_, dialogs_, busy_, recent_); }
    void Setup(const char* ultimo, const char* now) {
        settings_.UltimoAcceso = At(ultimo);
        clock_.Set(At(now));
    }
    // Every page in LOG with its bytes.
    std::map<std::string, std::string> Pages() const {
        std::map<std::string, std::string> pages;
        for (const auto& item : std::filesystem::directory_iterator(folder_.Path("LOG"))) {
            pages[item.path().filename().string()] = folder_.ReadFile("LOG/" + item.path().filename().string());
        }
        return pages;
    }

    test::TempAppFolder folder_;
    test::FakeClock clock_;
    test::ScriptedDialogs dialogs_;
    test::RecordingBusy busy_;
    test::FakeRecentFiles recent_;
    Settings settings_;
};

using Files = std::vector<std::array<const char*, 3>>;  // modified, name, target ("" → the link itself)
const char* kMarch = "2024.03.MARZO.htm";

struct ScanCase {
    const char* name;
    Files files;
    std::vector<std::pair<const char*, std::string>> pages;  // every page afterwards; kB: it existed before
    const char* ultimo;
    const char* now;
};

ScanCase Scan(const char* name, Files files, std::vector<std::pair<const char*, std::string>> pages,
              const char* ultimo = "15/03/2024 09:00", const char* now = "15/03/2024 09:05") {
    return {name, std::move(files), std::move(pages), ultimo, now};
}

// The usual run: the March page was there before and gains this text.
ScanCase March(const char* name, Files files, const std::string& added, const char* ultimo = "15/03/2024 09:00") {
    return Scan(name, std::move(files), {{kMarch, kB + added}}, ultimo);
}

class ScanWrites : public RecentScan, public ::testing::WithParamInterface<ScanCase> {};

// Pages are Windows-1252: the bytes on disk are compared with the expected text converted.
TEST_P(ScanWrites, ThePages) {
    const ScanCase& c = GetParam();
    Setup(c.ultimo, c.now);
    for (const auto& [modified, name, target] : c.files) {
        recent_.Add(name, target, At(modified), std::string("/r/Recent/") + name);
    }
    std::map<std::string, std::string> expected;
    for (const auto& [file, text] : c.pages) {
        if (text.starts_with(kB)) {
            folder_.WriteFile(std::string("LOG/") + file, kB);
        }
        expected[file] = Utf8ToCp1252(text);
    }
    EXPECT_EQ(Run(), ScanOutcome::Logged);
    EXPECT_EQ(Pages(), expected);
    EXPECT_TRUE(dialogs_.Shown().empty());
    EXPECT_EQ(settings_.UltimoAcceso, At(c.now));
}

INSTANTIATE_TEST_SUITE_P(
    Table, ScanWrites,
    ::testing::Values(
        Scan("TwoDaysInOneRun",
             {{"14/03/2024 17:30", "b", "/d/b"}, {"14/03/2024 09:15", "a", "/d/a"}, {"15/03/2024 08:00", "c", "/d/c"}},
             {{kMarch, Head(3) + Heading("14", "Jueves") + Entry("09:15:00", "/d/a") + Entry("17:30:00", "/d/b") +
                           Heading("15", "Viernes") + Entry("08:00:00", "/d/c")}},
             "13/03/2024 18:00"),
        Scan("MonthBoundaryStartsTheNewPageWithItsHead",
             {{"01/04/2024 08:05:09", "x", "/d/x"}, {"31/03/2024 22:10", "y", "/d/y"}},
             {{kMarch, kB + Entry("22:10:00", "/d/y")},
              {"2024.04.ABRIL.htm", Head(4) + Heading("01", "Lunes") + Entry("08:05:09", "/d/x")}},
             "31/03/2024 20:00", "01/04/2024 09:00"),
        March("SameDayAddsNoHeading", {{"15/03/2024 09:02", "a", "/d/a"}}, Entry("09:02:00", "/d/a")),
        March("EmptyTargetIsLoggedUnderTheLinksOwnPath", {{"15/03/2024 09:03", "nota.lnk", ""}},
              Entry("09:03:00", "/r/Recent/nota.lnk")),
        March("ThumbsAndDesktopIniSkippedInAnyCase",
              {{"15/03/2024 09:01", "thumbs.DB", "/d/1"},
               {"15/03/2024 09:01", "DESKTOP.INI", "/d/2"},
               {"15/03/2024 09:01", "Thumbs.db.lnk", "/d/3"}},
              Entry("09:01:00", "/d/3")),
        March("FileAtTheLastScanIsTakenOneSecondEarlierIsNot",
              {{"15/03/2024 08:59:59", "a", "/d/earlier"}, {"15/03/2024 09:00", "b", "/d/exactly"}},
              Entry("09:00:00", "/d/exactly")),
        March("FirstScanOfANewDayWithNoAccessesWritesTheHeading", {}, Heading("15", "Viernes"), "14/03/2024 17:00"),
        March("IdenticalEntriesAreBothKept", {{"15/03/2024 09:04", "a", "/d/a"}, {"15/03/2024 09:04", "a", "/d/a"}},
              Entry("09:04:00", "/d/a") + Entry("09:04:00", "/d/a")),
        March("MarkupInAPathIsEscaped", {{"15/03/2024 09:01", "x", "/d/año & <b>'s"}},
              "09:01:00\r\n <a href='file:///d/año &amp; &lt;b&gt;&#39;s'>/d/año &amp; &lt;b&gt;'s</a>\r\n<br>\r\n")),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(RecentScan, StoresTheStartOfTheRunAsTheLastScan) {
    folder_.WriteFile("VendrakoTimer.ini", "[JORNADA]\r\nFECHA=15-03-24\r\n");
    Setup("15/03/2024 09:00", "15/03/2024 10:00");
    recent_.on_list = [this] { clock_.AdvanceSeconds(40); };  // the run takes time
    EXPECT_EQ(Run(), ScanOutcome::Logged);
    EXPECT_EQ(folder_.ReadFile("VendrakoTimer.ini"),
              "[JORNADA]\r\nFECHA=15-03-24\r\n\r\n[ACCESOS]\r\nULTIMO=15/03/2024 10:00:00\r\n");
}

TEST_F(RecentScan, FutureFileIsWarnedAboutAndNotLogged) {
    Setup("15/03/2024 09:00", "15/03/2024 09:05");
    recent_.Add("plan.lnk", "", At("20/03/2024 08:07:06"), "/r/Recent/plan.lnk");
    Run();
    EXPECT_EQ(dialogs_.Texts(), std::vector<std::string>{"Se ha detectado un acceso a un fichero posterior al día de "
                                                         "hoy:\r\n\r\n/r/Recent/plan.lnk\r\n\r\n20/03/2024 08:07:06"});
    EXPECT_FALSE(folder_.Exists("LOG/2024.03.MARZO.htm"));
}

TEST_F(RecentScan, UnwritablePageStopsTheRunAndKeepsTheLastScan) {
    Setup("28/02/2024 18:00", "02/03/2024 09:00");
    recent_.Add("a", "/d/feb", At("29/02/2024 10:00"));
    recent_.Add("b", "/d/mar", At("01/03/2024 10:00"));
    std::filesystem::create_directories(folder_.Path("LOG/2024.03.MARZO.htm"));

    EXPECT_EQ(Run(), ScanOutcome::Stopped);

    EXPECT_EQ(folder_.ReadFile("LOG/2024.02.FEBRERO.htm"),
              Utf8ToCp1252(Head(2) + Heading("29", "Jueves") + Entry("10:00:00", "/d/feb")));
    EXPECT_THAT(dialogs_.Texts(), testing::ElementsAre(testing::HasSubstr(folder_.Path("LOG/2024.03.MARZO.htm"))));
    EXPECT_EQ(settings_.UltimoAcceso, At("28/02/2024 18:00"));
    EXPECT_FALSE(folder_.Exists("VendrakoTimer.ini"));
}

}  // namespace
}  // namespace vt
