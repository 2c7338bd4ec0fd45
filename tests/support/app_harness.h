#pragma once
// A whole App on fakes, in a temporary folder, for the tests that drive the program as the
// windows do.
#include <memory>
#include <string>
#include <string_view>

#include "fake_clock.h"
#include "fake_ports.h"
#include "scripted_dialogs.h"
#include "shell/app.h"
#include "temp_app_folder.h"

namespace vt::test {

class AppHarness {
public:
    // A new run of the program; the dialogs stand for the new process's.
    App& MakeApp() {
        dialogs.ReopenSession();
        app = std::make_unique<App>(
            AppPorts{clock, dialogs, locale, lock, folder.ExecutablePath(), recent_files, shell_open, shell_folders},
            view, tray);
        return *app;
    }
    Outcome Start(std::string_view command_line = kDeveloperCommandLine) { return MakeApp().Start(command_line); }
    std::string SettingsFile() const { return folder.ReadFile("VendrakoTimer.ini"); }

    TempAppFolder folder;
    FakeClock clock;
    ScriptedDialogs dialogs;
    FakeLocaleInfo locale;
    FakeInstanceLock lock;
    RecordingMainView view;
    RecordingTrayView tray;
    // The file-access ports, for the tests that give them.
    RecentFiles* recent_files = nullptr;
    ShellOpen* shell_open = nullptr;
    ShellFolders* shell_folders = nullptr;
    std::unique_ptr<App> app;
};

}  // namespace vt::test
