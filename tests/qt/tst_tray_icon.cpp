// The tray window's wiring: its menu, its two properties, the pictures TmrFlash puts in the
// tray, the mouse events and what they do to the main window. Which picture belongs to which
// stage is the core's rule (TrayModel) and is tested there; here only that the tick uses it.
#include <QAction>
#include <QImage>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <memory>
#include <string>

#include "scripted_dialogs.h"
#include "shell/main_window.h"
#include "shell/tray_icon.h"
#include "store/app_state.h"

using vt::FrmReloj;
using vt::FrmSysTray;
using vt::TrayImage;

Q_DECLARE_METATYPE(vt::TrayImage)

class TrayIconTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void menuHoldsTheItemsInOrder();
    void loadPutsTheTitleAndStartsTheTimer_data();
    void loadPutsTheTitleAndStartsTheTimer();
    void tooltipPropertyIsTheWholeTipField_data();
    void tooltipPropertyIsTheWholeTipField();
    void aLongTaskFillsTheTipWithoutItsNul();
    void intervalPropertyIsTheTimers();
    void ticksDrawTheStage_data();
    void ticksDrawTheStage();
    void aStageOutOfRangeLeavesThePicture();
    void picturesAreAllDifferent();
    void portionsShowTheClockInsMade_data();
    void portionsShowTheClockInsMade();
    void activationsRaiseTheirNames_data();
    void activationsRaiseTheirNames();
    void showingBringsTheWindowBack_data();
    void showingBringsTheWindowBack();
    void restoreIsOfferedOnlyForAWindowNotShown_data();
    void restoreIsOfferedOnlyForAWindowNotShown();
    void minimisingGoesToTheTrayOnlyWhereThereIsOne_data();
    void minimisingGoesToTheTrayOnlyWhereThereIsOne();
    void closeIsCancelledOnlyForTheUserWithATray_data();
    void closeIsCancelledOnlyForTheUserWithATray();
    void notificationsComeOnlyFromAnIconInATray_data();
    void notificationsComeOnlyFromAnIconInATray();

private:
    QTimer* flashTimer() const { return m_tray->findChild<QTimer*>(QStringLiteral("TmrFlash")); }
    // Lets TmrFlash fire this many times, then stops it.
    void tick(int times);
    QImage shownPicture() const { return m_tray->trayIcon()->icon().pixmap(16, 16).toImage(); }
    QImage picture(TrayImage image) const { return m_tray->picture(image).toImage(); }

    std::unique_ptr<vt::test::ScriptedDialogs> m_dialogs;
    bool m_trayPresent = false;
    vt::AppState m_state;
    std::unique_ptr<FrmSysTray> m_tray;
    std::unique_ptr<FrmReloj> m_window;
};

namespace {
// Images compare by their pixels whatever format the icon engine hands back.
QImage Pixels(const QImage& image) {
    return image.convertToFormat(QImage::Format_ARGB32);
}

bool IsRed(QRgb pixel) {
    return qRed(pixel) > 180 && qGreen(pixel) < 80 && qBlue(pixel) < 80;
}

bool IsGrey(QRgb pixel) {
    return qRed(pixel) > 120 && qAbs(qRed(pixel) - qGreen(pixel)) < 10 && qAbs(qRed(pixel) - qBlue(pixel)) < 10;
}

bool ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}
}  // namespace

void TrayIconTest::init() {
    m_dialogs = std::make_unique<vt::test::ScriptedDialogs>();
    m_trayPresent = false;
    m_state = {};
    m_tray = std::make_unique<FrmSysTray>([this] { return m_trayPresent; });
    m_window = std::make_unique<FrmReloj>(*m_dialogs);
    m_window->setTray(*m_tray);
    m_tray->setMainWindow(*m_window);
    m_tray->setState(m_state);
}

void TrayIconTest::cleanup() {
    m_window.reset();
    m_tray.reset();
    m_dialogs.reset();
}

void TrayIconTest::tick(int times) {
    int seen = 0;
    QTimer* timer = flashTimer();
    auto counting = connect(m_tray.get(), &FrmSysTray::iconChanged, this, [&seen, times, timer] {
        if (++seen == times) {
            timer->stop();
        }
    });
    m_tray->setInterval(1);
    timer->start();
    QTRY_COMPARE(seen, times);
    disconnect(counting);
}

void TrayIconTest::menuHoldsTheItemsInOrder() {
    m_tray->Load();
    QMenu* menu = m_tray->popupMenu();
    QCOMPARE(menu->objectName(), QStringLiteral("mPopupMenu"));
    QCOMPARE(m_tray->trayIcon()->contextMenu(), menu);

    // "name=caption", "name=-" for a separator; "+" after the caption when it can be chosen.
    QStringList actual;
    for (QAction* action : menu->actions()) {
        const QString caption = action->isSeparator() ? QStringLiteral("-") : action->text();
        actual << action->objectName() + QLatin1Char('=') + caption +
                      (action->isEnabled() && !action->isSeparator() ? QStringLiteral("+") : QString());
        QCOMPARE(m_tray->menuItem(action->objectName()), action);
    }
    QCOMPARE(actual, (QStringList{"mAbout=About tst_tray_icon", "mSep1=-", "mRestore=Mostrar aplicación+",
                                  "mnuInforme=Informe de proximidad", "mnuAccesos=Accesos de hoy", "mSep4=-",
                                  "mnuTareaMarcar=TAREAS", "mnuTareaResumen=Resumen de tareas", "mSep3=-",
                                  "mnuMinimizar=Minimizar+", "mSep2=-", "mExit=Salir+"}));
}

void TrayIconTest::loadPutsTheTitleAndStartsTheTimer_data() {
    QTest::addColumn<bool>("trayPresent");

    QTest::newRow("desktop with a tray") << true;
    QTest::newRow("desktop without a tray") << false;
}

void TrayIconTest::loadPutsTheTitleAndStartsTheTimer() {
    QFETCH(bool, trayPresent);
    m_trayPresent = trayPresent;
    QCOMPARE(m_tray->objectName(), QStringLiteral("FrmSysTray"));
    QVERIFY(!flashTimer()->isActive());

    m_tray->Load();

    QCOMPARE(m_tray->trayIcon()->toolTip(), QStringLiteral("VendrakoTimer"));
    QCOMPARE(Pixels(shownPicture()), Pixels(picture(TrayImage::BolaNegra)));
    QVERIFY(flashTimer()->isActive());
    QCOMPARE(flashTimer()->interval(), 1000);
    // Where there is no tray the icon is not put anywhere, but the timer runs all the same.
    QCOMPARE(m_tray->trayIcon()->isVisible(), trayPresent);
}

void TrayIconTest::tooltipPropertyIsTheWholeTipField_data() {
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("read");

    const QString sixtyFour(64, QLatin1Char('x'));
    QTest::newRow("short text, its NUL, then blanks")
        << "Hola" << QStringLiteral("Hola") + QChar(u'\0') + QString(59, QLatin1Char(' '));
    QTest::newRow("63 characters leave room for the NUL only")
        << QString(63, QLatin1Char('x')) << QString(63, QLatin1Char('x')) + QChar(u'\0');
    QTest::newRow("64 characters lose the NUL") << sixtyFour << sixtyFour;
    QTest::newRow("longer text is cut") << sixtyFour + QStringLiteral("yz") << sixtyFour;
    QTest::newRow("characters, not bytes") << QString(63, QChar(u'ñ')) << QString(63, QChar(u'ñ')) + QChar(u'\0');
}

void TrayIconTest::tooltipPropertyIsTheWholeTipField() {
    QFETCH(QString, written);
    QFETCH(QString, read);

    QVERIFY(m_tray->setProperty("Tooltip", written));

    const QString field = m_tray->property("Tooltip").toString();
    QCOMPARE(field.size(), 64);
    QCOMPARE(field, read);
}

// "Última tarea: " is 14 characters: a 50-character task fills the 64 and leaves no NUL.
void TrayIconTest::aLongTaskFillsTheTipWithoutItsNul() {
    const QString task(50, QLatin1Char('t'));
    m_state.TareaActual = task.toStdString();

    tick(1);

    const QString expected = QStringLiteral("Última tarea: ") + task;
    QCOMPARE(m_tray->property("Tooltip").toString(), expected);
    QVERIFY(!m_tray->property("Tooltip").toString().contains(QChar(u'\0')));
    QCOMPARE(m_tray->trayIcon()->toolTip(), expected);

    m_state.TareaActual.clear();
    tick(1);
    QCOMPARE(m_tray->trayIcon()->toolTip(), QStringLiteral("No hay ninguna tarea marcada."));
}

void TrayIconTest::intervalPropertyIsTheTimers() {
    QCOMPARE(m_tray->property("Interval").toInt(), 1000);
    QVERIFY(m_tray->setProperty("Interval", 250));
    QCOMPARE(flashTimer()->interval(), 250);
    flashTimer()->setInterval(500);
    QCOMPARE(m_tray->property("Interval").toInt(), 500);
}

void TrayIconTest::ticksDrawTheStage_data() {
    QTest::addColumn<int>("stage");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("repetitionShowing");
    QTest::addColumn<int>("ticks");
    QTest::addColumn<TrayImage>("shown");

    QTest::newRow("0 entries wrong") << 0 << "P" << false << 1 << TrayImage::BolaHelp;
    QTest::newRow("1 continuous, no arrival") << 1 << "C" << false << 1 << TrayImage::BolaB1;
    QTest::newRow("2 split, no arrival") << 2 << "P" << false << 1 << TrayImage::BolaA1;
    QTest::newRow("3 split, no break") << 3 << "P" << false << 1 << TrayImage::BolaA2;
    QTest::newRow("4 split, no return") << 4 << "P" << false << 1 << TrayImage::BolaA3;
    QTest::newRow("5 continuous") << 5 << "C" << false << 1 << TrayImage::BolaB2;
    QTest::newRow("5 split") << 5 << "P" << false << 1 << TrayImage::BolaA4;
    QTest::newRow("6 first tick") << 6 << "P" << false << 1 << TrayImage::BolaRoja;
    QTest::newRow("6 second tick") << 6 << "P" << false << 2 << TrayImage::BolaNegra;
    QTest::newRow("7") << 7 << "P" << false << 2 << TrayImage::BolaRoja;
    QTest::newRow("8 second tick") << 8 << "P" << false << 2 << TrayImage::BolaNegra;
    QTest::newRow("9") << 9 << "P" << false << 2 << TrayImage::BolaAmarilla;
    QTest::newRow("10 first tick") << 10 << "P" << false << 1 << TrayImage::BolaVerde;
    QTest::newRow("11") << 11 << "P" << false << 2 << TrayImage::BolaVerde;
    QTest::newRow("reminder waiting, first tick") << 11 << "P" << true << 1 << TrayImage::BolaNegra;
    QTest::newRow("reminder waiting, second tick") << 11 << "P" << true << 2 << TrayImage::BolaHelp;
}

void TrayIconTest::ticksDrawTheStage() {
    QFETCH(int, stage);
    QFETCH(QString, mode);
    QFETCH(bool, repetitionShowing);
    QFETCH(int, ticks);
    QFETCH(TrayImage, shown);
    m_tray->Load();
    m_state.DepartureStage = stage;
    m_state.TodayMode = mode.toStdString();
    m_state.RepetitionShowing = repetitionShowing;
    QSignalSpy changed(m_tray.get(), &FrmSysTray::iconChanged);

    tick(ticks);

    QCOMPARE(changed.count(), ticks);
    QCOMPARE(Pixels(shownPicture()), Pixels(picture(shown)));
}

void TrayIconTest::aStageOutOfRangeLeavesThePicture() {
    m_state.DepartureStage = 7;
    tick(1);
    QCOMPARE(Pixels(shownPicture()), Pixels(picture(TrayImage::BolaRoja)));
    QSignalSpy changed(m_tray.get(), &FrmSysTray::iconChanged);

    m_state.DepartureStage = 42;
    tick(2);

    QCOMPARE(changed.count(), 2);  // the tray is still told on every tick
    QCOMPARE(Pixels(shownPicture()), Pixels(picture(TrayImage::BolaRoja)));
}

void TrayIconTest::picturesAreAllDifferent() {
    for (size_t i = 0; i < vt::kTrayImageCount; ++i) {
        const QImage first = Pixels(picture(static_cast<TrayImage>(i)));
        QCOMPARE(first.size(), QSize(16, 16));
        // The corners stay clear: a ball, not a square.
        QCOMPARE(qAlpha(first.pixel(0, 0)), 0);
        for (size_t j = i + 1; j < vt::kTrayImageCount; ++j) {
            QVERIFY2(first != Pixels(picture(static_cast<TrayImage>(j))), qPrintable(QString("%1 = %2").arg(i).arg(j)));
        }
    }
}

void TrayIconTest::portionsShowTheClockInsMade_data() {
    QTest::addColumn<TrayImage>("image");
    QTest::addColumn<QString>("portions");  // r red, g grey, clockwise from twelve o'clock

    QTest::newRow("bolaA1") << TrayImage::BolaA1 << "gggg";
    QTest::newRow("bolaA2") << TrayImage::BolaA2 << "rggg";
    QTest::newRow("bolaA3") << TrayImage::BolaA3 << "rrgg";
    QTest::newRow("bolaA4") << TrayImage::BolaA4 << "rrrg";
    QTest::newRow("bolaB1") << TrayImage::BolaB1 << "gg";
    QTest::newRow("bolaB2") << TrayImage::BolaB2 << "rg";
    QTest::newRow("bolaRoja") << TrayImage::BolaRoja << "rrrr";
}

void TrayIconTest::portionsShowTheClockInsMade() {
    QFETCH(TrayImage, image);
    QFETCH(QString, portions);
    const QImage pixels = Pixels(picture(image));
    // A point well inside each quarter (or half), clockwise from twelve o'clock.
    const QList<QPoint> quarters{{10, 5}, {10, 10}, {5, 10}, {5, 5}};
    const QList<QPoint> halves{{11, 7}, {4, 7}};
    const QList<QPoint>& points = portions.size() == 2 ? halves : quarters;

    for (qsizetype i = 0; i < portions.size(); ++i) {
        const QRgb pixel = pixels.pixel(points.at(i));
        const bool red = portions.at(i) == QLatin1Char('r');
        QVERIFY2(red ? IsRed(pixel) : IsGrey(pixel), qPrintable(QString("portion %1: %2").arg(i).arg(pixel, 8, 16)));
    }
}

void TrayIconTest::activationsRaiseTheirNames_data() {
    QTest::addColumn<QSystemTrayIcon::ActivationReason>("reason");
    QTest::addColumn<QString>("name");

    QTest::newRow("left click") << QSystemTrayIcon::Trigger << "LBUTTONUP";
    QTest::newRow("double click") << QSystemTrayIcon::DoubleClick << "LBUTTONDBLCLK";
    QTest::newRow("right click") << QSystemTrayIcon::Context << "RBUTTONUP";
    QTest::newRow("middle click") << QSystemTrayIcon::MiddleClick << "MBUTTONUP";
    QTest::newRow("anything else") << QSystemTrayIcon::Unknown << "OTHER....: 0";
}

void TrayIconTest::activationsRaiseTheirNames() {
    QFETCH(QSystemTrayIcon::ActivationReason, reason);
    QFETCH(QString, name);
    QSignalSpy events(m_tray.get(), &FrmSysTray::mouseEvent);

    emit m_tray->trayIcon()->activated(reason);

    QCOMPARE(events.count(), 1);
    QCOMPARE(events.at(0).at(0).toString(), name);
    // Only the double click brings the window up.
    QCOMPARE(m_window->isVisible(), reason == QSystemTrayIcon::DoubleClick);
}

void TrayIconTest::showingBringsTheWindowBack_data() {
    QTest::addColumn<QString>("how");
    QTest::addColumn<QString>("window");

    QTest::newRow("double click, hidden") << "double click"
                                          << "hidden";
    QTest::newRow("double click, minimised") << "double click"
                                             << "minimised";
    QTest::newRow("Mostrar aplicación, hidden") << "mRestore"
                                                << "hidden";
    QTest::newRow("Mostrar aplicación, minimised") << "mRestore"
                                                   << "minimised";
    QTest::newRow("Mostrar aplicación, maximised") << "mRestore"
                                                   << "maximised";
}

void TrayIconTest::showingBringsTheWindowBack() {
    QFETCH(QString, how);
    QFETCH(QString, window);
    m_trayPresent = true;
    if (window == QLatin1String("minimised")) {
        m_trayPresent = false;  // so that it stays minimised rather than going to the tray
        m_window->showMinimized();
    } else if (window == QLatin1String("maximised")) {
        m_window->showMaximized();
    }
    QCOMPARE(m_window->isVisible(), window != QLatin1String("hidden"));

    if (how == QLatin1String("double click")) {
        emit m_tray->trayIcon()->activated(QSystemTrayIcon::DoubleClick);
    } else {
        m_tray->menuItem(QStringLiteral("mRestore"))->trigger();
    }

    QVERIFY(m_window->isVisible());
    QVERIFY(!m_window->isMinimized());
    // A window shown in full stays so; anything else comes back in its normal size.
    QCOMPARE(m_window->isMaximized(), window == QLatin1String("maximised"));
    QTRY_VERIFY(m_window->isActiveWindow());
}

void TrayIconTest::restoreIsOfferedOnlyForAWindowNotShown_data() {
    QTest::addColumn<QString>("window");
    QTest::addColumn<bool>("offered");

    QTest::newRow("hidden in the tray") << "hidden" << true;
    QTest::newRow("minimised") << "minimised" << true;
    QTest::newRow("shown normally") << "normal" << false;
    QTest::newRow("maximised counts as shown") << "maximised" << false;
}

void TrayIconTest::restoreIsOfferedOnlyForAWindowNotShown() {
    QFETCH(QString, window);
    QFETCH(bool, offered);
    if (window == QLatin1String("minimised")) {
        m_window->showMinimized();
    } else if (window == QLatin1String("normal")) {
        m_window->showNormal();
    } else if (window == QLatin1String("maximised")) {
        m_window->showMaximized();
    }
    QAction* restore = m_tray->menuItem(QStringLiteral("mRestore"));
    restore->setEnabled(!offered);

    emit m_tray->popupMenu()->aboutToShow();

    QCOMPARE(restore->isEnabled(), offered);
}

void TrayIconTest::minimisingGoesToTheTrayOnlyWhereThereIsOne_data() {
    QTest::addColumn<QString>("how");
    QTest::addColumn<bool>("trayPresent");

    QTest::newRow("window minimised, tray") << "window" << true;
    QTest::newRow("window minimised, no tray") << "window" << false;
    QTest::newRow("Minimizar, tray") << "mnuMinimizar" << true;
    QTest::newRow("Minimizar, no tray") << "mnuMinimizar" << false;
}

void TrayIconTest::minimisingGoesToTheTrayOnlyWhereThereIsOne() {
    QFETCH(QString, how);
    QFETCH(bool, trayPresent);
    m_trayPresent = trayPresent;
    QVERIFY(ShowActive(*m_window));

    if (how == QLatin1String("window")) {
        m_window->showMinimized();
    } else {
        m_tray->menuItem(QStringLiteral("mnuMinimizar"))->trigger();
    }

    QTRY_VERIFY(m_window->isMinimized() || !m_window->isVisible());
    QCoreApplication::processEvents();
    // With nowhere to bring it back from, the window stays on the task bar.
    QCOMPARE(m_window->isVisible(), !trayPresent);
}

void TrayIconTest::closeIsCancelledOnlyForTheUserWithATray_data() {
    QTest::addColumn<bool>("trayPresent");
    QTest::addColumn<vt::CloseReason>("reason");
    QTest::addColumn<bool>("cancelled");

    QTest::newRow("user, tray") << true << vt::CloseReason::User << true;
    QTest::newRow("user, no tray") << false << vt::CloseReason::User << false;
    QTest::newRow("program ending, tray") << true << vt::CloseReason::ProgramEnding << false;
    QTest::newRow("program ending, no tray") << false << vt::CloseReason::ProgramEnding << false;
}

void TrayIconTest::closeIsCancelledOnlyForTheUserWithATray() {
    QFETCH(bool, trayPresent);
    QFETCH(vt::CloseReason, reason);
    QFETCH(bool, cancelled);
    m_trayPresent = trayPresent;
    m_window->show();

    QCOMPARE(m_tray->queryUnload(reason), cancelled);

    QCOMPARE(m_window->isVisible(), !cancelled);
}

// A fired reminder also goes to the desktop's notifications, which come out of the tray icon:
// where there is no tray, or the icon is not in it, nothing is sent.
void TrayIconTest::notificationsComeOnlyFromAnIconInATray_data() {
    QTest::addColumn<bool>("trayAtLoad");
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<bool>("trayAtNotify");
    QTest::addColumn<bool>("sent");

    QTest::newRow("icon in the tray") << true << true << true << true;
    QTest::newRow("no tray") << false << true << false << false;
    QTest::newRow("icon not put in the tray yet") << true << false << true << false;
    QTest::newRow("tray gone since") << true << true << false << false;
    QTest::newRow("tray come since, icon not in it") << false << true << true << false;
}

void TrayIconTest::notificationsComeOnlyFromAnIconInATray() {
    QFETCH(bool, trayAtLoad);
    QFETCH(bool, loaded);
    QFETCH(bool, trayAtNotify);
    QFETCH(bool, sent);
    m_trayPresent = trayAtLoad;
    if (loaded) {
        m_tray->Load();
    }
    m_trayPresent = trayAtNotify;
    QSignalSpy notified(m_tray.get(), &FrmSysTray::notified);

    m_tray->Notify("Repetición", "02/01/2024 08:30  Llamar a Ana & Luis");

    QCOMPARE(notified.count(), sent ? 1 : 0);
    if (sent) {
        QCOMPARE(notified.at(0).at(0).toString(), QStringLiteral("Repetición"));
        QCOMPARE(notified.at(0).at(1).toString(), QStringLiteral("02/01/2024 08:30  Llamar a Ana & Luis"));
    }
}

QTEST_MAIN(TrayIconTest)
#include "tst_tray_icon.moc"
