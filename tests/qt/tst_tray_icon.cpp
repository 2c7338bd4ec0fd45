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
    QImage picture(TrayImage image) const { return Pixels(m_tray->picture(image).toImage()); }

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
};

QTEST_MAIN(TrayIconTest)
#include "tst_tray_icon.moc"
