#include "platform/xdg_shell_folders.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace vt {
namespace {

using Environment = std::map<std::string, std::string, std::less<>>;

// The folders come from the variables the test gives, never from the real environment.
XdgShellFolders FoldersWith(const Environment& environment) {
    return XdgShellFolders([environment](std::string_view name) -> std::optional<std::string> {
        const auto found = environment.find(name);
        return found == environment.end() ? std::nullopt : std::optional<std::string>(found->second);
    });
}

TEST(XdgShellFolders, FollowTheBaseDirectoryRules) {
    const Environment home{{"HOME", "/h/ana/"}};
    EXPECT_EQ(FoldersWith({{"HOME", "/h/ana"}, {"XDG_DATA_HOME", "/d/datos/"}}).CarpetaEspecial(8), "/d/datos");
    EXPECT_EQ(FoldersWith({{"HOME", "/h/ana"}, {"XDG_DATA_HOME", "datos"}}).CarpetaEspecial(8), "/h/ana/.local/share")
        << "a relative folder is ignored";
    EXPECT_EQ(FoldersWith({}).CarpetaEspecial(8), "");
    EXPECT_EQ(FoldersWith(home).CarpetaEspecial(7), "/h/ana/.config/autostart");
    EXPECT_EQ(FoldersWith(home).CarpetaEspecial(5), "");
    EXPECT_EQ(FoldersWith(home).RecentlyUsedListPath(), "/h/ana/.local/share/recently-used.xbel");
    EXPECT_EQ(FoldersWith({{"HOME", "/h/ana"}, {"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"}}).RecentFilesView(),
              "recent:///");
    EXPECT_EQ(FoldersWith({{"HOME", "/h/ana"}, {"XDG_CURRENT_DESKTOP", "KDE"}}).RecentFilesView(), "");
}

}  // namespace
}  // namespace vt
