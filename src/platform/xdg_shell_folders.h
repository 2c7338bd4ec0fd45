#pragma once
// The special folders on a freedesktop desktop (Linux and the BSDs), from the XDG base
// directory variables. This is the one place that reads the environment for them; the lookup is
// handed in so that tests give their own variables instead of the real home folder's.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/shell_folders.h"

namespace vt {

using EnvironmentLookup = std::function<std::optional<std::string>(std::string_view name)>;

// The process's environment (getenv).
std::optional<std::string> ProcessEnvironment(std::string_view name);

class XdgShellFolders : public ShellFolders {
public:
    explicit XdgShellFolders(EnvironmentLookup environment = ProcessEnvironment);

    // 8 (Recent): the folder of the recently-used list, $XDG_DATA_HOME or ~/.local/share.
    // 7 (Startup): $XDG_CONFIG_HOME/autostart or ~/.config/autostart.
    // Any other number, or no usable home folder: "".
    std::string CarpetaEspecial(int number) override;
    // The address under which the desktop's file manager shows the recent files when the
    // desktop's opener is given it: "recent:///" for the GNOME family and Xfce,
    // "recentlyused:/files" for KDE; "" elsewhere.
    std::string RecentFilesView() override;

    // The freedesktop list of recently used files, "recently-used.xbel" in the Recent folder;
    // "" when there is no home folder to find it in.
    std::string RecentlyUsedListPath();

private:
    // A base directory variable, or home + fallback when it is unset, empty or relative (the
    // base directory rules say a relative value is to be ignored).
    std::string BaseFolder(std::string_view variable, std::string_view fallback) const;

    EnvironmentLookup environment_;
};

}  // namespace vt
