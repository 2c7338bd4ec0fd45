#include "accesslog/folder_recent_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "accesslog_fakes.h"
#include "lnk_builder.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::chrono;

// 15/03/2024 08:00:00 UTC, 09:00:00 in Madrid.
const sys_seconds kMorning = sys_days{2024y / March / 15} + hours{8};

class FolderSource : public ::testing::Test {
protected:
    std::string Recent() const { return folder_.Path("Recent"); }
    void Put(const std::string& name, const std::string& bytes, sys_seconds time) {
        folder_.WriteFile("Recent/" + name, bytes);
        ASSERT_FALSE(SetFileModifiedTime(Recent() + "/" + name, FileTime{time}));
    }
    // The link's own time, not its target's.
    void Link(const std::string& name, const std::string& target, sys_seconds time) {
        std::filesystem::create_directories(Recent());
        std::filesystem::create_symlink(target, Recent() + "/" + name);
        const timespec times[2] = {{0, UTIME_OMIT}, {static_cast<time_t>(time.time_since_epoch().count()), 0}};
        ASSERT_EQ(::utimensat(AT_FDCWD, (Recent() + "/" + name).c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
    }

    test::ScopedTimeZone zone_{test::kMadrid};
    test::TempAppFolder folder_;
};

TEST_F(FolderSource, ListsShortcutsLinksAndPlainFilesWithTheirOwnTimes) {
    Put("informe.docx.LNK", test::BuildLnk({}), kMorning);
    Put("roto.lnk", "no es un acceso directo", kMorning + seconds{1});
    Put("notas.txt", "x", kMorning + seconds{2});
    Put("sub/y.txt", "y", kMorning - days{300});
    Link("enlace", "/datos/x.pdf", kMorning + seconds{3});
    Link("relativo", "sub/y.txt", kMorning + seconds{4});

    RecentListing listing = FolderRecentFiles(Recent()).List();
    ASSERT_EQ(listing.outcome, RecentListingOutcome::Listed);
    std::sort(listing.files.begin(), listing.files.end(),
              [](const RecentFile& a, const RecentFile& b) { return a.modified < b.modified; });
    // name, target, link path, time, vanished
    std::vector<std::tuple<std::string, std::string, std::string, DateTime, bool>> got;
    for (const RecentFile& file : listing.files) {
        got.emplace_back(file.name, file.target, file.link_path, file.modified, file.vanished);
    }
    const auto at = [](int second) { return MakeDateTime(MakeDate(15, 3, 2024), 9, 0, second); };
    const auto in = [this](const char* name) { return Recent() + "/" + name; };
    // clang-format off
    EXPECT_EQ(got, (decltype(got){  // the subfolder is no recent file
        {"informe.docx.LNK", "C:\\Users\\Ana\\informe.docx", in("informe.docx.LNK"), at(0), false},
        {"roto.lnk", "", in("roto.lnk"), at(1), false},
        {"notas.txt", "", in("notas.txt"), at(2), false},
        {"enlace", "/datos/x.pdf", in("enlace"), at(3), false},
        {"relativo", Recent() + "/sub/y.txt", in("relativo"), at(4), false}}));
    // clang-format on
}

}  // namespace
}  // namespace vt
