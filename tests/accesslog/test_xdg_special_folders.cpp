#include "platform/xdg_special_folders.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace vt {
namespace {

using Environment = std::map<std::string, std::string, std::less<>>;

// The folders come from the variables the test gives, never from the real environment.
XdgSpecialFolders FoldersWith(const Environment& environment) {
    return XdgSpecialFolders([environment](std::string_view name) -> std::optional<std::string> {
        const auto found = environment.find(name);
        return found == environment.end() ? std::nullopt : std::optional<std::string>(found->second);
    });
}

struct FolderCase {
    const char* name;
    Environment environment;
    int number;
    const char* folder;
};

class XdgFolders : public ::testing::TestWithParam<FolderCase> {};

TEST_P(XdgFolders, FollowTheBaseDirectoryRules) {
    EXPECT_EQ(FoldersWith(GetParam().environment).CarpetaEspecial(GetParam().number), GetParam().folder);
}

INSTANTIATE_TEST_SUITE_P(
    Table, XdgFolders,
    ::testing::Values(
        FolderCase{"RecentFromDataHome", {{"HOME", "/h/ana"}, {"XDG_DATA_HOME", "/d/datos/"}}, 8, "/d/datos"},
        FolderCase{"RecentDefault", {{"HOME", "/h/ana/"}}, 8, "/h/ana/.local/share"},
        FolderCase{
            "RelativeDataHomeIgnored", {{"HOME", "/h/ana"}, {"XDG_DATA_HOME", "datos"}}, 8, "/h/ana/.local/share"},
        FolderCase{"EmptyDataHomeIgnored", {{"HOME", "/h/ana"}, {"XDG_DATA_HOME", ""}}, 8, "/h/ana/.local/share"},
        FolderCase{"RootHome", {{"HOME", "/"}}, 8, "/.local/share"}, FolderCase{"NoHome", {}, 8, ""},
        FolderCase{"RelativeHome", {{"HOME", "ana"}}, 8, ""},
        FolderCase{"StartupFromConfigHome", {{"HOME", "/h/ana"}, {"XDG_CONFIG_HOME", "/c"}}, 7, "/c/autostart"},
        FolderCase{"StartupDefault", {{"HOME", "/h/ana"}}, 7, "/h/ana/.config/autostart"},
        FolderCase{"StartupWithoutHome", {}, 7, ""}, FolderCase{"OtherNumbers", {{"HOME", "/h/ana"}}, 5, ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(XdgRecentList, LivesInTheRecentFolder) {
    EXPECT_EQ(FoldersWith({{"HOME", "/h/ana"}}).RecentlyUsedListPath(), "/h/ana/.local/share/recently-used.xbel");
    EXPECT_EQ(FoldersWith({}).RecentlyUsedListPath(), "");
}

struct ViewCase {
    const char* desktop;  // nullptr: the variable is unset
    const char* view;
};

class XdgRecentView : public ::testing::TestWithParam<ViewCase> {};

TEST_P(XdgRecentView, IsOfferedWhereTheFileManagerKnowsIt) {
    Environment environment{{"HOME", "/h/ana"}};
    if (GetParam().desktop != nullptr) {
        environment["XDG_CURRENT_DESKTOP"] = GetParam().desktop;
    }
    EXPECT_EQ(FoldersWith(environment).RecentFilesView(), GetParam().view);
}

INSTANTIATE_TEST_SUITE_P(Table, XdgRecentView,
                         ::testing::Values(ViewCase{"GNOME", "recent:///"}, ViewCase{"ubuntu:GNOME", "recent:///"},
                                           ViewCase{"X-Cinnamon", "recent:///"}, ViewCase{"MATE", "recent:///"},
                                           ViewCase{"KDE", ""}, ViewCase{"XFCE", ""}, ViewCase{"GNOME-Flashback", ""},
                                           ViewCase{"", ""}, ViewCase{nullptr, ""}));

}  // namespace
}  // namespace vt
