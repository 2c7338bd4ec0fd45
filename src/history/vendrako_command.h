#pragma once
// The `vendrako` command line: small commands that read the data folder of the VendrakoTimer
// beside them, print and exit. Read-only on purpose: no instance lock, no save, no backup, so
// they run safely every few seconds while the program itself is running.
//
//   vendrako [--carpeta DIR] COMMAND [ARGS...]
//
// A command is one row of the table in vendrako_command.cpp: a name and a function that gets
// the folder and its own arguments. Adding one (say `exportar-ics FICHERO`) is adding a row.

#include <ostream>
#include <string>
#include <vector>

namespace vt {

class Clock;

struct CommandContext {
    std::string folder;  // the data folder, ending with "/"
    const Clock& clock;
    std::ostream& out;
    std::ostream& err;
};

// Runs the command line (without the program's name); the process's exit status.
int RunVendrakoCommand(const std::vector<std::string>& args, const std::string& default_folder, const Clock& clock,
                       std::ostream& out, std::ostream& err);

}  // namespace vt
