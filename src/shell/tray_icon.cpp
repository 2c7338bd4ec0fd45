#include "shell/tray_icon.h"

#include <QAction>
#include <QCoreApplication>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QTextDocument>
#include <QTimer>
#include <QtMath>
#include <cmath>

#include "shell/app.h"
#include "shell/main_window.h"
#include "store/app_paths.h"

namespace vt {

namespace {

constexpr int kFlashIntervalMs = 1000;
constexpr int kNotificationMs = 10000;
constexpr int kPictureSize = 16;
// The ball's square, on half pixels so that its antialiased rim stays sharp.
const QRectF kBall(1.5, 1.5, 13.0, 13.0);

const QColor kRim(0, 0, 0);
const QColor kDark(40, 40, 40);
const QColor kRed(220, 30, 30);
const QColor kYellow(245, 210, 0);
const QColor kGreen(30, 170, 50);
const QColor kGrey(175, 175, 175);
const QColor kBlue(30, 90, 200);

QImage BlankPicture() {
    QImage image(kPictureSize, kPictureSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void DrawRim(QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kRim, 1.0));
    painter.drawEllipse(kBall);
}

QImage SolidBall(const QColor& colour) {
    QImage image = BlankPicture();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(kBall);
    DrawRim(painter);
    return image;
}

// A ball cut in equal portions from twelve o'clock clockwise; the first `made` are red (the
// clock-ins already made), the rest grey.
QImage PortionBall(int portions, int made) {
    QImage image = BlankPicture();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const int span = 360 / portions;
    for (int portion = 0; portion < portions; ++portion) {
        painter.setBrush(portion < made ? kRed : kGrey);
        // Qt counts angles in sixteenths of a degree, anticlockwise from three o'clock.
        painter.drawPie(kBall, (90 - portion * span) * 16, -span * 16);
    }
    // The cuts are drawn as well, so that a day with no clock-in yet still shows how many
    // portions it has (the all-grey four-portion and two-portion balls would look the same).
    painter.setPen(QPen(kRim, 1.0));
    const QPointF centre = kBall.center();
    const double radius = kBall.width() / 2.0;
    for (int portion = 0; portion < portions; ++portion) {
        const double angle = qDegreesToRadians(90.0 - portion * span);
        painter.drawLine(centre, centre + QPointF(radius * std::cos(angle), -radius * std::sin(angle)));
    }
    DrawRim(painter);
    return image;
}

// A white question mark on a blue ball, drawn with lines so that it does not depend on the
// fonts the desktop happens to have.
QImage QuestionBall() {
    QImage image = SolidBall(kBlue);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath hook;
    const QRectF bend(5.0, 3.5, 6.0, 5.0);
    hook.arcMoveTo(bend, 180.0);
    hook.arcTo(bend, 180.0, -240.0);
    hook.lineTo(8.0, 9.8);
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(hook);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(8.0, 12.2), 1.1, 1.1);
    return image;
}

QImage DrawPicture(TrayImage image) {
    switch (image) {
        case TrayImage::BolaHelp:
            return QuestionBall();
        case TrayImage::BolaNegra:
            return SolidBall(kDark);
        case TrayImage::BolaRoja:
            return SolidBall(kRed);
        case TrayImage::BolaAmarilla:
            return SolidBall(kYellow);
        case TrayImage::BolaVerde:
            return SolidBall(kGreen);
        case TrayImage::BolaA1:
            return PortionBall(4, 0);
        case TrayImage::BolaA2:
            return PortionBall(4, 1);
        case TrayImage::BolaA3:
            return PortionBall(4, 2);
        case TrayImage::BolaA4:
            return PortionBall(4, 3);
        case TrayImage::BolaB1:
            return PortionBall(2, 0);
        case TrayImage::BolaB2:
            return PortionBall(2, 1);
    }
    return BlankPicture();
}

// The tip holds the last task as the user typed it. A tray tip has no plain-text switch: Qt
// reads it as HTML whenever it looks like HTML ("<b>", "&lt;"). Only such a tip is escaped, and
// kept on one line with its blanks as typed, so that it shows literally; any other goes as it is,
// for the trays that show the tip as plain text.
QString TipShown(const std::u32string& field) {
    const QString tip = QString::fromStdString(TrayTipShown(field));
    return Qt::mightBeRichText(tip) ? Qt::convertFromPlainText(tip, Qt::WhiteSpacePre) : tip;
}

struct MenuRow {
    const char* name;
    const char* caption;  // null for a separator
    bool works;
};

}  // namespace

FrmSysTray::FrmSysTray(std::function<bool()> hasSystemTray, QObject* parent)
    : QObject(parent), m_hasSystemTray(std::move(hasSystemTray)), m_model(kAppTitle) {
    setObjectName(QStringLiteral("FrmSysTray"));

    buildMenu();

    m_tmrFlash = new QTimer(this);
    m_tmrFlash->setObjectName(QStringLiteral("TmrFlash"));
    m_tmrFlash->setInterval(kFlashIntervalMs);
    connect(m_tmrFlash, &QTimer::timeout, this, &FrmSysTray::onFlash);
}

FrmSysTray::~FrmSysTray() {
    unload();
}

void FrmSysTray::buildMenu() {
    m_mPopupMenu = std::make_unique<QMenu>();
    m_mPopupMenu->setObjectName(QStringLiteral("mPopupMenu"));
    // The items whose feature is not there yet can be seen but not chosen.
    static constexpr std::array<MenuRow, 13> rows{{
        {"mAbout", "About", true},
        {"mSep1", nullptr, false},
        {"mRestore", "Mostrar aplicación", true},
        {"mnuInforme", "Informe de proximidad", true},
        {"mnuAccesos", "Accesos de hoy", true},
        {"mSep4", nullptr, false},
        {"mnuTareaMarcar", "TAREAS", true},
        {"mnuTareaResumen", "Resumen de tareas", true},
        {"mSep3", nullptr, false},
        {"mnuMinimizar", "Minimizar", true},
        {"mSep2", nullptr, false},
        {"mExit", "Salir", true},
        {"mnuHistorico", "Histórico de jornadas…", true},
    }};
    for (const MenuRow& row : rows) {
        auto* action = new QAction(m_mPopupMenu.get());
        action->setObjectName(QString::fromUtf8(row.name));
        if (row.caption == nullptr) {
            action->setSeparator(true);
        } else {
            action->setText(QString::fromUtf8(row.caption));
            action->setEnabled(row.works);
        }
        m_mPopupMenu->addAction(action);
    }
    m_mAbout = menuItem(QStringLiteral("mAbout"));
    m_mRestore = menuItem(QStringLiteral("mRestore"));
    connect(m_mRestore, &QAction::triggered, this, &FrmSysTray::showMainWindow);
    connect(menuItem(QStringLiteral("mnuInforme")), &QAction::triggered, this, [this] {
        if (m_window != nullptr) {
            m_window->showProximityReport();
        }
    });
    connect(m_mAbout, &QAction::triggered, this, [this] {
        if (m_window != nullptr) {
            m_window->showTrayAbout();
        }
    });
    connect(menuItem(QStringLiteral("mnuTareaMarcar")), &QAction::triggered, this, [this] {
        if (m_window != nullptr) {
            m_window->markTask();
        }
    });
    connect(menuItem(QStringLiteral("mnuTareaResumen")), &QAction::triggered, this, [this] {
        if (m_window != nullptr) {
            m_window->showTaskSummary();
        }
    });
    connect(menuItem(QStringLiteral("mnuAccesos")), &QAction::triggered, this, [this] {
        if (m_window != nullptr) {
            m_window->openTodaysAccessLog();
        }
    });
    connect(menuItem(QStringLiteral("mnuMinimizar")), &QAction::triggered, this, &FrmSysTray::minimiseMainWindow);
    connect(menuItem(QStringLiteral("mExit")), &QAction::triggered, this, [this] {
        if (m_window != nullptr) {
            m_window->exitProgram();
        }
    });
    connect(menuItem(QStringLiteral("mnuHistorico")), &QAction::triggered, this, [this] {
        if (m_window != nullptr) {
            m_window->openHistory();
        }
    });
    connect(m_mPopupMenu.get(), &QMenu::aboutToShow, this, &FrmSysTray::onMenuAboutToShow);
}

void FrmSysTray::setMainWindow(FrmReloj& window) {
    m_window = &window;
    connect(&window, &FrmReloj::programEnded, this, [this](int) { unload(); });
}

void FrmSysTray::Load() {
    showCurrent();
    m_tmrFlash->start();
    const std::string executable = QCoreApplication::applicationFilePath().toStdString();
    m_mAbout->setText(QStringLiteral("About ") + QString::fromStdString(PathsForExecutable(executable).ExeBaseName));
    m_loaded = true;
    // Making the icon and putting it in the tray take some milliseconds of talk with the panel
    // and the session bus. They are done as soon as the event loop runs, which at start-up is
    // while the first window is already on the screen, so that window comes up that much sooner.
    QTimer::singleShot(0, this, &FrmSysTray::putInTray);
}

void FrmSysTray::putInTray() {
    // Without a tray there is nowhere to put the icon; the timer and the model still run, so
    // that the tip and the picture are current should one be needed.
    if (m_loaded && hasSystemTray()) {
        trayIcon()->show();
    }
}

QSystemTrayIcon* FrmSysTray::trayIcon() {
    if (m_icon == nullptr) {
        m_icon = new QSystemTrayIcon(this);
        m_icon->setContextMenu(m_mPopupMenu.get());
        connect(m_icon, &QSystemTrayIcon::activated, this, &FrmSysTray::onActivated);
        showCurrent();
    }
    return m_icon;
}

void FrmSysTray::Notify(const std::string& title, const std::string& text) {
    // The message comes out of the icon: without a tray, or before the icon is in it, there
    // is nothing for it to come out of.
    if (m_icon == nullptr || !m_icon->isVisible() || !hasSystemTray() || !QSystemTrayIcon::supportsMessages()) {
        return;
    }
    const QString shownTitle = QString::fromStdString(title);
    const QString shownText = QString::fromStdString(text);
    m_icon->showMessage(shownTitle, shownText, QSystemTrayIcon::Information, kNotificationMs);
    emit notified(shownTitle, shownText);
}

void FrmSysTray::unload() {
    m_loaded = false;
    m_tmrFlash->stop();
    // Removed on the way out, so that no dead icon stays in the tray until the mouse passes.
    if (m_icon != nullptr) {
        m_icon->hide();
    }
}

void FrmSysTray::restartFlashTimer() {
    if (m_tmrFlash->isActive()) {
        m_tmrFlash->start();
    }
}

void FrmSysTray::onFlash() {
    if (m_state == nullptr) {
        return;
    }
    m_model.Tick(*m_state);
    showCurrent();
    emit iconChanged();
}

void FrmSysTray::showCurrent() {
    if (m_icon == nullptr) {
        return;  // the model keeps them until the icon is made
    }
    if (m_model.Image() != m_shownImage) {
        m_shownImage = m_model.Image();
        m_icon->setIcon(iconOf(*m_shownImage));
    }
    const QString tip = TipShown(m_model.TipField());
    if (tip != m_icon->toolTip()) {
        m_icon->setToolTip(tip);
    }
}

QString FrmSysTray::tooltip() const {
    const std::u32string& field = m_model.TipField();
    return QString::fromUcs4(field.data(), static_cast<qsizetype>(field.size()));
}

void FrmSysTray::setTooltip(const QString& text) {
    m_model.SetTip(text.toStdString());
}

int FrmSysTray::interval() const {
    return m_tmrFlash->interval();
}

void FrmSysTray::setInterval(int milliseconds) {
    m_tmrFlash->setInterval(milliseconds);
}

QAction* FrmSysTray::menuItem(const QString& name) const {
    return m_mPopupMenu->findChild<QAction*>(name);
}

const QPixmap& FrmSysTray::picture(TrayImage image) const {
    // Drawn when first shown: a day sees only a few of the pictures, and the start-up none but one.
    QPixmap& drawn = m_pictures.at(static_cast<size_t>(image));
    if (drawn.isNull()) {
        drawn = QPixmap::fromImage(DrawPicture(image));
    }
    return drawn;
}

const QIcon& FrmSysTray::iconOf(TrayImage image) const {
    QIcon& icon = m_icons.at(static_cast<size_t>(image));
    if (icon.isNull()) {
        icon = QIcon(picture(image));
    }
    return icon;
}

QString FrmSysTray::mouseEventName(QSystemTrayIcon::ActivationReason reason) {
    switch (reason) {
        case QSystemTrayIcon::Trigger:
            return QStringLiteral("LBUTTONUP");
        case QSystemTrayIcon::DoubleClick:
            return QStringLiteral("LBUTTONDBLCLK");
        case QSystemTrayIcon::Context:
            return QStringLiteral("RBUTTONUP");
        case QSystemTrayIcon::MiddleClick:
            return QStringLiteral("MBUTTONUP");
        default:
            return QStringLiteral("OTHER....: ") + QString::number(static_cast<int>(reason));
    }
}

void FrmSysTray::onActivated(QSystemTrayIcon::ActivationReason reason) {
    emit mouseEvent(mouseEventName(reason));
    if (reason == QSystemTrayIcon::DoubleClick) {
        showMainWindow();
    }
}

void FrmSysTray::onMenuAboutToShow() {
    // Offered unless the window is already there to see. A maximised window is shown as much
    // as a normal one, so it does not need restoring either.
    m_mRestore->setEnabled(m_window != nullptr && (!m_window->isVisible() || m_window->isMinimized()));
}

void FrmSysTray::showMainWindow() {
    if (m_window == nullptr) {
        return;
    }
    if (!m_window->isVisible() || m_window->isMinimized()) {
        m_window->showNormal();
    }
    m_window->raise();
    // Activating the window gives the keyboard to the control that last had it there (a
    // clock-in box), which is where the user goes on typing.
    m_window->activateWindow();
    m_window->windowRestored();
}

void FrmSysTray::minimiseMainWindow() {
    if (m_window == nullptr) {
        return;
    }
    if (hasSystemTray()) {
        m_window->hide();
    } else {
        m_window->showMinimized();
    }
}

bool FrmSysTray::queryUnload(CloseReason reason) {
    // Only the user's close is turned into hiding, and only where the tray icon can bring the
    // window back; otherwise the program would go on running out of reach.
    if (reason != CloseReason::User || m_window == nullptr || !hasSystemTray()) {
        return false;
    }
    m_window->hide();
    return true;
}

void FrmSysTray::mainWindowStateChanged() {
    if (m_window == nullptr || !m_window->isMinimized() || !hasSystemTray()) {
        return;
    }
    // Deferred: the desktop is still finishing the minimise, and hiding in the middle of it
    // can leave an empty frame behind on some window managers.
    FrmReloj* window = m_window;
    QTimer::singleShot(0, window, [window] {
        if (window->isMinimized()) {
            window->hide();
        }
    });
}

}  // namespace vt
