#pragma once
#include <QList>
#include <QMainWindow>
#include <initializer_list>
#include <optional>
#include <string>

#include "shell/main_view.h"

class QAction;
class QMenu;
class QTimer;

namespace vt {

class App;

// The main window, frmReloj: the menu bar, the one-second main timer timPincipal and the
// closing path. What happens on start-up, on each tick and on closing is App's to decide.
class FrmReloj : public QMainWindow, public MainView {
    Q_OBJECT

public:
    explicit FrmReloj(QWidget* parent = nullptr);

    // App needs the window to exist before it does, so the two are joined after both exist.
    void setApp(App& app) { m_app = &app; }

    void SetCaption(const std::string& caption) override;

    // Once App::Start has gone through: the timer takes the interval App set, and runs if
    // App enabled it.
    void startMainTimer();

    // The desktop session is ending (SIGTERM, SIGINT): the closing steps run without
    // anything modal, and the program ends.
    void endSession();

    // A menu item ("mnuAlarmaNueva") or menu ("mnuAlarma") by its name; null if none.
    QAction* menuItem(const QString& name) const;
    QMenu* menu(const QString& name) const;

    // The calendar day's context menu; it is not part of the menu bar.
    QMenu* popUpMenu() const { return m_mnuPopUp; }

    // mnuRepeticionDato: one item per repetition, after the hidden template at index 0.
    QList<QAction*>& repetitionItems() { return m_mnuRepeticionDato; }

signals:
    // The program must end with this exit status; main hands it to the application.
    void programEnded(int exitStatus);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // A "-" name stands for a separator.
    struct MenuRow {
        const char* name;
        const char* caption;
    };

    QMenu* buildMenu(const char* name, const char* caption, std::initializer_list<MenuRow> items);
    void onMainTimer();
    bool beginEnding(int exitStatus);

    App* m_app = nullptr;
    QTimer* m_timPincipal = nullptr;
    QMenu* m_mnuPopUp = nullptr;
    QList<QAction*> m_mnuRepeticionDato;
    bool m_inTick = false;
    std::optional<int> m_exitStatus;
};

}  // namespace vt
