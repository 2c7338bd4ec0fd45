#pragma once
#include <string>

#include "platform/instance_lock.h"

namespace vt {

// One running copy per data folder: the folder itself is locked with flock(), so nothing is
// written to it and the kernel lets go of the lock when the process ends, however it ends.
class FolderInstanceLock : public InstanceLock {
public:
    explicit FolderInstanceLock(std::string folder);
    ~FolderInstanceLock() override;
    FolderInstanceLock(const FolderInstanceLock&) = delete;
    FolderInstanceLock& operator=(const FolderInstanceLock&) = delete;

    // False too when the folder cannot be opened; the caller cannot tell the two apart, and
    // in both cases the program must not go on working on that folder.
    bool TryAcquire() override;

private:
    std::string folder_;
    int fd_ = -1;
};

}  // namespace vt
