#include <malloc.h>

#include <QApplication>
#include <QIcon>
#include <QStringList>
#include <QTimer>

#include "extras/autostart.h"
#include "platform/glib_recent_files.h"
#include "platform/posix_instance_lock.h"
#include "platform/qt_deferred_icon_style.h"
#include "platform/qt_dialogs.h"
#include "platform/qt_locale_info.h"
#include "platform/qt_shell_open.h"
#include "platform/system_clock.h"
#include "platform/xdg_shell_folders.h"
#include "shell/app.h"
#include "shell/main_window.h"
#include "shell/qt_session_end.h"
#include "shell/tray_icon.h"
#include "store/app_paths.h"
#include "store/settings_read_ahead.h"

namespace {

// Without a desktop icon theme Qt searches "hicolor", which by convention holds application
// icons only: no message-box or button icon is ever found there, and reading its index of some
// 650 folders delays the first message box (the start-up report) by several milliseconds. The
// style's built-in icons, which are shown in the end anyway, come at once when the search is
// off. A desktop's own theme (Adwaita, Breeze...) is left alone.
// Says whether it did, that is whether the style's built-in icons are the ones shown.
bool SkipIconSearchWithoutDesktopTheme() {
    if (QIcon::themeName() != QLatin1String("hicolor")) {
        return false;
    }
    QIcon::setThemeSearchPaths({});
    QIcon::setFallbackSearchPaths({});
    QIcon::setThemeName(QStringLiteral("none"));
    QIcon::setFallbackThemeName(QStringLiteral("none"));
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    // The program's few short threads (reading the settings ahead, the backup copy) allocate
    // from the one heap: an arena of their own each would keep the settings they parse apart
    // from everything else, about 0.2 MiB more resident for as long as the program runs.
    mallopt(M_ARENA_MAX, 1);
    QApplication application(argc, argv);
    if (SkipIconSearchWithoutDesktopTheme()) {
        QApplication::setStyle(new vt::DeferredIconStyle);
    }
    // The window is closed on purpose, through its closing path; a last dialog being closed
    // (or the window hidden in the tray) must not end the program behind App's back.
    QApplication::setQuitOnLastWindowClosed(false);

    const std::string executable = QCoreApplication::applicationFilePath().toStdString();
    // Read and parsed on another core while the windows are made (mostly Qt loading its fonts):
    // with a full agenda the parse would otherwise hold up the first window. Started any
    // earlier, it would take that core from the display server while Qt connects to it.
    const vt::AppPaths paths = vt::PathsForExecutable(executable);
    vt::SettingsReadAhead settings_read_ahead(paths.SettingsFile());
    // The command line as one text, so that "DESA" is recognised only when it is all there is.
    const std::string command_line = QCoreApplication::arguments().mid(1).join(QLatin1Char(' ')).toStdString();

    vt::FolderInstanceLock instance_lock(paths.AppFolder);
    vt::SystemClock clock;
    vt::QtDialogs dialogs;
    vt::QtLocaleInfo locale;
    vt::XdgShellFolders shell_folders;
    // The desktop's list of recently used files stands in for the Recent folder.
    vt::GlibRecentFiles recent_files(shell_folders.RecentlyUsedListPath());
    vt::QtShellOpen shell_open;
    vt::DesktopEntryMaker startup_entry;

    // The tray outlives the window, which hands it its closing and minimising until the end.
    vt::FrmSysTray tray;
    vt::FrmReloj window(dialogs);
    vt::App app(vt::AppPorts{clock, dialogs, locale, instance_lock, executable, &recent_files, &shell_open,
                             &shell_folders, &startup_entry, &settings_read_ahead},
                window, tray);
    window.setApp(app);
    window.setTray(tray);
    tray.setMainWindow(window);
    tray.setState(app.State());
    QObject::connect(&window, &vt::FrmReloj::programEnded, &application, &QCoreApplication::exit);

    // Watched from before the start: the end of the session closes the start-up's message
    // boxes too, and once the settings are loaded it ends through the closing path. Should
    // anything still hold the process up, it is gone 1.5 s after the signal.
    vt::SessionEnd session_end([&window] { window.endSession(); }, 1500);

    if (app.Start(command_line) == vt::Outcome::Exit) {
        return 1;
    }

    int loopStatus = 0;
    // The session may have ended while the start-up report was open.
    if (!window.ending()) {
        window.show();
        window.startMainTimer();
        tray.restartFlashTimer();
        // Reading, saving and reading back the settings at the start leave freed blocks between
        // live ones, which the allocator would keep for good; once the window is up they go back.
        QTimer::singleShot(0, [] { malloc_trim(0); });
        loopStatus = QApplication::exec();
    }
    return window.finishEnding(loopStatus);
}
