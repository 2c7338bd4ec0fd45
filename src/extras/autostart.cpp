#include "extras/autostart.h"

#include <filesystem>
#include <system_error>

#include "platform/dialogs.h"
#include "platform/shell_folders.h"
#include "store/text_file.h"

namespace vt {

namespace {

// The characters that the desktop-entry rules reserve inside an Exec argument.
constexpr std::string_view kReserved = " \t\n\"'\\><~|&;$*?#`()";

// The string-value escapes, which readers undo before they look at the quoting.
std::string EscapeStringValue(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '\\':
                escaped += "\\\\";
                break;
            case '\n':
                escaped += "\\n";
                break;
            case '\t':
                escaped += "\\t";
                break;
            case '\r':
                escaped += "\\r";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

}  // namespace

std::string DesktopExecValue(std::string_view path) {
    std::string argument;
    if (path.find_first_of(kReserved) == std::string_view::npos) {
        argument = path;
    } else {
        argument = "\"";
        for (const char c : path) {
            if (c == '"' || c == '`' || c == '$' || c == '\\') {
                argument += '\\';
            }
            argument += c;
        }
        argument += '"';
    }
    std::string value;
    for (const char c : EscapeStringValue(argument)) {
        value += c;
        if (c == '%') {
            value += '%';  // a lone "%" would start a field code
        }
    }
    return value;
}

std::string AutostartEntryText(std::string_view exe_base_name, std::string_view target) {
    return "[Desktop Entry]\nType=Application\nName=" + EscapeStringValue(exe_base_name) +
           "\nExec=" + DesktopExecValue(target) + "\n";
}

std::string DesktopEntryMaker::EntryFileName(std::string_view exe_base_name) const {
    return std::string(exe_base_name) + ".desktop";
}

bool DesktopEntryMaker::Make(const std::string& entry_path, std::string_view exe_base_name, const std::string& target) {
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(entry_path).parent_path(), error);
    if (error) {
        return false;
    }
    // Written whole over an earlier entry of the same name, so a second request leaves one.
    return !WriteFileAtomically(entry_path, AutostartEntryText(exe_base_name, target));
}

void CrearAccesoInicio(const AppPaths& paths, Dialogs& dialogs, ShellFolders& folders, StartupEntryMaker& maker) {
    const MsgAnswer answer =
        dialogs.Show({std::string(kAutostartQuestion), MsgIcon::Question, MsgButtons::OkCancel, {}, {}});
    if (answer != MsgAnswer::Ok) {
        return;
    }
    const std::string target = paths.AppFolder + paths.ExeBaseName;
    const std::string folder = folders.CarpetaEspecial(kStartupFolder);
    if (folder.empty() || !IsRegularFile(target)) {
        return;
    }
    maker.Make(folder + "/" + maker.EntryFileName(paths.ExeBaseName), paths.ExeBaseName, target);
}

}  // namespace vt
