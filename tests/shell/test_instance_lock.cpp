#include "platform/posix_instance_lock.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>

#include "temp_app_folder.h"

namespace vt {
namespace {

namespace fs = std::filesystem;

std::set<std::string> Listing(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        names.insert(entry.path().string());
    }
    return names;
}

class FolderInstanceLockTest : public ::testing::Test {
protected:
    test::TempAppFolder folder_;
};

TEST_F(FolderInstanceLockTest, SecondLockOnTheSameFolderFailsUntilTheFirstIsGone) {
    auto first = std::make_unique<FolderInstanceLock>(folder_.Folder());
    ASSERT_TRUE(first->TryAcquire());

    FolderInstanceLock second(folder_.Folder());
    EXPECT_FALSE(second.TryAcquire());
    EXPECT_FALSE(second.TryAcquire()) << "a refused lock must not count as held";

    first.reset();
    EXPECT_TRUE(second.TryAcquire());
}

TEST_F(FolderInstanceLockTest, AcquiringTwiceFromTheSameLockKeepsIt) {
    FolderInstanceLock lock(folder_.Folder());
    ASSERT_TRUE(lock.TryAcquire());
    EXPECT_TRUE(lock.TryAcquire());
    FolderInstanceLock other(folder_.Folder());
    EXPECT_FALSE(other.TryAcquire());
}

TEST_F(FolderInstanceLockTest, DifferentFoldersDoNotConflict) {
    test::TempAppFolder other_folder;
    FolderInstanceLock first(folder_.Folder());
    FolderInstanceLock second(other_folder.Folder());
    EXPECT_TRUE(first.TryAcquire());
    EXPECT_TRUE(second.TryAcquire());
}

TEST_F(FolderInstanceLockTest, MissingFolderFailsWithoutCreatingIt) {
    const std::string missing = folder_.Path("no-such-folder/");
    FolderInstanceLock lock(missing);
    EXPECT_FALSE(lock.TryAcquire());
    EXPECT_FALSE(fs::exists(missing));
}

TEST_F(FolderInstanceLockTest, AFileInsteadOfAFolderFails) {
    folder_.WriteFile("plain.txt", "x");
    FolderInstanceLock lock(folder_.Path("plain.txt"));
    EXPECT_FALSE(lock.TryAcquire());
}

TEST_F(FolderInstanceLockTest, LockingLeavesTheFolderUntouched) {
    folder_.WriteFile("VendrakoTimer.ini", "[x]\r\n");
    const auto before = Listing(folder_.Folder());
    const auto modified = fs::last_write_time(folder_.Folder());
    {
        FolderInstanceLock lock(folder_.Folder());
        ASSERT_TRUE(lock.TryAcquire());
        EXPECT_EQ(Listing(folder_.Folder()), before);
    }
    EXPECT_EQ(Listing(folder_.Folder()), before);
    EXPECT_EQ(fs::last_write_time(folder_.Folder()), modified);
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
