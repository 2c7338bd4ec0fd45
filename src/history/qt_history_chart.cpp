#include "history/qt_history_chart.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace vt {

namespace {

const QColor kWorkedColour(0x20, 0x9f, 0xdf);
const QColor kRequiredColour(0x99, 0xca, 0x53);
const QColor kBalanceColour(0xf6, 0xa6, 0x25);

// A scale from low to high in whole hours, with a step that keeps its labels apart.
struct Scale {
    double low = 0;
    double high = 1;
    int step = 1;
};

Scale WholeHours(double low, double high, int height, int label_height) {
    Scale scale{std::floor(low), std::max(std::ceil(high), std::floor(low) + 1), 1};
    const int span = static_cast<int>(scale.high - scale.low);
    while (span / scale.step * label_height * 2 > height && scale.step < span) {
        scale.step *= 2;
    }
    return scale;
}

}  // namespace

HistoryChart::HistoryChart(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("graJornadas"));
    setMinimumHeight(220);
}

void HistoryChart::setDays(std::vector<Day> days) {
    m_days = std::move(days);
    update();
}

void HistoryChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().base());
    const QFontMetrics metrics = painter.fontMetrics();
    const int line = metrics.height();
    const int margin = line / 2;

    double top = 1;
    double low = 0;
    double high = 0;
    for (const Day& day : m_days) {
        top = std::max({top, day.worked, day.required});
        low = std::min(low, day.running);
        high = std::max(high, day.running);
    }
    // Room for the axis titles and labels at the sides, the day numbers and the legend below.
    const int side = line + metrics.horizontalAdvance(QStringLiteral("-00"));
    const QRect plot(margin + side, margin, width() - 2 * (margin + side), height() - 2 * margin - 2 * line - margin);
    if (plot.width() < 10 || plot.height() < 10) {
        return;
    }
    const Scale hours = WholeHours(0, top, plot.height(), line);
    const Scale balance = WholeHours(low - 1, high + 1, plot.height(), line);
    const auto y = [&plot](const Scale& s, double value) {
        return plot.bottom() - (value - s.low) / (s.high - s.low) * plot.height();
    };

    // Grid and labels of the hours on the left, of the balance on the right.
    const QColor text = palette().color(QPalette::Text);
    painter.setPen(palette().color(QPalette::Mid));
    for (double h = hours.low; h <= hours.high; h += hours.step) {
        painter.drawLine(QPointF(plot.left(), y(hours, h)), QPointF(plot.right(), y(hours, h)));
    }
    painter.setPen(text);
    for (double h = hours.low; h <= hours.high; h += hours.step) {
        painter.drawText(QRectF(plot.left() - side, y(hours, h) - line / 2.0, side - 4, line),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(h));
    }
    for (double b = balance.low; b <= balance.high; b += balance.step) {
        painter.drawText(QRectF(plot.right() + 4, y(balance, b) - line / 2.0, side - 4, line),
                         Qt::AlignLeft | Qt::AlignVCenter, QString::number(b));
    }
    painter.save();
    painter.translate(margin + line / 2.0, plot.center().y());
    painter.rotate(-90);
    painter.drawText(QRectF(-plot.height() / 2.0, -line / 2.0, plot.height(), line), Qt::AlignCenter,
                     QStringLiteral("horas"));
    painter.restore();
    painter.save();
    painter.translate(width() - margin - line / 2.0, plot.center().y());
    painter.rotate(90);
    painter.drawText(QRectF(-plot.height() / 2.0, -line / 2.0, plot.height(), line), Qt::AlignCenter,
                     QStringLiteral("saldo (h)"));
    painter.restore();
    painter.drawRect(plot);

    // Two bars a day and the day's number under them, in a smaller type so that 31 fit.
    const double slot = plot.width() / static_cast<double>(std::max<size_t>(m_days.size(), 1));
    QFont small = painter.font();
    small.setPointSizeF(small.pointSizeF() * 0.75);
    painter.setFont(small);
    QPainterPath balanceLine;
    for (size_t i = 0; i < m_days.size(); ++i) {
        const double left = plot.left() + slot * static_cast<double>(i);
        const double bar = slot * 0.35;
        painter.fillRect(
            QRectF(left + slot * 0.15, y(hours, m_days[i].worked), bar, plot.bottom() - y(hours, m_days[i].worked)),
            kWorkedColour);
        painter.fillRect(
            QRectF(left + slot * 0.5, y(hours, m_days[i].required), bar, plot.bottom() - y(hours, m_days[i].required)),
            kRequiredColour);
        painter.drawText(QRectF(left, plot.bottom() + 2, slot, line), Qt::AlignHCenter | Qt::AlignTop,
                         QString::number(i + 1));
        const QPointF point(left + slot / 2, y(balance, m_days[i].running));
        if (i == 0) {
            balanceLine.moveTo(point);
        } else {
            balanceLine.lineTo(point);
        }
    }
    painter.strokePath(balanceLine, QPen(kBalanceColour, 2));

    // The legend, centred under the day numbers.
    painter.setFont(font());
    const std::pair<QString, QColor> entries[] = {{QStringLiteral("Trabajado"), kWorkedColour},
                                                  {QStringLiteral("Previsto"), kRequiredColour},
                                                  {QStringLiteral("Saldo acumulado"), kBalanceColour}};
    int legend = 0;
    for (const auto& [caption, colour] : entries) {
        legend += line + 4 + metrics.horizontalAdvance(caption) + line;
    }
    int x = (width() - legend) / 2;
    const int legendTop = height() - margin - line;
    for (const auto& [caption, colour] : entries) {
        if (colour == kBalanceColour) {
            painter.fillRect(QRectF(x, legendTop + line / 2.0 - 1, line, 2), colour);
        } else {
            painter.fillRect(QRectF(x + 2, legendTop + 2, line - 4, line - 4), colour);
        }
        x += line + 4;
        painter.setPen(text);
        painter.drawText(QRect(x, legendTop, metrics.horizontalAdvance(caption), line), Qt::AlignVCenter, caption);
        x += metrics.horizontalAdvance(caption) + line;
    }
}

}  // namespace vt
