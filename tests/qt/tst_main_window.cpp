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

namespace {
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
}  // namespace

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
                              (dialog->parentWidget() == m_window ? u", over the window"_s : u""_s) +
                              (OtherOpenDialog() != nullptr ? u", over another dialog"_s : u""_s);
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

    // The busy pointer shows over the program's windows only; nested stretches undo in order.
    void busyPointerOnlyWhileAWindowIsShown() {
        QWidget trayLike;  // a window of the program's that is neither the main window nor a dialog
        trayLike.show();
        m_window->SetBusyPointer(true);  // nothing of the main window's on the screen yet
        QVERIFY(QApplication::overrideCursor() == nullptr);
        QVERIFY(vt::test::ShowActive(*m_window));
        m_window->SetBusyPointer(true);
        QVERIFY(QApplication::overrideCursor() != nullptr);
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        m_window->SetBusyPointer(false);
        QVERIFY(QApplication::overrideCursor() == nullptr);
        m_window->SetBusyPointer(false);  // the stretch begun before the window: nothing to undo
        m_window->SetBusyPointer(false);  // one too many is harmless
        QVERIFY(QApplication::overrideCursor() == nullptr);
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

    void startFillsTheWindowAndTheTimerFollows_data() {
        QTest::addColumn<QString>("dateFormat");
        QTest::addColumn<bool>("started");
        QTest::newRow("start went through") << "dd/MM/yyyy" << true;
        QTest::newRow("start stopped at the date check") << "M/d/yy" << false;
    }
    void startFillsTheWindowAndTheTimerFollows() {
        QFETCH(QString, dateFormat);
        QFETCH(bool, started);
        m_rig->locale.format = dateFormat.toStdString();

        QCOMPARE(m_rig->start(SettingsFile("P", "08:00", "14:00", "15:30")), started);
        m_window->startMainTimer();

        QCOMPARE(m_rig->mainTimer()->isActive(), started);
        if (started) {
            QCOMPARE(m_rig->mainTimer()->interval(), 1000);
            // The title, the departure time, the status line, then each box as shown/stored.
            QStringList shown{m_window->windowTitle(), m_window->findChild<QLabel*>(u"lblSalida"_s)->text(),
                              m_window->statusLine()};
            for (int index = 0; index < 3; ++index) {
                shown << m_window->txtHora(index)->text() + u'/' + m_window->txtHora(index)->storedValue();
            }
            QCOMPARE(shown, (QStringList{"VendrakoTimer 3.52", "17:30", "Hora de salida: 17:30", "08:00/08:00",
                                         "14:00/14:00", "15:30/15:30"}));
        }
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

    void leavingABoxWithTabStoresItsTime_data() {
        QTest::addColumn<int>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");  // the line the settings file must then hold
        QTest::addColumn<QString>("departure");
        QTest::newRow("Entrada 2 completes the day") << 2 << u"1530"_s << u"ENTRADA2=15:30"_s << u"17:30"_s;
        QTest::newRow("Entrada 1") << 0 << u"745"_s << u"ENTRADA1=07:45"_s << u"..."_s;
    }
    void leavingABoxWithTabStoresItsTime() {
        QFETCH(int, box);
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        QFETCH(QString, departure);
        startShown(SettingsFile("P", "08:00", "14:00", ""));
        QVERIFY(FocusOn(m_window->txtHora(box)));

        QTest::keyClicks(m_window->txtHora(box), typed);
        QTest::keyClick(m_window->txtHora(box), Qt::Key_Tab);

        QVERIFY(m_rig->settingsOnDisk().contains(stored + u"\r\n"_s));
        QCOMPARE(m_window->lblSalida()->text(), departure);
        // The box goes back to this time on Escape from now on.
        QCOMPARE(m_window->txtHora(box)->storedValue(), stored.section(u'=', 1));
    }

    // Another window of the program taking the focus is leaving the box too: App is told what it
    // holds (here emptied, and so stored); the box keeps the window's focus for the user's return.
    void goingToAnotherWindowIsLeavingTheBox() {
        startShown(SettingsFile("P", "08:00", "14:00", ""));
        QVERIFY(FocusOn(m_window->txtHora(1)));
        QTest::keyClick(m_window->txtHora(1), Qt::Key_Backspace);  // the digits are selected on entering

        QWidget other;
        auto* field = new QLineEdit(&other);
        QVERIFY(vt::test::ShowActive(other));
        QTRY_VERIFY(field->hasFocus());
        QCoreApplication::processEvents();

        QVERIFY(field->hasFocus());
        QVERIFY(m_rig->settingsOnDisk().contains(u"SALIDA1=\r\n"_s));
        QCOMPARE(m_window->focusWidget(), m_window->txtHora(1));
    }

    // On a continuous day the afternoon boxes are out of reach, Tab included.
    void afternoonBoxesAreLockedOnAContinuousDay() {
        startShown(SettingsFile("C", "08:00", "", ""));

        for (int index : {1, 2}) {
            QVERIFY(m_window->txtHora(index)->isReadOnly());
            QCOMPARE(m_window->txtHora(index)->focusPolicy(), Qt::NoFocus);
        }
        QVERIFY(FocusOn(m_window->txtHora(0)));
        QTest::keyClick(m_window->txtHora(0), Qt::Key_Tab);
        QVERIFY(!m_window->txtHora(1)->hasFocus());
    }

    // "Configuración" opens the schedule over the window; what is accepted there is stored and
    // today's boxes follow it: unticking every day turns today into a split day.
    void configurationOpensTheScheduleAndAppliesIt() {
        startShown(SettingsFile("C", "08:00", "", ""));
        QVERIFY(FocusOn(m_window->txtHora(0)));
        QString shown;
        vt::test::WhenModal<vt::FrmConfig>([&shown](vt::FrmConfig& dialog) {
            shown = dialog.windowTitle() + u' ' + dialog.txtHora(1)->text();
            for (int row = 0; row < 7; ++row) {
                dialog.chkContinua(row)->setChecked(false);
            }
            QTest::keyClick(&dialog, Qt::Key_Return);
        });

        m_window->menuItem(u"mnuConfig"_s)->trigger();

        QCOMPARE(shown, u"Configuración 08:00"_s);
        QVERIFY(m_rig->settingsOnDisk().contains(u"MARTES=08:00|P\r\n"_s));
        QVERIFY(!m_window->txtHora(1)->isReadOnly());
        QCOMPARE(m_window->txtHora(1)->focusPolicy(), Qt::StrongFocus);
        // "Entrada 1" kept the focus: the refresh showed its time as the digits being edited.
        QCOMPARE(m_window->focusWidget(), m_window->txtHora(0));
        QCOMPARE(m_window->txtHora(0)->text(), u"0800"_s);
    }

    // A typed or stored text reaches the screen as typed, markup and "&" included: what each
    // widget kind shows, read as Qt reads its text (rich text only when the format says so).
    void userTextIsShownAsTyped_data() {
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QString>("text");
        for (const QString& widget : {u"message box"_s, u"input box"_s, u"departure label"_s, u"tray tip"_s}) {
            for (const QString& text : {u"<b>negrita</b>"_s, u"a & b"_s, u"a &lt; b"_s, u"  <i>dos  blancos</i> "_s}) {
                QTest::addRow("%s: %s", qPrintable(widget), qPrintable(text)) << widget << text;
            }
        }
    }
    void userTextIsShownAsTyped() {
        QFETCH(QString, widget);
        QFETCH(QString, text);
        const auto shown = [](const QString& held, Qt::TextFormat format) {
            if (format == Qt::PlainText || (format == Qt::AutoText && !Qt::mightBeRichText(held))) {
                return held;
            }
            QTextDocument document;
            document.setHtml(held);
            return document.toPlainText();
        };
        QStringList seen;
        const auto readLabel = [&seen, &shown](QDialog& dialog) {
            for (const QLabel* label : dialog.findChildren<QLabel*>()) {
                if (!label->text().isEmpty()) {
                    seen << shown(label->text(), label->textFormat());
                }
            }
        };
        const std::string typed = text.toStdString();
        if (widget == u"message box"_s) {
            vt::test::WhenModal<QMessageBox>(readLabel);
            vt::QtDialogs().Show({typed, vt::MsgIcon::Information, vt::MsgButtons::Ok, "Título", {}});
        } else if (widget == u"input box"_s) {
            vt::test::WhenModal<QInputDialog>(readLabel);
            static_cast<void>(vt::QtDialogs().Ask({typed, "Título", ""}));
        } else if (widget == u"departure label"_s) {
            m_window->ShowDeparture(typed, typed);
            for (const char* name : {"lblSalida", "statusLine"}) {
                const auto* label = m_window->findChild<QLabel*>(QString::fromUtf8(name));
                seen << shown(label->text(), label->textFormat());
            }
        } else {
            m_rig->tray.setTooltip(text);
            seen << shown(m_rig->tray.trayIcon()->toolTip(), Qt::AutoText);
        }
        QCOMPARE(seen, QStringList(widget == u"departure label"_s ? 2 : 1, text));
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

        m_window->ShowRepetitionMenu({});

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

    // While another modal window is open the ticks go on, but a reminder coming due only sets
    // RepetitionShowing (the tray blinks); its dialog comes once the other one has closed.
    void aReminderWaitsWhileAnotherDialogIsOpen() {
        startShown(SettingsFile("P", "08:00", "", "", "REP_001=02/01/2024 09:05 Llamar a Ana\r\n"));
        answerRemindersWith(u"cmdTiempo(0)"_s);
        runTicks();
        bool waited = false;
        qsizetype askedMeanwhile = 1;
        QTimer::singleShot(0, [&] {
            waited = QTest::qWaitFor([this] { return m_rig->app.State().RepetitionShowing; }, 5000);
            QTest::qWait(30);  // a good many more ticks
            askedMeanwhile = m_seen.size();
            if (QDialog* open = OtherOpenDialog()) {
                open->reject();
            }
        });
        m_rig->clock.AdvanceMinutes(5);  // due from the next tick on

        vt::QtDialogs().Inform("Un aviso cualquiera");

        QVERIFY(waited);
        QCOMPARE(askedMeanwhile, 0);
        QTRY_COMPARE(m_seen, QStringList{"02/01/2024 09:05, active, over the window"});
        QTRY_VERIFY(m_rig->settingsOnDisk().contains(u"REP_001=02/01/2024 09:10 Llamar a Ana\r\n"_s));
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
