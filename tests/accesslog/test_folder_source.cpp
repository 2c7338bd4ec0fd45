#include "accesslog/folder_recent_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>

#include "accesslog_fakes.h"
#include "lnk_builder.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::chrono;

// A shortcut gives its target, a symbolic link its own (not its target's) time and target, a plain
// file no target; every file its modification time in local time.
TEST(FolderSource, ListsShortcutsLinksAndPlainFiles) {
    test::ScopedTimeZone zone(test::kMadrid);
    test::TempAppFolder folder;
    const std::string recent = folder.Path("Recent");
    const sys_seconds morning = sys_days{2024y / March / 15} + hours{8};  // 09:00 in Madrid
    folder.WriteFile("Recent/informe.docx.lnk", test::BuildLnk({}));
    ASSERT_FALSE(SetFileModifiedTime(recent + "/informe.docx.lnk", FileTime{morning}));
    folder.WriteFile("Recent/notas.txt", "x");
    ASSERT_FALSE(SetFileModifiedTime(recent + "/notas.txt", FileTime{morning + seconds{1}}));
    std::filesystem::create_symlink("/datos/x.pdf", recent + "/enlace");
    const timespec times[2] = {{0, UTIME_OMIT}, {static_cast<time_t>(morning.time_since_epoch().count()) + 2, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, (recent + "/enlace").c_str(), times, AT_SYMLINK_NOFOLLOW), 0);

    RecentListing listing = FolderRecentFiles(recent).List();
    ASSERT_EQ(listing.outcome, RecentListingOutcome::Listed);
    std::sort(listing.files.begin(), listing.files.end(),
              [](const RecentFile& a, const RecentFile& b) { return a.modified < b.modified; });
    const std::array<std::array<std::string, 2>, 3> expected{
        {{"informe.docx.lnk", "C:\\Users\\Ana\\informe.docx"}, {"notas.txt", ""}, {"enlace", "/datos/x.pdf"}}};
    ASSERT_EQ(listing.files.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const RecentFile& file = listing.files[i];
        EXPECT_EQ(file.name, expected[i][0]);
        EXPECT_EQ(file.target, expected[i][1]) << file.name;
        EXPECT_EQ(file.link_path, recent + "/" + expected[i][0]);
        EXPECT_EQ(file.modified, MakeDateTime(MakeDate(15, 3, 2024), 9, 0, static_cast<int>(i))) << file.name;
    }
}

}  // namespace
}  // namespace vt
