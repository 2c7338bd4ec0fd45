#include "platform/posix_instance_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace vt {

FolderInstanceLock::FolderInstanceLock(std::string folder) : folder_(std::move(folder)) {}

FolderInstanceLock::~FolderInstanceLock() {
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

bool FolderInstanceLock::TryAcquire() {
    if (fd_ >= 0) {
        return true;
    }
    // O_CLOEXEC: a program started from here (a browser for a help page, a file manager)
    // must not inherit the descriptor and keep the folder locked after we are gone.
    const int fd = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    int result = 0;
    do {
        result = ::flock(fd, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        ::close(fd);
        return false;
    }
    fd_ = fd;
    return true;
}

}  // namespace vt
