#include "accesslog/recent_scan.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "accesslog/access_pages.h"
#include "accesslog/folder_recent_files.h"
#include "accesslog_fakes.h"
#include "fake_clock.h"
#include "platform/glib_recent_files.h"
#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "store/text_file.h"
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

const char* kBefore = "ANTES\r\n";  // what a page held before the run

// One run's world; a fresh one for every case.
struct Scene {
    ScanOutcome Scan(RecentFiles& source) {
        return TratarArchivosRecientes(folder_.Paths(), settings_, clock_, dialogs_, busy_, source);
    }
    ScanOutcome Scan() { return Scan(recent_); }
    // The last scan was at `last`, and this one starts at `now`.
    void Window(const char* last, const char* now) {
        settings_.UltimoAcceso = At(last);
        clock_.Set(At(now));
    }
    // Pages are Windows-1252: the bytes on disk are compared with the expected text converted.
    void ExpectPage(const std::string& name, const std::string& text) const {
        EXPECT_EQ(folder_.ReadFile("LOG/" + name), Utf8ToCp1252(text)) << name;
    }
    std::vector<std::string> Pages() const {
        std::vector<std::string> names;
        std::error_code ec;
        for (const auto& item : std::filesystem::directory_iterator(folder_.Path("LOG"), ec)) {
            names.push_back(item.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    test::TempAppFolder folder_;
    test::FakeClock clock_;
    test::ScriptedDialogs dialogs_;
    test::RecordingBusy busy_;
    test::FakeRecentFiles recent_;
    Settings settings_;
};

class RecentScan : public ::testing::Test, public Scene {};

// ---- what a run writes ----------------------------------------------------------------------

struct ScanCase {
    const char* name;
    const char* ultimo;
    const char* now;
    std::vector<std::array<const char*, 3>> files;  // modified, name, target ("" → /r/Recent/<name>)
    // Every page in LOG afterwards and its whole text; kBefore marks one that existed before the run.
    std::vector<std::pair<const char*, std::string>> pages;
    int warnings = 0;
};

TEST(RecentScanWrites, ThePages) {
    const std::string kB = kBefore;
    const char *kMarzo = "2024.03.MARZO.htm", *kDay = "15/03/2024 09:00", *kLater = "15/03/2024 09:05";
    // clang-format off
    const std::vector<ScanCase> cases{
        {"TwoDaysInOneRun", "13/03/2024 18:00", "15/03/2024 10:00",
         {{"14/03/2024 17:30", "b", "/d/b"}, {"14/03/2024 09:15", "a", "/d/a"}, {"15/03/2024 08:00", "c", "/d/c"}},
         {{kMarzo, Head(3) + Heading("14", "Jueves") + Entry("09:15:00", "/d/a") + Entry("17:30:00", "/d/b") +
                   Heading("15", "Viernes") + Entry("08:00:00", "/d/c")}}},
        {"MonthBoundaryCreatesTheNewPageWithItsHead", "31/03/2024 20:00", "01/04/2024 09:00",
         {{"01/04/2024 08:05:09", "x", "/d/x"}, {"31/03/2024 22:10", "y", "/d/y"}},
         {{kMarzo, kB + Entry("22:10:00", "/d/y")},
          {"2024.04.ABRIL.htm", Head(4) + Heading("01", "Lunes") + Entry("08:05:09", "/d/x")}}},
        {"SameDayAsThePreviousRunAddsNoHeading", kDay, kLater, {{"15/03/2024 09:02", "a", "/d/a"}},
         {{kMarzo, kB + Entry("09:02:00", "/d/a")}}},
        {"EmptyTargetIsLoggedUnderTheLinksOwnPath", kDay, kLater, {{"15/03/2024 09:03", "nota.lnk", ""}},
         {{kMarzo, kB + Entry("09:03:00", "/r/Recent/nota.lnk")}}},
        {"ThumbsAndDesktopIniSkippedInAnyCase", kDay, kLater,
         {{"15/03/2024 09:01", "thumbs.db", "/d/1"}, {"15/03/2024 09:01", "Desktop.ini", "/d/2"},
          {"15/03/2024 09:01", "DESKTOP.INI", "/d/3"}, {"15/03/2024 09:01", "Thumbs.db.lnk", "/d/4"}},
         {{kMarzo, kB + Entry("09:01:00", "/d/4")}}},
        {"FileAtTheLastScanIsTakenOneSecondEarlierIsNot", kDay, kLater,
         {{"15/03/2024 08:59:59", "a", "/d/earlier"}, {"15/03/2024 09:00", "b", "/d/exactly"}},
         {{kMarzo, kB + Entry("09:00:00", "/d/exactly")}}},
        {"FirstScanOfANewDayWithNoAccessesWritesTheHeading", "14/03/2024 17:00", "15/03/2024 08:00", {},
         {{kMarzo, kB + Heading("15", "Viernes")}}},
        {"FirstScanOfANewMonthWithNoAccessesStartsThePage", "31/03/2024 17:00", "01/04/2024 08:00", {},
         {{kMarzo, kB}, {"2024.04.ABRIL.htm", Head(4) + Heading("01", "Lunes")}}},
        {"IdenticalEntriesAreBothKept", kDay, kLater, {{"15/03/2024 09:04", "a", "/d/a"}, {"15/03/2024 09:04", "a", "/d/a"}},
         {{kMarzo, kB + Entry("09:04:00", "/d/a") + Entry("09:04:00", "/d/a")}}},
        // Yesterday's entries go under yesterday's heading; as no heading was written, today's is.
        {"RunAcrossMidnightWithOnlyYesterdaysFiles", "14/03/2024 23:58", "15/03/2024 00:03",
         {{"14/03/2024 23:59:30", "a", "/d/a"}}, {{kMarzo, kB + Entry("23:59:30", "/d/a") + Heading("15", "Viernes")}}},
        {"LastSecondOfTodayIsLoggedMidnightIsWarnedAbout", kDay, kLater,
         {{"15/03/2024 23:59:59", "a", "/d/tonight"}, {"16/03/2024 00:00", "b", "/d/tomorrow"}},
         {{kMarzo, kB + Entry("23:59:59", "/d/tonight")}}, 1},
        {"AccentsAndMarkupInAPath", "12/03/2024 09:00", "13/03/2024 09:30", {{"13/03/2024 09:01", "x", "/d/año & <b>'s"}},
         {{kMarzo, Head(3) + Heading("13", "Miércoles") +
                   "09:01:00\r\n <a href='file:///d/a%C3%B1o &amp; &lt;b&gt;&#39;s'>/d/año &amp; &lt;b&gt;'s</a>\r\n<br>\r\n"}}},
        {"NothingNewOnTheSameDayWritesNothing", kDay, kLater, {{"15/03/2024 08:00", "a", "/d/old"}}, {}}};
    // clang-format on
    for (const ScanCase& c : cases) {
        SCOPED_TRACE(c.name);
        Scene s;
        s.Window(c.ultimo, c.now);
        for (const auto& [modified, name, target] : c.files) {
            s.recent_.Add(name, target, At(modified), std::string("/r/Recent/") + name);
        }
        std::vector<std::string> names;
        for (const auto& [file, text] : c.pages) {
            if (text.starts_with(kBefore)) {
                s.folder_.WriteFile(std::string("LOG/") + file, kBefore);
            }
            names.push_back(file);
        }
        EXPECT_EQ(s.Scan(), ScanOutcome::Logged);
        EXPECT_EQ(s.Pages(), names);
        for (const auto& [file, text] : c.pages) {
            s.ExpectPage(file, text);
        }
        EXPECT_EQ(static_cast<int>(s.dialogs_.Shown().size()), c.warnings);
        EXPECT_EQ(s.settings_.UltimoAcceso, At(c.now));
    }
}

// ---- the state it leaves and the messages it gives -----------------------------------------

TEST_F(RecentScan, StoresTheStartOfTheRunAsTheLastScan) {
    folder_.WriteFile("VendrakoTimer.ini", "[JORNADA]\r\nFECHA=15-03-24\r\n");
    clock_.Set(At("15/03/2024 10:00"));
    recent_.Add("a", "/d/a", At("15/03/2024 09:59"));
    recent_.on_list = [this] { clock_.AdvanceSeconds(40); };  // the run takes time
    EXPECT_EQ(Scan(), ScanOutcome::Logged);
    EXPECT_EQ(settings_.UltimoAcceso, At("15/03/2024 10:00"));
    EXPECT_EQ(folder_.ReadFile("VendrakoTimer.ini"),
              "[JORNADA]\r\nFECHA=15-03-24\r\n\r\n[ACCESOS]\r\nULTIMO=15/03/2024 10:00:00\r\n");
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
}

TEST_F(RecentScan, FutureFileIsWarnedAboutAtEveryRunAndNeverLogged) {
    Window("15/03/2024 09:00", "15/03/2024 09:05");
    recent_.Add("plan.lnk", "", At("20/03/2024 08:07:06"), "/r/Recent/plan.lnk");
    Scan();
    clock_.AdvanceMinutes(5);
    Scan();
    ASSERT_EQ(dialogs_.Shown().size(), 2u);
    EXPECT_EQ(dialogs_.Shown()[0].text,
              "Se ha detectado un acceso a un fichero posterior al día de hoy:\r\n\r\n/r/Recent/plan.lnk\r\n\r\n"
              "20/03/2024 08:07:06");
    EXPECT_EQ(dialogs_.Shown()[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(dialogs_.Shown()[1].text, dialogs_.Shown()[0].text);
    EXPECT_FALSE(folder_.Exists("LOG/2024.03.MARZO.htm"));
}

TEST_F(RecentScan, UnwritablePageStopsTheRunAndKeepsWhatWasWritten) {
    Window("28/02/2024 18:00", "02/03/2024 09:00");
    recent_.Add("a", "/d/feb", At("29/02/2024 10:00"));
    recent_.Add("b", "/d/mar1", At("01/03/2024 10:00"));
    recent_.Add("c", "/d/mar2", At("02/03/2024 08:00"));
    std::filesystem::create_directories(folder_.Path("LOG/2024.03.MARZO.htm"));

    EXPECT_EQ(Scan(), ScanOutcome::Stopped);

    ExpectPage("2024.02.FEBRERO.htm", Head(2) + Heading("29", "Jueves") + Entry("10:00:00", "/d/feb"));
    ASSERT_EQ(dialogs_.Shown().size(), 1u);
    EXPECT_NE(dialogs_.Shown()[0].text.find(folder_.Path("LOG/2024.03.MARZO.htm")), std::string::npos);
    EXPECT_EQ(settings_.UltimoAcceso, At("28/02/2024 18:00"));
    EXPECT_FALSE(folder_.Exists("VendrakoTimer.ini"));
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
}

// A new page on a full disk: its head and first entry go in whole or not at all, so a page is
// never left without its head for the next run to append to.
TEST_F(RecentScan, FullDiskNeverLeavesAHeadlessPage) {
    Window("14/03/2024 18:00", "15/03/2024 09:05");
    recent_.Add("a", "/d/a", At("15/03/2024 09:01"));
    rlimit saved{};
    getrlimit(RLIMIT_FSIZE, &saved);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit lowered{600, saved.rlim_max};  // less than a head
    setrlimit(RLIMIT_FSIZE, &lowered);
    const ScanOutcome outcome = Scan();
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(outcome, ScanOutcome::Stopped);
    EXPECT_EQ(Pages(), std::vector<std::string>{}) << "neither the page nor a temporary";
    ASSERT_EQ(dialogs_.Shown().size(), 1u);
    EXPECT_NE(dialogs_.Shown()[0].text.find(folder_.Path("LOG/2024.03.MARZO.htm")), std::string::npos);
    EXPECT_EQ(Scan(), ScanOutcome::Logged);
    ExpectPage("2024.03.MARZO.htm", Head(3) + Heading("15", "Viernes") + Entry("09:01:00", "/d/a"));
}

TEST_F(RecentScan, VanishedFileIsSkippedSilently) {
    Window("15/03/2024 09:00", "15/03/2024 09:05");
    recent_.Add("gone.lnk", "/d/gone", At("15/03/2024 09:01"));
    recent_.listing.files.back().vanished = true;
    recent_.Add("here.lnk", "/d/here", At("15/03/2024 09:02"));
    EXPECT_EQ(Scan(), ScanOutcome::Logged);
    ExpectPage("2024.03.MARZO.htm", Head(3) + Entry("09:02:00", "/d/here"));
    EXPECT_TRUE(dialogs_.Shown().empty());
}

TEST_F(RecentScan, NoSourceDoesNothingAtAll) {
    Window("14/03/2024 09:00", "15/03/2024 09:05");
    recent_.listing.outcome = RecentListingOutcome::NoSource;
    EXPECT_EQ(Scan(), ScanOutcome::NoSource);
    EXPECT_TRUE(dialogs_.Shown().empty());
    EXPECT_FALSE(folder_.Exists("LOG")) << "not even the day's heading";
    EXPECT_EQ(settings_.UltimoAcceso, At("14/03/2024 09:00"));
}

// A damaged list is reported and costs nothing: once it reads again, the same window of time is
// taken, so the files used meanwhile are all logged.
TEST_F(RecentScan, DamagedListLogsNothingUntilItReadsAgain) {
    test::ScopedTimeZone zone("UTC0");
    GlibRecentFiles xbel(folder_.Path("Recent/recently-used.xbel"));
    Window("15/03/2024 09:00", "15/03/2024 09:05");
    folder_.WriteFile("Recent/recently-used.xbel", std::string("\xFF\xFE<\0x\0", 6));
    EXPECT_EQ(Scan(xbel), ScanOutcome::Stopped);
    ASSERT_EQ(dialogs_.Shown().size(), 1u);
    EXPECT_NE(dialogs_.Shown()[0].text.find("no está codificado en UTF-8"), std::string::npos);
    EXPECT_FALSE(folder_.Exists("LOG/2024.03.MARZO.htm"));
    EXPECT_EQ(settings_.UltimoAcceso, At("15/03/2024 09:00"));
    // Told once per damage: the same file says nothing at the next runs, a new damage is told.
    EXPECT_EQ(Scan(xbel), ScanOutcome::Stopped);
    EXPECT_EQ(dialogs_.Shown().size(), 1u);
    folder_.WriteFile("Recent/recently-used.xbel", "<xbel version='1.0'><bookmark");
    EXPECT_EQ(Scan(xbel), ScanOutcome::Stopped);
    EXPECT_EQ(Scan(xbel), ScanOutcome::Stopped);
    ASSERT_EQ(dialogs_.Shown().size(), 2u);
    EXPECT_NE(dialogs_.Shown()[1].text.find("incompleto"), std::string::npos);

    folder_.WriteFile("Recent/recently-used.xbel",
                      "<xbel version='1.0'><bookmark href='file:///d/a' modified='2024-03-15T09:01:00Z'/>\n"
                      "<bookmark href='file:///d/b' modified='2024-03-15T09:07:00Z'/></xbel>\n");
    clock_.Set(At("15/03/2024 09:10"));
    EXPECT_EQ(Scan(xbel), ScanOutcome::Logged);
    ExpectPage("2024.03.MARZO.htm", Head(3) + Entry("09:01:00", "/d/a") + Entry("09:07:00", "/d/b"));
}

// The folder source end to end: the skipped names are real files there.
TEST_F(RecentScan, FromAFolderOfShortcuts) {
    test::ScopedTimeZone zone("UTC0");
    for (const auto& [name, minute] : std::vector<std::pair<std::string, int>>{
             {"thumbs.db", 1}, {"Desktop.ini", 1}, {"viejo.txt", -1}, {"nota.txt", 2}}) {
        folder_.WriteFile("Recent/" + name, "x");
        const auto time = std::chrono::sys_days{std::chrono::year{2024} / 3 / 15} + std::chrono::minutes{540 + minute};
        ASSERT_FALSE(SetFileModifiedTime(folder_.Path("Recent/" + name), FileTime{time}));
    }
    FolderRecentFiles source(folder_.Path("Recent"));
    Window("15/03/2024 09:00", "15/03/2024 09:05");
    EXPECT_EQ(Scan(source), ScanOutcome::Logged);
    ExpectPage("2024.03.MARZO.htm", Head(3) + Entry("09:02:00", folder_.Path("Recent/nota.txt")));
}

}  // namespace
}  // namespace vt
