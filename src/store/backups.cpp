#include "store/backups.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/busy.h"
#include "store/cp1252.h"
#include "store/dates.h"
#include "store/error_text.h"
#include "store/text_file.h"

namespace vt {

// How the rotation finds the oldest copy. A new copy goes into the first missing slot; once all
// 25 exist, into the first slot (from 001, circularly: 001 follows 025) whose file time is
// earlier than its predecessor's, which is where the rotation stopped last time.
//
// File times come from a coarse kernel clock, so two saves in quick succession can carry equal
// times, and then the "earlier than" above finds nothing or the wrong slot. So every copy is
// stamped strictly later than every other slot: it keeps the settings file's own time (when
// that version was saved) unless that is not later than the newest other slot, and then it
// gets that slot's time plus one microsecond. As long as only the program writes the slots,
// their times rise along the rotation and the rule always lands on the oldest. Should the times
// have been set by hand so that no slot is earlier than its predecessor, slot 001 is taken.

namespace {

constexpr int kSlotCount = 25;

using SlotTimes = std::array<std::optional<FileTime>, kSlotCount + 1>;  // slot 0 unused

std::string SlotPath(const AppPaths& paths, int slot) {
    char number[16];
    std::snprintf(number, sizeof number, "%03d", slot);
    return paths.BackupFolder() + "/" + paths.ExeBaseName + "_" + number + ".ini";
}

SlotTimes ReadSlotTimes(const AppPaths& paths) {
    SlotTimes times;
    for (int slot = 1; slot <= kSlotCount; ++slot) {
        times[static_cast<size_t>(slot)] = FileModifiedTime(SlotPath(paths, slot));
    }
    return times;
}

int ChooseSlot(const SlotTimes& times) {
    for (int slot = 1; slot <= kSlotCount; ++slot) {
        if (!times[static_cast<size_t>(slot)]) {
            return slot;
        }
    }
    for (int slot = 1; slot <= kSlotCount; ++slot) {
        const int before = slot == 1 ? kSlotCount : slot - 1;
        if (*times[static_cast<size_t>(slot)] < *times[static_cast<size_t>(before)]) {
            return slot;
        }
    }
    return 1;
}

std::optional<FileTime> NewestOtherThan(const SlotTimes& times, int chosen) {
    std::optional<FileTime> newest;
    for (int slot = 1; slot <= kSlotCount; ++slot) {
        const auto& time = times[static_cast<size_t>(slot)];
        if (slot != chosen && time && (!newest || *time > *newest)) {
            newest = time;
        }
    }
    return newest;
}

}  // namespace

std::string NextSettingsBackupPath(const AppPaths& paths) {
    return SlotPath(paths, ChooseSlot(ReadSlotTimes(paths)));
}

std::error_code BackUpSettingsFile(const AppPaths& paths, const FileContents& settings) {
    if (std::error_code error; !EnsureFolder(paths.BackupFolder(), error)) {
        return error;
    }
    const SlotTimes times = ReadSlotTimes(paths);
    const int slot = ChooseSlot(times);
    const std::string path = SlotPath(paths, slot);
    const std::optional<FileTime> newest = NewestOtherThan(times, slot);

    FileTime stamp = settings.modified;
    if (newest && stamp <= *newest) {
        stamp = *newest + std::chrono::microseconds{1};
    }
    if (const std::error_code error = WriteFileAtomically(path, settings.bytes, stamp)) {
        return error;
    }
    // A filesystem with coarse times (FAT keeps two seconds, exFAT ten milliseconds) rounds the
    // microsecond away; step further until the copy really is the newest.
    for (const auto step :
         {std::chrono::nanoseconds{std::chrono::milliseconds{10}}, std::chrono::nanoseconds{std::chrono::seconds{2}}}) {
        const auto written = FileModifiedTime(path);
        if (!newest || !written || *written > *newest) {
            break;
        }
        (void)SetFileModifiedTime(path, *newest + step);
    }
    return {};
}

bool CopyIfExists(const std::string& source, const std::string& destination) {
    const FileContents contents = ReadWholeFile(source);
    if (contents.outcome == ReadOutcome::Missing) {
        return true;
    }
    if (contents.outcome == ReadOutcome::Unreadable) {
        return false;
    }
    return !WriteFileAtomically(destination, contents.bytes, contents.modified);
}

void MirrorLogFolder(const AppPaths& paths, Busy& busy) {
    namespace fs = std::filesystem;
    BusyScope scope(busy);
    if (!EnsureFolder(paths.BackupFolder())) {
        return;
    }
    std::error_code ec;
    for (auto it = fs::directory_iterator(paths.LogFolder(), ec); !ec && it != fs::directory_iterator();
         it.increment(ec)) {
        std::error_code type_error;
        if (!it->is_regular_file(type_error)) {
            continue;
        }
        const std::string source = it->path().string();
        const std::string copy = paths.BackupFolder() + "/" + it->path().filename().string();
        const auto source_time = FileModifiedTime(source);
        const auto copy_time = FileModifiedTime(copy);
        if (source_time && copy_time && *source_time == *copy_time) {
            continue;
        }
        // A file that cannot be copied now is tried again at the next mirror; nothing to tell.
        (void)CopyIfExists(source, copy);
    }
}

void AppendRunLog(const AppPaths& paths, const Clock& clock, Busy& busy, Dialogs& dialogs, StoreStatus& status,
                  std::string_view text) {
    BusyScope scope(busy);
    std::error_code error;
    if (EnsureFolder(paths.LogFolder(), error)) {
        std::string line = "[";
        line += FormatDateTime(clock.Now());
        line += "] ";
        line += text;
        line += "\r\n";
        error = AppendToFile(paths.RunLogFile(), Utf8ToCp1252(line));
    }
    // The run log is a record, not a control path: a line that cannot be written is dropped, and
    // the user hears of it once per run rather than at every change of the agenda.
    if (error && !status.RunLogFailureTold) {
        status.RunLogFailureTold = true;
        dialogs.Warn("No se puede escribir en " + paths.RunLogFile() + " (" + ErrorText(error) +
                     ").\r\n\r\nLos cambios de la agenda se siguen guardando, pero no quedan anotados ah\u00ED.");
    }
}

}  // namespace vt
