#include "platform/xdg_shell_folders.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <tuple>
#include <vector>

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
    // environment, folder number, folder
    for (const auto& [environment, number, folder] : std::vector<std::tuple<Environment, int, const char*>>{
             {{{"HOME", "/h/ana"}, {"XDG_DATA_HOME", "/d/datos/"}}, 8, "/d/datos"},
             {{{"HOME", "/h/ana/"}}, 8, "/h/ana/.local/share"},
             {{{"HOME", "/h/ana"}, {"XDG_DATA_HOME", "datos"}}, 8, "/h/ana/.local/share"},  // relative: ignored
             {{{"HOME", "/h/ana"}, {"XDG_DATA_HOME", ""}}, 8, "/h/ana/.local/share"},
             {{{"HOME", "/"}}, 8, "/.local/share"},
             {{}, 8, ""},
             {{{"HOME", "ana"}}, 8, ""},
             {{{"HOME", "/h/ana"}, {"XDG_CONFIG_HOME", "/c"}}, 7, "/c/autostart"},
             {{{"HOME", "/h/ana"}}, 7, "/h/ana/.config/autostart"},
             {{}, 7, ""},
             {{{"HOME", "/h/ana"}}, 5, ""}}) {
        EXPECT_EQ(FoldersWith(environment).CarpetaEspecial(number), folder)
            << number << (environment.empty() ? " without HOME" : " HOME=" + environment.begin()->second);
    }
    EXPECT_EQ(FoldersWith({{"HOME", "/h/ana"}}).RecentlyUsedListPath(), "/h/ana/.local/share/recently-used.xbel");
    EXPECT_EQ(FoldersWith({}).RecentlyUsedListPath(), "");
}

// The desktop's own view of the recent files is offered where its file manager knows it.
TEST(XdgShellFolders, RecentFilesViewFollowsTheDesktop) {
    for (const auto& [desktop, view] : std::vector<std::pair<const char*, const char*>>{{"GNOME", "recent:///"},
                                                                                        {"ubuntu:GNOME", "recent:///"},
                                                                                        {"X-Cinnamon", "recent:///"},
                                                                                        {"MATE", "recent:///"},
                                                                                        {"KDE", "recentlyused:/files"},
                                                                                        {"XFCE", "recent:///"},
                                                                                        {"GNOME-Flashback", ""},
                                                                                        {"", ""},
                                                                                        {nullptr, ""}}) {
        Environment environment{{"HOME", "/h/ana"}};
        if (desktop != nullptr) {
            environment["XDG_CURRENT_DESKTOP"] = desktop;
        }
        EXPECT_EQ(FoldersWith(environment).RecentFilesView(), view) << (desktop ? desktop : "(unset)");
    }
}

}  // namespace
}  // namespace vt
