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

// ---- the LOG mirror ------------------------------------------------------------------------

// ---- the run log ---------------------------------------------------------------------------

}  // namespace
}  // namespace vt
