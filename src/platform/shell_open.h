#pragma once
#include <string>

namespace vt {

// Opens a file or a folder with the desktop's default viewer, as a double click would.
class ShellOpen {
public:
    virtual ~ShellOpen() = default;
    // target: a local path, or a URL with its scheme ("recent:///"). working_folder is where a
    // program started for it should run; desktops that start viewers themselves ignore it.
    // False when the desktop refused.
    virtual bool Open(const std::string& target, const std::string& working_folder) = 0;
};

}  // namespace vt
