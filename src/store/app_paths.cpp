#include "store/app_paths.h"

namespace vt {

AppPaths PathsForExecutable(std::string_view executable_path) {
    const size_t slash = executable_path.find_last_of('/');
    AppPaths paths;
    std::string_view name = executable_path;
    if (slash == std::string_view::npos) {
        paths.AppFolder = "./";
    } else {
        paths.AppFolder = std::string(executable_path.substr(0, slash + 1));
        name = executable_path.substr(slash + 1);
    }
    const size_t dot = name.find_last_of('.');
    paths.ExeBaseName = std::string(dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot));
    return paths;
}

}  // namespace vt
