#pragma once
#include <string>
#include <string_view>

namespace vt {

// Where the program keeps its files: everything lives in the executable's folder.
struct AppPaths {
    std::string AppFolder;    // always ends with the separator
    std::string ExeBaseName;  // the executable's name without extension

    std::string SettingsFile() const { return AppFolder + ExeBaseName + ".ini"; }
    std::string BackupFolder() const { return AppFolder + "Backup"; }
    std::string LogFolder() const { return AppFolder + "LOG"; }
    std::string RunLogFile() const { return LogFolder() + "/TIMER.LOG"; }
};

// Splits an executable's path into its folder (with the separator at the end) and base name.
AppPaths PathsForExecutable(std::string_view executable_path);

}  // namespace vt
