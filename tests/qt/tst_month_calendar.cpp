// The month calendar's wiring: what it paints from a filled grid, what its buttons report and
// how it fills the day menu. Which days are marked, in which colour and with which tag is the
// core's rule (FillMonthGrid, BuildDayMenu) and is tested there.
#include <QAction>
#include <QApplication>
#include <QEnterEvent>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPalette>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>

#include "agenda/entries.h"
#include "calendar/day_menu.h"
#include "calendar/month_grid.h"
#include "calendar/qt_month_calendar.h"
#include "store/dates.h"
#include "store/entry_list.h"

using vt::DayMenu;
using vt::DayMenuChoice;
using vt::MonthCalendar;
using vt::MonthGrid;

Q_DECLARE_METATYPE(vt::DayMenu)

namespace {
// Wednesday 13 March 2024 is today: its view starts on Monday 11 March (cell 0), today is
// cell 2, 1 April is cell 21.
const vt::Date kToday = vt::MakeDate(13, 3, 2024);

const QColor kGrey(204, 204, 204);
const QColor kYellow(255, 255, 192);
const QColor kGreen(192, 255, 192);

vt::EntryList Alarms() {
    vt::EntryList alarms;
    alarms.Append(vt::BuildAlarmEntry("15/03/2024", "09:00", 0, "D", 14, "1", "Médico"));
    alarms.Append(vt::BuildAlarmEntry("05/04/2024", "09:00", 0, "D", 14, "0", "Cumpleaños de Ana"));
    return alarms;
}

vt::EntryList Repetitions() {
    vt::EntryList repetitions;
    repetitions.Append(vt::BuildRepetitionEntry("13/03/2024", "10:30", "Llamar al banco"));
    return repetitions;
}

MonthGrid GridOf(vt::Date displayed) {
    return vt::FillMonthGrid(displayed, kToday, Alarms(), Repetitions());
}

// The desktop colour of the days of the displayed month.
QColor WindowColour() {
    return QApplication::palette().color(QPalette::Base);
}

// The day menu as the main window builds it, every item enabled.
std::unique_ptr<QMenu> PopUpMenu() {
    auto menu = std::make_unique<QMenu>();
    menu->setObjectName(QStringLiteral("mnuPopUp"));
    const auto add = [&menu](const char* name, const char* caption) {
        auto* action = new QAction(QString::fromUtf8(caption), menu.get());
        action->setObjectName(QString::fromUtf8(name));
        menu->addAction(action);
    };
    add("mnuPopUpRepeticion", "Añadir Repetición");
    add("mnuPopUpAlarma", "Añadir Alarma");
    menu->addSeparator();
    add("mnuPopUpDetalle", "(...)");
    return menu;
}

// "name=caption" of each item the menu shows, "-" for a shown separator.
QStringList ShownItems(const QMenu& menu) {
    QStringList shown;
    for (const QAction* action : menu.actions()) {
        if (!action->isVisible()) {
            continue;
        }
        shown << (action->isSeparator() ? QStringLiteral("-")
                                        : action->objectName() + QLatin1Char('=') + action->text());
    }
    return shown;
}

QAction* ItemNamed(const QMenu& menu, const QString& name) {
    for (QAction* action : menu.actions()) {
        if (action->objectName() == name) {
            return action;
        }
    }
    return nullptr;
}

DayMenu MenuWithRows() {
    return DayMenu{
        "15/03/2024",
        {{"ALA", 2, "[ALA] Cena con Ana & Luis"}, {"REP", 1, "[REP] 10:30 Pan"}, {"REP", 3, "[REP] 18:00 Gym"}},
        true};
}

bool ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}
}  // namespace

class MonthCalendarTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { m_desktop = QApplication::palette(); }
    void init();
    void cleanup();

    void dayButtonsStandInSevenColumnsAndSixRows();
    void navigationRowStandsInOrderUnderTheGrid();
    void cellsArePaintedFromTheGrid_data();
    void cellsArePaintedFromTheGrid();
    void anotherGridRepaintsEveryCellThatChanged_data();
    void anotherGridRepaintsEveryCellThatChanged();
    void daysOfTheMonthFollowTheDesktopColour();
    void tagsOutsideTheGridAreEmpty();
    void navigationButtonsRequestTheirMove_data();
    void navigationButtonsRequestTheirMove();
    void hoveringADayReportsIt_data();
    void hoveringADayReportsIt();
    void clickingADayReportsWhere_data();
    void clickingADayReportsWhere();
    void focusAwayLeavesTheButtons();

    void dayMenuIsFilledForTheDay_data();
    void dayMenuIsFilledForTheDay();
    void refillingDeletesThePreviousItems();
    void popUpReportsTheChoice_data();
    void popUpReportsTheChoice();

private:
    QPushButton* day(int cell) const {
        return m_calendar->findChild<QPushButton*>(QStringLiteral("cmdDia(%1)").arg(cell));
    }
    QPushButton* move(int index) const {
        return m_calendar->findChild<QPushButton*>(QStringLiteral("cmdMover(%1)").arg(index));
    }
    // The colour the button really shows, away from its border and its number.
    static QColor paintedColour(QPushButton* button) { return button->grab().toImage().pixelColor(3, 3); }

    QPalette m_desktop;
    // The calendar sits in a window, as it does in the main window.
    std::unique_ptr<QWidget> m_window;
    MonthCalendar* m_calendar = nullptr;
};

void MonthCalendarTest::init() {
    m_window = std::make_unique<QWidget>();
    m_calendar = new MonthCalendar(m_window.get());
    m_calendar->move(10, 20);
    m_calendar->showGrid(GridOf(kToday));
    QVERIFY(ShowActive(*m_window));
}

void MonthCalendarTest::cleanup() {
    m_window.reset();
    QApplication::setPalette(m_desktop);
    m_calendar = nullptr;
}

void MonthCalendarTest::dayButtonsStandInSevenColumnsAndSixRows() {
    QCOMPARE(m_calendar->objectName(), QStringLiteral("MonthCalendar"));
    QCOMPARE(m_calendar->findChildren<QPushButton*>(QRegularExpression(QStringLiteral("^cmdDia\\("))).size(), 42);
    for (int cell = 0; cell < 42; ++cell) {
        QPushButton* button = day(cell);
        QVERIFY2(button != nullptr, qPrintable(QString::number(cell)));
        const int column = cell % 7;
        const int row = cell / 7;
        QCOMPARE(button->geometry(), QRect(column * 28, row * 29, 29, 29));
        QVERIFY(button->isVisible());
    }
}

void MonthCalendarTest::navigationRowStandsInOrderUnderTheGrid() {
    QCOMPARE(m_calendar->findChildren<QPushButton*>(QRegularExpression(QStringLiteral("^cmdMover\\("))).size(), 5);
    QStringList captions;
    for (const int index : {0, 1, 4, 2, 3}) {
        QVERIFY(move(index) != nullptr);
        captions << move(index)->text();
    }
    QCOMPARE(captions, (QStringList{"<<", "-", "MAR - 2024", "+", ">>"}));

    const int gridBottom = day(41)->geometry().bottom();
    int right = -1;
    for (const int index : {0, 1, 4, 2, 3}) {
        const QRect place = move(index)->geometry();
        QVERIFY2(place.top() > gridBottom, qPrintable(QString::number(index)));
        QVERIFY2(place.left() >= right - 1, qPrintable(QString::number(index)));  // at most the shared line
        right = place.right() + 1;
    }
    QVERIFY(move(4)->width() > move(1)->width());
    QCOMPARE(right, day(6)->geometry().right() + 1);

    // The focus box is there to take the focus, not to be seen.
    auto* focusBox = m_calendar->findChild<QLineEdit*>(QStringLiteral("txtFoco"));
    QVERIFY(focusBox != nullptr);
    QVERIFY(focusBox->isVisible());
    QVERIFY(focusBox->width() <= 2 && focusBox->height() <= 2);
}

void MonthCalendarTest::cellsArePaintedFromTheGrid_data() {
    QTest::addColumn<int>("cell");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<bool>("underline");
    QTest::addColumn<QColor>("colour");  // invalid: the desktop's
    QTest::addColumn<QString>("tag");

    QTest::newRow("Monday 11, nothing") << 0 << "11" << false << false << QColor() << "";
    QTest::newRow("today with a repetition") << 2 << "13" << false << true << kYellow << "Llamar al banco // ";
    QTest::newRow("priority alarm") << 4 << "15" << true << false << kGreen << "Médico // ";
    QTest::newRow("last of March") << 20 << "31" << false << false << QColor() << "";
    QTest::newRow("1 April") << 21 << "01" << false << false << kGrey << "";
    QTest::newRow("alarm in April") << 25 << "05" << true << false << kGrey << "Cumpleaños de Ana // ";
    QTest::newRow("last cell") << 41 << "21" << false << false << kGrey << "";
}

void MonthCalendarTest::cellsArePaintedFromTheGrid() {
    QFETCH(int, cell);
    QFETCH(QString, caption);
    QFETCH(bool, bold);
    QFETCH(bool, underline);
    QFETCH(QColor, colour);
    QFETCH(QString, tag);
    const QColor expected = colour.isValid() ? colour : WindowColour();

    QPushButton* button = day(cell);
    QCOMPARE(button->text(), caption);
    QCOMPARE(button->font().bold(), bold);
    QCOMPARE(button->font().underline(), underline);
    QVERIFY(!button->font().strikeOut());
    QCOMPARE(button->palette().color(QPalette::Button), expected);
    QCOMPARE(paintedColour(button), expected);
    QCOMPARE(m_calendar->tag(cell), tag);
    QCOMPARE(move(4)->text(), QStringLiteral("MAR - 2024"));
}

void MonthCalendarTest::anotherGridRepaintsEveryCellThatChanged_data() {
    QTest::addColumn<int>("cell");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<bool>("underline");
    QTest::addColumn<QColor>("colour");  // invalid: the desktop's
    QTest::addColumn<QString>("tag");

    // April starts on a Monday: cell 0 is 1 April, cell 30 is 1 May.
    QTest::newRow("was today with a repetition") << 2 << "03" << false << false << QColor() << "";
    QTest::newRow("was the priority alarm") << 4 << "05" << true << false << QColor() << "Cumpleaños de Ana // ";
    QTest::newRow("was grey, now April") << 21 << "22" << false << false << QColor() << "";
    QTest::newRow("was an alarm") << 25 << "26" << false << false << QColor() << "";
    QTest::newRow("May") << 30 << "01" << false << false << kGrey << "";
}

void MonthCalendarTest::anotherGridRepaintsEveryCellThatChanged() {
    QFETCH(int, cell);
    QFETCH(QString, caption);
    QFETCH(bool, bold);
    QFETCH(bool, underline);
    QFETCH(QColor, colour);
    QFETCH(QString, tag);
    const QColor expected = colour.isValid() ? colour : WindowColour();

    m_calendar->showGrid(GridOf(vt::MakeDate(1, 4, 2024)));

    QPushButton* button = day(cell);
    QCOMPARE(button->text(), caption);
    QCOMPARE(button->font().bold(), bold);
    QCOMPARE(button->font().underline(), underline);
    QCOMPARE(paintedColour(button), expected);
    QCOMPARE(m_calendar->tag(cell), tag);
    QCOMPARE(move(4)->text(), QStringLiteral("ABR - 2024"));
}

void MonthCalendarTest::daysOfTheMonthFollowTheDesktopColour() {
    const QPalette original = QApplication::palette();
    QPalette changed = original;
    const QColor dark(40, 44, 52);
    const QColor light(230, 230, 230);
    changed.setColor(QPalette::Base, dark);
    changed.setColor(QPalette::Text, light);
    // A theme changed while the program runs; cleanup puts the desktop's palette back.
    QApplication::setPalette(changed);

    QTRY_COMPARE(paintedColour(day(0)), dark);
    QCOMPARE(day(0)->palette().color(QPalette::ButtonText), light);
    QCOMPARE(paintedColour(day(2)), kYellow);
    QCOMPARE(day(2)->palette().color(QPalette::ButtonText), QColor(Qt::black));
    QCOMPARE(paintedColour(day(21)), kGrey);

    QApplication::setPalette(original);
    QTRY_COMPARE(paintedColour(day(0)), original.color(QPalette::Base));
}

void MonthCalendarTest::tagsOutsideTheGridAreEmpty() {
    QCOMPARE(m_calendar->tag(-1), QString());
    QCOMPARE(m_calendar->tag(42), QString());
    QCOMPARE(m_calendar->tag(2), QStringLiteral("Llamar al banco // "));
}

void MonthCalendarTest::navigationButtonsRequestTheirMove_data() {
    QTest::addColumn<int>("index");
    QTest::newRow("<<") << 0;
    QTest::newRow("-") << 1;
    QTest::newRow("+") << 2;
    QTest::newRow(">>") << 3;
    QTest::newRow("centre") << 4;
}

void MonthCalendarTest::navigationButtonsRequestTheirMove() {
    QFETCH(int, index);
    QSignalSpy moves(m_calendar, &MonthCalendar::moveRequested);
    QSignalSpy clicks(m_calendar, &MonthCalendar::dayClicked);
    QTest::mouseClick(move(index), Qt::LeftButton);
    QCOMPARE(moves.size(), 1);
    QCOMPARE(moves.front().front().toInt(), index);
    QCOMPARE(clicks.size(), 0);
    // Moving is the owner's business: the grid stays as it was until it is shown again.
    QCOMPARE(move(4)->text(), QStringLiteral("MAR - 2024"));
}

void MonthCalendarTest::hoveringADayReportsIt_data() {
    QTest::addColumn<int>("cell");
    QTest::addColumn<QString>("how");

    QTest::newRow("entering cell 0") << 0 << "enter";
    QTest::newRow("moving over cell 17") << 17 << "move";
    QTest::newRow("the mouse onto cell 41") << 41 << "mouse";
    QTest::newRow("the mouse onto cell 2") << 2 << "mouse";
}

void MonthCalendarTest::hoveringADayReportsIt() {
    QFETCH(int, cell);
    QFETCH(QString, how);
    QPushButton* button = day(cell);
    const QPoint inside(10, 12);
    QSignalSpy hovers(m_calendar, &MonthCalendar::dayHovered);

    if (how == QLatin1String("enter")) {
        QEnterEvent enter(inside, button->mapTo(m_window.get(), inside), button->mapToGlobal(inside));
        QApplication::sendEvent(button, &enter);
    } else if (how == QLatin1String("move")) {
        QMouseEvent moved(QEvent::MouseMove, inside, button->mapToGlobal(inside), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(button, &moved);
    } else {
        QTest::mouseMove(m_window.get(), QPoint(2, 2));  // off the calendar
        hovers.clear();
        QTest::mouseMove(button, inside);
    }

    QTRY_VERIFY(!hovers.isEmpty());
    for (const QList<QVariant>& hover : hovers) {
        QCOMPARE(hover.front().toInt(), cell);
    }
}

void MonthCalendarTest::clickingADayReportsWhere_data() {
    QTest::addColumn<int>("cell");
    QTest::addColumn<QString>("how");
    QTest::addColumn<QPoint>("where");  // in the button

    QTest::newRow("mouse on cell 9") << 9 << "mouse" << QPoint(5, 7);
    QTest::newRow("mouse on cell 40") << 40 << "mouse" << QPoint(20, 3);
    QTest::newRow("space on cell 3") << 3 << "space" << QPoint(14, 14);
    // The mouse let go away from the button, which does not click; the key then does.
    QTest::newRow("space after a release elsewhere") << 3 << "release elsewhere, then space" << QPoint(14, 14);
}

void MonthCalendarTest::clickingADayReportsWhere() {
    QFETCH(int, cell);
    QFETCH(QString, how);
    QFETCH(QPoint, where);
    QPushButton* button = day(cell);
    QSignalSpy clicks(m_calendar, &MonthCalendar::dayClicked);
    QSignalSpy moves(m_calendar, &MonthCalendar::moveRequested);

    if (how == QLatin1String("mouse")) {
        QTest::mouseClick(button, Qt::LeftButton, {}, where);
    } else {
        if (how.startsWith(QLatin1String("release elsewhere"))) {
            QTest::mousePress(button, Qt::LeftButton, {}, QPoint(5, 5));
            QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(200, 200));
            QCOMPARE(clicks.size(), 0);
        }
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Space);
    }

    QCOMPARE(clicks.size(), 1);
    QCOMPARE(clicks.front().at(0).toInt(), cell);
    QCOMPARE(clicks.front().at(1).toPoint(), button->mapToGlobal(where));
    QCOMPARE(moves.size(), 0);
}

void MonthCalendarTest::focusAwayLeavesTheButtons() {
    QPushButton* button = day(12);
    button->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), button);
    m_calendar->focusAway();
    QTRY_COMPARE(QApplication::focusWidget(), m_calendar->findChild<QLineEdit*>(QStringLiteral("txtFoco")));
}

void MonthCalendarTest::dayMenuIsFilledForTheDay_data() {
    QTest::addColumn<DayMenu>("menu");
    QTest::addColumn<QStringList>("shown");

    QTest::newRow("a day without entries") << DayMenu{"13/03/2024", {}, false}
                                           << QStringList{"mnuPopUpRepeticion=Añadir Repetición",
                                                          "mnuPopUpAlarma=Añadir Alarma", "mnuPopUpDetalle=13/03/2024"};
    QTest::newRow("alarms, then repetitions") << MenuWithRows()
                                              << QStringList{"mnuPopUpRepeticion=Añadir Repetición",
                                                             "mnuPopUpAlarma=Añadir Alarma",
                                                             "-",
                                                             "mnuPopUpDetalle=15/03/2024",
                                                             "mnuPopUpDetalle(1)=[ALA] Cena con Ana && Luis",
                                                             "mnuPopUpDetalle(2)=[REP] 10:30 Pan",
                                                             "mnuPopUpDetalle(3)=[REP] 18:00 Gym"};
}

void MonthCalendarTest::dayMenuIsFilledForTheDay() {
    QFETCH(DayMenu, menu);
    QFETCH(QStringList, shown);
    const std::unique_ptr<QMenu> popUp = PopUpMenu();

    MonthCalendar::fillDayMenu(popUp.get(), menu);

    QCOMPARE(ShownItems(*popUp), shown);
    for (int row = 1; row <= static_cast<int>(menu.rows.size()); ++row) {
        const QAction* item = ItemNamed(*popUp, QStringLiteral("mnuPopUpDetalle(%1)").arg(row));
        QVERIFY(item != nullptr);
        QVERIFY(item->isEnabled());
    }
}

void MonthCalendarTest::refillingDeletesThePreviousItems() {
    const std::unique_ptr<QMenu> popUp = PopUpMenu();
    MonthCalendar::fillDayMenu(popUp.get(), MenuWithRows());
    const QPointer<QAction> first = ItemNamed(*popUp, QStringLiteral("mnuPopUpDetalle(1)"));
    const QPointer<QAction> third = ItemNamed(*popUp, QStringLiteral("mnuPopUpDetalle(3)"));
    QVERIFY(first != nullptr && third != nullptr);

    MonthCalendar::fillDayMenu(popUp.get(), DayMenu{"16/03/2024", {{"REP", 2, "[REP] 09:00 Otra"}}, true});

    QVERIFY(first.isNull());
    QVERIFY(third.isNull());
    QCOMPARE(ShownItems(*popUp),
             (QStringList{"mnuPopUpRepeticion=Añadir Repetición", "mnuPopUpAlarma=Añadir Alarma", "-",
                          "mnuPopUpDetalle=16/03/2024", "mnuPopUpDetalle(1)=[REP] 09:00 Otra"}));
    QCOMPARE(popUp->actions().size(), 5);

    MonthCalendar::fillDayMenu(popUp.get(), DayMenu{"17/03/2024", {}, false});
    QCOMPARE(ShownItems(*popUp), (QStringList{"mnuPopUpRepeticion=Añadir Repetición", "mnuPopUpAlarma=Añadir Alarma",
                                              "mnuPopUpDetalle=17/03/2024"}));
    QCOMPARE(popUp->actions().size(), 4);
}

void MonthCalendarTest::popUpReportsTheChoice_data() {
    QTest::addColumn<QString>("item");  // empty: the menu is dismissed
    QTest::addColumn<int>("kind");      // -1: nothing chosen
    QTest::addColumn<int>("row");

    QTest::newRow("add a repetition") << "mnuPopUpRepeticion" << static_cast<int>(DayMenuChoice::Kind::AddRepetition)
                                      << 0;
    QTest::newRow("add an alarm") << "mnuPopUpAlarma" << static_cast<int>(DayMenuChoice::Kind::AddAlarm) << 0;
    QTest::newRow("the date") << "mnuPopUpDetalle" << static_cast<int>(DayMenuChoice::Kind::DateItem) << 0;
    QTest::newRow("first entry") << "mnuPopUpDetalle(1)" << static_cast<int>(DayMenuChoice::Kind::Detail) << 1;
    QTest::newRow("third entry") << "mnuPopUpDetalle(3)" << static_cast<int>(DayMenuChoice::Kind::Detail) << 3;
    QTest::newRow("dismissed") << "" << -1 << 0;
}

void MonthCalendarTest::popUpReportsTheChoice() {
    QFETCH(QString, item);
    QFETCH(int, kind);
    QFETCH(int, row);
    const std::unique_ptr<QMenu> popUp = PopUpMenu();
    const QPoint at = day(4)->mapToGlobal(QPoint(14, 14));

    // The menu waits in its own loop; the choice is made from inside it once it shows.
    bool answered = false;
    QPoint shownAt;
    QTimer chooser;
    chooser.setInterval(5);
    connect(&chooser, &QTimer::timeout, this, [&] {
        if (answered || !popUp->isVisible()) {
            return;
        }
        answered = true;
        shownAt = popUp->pos();
        if (item.isEmpty()) {
            QTest::keyClick(popUp.get(), Qt::Key_Escape);
            return;
        }
        popUp->setActiveAction(ItemNamed(*popUp, item));
        QTest::keyClick(popUp.get(), Qt::Key_Return);
    });
    chooser.start();

    const std::optional<DayMenuChoice> choice = MonthCalendar::popUpDayMenu(popUp.get(), MenuWithRows(), at);

    QVERIFY(answered);
    QCOMPARE(shownAt, at);
    QCOMPARE(choice.has_value(), kind >= 0);
    if (choice) {
        QCOMPARE(static_cast<int>(choice->kind), kind);
        QCOMPARE(choice->row, row);
    }
    QVERIFY(!popUp->isVisible());
}

QTEST_MAIN(MonthCalendarTest)
#include "tst_month_calendar.moc"
