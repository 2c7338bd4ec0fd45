// The alarm and repetition editors: what their boxes open with, the checks of "Aceptar", the
// entries they store and the run-log lines they write.
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "agenda/alarm_editor.h"
#include "agenda/entries.h"
#include "agenda/repetition_editor.h"
#include "entry_lists.h"
#include "scripted_dialogs.h"
#include "store/entry_rules.h"

namespace vt {
namespace {

using test::Items;
using test::ListOf;
using Lines = std::vector<std::string>;

// Monday 18/03/2024, twenty seconds into 10:30.
const DateTime kNow = MakeDateTime(MakeDate(18, 3, 2024), 10, 30, 20);

constexpr int kNunca = 0;
constexpr int kUnDia = 1;
constexpr int kUnMes = 3;

AlarmForm Filled(std::string fecha, std::string hora, int cada = kNunca, std::string texto = "Dentista") {
    return AlarmForm{std::move(fecha), std::move(hora), cada, std::move(texto), false};
}

RepetitionForm Reminder(std::string fecha, std::string hora, std::string texto = "Llamar a José") {
    return RepetitionForm{std::move(fecha), std::move(hora), std::move(texto), false};
}

// ---- Opening ---------------------------------------------------------------------------------

TEST(OpeningAnEditor, ToChangePutsTheEntryBackWithTheChoiceFoundByItsCode) {
    // Any flag but "0" is a priority; five days or an unknown unit is no choice of the list.
    const EntryList alarms = ListOf({"20/03/2024 09:15 01 A 14 2 Boda (1998)", "20/03/2024 09:15 05 D 00 0 Raro",
                                     "20/03/2024 09:15 01 X 00 0 Raro"});
    const AlarmForm first = OpenAlarmForm(false, alarms, 1, kNoPresetDate, kNow);
    EXPECT_EQ(first.fecha + " " + first.hora + " " + first.texto, "20/03/2024 09:15 !Boda (1998)");
    EXPECT_EQ(first.cada, 5);
    EXPECT_TRUE(first.can_delete);
    EXPECT_EQ(OpenAlarmForm(false, alarms, 2, kNoPresetDate, kNow).cada, -1);
    EXPECT_EQ(OpenAlarmForm(false, alarms, 3, kNoPresetDate, kNow).cada, -1);
    // Marks are an alarm's affair: a repetition's text comes back whole.
    const RepetitionForm reminder =
        OpenRepetitionForm(false, ListOf({"x", "20/03/2024 09:15 Pan; leche (1990) <150324>"}), 2, kNoPresetDate, kNow);
    EXPECT_EQ(reminder.fecha + " " + reminder.hora + " " + reminder.texto,
              "20/03/2024 09:15 Pan; leche (1990) <150324>");
    EXPECT_TRUE(reminder.can_delete);
    // Outside the list the editor opens empty, with nothing to delete.
    for (const int index : {0, 4, -1}) {
        const AlarmForm outside = OpenAlarmForm(false, alarms, index, kNoPresetDate, kNow);
        EXPECT_EQ(outside.fecha + outside.texto, "") << index;
        EXPECT_EQ(outside.cada, -1) << index;
        EXPECT_FALSE(outside.can_delete) << index;
        EXPECT_FALSE(OpenRepetitionForm(false, alarms, index, kNoPresetDate, kNow).can_delete) << index;
    }
}

// With "/" the box is the user's: not even a wrong day is touched.
TEST(LeavingTheDateBox, ConvertsShortFormsOnly) {
    test::ScriptedDialogs dialogs;
    EXPECT_EQ(ConvertDateBox(" 150324 ", dialogs), "15/03/2024");
    EXPECT_EQ(ConvertDateBox("31/02/2024", dialogs), "31/02/2024");
    EXPECT_EQ(ConvertDateBox("", dialogs), "");
    EXPECT_EQ(ConvertDateBox("3112", dialogs), "");
    EXPECT_EQ(dialogs.Texts(), Lines{kDateFormatMessage});
}

// ---- Accepting -------------------------------------------------------------------------------

constexpr MsgIcon kInfo = MsgIcon::Information;
constexpr MsgIcon kWarn = MsgIcon::Exclamation;

// "Nueva" opens with an empty date, and "Aceptar" at once asks for it. Only the first failure
// speaks, in the order of the checks.
TEST(RefusedAlarm, ShowsOneMessageAndNamesTheBox) {
    for (const auto& [what, form, message, icon, box] :
         std::vector<std::tuple<const char*, AlarmForm, const char*, MsgIcon, EditorBox>>{
             {"Nueva accepted at once", Filled("", "10:30", kNunca, ""), kEnterDateMessage, kInfo, EditorBox::Fecha},
             {"blank time", Filled("20/03/2024", "  "), kEnterTimeMessage, kInfo, EditorBox::Hora},
             {"past day from the calendar", Filled("10/03/2024", "10:30"), kTimePassedMessage, kWarn, EditorBox::Hora},
             {"no repeat choice", Filled("20/03/2024", "09:15", -1), kChooseCadaMessage, kInfo, EditorBox::Cada},
             {"blank text", Filled("20/03/2024", "09:15", kUnDia, "   "), kEnterTextMessage, kInfo, EditorBox::Texto},
             {"short form no date", Filled("3112", "09:15"), kDateFormatMessage, kWarn, EditorBox::Fecha},
             {"previous minute in short forms", Filled("180324", "1029"), kTimePassedMessage, kWarn, EditorBox::Hora},
             {"choice past the list", Filled("20/03/2024", "09:15", 9), kChooseCadaMessage, kInfo, EditorBox::Cada},
             {"only the priority mark", Filled("20/03/2024", "09:15", kUnDia, "!"), kEnterTextMessage, kInfo,
              EditorBox::Texto},
             {"slashed, no real day", Filled("31/02/2024", "09:15"), kDateFormatMessage, kWarn, EditorBox::Fecha},
             {"digits, no time", Filled("20/03/2024", "2400"), kTimeFormatMessage, kWarn, EditorBox::Hora},
             {"bad date before bad time", Filled("3112", "2400"), kDateFormatMessage, kWarn, EditorBox::Fecha},
             {"past before no choice", Filled("17/03/2024", "23:59", -1, ""), kTimePassedMessage, kWarn,
              EditorBox::Hora},
             {"text the file cannot hold", Filled("20/03/2024", "09:15", kUnDia, "!Cita en 東京, 東口 ✓"),
              "El texto tiene caracteres que no se pueden guardar: 東京口✓", kWarn, EditorBox::Texto},
             {"past before the text's characters", Filled("10/03/2024", "10:30", kNunca, "日本"), kTimePassedMessage,
              kWarn, EditorBox::Hora},
         }) {
        SCOPED_TRACE(what);
        test::ScriptedDialogs dialogs;
        AlarmForm checked = form;
        EXPECT_EQ(CheckAlarmForm(checked, kNow, dialogs), box);
        ASSERT_EQ(dialogs.Texts(), Lines{message});
        EXPECT_EQ(dialogs.Shown()[0].icon, icon);
        EXPECT_EQ(dialogs.Shown()[0].buttons, MsgButtons::Ok);
    }
}

// ---- Saving ----------------------------------------------------------------------------------

// ---- Deleting --------------------------------------------------------------------------------

// ---- Storing, logging and the whole editors -------------------------------------------------

// Stands in for the dialogs: types into the boxes and accepts as "Aceptar" does, or closes.
class Editing : public ::testing::Test {
protected:
    EntryList alarms = ListOf({"19/03/2024 08:00 01 D 00 0 Fichar", "20/03/2024 09:15 00 D 14 0 Dentista",
                               "21/03/2024 18:00 07 D 00 1 Yoga"});
    EntryList repetitions = ListOf({"19/03/2024 08:00 Fichar", "20/03/2024 09:15 Dentista"});
    Lines log;
    RunLog run_log = [this](const std::string& line) { log.push_back(line); };
    test::ScriptedDialogs dialogs;

    AlarmFormView Typing(std::string fecha, std::string hora, int cada, std::string texto) {
        return [=, this](AlarmForm& form) {
            form = Filled(fecha, hora, cada, texto);
            return CheckAlarmForm(form, kNow, dialogs) ? EditorAction::Cancel : EditorAction::Save;
        };
    }
    RepetitionFormView Typing(std::string fecha, std::string hora, std::string texto) {
        return [=, this](RepetitionForm& form) {
            form = Reminder(fecha, hora, texto);
            return CheckRepetitionForm(form, kNow, dialogs) ? EditorAction::Cancel : EditorAction::Save;
        };
    }
    static auto Closing(EditorAction action) {
        return [action](auto&) { return action; };
    }
};

TEST_F(Editing, AlarmsAreAddedChangedAndDeletedWithTheirRunLogLines) {
    const EntryList before = alarms;
    EXPECT_FALSE(OpenAlarmEditor(alarms, false, 1, kNoPresetDate, kNow, run_log, Closing(EditorAction::Cancel)));
    EXPECT_FALSE(OpenAlarmEditor(alarms, true, 0, "10/03/2024", kNow, run_log, Typing("10/03/2024", "12:00", 0, "X")));
    EXPECT_FALSE(OpenAlarmEditor(alarms, true, 1, "", kNow, run_log, Closing(EditorAction::Delete)));
    EXPECT_EQ(alarms, before);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(dialogs.Texts(), Lines{kTimePassedMessage});

    EXPECT_TRUE(OpenAlarmEditor(alarms, true, 0, "", kNow, run_log, Typing("220324", "9", kUnMes, "!Pagar, ya")));
    EXPECT_TRUE(
        OpenAlarmEditor(alarms, false, 2, kNoPresetDate, kNow, run_log, Typing("20/03/2024", "09:45", 6, "Dentista")));
    EXPECT_TRUE(OpenAlarmEditor(alarms, false, 1, kNoPresetDate, kNow, run_log, Closing(EditorAction::Delete)));
    EXPECT_FALSE(DeleteAlarm(alarms, 0, run_log));
    EXPECT_FALSE(DeleteAlarm(alarms, 4, run_log));
    StoreAlarm(alarms, false, 7, "23/03/2024 09:00 00 D 14 0 Nuevo", run_log);  // a change whose alarm left the list
    EXPECT_EQ(Items(alarms), (Lines{"20/03/2024 09:45 02 A 14 0 Dentista", "21/03/2024 18:00 07 D 00 1 Yoga",
                                    "22/03/2024 09:00 01 M 07 1 Pagar; ya", "23/03/2024 09:00 00 D 14 0 Nuevo"}));
    EXPECT_EQ(log, (Lines{"NEW> 22/03/2024 09:00 01 M 07 1 Pagar; ya", "UPD> 20/03/2024 09:45 02 A 14 0 Dentista",
                          "DEL> 19/03/2024 08:00 01 D 00 0 Fichar", "NEW> 23/03/2024 09:00 00 D 14 0 Nuevo"}));
}

}  // namespace
}  // namespace vt
