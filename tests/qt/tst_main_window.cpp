// The main window's wiring: its menus, the clock-in boxes, the main timer, the closing paths and
// the repeat-later dialog coming up from a tick. What App decides is tested in the core; here
// only what reaches App and what comes back.
#include <filesystem>

#include "agenda/repeat_dialog.h"
#include "platform/qt_dialogs.h"
#include "qt_test_support.h"
#include "shell/config_dialog.h"

using vt::FrmReloj;
using vt::test::FocusOn;
using vt::test::MenuRows;
using vt::test::SettingsFile;

class MainWindowTest : public QObject {
    Q_OBJECT

    std::unique_ptr<vt::test::AppRig> m_rig;
    FrmReloj* m_window = nullptr;
    std::unique_ptr<QTimer> m_reminderWatch;
    bool m_answering = false;
    // What each repeat-later dialog showed, and how, when it came up.
    QStringList m_seen;

    void startShown(const std::string& settings) {
        QVERIFY(m_rig->start(settings));
        QVERIFY(vt::test::ShowActive(*m_window));
    }
    bool backupExists() const { return std::filesystem::exists(m_rig->folder.Path("Backup")); }
    // The main timer running every millisecond rather than every second.
    void runTicks() {
        m_window->startMainTimer();
        QVERIFY(m_rig->mainTimer()->isActive());
        m_rig->mainTimer()->setInterval(1);
    }
    // "name=caption" of each repetition item after the hidden template, as the menu lists them
    // once it is opened (they are made only then).
    QStringList repetitionItems() const {
        QMenu* menu = m_window->menu(u"mnuRepeticion"_s);
        menu->popup(QPoint());
        menu->hide();
        return MenuRows(*menu).mid(4);
    }

    // From now on every repeat-later dialog that comes up is noted and answered with this button.
    // The dialog is modal and the tick waits inside it, so the watch runs in the dialog's loop.
    void answerRemindersWith(const QString& button) {
        m_reminderWatch = std::make_unique<QTimer>();
        connect(m_reminderWatch.get(), &QTimer::timeout, this, [this, button] {
            auto* dialog = qobject_cast<vt::FrmRepetir*>(QApplication::activeModalWidget());
            if (dialog != nullptr && !m_answering) {
                m_answering = true;
                m_seen << dialog->lblFecha()->text() + (QTest::qWaitForWindowActive(dialog) ? u", active"_s : u""_s) +
                              (dialog->parentWidget() == m_window ? u", over the window"_s : u""_s);
                QTest::mouseClick(dialog->findChild<QPushButton*>(button), Qt::LeftButton);
                m_answering = false;
            }
        });
        m_reminderWatch->start(5);
    }

private slots:
    void init() {
        m_rig = std::make_unique<vt::test::AppRig>();
        m_window = &m_rig->window;
    }
    void cleanup() {
        m_reminderWatch.reset();
        m_seen.clear();
        m_rig.reset();
    }

    // Every menu as later features will find it; only "Configuración" works so far.
    void menus() {
        QStringList bar;
        for (const QAction* action : m_window->menuBar()->actions()) {
            bar << action->menu()->objectName() + u'=' + action->text();
        }
        QCOMPARE(bar, (QStringList{"mnuOpciones=Opciones", "mnuAlarma=Alarmas", "mnuRepeticion=Repeticiones",
                                   "mnuAccesos=Accesos"}));
        QCOMPARE(MenuRows(*m_window->menu(u"mnuOpciones"_s)),
                 (QStringList{"mnuConfig=Configuración+", "-", "mnuTareasTareas=Tareas+",
                              "mnuTareaResumen=Resumen de tareas+", "-", "mnuLink=Arrancar al iniciar Windows+", "-",
                              "mnuListadoFechas=Listado por fechas+", "mnuCrearCalendario=Crear calendario+", "-",
                              "mnuHelp=Ayuda+", "mnuAbout=Acerca de ...+", "mnuHistorico=Histórico de jornadas…+"}));
        QCOMPARE(MenuRows(*m_window->menu(u"mnuAlarma"_s)),
                 (QStringList{"mnuAlarmaNueva=Nueva+", "mnuAlarmaMostrar=Mostrar todas+",
                              "mnuAlarmaInforme=Informe de proximidad+", "mnuAlarmaExportar=Exportar a iCalendar…+",
                              "mnuAlarmaImportar=Importar de iCalendar…+"}));
        QCOMPARE(MenuRows(*m_window->menu(u"mnuRepeticion"_s)),
                 (QStringList{"mnuRepeticionNueva=Nueva+", "-", "mnuRepeticionNinguna=(ninguna)",
                              "mnuRepeticionDato=(texto)"}));
        QCOMPARE(MenuRows(*m_window->menu(u"mnuAccesos"_s)),
                 (QStringList{"mnuAccesosHoy=Accesos Hoy+", "mnuAccesosLog=Carpeta Logs de Accesos+",
                              "mnuAccesosWin=Carpeta Archivos Recientes+"}));
        // The calendar day's menu, out of the menu bar.
        QCOMPARE(m_window->popUpMenu()->title(), u"PopUp"_s);
        QCOMPARE(MenuRows(*m_window->menu(u"mnuPopUp"_s)),
                 (QStringList{"mnuPopUpRepeticion=Añadir Repetición+", "mnuPopUpAlarma=Añadir Alarma+", "-",
                              "mnuPopUpDetalle=(...)"}));
    }

    // The closing steps (seen by the backup they make) run once, however the program ends, and
    // never after a failed date check; with a tray the close button only puts the window there.
    void closingPathsRunTheClosingStepsOnce_data() {
        QTest::addColumn<bool>("trayPresent");
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("status");  // -1: the program goes on
        QTest::newRow("close button, no tray") << false << u"close"_s << 0;
        QTest::newRow("session ending") << false << u"session"_s << 0;
        QTest::newRow("Salir in the tray") << true << u"mExit"_s << 0;
        QTest::newRow("close button with a tray") << true << u"close"_s << -1;
        QTest::newRow("date format changed, then a tick") << false << u"tick"_s << 1;
    }
    void closingPathsRunTheClosingStepsOnce() {
        QFETCH(bool, trayPresent);
        QFETCH(QString, how);
        QFETCH(int, status);
        m_rig->trayPresent = trayPresent;
        QVERIFY(m_rig->start());
        m_window->startMainTimer();
        m_window->show();
        QSignalSpy ended(m_window, &FrmReloj::programEnded);
        const auto endBy = [this, &ended, status](const QString& way) {
            if (way == u"close"_s) {
                m_window->close();
            } else if (way == u"session"_s) {
                m_window->endSession();
                QCOMPARE(m_window->finishEnding(7), status);  // what main does once the loop is over
            } else if (way == u"mExit"_s) {
                m_rig->tray.menuItem(u"mExit"_s)->trigger();
            } else {
                m_rig->locale.format = "yyyy-MM-dd";
                m_rig->mainTimer()->setInterval(1);
                static_cast<void>(QTest::qWaitFor([&ended] { return !ended.isEmpty(); }));  // checked below
            }
        };

        endBy(how);

        QCOMPARE(ended.count(), status < 0 ? 0 : 1);
        QCOMPARE(backupExists(), status == 0);
        QCOMPARE(m_rig->mainTimer()->isActive(), status < 0);
        if (status < 0) {
            QVERIFY(!m_window->isVisible());
            return;
        }
        QCOMPARE(ended.at(0).at(0).toInt(), status);
        QVERIFY(!m_rig->tray.findChild<QTimer*>(u"TmrFlash"_s)->isActive());
        std::filesystem::remove_all(m_rig->folder.Path("Backup"));
        for (const QString& again : {u"close"_s, u"session"_s, u"mExit"_s}) {
            endBy(again);
        }
        QVERIFY(!backupExists());
        QCOMPARE(ended.constLast().at(0).toInt(), status);
    }

    // One item per reminder after the hidden template, "&" shown as itself; a rebuild replaces
    // the items, and "(ninguna)" shows only when there is none. Each item opens its reminder.
    void repetitionMenuIsRebuilt() {
        startShown(SettingsFile("P", "08:00", "", "",
                                "REP_001=15/03/2024 10:00 Pan & vino\r\nREP_002=14/03/2024 09:00 Llamar a Ana\r\n"));
        QCOMPARE(repetitionItems(), (QStringList{"mnuRepeticionDato(1)=14/03/2024 09:00 Llamar a Ana+",
                                                 "mnuRepeticionDato(2)=15/03/2024 10:00 Pan && vino+"}));
        QAction* none = m_window->menuItem(u"mnuRepeticionNinguna"_s);
        QVERIFY(!none->isVisible());
        QVERIFY(!m_window->repetitionItems().front()->isVisible());
        const QPointer<QAction> old = m_window->repetitionItems().at(1);

        m_rig->app.State().settings.Repetitions.Clear();
        m_window->RepetitionMenuChanged();

        QVERIFY(repetitionItems().isEmpty());
        QVERIFY(old.isNull());
        QCOMPARE(m_window->repetitionItems().size(), 1);
        QVERIFY(none->isVisible());
    }

    // A reminder that fell due before the start is asked about at the first tick, over the main
    // window, also while that window is hidden in the tray; the answer is stored at once.
    void aDueReminderIsAskedAboutAtTheFirstTick_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("inTheTray");
        QTest::addColumn<QStringList>("items");  // the menu afterwards
        QTest::newRow("15 Minutos, window in the tray")
            << u"cmdTiempo(2)"_s << true << QStringList{"mnuRepeticionDato(1)=02/01/2024 09:15 Llamar a Ana+"};
        QTest::newRow("Nunca") << u"cmdNunca"_s << false << QStringList{};
    }
    void aDueReminderIsAskedAboutAtTheFirstTick() {
        QFETCH(QString, button);
        QFETCH(bool, inTheTray);
        QFETCH(QStringList, items);
        startShown(SettingsFile("P", "08:00", "", "", "REP_001=02/01/2024 08:30 Llamar a Ana\r\n"));
        if (inTheTray) {
            m_rig->trayPresent = true;
            QVERIFY(!m_window->close());
        }
        answerRemindersWith(button);

        runTicks();

        QTRY_COMPARE(m_seen, QStringList{"02/01/2024 08:30, active, over the window"});
        QTRY_VERIFY(!m_rig->settingsOnDisk().contains(u"08:30"_s));
        QCOMPARE(m_rig->settingsOnDisk().contains(u"Llamar a Ana"_s), !items.isEmpty());
        QCOMPARE(repetitionItems(), items);
        QCOMPARE(m_window->menuItem(u"mnuRepeticionNinguna"_s)->isVisible(), items.isEmpty());
        QVERIFY(!m_rig->app.State().RepetitionShowing);
        QCOMPARE(m_window->isVisible(), !inTheTray);
        // The fake clock stands still: nothing else comes due.
        QTest::qWait(30);
        QCOMPARE(m_seen.size(), 1);
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
