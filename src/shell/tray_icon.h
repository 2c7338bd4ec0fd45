#pragma once
#include <QIcon>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <QSystemTrayIcon>
#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "shell/tray_look.h"
#include "shell/tray_view.h"

class QAction;
class QMenu;
class QTimer;

namespace vt {

struct AppState;
class FrmReloj;

// How many pictures TrayImage names.
inline constexpr size_t kTrayImageCount = static_cast<size_t>(TrayImage::BolaB2) + 1;

// Why the main window is being closed.
enum class CloseReason {
    User,           // the window's close button, or anyone asking for the same
    ProgramEnding,  // "Salir", the session ending or a failure: the program is already ending
};

// The tray icon window, FrmSysTray: the ball in the notification area, its tip, its menu and
// the one-second timer TmrFlash that redraws it from the departure stage. It also decides
// what closing and minimising the main window mean, since only where there is a tray can
// the window go there. Without a system tray the program keeps working with its window shown.
class FrmSysTray : public QObject, public TrayView {
    Q_OBJECT
    // The 64-character tip field, NUL and blanks included. Written here it is sent to the tray
    // on the next tick, which also puts the task's tip back.
    Q_PROPERTY(QString Tooltip READ tooltip WRITE setTooltip)
    // TmrFlash's interval in milliseconds.
    Q_PROPERTY(int Interval READ interval WRITE setInterval)

public:
    // hasSystemTray tells whether the desktop has a tray now; a panel can come and go while
    // the program runs, so it is asked each time it matters.
    explicit FrmSysTray(std::function<bool()> hasSystemTray = &QSystemTrayIcon::isSystemTrayAvailable,
                        QObject* parent = nullptr);
    ~FrmSysTray() override;
    FrmSysTray(const FrmSysTray&) = delete;
    FrmSysTray& operator=(const FrmSysTray&) = delete;

    // The tray and the main window know each other; both exist before they are joined.
    void setMainWindow(FrmReloj& window);
    // What each tick draws from. Until it is given, ticks draw nothing.
    void setState(const AppState& state) { m_state = &state; }

    void Load() override;
    // Shown for ten seconds as the tray's own message, where the icon is in a tray and the
    // desktop shows such messages; elsewhere the reminder's dialog is all the user gets.
    void Notify(const std::string& title, const std::string& text) override;

    QString tooltip() const;
    void setTooltip(const QString& text);
    int interval() const;
    void setInterval(int milliseconds);

    // The main window is being closed. Returns true when the close is cancelled: the user's
    // close on a desktop with a tray only hides the window there, as the tray is where the
    // program lives; "Salir" is the way out.
    bool queryUnload(CloseReason reason);
    // The main window's state changed; a minimised window goes to the tray.
    void mainWindowStateChanged();

    // mRestore and the double click: the main window shown normally, in front, with the focus.
    void showMainWindow();
    // mnuMinimizar: to the tray where there is one, else to the task bar.
    void minimiseMainWindow();
    // At the program's end: the timer stops and the icon leaves the tray.
    void unload();
    // Starts the running timer's second anew, in step with the main timer started at the same
    // moment: two one-second timers in step wake the program once a second instead of twice.
    void restartFlashTimer();

    bool hasSystemTray() const { return m_hasSystemTray(); }
    // The icon, made when first needed.
    QSystemTrayIcon* trayIcon();
    QMenu* popupMenu() const { return m_mPopupMenu.get(); }
    QAction* menuItem(const QString& name) const;
    // The drawn picture of a tray image (16 x 16).
    const QPixmap& picture(TrayImage image) const;

    // The event name of a tray icon activation, as the original tray messages were named.
    static QString mouseEventName(QSystemTrayIcon::ActivationReason reason);

signals:
    // One per activation of the icon, carrying its name ("LBUTTONDBLCLK").
    void mouseEvent(const QString& name);
    // After every redraw of the icon.
    void iconChanged();
    // After each notification handed to the desktop.
    void notified(const QString& title, const QString& text);

private:
    void buildMenu();
    void onFlash();
    void showCurrent();
    void putInTray();
    void onActivated(QSystemTrayIcon::ActivationReason reason);
    void onMenuAboutToShow();
    const QIcon& iconOf(TrayImage image) const;

    std::function<bool()> m_hasSystemTray;
    TrayModel m_model;
    const AppState* m_state = nullptr;
    FrmReloj* m_window = nullptr;
    QSystemTrayIcon* m_icon = nullptr;
    // Between Load and unload: the icon belongs in the tray.
    bool m_loaded = false;
    QTimer* m_tmrFlash = nullptr;
    // A menu needs a widget parent or an owner; this object is neither a widget nor
    // destroyed by one.
    std::unique_ptr<QMenu> m_mPopupMenu;
    QAction* m_mAbout = nullptr;
    QAction* m_mRestore = nullptr;
    // Each picture and its icon are made once, when first needed.
    mutable std::array<QPixmap, kTrayImageCount> m_pictures;
    mutable std::array<QIcon, kTrayImageCount> m_icons;
    // The picture the tray shows now: the tray redraws whatever it is given, even the same icon,
    // and most ticks change nothing.
    std::optional<TrayImage> m_shownImage;
};

}  // namespace vt
