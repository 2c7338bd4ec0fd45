#pragma once
#include <string>

namespace vt {

// The desktop's special folders, by the shell's numbers.
inline constexpr int kStartupFolder = 7;
inline constexpr int kRecentFolder = 8;

class ShellFolders {
public:
    virtual ~ShellFolders() = default;
    // The folder's path without a separator at the end, or "" when the desktop has none.
    virtual std::string CarpetaEspecial(int number) = 0;
    // What "Carpeta Archivos Recientes" opens: the desktop's own view of the recent files (a
    // URL) when its file manager has one, else "" and the Recent folder is opened instead.
    virtual std::string RecentFilesView() { return {}; }
};

}  // namespace vt
