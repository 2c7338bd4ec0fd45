// The main window's wiring: its menus as later features will find them, the clock-in boxes,
// the main timer and the closing paths. What Start, Tick, leaving a box and Shutdown do is
// App's and is tested in the core; here only what reaches App and what comes back.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "agenda/repeat_dialog.h"
#include "fake_clock.h"
#include "fake_ports.h"
#include "platform/qt_dialogs.h"
#include "scripted_dialogs.h"
#include "shell/app.h"
#include "shell/config_dialog.h"
#include "shell/main_window.h"
#include "shell/qt_time_box.h"
#include "shell/tray_icon.h"
#include "temp_app_folder.h"

using vt::FrmReloj;
using vt::FrmSysTray;
using vt::TimeBox;

namespace {
// The fake clock's day: Tuesday 2 January 2024, 09:00.
constexpr const char* kToday = "02-01-24";

// A settings file for today, with the same mode on every weekday.
std::string SettingsFor(const std::string& mode, const std::string& entrada1, const std::string& salida1,
                        const std::string& entrada2) {
    std::string file = "[GENERAL]\r\nFECHA=" + std::string(kToday) + "\r\nENTRADA1=" + entrada1 +
                       "\r\nSALIDA1=" + salida1 + "\r\nENTRADA2=" + entrada2 + "\r\nNUM_ALARMAS=0\r\n[CONFIG]\r\n";
    for (const char* day : {"LUNES", "MARTES", "MIERCOLES", "JUEVES", "VIERNES", "SABADO", "DOMINGO"}) {
        file += std::string(day) + "=08:00|" + mode + "\r\n";
    }
    return file;
}

bool ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

// A settings file for today (a split day) with these lines in its repetitions section.
std::string SettingsWithReminders(const std::string& lines) {
    return SettingsFor("P", "08:00", "", "") + "[REPETICIONES]\r\n" + lines;
}

// The dialog on screen other than a repeat-later one, if any.
QDialog* OtherOpenDialog() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QDialog*>(window);
        if (dialog != nullptr && dialog->isVisible() && qobject_cast<vt::FrmRepetir*>(dialog) == nullptr) {
            return dialog;
        }
    }
    return nullptr;
}

// What a repeat-later dialog showed when it came up.
struct SeenReminder {
    QString when;
    QString text;
    bool active = false;
    bool overTheMainWindow = false;
    bool overAnotherDialog = false;
};
}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void menuBarHoldsTheFourMenusInOrder();
    void menuItems_data();
    void menuItems();
    void repetitionItemsStartWithTheHiddenTemplate();
    void captionComesFromApp();
    void mainTimerFollowsStart_data();
    void mainTimerFollowsStart();
    void failedDateCheckOnATickEndsWithoutClosingSteps();
    void closingRunsTheClosingStepsOnce();
    void sessionEndRunsTheClosingStepsOnce();
    void closeButtonWithATrayHidesTheWindow();
    void salirFromTheTrayRunsTheClosingStepsOnce();

    void startShowsTheClockInsAndTheDeparture();
    void leavingABoxWithTabStoresItsTime_data();
    void leavingABoxWithTabStoresItsTime();
    void goingToAnotherWindowIsLeavingTheBox_data();
    void goingToAnotherWindowIsLeavingTheBox();
    void afternoonBoxesFollowTheDayMode_data();
    void afternoonBoxesFollowTheDayMode();
    void configurationOpensTheScheduleAndAppliesIt();

    void repetitionMenuListsTheReminders_data();
    void repetitionMenuListsTheReminders();
    void rebuildingTheRepetitionMenuReplacesItsItems();
    void aDueReminderIsAskedAboutAtTheFirstTick_data();
    void aDueReminderIsAskedAboutAtTheFirstTick();
    void aReminderWaitsWhileAnotherDialogIsOpen_data();
    void aReminderWaitsWhileAnotherDialogIsOpen();

private:
    // Starts on a settings file for today and shows the window, active.
    void startWith(const std::string& settings);
    std::string settingsOnDisk() const { return m_folder->ReadFile("VendrakoTimer.ini"); }
    bool backupExists() const { return std::filesystem::exists(m_folder->Path("Backup")); }
    void forgetBackup() const { std::filesystem::remove_all(m_folder->Path("Backup")); }
    QTimer* mainTimer() const { return m_window->findChild<QTimer*>(QStringLiteral("timPincipal")); }
    // The main timer running every millisecond rather than every second.
    void runTicks();
    // From now on every repeat-later dialog that comes up is noted in m_seenReminders and
    // answered with this button.
    void answerRemindersWith(const QString& button);
    void onReminderWatch();
    // "name=caption" of each repetition item after the hidden template, "+" when it can be
    // chosen.
    QStringList repetitionItemsShown() const;

    std::unique_ptr<vt::test::TempAppFolder> m_folder;
    vt::test::FakeClock m_clock;
    vt::test::ScriptedDialogs m_dialogs;
    vt::test::FakeLocaleInfo m_locale;
    vt::test::FakeInstanceLock m_lock;
    // Whether the desktop has a system tray; none unless a test says so.
    bool m_trayPresent = false;
    std::unique_ptr<FrmSysTray> m_tray;
    std::unique_ptr<FrmReloj> m_window;
    std::unique_ptr<vt::App> m_app;
    std::unique_ptr<QTimer> m_reminderWatch;
    QString m_reminderAnswer;
    bool m_answeringReminder = false;
    std::vector<SeenReminder> m_seenReminders;
};

void MainWindowTest::init() {
    m_folder = std::make_unique<vt::test::TempAppFolder>();
    m_dialogs = {};
    m_locale.format = "dd/MM/yyyy";
    m_clock.Set(2, 1, 2024, 9, 0);
    m_trayPresent = false;
    m_tray = std::make_unique<FrmSysTray>([this] { return m_trayPresent; });
    m_window = std::make_unique<FrmReloj>(m_dialogs);
    m_app = std::make_unique<vt::App>(vt::AppPorts{m_clock, m_dialogs, m_locale, m_lock, m_folder->ExecutablePath()},
                                      *m_window, *m_tray);
    m_window->setApp(*m_app);
    m_window->setTray(*m_tray);
    m_tray->setMainWindow(*m_window);
    m_tray->setState(m_app->State());
}

void MainWindowTest::cleanup() {
    m_reminderWatch.reset();
    m_seenReminders.clear();
    m_window.reset();
    m_tray.reset();
    m_app.reset();
    m_folder.reset();
}

void MainWindowTest::startWith(const std::string& settings) {
    m_folder->WriteFile("VendrakoTimer.ini", settings);
    QCOMPARE(m_app->Start("DESA"), vt::Outcome::Continue);
    QVERIFY(ShowActive(*m_window));
}

void MainWindowTest::runTicks() {
    m_window->startMainTimer();
    QVERIFY(mainTimer()->isActive());
    mainTimer()->setInterval(1);
}

void MainWindowTest::answerRemindersWith(const QString& button) {
    m_reminderAnswer = button;
    m_reminderWatch = std::make_unique<QTimer>();
    m_reminderWatch->setInterval(5);
    connect(m_reminderWatch.get(), &QTimer::timeout, this, &MainWindowTest::onReminderWatch);
    m_reminderWatch->start();
}

void MainWindowTest::onReminderWatch() {
    // The dialog is modal and the tick waits inside it, so this runs in the dialog's own loop.
    auto* dialog = qobject_cast<vt::FrmRepetir*>(QApplication::activeModalWidget());
    if (dialog == nullptr || m_answeringReminder) {
        return;
    }
    m_answeringReminder = true;
    SeenReminder seen;
    seen.active = QTest::qWaitForWindowActive(dialog);
    seen.when = dialog->lblFecha()->text();
    seen.text = dialog->txtTexto()->toPlainText();
    seen.overTheMainWindow = dialog->parentWidget() == m_window.get();
    seen.overAnotherDialog = OtherOpenDialog() != nullptr;
    m_seenReminders.push_back(seen);
    QTest::mouseClick(dialog->findChild<QPushButton*>(m_reminderAnswer), Qt::LeftButton);
    m_answeringReminder = false;
}

QStringList MainWindowTest::repetitionItemsShown() const {
    QStringList shown;
    const QList<QAction*>& items = m_window->repetitionItems();
    for (qsizetype i = 1; i < items.size(); ++i) {
        shown << items.at(i)->objectName() + QLatin1Char('=') + items.at(i)->text() +
                     (items.at(i)->isEnabled() ? QStringLiteral("+") : QString());
    }
    return shown;
}

void MainWindowTest::menuBarHoldsTheFourMenusInOrder() {
    QStringList names;
    QStringList titles;
    for (QAction* action : m_window->menuBar()->actions()) {
        QVERIFY(action->menu() != nullptr);
        QVERIFY(action->isEnabled());
        names << action->menu()->objectName();
        titles << action->menu()->title();
    }
    QCOMPARE(names, (QStringList{"mnuOpciones", "mnuAlarma", "mnuRepeticion", "mnuAccesos"}));
    QCOMPARE(titles, (QStringList{"Opciones", "Alarmas", "Repeticiones", "Accesos"}));

    // The calendar day's menu exists but is not in the menu bar.
    QMenu* popUp = m_window->popUpMenu();
    QVERIFY(popUp != nullptr);
    QCOMPARE(popUp, m_window->menu(QStringLiteral("mnuPopUp")));
    QCOMPARE(popUp->title(), QStringLiteral("PopUp"));
    QVERIFY(!m_window->menuBar()->actions().contains(popUp->menuAction()));
}

void MainWindowTest::menuItems_data() {
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QStringList>("items");  // "name=caption", "-" for a separator

    QTest::newRow("Opciones") << "mnuOpciones"
                              << QStringList{"mnuConfig=Configuración",
                                             "-",
                                             "mnuTareasTareas=Tareas",
                                             "mnuTareaResumen=Resumen de tareas",
                                             "-",
                                             "mnuLink=Arrancar al iniciar Windows",
                                             "-",
                                             "mnuListadoFechas=Listado por fechas",
                                             "mnuCrearCalendario=Crear calendario",
                                             "-",
                                             "mnuHelp=Ayuda",
                                             "mnuAbout=Acerca de ..."};
    QTest::newRow("Alarmas") << "mnuAlarma"
                             << QStringList{"mnuAlarmaNueva=Nueva", "mnuAlarmaMostrar=Mostrar todas",
                                            "mnuAlarmaInforme=Informe de proximidad"};
    QTest::newRow("Repeticiones") << "mnuRepeticion"
                                  << QStringList{"mnuRepeticionNueva=Nueva", "-", "mnuRepeticionNinguna=(ninguna)",
                                                 "mnuRepeticionDato=(texto)"};
    QTest::newRow("Accesos") << "mnuAccesos"
                             << QStringList{"mnuAccesosHoy=Accesos Hoy", "mnuAccesosLog=Carpeta Logs de Accesos",
                                            "mnuAccesosWin=Carpeta Archivos Recientes"};
    QTest::newRow("PopUp") << "mnuPopUp"
                           << QStringList{"mnuPopUpRepeticion=Añadir Repetición", "mnuPopUpAlarma=Añadir Alarma", "-",
                                          "mnuPopUpDetalle=(...)"};
}

void MainWindowTest::menuItems() {
    QFETCH(QString, menu);
    QFETCH(QStringList, items);
    QMenu* found = m_window->menu(menu);
    QVERIFY(found != nullptr);

    // Nothing else can be chosen until the feature behind the item is there.
    const QStringList working{QStringLiteral("mnuConfig")};

    QStringList actual;
    for (QAction* action : found->actions()) {
        if (action->isSeparator()) {
            actual << QStringLiteral("-");
            continue;
        }
        actual << action->objectName() + QLatin1Char('=') + action->text();
        QVERIFY2(action->isEnabled() == working.contains(action->objectName()), qPrintable(action->objectName()));
        QCOMPARE(m_window->menuItem(action->objectName()), action);
    }
    QCOMPARE(actual, items);
}

void MainWindowTest::repetitionItemsStartWithTheHiddenTemplate() {
    const QList<QAction*>& items = m_window->repetitionItems();
    QCOMPARE(items.size(), 1);
    QCOMPARE(items.front(), m_window->menuItem(QStringLiteral("mnuRepeticionDato")));
    QVERIFY(!items.front()->isVisible());
    QCOMPARE(m_window->menu(QStringLiteral("mnuRepeticion"))->actions().back(), items.front());
    QCOMPARE(m_window->menuItem(QStringLiteral("mnuNoSuchItem")), nullptr);
}

void MainWindowTest::captionComesFromApp() {
    QCOMPARE(m_app->Start("DESA"), vt::Outcome::Continue);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("VendrakoTimer 3.52"));
    m_app->SetBusy(true);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("...procesando..."));
    m_app->SetBusy(false);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("VendrakoTimer 3.52"));
}

void MainWindowTest::mainTimerFollowsStart_data() {
    QTest::addColumn<QString>("dateFormat");
    QTest::addColumn<bool>("running");

    QTest::newRow("start went through") << "dd/MM/yyyy" << true;
    QTest::newRow("start stopped at the date check") << "M/d/yy" << false;
}

void MainWindowTest::mainTimerFollowsStart() {
    QFETCH(QString, dateFormat);
    QFETCH(bool, running);
    m_locale.format = dateFormat.toStdString();
    QTimer* timer = mainTimer();
    QVERIFY(timer != nullptr);
    QVERIFY(!timer->isActive());

    const bool started = m_app->Start("DESA") == vt::Outcome::Continue;
    QCOMPARE(started, running);
    if (started) {
        m_window->startMainTimer();
    }

    QCOMPARE(timer->isActive(), running);
    if (running) {
        QCOMPARE(timer->interval(), 1000);
    }
}

void MainWindowTest::failedDateCheckOnATickEndsWithoutClosingSteps() {
    QCOMPARE(m_app->Start("DESA"), vt::Outcome::Continue);
    m_window->startMainTimer();
    QSignalSpy ended(m_window.get(), &FrmReloj::programEnded);
    QVERIFY(!backupExists());
    m_dialogs.Forget();

    m_locale.format = "yyyy-MM-dd";
    mainTimer()->setInterval(1);  // no need to wait a real second

    QTRY_COMPARE(ended.count(), 1);
    QCOMPARE(ended.at(0).at(0).toInt(), 1);
    QVERIFY(!mainTimer()->isActive());
    QCOMPARE(m_dialogs.Shown().size(), size_t{1});
    QCOMPARE(m_dialogs.Shown().front().icon, vt::MsgIcon::Critical);
    QVERIFY(!backupExists());

    // Whatever comes after (the window going away), the closing steps stay undone.
    m_window->close();
    QVERIFY(!backupExists());
    QCOMPARE(ended.count(), 1);
}

void MainWindowTest::closingRunsTheClosingStepsOnce() {
    QCOMPARE(m_app->Start("DESA"), vt::Outcome::Continue);
    m_window->startMainTimer();
    m_window->show();
    QSignalSpy ended(m_window.get(), &FrmReloj::programEnded);

    QVERIFY(m_window->close());

    QVERIFY(backupExists());
    QVERIFY(!mainTimer()->isActive());
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended.at(0).at(0).toInt(), 0);

    forgetBackup();
    m_window->close();
    m_window->endSession();
    QVERIFY(!backupExists());
}

void MainWindowTest::sessionEndRunsTheClosingStepsOnce() {
    QCOMPARE(m_app->Start("DESA"), vt::Outcome::Continue);
    m_window->startMainTimer();
    m_window->show();
    QSignalSpy ended(m_window.get(), &FrmReloj::programEnded);
    m_dialogs.Forget();

    m_window->endSession();

    QVERIFY(backupExists());
    QVERIFY(m_dialogs.Shown().empty());
    QVERIFY(!mainTimer()->isActive());
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended.at(0).at(0).toInt(), 0);

    forgetBackup();
    m_window->close();
    QVERIFY(!backupExists());
}

// With a tray the close button only puts the window there: the program goes on, and the
// closing steps wait for "Salir".
void MainWindowTest::closeButtonWithATrayHidesTheWindow() {
    m_trayPresent = true;
    QCOMPARE(m_app->Start("DESA"), vt::Outcome::Continue);
    m_window->startMainTimer();
    m_window->show();
    QSignalSpy ended(m_window.get(), &FrmReloj::programEnded);

    QVERIFY(!m_window->close());

    QVERIFY(!m_window->isVisible());
    QVERIFY(!backupExists());
    QVERIFY(mainTimer()->isActive());
    QCOMPARE(ended.count(), 0);
}

void MainWindowTest::salirFromTheTrayRunsTheClosingStepsOnce() {
    m_trayPresent = true;
    QCOMPARE(m_app->Start("DESA"), vt::Outcome::Continue);
    m_window->startMainTimer();
    m_window->show();
    QVERIFY(!m_window->close());  // hidden in the tray first, as the user would
    QSignalSpy ended(m_window.get(), &FrmReloj::programEnded);
    QAction* salir = m_tray->menuItem(QStringLiteral("mExit"));
    QVERIFY(salir != nullptr);

    salir->trigger();

    QVERIFY(backupExists());
    QVERIFY(!mainTimer()->isActive());
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended.at(0).at(0).toInt(), 0);
    // The icon goes with the program.
    QVERIFY(!m_tray->trayIcon()->isVisible());
    QVERIFY(!m_tray->findChild<QTimer*>(QStringLiteral("TmrFlash"))->isActive());

    forgetBackup();
    salir->trigger();
    m_window->close();
    QVERIFY(!backupExists());
    QCOMPARE(ended.count(), 1);
}

void MainWindowTest::startShowsTheClockInsAndTheDeparture() {
    m_folder->WriteFile("VendrakoTimer.ini", SettingsFor("P", "08:00", "14:00", "15:30"));
    QCOMPARE(m_app->Start("DESA"), vt::Outcome::Continue);

    QCOMPARE(m_window->txtHora(0)->text(), QStringLiteral("08:00"));
    QCOMPARE(m_window->txtHora(1)->text(), QStringLiteral("14:00"));
    QCOMPARE(m_window->txtHora(2)->text(), QStringLiteral("15:30"));
    for (int index = 0; index < 3; ++index) {
        QCOMPARE(m_window->txtHora(index)->storedValue(), m_window->txtHora(index)->text());
    }
    QCOMPARE(m_window->findChild<TimeBox*>(QStringLiteral("txtHora(2)")), m_window->txtHora(2));
    QCOMPARE(m_window->findChild<QLabel*>(QStringLiteral("lblSalida")), m_window->lblSalida());
    QCOMPARE(m_window->lblSalida()->text(), QStringLiteral("17:30"));
    QCOMPARE(m_window->statusLine(), QStringLiteral("Hora de salida: 17:30"));
    QCOMPARE(m_window->ClockInText(2), std::string("15:30"));
}

void MainWindowTest::leavingABoxWithTabStoresItsTime_data() {
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("salida1");
    QTest::addColumn<QString>("entrada2");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");  // the line the settings file must then hold
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");

    QTest::newRow("Salida 1") << 1 << ""
                              << ""
                              << "14"
                              << "SALIDA1=14:00"
                              << "..."
                              << "...";
    QTest::newRow("Entrada 2 completes the day") << 2 << "14:00"
                                                 << ""
                                                 << "1530"
                                                 << "ENTRADA2=15:30"
                                                 << "..."
                                                 << "17:30";
    QTest::newRow("Entrada 1 moves the departure") << 0 << "14:00"
                                                   << "15:30"
                                                   << "745"
                                                   << "ENTRADA1=07:45"
                                                   << "17:30"
                                                   << "17:15";
}

void MainWindowTest::leavingABoxWithTabStoresItsTime() {
    QFETCH(int, box);
    QFETCH(QString, salida1);
    QFETCH(QString, entrada2);
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QFETCH(QString, before);
    QFETCH(QString, after);
    startWith(SettingsFor("P", "08:00", salida1.toStdString(), entrada2.toStdString()));
    QCOMPARE(m_window->lblSalida()->text(), before);
    QVERIFY(!QString::fromStdString(settingsOnDisk()).contains(stored));
    TimeBox* edited = m_window->txtHora(box);
    edited->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(edited->hasFocus());

    QTest::keyClicks(edited, typed);
    QTest::keyClick(edited, Qt::Key_Tab);

    QVERIFY(QString::fromStdString(settingsOnDisk()).contains(stored + QStringLiteral("\r\n")));
    QCOMPARE(m_window->lblSalida()->text(), after);
    QCOMPARE(edited->text(), stored.section(QLatin1Char('='), 1));
    // The box goes back to this time on Escape from now on.
    QCOMPARE(edited->storedValue(), stored.section(QLatin1Char('='), 1));
    QVERIFY(!edited->hasFocus());
    QVERIFY(m_dialogs.Shown().empty());
}

// A box is also left when another window of the program takes the focus: App is told what the
// box holds. A half-typed time stays as it is, unstored, and the box keeps the window's focus;
// an emptied box is stored empty.
void MainWindowTest::goingToAnotherWindowIsLeavingTheBox_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");

    QTest::newRow("half-typed") << "0830"
                                << "SALIDA1=14:00";
    QTest::newRow("emptied") << ""
                             << "SALIDA1=";
}

void MainWindowTest::goingToAnotherWindowIsLeavingTheBox() {
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    startWith(SettingsFor("P", "08:00", "14:00", ""));
    TimeBox* salida = m_window->txtHora(1);
    salida->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(salida->hasFocus());
    QTest::keyClick(salida, Qt::Key_Backspace);  // the digits are selected on entering
    QTest::keyClicks(salida, typed);

    QWidget other;
    other.setWindowTitle(QStringLiteral("otra ventana"));
    auto* field = new QLineEdit(&other);
    QVERIFY(ShowActive(other));
    QTRY_VERIFY(field->hasFocus());
    QCoreApplication::processEvents();
    // Asking for the focus back does not pull it out of the window the user went to.
    QVERIFY(field->hasFocus());

    QVERIFY(QString::fromStdString(settingsOnDisk()).contains(stored + QStringLiteral("\r\n")));
    QCOMPARE(salida->text(), typed);
    QCOMPARE(m_window->focusWidget(), salida);
    QVERIFY(m_dialogs.Shown().empty());

    // Back in the main window the edit goes on in the same box.
    QVERIFY(ShowActive(*m_window));
    QTRY_VERIFY(salida->hasFocus());
    QCOMPARE(salida->text(), typed);
}

void MainWindowTest::afternoonBoxesFollowTheDayMode_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("locked");

    QTest::newRow("continuous day") << "C" << true;
    QTest::newRow("split day") << "P" << false;
}

void MainWindowTest::afternoonBoxesFollowTheDayMode() {
    QFETCH(QString, mode);
    QFETCH(bool, locked);
    startWith(SettingsFor(mode.toStdString(), "08:00", "", ""));
    const QPalette desktop = QApplication::palette(m_window->txtHora(0));

    QVERIFY(!m_window->txtHora(0)->isReadOnly());
    QCOMPARE(m_window->txtHora(0)->focusPolicy(), Qt::StrongFocus);
    for (int index : {1, 2}) {
        TimeBox* box = m_window->txtHora(index);
        QCOMPARE(box->isReadOnly(), locked);
        QCOMPARE(box->focusPolicy(), locked ? Qt::NoFocus : Qt::StrongFocus);
        QCOMPARE(box->palette().color(QPalette::Base), desktop.color(locked ? QPalette::Button : QPalette::Base));
    }

    // Tab from "Entrada 1" goes on to "Salida 1" only when it is open.
    TimeBox* entrada = m_window->txtHora(0);
    entrada->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(entrada->hasFocus());
    QTest::keyClick(entrada, Qt::Key_Tab);
    QCOMPARE(m_window->txtHora(1)->hasFocus(), !locked);
    QVERIFY(!m_window->txtHora(2)->hasFocus());
}

// "Configuración" opens the schedule over the window; what is accepted there is stored and
// today's boxes follow it: unticking every day turns today into a split day.
void MainWindowTest::configurationOpensTheScheduleAndAppliesIt() {
    startWith(SettingsFor("C", "08:00", "", ""));
    QVERIFY(m_window->txtHora(1)->isReadOnly());
    QAction* config = m_window->menuItem(QStringLiteral("mnuConfig"));
    QVERIFY(config->isEnabled());

    QString shownTitle;
    QString shownHours;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<vt::FrmConfig*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            return;  // the checks below fail: no schedule was shown
        }
        shownTitle = dialog->windowTitle();
        shownHours = dialog->txtHora(1)->text();
        for (int row = 0; row < 7; ++row) {
            dialog->chkContinua(row)->setChecked(false);
        }
        QTest::keyClick(dialog, Qt::Key_Return);
        if (dialog->isVisible()) {
            dialog->reject();
        }
    });
    config->trigger();

    QCOMPARE(shownTitle, QStringLiteral("Configuración"));
    QCOMPARE(shownHours, QStringLiteral("08:00"));
    QVERIFY(QString::fromStdString(settingsOnDisk()).contains(QStringLiteral("MARTES=08:00|P\r\n")));
    QVERIFY(!m_window->txtHora(1)->isReadOnly());
    QCOMPARE(m_window->txtHora(1)->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(m_window->lblSalida()->text(), QStringLiteral("..."));

    // "Entrada 1" had the focus all along: the refresh showed its time as the digits being
    // edited, and leaving it takes the same time again without a word.
    TimeBox* entrada = m_window->txtHora(0);
    QCOMPARE(m_window->focusWidget(), entrada);
    QCOMPARE(entrada->text(), QStringLiteral("0800"));
    // A desktop hands the activation back to the window when the dialog closes; offscreen
    // nothing does.
    QVERIFY(ShowActive(*m_window));
    QTRY_VERIFY(entrada->hasFocus());
    QTest::keyClick(entrada, Qt::Key_Tab);
    QCOMPARE(entrada->text(), QStringLiteral("08:00"));
    QVERIFY(m_window->txtHora(1)->hasFocus());
    QVERIFY(m_dialogs.Shown().empty());
}

// After the start the menu lists the reminders in date order, one item each, after the hidden
// template; "(ninguna)" shows only when there is none. The items wait for the repetition editor,
// so they cannot be chosen yet.
void MainWindowTest::repetitionMenuListsTheReminders_data() {
    QTest::addColumn<QString>("reminders");  // the lines of the repetitions section
    QTest::addColumn<QStringList>("items");

    QTest::newRow("none") << "" << QStringList{};
    QTest::newRow("three, sorted, \"&\" shown as itself")
        << "REP_001=15/03/2024 10:00 Llamar a Ana\r\n"
           "REP_002=14/03/2024 09:00 Revisar correo;urgente\r\n"
           "REP_003=16/03/2024 08:00 Pan & vino\r\n"
        << QStringList{"mnuRepeticionDato(1)=14/03/2024 09:00 Revisar correo;urgente",
                       "mnuRepeticionDato(2)=15/03/2024 10:00 Llamar a Ana",
                       "mnuRepeticionDato(3)=16/03/2024 08:00 Pan && vino"};
}

void MainWindowTest::repetitionMenuListsTheReminders() {
    QFETCH(QString, reminders);
    QFETCH(QStringList, items);
    startWith(SettingsWithReminders(reminders.toStdString()));

    QCOMPARE(repetitionItemsShown(), items);
    QAction* none = m_window->menuItem(QStringLiteral("mnuRepeticionNinguna"));
    QCOMPARE(none->isVisible(), items.isEmpty());
    QVERIFY(!m_window->repetitionItems().front()->isVisible());
    // The items are the menu's last ones, in the same order.
    const QList<QAction*> inMenu = m_window->menu(QStringLiteral("mnuRepeticion"))->actions();
    QCOMPARE(inMenu.mid(inMenu.size() - m_window->repetitionItems().size()), m_window->repetitionItems());
    for (qsizetype i = 1; i < m_window->repetitionItems().size(); ++i) {
        QAction* item = m_window->repetitionItems().at(i);
        QVERIFY(item->isVisible());
        QCOMPARE(m_window->menuItem(item->objectName()), item);
    }
    QVERIFY(m_dialogs.Shown().empty());
}

void MainWindowTest::rebuildingTheRepetitionMenuReplacesItsItems() {
    QMenu* menu = m_window->menu(QStringLiteral("mnuRepeticion"));
    const qsizetype actionsAtFirst = menu->findChildren<QAction*>().size();
    QAction* none = m_window->menuItem(QStringLiteral("mnuRepeticionNinguna"));

    m_window->ShowRepetitionMenu({"01/02/2024 10:00 uno", "02/02/2024 10:00 dos", "03/02/2024 10:00 tres"});
    QCOMPARE(repetitionItemsShown().size(), 3);
    QVERIFY(!none->isVisible());
    const QPointer<QAction> oldFirst = m_window->repetitionItems().at(1);
    const QPointer<QAction> oldThird = m_window->repetitionItems().at(3);

    m_window->ShowRepetitionMenu({"05/02/2024 10:00 cinco"});
    QCOMPARE(repetitionItemsShown(), QStringList{"mnuRepeticionDato(1)=05/02/2024 10:00 cinco"});
    QVERIFY(oldFirst.isNull());
    QVERIFY(oldThird.isNull());
    QCOMPARE(menu->findChildren<QAction*>().size(), actionsAtFirst + 1);
    QVERIFY(!none->isVisible());

    m_window->ShowRepetitionMenu({});
    QVERIFY(repetitionItemsShown().isEmpty());
    QCOMPARE(menu->findChildren<QAction*>().size(), actionsAtFirst);
    QVERIFY(none->isVisible());
    QCOMPARE(m_window->repetitionItems().size(), 1);
    QVERIFY(!m_window->repetitionItems().front()->isVisible());
}

// A reminder that fell due before the start is asked about at the first tick, over the main
// window, also while that window is hidden in the tray; the answer is stored at once.
void MainWindowTest::aDueReminderIsAskedAboutAtTheFirstTick_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("inTheTray");
    QTest::addColumn<QStringList>("items");  // the menu afterwards

    const QStringList later{"mnuRepeticionDato(1)=02/01/2024 09:15 Llamar a Ana"};
    QTest::newRow("15 Minutos") << "cmdTiempo(2)" << false << later;
    QTest::newRow("15 Minutos, window in the tray") << "cmdTiempo(2)" << true << later;
    QTest::newRow("Nunca") << "cmdNunca" << false << QStringList{};
}

void MainWindowTest::aDueReminderIsAskedAboutAtTheFirstTick() {
    QFETCH(QString, button);
    QFETCH(bool, inTheTray);
    QFETCH(QStringList, items);
    startWith(SettingsWithReminders("REP_001=02/01/2024 08:30 Llamar a Ana\r\n"));
    if (inTheTray) {
        m_trayPresent = true;
        QVERIFY(!m_window->close());
        QVERIFY(!m_window->isVisible());
    }
    answerRemindersWith(button);

    runTicks();

    QTRY_COMPARE(m_seenReminders.size(), size_t{1});
    const SeenReminder& seen = m_seenReminders.front();
    QCOMPARE(seen.when, QStringLiteral("02/01/2024 08:30"));
    QCOMPARE(seen.text, QStringLiteral("Llamar a Ana"));
    QVERIFY(seen.active);
    QVERIFY(seen.overTheMainWindow);
    QVERIFY(!seen.overAnotherDialog);
    QTRY_VERIFY(!QString::fromStdString(settingsOnDisk()).contains(QStringLiteral("08:30")));
    const QString onDisk = QString::fromStdString(settingsOnDisk());
    QCOMPARE(onDisk.contains(QStringLiteral("REP_001=02/01/2024 09:15 Llamar a Ana\r\n")), !items.isEmpty());
    QCOMPARE(onDisk.contains(QStringLiteral("Llamar a Ana")), !items.isEmpty());
    QCOMPARE(repetitionItemsShown(), items);
    QCOMPARE(m_window->menuItem(QStringLiteral("mnuRepeticionNinguna"))->isVisible(), items.isEmpty());
    QVERIFY(!m_app->State().RepetitionShowing);
    QCOMPARE(m_window->isVisible(), !inTheTray);

    // The fake clock stands still: nothing else comes due.
    QTest::qWait(30);
    QCOMPARE(m_seenReminders.size(), size_t{1});
    QVERIFY(m_dialogs.Shown().empty());
}

// While a message box, an input box or a dialog of the program is open, the ticks go on but a
// reminder coming due only sets RepetitionShowing (the tray blinks); its dialog comes at the
// first tick after the other one has closed.
void MainWindowTest::aReminderWaitsWhileAnotherDialogIsOpen_data() {
    QTest::addColumn<QString>("other");

    QTest::newRow("message box") << "message box";
    QTest::newRow("input box") << "input box";
    QTest::newRow("schedule dialog") << "schedule dialog";
}

void MainWindowTest::aReminderWaitsWhileAnotherDialogIsOpen() {
    QFETCH(QString, other);
    startWith(SettingsWithReminders("REP_001=02/01/2024 09:05 Llamar a Ana\r\n"));
    answerRemindersWith(QStringLiteral("cmdTiempo(0)"));
    runTicks();
    QTest::qWait(20);
    QVERIFY(!m_app->State().RepetitionShowing);
    QVERIFY(m_seenReminders.empty());

    bool otherWasModal = false;
    bool waited = false;
    size_t askedMeanwhile = 0;
    QTimer::singleShot(0, [&] {
        QDialog* open = OtherOpenDialog();
        otherWasModal = open != nullptr && QApplication::activeModalWidget() == open;
        waited = QTest::qWaitFor([this] { return m_app->State().RepetitionShowing; }, 5000);
        QTest::qWait(30);  // a good many more ticks
        askedMeanwhile = m_seenReminders.size();
        if (open != nullptr) {
            open->reject();
        }
    });
    m_clock.AdvanceMinutes(5);  // due from the next tick on
    vt::QtDialogs onScreen;
    if (other == QLatin1String("message box")) {
        onScreen.Inform("Un aviso cualquiera");
    } else if (other == QLatin1String("input box")) {
        onScreen.Ask({"Un dato:", "", ""});
    } else {
        m_window->menuItem(QStringLiteral("mnuConfig"))->trigger();
    }

    QVERIFY(otherWasModal);
    QVERIFY(waited);
    QCOMPARE(askedMeanwhile, size_t{0});
    QTRY_COMPARE(m_seenReminders.size(), size_t{1});
    QVERIFY(!m_seenReminders.front().overAnotherDialog);
    QCOMPARE(m_seenReminders.front().when, QStringLiteral("02/01/2024 09:05"));
    QTRY_VERIFY(!m_app->State().RepetitionShowing);
    QVERIFY(
        QString::fromStdString(settingsOnDisk()).contains(QStringLiteral("REP_001=02/01/2024 09:10 Llamar a Ana\r\n")));
}

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
