// The tray window's wiring: its menu, its two properties, the pictures TmrFlash puts in the
// tray, the mouse events and what they do to the main window. Which picture and tip belong to
// which state is the core's rule (TrayModel) and is tested there; here only that the tick uses it.
#include "qt_test_support.h"
#include "store/app_state.h"

using vt::FrmSysTray;
using vt::TrayImage;

Q_DECLARE_METATYPE(vt::TrayImage)

class TrayIconTest : public QObject {
    Q_OBJECT

    vt::test::ScriptedDialogs m_dialogs;
    bool m_trayPresent = false;
    vt::AppState m_state;
    std::unique_ptr<FrmSysTray> m_tray;
    std::unique_ptr<vt::FrmReloj> m_window;

    QTimer* flashTimer() const { return m_tray->findChild<QTimer*>(u"TmrFlash"_s); }
    // Images compare by their pixels whatever format the icon engine hands back.
    static QImage Pixels(const QImage& image) { return image.convertToFormat(QImage::Format_ARGB32); }
    QImage shown() const { return Pixels(m_tray->trayIcon()->icon().pixmap(16, 16).toImage()); }
    QImage picture(TrayImage image) const { return Pixels(m_tray->picture(image).toImage()); }
    // The main window "hidden", "normal", "minimised" or "maximised".
    void showWindowAs(const QString& state) {
        const QHash<QString, void (QWidget::*)()> show{{u"normal"_s, &QWidget::showNormal},
                                                       {u"minimised"_s, &QWidget::showMinimized},
                                                       {u"maximised"_s, &QWidget::showMaximized}};
        if (show.contains(state)) {
            (m_window.get()->*show.value(state))();
        }
    }

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
        QCOMPARE(
            vt::test::MenuRows(*menu),
            (QStringList{"mAbout=About tst_tray_icon+", "mSep1-", "mRestore=Mostrar aplicación+",
                         "mnuInforme=Informe de proximidad+", "mnuAccesos=Accesos de hoy+", "mSep4-",
                         "mnuTareaMarcar=TAREAS+", "mnuTareaResumen=Resumen de tareas+", "mSep3-",
                         "mnuMinimizar=Minimizar+", "mSep2-", "mExit=Salir+", "mnuHistorico=Histórico de jornadas…+"}));
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

    void propertiesAreTheTipFieldAndTheTimers() {
        QVERIFY(m_tray->setProperty("Tooltip", u"Hola"_s));
        QCOMPARE(m_tray->property("Tooltip").toString(), u"Hola"_s + QChar(u'\0') + QString(59, u' '));
        QCOMPARE(m_tray->property("Interval").toInt(), 1000);
        QVERIFY(m_tray->setProperty("Interval", 250));
        QCOMPARE(flashTimer()->interval(), 250);
    }

    void ticksDrawTheStageAndTheTask_data() {
        QTest::addColumn<int>("stage");
        QTest::addColumn<bool>("repetitionShowing");
        QTest::addColumn<int>("ticks");
        QTest::addColumn<TrayImage>("image");
        QTest::newRow("5 continuous") << 5 << false << 1 << TrayImage::BolaB2;
        QTest::newRow("6, second tick") << 6 << false << 2 << TrayImage::BolaNegra;
        QTest::newRow("reminder waiting, second tick") << 11 << true << 2 << TrayImage::BolaHelp;
    }
    void ticksDrawTheStageAndTheTask() {
        QFETCH(int, stage);
        QFETCH(bool, repetitionShowing);
        QFETCH(int, ticks);
        QFETCH(TrayImage, image);
        m_tray->Load();
        m_state.DepartureStage = stage;
        m_state.TodayMode = "C";
        m_state.RepetitionShowing = repetitionShowing;
        m_state.TareaActual = "Informe";
        int seen = 0;
        connect(m_tray.get(), &FrmSysTray::iconChanged, this, [&seen, ticks, this] {
            if (++seen == ticks) {
                flashTimer()->stop();
            }
        });

        m_tray->setInterval(1);

        QTRY_COMPARE(seen, ticks);

        QCOMPARE(shown(), picture(image));
        QCOMPARE(m_tray->trayIcon()->toolTip(), u"Última tarea: Informe"_s);
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

    // "Mostrar aplicación" is offered unless the window is there to see, and brings it back in
    // front: a window shown in full stays so, anything else comes back in its normal size.
    void restoreIsOfferedForAWindowNotShownAndBringsItBack_data() {
        QTest::addColumn<QString>("window");
        QTest::addColumn<bool>("offered");
        QTest::newRow("hidden in the tray") << u"hidden"_s << true;
        QTest::newRow("minimised") << u"minimised"_s << true;
        QTest::newRow("shown normally") << u"normal"_s << false;
        QTest::newRow("maximised counts as shown") << u"maximised"_s << false;
    }
    void restoreIsOfferedForAWindowNotShownAndBringsItBack() {
        QFETCH(QString, window);
        QFETCH(bool, offered);
        showWindowAs(window);  // with no tray, so that a minimised window stays so
        QAction* restore = m_tray->menuItem(u"mRestore"_s);
        restore->setEnabled(!offered);

        emit m_tray->popupMenu()->aboutToShow();
        QCOMPARE(restore->isEnabled(), offered);
        restore->setEnabled(true);
        restore->trigger();

        QVERIFY(m_window->isVisible() && !m_window->isMinimized());
        QCOMPARE(m_window->isMaximized(), window == u"maximised"_s);
        QTRY_VERIFY(m_window->isActiveWindow());
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

        byMenu ? m_tray->menuItem(u"mnuMinimizar"_s)->trigger() : m_window->showMinimized();

        QTRY_VERIFY(m_window->isMinimized() || !m_window->isVisible());
        QCoreApplication::processEvents();
        // With nowhere to bring it back from, the window stays on the task bar.
        QCOMPARE(m_window->isVisible(), !trayPresent);
    }
    // A fired reminder also goes to the desktop's notifications, which come out of the icon in
    // a tray: not before it is put there, nor once the tray has gone.
    void notificationsComeOnlyFromAnIconInATray() {
        QSignalSpy notified(m_tray.get(), &FrmSysTray::notified);
        m_trayPresent = true;
        m_tray->Notify("Repetición", "antes");
        m_tray->Load();
        m_tray->Notify("Repetición", "entre la carga y el bucle de eventos");
        QCoreApplication::processEvents();
        m_tray->Notify("Repetición", "02/01/2024 08:30  Llamar a Ana");
        m_trayPresent = false;
        m_tray->Notify("Repetición", "después");

        QCOMPARE(notified.count(), 1);
        QCOMPARE(notified.at(0).at(1).toString(), u"02/01/2024 08:30  Llamar a Ana"_s);
    }
};

QTEST_MAIN(TrayIconTest)
#include "tst_tray_icon.moc"
