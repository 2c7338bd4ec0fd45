#include "calendar/qt_month_calendar.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace vt {

namespace {
// The form was laid out in twips, 15 to the pixel: day buttons of 435 twips, columns 420 apart,
// so that neighbouring buttons share their border line.
constexpr int kDaySize = 29;
constexpr int kColumnPitch = 28;
constexpr int kRowPitch = 29;
constexpr int kColumns = 7;
constexpr int kRows = kGridCells / kColumns;
constexpr int kGridWidth = (kColumns - 1) * kColumnPitch + kDaySize;
constexpr int kGridHeight = (kRows - 1) * kRowPitch + kDaySize;

// The navigation row sits under the grid on the same 28-pixel pitch: "<<" and "-" over the
// first two columns, the centre over the middle three, "+" and ">>" over the last two.
constexpr int kMoveTop = kGridHeight + 2;
constexpr int kMoveHeight = 25;
constexpr int kCentre = 4;
struct MovePlace {
    int index;
    const char* caption;
    int firstColumn;
    int lastColumn;
};
// In the order they stand, which is also the Tab order.
constexpr std::array<MovePlace, 5> kMoves{{
    {0, "<<", 0, 0},
    {1, "-", 1, 1},
    {kCentre, "", 2, 4},
    {2, "+", 5, 5},
    {3, ">>", 6, 6},
}};

const QString kDateItemName = QStringLiteral("mnuPopUpDetalle");
const QString kDetailPrefix = QStringLiteral("mnuPopUpDetalle(");

// A menu reads "&" as the mark of a shortcut letter; doubled, it shows as itself.
QString MenuCaption(const std::string& text) {
    return QString::fromStdString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

// By the menu's own list rather than its children: the owner may have parented the items
// elsewhere.
QAction* ActionNamed(const QMenu* menu, const QString& name) {
    for (QAction* action : menu->actions()) {
        if (action->objectName() == name) {
            return action;
        }
    }
    return nullptr;
}
}  // namespace

MonthCalendar::MonthCalendar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("MonthCalendar"));

    // Made first and lowered, so that the first day button covers it: it has to be visible
    // to take the focus, and nothing of it should show.
    m_txtFoco = new QLineEdit(this);
    m_txtFoco->setObjectName(QStringLiteral("txtFoco"));
    m_txtFoco->setGeometry(0, 0, 1, 1);
    m_txtFoco->setFrame(false);
    // Whatever is typed while it holds the focus would pile up out of sight.
    m_txtFoco->setReadOnly(true);
    // Reached only through focusAway, never by Tab.
    m_txtFoco->setFocusPolicy(Qt::ClickFocus);
    m_txtFoco->lower();

    buildDays();
    buildMoves();
    setFixedSize(kGridWidth, kMoveTop + kMoveHeight);
}

void MonthCalendar::buildDays() {
    for (int cell = 0; cell < kGridCells; ++cell) {
        auto* button = new QPushButton(QStringLiteral("88"), this);
        button->setObjectName(QStringLiteral("cmdDia(%1)").arg(cell));
        button->setGeometry((cell % kColumns) * kColumnPitch, (cell / kColumns) * kRowPitch, kDaySize, kDaySize);
        // Moves over a button report the day again, as they did before a click hid its details.
        button->setMouseTracking(true);
        button->installEventFilter(this);
        connect(button, &QPushButton::clicked, this, [this, cell] { onDayClicked(cell); });
        m_cmdDia[static_cast<size_t>(cell)] = button;
    }
}

void MonthCalendar::buildMoves() {
    for (const MovePlace& place : kMoves) {
        auto* button = new QPushButton(QString::fromUtf8(place.caption), this);
        button->setObjectName(QStringLiteral("cmdMover(%1)").arg(place.index));
        const int left = place.firstColumn * kColumnPitch;
        button->setGeometry(left, kMoveTop, place.lastColumn * kColumnPitch + kDaySize - left, kMoveHeight);
        const int index = place.index;
        connect(button, &QPushButton::clicked, this, [this, index] { emit moveRequested(index); });
        m_cmdMover[static_cast<size_t>(index)] = button;
    }
}

void MonthCalendar::showGrid(const MonthGrid& grid) {
    for (size_t i = 0; i < m_cmdDia.size(); ++i) {
        const DayCell& cell = grid.cells[i];
        ShownCell& shown = m_shown[i];
        QPushButton* button = m_cmdDia[i];
        const QString caption = QString::fromStdString(cell.caption);
        if (caption != shown.caption) {
            button->setText(caption);
            shown.caption = caption;
        }
        if (cell.bold != shown.bold || cell.underline != shown.underline) {
            // Only these attributes are set, so the rest of the font still follows the window's.
            QFont font;
            font.setBold(cell.bold);
            font.setUnderline(cell.underline);
            font.setStrikeOut(false);
            button->setFont(font);
            shown.bold = cell.bold;
            shown.underline = cell.underline;
        }
        if (shown.colour != cell.colour) {
            paintColour(static_cast<int>(i), cell.colour);
        }
        m_tags[i] = QString::fromStdString(cell.tag);
    }
    m_cmdMover[kCentre]->setText(QString::fromStdString(grid.caption));
}

void MonthCalendar::paintColour(int cell, CellColour colour) {
    QPushButton* button = m_cmdDia[static_cast<size_t>(cell)];
    QPalette palette = button->palette();
    if (const std::optional<Rgb> rgb = FixedCellRgb(colour)) {
        palette.setColor(QPalette::Button, QColor(rgb->red, rgb->green, rgb->blue));
        // The fixed colours are all light, whatever the desktop's theme.
        palette.setColor(QPalette::ButtonText, QColor(Qt::black));
    } else {
        // The system's "window background" is the background of editable windows, white on a
        // classic desktop; the palette calls it Base, with its own text colour.
        const QPalette desktop = QApplication::palette();
        palette.setColor(QPalette::Button, desktop.color(QPalette::Base));
        palette.setColor(QPalette::ButtonText, desktop.color(QPalette::Text));
    }
    button->setPalette(palette);
    m_shown[static_cast<size_t>(cell)].colour = colour;
}

QString MonthCalendar::tag(int cell) const {
    if (cell < 0 || cell >= kGridCells) {
        return {};
    }
    return m_tags[static_cast<size_t>(cell)];
}

void MonthCalendar::focusAway() {
    m_txtFoco->setFocus(Qt::OtherFocusReason);
}

int MonthCalendar::dayIndex(const QObject* object) const {
    for (size_t i = 0; i < m_cmdDia.size(); ++i) {
        if (m_cmdDia[i] == object) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

bool MonthCalendar::eventFilter(QObject* watched, QEvent* event) {
    const int cell = dayIndex(watched);
    if (cell < 0) {
        return QWidget::eventFilter(watched, event);
    }
    QPushButton* button = m_cmdDia[static_cast<size_t>(cell)];
    switch (event->type()) {
        case QEvent::Enter:
        case QEvent::MouseMove:
            emit dayHovered(cell);
            break;
        case QEvent::MouseButtonRelease: {
            // The button clicks on this release exactly when it is down and the mouse is still
            // over it; the click that follows is then the mouse's, at this point.
            const auto* mouse = static_cast<const QMouseEvent*>(event);
            if (mouse->button() == Qt::LeftButton && button->isDown() &&
                button->rect().contains(mouse->position().toPoint())) {
                m_releasePos = mouse->globalPosition().toPoint();
            }
            break;
        }
        case QEvent::Paint:
            paintDay(button);
            return true;
        default:
            break;
    }
    return QWidget::eventFilter(watched, event);
}

void MonthCalendar::paintDay(QPushButton* button) const {
    // The desktop style draws push buttons with gradients and bevels that tint or hide the
    // background colour, and a style sheet per button would be re-polished on every change;
    // a plain fill gives the solid colours the marks are read by.
    QPainter painter(button);
    const QPalette& palette = button->palette();
    const QRect area = button->rect();
    const QRect frame = area.adjusted(0, 0, -1, -1);
    painter.fillRect(area, palette.color(QPalette::Button));
    painter.setPen(palette.color(QPalette::Dark));
    painter.drawRect(frame);
    QRect textArea = area;
    if (button->isDown()) {
        // Pressed: a shadow inside the top and left edges, the number a pixel down and right.
        painter.drawLine(frame.left() + 1, frame.top() + 1, frame.right() - 1, frame.top() + 1);
        painter.drawLine(frame.left() + 1, frame.top() + 1, frame.left() + 1, frame.bottom() - 1);
        textArea.translate(1, 1);
    }
    painter.setFont(button->font());
    painter.setPen(palette.color(QPalette::ButtonText));
    painter.drawText(textArea, Qt::AlignCenter, button->text());
    if (button->hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(button);
        focus.rect = area.adjusted(3, 3, -3, -3);
        focus.backgroundColor = palette.color(QPalette::Button);
        button->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, button);
    }
}

void MonthCalendar::onDayClicked(int cell) {
    QPoint at = m_cmdDia[static_cast<size_t>(cell)]->mapToGlobal(QPoint(kDaySize / 2, kDaySize / 2));
    if (m_releasePos) {
        at = *m_releasePos;
        m_releasePos.reset();
    }
    emit dayClicked(cell, at);
}

void MonthCalendar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // The days of the displayed month carry the desktop's colour, which a change of theme
    // while the program runs replaces.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange) {
        for (int cell = 0; cell < kGridCells; ++cell) {
            if (m_shown[static_cast<size_t>(cell)].colour == CellColour::Window) {
                paintColour(cell, CellColour::Window);
            }
        }
    }
}

void MonthCalendar::fillDayMenu(QMenu* mnuPopUp, const DayMenu& menu) {
    if (QAction* dateItem = ActionNamed(mnuPopUp, kDateItemName)) {
        dateItem->setText(MenuCaption(menu.date_caption));
    }
    // The previous day's entries go for good; item 0 stays.
    for (QAction* action : mnuPopUp->actions()) {
        if (action->objectName().startsWith(kDetailPrefix)) {
            delete action;
        }
    }
    for (size_t i = 0; i < menu.rows.size(); ++i) {
        const int row = static_cast<int>(i) + 1;
        auto* item = new QAction(MenuCaption(menu.rows[i].caption), mnuPopUp);
        item->setObjectName(kDetailPrefix + QString::number(row) + QLatin1Char(')'));
        item->setData(row);
        mnuPopUp->addAction(item);
    }
    for (QAction* action : mnuPopUp->actions()) {
        if (action->isSeparator()) {
            action->setVisible(menu.separator);
            break;
        }
    }
}

std::optional<DayMenuChoice> MonthCalendar::popUpDayMenu(QMenu* mnuPopUp, const DayMenu& menu, QPoint globalPos) {
    fillDayMenu(mnuPopUp, menu);
    const QAction* chosen = mnuPopUp->exec(globalPos);
    if (chosen == nullptr) {
        return std::nullopt;
    }
    if (chosen == ActionNamed(mnuPopUp, QStringLiteral("mnuPopUpRepeticion"))) {
        return DayMenuChoice{DayMenuChoice::Kind::AddRepetition, 0};
    }
    if (chosen == ActionNamed(mnuPopUp, QStringLiteral("mnuPopUpAlarma"))) {
        return DayMenuChoice{DayMenuChoice::Kind::AddAlarm, 0};
    }
    if (chosen == ActionNamed(mnuPopUp, kDateItemName)) {
        return DayMenuChoice{DayMenuChoice::Kind::DateItem, 0};
    }
    if (chosen->objectName().startsWith(kDetailPrefix)) {
        return DayMenuChoice{DayMenuChoice::Kind::Detail, chosen->data().toInt()};
    }
    // An item the owner added to the menu for something else.
    return std::nullopt;
}

}  // namespace vt
