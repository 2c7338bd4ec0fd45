#pragma once
// The "Alarmas" menu's iCalendar items: the agenda out to a file any calendar reads, and a
// calendar's events into the agenda.

#include <string>

#include "agenda/launching.h"
#include "store/app_state.h"

namespace vt {

class Clock;
class Dialogs;
class MainView;

class AgendaExchange {
public:
    // `zone` is the zoneinfo name times are written and read in: the system's one.
    AgendaExchange(AppState& state, const Clock& clock, Dialogs& dialogs, MainView& view, RunLog run_log,
                   std::string zone);

    // "Exportar a iCalendar…": asks for the file, writes it whole and says what it wrote.
    void Export();
    // "Importar de iCalendar…": asks for the file, shows what would be added (the simplified
    // events too) and adds it only on "Aceptar". True when the agenda changed; the caller then
    // advances, saves and redraws as after any alarm change.
    bool Import();

private:
    AppState& state_;
    const Clock& clock_;
    Dialogs& dialogs_;
    MainView& view_;
    RunLog run_log_;
    std::string zone_;
};

}  // namespace vt
