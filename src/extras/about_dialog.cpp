#include "extras/about_dialog.h"

#include <QEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/shell_open.h"

namespace vt {

namespace {

constexpr int kLogoSize = 64;

const QString kCredit = QStringLiteral("Vendrako Timer, hecho por Vendrako para controlar su jornada.");
// Set by the build (VENDRAKO_CONTACT_MAIL, VENDRAKO_WEB_ADDRESS): they are the distributor's.
const QString kMail = QStringLiteral(VENDRAKO_CONTACT_MAIL);
const QString kWebAddress = QStringLiteral(VENDRAKO_WEB_ADDRESS);

// The tray's green ball, large: the program's face wherever it shows itself.
QPixmap Logo() {
    QImage image(kLogoSize, kLogoSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ball(4.0, 4.0, kLogoSize - 8.0, kLogoSize - 8.0);
    QRadialGradient shine(ball.center() - QPointF(10.0, 10.0), ball.width() * 0.7);
    shine.setColorAt(0.0, QColor(140, 230, 150));
    shine.setColorAt(1.0, QColor(30, 170, 50));
    painter.setPen(QPen(Qt::black, 2.0));
    painter.setBrush(shine);
    painter.drawEllipse(ball);
    painter.end();
    return QPixmap::fromImage(image);
}

QFrame* Line(const QString& name, QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setObjectName(name);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

}  // namespace

FormVendrako::FormVendrako(ShellOpen& shell, std::string working_folder, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint),
      m_shell(shell),
      m_workingFolder(std::move(working_folder)) {
    setObjectName(QStringLiteral("FormVendrako"));
    setMouseTracking(true);

    m_imgLogo = new QLabel(this);
    m_imgLogo->setObjectName(QStringLiteral("imgLogo"));
    m_imgLogo->setPixmap(Logo());
    m_lblMas = new QLabel(kCredit, this);
    m_lblMas->setObjectName(QStringLiteral("lblMas"));
    m_lblMas->setWordWrap(true);
    m_lblMail = new QLabel(kMail, this);
    m_lblMail->setObjectName(QStringLiteral("lblMail"));
    m_lblURL = new QLabel(kWebAddress, this);
    m_lblURL->setObjectName(QStringLiteral("lblURL"));
    for (QLabel* label : {m_lblMail, m_lblURL}) {
        label->setCursor(Qt::PointingHandCursor);
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, Qt::blue);
        label->setPalette(palette);
    }
    for (QLabel* label : {m_imgLogo, m_lblMas, m_lblMail, m_lblURL}) {
        label->setMouseTracking(true);
        label->installEventFilter(this);
    }

    auto* texts = new QVBoxLayout;
    texts->addWidget(m_lblMas);
    texts->addWidget(Line(QStringLiteral("Line1"), this));
    texts->addWidget(m_lblMail);
    texts->addWidget(Line(QStringLiteral("Line2"), this));
    texts->addWidget(m_lblURL);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(m_imgLogo, 0, Qt::AlignTop);
    layout->addLayout(texts);
    setFixedWidth(360);
    adjustSize();
}

// Without a frame the box needs an edge of its own to stand out from what is behind it. Drawn
// here rather than by a style sheet, which would take over the labels' fonts and with them the
// hover underline.
void FormVendrako::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    QPainter painter(this);
    painter.setPen(Qt::gray);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void FormVendrako::ShowModal(ShellOpen& shell, const std::string& working_folder, QWidget* parent) {
    FormVendrako form(shell, working_folder, parent);
    form.centre();
    form.exec();
}

QRect FormVendrako::screenRect() const {
    const QScreen* shown_on = screen() != nullptr ? screen() : QGuiApplication::primaryScreen();
    return shown_on != nullptr ? shown_on->geometry() : QRect(0, 0, 1024, 768);
}

void FormVendrako::centre() {
    const QRect screen = screenRect();
    move(screen.x() + (screen.width() - width()) / 2, screen.y() + (screen.height() - height()) / 2);
}

void FormVendrako::fShow() {
    centre();
    show();
}

QPoint FormVendrako::PositionInside(const QRect& screen, const QSize& box, int x, int y) {
    const int left = std::max(screen.left(), std::min(x, screen.x() + screen.width() - box.width()));
    const int top = std::max(screen.top(), std::min(y, screen.y() + screen.height() - box.height()));
    return {left, top};
}

void FormVendrako::fShowPosicionado(qint16 x, qint16 y) {
    move(PositionInside(screenRect(), size(), x, y));
    show();
}

void FormVendrako::underline(QLabel* label, bool on) {
    QFont font = label->font();
    font.setUnderline(on);
    label->setFont(font);
}

bool FormVendrako::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseMove) {
        underline(m_lblMail, watched == m_lblMail);
        underline(m_lblURL, watched == m_lblURL);
        // Taken here: a label leaves the move unhandled, and the form, its parent, would then
        // take it as a move over itself and clear the underline again.
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress) {
        if (watched == m_lblMail) {
            m_shell.Open("mailto:" + m_lblMail->text().toStdString(), m_workingFolder);
            return true;
        }
        if (watched == m_lblURL) {
            m_shell.Open("http://" + m_lblURL->text().toStdString(), m_workingFolder);
            return true;
        }
        if (watched == m_imgLogo || watched == m_lblMas) {
            accept();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FormVendrako::keyPressEvent(QKeyEvent* event) {
    event->accept();
    accept();
}

void FormVendrako::mousePressEvent(QMouseEvent* event) {
    event->accept();
    accept();
}

void FormVendrako::mouseMoveEvent(QMouseEvent* event) {
    underline(m_lblMail, false);
    underline(m_lblURL, false);
    QDialog::mouseMoveEvent(event);
}

}  // namespace vt
