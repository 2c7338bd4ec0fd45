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

}  // namespace
}  // namespace vt
