#include "shell/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include "shell/app.h"

namespace vt {

namespace {
// The compact window of the original, 3960 twips high at 15 twips to the pixel.
constexpr int kWindowWidth = 330;
constexpr int kWindowHeight = 264;
}  // namespace

FrmReloj::FrmReloj(QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("frmReloj"));
    setCentralWidget(new QWidget(this));
    resize(kWindowWidth, kWindowHeight);

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
                                  {"mnuAbout", "Acerca de ..."}}));
    menuBar()->addMenu(buildMenu("mnuAlarma", "Alarmas",
                                 {{"mnuAlarmaNueva", "Nueva"},
                                  {"mnuAlarmaMostrar", "Mostrar todas"},
                                  {"mnuAlarmaInforme", "Informe de proximidad"}}));
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

    // The template of the per-repetition items: never shown itself, copied for each one.
    QAction* repetitionTemplate = repeticion->findChild<QAction*>(QStringLiteral("mnuRepeticionDato"));
    repetitionTemplate->setVisible(false);
    m_mnuRepeticionDato.append(repetitionTemplate);

    m_timPincipal = new QTimer(this);
    m_timPincipal->setObjectName(QStringLiteral("timPincipal"));
    connect(m_timPincipal, &QTimer::timeout, this, &FrmReloj::onMainTimer);
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
    if (outcome == Outcome::Exit && beginEnding(1)) {
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

void FrmReloj::closeEvent(QCloseEvent* event) {
    event->accept();
    if (beginEnding(0)) {
        if (m_app != nullptr) {
            m_app->Shutdown(true);
        }
        emit programEnded(0);
    }
}

void FrmReloj::endSession() {
    if (beginEnding(0) && m_app != nullptr) {
        m_app->Shutdown(false);
    }
    // Also when a closing is already under way: its message box, if any, must not hold the
    // ending session up. The status is the one the first ending chose.
    emit programEnded(*m_exitStatus);
}

}  // namespace vt
