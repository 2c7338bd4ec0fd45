#pragma once
// The rules of the alarm editor (frmAlarma): what its boxes start with, the checks "Aceptar"
// runs, the entry a form becomes and the questions it asks. The dialog only copies its boxes
// into an AlarmForm, calls these and puts the focus where they say.

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "agenda/launching.h"
#include "platform/dialogs.h"
#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

// The boxes a refused check sends the user back to.
enum class EditorBox { Fecha, Hora, Cada, Texto };

// What the editors are handed when there is no date to start with: they start on today. The
// menus hand "" instead, so that a new alarm starts with an empty date the user must type.
inline constexpr const char* kNoPresetDate = "01/01/1901";

// The repeat choices in list order, each with the code stored beside it: a two-digit count, a
// bar and the unit letter (field 4 + "|" + field 3 of the entry).
struct CadaChoice {
    std::string_view label;
    std::string_view code;
};
inline constexpr std::array<CadaChoice, 9> kCadaChoices{{
    {"Nunca", "00|D"},
    {"1 Día", "01|D"},
    {"1 Semana", "07|D"},
    {"1 Mes", "01|M"},
    {"3 Meses", "03|M"},
    {"1 Año", "01|A"},
    {"2 Años", "02|A"},
    {"4 Años", "04|A"},
    {"6 Años", "06|A"},
}};

inline constexpr const char* kEnterDateMessage = "Introduce la Fecha.";
inline constexpr const char* kEnterTimeMessage = "Introduce la hora.";
inline constexpr const char* kTimePassedMessage = "Esa hora ya ha pasado.";
inline constexpr const char* kChooseCadaMessage = "Señala cada cuanto quieres que se repita.";
inline constexpr const char* kEnterTextMessage = "Introduce el texto.";
inline constexpr const char* kDeleteAlarmQuestion = "¿Quieres borrar esta alarma?";
inline constexpr const char* kAlarmsFullMessage =
    "La agenda está llena: caben 998 alarmas. Borra alguna antes de añadir otra.";
inline constexpr const char* kRepetitionsFullMessage =
    "La agenda está llena: caben 998 repeticiones. Borra alguna antes de añadir otra.";
// Followed by the characters themselves.
inline constexpr const char* kTextNotStorableMessage = "El texto tiene caracteres que no se pueden guardar: ";

// The editor's boxes as plain values. `cada` is the row of kCadaChoices, -1 when none is
// selected (an entry whose count and unit match no choice opens so).
struct AlarmForm {
    std::string fecha;
    std::string hora;
    int cada = 0;
    std::string texto;
    bool can_delete = false;
};

// Add mode: the preset date as given ("" from the menu, the clicked day from the calendar),
// today only for kNoPresetDate; the present time; "Nunca"; nothing to delete.
// Change mode: alarm `index` (1-based) back into the boxes, its repeat choice found by its
// code, "!" in front of the text when its priority flag is anything but "0". An index outside
// the list opens empty, with no choice selected and nothing to delete.
AlarmForm OpenAlarmForm(bool add_mode, const EntryList& alarms, int index, std::string_view preset_date, DateTime now);

// Leaving the date box: a text without "/" is a short form ("ddmmyy" or "ddmmyyyy") and is
// converted, "" with the message "Formato no válido (ddmmyy)." when it is not one. A text
// with "/" and an empty box are left as they are; an empty box has nothing to convert, and
// asking for the date is "Aceptar"'s business.
std::string ConvertDateBox(std::string_view text, Dialogs& dialogs);

// Whether a list has room for one more entry; when it has not, says so with `full_message`
// (exclamation) and the editor is not opened. An entry past kMaxEntries would never be read
// back from the settings file.
bool RoomForOneMore(const EntryList& entries, const char* full_message, Dialogs& dialogs);

// The text check both editors run last: every character must fit the settings file, which is
// Windows-1252, else the message names the ones that do not (exclamation, on Texto).
std::optional<EditorBox> CheckTextCanBeStored(std::string_view texto, Dialogs& dialogs);

// The date and time checks both editors run first (steps 1 to 4 below); the repetition editor
// has nothing else to check.
std::optional<EditorBox> CheckDateAndTime(std::string& fecha, std::string& hora, DateTime now, Dialogs& dialogs);

// "Aceptar". First the short forms are converted in place (a date without "/", a time
// without ":"), then the checks run in order, each with its message:
//   date empty                      "Introduce la Fecha."           information  Fecha
//   time empty (blanks only too)    "Introduce la hora."            information  Hora
//   date and time before the minute "Esa hora ya ha pasado."        exclamation  Hora
//   no repeat choice                "Señala cada cuanto quieres..." information  Cada
//   text empty                      "Introduce el texto."           information  Texto
//   text not storable               "El texto tiene caracteres..."  exclamation  Texto
// Returns the box to focus, or nothing when every check passed.
// The present minute is accepted (seconds do not count). An unchanged existing alarm whose
// time has passed is refused like any other: saving it would launch it again at once.
// A date or time that cannot be read is refused with the format messages of the entry boxes
// and never reaches the comparison: a short form that is no date, or a date with "/" that is
// no real day ("31/02/2024"), gives "Formato no válido (ddmmyy)." on Fecha; a time that does
// not read gives "Formato no válido." on Hora. A refused box keeps what the user typed, so
// that it can be corrected rather than typed again. When the date and time read they are put
// back as "dd/mm/yyyy" and "hh:mm": the entry is read by character positions, and "1/3/2024"
// would shift every field after it.
// A text that is only "!" counts as empty: the mark would leave an alarm without words.
std::optional<EditorBox> CheckAlarmForm(AlarmForm& form, DateTime now, Dialogs& dialogs);

// The entry a checked form stores: count and unit from the choice's code; a leading "!" taken
// off the text and stored as priority "1" (else "0", text as typed); notice days 7 for months,
// 14 for years, 14 for "Nunca" and 0 for the day repeats. A choice outside the list is taken as
// "Nunca", so a form that skipped its checks still gives an entry that reads.
std::string AlarmEntryFromForm(const AlarmForm& form);

// How the dialog was closed.
enum class EditorAction { Cancel, Save, Delete };

// "¿Quieres borrar esta alarma?", question icon, OK and Cancel with Cancel as the default, so
// that a hurried Enter keeps the alarm. True when the user answered OK.
bool ConfirmDeleteAlarm(Dialogs& dialogs);

// Stores a saved entry and writes its run-log line: appended with "NEW> " in add mode, put in
// place of alarm `index` with "UPD> " in change mode. A change-mode index that is no longer in
// the list appends (with "NEW> "), so that what the user typed is never lost.
void StoreAlarm(EntryList& alarms, bool add_mode, int index, const std::string& entry, const RunLog& run_log);

// Removes alarm `index` and writes "DEL> " with the entry removed. An index outside the list
// removes and writes nothing; returns whether an alarm was removed.
bool DeleteAlarm(EntryList& alarms, int index, const RunLog& run_log);

// The whole editor: opens the form, lets `show` (the dialog) run it, and stores, logs or
// deletes as it was closed. `show` answers Save only for a form CheckAlarmForm passed, and
// Delete only after ConfirmDeleteAlarm. Returns whether the alarms changed; the caller then advances the
// alarm dates, saves the settings and scans the recent files.
using AlarmFormView = std::function<EditorAction(AlarmForm&)>;
bool OpenAlarmEditor(EntryList& alarms, bool add_mode, int index, std::string_view preset_date, DateTime now,
                     const RunLog& run_log, const AlarmFormView& show);

}  // namespace vt
