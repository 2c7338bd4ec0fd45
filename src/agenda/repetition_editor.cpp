#include "agenda/repetition_editor.h"

#include "agenda/char_positions.h"
#include "agenda/entries.h"

namespace vt {

RepetitionForm OpenRepetitionForm(bool add_mode, const EntryList& repetitions, int index, std::string_view preset_date,
                                  DateTime now) {
    RepetitionForm form;
    if (add_mode) {
        form.fecha = preset_date == kNoPresetDate ? FormatDate(DateOf(now)) : std::string(preset_date);
        form.hora = FormatTime(now);
        return form;
    }
    if (index < 1 || index > repetitions.Count()) {
        return form;
    }
    const std::string& entry = repetitions[index];
    form.fecha = GetRepetitionField(entry, 1);
    form.hora = GetRepetitionField(entry, 2);
    form.texto = GetRepetitionField(entry, 6);
    form.can_delete = true;
    return form;
}

std::optional<EditorBox> CheckRepetitionForm(RepetitionForm& form, DateTime now, Dialogs& dialogs) {
    if (auto box = CheckDateAndTime(form.fecha, form.hora, now, dialogs)) {
        return box;
    }
    return CheckTextCanBeStored(form.texto, dialogs);
}

std::string RepetitionEntryFromForm(const RepetitionForm& form) {
    return BuildRepetitionEntry(TrimBlanks(form.fecha), TrimBlanks(form.hora), form.texto);
}

bool ConfirmDeleteRepetition(Dialogs& dialogs) {
    return dialogs.Show({kDeleteRepetitionQuestion, MsgIcon::Question, MsgButtons::OkCancel, {}, MsgAnswer::Cancel}) ==
           MsgAnswer::Ok;
}

void StoreRepetition(EntryList& repetitions, bool add_mode, int index, const std::string& entry) {
    if (!add_mode && index >= 1 && index <= repetitions.Count()) {
        repetitions[index] = entry;
        return;
    }
    AppendRepetition(repetitions, entry);
}

bool DeleteRepetition(EntryList& repetitions, int index) {
    if (index < 1 || index > repetitions.Count()) {
        return false;
    }
    RemoveRepetition(repetitions, index);
    return true;
}

bool OpenRepetitionEditor(EntryList& repetitions, bool add_mode, int index, std::string_view preset_date, DateTime now,
                          const RepetitionFormView& show) {
    RepetitionForm form = OpenRepetitionForm(add_mode, repetitions, index, preset_date, now);
    switch (show(form)) {
        case EditorAction::Save:
            StoreRepetition(repetitions, add_mode, index, RepetitionEntryFromForm(form));
            return true;
        case EditorAction::Delete:
            return !add_mode && DeleteRepetition(repetitions, index);
        case EditorAction::Cancel:
            break;
    }
    return false;
}

}  // namespace vt
