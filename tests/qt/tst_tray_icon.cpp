// The tray window's wiring: its menu, its tip, the mouse events and what they do to the main
// window. Which picture and tip belong to which state is the core's rule (TrayModel).
#include "qt_test_support.h"
#include "store/app_state.h"

using vt::FrmSysTray;

class TrayIconTest : public QObject {
    Q_OBJECT

    vt::test::ScriptedDialogs m_dialogs;
    bool m_trayPresent = false;
    vt::AppState m_state;
    std::unique_ptr<FrmSysTray> m_tray;
    std::unique_ptr<vt::FrmReloj> m_window;

    QTimer* flashTimer() const { return m_tray->findChild<QTimer*>(u"TmrFlash"_s); }
private slots:
    void init() {
        m_trayPresent = false;
        m_state = {};
        m_tray = std::make_unique<FrmSysTray>([this] { return m_trayPresent; });
        m_window = std::make_unique<vt::FrmReloj>(m_dialogs);
        m_window->setTray(*m_tray);
        m_tray->setMainWindow(*m_window);
        m_tray->setState(m_state);
    }
    void cleanup() {
        m_window.reset();
        m_tray.reset();
    }

    void menuHoldsTheItemsInOrder() {
        m_tray->Load();
        QMenu* menu = m_tray->popupMenu();
        QCOMPARE(menu->objectName(), u"mPopupMenu"_s);
        QCOMPARE(m_tray->trayIcon()->contextMenu(), menu);
        QCOMPARE(vt::test::MenuRows(*menu),
                 (QStringList{"mAbout=About tst_tray_icon+", "mSep1-", "mRestore=Mostrar aplicación+",
                              "mnuInforme=Informe de proximidad+", "mnuAccesos=Accesos de hoy+", "mSep4-",
                              "mnuTareaMarcar=TAREAS+", "mnuTareaResumen=Resumen de tareas+", "mSep3-",
                              "mnuMinimizar=Minimizar+", "mSep2-", "mExit=Salir+"}));
    }

    void loadPutsTheTitleAndStartsTheTimer_data() {
        QTest::addColumn<bool>("trayPresent");
        QTest::newRow("desktop with a tray") << true;
        QTest::newRow("desktop without a tray") << false;
    }
    void loadPutsTheTitleAndStartsTheTimer() {
        QFETCH(bool, trayPresent);
        m_trayPresent = trayPresent;
        QVERIFY(!flashTimer()->isActive());

        m_tray->Load();

        QVERIFY(flashTimer()->isActive());
        QCOMPARE(flashTimer()->interval(), 1000);
        // The icon goes into the tray when the event loop next runs, not inside Load.
        QVERIFY(!m_tray->trayIcon()->isVisible());
        QCoreApplication::processEvents();
        QCOMPARE(m_tray->trayIcon()->toolTip(), u"VendrakoTimer"_s);
        // Where there is no tray the icon is not put anywhere, but the timer runs all the same.
        QCOMPARE(m_tray->trayIcon()->isVisible(), trayPresent);
    }

    // The program ends before its first pass through the event loop (a settings file that
    // cannot be read): the icon must not turn up in the tray after the end.
    void anIconUnloadedBeforeTheEventLoopStaysOut() {
        m_trayPresent = true;
        m_tray->Load();
        m_tray->unload();
        QCoreApplication::processEvents();
        QVERIFY(!m_tray->trayIcon()->isVisible());
        QVERIFY(!flashTimer()->isActive());
    }

    // Each activation raises its name; only the double click brings the window up, and the
    // right button is left to the menu.
    void activationsRaiseTheirNames() {
        QSignalSpy events(m_tray.get(), &FrmSysTray::mouseEvent);
        for (auto reason : {QSystemTrayIcon::Trigger, QSystemTrayIcon::Context, QSystemTrayIcon::MiddleClick,
                            QSystemTrayIcon::Unknown, QSystemTrayIcon::DoubleClick}) {
            QVERIFY(!m_window->isVisible());
            emit m_tray->trayIcon()->activated(reason);
        }
        QStringList names;
        for (const QList<QVariant>& event : events) {
            names << event.at(0).toString();
        }
        QCOMPARE(names, (QStringList{"LBUTTONUP", "RBUTTONUP", "MBUTTONUP", "OTHER....: 0", "LBUTTONDBLCLK"}));
        QVERIFY(m_window->isVisible());
    }

    void minimisingGoesToTheTrayOnlyWhereThereIsOne_data() {
        QTest::addColumn<bool>("byMenu");
        QTest::addColumn<bool>("trayPresent");
        QTest::newRow("window minimised, tray") << false << true;
        QTest::newRow("window minimised, no tray") << false << false;
        QTest::newRow("Minimizar, no tray") << true << false;
    }
    void minimisingGoesToTheTrayOnlyWhereThereIsOne() {
        QFETCH(bool, byMenu);
        QFETCH(bool, trayPresent);
        m_trayPresent = trayPresent;
        QVERIFY(vt::test::ShowActive(*m_window));

        if (byMenu) {
            m_tray->menuItem(u"mnuMinimizar"_s)->trigger();
        } else {
            m_window->showMinimized();
        }

        QTRY_VERIFY(m_window->isMinimized() || !m_window->isVisible());
        QCoreApplication::processEvents();
        // With nowhere to bring it back from, the window stays on the task bar.
        QCOMPARE(m_window->isVisible(), !trayPresent);
    }
};

QTEST_MAIN(TrayIconTest)
#include "tst_tray_icon.moc"
