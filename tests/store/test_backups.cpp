#include "store/backups.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "fake_clock.h"
#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/settings_store.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::chrono;

// A fixed moment for file times, so no test depends on today's date.
const FileTime kBase = FileTime{sys_days{2024y / March / 15}} + hours{9};

std::string Slot(int n) {
    return "Backup/VendrakoTimer_" + std::string(n < 10 ? "00" : "0") + std::to_string(n) + ".ini";
}

void PutFile(const test::TempAppFolder& folder, const std::string& relative, const std::string& bytes, FileTime time) {
    folder.WriteFile(relative, bytes);
    ASSERT_FALSE(SetFileModifiedTime(folder.Path(relative), time));
}

class BackupsTest : public ::testing::Test {
protected:
    FileTime TimeOf(const std::string& relative) { return FileModifiedTime(folder_.Path(relative)).value(); }

    test::TempAppFolder folder_;
    test::ScriptedDialogs dialogs_;
    test::RecordingBusy busy_;
    StoreStatus status_;
};

// ---- choosing the slot ---------------------------------------------------------------------

// Each character is a slot from 001 on: a later letter is a newer copy, "." a free slot.
// Only hand-set times give two descents; the first from 001 counts, and 001 follows 025.
TEST(NextSlot, IsTheFirstFreeOrTheOldestInRotationOrder) {
    // clang-format off
    const std::vector<std::tuple<const char*, std::string, int>> cases{
        {"NoBackupYet", "", 1}, {"FirstFree", "abcdef", 7}, {"AGapComesFirst", "abcdefgh.jklmnopqrstuvwxy", 9},
        {"OldestIsFirst", "abcdefghijklmnopqrstuvwxy", 1}, {"OldestInTheMiddle", "nopqrstuvwxyabcdefghijklm", 13},
        {"OldestIsLast", "bcdefghijklmnopqrstuvwxya", 25}, {"TiesBeforeTheDescent", "zzzzzzzzzabcdefghijklmnop", 10},
        {"TwoDescentsFromTheTop", "abcdefghijfghijklmnopqrst", 1}, {"AllEqualTakesTheFirst", std::string(25, 'h'), 1}};
    // clang-format on
    for (const auto& [name, slots, expected] : cases) {
        SCOPED_TRACE(name);
        test::TempAppFolder folder;
        for (size_t i = 0; i < slots.size(); ++i) {
            if (slots[i] != '.') {
                PutFile(folder, Slot(static_cast<int>(i) + 1), "copy", kBase + seconds{slots[i]});
            }
        }
        EXPECT_EQ(NextSettingsBackupPath(folder.Paths()), folder.Path(Slot(expected)));
    }
}

// ---- saving rotates through the slots ------------------------------------------------------

// Pinned: every settings file carries the same time, as on a filesystem whose clock ticks
// slower than the saves come. Free: the kernel's own times of saves in quick succession.
TEST(Rotation, EverySaveOverwritesTheOldestCopy) {
    const auto version = [](int n) { return "FECHA=v" + std::to_string(n) + "\r\n"; };
    for (const bool pinned : {true, false}) {
        SCOPED_TRACE(pinned ? "Pinned" : "Free");
        test::TempAppFolder folder;
        test::ScriptedDialogs dialogs;
        test::RecordingBusy busy;
        for (int save = 1; save <= 60; ++save) {
            if (pinned && folder.Exists("VendrakoTimer.ini")) {
                ASSERT_FALSE(SetFileModifiedTime(folder.Path("VendrakoTimer.ini"), kBase));
            }
            Settings settings;
            settings.WorkDate = "v" + std::to_string(save);
            ASSERT_TRUE(SaveSettings(folder.Paths(), settings, busy, dialogs));
            // The first save has nothing to copy; save n copies version n - 1, through 1..25 and round.
            const std::string slot = Slot((save + 23) % 25 + 1);
            ASSERT_EQ(folder.ReadFile(slot).find(version(save - 1)) != std::string::npos, save >= 2)
                << "save " << save << " and " << slot;
        }
        EXPECT_FALSE(folder.Exists(Slot(26)));
        EXPECT_TRUE(dialogs.Shown().empty());
    }
}

TEST_F(BackupsTest, ACopyIsStampedAfterEveryOtherSlot) {
    PutFile(folder_, "VendrakoTimer.ini", "[GENERAL]\r\n", kBase + hours{1});
    PutFile(folder_, Slot(1), "older", kBase);
    ASSERT_FALSE(BackUpSettingsFile(folder_.Paths(), ReadWholeFile(folder_.Path("VendrakoTimer.ini"))));
    EXPECT_EQ(folder_.ReadFile(Slot(2)), "[GENERAL]\r\n");
    EXPECT_EQ(TimeOf(Slot(2)), kBase + hours{1});  // the settings file's own time, being the newest

    // A file older than the newest slot (restored by hand, say) is stamped just after that slot.
    PutFile(folder_, "VendrakoTimer.ini", "[GENERAL]\r\n", kBase - hours{24});
    ASSERT_FALSE(BackUpSettingsFile(folder_.Paths(), ReadWholeFile(folder_.Path("VendrakoTimer.ini"))));
    EXPECT_EQ(TimeOf(Slot(3)), kBase + hours{1} + microseconds{1});
}

TEST_F(BackupsTest, CopyIfExistsSkipsAMissingSourceAndReportsOneItCannotRead) {
    folder_.WriteFile("copy", "new\r\ncontent");
    EXPECT_TRUE(CopyIfExists(folder_.Path("none"), folder_.Path("none copy")));
    EXPECT_FALSE(folder_.Exists("none copy"));

    folder_.WriteFile("folder/inside", "x");
    EXPECT_FALSE(CopyIfExists(folder_.Path("folder"), folder_.Path("copy")));
    EXPECT_EQ(folder_.ReadFile("copy"), "new\r\ncontent");
}

// ---- the LOG mirror ------------------------------------------------------------------------

TEST_F(BackupsTest, TheMirrorSkipsUnchangedFilesAndRefreshesTheOthers) {
    PutFile(folder_, "LOG/2024.03.Marzo.htm", "march", kBase);
    PutFile(folder_, "Backup/2024.03.Marzo.htm", "same time, other bytes", kBase);
    PutFile(folder_, "LOG/TAREAS.LOG", "tasks, new", kBase + hours{2});
    PutFile(folder_, "Backup/TAREAS.LOG", "tasks, old", kBase + hours{1});
    PutFile(folder_, "LOG/TIMER.LOG", "run log", kBase + hours{3});
    folder_.WriteFile("LOG/sub/inner.htm", "not mirrored");

    MirrorLogFolder(folder_.Paths(), busy_);

    // The same time means unchanged: the copy is left alone, whatever it holds.
    EXPECT_EQ(folder_.ReadFile("Backup/2024.03.Marzo.htm"), "same time, other bytes");
    EXPECT_EQ(folder_.ReadFile("Backup/TAREAS.LOG"), "tasks, new");
    EXPECT_EQ(TimeOf("Backup/TAREAS.LOG"), kBase + hours{2});
    EXPECT_EQ(folder_.ReadFile("Backup/TIMER.LOG"), "run log");
    EXPECT_FALSE(folder_.Exists("Backup/sub"));
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
}

// ---- the run log ---------------------------------------------------------------------------

TEST_F(BackupsTest, TheRunLogAppendsStampedLinesInWindows1252) {
    test::FakeClock clock(MakeDateTime(MakeDate(5, 3, 2024), 7, 4, 9));
    AppendRunLog(folder_.Paths(), clock, busy_, dialogs_, status_, "NEW> 15/03/2024 09:30 Reuni\u00F3n");
    clock.AdvanceSeconds(61);
    AppendRunLog(folder_.Paths(), clock, busy_, dialogs_, status_, "DEL> \u20AC \u65E5");
    EXPECT_EQ(folder_.ReadFile("LOG/TIMER.LOG"),
              "[05/03/2024 07:04:09] NEW> 15/03/2024 09:30 Reuni\xF3n\r\n"
              "[05/03/2024 07:05:10] DEL> \x80 ?\r\n");
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false, true, false}));
    EXPECT_TRUE(dialogs_.Shown().empty());
}

// A line that cannot be written is dropped and the cause told, once per run: not at every line.
TEST(RunLogThatFails, IsToldOnceWithItsCause) {
    enum class Shape { FileInItsPlace, ReadOnlyFolder, DiskFull };
    for (const auto& [shape, cause] :
         std::vector<std::pair<Shape, std::string>>{{Shape::FileInItsPlace, "no es una carpeta"},
                                                    {Shape::ReadOnlyFolder, "permiso denegado"},
                                                    {Shape::DiskFull, "disco lleno"}}) {
        SCOPED_TRACE(cause);
        test::TempAppFolder folder;
        test::ScriptedDialogs dialogs;
        test::RecordingBusy busy;
        StoreStatus status;
        if (shape == Shape::FileInItsPlace) {
            folder.WriteFile("LOG", "a file in the folder's place");
        } else {
            std::filesystem::create_directory(folder.Path("LOG"));
        }
        if (shape == Shape::DiskFull) {  // every write to it fails as on a full disk
            std::filesystem::create_symlink("/dev/full", folder.Path("LOG/TIMER.LOG"));
        } else if (shape == Shape::ReadOnlyFolder) {
            std::filesystem::permissions(folder.Path("LOG"), std::filesystem::perms::owner_write,
                                         std::filesystem::perm_options::remove);
        }
        ASSERT_TRUE(test::WithPermissionsEnforced([&] {
            for (const char* line : {"NEW> x", "DEL> x"}) {
                AppendRunLog(folder.Paths(), test::FakeClock{}, busy, dialogs, status, line);
            }
        }));
        EXPECT_EQ(dialogs.Texts(),
                  std::vector<std::string>{"No se puede escribir en " + folder.Path("LOG/TIMER.LOG") + " (" + cause +
                                           ").\r\n\r\nLos cambios de la agenda se siguen "
                                           "guardando, pero no quedan anotados ah\u00ED."});
        EXPECT_EQ(busy.calls, (std::vector<bool>{true, false, true, false}));
        if (shape == Shape::FileInItsPlace) {
            EXPECT_EQ(folder.ReadFile("LOG"), "a file in the folder's place");
        }
    }
}

}  // namespace
}  // namespace vt
