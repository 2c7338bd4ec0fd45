#pragma once
#include "platform/shell_open.h"

namespace vt {

// Hands the target to QDesktopServices, which asks the desktop (xdg-open and its kin) to open
// it. The working folder is not passed on: the desktop starts the viewer in its own.
class QtShellOpen : public ShellOpen {
public:
    bool Open(const std::string& target, const std::string& working_folder) override;
};

}  // namespace vt
