#pragma once
// What the dialog tests share: showing a window offscreen, moving the focus, reading what a
// menu holds, acting inside a modal dialog, and the main window joined to an App that runs on
// fakes in a temporary folder.
#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>
#include <functional>
#include <memory>
#include <string>

#include "fake_clock.h"
#include "fake_ports.h"
#include "scripted_dialogs.h"
#include "shell/app.h"
#include "shell/main_window.h"
#include "shell/qt_time_box.h"
#include "shell/tray_icon.h"
#include "temp_app_folder.h"

using namespace Qt::StringLiterals;

namespace vt::test {

// The offscreen platform activates a window only when asked; without an active window nothing
// has the focus and no focus event is sent.
inline bool ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

// Gives the focus as Tab would, and waits until the widget has it.
inline bool FocusOn(QWidget* widget) {
    if (widget == nullptr) {
        return false;
    }
    widget->setFocus(Qt::TabFocusReason);
    return QTest::qWaitFor([widget] { return widget->hasFocus(); });
}

// The child of that name, as a QWidget so that keys and clicks can go to it.
inline QWidget* Child(const QObject& parent, const QString& name) {
    return parent.findChild<QWidget*>(name);
}

// "name=caption" for each item, "name-" for a separator, "+" after an item that can be chosen.
inline QStringList MenuRows(const QMenu& menu) {
    QStringList rows;
    for (const QAction* action : menu.actions()) {
        rows << (action->isSeparator()
                     ? action->objectName() + u'-'
                     : action->objectName() + u'=' + action->text() + (action->isEnabled() ? u"+"_s : QString()));
    }
    return rows;
}

// The same for the buttons of a dialog, in the order they were made.
inline QStringList ButtonRows(const QWidget& dialog) {
    QStringList rows;
    for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
        rows << button->objectName() + u'=' + button->text() + (button->isEnabled() ? u"+"_s : QString());
    }
    return rows;
}

// The text of each item of a combo box or a list, in order.
template <typename List>
QStringList ItemTexts(const List& list) {
    QStringList texts;
    for (int i = 0; i < list.count(); ++i) {
        texts << list.model()->index(i, 0).data().toString();
    }
    return texts;
}

// The text of every label of a dialog, in the order they were made.
inline QStringList LabelTexts(const QWidget& dialog) {
    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        texts << label->text();
    }
    return texts;
}

// A left click on `widget` when `key` is 0, otherwise that key pressed in it.
inline void ClickOrKey(QWidget* widget, int key) {
    if (key == 0) {
        QTest::mouseClick(widget, Qt::LeftButton);
    } else {
        QTest::keyClick(widget, Qt::Key(key));
    }
}

// Runs `act` on the modal dialog of type T once the event loop of its exec() is running. A
// dialog `act` leaves open is rejected, so that the test goes on to its checks and fails there.
template <typename T>
void WhenModal(std::function<void(T&)> act) {
    QTimer::singleShot(0, [act = std::move(act)] {
        auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            return;
        }
        act(*dialog);
        if (dialog->isVisible()) {
            dialog->reject();
        }
    });
}

// A settings file for the fake clock's day (Tuesday 2 January 2024) with the same mode on every
// weekday and these lines in its repetitions section.
inline std::string SettingsFile(const std::string& mode, const std::string& entrada1, const std::string& salida1,
                                const std::string& entrada2, const std::string& reminders = "") {
    std::string file = "[GENERAL]\r\nFECHA=02-01-24\r\nENTRADA1=" + entrada1 + "\r\nSALIDA1=" + salida1 +
                       "\r\nENTRADA2=" + entrada2 + "\r\nNUM_ALARMAS=0\r\n[CONFIG]\r\n";
    for (const char* day : {"LUNES", "MARTES", "MIERCOLES", "JUEVES", "VIERNES", "SABADO", "DOMINGO"}) {
        file += std::string(day) + "=08:00|" + mode + "\r\n";
    }
    return file + "[REPETICIONES]\r\n" + reminders;
}

// The main window and the tray window joined to an App on fakes, as main() joins them. The tray
// is there only while trayPresent says so.
struct AppRig {
    AppRig() {
        window.setApp(app);
        window.setTray(tray);
        tray.setMainWindow(window);
        tray.setState(app.State());
    }

    // Starts on this settings file, or with none at all (and so no backup of it yet).
    bool start(const std::string& settings = "") {
        if (!settings.empty()) {
            folder.WriteFile("VendrakoTimer.ini", settings);
        }
        return app.Start("DESA") == Outcome::Continue;
    }
    QString settingsOnDisk() const { return QString::fromStdString(folder.ReadFile("VendrakoTimer.ini")); }
    QTimer* mainTimer() const { return window.findChild<QTimer*>(u"timPincipal"_s); }

    TempAppFolder folder;
    FakeClock clock;
    ScriptedDialogs dialogs;
    FakeLocaleInfo locale;
    FakeInstanceLock lock;
    bool trayPresent = false;
    FrmSysTray tray{[this] { return trayPresent; }};
    FrmReloj window{dialogs};
    App app{AppPorts{clock, dialogs, locale, lock, folder.ExecutablePath()}, window, tray};
};

}  // namespace vt::test
