#pragma once
// Windows shortcut files (".lnk", the shell link binary format): the Recent folder of Windows
// holds one for every file used, and the folder source of the recent files reads them.

#include <string>
#include <string_view>

namespace vt {

// The local path a shortcut points to, from its link information: the local base path with the
// common path suffix after it (usually empty), in UTF-8. The Unicode strings are used when the
// shortcut has them, else the ANSI ones, read as Windows-1252. "" when the bytes are not a
// shortcut, are cut short, or hold no local path (a shortcut to a network share or to a shell
// item has none). Any bytes may be given: nothing is read outside them.
std::string ReadShellLinkTarget(std::string_view bytes);

}  // namespace vt
