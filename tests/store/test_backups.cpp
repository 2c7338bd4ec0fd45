#include "store/backups.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "fake_clock.h"
#include "scripted_dialogs.h"
#include "store/busy.h"
#include "store/settings_store.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::chrono;

class RecordingBusy : public Busy {
public:
    void SetBusy(bool on) override { calls.push_back(on); }
    std::vector<bool> calls;
};

// A fixed moment for file times, so no test depends on today's date.
const FileTime kBase = FileTime{sys_days{2024y / March / 15}} + hours{9};

std::string Slot(int n) {
    char name[40];
    std::snprintf(name, sizeof name, "Backup/VendrakoTimer_%03d.ini", n);
    return name;
}

class BackupsTest : public ::testing::Test {
protected:
    void PutFile(const std::string& relative, const std::string& bytes, FileTime time) {
        folder_.WriteFile(relative, bytes);
        ASSERT_FALSE(SetFileModifiedTime(folder_.Path(relative), time));
    }
    FileTime TimeOf(const std::string& relative) { return FileModifiedTime(folder_.Path(relative)).value(); }

    test::TempAppFolder folder_;
    test::ScriptedDialogs dialogs_;
    RecordingBusy busy_;
};

// ---- choosing the slot ---------------------------------------------------------------------

struct SlotCase {
    const char* name;
    std::vector<std::optional<int>> offsets;  // seconds after kBase of slots 1..n; nothing = missing
    int expected;
};

class NextSlot : public BackupsTest, public ::testing::WithParamInterface<SlotCase> {};

TEST_P(NextSlot, IsTheFirstFreeOrTheOldestInRotationOrder) {
    const auto& offsets = GetParam().offsets;
    for (size_t i = 0; i < offsets.size(); ++i) {
        if (offsets[i]) {
            PutFile(Slot(static_cast<int>(i) + 1), "copy", kBase + seconds{*offsets[i]});
        }
    }
    EXPECT_EQ(NextSettingsBackupPath(folder_.Paths()), folder_.Path(Slot(GetParam().expected)));
}

std::vector<std::optional<int>> Times(std::initializer_list<std::pair<int, int>> runs) {
    std::vector<std::optional<int>> times;
    for (const auto& [count, first] : runs) {
        for (int i = 0; i < count; ++i) {
            times.push_back(first + i);
        }
    }
    return times;
}

std::vector<std::optional<int>> Concat(std::vector<std::optional<int>> first,
                                       const std::vector<std::optional<int>>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::vector<std::optional<int>> WithGap(std::vector<std::optional<int>> times, int slot) {
    times[static_cast<size_t>(slot - 1)].reset();
    return times;
}

INSTANTIATE_TEST_SUITE_P(
    Table, NextSlot,
    ::testing::Values(SlotCase{"NoBackupYet", {}, 1}, SlotCase{"FirstFree", Times({{6, 0}}), 7},
                      SlotCase{"AGapComesFirst", WithGap(Times({{25, 0}}), 9), 9},
                      SlotCase{"OldestIsFirst", Times({{25, 0}}), 1},
                      SlotCase{"OldestInTheMiddle", Times({{12, 100}, {13, 0}}), 13},
                      SlotCase{"OldestIsLast", Times({{24, 10}, {1, 0}}), 25},
                      SlotCase{"TiesBeforeTheDescent", Concat(std::vector<std::optional<int>>(9, 50), Times({{16, 0}})),
                               10},
                      // Only hand-set times give two descents; the first from 001 counts, and 001 follows 025.
                      SlotCase{"TwoDescentsFromTheTop", Times({{10, 0}, {15, 5}}), 1},
                      SlotCase{"AllEqualTakesTheFirst", std::vector<std::optional<int>>(25, 7), 1}),
    [](const auto& row) { return std::string(row.param.name); });

// ---- saving rotates through the slots ------------------------------------------------------

TEST_F(BackupsTest, TheFirstSaveMakesNoCopy) {
    ASSERT_TRUE(SaveSettings(folder_.Paths(), Settings{}, busy_, dialogs_));
    EXPECT_TRUE(folder_.Exists("VendrakoTimer.ini"));
    EXPECT_FALSE(folder_.Exists(Slot(1)));
}

// Pinned: every settings file carries the same time, as on a filesystem whose clock ticks
// slower than the saves come. Free: the kernel's own times of saves in quick succession.
class Rotation : public BackupsTest, public ::testing::WithParamInterface<bool> {};

TEST_P(Rotation, EverySaveOverwritesTheOldestCopy) {
    const bool pinned = GetParam();
    const auto version = [](int n) { return "FECHA=v" + std::to_string(n) + "\r\n"; };
    for (int save = 1; save <= 60; ++save) {
        if (pinned && folder_.Exists("VendrakoTimer.ini")) {
            ASSERT_FALSE(SetFileModifiedTime(folder_.Path("VendrakoTimer.ini"), kBase));
        }
        Settings settings;
        char tag[16];
        std::snprintf(tag, sizeof tag, "v%d", save);
        settings.WorkDate = tag;
        ASSERT_TRUE(SaveSettings(folder_.Paths(), settings, busy_, dialogs_));
        if (save >= 2) {
            // Save n copies version n - 1; slots fill 1..25 and then wrap around.
            const std::string slot = Slot((save - 2) % 25 + 1);
            ASSERT_NE(folder_.ReadFile(slot).find(version(save - 1)), std::string::npos)
                << "save " << save << " did not go to " << slot;
        }
    }
    // After 60 saves, versions 1..59 have passed through; each slot holds its latest.
    for (int n = 1; n <= 25; ++n) {
        const int expected = n + 50 <= 59 ? n + 50 : n + 25;
        EXPECT_NE(folder_.ReadFile(Slot(n)).find(version(expected)), std::string::npos) << Slot(n);
    }
    EXPECT_FALSE(folder_.Exists(Slot(26)));
    EXPECT_TRUE(dialogs_.Shown().empty());
}

INSTANTIATE_TEST_SUITE_P(FileTimes, Rotation, ::testing::Values(true, false),
                         [](const auto& row) { return row.param ? "Pinned" : "Free"; });

TEST_F(BackupsTest, ACopyKeepsTheSettingsFileTimeWhenThatIsTheNewest) {
    PutFile("VendrakoTimer.ini", "[GENERAL]\r\n", kBase + hours{1});
    PutFile(Slot(1), "older", kBase);
    ASSERT_TRUE(BackUpSettingsFile(folder_.Paths()));
    EXPECT_EQ(folder_.ReadFile(Slot(2)), "[GENERAL]\r\n");
    EXPECT_EQ(TimeOf(Slot(2)), kBase + hours{1});
}

TEST_F(BackupsTest, ACopyOfAnOlderFileIsStampedJustAfterTheNewestSlot) {
    PutFile("VendrakoTimer.ini", "[GENERAL]\r\n", kBase - hours{24});  // e.g. restored by hand
    PutFile(Slot(1), "newer", kBase);
    ASSERT_TRUE(BackUpSettingsFile(folder_.Paths()));
    EXPECT_EQ(TimeOf(Slot(2)), kBase + microseconds{1});
    EXPECT_FALSE(folder_.Exists(TemporaryPathFor(Slot(2))));
}

// ---- copying -------------------------------------------------------------------------------

TEST_F(BackupsTest, CopyIfExistsSkipsAMissingSource) {
    EXPECT_TRUE(CopyIfExists(folder_.Path("none"), folder_.Path("copy")));
    EXPECT_FALSE(folder_.Exists("copy"));
}

TEST_F(BackupsTest, CopyIfExistsOverwritesAndCarriesTheSourceTime) {
    PutFile("source", "new\r\ncontent", kBase);
    PutFile("copy", "old and longer content", kBase + hours{1});
    EXPECT_TRUE(CopyIfExists(folder_.Path("source"), folder_.Path("copy")));
    EXPECT_EQ(folder_.ReadFile("copy"), "new\r\ncontent");
    EXPECT_EQ(TimeOf("copy"), kBase);
}

TEST_F(BackupsTest, CopyIfExistsReportsASourceItCannotRead) {
    folder_.WriteFile("source/inside", "x");
    folder_.WriteFile("copy", "keep");
    EXPECT_FALSE(CopyIfExists(folder_.Path("source"), folder_.Path("copy")));
    EXPECT_EQ(folder_.ReadFile("copy"), "keep");
}

// ---- the LOG mirror ------------------------------------------------------------------------

TEST_F(BackupsTest, TheMirrorSkipsUnchangedFilesAndRefreshesTheOthers) {
    PutFile("LOG/2024.03.Marzo.htm", "march", kBase);
    PutFile("Backup/2024.03.Marzo.htm", "same time, other bytes", kBase);
    PutFile("LOG/TAREAS.LOG", "tasks, new", kBase + hours{2});
    PutFile("Backup/TAREAS.LOG", "tasks, old", kBase + hours{1});
    PutFile("LOG/TIMER.LOG", "run log", kBase + hours{3});
    folder_.WriteFile("LOG/sub/inner.htm", "not mirrored");

    MirrorLogFolder(folder_.Paths(), busy_);

    // The same time means unchanged: the copy is left alone, whatever it holds.
    EXPECT_EQ(folder_.ReadFile("Backup/2024.03.Marzo.htm"), "same time, other bytes");
    EXPECT_EQ(folder_.ReadFile("Backup/TAREAS.LOG"), "tasks, new");
    EXPECT_EQ(TimeOf("Backup/TAREAS.LOG"), kBase + hours{2});
    EXPECT_EQ(folder_.ReadFile("Backup/TIMER.LOG"), "run log");
    EXPECT_EQ(TimeOf("Backup/TIMER.LOG"), kBase + hours{3});
    EXPECT_FALSE(folder_.Exists("Backup/sub"));
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
}

TEST_F(BackupsTest, WithoutALogFolderTheMirrorOnlyMakesTheBackupFolder) {
    MirrorLogFolder(folder_.Paths(), busy_);
    EXPECT_TRUE(std::filesystem::is_directory(folder_.Path("Backup")));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path("Backup")));
}

// ---- the run log ---------------------------------------------------------------------------

TEST_F(BackupsTest, TheRunLogAppendsStampedLinesInWindows1252) {
    test::FakeClock clock;
    clock.Set(5, 3, 2024, 7, 4, 9);
    AppendRunLog(folder_.Paths(), clock, busy_, "NEW> 15/03/2024 09:30 Reuni\u00F3n");
    clock.AdvanceSeconds(61);
    AppendRunLog(folder_.Paths(), clock, busy_, "DEL> \u20AC \u65E5");
    EXPECT_EQ(folder_.ReadFile("LOG/TIMER.LOG"),
              "[05/03/2024 07:04:09] NEW> 15/03/2024 09:30 Reuni\xF3n\r\n"
              "[05/03/2024 07:05:10] DEL> \x80 ?\r\n");
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false, true, false}));
}

TEST_F(BackupsTest, ARunLogThatCannotBeWrittenIsDroppedQuietly) {
    folder_.WriteFile("LOG", "a file in the folder's place");
    test::FakeClock clock;
    AppendRunLog(folder_.Paths(), clock, busy_, "NEW> x");
    EXPECT_EQ(folder_.ReadFile("LOG"), "a file in the folder's place");
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
}

}  // namespace
}  // namespace vt
