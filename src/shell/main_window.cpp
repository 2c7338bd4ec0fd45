#include "shell/main_window.h"

#include <algorithm>
#include <span>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QFileDialog>
#include <QFocusEvent>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "agenda/alarm_dialog.h"
#include "agenda/alarm_list_dialog.h"
#include "agenda/repeat_dialog.h"
#include "agenda/repetition_dialog.h"
#include "calendar/day_menu.h"
#include "calendar/qt_month_calendar.h"
#include "extras/about_dialog.h"
#include "history/history_window.h"
#include "shell/app.h"
#include "shell/config_dialog.h"
#include "shell/qt_time_box.h"
#include "shell/tray_icon.h"
#include "tasks/mark_task_dialog.h"

namespace vt {

namespace {
// The compact window of the original, 3960 twips high at 15 twips to the pixel.
constexpr int kWindowWidth = 430;
constexpr int kCompactHeight = 264;
constexpr int kTallHeight = 338;

constexpr std::array<const char*, 3> kClockInCaptions{"Entrada 1:", "Salida 1:", "Entrada 2:"};
}  // namespace

FrmReloj::FrmReloj(Dialogs& dialogs, QWidget* parent) : QMainWindow(parent), m_dialogs(dialogs) {
    setObjectName(QStringLiteral("frmReloj"));
    buildClockIns();
    resize(kWindowWidth, kCompactHeight);

    menuBar()->addMenu(buildMenu("mnuOpciones", "Opciones",
                                 {{"mnuConfig", "Configuración"},
                                  {"-", nullptr},
                                  {"mnuTareasTareas", "Tareas"},
                                  {"mnuTareaResumen", "Resumen de tareas"},
                                  {"-", nullptr},
                                  {"mnuLink", "Arrancar al iniciar Windows"},
                                  {"-", nullptr},
                                  {"mnuListadoFechas", "Listado por fechas"},
                                  {"mnuCrearCalendario", "Crear calendario"},
                                  {"-", nullptr},
                                  {"mnuHelp", "Ayuda"},
                                  {"mnuAbout", "Acerca de ..."},
                                  {"mnuHistorico", "Histórico de jornadas…"}}));
    menuBar()->addMenu(buildMenu("mnuAlarma", "Alarmas",
                                 {{"mnuAlarmaNueva", "Nueva"},
                                  {"mnuAlarmaMostrar", "Mostrar todas"},
                                  {"mnuAlarmaInforme", "Informe de proximidad"},
                                  {"mnuAlarmaExportar", "Exportar a iCalendar…"},
                                  {"mnuAlarmaImportar", "Importar de iCalendar…"}}));
    QMenu* repeticion = buildMenu("mnuRepeticion", "Repeticiones",
                                  {{"mnuRepeticionNueva", "Nueva"},
                                   {"-", nullptr},
                                   {"mnuRepeticionNinguna", "(ninguna)"},
                                   {"mnuRepeticionDato", "(texto)"}});
    menuBar()->addMenu(repeticion);
    menuBar()->addMenu(buildMenu("mnuAccesos", "Accesos",
                                 {{"mnuAccesosHoy", "Accesos Hoy"},
                                  {"mnuAccesosLog", "Carpeta Logs de Accesos"},
                                  {"mnuAccesosWin", "Carpeta Archivos Recientes"}}));
    m_mnuPopUp = buildMenu("mnuPopUp", "PopUp",
                           {{"mnuPopUpRepeticion", "Añadir Repetición"},
                            {"mnuPopUpAlarma", "Añadir Alarma"},
                            {"-", nullptr},
                            {"mnuPopUpDetalle", "(...)"}});

    QAction* config = menuItem(QStringLiteral("mnuConfig"));
    config->setEnabled(true);
    connect(config, &QAction::triggered, this, &FrmReloj::onConfig);
    enableItem("mnuAlarmaNueva", [this] { m_app->NewAlarm(""); });
    enableItem("mnuAlarmaMostrar", [this] { m_app->ShowAllAlarms(); });
    enableItem("mnuRepeticionNueva", [this] { m_app->NewRepetition(""); });
    enableItem("mnuAlarmaInforme", [this] { m_app->ShowProximityReport(true); });
    enableItem("mnuAlarmaExportar", [this] { m_app->ExportIcs(); });
    enableItem("mnuAlarmaImportar", [this] { m_app->ImportIcs(); });
    enableItem("mnuHelp", [this] { m_app->ShowHelp(); });
    enableItem("mnuLink", [this] { m_app->StartWithSystem(); });
    enableItem("mnuAbout", [this] {
        if (ShellOpen* shell = m_app->GetShellOpen()) {
            FormVendrako::ShowModal(*shell, m_app->Paths().AppFolder, this);
        }
    });
    enableItem("mnuCrearCalendario", [this] { m_app->CreateCalendars(); });
    enableItem("mnuHistorico", [this] { openHistory(); });
    enableItem("mnuListadoFechas", [this] { m_app->ListDates(); });
    enableItem("mnuTareasTareas", [this] { m_app->MarkTask(); });
    enableItem("mnuTareaResumen", [this] { m_app->ShowTaskSummary(); });
    enableItem("mnuAccesosHoy", [this] { m_app->OpenTodaysAccessLog(); });
    enableItem("mnuAccesosLog", [this] { m_app->OpenAccessLogFolder(); });
    enableItem("mnuAccesosWin", [this] { m_app->OpenRecentFilesFolder(); });
    // The day menu's items are answered through the menu's result, not their own signals.
    menuItem(QStringLiteral("mnuPopUpRepeticion"))->setEnabled(true);
    menuItem(QStringLiteral("mnuPopUpAlarma"))->setEnabled(true);

    m_mnuRepeticion = repeticion;
    m_mnuRepeticionNinguna = repeticion->findChild<QAction*>(QStringLiteral("mnuRepeticionNinguna"));
    // The template of the per-repetition items: never shown itself, copied for each one.
    QAction* repetitionTemplate = repeticion->findChild<QAction*>(QStringLiteral("mnuRepeticionDato"));
    repetitionTemplate->setVisible(false);
    m_mnuRepeticionDato.append(repetitionTemplate);
    connect(m_mnuRepeticion, &QMenu::aboutToShow, this, &FrmReloj::rebuildRepetitionItems);

    m_timPincipal = new QTimer(this);
    m_timPincipal->setObjectName(QStringLiteral("timPincipal"));
    connect(m_timPincipal, &QTimer::timeout, this, &FrmReloj::onMainTimer);
}

void FrmReloj::buildClockIns() {
    auto* central = new QWidget(this);
    auto* grid = new QGridLayout(central);
    for (size_t i = 0; i < m_txtHora.size(); ++i) {
        const int index = static_cast<int>(i);
        auto* caption = new QLabel(QString::fromUtf8(kClockInCaptions[i]), central);
        auto* box = new TimeBox(m_dialogs, central);
        box->setObjectName(QStringLiteral("txtHora(%1)").arg(index));
        caption->setBuddy(box);
        grid->addWidget(caption, index, 0);
        grid->addWidget(box, index, 1);
        connect(box, &TimeBox::timeLeft, this, [this, index](const QString& text) { leaveClockIn(index, text); });
        box->installEventFilter(this);
        m_txtHora[i] = box;
    }
    const int departureRow = static_cast<int>(m_txtHora.size());
    grid->addWidget(new QLabel(QStringLiteral("Salida:"), central), departureRow, 0);
    m_lblSalida = new QLabel(central);
    m_lblSalida->setObjectName(QStringLiteral("lblSalida"));
    m_lblSalida->setTextFormat(Qt::PlainText);
    grid->addWidget(m_lblSalida, departureRow, 1);
    grid->setRowStretch(departureRow + 1, 1);
    grid->setColumnStretch(2, 1);

    // The month calendar to the right of the clock-ins, the day details below both.
    m_calendar = new MonthCalendar(central);
    grid->addWidget(m_calendar, 0, 3, departureRow + 2, 1, Qt::AlignTop);
    connect(m_calendar, &MonthCalendar::moveRequested, this, [this](int button) {
        if (m_app != nullptr) {
            m_app->MoveCalendar(button);
        }
    });
    connect(m_calendar, &MonthCalendar::dayHovered, this, [this](int cell) {
        if (m_app != nullptr) {
            m_app->HoverDay(cell);
        }
    });
    connect(m_calendar, &MonthCalendar::dayClicked, this, [this](int cell, QPoint at) {
        if (m_app != nullptr) {
            m_dayClickedAt = at;
            m_app->ClickDay(cell);
        }
    });
    m_fraResumen = new QFrame(central);
    m_fraResumen->setObjectName(QStringLiteral("fraResumen"));
    m_fraResumen->setFrameShape(QFrame::StyledPanel);
    auto* frameLayout = new QVBoxLayout(m_fraResumen);
    frameLayout->setContentsMargins(2, 2, 2, 2);
    m_txtResumen = new QPlainTextEdit(m_fraResumen);
    m_txtResumen->setObjectName(QStringLiteral("txtResumen"));
    m_txtResumen->setReadOnly(true);
    frameLayout->addWidget(m_txtResumen);
    grid->addWidget(m_fraResumen, departureRow + 2, 0, 1, 4);
    setCentralWidget(central);

    m_statusLine = new QLabel(statusBar());
    m_statusLine->setObjectName(QStringLiteral("statusLine"));
    m_statusLine->setTextFormat(Qt::PlainText);
    statusBar()->addWidget(m_statusLine, 1);
}

QMenu* FrmReloj::buildMenu(const char* name, const char* caption, std::initializer_list<MenuRow> items) {
    auto* menu = new QMenu(QString::fromUtf8(caption), this);
    menu->setObjectName(QString::fromUtf8(name));
    for (const MenuRow& item : items) {
        if (std::string_view(item.name) == "-") {
            menu->addSeparator();
            continue;
        }
        auto* action = new QAction(QString::fromUtf8(item.caption), menu);
        action->setObjectName(QString::fromUtf8(item.name));
        // Each item gets its handler with the feature behind it; until then it can be seen
        // but not chosen.
        action->setEnabled(false);
        menu->addAction(action);
    }
    return menu;
}

void FrmReloj::SetCaption(const std::string& caption) {
    setWindowTitle(QString::fromStdString(caption));
}

void FrmReloj::ShowClockIns(const std::array<std::string, 3>& times) {
    for (size_t i = 0; i < m_txtHora.size(); ++i) {
        m_txtHora[i]->showStoredValue(QString::fromStdString(times[i]));
    }
}

void FrmReloj::SetAfternoonLocked(bool locked) {
    for (const size_t index : {size_t{2}, size_t{1}}) {
        TimeBox* box = m_txtHora[index];
        box->setReadOnly(locked);
        // Out of the Tab order but still clickable would let the user into a box that takes
        // no typing; locked means out of reach altogether.
        box->setFocusPolicy(locked ? Qt::NoFocus : Qt::StrongFocus);
        // A read-only line edit looks editable in most styles; the button colour is the
        // desktop's own "not for typing" look.
        const QPalette desktop = QApplication::palette(box);
        QPalette palette = box->palette();
        palette.setColor(QPalette::Base, desktop.color(locked ? QPalette::Button : QPalette::Base));
        box->setPalette(palette);
    }
}

std::string FrmReloj::ClockInText(int index) const {
    return txtHora(index)->text().toStdString();
}

void FrmReloj::ShowDeparture(const std::string& label, const std::string& status) {
    if (label != m_shownDeparture) {
        m_shownDeparture = label;
        m_lblSalida->setText(QString::fromStdString(label));
    }
    if (status != m_shownStatus) {
        m_shownStatus = status;
        m_statusLine->setText(QString::fromStdString(status));
    }
}

QString FrmReloj::statusLine() const {
    return m_statusLine->text();
}

bool FrmReloj::EditSchedule(std::array<std::string, 8>& day_hours, std::array<std::string, 8>& day_modes) {
    return FrmConfig::edit(this, m_dialogs, day_hours, day_modes);
}

void FrmReloj::RepetitionMenuChanged() {
    // Only noted here: the items are made, from App's own list, when the menu is about to
    // open. A full agenda would otherwise make 998 items at every start and after every
    // change, for a menu that is opened now and then, or keep a second copy of its reminders.
    m_repetitionMenuStale = true;
}

void FrmReloj::rebuildRepetitionItems() {
    if (!m_repetitionMenuStale || m_app == nullptr) {
        return;
    }
    m_repetitionMenuStale = false;
    // The items of the last rebuild go for good; only the hidden template stays.
    while (m_mnuRepeticionDato.size() > 1) {
        delete m_mnuRepeticionDato.takeLast();
    }
    const std::span<const std::string> entries = m_app->RepetitionMenuEntries();
    for (size_t i = 0; i < entries.size(); ++i) {
        // A menu reads "&" as the mark of a shortcut letter; doubled it shows as itself, so
        // the caption is the entry exactly as stored.
        const QString caption = QString::fromStdString(entries[i]).replace(QLatin1Char('&'), QStringLiteral("&&"));
        auto* item = new QAction(caption, m_mnuRepeticion);
        const int index = static_cast<int>(i) + 1;
        item->setObjectName(QStringLiteral("mnuRepeticionDato(%1)").arg(index));
        connect(item, &QAction::triggered, this, [this, index] {
            if (m_app != nullptr) {
                m_app->OpenRepetition(index);
            }
        });
        m_mnuRepeticion->addAction(item);
        m_mnuRepeticionDato.append(item);
    }
    m_mnuRepeticionNinguna->setVisible(entries.empty());
}

bool FrmReloj::ModalOpen() const {
    // Every message box, input box and dialog of the program is opened with exec(), which
    // puts it on the application's list of modal windows while it is open.
    return QApplication::activeModalWidget() != nullptr;
}

std::optional<int> FrmReloj::AskRepeatLater(const RepeatPrompt& prompt) {
    // Over the main window even while it is hidden in the tray: the dialog is a window of its
    // own and comes forward by itself.
    return FrmRepetir::ask(this, prompt);
}

void FrmReloj::SetBusyPointer(bool on) {
    // The pointer only changes over the program's own windows, the main window and its
    // dialogs. With none on the screen (the start-up, the closing path from the tray) there is
    // nothing to show it on, and fetching the cursor from the desktop's theme would only delay
    // the first window.
    if (on) {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const bool shown = isVisible() || std::any_of(windows.begin(), windows.end(), [](const QWidget* w) {
                               return w->isVisible() && qobject_cast<const QDialog*>(w) != nullptr;
                           });
        m_busyPointerSet.push_back(shown);
        if (shown) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
        }
    } else if (!m_busyPointerSet.empty()) {
        if (m_busyPointerSet.back()) {
            QApplication::restoreOverrideCursor();
        }
        m_busyPointerSet.pop_back();
    }
}

void FrmReloj::ShowMonthGrid(const MonthGrid& grid) {
    m_calendar->showGrid(grid);
}

void FrmReloj::ShowDetails(const std::string& text) {
    m_txtResumen->setPlainText(QString::fromStdString(text));
    setDetailsShown(true);
}

void FrmReloj::HideDetails() {
    setDetailsShown(false);
}

void FrmReloj::setDetailsShown(bool shown) {
    m_fraResumen->setVisible(shown);
    // The compact and the tall window of the original: 3960 and 5065 twips at 15 to the pixel.
    resize(width(), shown ? kTallHeight : kCompactHeight);
}

void FrmReloj::FocusAway() {
    m_calendar->focusAway();
}

std::optional<DayMenuChoice> FrmReloj::PopUpDayMenu(const DayMenu& menu) {
    return MonthCalendar::popUpDayMenu(m_mnuPopUp, menu, m_dayClickedAt);
}

std::optional<std::string> FrmReloj::ChooseIcsFile(bool forSaving) {
    const QString filter = QStringLiteral("iCalendar (*.ics);;Todos los archivos (*)");
    const QString file =
        forSaving ? QFileDialog::getSaveFileName(this, QStringLiteral("Exportar a iCalendar"),
                                                 QStringLiteral("agenda.ics"), filter)
                  : QFileDialog::getOpenFileName(this, QStringLiteral("Importar de iCalendar"), QString(), filter);
    if (file.isEmpty()) {
        return std::nullopt;
    }
    return file.toStdString();
}

void FrmReloj::showProximityReport() {
    if (m_app != nullptr) {
        m_app->ShowProximityReport(true);
    }
}

std::optional<std::string> FrmReloj::MarkTask() {
    return FrmMarcar::marcar(this, m_dialogs, m_app->GetClock(), *m_app, m_app->Paths());
}

void FrmReloj::showTrayAbout() {
    if (m_app != nullptr) {
        m_app->ShowTrayAbout();
    }
}

void FrmReloj::markTask() {
    if (m_app != nullptr) {
        m_app->MarkTask();
    }
}

void FrmReloj::showTaskSummary() {
    if (m_app != nullptr) {
        m_app->ShowTaskSummary();
    }
}

void FrmReloj::openHistory() {
    if (m_app != nullptr) {
        m_app->OpenHistory();
    }
}

void FrmReloj::ShowHistory(HistoryRecorder& history) {
    // Made on first use: its chart library costs nothing at start-up that way.
    if (m_history == nullptr) {
        m_history = new HistoryWindow(history, m_dialogs, this);
    } else {
        m_history->showMonth(history.Today());
    }
    m_history->show();
    m_history->raise();
    m_history->activateWindow();
}

void FrmReloj::openTodaysAccessLog() {
    if (m_app != nullptr) {
        m_app->OpenTodaysAccessLog();
    }
}

void FrmReloj::windowRestored() {
    if (m_app != nullptr) {
        m_app->WindowRestored();
    }
}

EditorAction FrmReloj::EditAlarm(AlarmForm& form) {
    return FrmAlarma::edit(this, m_dialogs, m_app->GetClock(), form);
}

EditorAction FrmReloj::EditRepetition(RepetitionForm& form) {
    return FrmRepeticion::edit(this, m_dialogs, m_app->GetClock(), form);
}

int FrmReloj::ChooseAlarm(const EntryList& alarms) {
    return FrmListaAlarmas::choose(this, alarms);
}

void FrmReloj::enableItem(const char* name, std::function<void()> action) {
    QAction* item = menuItem(QString::fromUtf8(name));
    item->setEnabled(true);
    connect(item, &QAction::triggered, this, [this, action = std::move(action)] {
        if (m_app != nullptr) {
            action();
        }
    });
}

QAction* FrmReloj::menuItem(const QString& name) const {
    return findChild<QAction*>(name);
}

QMenu* FrmReloj::menu(const QString& name) const {
    return findChild<QMenu*>(name);
}

void FrmReloj::startMainTimer() {
    if (m_app == nullptr) {
        return;
    }
    m_timPincipal->setInterval(m_app->State().TimerIntervalMs);
    if (m_app->State().TimerEnabled) {
        m_timPincipal->start();
    }
}

void FrmReloj::onMainTimer() {
    // A message box opened by a tick runs its own event loop, in which this timer keeps
    // firing; those ticks are dropped so that a tick never runs inside another one.
    if (m_app == nullptr || m_inTick) {
        return;
    }
    m_inTick = true;
    const Outcome outcome = m_app->Tick();
    m_inTick = false;
    // The date format went wrong: the program ends at once, without the closing steps.
    if (outcome == Outcome::Exit) {
        endAfterFailure();
    }
}

void FrmReloj::onConfig() {
    if (m_app != nullptr && m_app->OpenSchedule() == Outcome::Exit) {
        endAfterFailure();
    }
}

bool FrmReloj::eventFilter(QObject* watched, QEvent* event) {
    // TimeBox checks and reports only the focus moves that really leave it. A box can also
    // lose the focus to another window of this program (a dialog, a message box), which is
    // leaving it too: App is told, with the text as it stands, and decides. While the box is
    // edited that text is digits only, so App either stores an emptied box or, for a half-typed
    // time such as "0830", stores nothing and asks for the focus back.
    // Another application, a popup (the box's own context menu, the tray menu) or the menu bar
    // only borrow the focus and hand it back to the box: they are not forwarded, and asking for
    // the focus back would fight them (Alt and the arrows would stop working in the menu bar).
    // Nor is the focus App itself takes with a message box while it handles a tick or a box.
    if (event->type() == QEvent::FocusOut && !m_inTick && !m_inClockInLeave) {
        const auto* focusOut = static_cast<const QFocusEvent*>(event);
        const QWidget* active = QApplication::activeWindow();
        if (focusOut->reason() == Qt::ActiveWindowFocusReason && active != nullptr && active != this) {
            for (size_t i = 0; i < m_txtHora.size(); ++i) {
                if (watched == m_txtHora[i]) {
                    leaveClockIn(static_cast<int>(i), m_txtHora[i]->text());
                }
            }
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void FrmReloj::leaveClockIn(int index, const QString& text) {
    if (m_app == nullptr || m_exitStatus) {
        return;
    }
    m_inClockInLeave = true;
    const App::ClockInLeft left = m_app->LeaveClockIn(index, text.toStdString());
    m_inClockInLeave = false;
    if (left.outcome == Outcome::Exit) {
        endAfterFailure();
        return;
    }
    if (left.refocus) {
        // Deferred: a focus change under way would otherwise finish after us and win. In a
        // window that is not active this only makes the box the one that gets the focus back
        // when the window is active again.
        TimeBox* box = txtHora(index);
        QTimer::singleShot(0, box, [box] { box->setFocus(Qt::OtherFocusReason); });
    }
}

void FrmReloj::endAfterFailure() {
    // Settings that could not be read back, a date format changed under the program: it
    // ends at once, without the closing steps, as a failed start does.
    if (beginEnding(1)) {
        emit programEnded(1);
    }
}

bool FrmReloj::beginEnding(int exitStatus) {
    if (m_exitStatus) {
        return false;
    }
    m_exitStatus = exitStatus;
    m_timPincipal->stop();
    return true;
}

void FrmReloj::endThroughClosingPath(bool interactive) {
    if (beginEnding(0)) {
        if (m_app != nullptr) {
            m_app->Shutdown(interactive);
        }
        emit programEnded(0);
    }
}

void FrmReloj::closeEvent(QCloseEvent* event) {
    // Once the program is ending, closing is part of it; before that it is the user's close
    // button (or someone asking for the same), which the tray may turn into hiding.
    const CloseReason reason = m_exitStatus ? CloseReason::ProgramEnding : CloseReason::User;
    if (m_tray != nullptr && m_tray->queryUnload(reason)) {
        event->ignore();
        return;
    }
    event->accept();
    endThroughClosingPath(true);
}

void FrmReloj::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && m_tray != nullptr) {
        m_tray->mainWindowStateChanged();
    }
}

void FrmReloj::exitProgram() {
    endThroughClosingPath(true);
}

void FrmReloj::endSession() {
    m_dialogs.EndSession();
    if (beginEnding(0)) {
        m_sessionClosingDue = true;
    }
    // Also when a closing is already under way: its message box, if any, must not hold the
    // ending session up. The status is the one the first ending chose.
    emit programEnded(*m_exitStatus);
}

int FrmReloj::finishEnding(int loopStatus) {
    if (m_sessionClosingDue) {
        m_sessionClosingDue = false;
        if (m_app != nullptr) {
            m_app->Shutdown(false);
        }
    }
    return m_exitStatus.value_or(loopStatus);
}

}  // namespace vt
