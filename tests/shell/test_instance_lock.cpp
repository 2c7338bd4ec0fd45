#include "platform/posix_instance_lock.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "temp_app_folder.h"

namespace vt {
namespace {

namespace fs = std::filesystem;

class FolderInstanceLockTest : public ::testing::Test {
protected:
    test::TempAppFolder folder_;
};

TEST_F(FolderInstanceLockTest, ASecondLockOnTheSameFolderFailsUntilTheFirstIsGone) {
    auto first = std::make_unique<FolderInstanceLock>(folder_.Folder());
    ASSERT_TRUE(first->TryAcquire());
    EXPECT_TRUE(first->TryAcquire()) << "acquiring again keeps the lock";
    FolderInstanceLock second(folder_.Folder());
    EXPECT_FALSE(second.TryAcquire());
    EXPECT_FALSE(second.TryAcquire()) << "a refused lock must not count as held";
    test::TempAppFolder other_folder;
    EXPECT_TRUE(FolderInstanceLock(other_folder.Folder()).TryAcquire()) << "other folders are free";
    first.reset();
    EXPECT_TRUE(second.TryAcquire());
}

// The lock leaves no file behind it: the folder, whose time changes with any entry made or
// removed in it, keeps its time; and a missing folder is not made.
TEST_F(FolderInstanceLockTest, LockingTouchesNothingAndAMissingFolderOrAFileFails) {
    folder_.WriteFile("VendrakoTimer.ini", "[x]\r\n");
    const auto modified = fs::last_write_time(folder_.Folder());
    {
        FolderInstanceLock lock(folder_.Folder());
        ASSERT_TRUE(lock.TryAcquire());
        EXPECT_EQ(fs::last_write_time(folder_.Folder()), modified);
    }
    EXPECT_EQ(fs::last_write_time(folder_.Folder()), modified);
    EXPECT_FALSE(FolderInstanceLock(folder_.Path("no-such-folder/")).TryAcquire());
    EXPECT_FALSE(fs::exists(folder_.Path("no-such-folder")));
    EXPECT_FALSE(FolderInstanceLock(folder_.Path("VendrakoTimer.ini")).TryAcquire());
}

// A crashed or killed copy of the program must not keep the folder locked: the kernel
// drops the lock with the process, without any destructor running.
TEST_F(FolderInstanceLockTest, LockHeldByAKilledProcessIsReleased) {
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::close(ready[0]);
        FolderInstanceLock lock(folder_.Folder());
        const char held = lock.TryAcquire() ? 'y' : 'n';
        if (::write(ready[1], &held, 1) != 1) {
            ::_exit(2);
        }
        ::pause();
        ::_exit(0);
    }
    ::close(ready[1]);
    char held = 0;
    ASSERT_EQ(::read(ready[0], &held, 1), 1);
    ::close(ready[0]);
    ASSERT_EQ(held, 'y');

    FolderInstanceLock lock(folder_.Folder());
    EXPECT_FALSE(lock.TryAcquire());
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(lock.TryAcquire());
}

}  // namespace
}  // namespace vt
