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
