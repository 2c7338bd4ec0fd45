#include "history/history_window.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "calendar/month_grid.h"
#include "calendar/month_names.h"
#include "history/history_recorder.h"
#include "history/qt_history_chart.h"
#include "platform/dialogs.h"

namespace vt {

namespace {

// Only the clock times, the required time and the absence are the user's to correct.
bool IsEditable(int column) {
    return (column >= kColEntrada1 && column <= kColSalida) || column == kColRequired || column == kColAbsence;
}

double Hours(int minutes) {
    return minutes / 60.0;
}

}  // namespace

HistoryWindow::HistoryWindow(HistoryRecorder& recorder, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent, Qt::Window), m_recorder(recorder), m_dialogs(dialogs) {
    setObjectName(QStringLiteral("frmHistorico"));
    setWindowTitle(QStringLiteral("Histórico de jornadas"));
    auto* layout = new QVBoxLayout(this);

    // Month navigation as in the main calendar: a year back, a month back, today, a month and
    // a year forward.
    auto* navigation = new QHBoxLayout;
    const std::pair<const char*, int> buttons[] = {{"<<", 0}, {"-", 1}, {"Hoy", 4}, {"+", 2}, {">>", 3}};
    m_monthLabel = new QLabel(this);
    m_monthLabel->setAlignment(Qt::AlignCenter);
    for (const auto& [caption, index] : buttons) {
        auto* button = new QPushButton(QString::fromUtf8(caption), this);
        button->setObjectName(QStringLiteral("cmdMes%1").arg(index));
        button->setMaximumWidth(48);
        connect(button, &QPushButton::clicked, this,
                [this, index = index] { showMonth(MoveDisplayedDate(m_month, m_recorder.Today(), index)); });
        navigation->addWidget(button);
        if (index == 1) {
            navigation->addWidget(m_monthLabel, 1);
        }
    }
    layout->addLayout(navigation);

    m_chart = new HistoryChart(this);
    layout->addWidget(m_chart, 2);

    m_table = new QTableWidget(0, kHistoryColumnCount, this);
    m_table->setObjectName(QStringLiteral("tblJornadas"));
    QStringList titles;
    for (const char* title : kHistoryColumnTitles) {
        titles << QString::fromUtf8(title);
    }
    m_table->setHorizontalHeaderLabels(titles);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->verticalHeader()->setDefaultSectionSize(22);
    connect(m_table, &QTableWidget::itemChanged, this, &HistoryWindow::cellEdited);
    layout->addWidget(m_table, 3);

    m_totals = new QLabel(this);
    m_totals->setObjectName(QStringLiteral("lblTotales"));
    layout->addWidget(m_totals);

    auto* exportRow = new QHBoxLayout;
    m_from = new QLineEdit(this);
    m_to = new QLineEdit(this);
    for (QLineEdit* edit : {m_from, m_to}) {
        edit->setMaximumWidth(100);
    }
    auto* exportButton = new QPushButton(QStringLiteral("Exportar…"), this);
    exportButton->setObjectName(QStringLiteral("cmdExportar"));
    connect(exportButton, &QPushButton::clicked, this, &HistoryWindow::exportRange);
    exportRow->addWidget(new QLabel(QStringLiteral("Desde:"), this));
    exportRow->addWidget(m_from);
    exportRow->addWidget(new QLabel(QStringLiteral("Hasta:"), this));
    exportRow->addWidget(m_to);
    exportRow->addStretch(1);
    exportRow->addWidget(exportButton);
    layout->addLayout(exportRow);

    resize(820, 760);
    showMonth(m_recorder.Today());
}

void HistoryWindow::showMonth(Date date) {
    m_month = date;
    const std::string name = MonthName(date, false, "");
    m_monthLabel->setText(QString::fromUtf8(name + " " + std::to_string(static_cast<int>(date.year()))));
    m_from->setText(QString::fromStdString(FormatDate(MonthStart(date))));
    m_to->setText(QString::fromStdString(FormatDate(MonthEnd(date))));
    fill();
}

void HistoryWindow::fill() {
    const HistoryMonth month = BuildHistoryMonth(m_recorder.History(), m_month, m_recorder.Today());
    m_filling = true;
    m_table->setRowCount(static_cast<int>(month.rows.size()));
    for (size_t r = 0; r < month.rows.size(); ++r) {
        const HistoryMonthRow& row = month.rows[r];
        const bool weak = row.kind == DayKind::Open || row.kind == DayKind::Future;
        for (int c = 0; c < kHistoryColumnCount; ++c) {
            auto* item = new QTableWidgetItem(QString::fromUtf8(row.cells[c]));
            if (!IsEditable(c)) {
                item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            }
            if (weak && c == kColWorked) {
                item->setForeground(Qt::red);
            }
            m_table->setItem(static_cast<int>(r), c, item);
        }
    }
    m_filling = false;
    m_totals->setText(QString::fromUtf8(month.totals_text));
    drawChart(month);
}

void HistoryWindow::drawChart(const HistoryMonth& month) {
    std::vector<HistoryChart::Day> days;
    days.reserve(month.rows.size());
    for (const HistoryMonthRow& row : month.rows) {
        days.push_back({Hours(row.worked), Hours(row.required), Hours(row.running)});
    }
    m_chart->setDays(std::move(days));
}

void HistoryWindow::cellEdited(QTableWidgetItem* item) {
    if (m_filling) {
        return;
    }
    const auto row = static_cast<size_t>(item->row());
    const Date date = AddDays(MonthStart(m_month), static_cast<int>(row));
    const HistoryDay day = EditedDay(m_recorder.History(), date, item->column(), item->text().trimmed().toStdString());
    if (const std::optional<std::string> problem = m_recorder.Edit(day)) {
        m_dialogs.Warn(*problem);
    }
    // Refused or saved, the table shows the file as it now is.
    fill();
}

void HistoryWindow::exportRange() {
    const auto from = ParseDate(m_from->text().toStdString());
    const auto to = ParseDate(m_to->text().toStdString());
    if (!from || !to || *to < *from) {
        m_dialogs.Warn("Introduce un intervalo de fechas válido.");
        return;
    }
    const QString suggested =
        QString::fromStdString(FormatWorkDate(*from) + "_" + FormatWorkDate(*to) + ".csv").prepend("Jornadas_");
    const QString path =
        QFileDialog::getSaveFileName(this, QStringLiteral("Exportar"), suggested, QStringLiteral("CSV (*.csv)"));
    if (path.isEmpty()) {
        return;
    }
    if (const std::optional<std::string> problem = m_recorder.Export(path.toStdString(), *from, *to)) {
        m_dialogs.Warn(*problem);
    }
}

}  // namespace vt
