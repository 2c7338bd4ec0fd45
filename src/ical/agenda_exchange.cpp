#include "ical/agenda_exchange.h"

#include "ical/ics_export.h"
#include "ical/ics_import.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "shell/main_view.h"
#include "store/error_text.h"
#include "store/text_file.h"

namespace vt {

namespace {

std::string Counted(int n, const std::string& one, const std::string& many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

}  // namespace

AgendaExchange::AgendaExchange(AppState& state, const Clock& clock, Dialogs& dialogs, MainView& view, RunLog run_log,
                               std::string zone)
    : state_(state),
      clock_(clock),
      dialogs_(dialogs),
      view_(view),
      run_log_(std::move(run_log)),
      zone_(std::move(zone)) {}

void AgendaExchange::Export() {
    const std::optional<std::string> file = view_.ChooseIcsFile(true);
    if (!file || file->empty()) {
        return;
    }
    const IcsExport out = ExportAgendaToIcs(state_.settings, clock_.Now(), zone_);
    if (const std::error_code error = WriteFileAtomically(*file, out.text)) {
        dialogs_.Warn("No se ha podido guardar " + *file + " (" + ErrorText(error) + ").");
        return;
    }
    std::string text = "Exportados a " + *file + ": " + Counted(out.alarms, "alarma", "alarmas") + " y " +
                       Counted(out.reminders, "recordatorio", "recordatorios") + ".";
    if (out.unreadable > 0) {
        text += "\r\n" + std::to_string(out.unreadable) + " entradas no se pueden leer y no se han exportado.";
    }
    dialogs_.Inform(text);
}

bool AgendaExchange::Import() {
    const std::optional<std::string> file = view_.ChooseIcsFile(false);
    if (!file || file->empty()) {
        return false;
    }
    const FileContents contents = ReadWholeFile(*file);
    if (contents.outcome != ReadOutcome::Read) {
        dialogs_.Warn("No se ha podido leer " + *file +
                      (contents.error ? " (" + ErrorText(contents.error) + ")." : std::string(".")));
        return false;
    }
    const IcsImportPlan plan = PlanIcsImport(contents.bytes, state_.settings, clock_.Now(), zone_);
    if (!plan.calendar) {
        dialogs_.Warn(*file + " no es un calendario iCalendar (.ics). No se ha añadido nada.");
        return false;
    }
    if (ImportAddsNothing(plan)) {
        dialogs_.Inform(ImportQuestion(plan));
        return false;
    }
    const MsgAnswer answer = dialogs_.Show(
        {ImportQuestion(plan), MsgIcon::Question, MsgButtons::OkCancel, "Importar de iCalendar", MsgAnswer::Ok});
    if (answer != MsgAnswer::Ok) {
        return false;
    }
    ApplyIcsImport(plan, state_.settings, run_log_);
    return true;
}

}  // namespace vt
