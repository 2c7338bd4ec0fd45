#include "agenda/alarm_editor.h"

#include <chrono>

#include "agenda/char_positions.h"
#include "agenda/entries.h"
#include "store/cp1252.h"
#include "store/entry_rules.h"

namespace vt {

namespace {

bool ValidChoice(int cada) {
    return cada >= 0 && cada < static_cast<int>(kCadaChoices.size());
}

int FindChoice(std::string_view code) {
    for (size_t i = 0; i < kCadaChoices.size(); ++i) {
        if (kCadaChoices[i].code == code) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void Log(const RunLog& run_log, const std::string& line) {
    if (run_log) {
        run_log(line);
    }
}

}  // namespace

AlarmForm OpenAlarmForm(bool add_mode, const EntryList& alarms, int index, std::string_view preset_date, DateTime now) {
    AlarmForm form;
    if (add_mode) {
        form.fecha = preset_date == kNoPresetDate ? FormatDate(DateOf(now)) : std::string(preset_date);
        form.hora = FormatTime(now);
        form.cada = 0;
        return form;
    }
    if (index < 1 || index > alarms.Count()) {
        form.cada = -1;
        return form;
    }
    const std::string& entry = alarms[index];
    form.fecha = GetAlarmField(entry, 1);
    form.hora = GetAlarmField(entry, 2);
    form.cada = FindChoice(GetAlarmField(entry, 4) + "|" + GetAlarmField(entry, 3));
    form.texto = GetAlarmField(entry, 6);
    if (GetAlarmField(entry, 9) != "0") {
        form.texto.insert(0, "!");
    }
    form.can_delete = true;
    return form;
}

std::string ConvertDateBox(std::string_view text, Dialogs& dialogs) {
    const std::string_view typed = TrimBlanks(text);
    if (typed.empty() || typed.find('/') != std::string_view::npos) {
        return std::string(text);
    }
    return ParseDdmmyy(typed, dialogs);
}

bool RoomForOneMore(const EntryList& entries, const char* full_message, Dialogs& dialogs) {
    if (entries.Count() < kMaxEntries) {
        return true;
    }
    dialogs.Warn(full_message);
    return false;
}

std::optional<EditorBox> CheckTextCanBeStored(std::string_view texto, Dialogs& dialogs) {
    const std::string outside = CharactersOutsideCp1252(texto);
    if (outside.empty()) {
        return std::nullopt;
    }
    dialogs.Warn(kTextNotStorableMessage + outside);
    return EditorBox::Texto;
}

std::optional<EditorBox> CheckDateAndTime(std::string& fecha, std::string& hora, DateTime now, Dialogs& dialogs) {
    // Short forms first, so that the checks below see what will be stored.
    if (const std::string_view typed = TrimBlanks(fecha); !typed.empty() && typed.find('/') == std::string_view::npos) {
        auto converted = ConvertDdmmyy(typed);
        if (!converted) {
            dialogs.Warn(kDateFormatMessage);
            return EditorBox::Fecha;
        }
        fecha = std::move(*converted);
    }
    if (const std::string_view typed = TrimBlanks(hora); !typed.empty() && typed.find(':') == std::string_view::npos) {
        auto completed = CompleteTimeEntry(typed);
        if (!completed) {
            dialogs.Warn(kTimeFormatMessage);
            return EditorBox::Hora;
        }
        hora = std::move(*completed);
    }

    if (TrimBlanks(fecha).empty()) {
        dialogs.Inform(kEnterDateMessage);
        return EditorBox::Fecha;
    }
    if (TrimBlanks(hora).empty()) {
        dialogs.Inform(kEnterTimeMessage);
        return EditorBox::Hora;
    }
    const auto date = ParseDate(TrimBlanks(fecha));
    if (!date) {
        dialogs.Warn(kDateFormatMessage);
        return EditorBox::Fecha;
    }
    const auto minutes = ParseTimeOfDay(TrimBlanks(hora));
    if (!minutes) {
        dialogs.Warn(kTimeFormatMessage);
        return EditorBox::Hora;
    }
    fecha = FormatDate(*date);
    hora = FormatTimeOfDay(*minutes);

    // To the minute: an alarm for the minute that is running is still to come.
    const DateTime wanted = MakeDateTime(*date, *minutes / 60, *minutes % 60);
    if (wanted < std::chrono::floor<std::chrono::minutes>(now)) {
        dialogs.Warn(kTimePassedMessage);
        return EditorBox::Hora;
    }
    return std::nullopt;
}

std::optional<EditorBox> CheckAlarmForm(AlarmForm& form, DateTime now, Dialogs& dialogs) {
    if (auto box = CheckDateAndTime(form.fecha, form.hora, now, dialogs)) {
        return box;
    }
    if (!ValidChoice(form.cada)) {
        dialogs.Inform(kChooseCadaMessage);
        return EditorBox::Cada;
    }
    std::string_view words = form.texto;
    if (words.starts_with('!')) {
        words.remove_prefix(1);
    }
    if (TrimBlanks(words).empty()) {
        dialogs.Inform(kEnterTextMessage);
        return EditorBox::Texto;
    }
    return CheckTextCanBeStored(form.texto, dialogs);
}

std::string AlarmEntryFromForm(const AlarmForm& form) {
    const std::string_view code = kCadaChoices[static_cast<size_t>(ValidChoice(form.cada) ? form.cada : 0)].code;
    const int count = (code[0] - '0') * 10 + (code[1] - '0');
    const std::string_view unit = code.substr(code.size() - 1);

    std::string_view text = form.texto;
    std::string_view priority = "0";
    if (text.starts_with('!')) {
        priority = "1";
        text.remove_prefix(1);
    }

    // How many days ahead the proximity report shows the alarm coming.
    int notice_days = 0;
    if (unit == "M") {
        notice_days = 7;
    } else if (unit == "A" || count == 0) {
        notice_days = 14;
    }
    return BuildAlarmEntry(TrimBlanks(form.fecha), TrimBlanks(form.hora), count, unit, notice_days, priority, text);
}

bool ConfirmDeleteAlarm(Dialogs& dialogs) {
    return dialogs.Show({kDeleteAlarmQuestion, MsgIcon::Question, MsgButtons::OkCancel, {}, MsgAnswer::Cancel}) ==
           MsgAnswer::Ok;
}

void StoreAlarm(EntryList& alarms, bool add_mode, int index, const std::string& entry, const RunLog& run_log) {
    if (!add_mode && index >= 1 && index <= alarms.Count()) {
        alarms[index] = entry;
        Log(run_log, "UPD> " + entry);
        return;
    }
    AppendAlarm(alarms, entry);
    Log(run_log, "NEW> " + entry);
}

bool DeleteAlarm(EntryList& alarms, int index, const RunLog& run_log) {
    if (index < 1 || index > alarms.Count()) {
        return false;
    }
    const std::string removed = alarms[index];
    RemoveAlarm(alarms, index);
    Log(run_log, "DEL> " + removed);
    return true;
}

bool OpenAlarmEditor(EntryList& alarms, bool add_mode, int index, std::string_view preset_date, DateTime now,
                     const RunLog& run_log, const AlarmFormView& show) {
    AlarmForm form = OpenAlarmForm(add_mode, alarms, index, preset_date, now);
    switch (show(form)) {
        case EditorAction::Save:
            StoreAlarm(alarms, add_mode, index, AlarmEntryFromForm(form), run_log);
            return true;
        case EditorAction::Delete:
            return !add_mode && DeleteAlarm(alarms, index, run_log);
        case EditorAction::Cancel:
            break;
    }
    return false;
}

}  // namespace vt
