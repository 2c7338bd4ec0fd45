#pragma once
#include <QWidget>

#include "history/history_month.h"

class QLabel;
class QLineEdit;
class QTableWidget;
class QTableWidgetItem;

namespace vt {

class Dialogs;
class HistoryChart;
class HistoryRecorder;

// "Histórico de jornadas": a month of the history as a table, with a chart above it of the
// time worked against the time required per day and the month's running balance as a line.
// Every time can be corrected in its cell; the recorder checks and saves it.
class HistoryWindow : public QWidget {
    Q_OBJECT

public:
    HistoryWindow(HistoryRecorder& recorder, Dialogs& dialogs, QWidget* parent = nullptr);

    // Shows the month of date (today when the window opens).
    void showMonth(Date date);
    Date shownMonth() const { return m_month; }
    QTableWidget* table() const { return m_table; }
    QLabel* totals() const { return m_totals; }
    HistoryChart* chart() const { return m_chart; }

private:
    void fill();
    void drawChart(const HistoryMonth& month);
    void cellEdited(QTableWidgetItem* item);
    void exportRange();

    HistoryRecorder& m_recorder;
    Dialogs& m_dialogs;
    Date m_month{};
    QLabel* m_monthLabel = nullptr;
    HistoryChart* m_chart = nullptr;
    QTableWidget* m_table = nullptr;
    QLabel* m_totals = nullptr;
    QLineEdit* m_from = nullptr;
    QLineEdit* m_to = nullptr;
    bool m_filling = false;
};

}  // namespace vt
