#pragma once
#include <QWidget>
#include <vector>

namespace vt {

// The month's picture above the history table: for each day a bar of the hours worked beside a
// bar of the hours required (scale on the left), and the running balance as a line (scale on
// the right), with a legend underneath. Drawn directly: a charting library would be loaded at
// every start of the program for one window that is seldom opened.
class HistoryChart : public QWidget {
public:
    struct Day {
        double worked = 0;
        double required = 0;
        double running = 0;
    };

    explicit HistoryChart(QWidget* parent = nullptr);
    void setDays(std::vector<Day> days);
    const std::vector<Day>& days() const { return m_days; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<Day> m_days;
};

}  // namespace vt
