#pragma once
// The rules of the repetition editor (frmRepeticion). A repetition is a one-shot reminder for a
// date and minute, so the form is the alarm form without repeat choice and priority; its date
// and time are checked exactly as the alarm editor checks them.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "agenda/alarm_editor.h"
#include "platform/dialogs.h"
#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

inline constexpr const char* kDeleteRepetitionQuestion = "¿Quieres borrar esta repetición?";

struct RepetitionForm {
    std::string fecha;
    std::string hora;
    std::string texto;
    bool can_delete = false;
};

// Add mode: the preset date as given ("" from the menu, the clicked day from the calendar),
// today only for kNoPresetDate, the present time, nothing to delete. Change mode: the date,
// time and text of repetition `index` (1-based); an index outside the list opens empty with
// nothing to delete.
RepetitionForm OpenRepetitionForm(bool add_mode, const EntryList& repetitions, int index, std::string_view preset_date,
                                  DateTime now);

// The date and time checks of the alarm editor (CheckDateAndTime), then CheckTextCanBeStored:
// an empty text is allowed, the reminder then shows "(Sin mensaje)".
std::optional<EditorBox> CheckRepetitionForm(RepetitionForm& form, DateTime now, Dialogs& dialogs);

// "dd/mm/yyyy hh:mm text", the text with its commas as ";".
std::string RepetitionEntryFromForm(const RepetitionForm& form);

// "¿Quieres borrar esta repetición?", question icon, OK and Cancel with Cancel as the default.
bool ConfirmDeleteRepetition(Dialogs& dialogs);

// Appended in add mode, put in place of repetition `index` in change mode (appended when that
// index is no longer in the list). Repetitions write nothing to the run log: only alarms do.
void StoreRepetition(EntryList& repetitions, bool add_mode, int index, const std::string& entry);
// Removes repetition `index`; false, and nothing removed, for an index outside the list.
bool DeleteRepetition(EntryList& repetitions, int index);

// The whole editor, as OpenAlarmEditor. Returns whether the repetitions changed; the caller then
// rebuilds the repetitions menu, saves the settings and scans the recent files.
using RepetitionFormView = std::function<EditorAction(RepetitionForm&)>;
bool OpenRepetitionEditor(EntryList& repetitions, bool add_mode, int index, std::string_view preset_date, DateTime now,
                          const RepetitionFormView& show);

}  // namespace vt
