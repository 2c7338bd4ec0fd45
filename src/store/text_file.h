#pragma once
// The few file operations the data files need, on POSIX calls where the exact behaviour matters:
// a save must never leave a half-written file behind, and a log line must never be torn.

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace vt {

// A file's last-modified time as the filesystem keeps it (nanoseconds on Linux).
using FileTime = std::chrono::sys_time<std::chrono::nanoseconds>;

enum class ReadOutcome {
    Read,        // bytes hold the whole file
    Missing,     // nothing at that path
    Unreadable,  // something is there but cannot be read as a file (a folder, no permission, I/O error)
};

struct FileContents {
    ReadOutcome outcome = ReadOutcome::Missing;
    std::string bytes;
    FileTime modified{};
    std::error_code error;
};

// Reads a whole regular file. "Missing" is kept apart from "cannot read" because a missing
// settings file means defaults while an unreadable one must stop the program untouched.
FileContents ReadWholeFile(const std::string& path);

// The temporary that WriteFileAtomically writes beside path. Its name is fixed, not random, so a
// temporary left by a crash is simply reused by the next write instead of piling up.
std::string TemporaryPathFor(const std::string& path);

// Replaces path with bytes: writes the temporary, flushes it to disk, gives it the file time
// when one is asked for, and renames it over path. The rename is the one step that changes
// path, so path holds either the old or the whole new content, never a mix. On any failure the
// temporary is removed and the error returned; path is then untouched. The rename also replaces
// a read-only file, as the program's "forced delete" of the old file always did.
struct AtomicWriteSteps {
    // Runs once the bytes are written, just before the wait for the disk: work started here
    // overlaps that wait rather than the writing.
    std::function<void()> before_flush;
    // Runs once the new content is on disk and before it takes the name (also when the write
    // failed): a step that must be finished before path changes.
    std::function<void()> before_rename;
};
std::error_code WriteFileAtomically(const std::string& path, std::string_view bytes,
                                    std::optional<FileTime> modified = std::nullopt,
                                    const AtomicWriteSteps& steps = {});

// Appends bytes with a single write() on an O_APPEND descriptor (the file is created when
// missing), so a process killed at any moment leaves either the whole line or none of it.
std::error_code AppendToFile(const std::string& path, std::string_view bytes);

// The last-modified time of whatever is at path, or nothing when there is nothing.
std::optional<FileTime> FileModifiedTime(const std::string& path);
std::error_code SetFileModifiedTime(const std::string& path, FileTime modified);

bool PathExists(const std::string& path);
bool IsRegularFile(const std::string& path);
// Creates the folder when it is missing; true when a folder is there afterwards. Otherwise error
// says why (a file in its place gives "not a directory").
bool EnsureFolder(const std::string& path);
bool EnsureFolder(const std::string& path, std::error_code& error);

}  // namespace vt
