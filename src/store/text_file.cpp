#include "store/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace vt {

namespace {

std::error_code LastError() {
    return {errno, std::generic_category()};
}

FileTime ToFileTime(const timespec& ts) {
    return FileTime{std::chrono::seconds{ts.tv_sec} + std::chrono::nanoseconds{ts.tv_nsec}};
}

timespec ToTimespec(FileTime t) {
    const auto since_epoch = t.time_since_epoch();
    auto secs = std::chrono::floor<std::chrono::seconds>(since_epoch);
    timespec ts{};
    ts.tv_sec = static_cast<time_t>(secs.count());
    ts.tv_nsec = static_cast<long>((since_epoch - secs).count());
    return ts;
}

// Closes a descriptor when it goes out of scope, so every early return is covered.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }
    // Closing reports errors (a delayed write error can surface here), so it is checked.
    std::error_code Close() {
        const int fd = fd_;
        fd_ = -1;
        return ::close(fd) == 0 ? std::error_code{} : LastError();
    }

private:
    int fd_;
};

int OpenRetrying(const char* path, int flags, mode_t mode = 0) {
    int fd;
    do {
        fd = ::open(path, flags, mode);
    } while (fd < 0 && errno == EINTR);
    return fd;
}

std::error_code WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            return LastError();
        }
        bytes.remove_prefix(static_cast<size_t>(n));
    }
    return {};
}

}  // namespace

FileContents ReadWholeFile(const std::string& path) {
    FileContents result;
    // O_NONBLOCK keeps a FIFO put in the file's place from hanging the program; it changes
    // nothing for a regular file.
    Descriptor fd(OpenRetrying(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (fd.get() < 0) {
        result.error = LastError();
        result.outcome = errno == ENOENT ? ReadOutcome::Missing : ReadOutcome::Unreadable;
        return result;
    }
    struct stat st {};
    if (::fstat(fd.get(), &st) != 0) {
        result.error = LastError();
        result.outcome = ReadOutcome::Unreadable;
        return result;
    }
    if (!S_ISREG(st.st_mode)) {
        // Opening a folder for reading succeeds on Linux; reading it does not.
        result.error =
            std::make_error_code(S_ISDIR(st.st_mode) ? std::errc::is_a_directory : std::errc::invalid_argument);
        result.outcome = ReadOutcome::Unreadable;
        return result;
    }
    result.modified = ToFileTime(st.st_mtim);
    result.bytes.resize(static_cast<size_t>(st.st_size));
    size_t filled = 0;
    for (;;) {
        if (filled == result.bytes.size()) {
            // The file may have grown since fstat; read on until end of file.
            result.bytes.resize(filled + 4096);
        }
        const ssize_t n = ::read(fd.get(), result.bytes.data() + filled, result.bytes.size() - filled);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            result.error = LastError();
            result.outcome = ReadOutcome::Unreadable;
            result.bytes.clear();
            return result;
        }
        if (n == 0) {
            break;
        }
        filled += static_cast<size_t>(n);
    }
    result.bytes.resize(filled);
    result.outcome = ReadOutcome::Read;
    return result;
}

std::string TemporaryPathFor(const std::string& path) {
    return path + ".tmp";
}

std::error_code WriteFileAtomically(const std::string& path, std::string_view bytes, std::optional<FileTime> modified,
                                    const AtomicWriteSteps& steps) {
    const std::string temporary = TemporaryPathFor(path);
    // O_NOFOLLOW: a link planted at the temporary's name must not redirect the write elsewhere.
    Descriptor fd(OpenRetrying(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (fd.get() < 0) {
        const std::error_code error = LastError();
        if (steps.before_rename) {
            steps.before_rename();
        }
        return error;
    }
    std::error_code error = WriteAll(fd.get(), bytes);
    if (!error && modified) {
        const timespec times[2] = {{0, UTIME_OMIT}, ToTimespec(*modified)};
        if (::futimens(fd.get(), times) != 0) {
            error = LastError();
        }
    }
    if (!error && steps.before_flush) {
        steps.before_flush();
    }
    // Without the flush, a power cut soon after the rename can leave the new name pointing at
    // an empty file on some filesystems: the rename reaches the disk before the data.
    if (!error && ::fsync(fd.get()) != 0) {
        error = LastError();
    }
    if (const std::error_code closed = fd.Close(); !error && closed) {
        error = closed;
    }
    if (steps.before_rename) {
        steps.before_rename();
    }
    if (!error && ::rename(temporary.c_str(), path.c_str()) != 0) {
        error = LastError();
    }
    if (error) {
        ::unlink(temporary.c_str());
    }
    return error;
}

std::error_code AppendToFile(const std::string& path, std::string_view bytes) {
    Descriptor fd(OpenRetrying(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
    if (fd.get() < 0) {
        return LastError();
    }
    ssize_t n;
    do {
        n = ::write(fd.get(), bytes.data(), bytes.size());
    } while (n < 0 && errno == EINTR);
    if (n < 0) {
        return LastError();
    }
    if (static_cast<size_t>(n) != bytes.size()) {
        // Only a full disk or a size limit cuts a write to a regular file short. A second write
        // could land after another process's line, so the short line is reported, not finished.
        return std::make_error_code(std::errc::no_space_on_device);
    }
    return fd.Close();
}

std::optional<FileTime> FileModifiedTime(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) {
        return std::nullopt;
    }
    return ToFileTime(st.st_mtim);
}

std::error_code SetFileModifiedTime(const std::string& path, FileTime modified) {
    const timespec times[2] = {{0, UTIME_OMIT}, ToTimespec(modified)};
    return ::utimensat(AT_FDCWD, path.c_str(), times, 0) == 0 ? std::error_code{} : LastError();
}

bool PathExists(const std::string& path) {
    struct stat st {};
    return ::lstat(path.c_str(), &st) == 0;
}

bool IsRegularFile(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool EnsureFolder(const std::string& path, std::error_code& error) {
    error.clear();
    if (::mkdir(path.c_str(), 0777) == 0) {
        return true;
    }
    if (errno != EEXIST) {
        error = LastError();
        return false;
    }
    struct stat st {};
    if (::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode)) {
        return true;
    }
    error = std::make_error_code(std::errc::not_a_directory);
    return false;
}

bool EnsureFolder(const std::string& path) {
    std::error_code ignored;
    return EnsureFolder(path, ignored);
}

}  // namespace vt
