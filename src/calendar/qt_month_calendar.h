#pragma once
#include <QPoint>
#include <QString>
#include <QWidget>
#include <array>
#include <optional>

#include "calendar/day_menu.h"
#include "calendar/month_grid.h"

class QLineEdit;
class QMenu;
class QPushButton;

namespace vt {

// The month calendar of the main window: the 42 day buttons cmdDia, the navigation row
// cmdMover and the focus box txtFoco. It paints a MonthGrid that the core filled and reports
// clicks and hovers by index; which month to show and what a click means are the owner's.
class MonthCalendar : public QWidget {
    Q_OBJECT

public:
    explicit MonthCalendar(QWidget* parent = nullptr);

    // Paints every cell and the centre caption. Called whenever an entry changes, so only
    // what differs from the last grid is touched.
    void showGrid(const MonthGrid& grid);

    // The texts of the entries of cell 0..41 as last painted; empty outside the grid.
    QString tag(int cell) const;

    // Takes the focus away from the buttons after an action, into the inconspicuous txtFoco.
    void focusAway();

    // Fills the main window's day menu mnuPopUp (items mnuPopUpRepeticion, mnuPopUpAlarma, a
    // separator and mnuPopUpDetalle, whose item 0 is the date) for one day: the date caption,
    // one item "mnuPopUpDetalle(k)" per row in place of the previous day's, and the separator
    // only when there are rows.
    static void fillDayMenu(QMenu* mnuPopUp, const DayMenu& menu);
    // Fills the menu, shows it at globalPos and waits: the chosen item, whose Detail row is
    // the place in menu.rows from 1; nothing when the menu was dismissed.
    static std::optional<DayMenuChoice> popUpDayMenu(QMenu* mnuPopUp, const DayMenu& menu, QPoint globalPos);

signals:
    // cmdMover(button) was pressed: 0 "<<", 1 "-", 2 "+", 3 ">>", 4 the centre.
    void moveRequested(int button);
    // The mouse came onto or moves over cmdDia(cell).
    void dayHovered(int cell);
    // cmdDia(cell) was pressed; globalPos is where the mouse let go, or the button's centre
    // when it was pressed from the keyboard.
    void dayClicked(int cell, QPoint globalPos);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // What a day button shows now, so that a new grid touches only what changed. colour is
    // empty before the first grid.
    struct ShownCell {
        QString caption;
        bool bold = false;
        bool underline = false;
        std::optional<CellColour> colour;
    };

    void buildDays();
    void buildMoves();
    void paintColour(int cell, CellColour colour);
    void paintDay(QPushButton* button) const;
    void onDayClicked(int cell);
    int dayIndex(const QObject* object) const;

    std::array<QPushButton*, kGridCells> m_cmdDia{};
    std::array<QPushButton*, 5> m_cmdMover{};
    QLineEdit* m_txtFoco = nullptr;
    std::array<ShownCell, kGridCells> m_shown{};
    std::array<QString, kGridCells> m_tags{};
    // Where the mouse let go of a day button, until its click has been reported: a click from
    // the keyboard has none.
    std::optional<QPoint> m_releasePos;
};

}  // namespace vt
