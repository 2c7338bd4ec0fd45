#pragma once
#include <string>
#include <system_error>

namespace vt {

// The reason a file operation failed, in Spanish and in lower case, for use inside the
// program's own messages ("... (disco lleno)."). The C library's own texts follow the process
// locale, which is English on most desktops whatever the user reads, so the common causes are
// named here and anything rarer falls back to "error del sistema N".
std::string ErrorText(std::error_code error);
std::string ErrorText(int errno_value);

}  // namespace vt
