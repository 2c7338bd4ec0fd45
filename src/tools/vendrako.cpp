// `vendrako`: the program's scripting commands, Qt-free, beside VendrakoTimer. Its data folder
// is this executable's own folder unless --carpeta says otherwise.
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "history/vendrako_command.h"
#include "platform/system_clock.h"
#include "store/app_paths.h"

int main(int argc, char** argv) {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string folder = vt::PathsForExecutable(error ? std::string(argv[0]) : self.string()).AppFolder;
    const vt::SystemClock clock;
    return vt::RunVendrakoCommand(std::vector<std::string>(argv + 1, argv + argc), folder, clock, std::cout, std::cerr);
}
