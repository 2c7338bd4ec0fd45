// The month calendar's wiring: what it paints from a filled grid, what its buttons report and
// how it fills the day menu. Which days are marked, in which colour and with which tag is the
// core's rule (FillMonthGrid, BuildDayMenu) and is tested there.
#include <optional>

#include "agenda/entries.h"
#include "calendar/day_menu.h"
#include "calendar/month_grid.h"
#include "calendar/qt_month_calendar.h"
#include "qt_test_support.h"
#include "store/dates.h"
#include "store/entry_list.h"

using vt::DayMenu;
using vt::MonthCalendar;

Q_DECLARE_METATYPE(vt::DayMenu)

namespace {
// Wednesday 13 March 2024 is today: its view starts on Monday 11 March (cell 0), today is
// cell 2, 1 April is cell 21.
vt::MonthGrid MarchGrid() {
    vt::EntryList alarms;
    alarms.Append(vt::BuildAlarmEntry("15/03/2024", "09:00", 0, "D", 14, "1", "Médico"));
    alarms.Append(vt::BuildAlarmEntry("05/04/2024", "09:00", 0, "D", 14, "0", "Cumpleaños de Ana"));
    vt::EntryList repetitions;
    repetitions.Append(vt::BuildRepetitionEntry("13/03/2024", "10:30", "Llamar al banco"));
    const vt::Date today = vt::MakeDate(13, 3, 2024);
    return vt::FillMonthGrid(today, today, alarms, repetitions);
}

// The day menu as the main window builds it, every item enabled.
std::unique_ptr<QMenu> PopUpMenu() {
    auto menu = std::make_unique<QMenu>();
    for (const auto& [name, caption] :
         {std::pair{"mnuPopUpRepeticion", "Añadir Repetición"}, std::pair{"mnuPopUpAlarma", "Añadir Alarma"},
          std::pair{"", ""}, std::pair{"mnuPopUpDetalle", "(...)"}}) {
        QAction* action = *name == '\0' ? menu->addSeparator() : menu->addAction(QString::fromUtf8(caption));
        action->setObjectName(QString::fromUtf8(name));
    }
    return menu;
}

// "name=caption" of each item the menu shows, "-" for a shown separator.
QStringList ShownItems(const QMenu& menu) {
    QStringList shown;
    for (const QAction* action : menu.actions()) {
        if (action->isVisible()) {
            shown << (action->isSeparator() ? u"-"_s : action->objectName() + u'=' + action->text());
        }
    }
    return shown;
}

const DayMenu kMenuWithRows{
    "15/03/2024", {{"ALA", 2, "[ALA] Cena con Ana & Luis"}, {"REP", 1, "[REP] 10:30 Pan"}}, true};
const QStringList kAddItems{"mnuPopUpRepeticion=Añadir Repetición", "mnuPopUpAlarma=Añadir Alarma"};
}  // namespace

class MonthCalendarTest : public QObject {
    Q_OBJECT

    // The calendar sits in a window, as it does in the main window.
    std::unique_ptr<QWidget> m_window;
    MonthCalendar* m_calendar = nullptr;

    QPushButton* day(int cell) const { return m_calendar->findChild<QPushButton*>(u"cmdDia(%1)"_s.arg(cell)); }
    QPushButton* move(int index) const { return m_calendar->findChild<QPushButton*>(u"cmdMover(%1)"_s.arg(index)); }

private slots:
    void init() {
        m_window = std::make_unique<QWidget>();
        m_calendar = new MonthCalendar(m_window.get());
        m_calendar->showGrid(MarchGrid());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void cellsArePaintedFromTheGrid_data() {
        QTest::addColumn<int>("cell");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<bool>("underline");
        QTest::addColumn<QColor>("colour");  // invalid: the desktop's
        QTest::addColumn<QString>("tag");
        QTest::newRow("Monday 11, nothing") << 0 << "11" << false << false << QColor() << "";
        QTest::newRow("today with a repetition")
            << 2 << "13" << false << true << QColor(255, 255, 192) << "Llamar al banco // ";
        QTest::newRow("priority alarm") << 4 << "15" << true << false << QColor(192, 255, 192) << "Médico // ";
        QTest::newRow("alarm in April") << 25 << "05" << true << false << QColor(204, 204, 204)
                                        << "Cumpleaños de Ana // ";
    }
    void cellsArePaintedFromTheGrid() {
        QFETCH(int, cell);
        QFETCH(QString, caption);
        QFETCH(bool, bold);
        QFETCH(bool, underline);
        QFETCH(QColor, colour);
        QFETCH(QString, tag);
        QPushButton* button = day(cell);
        QCOMPARE(
            (QVariantList{button->text(), button->font().bold(), button->font().underline(), m_calendar->tag(cell)}),
            (QVariantList{caption, bold, underline, tag}));
        // The colour the button really shows, away from its border and its number.
        QCOMPARE(button->grab().toImage().pixelColor(3, 3),
                 colour.isValid() ? colour : QApplication::palette().color(QPalette::Base));
        QCOMPARE(move(4)->text(), u"MAR - 2024"_s);
    }

    void dayButtonsStandInRowsAndColumns() {
        for (int i = 0; i < 7; ++i) {
            QCOMPARE(day(i)->geometry(), QRect(i * 28, 0, 29, 29));
        }
        for (int i = 0; i < 6; ++i) {
            QCOMPARE(day(i * 7)->geometry(), QRect(0, i * 29, 29, 29));
        }
    }

    void navigationButtonsRequestTheirMove_data() {
        QTest::addColumn<int>("index");
        for (int index = 0; index < 5; ++index) {
            QTest::newRow(QStringList{"<<", "-", "+", ">>", "centre"}.at(index).toLatin1()) << index;
        }
    }
    void navigationButtonsRequestTheirMove() {
        QFETCH(int, index);
        QSignalSpy moves(m_calendar, &MonthCalendar::moveRequested);
        QTest::mouseClick(move(index), Qt::LeftButton);
        QCOMPARE(moves.size(), 1);
        QCOMPARE(moves.front().front().toInt(), index);
    }

    void hoveringAndClickingADayReportIt() {
        QPushButton* button = day(17);
        QSignalSpy hovers(m_calendar, &MonthCalendar::dayHovered);
        QSignalSpy clicks(m_calendar, &MonthCalendar::dayClicked);
        QTest::mouseMove(button, QPoint(10, 12));
        QTRY_VERIFY(!hovers.isEmpty());
        QCOMPARE(hovers.back().front().toInt(), 17);

        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(5, 7));
        QCOMPARE(clicks.size(), 1);
        QCOMPARE(clicks.front(), (QVariantList{17, button->mapToGlobal(QPoint(5, 7))}));
    }

    void dayMenuIsFilledForTheDay_data() {
        QTest::addColumn<DayMenu>("menu");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("a day without entries")
            << DayMenu{"13/03/2024", {}, false} << kAddItems + QStringList{"mnuPopUpDetalle=13/03/2024"};
        QTest::newRow("a day with entries") << kMenuWithRows
                                            << kAddItems + QStringList{"-", "mnuPopUpDetalle=15/03/2024",
                                                                       "mnuPopUpDetalle(1)=[ALA] Cena con Ana && Luis",
                                                                       "mnuPopUpDetalle(2)=[REP] 10:30 Pan"};
    }
    void dayMenuIsFilledForTheDay() {
        QFETCH(DayMenu, menu);
        QFETCH(QStringList, shown);
        const std::unique_ptr<QMenu> popUp = PopUpMenu();
        MonthCalendar::fillDayMenu(popUp.get(), menu);
        QCOMPARE(ShownItems(*popUp), shown);
    }

    void refillingDeletesThePreviousItems() {
        const std::unique_ptr<QMenu> popUp = PopUpMenu();
        MonthCalendar::fillDayMenu(popUp.get(), kMenuWithRows);
        const QPointer<QAction> first = popUp->actions().at(4);
        QCOMPARE(first->objectName(), u"mnuPopUpDetalle(1)"_s);

        MonthCalendar::fillDayMenu(popUp.get(), DayMenu{"17/03/2024", {}, false});

        QVERIFY(first.isNull());
        QCOMPARE(ShownItems(*popUp), kAddItems + QStringList{"mnuPopUpDetalle=17/03/2024"});
        QCOMPARE(popUp->actions().size(), 4);
    }

    void escapeChoosesNothing() {
        const std::unique_ptr<QMenu> popUp = PopUpMenu();
        // The menu waits in its own loop; Escape is pressed from inside it once it shows.
        bool shown = false;
        QTimer dismiss;
        connect(&dismiss, &QTimer::timeout, this, [&] {
            if (!shown && popUp->isVisible()) {
                shown = true;
                QTest::keyClick(popUp.get(), Qt::Key_Escape);
            }
        });
        dismiss.start(5);

        const std::optional<vt::DayMenuChoice> choice =
            MonthCalendar::popUpDayMenu(popUp.get(), kMenuWithRows, day(4)->mapToGlobal(QPoint(14, 14)));

        QVERIFY(shown);
        QVERIFY(!choice.has_value());
        QVERIFY(!popUp->isVisible());
    }
};

QTEST_MAIN(MonthCalendarTest)
#include "tst_month_calendar.moc"
