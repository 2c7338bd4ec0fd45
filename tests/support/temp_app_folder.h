#pragma once
#include <functional>
#include <string>

#include "store/app_paths.h"

namespace vt::test {

// A fresh, empty folder that plays the executable's folder for one test, removed afterwards.
class TempAppFolder {
public:
    explicit TempAppFolder(std::string exe_base_name = "VendrakoTimer");
    ~TempAppFolder();
    TempAppFolder(const TempAppFolder&) = delete;
    TempAppFolder& operator=(const TempAppFolder&) = delete;

    const AppPaths& Paths() const { return paths_; }
    // The folder, ending with "/".
    const std::string& Folder() const { return paths_.AppFolder; }
    std::string ExecutablePath() const { return paths_.AppFolder + paths_.ExeBaseName; }
    std::string Path(const std::string& relative) const { return paths_.AppFolder + relative; }

    // Writes raw bytes to a file under the folder (creating its folders).
    void WriteFile(const std::string& relative, const std::string& bytes) const;
    std::string ReadFile(const std::string& relative) const;
    bool Exists(const std::string& relative) const;

private:
    AppPaths paths_;
};

// Runs body where file permissions bind as they do for an ordinary user: a root test run (a
// container, CI) otherwise writes into read-only folders. False, with body not run, when the
// override cannot be given up.
bool WithPermissionsEnforced(const std::function<void()>& body);

}  // namespace vt::test
