#include "platform/xdg_shell_folders.h"

#include <array>
#include <cstdlib>
#include <utility>

namespace vt {

namespace {

std::string WithoutTrailingSlashes(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

}  // namespace

std::optional<std::string> ProcessEnvironment(std::string_view name) {
    const char* value = std::getenv(std::string(name).c_str());
    if (value == nullptr) {
        return std::nullopt;
    }
    return std::string(value);
}

XdgShellFolders::XdgShellFolders(EnvironmentLookup environment) : environment_(std::move(environment)) {}

std::string XdgShellFolders::BaseFolder(std::string_view variable, std::string_view fallback) const {
    if (const auto value = environment_(variable); value && !value->empty() && value->front() == '/') {
        return WithoutTrailingSlashes(*value);
    }
    const auto home = environment_("HOME");
    if (!home || home->empty() || home->front() != '/') {
        return {};
    }
    std::string folder = WithoutTrailingSlashes(*home);
    if (folder != "/") {
        folder += '/';
    }
    return folder += fallback;
}

std::string XdgShellFolders::CarpetaEspecial(int number) {
    switch (number) {
        case kRecentFolder:
            return BaseFolder("XDG_DATA_HOME", ".local/share");
        case kStartupFolder: {
            const std::string config = BaseFolder("XDG_CONFIG_HOME", ".config");
            return config.empty() ? config : config + "/autostart";
        }
        default:
            return {};
    }
}

std::string XdgShellFolders::RecentlyUsedListPath() {
    const std::string folder = CarpetaEspecial(kRecentFolder);
    return folder.empty() ? folder : folder + "/recently-used.xbel";
}

std::string XdgShellFolders::RecentFilesView() {
    // The desktop's opener hands these addresses to its own file manager, which shows the
    // recent files there: "gio open" (GNOME's Files, Nemo, Caja) and Xfce's "exo-open" (Thunar,
    // since Xfce 4.18) take "recent:///" from GIO; KDE's "kde-open" takes Dolphin's own
    // "recentlyused:/files" from KIO. Elsewhere the address might reach a browser, so the other
    // desktops get the list's folder instead.
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 9> kViews{{
        {"GNOME", "recent:///"},
        {"Unity", "recent:///"},
        {"X-Cinnamon", "recent:///"},
        {"Cinnamon", "recent:///"},
        {"MATE", "recent:///"},
        {"Budgie", "recent:///"},
        {"Pantheon", "recent:///"},
        {"XFCE", "recent:///"},
        {"KDE", "recentlyused:/files"},
    }};
    const auto desktops = environment_("XDG_CURRENT_DESKTOP");
    if (!desktops) {
        return {};
    }
    // A colon-separated list, most specific first ("ubuntu:GNOME").
    std::string_view rest = *desktops;
    while (!rest.empty()) {
        const std::size_t colon = rest.find(':');
        const std::string_view name = rest.substr(0, colon);
        for (const auto& [desktop, view] : kViews) {
            if (name == desktop) {
                return std::string(view);
            }
        }
        rest = colon == std::string_view::npos ? std::string_view{} : rest.substr(colon + 1);
    }
    return {};
}

}  // namespace vt
