#pragma once
#include <QList>
#include <QMainWindow>
#include <QPoint>
#include <array>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "shell/main_view.h"

class QAction;
class QFrame;
class QPlainTextEdit;
class QLabel;
class QMenu;
class QTimer;

namespace vt {

class App;
class MonthCalendar;
class Dialogs;
class HistoryWindow;
class FrmSysTray;
class TimeBox;

// The main window, frmReloj: the three clock-in boxes, the departure label, the status line,
// the menu bar, the one-second main timer timPincipal and the closing path. What happens on
// start-up, on each tick, on leaving a box and on closing is App's to decide.
class FrmReloj : public QMainWindow, public MainView {
    Q_OBJECT

public:
    // The boxes and the schedule dialog show their messages through dialogs.
    explicit FrmReloj(Dialogs& dialogs, QWidget* parent = nullptr);

    // App needs the window to exist before it does, so the two are joined after both exist.
    void setApp(App& app) { m_app = &app; }
    // The tray window decides what closing and minimising mean; without one the window
    // closes and minimises as any other.
    void setTray(FrmSysTray& tray) { m_tray = &tray; }

    void SetCaption(const std::string& caption) override;
    void SetBusyPointer(bool on) override;
    std::optional<std::string> MarkTask() override;
    void ShowClockIns(const std::array<std::string, 3>& times) override;
    void SetAfternoonLocked(bool locked) override;
    std::string ClockInText(int index) const override;
    void ShowDeparture(const std::string& label, const std::string& status) override;
    bool EditSchedule(std::array<std::string, 8>& day_hours, std::array<std::string, 8>& day_modes) override;
    void RepetitionMenuChanged() override;
    bool ModalOpen() const override;
    std::optional<int> AskRepeatLater(const RepeatPrompt& prompt) override;
    EditorAction EditAlarm(AlarmForm& form) override;
    EditorAction EditRepetition(RepetitionForm& form) override;
    int ChooseAlarm(const EntryList& alarms) override;
    void ShowMonthGrid(const MonthGrid& grid) override;
    void ShowDetails(const std::string& text) override;
    void HideDetails() override;
    void FocusAway() override;
    std::optional<DayMenuChoice> PopUpDayMenu(const DayMenu& menu) override;
    std::optional<std::string> ChooseIcsFile(bool forSaving) override;

    // The tray's "Informe de proximidad" and "Accesos de hoy", and its word that it brought
    // the window back.
    void showProximityReport();
    void openTodaysAccessLog();
    // "Histórico de jornadas…", from the menu or the tray.
    void openHistory();
    void ShowHistory(HistoryRecorder& history) override;
    HistoryWindow* historyWindow() const { return m_history; }
    void markTask();
    void showTrayAbout();
    void showTaskSummary();
    void windowRestored();

    // Once App::Start has gone through: the timer takes the interval App set, and runs if
    // App enabled it.
    void startMainTimer();

    // "Salir": the closing steps (with their messages), then the program ends.
    void exitProgram();

    // The desktop session is ending (SIGTERM, SIGINT): every dialog closes at once, nothing
    // further is shown, and the program's event loops are ended. The closing steps follow in
    // finishEnding(), once those loops have returned and no dialog's caller is half-way.
    void endSession();
    // Whether the program is ending, however it came to it.
    bool ending() const { return m_exitStatus.has_value(); }
    // After the event loop: the closing steps of an ended session (once), and the exit status;
    // loopStatus when nothing ended the program.
    int finishEnding(int loopStatus);

    // The clock-in box txtHora(index), 0 "Entrada 1", 1 "Salida 1", 2 "Entrada 2".
    TimeBox* txtHora(int index) const { return m_txtHora.at(static_cast<size_t>(index)); }
    QLabel* lblSalida() const { return m_lblSalida; }
    QString statusLine() const;

    // A menu item ("mnuAlarmaNueva") or menu ("mnuAlarma") by its name; null if none.
    QAction* menuItem(const QString& name) const;
    QMenu* menu(const QString& name) const;

    // The calendar day's context menu; it is not part of the menu bar.
    QMenu* popUpMenu() const { return m_mnuPopUp; }

    // mnuRepeticionDato: one item per repetition, after the hidden template at index 0, as
    // the menu was last opened.
    QList<QAction*>& repetitionItems() { return m_mnuRepeticionDato; }

signals:
    // The program must end with this exit status; main hands it to the application.
    void programEnded(int exitStatus);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Turns a menu item on and runs the action when it is chosen (once App is joined).
    void enableItem(const char* name, std::function<void()> action);
    void setDetailsShown(bool shown);
    // A "-" name stands for a separator.
    struct MenuRow {
        const char* name;
        const char* caption;
    };

    QMenu* buildMenu(const char* name, const char* caption, std::initializer_list<MenuRow> items);
    void buildClockIns();
    void onMainTimer();
    void rebuildRepetitionItems();
    void onConfig();
    void leaveClockIn(int index, const QString& text);
    void endAfterFailure();
    void endThroughClosingPath(bool interactive);
    bool beginEnding(int exitStatus);

    Dialogs& m_dialogs;
    MonthCalendar* m_calendar = nullptr;
    QFrame* m_fraResumen = nullptr;
    QPlainTextEdit* m_txtResumen = nullptr;
    QPoint m_dayClickedAt;
    App* m_app = nullptr;
    FrmSysTray* m_tray = nullptr;
    HistoryWindow* m_history = nullptr;
    std::array<TimeBox*, 3> m_txtHora{};
    QLabel* m_lblSalida = nullptr;
    QLabel* m_statusLine = nullptr;
    // What the departure label and the status line show now: the tick sets them every second
    // and the widgets are touched only when a text really changes.
    std::string m_shownDeparture;
    std::string m_shownStatus;
    QTimer* m_timPincipal = nullptr;
    QMenu* m_mnuPopUp = nullptr;
    QMenu* m_mnuRepeticion = nullptr;
    QAction* m_mnuRepeticionNinguna = nullptr;
    QList<QAction*> m_mnuRepeticionDato;
    // Whether the reminders changed since the menu's items were made.
    bool m_repetitionMenuStale = false;
    bool m_inTick = false;
    // Set while App handles a left box; a message box it shows then takes the focus from the
    // next box, and that must not be forwarded back into App in the middle.
    bool m_inClockInLeave = false;
    std::optional<int> m_exitStatus;
    // The session ended and its closing steps have not run yet.
    bool m_sessionClosingDue = false;
    // For each busy stretch under way, innermost last: whether it set the busy pointer.
    std::vector<bool> m_busyPointerSet;
};

}  // namespace vt
