// The main window's wiring: its menus as later features will find them, the main timer and
// the closing paths. What Start, Tick and Shutdown do is App's and is tested in the core.
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <memory>

#include "fake_clock.h"
#include "fake_ports.h"
#include "scripted_dialogs.h"
#include "shell/app.h"
#include "shell/main_window.h"
#include "temp_app_folder.h"

using vt::FrmReloj;

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

private:
    bool backupExists() const { return std::filesystem::exists(m_folder->Path("Backup")); }
    void forgetBackup() const { std::filesystem::remove_all(m_folder->Path("Backup")); }
    QTimer* mainTimer() const { return m_window->findChild<QTimer*>(QStringLiteral("timPincipal")); }

    std::unique_ptr<vt::test::TempAppFolder> m_folder;
    vt::test::FakeClock m_clock;
    vt::test::ScriptedDialogs m_dialogs;
    vt::test::FakeLocaleInfo m_locale;
    vt::test::FakeInstanceLock m_lock;
    std::unique_ptr<FrmReloj> m_window;
    std::unique_ptr<vt::App> m_app;
};

void MainWindowTest::init() {
    m_folder = std::make_unique<vt::test::TempAppFolder>();
    m_dialogs = {};
    m_locale.format = "dd/MM/yyyy";
    m_window = std::make_unique<FrmReloj>();
    m_app = std::make_unique<vt::App>(vt::AppPorts{m_clock, m_dialogs, m_locale, m_lock, m_folder->ExecutablePath()},
                                      *m_window);
    m_window->setApp(*m_app);
}

void MainWindowTest::cleanup() {
    m_window.reset();
    m_app.reset();
    m_folder.reset();
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

    QStringList actual;
    for (QAction* action : found->actions()) {
        if (action->isSeparator()) {
            actual << QStringLiteral("-");
            continue;
        }
        actual << action->objectName() + QLatin1Char('=') + action->text();
        // Nothing can be chosen until the feature behind the item is there.
        QVERIFY2(!action->isEnabled(), qPrintable(action->objectName()));
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

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
