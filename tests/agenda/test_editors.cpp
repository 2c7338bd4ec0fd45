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

// ---- Accepting -------------------------------------------------------------------------------

struct RefusalCase {
    const char* name;
    AlarmForm form;
    const char* message;
    MsgIcon icon;
    EditorBox box;
};

class RefusedAlarm : public ::testing::TestWithParam<RefusalCase> {};

TEST_P(RefusedAlarm, ShowsOneMessageAndNamesTheBox) {
    test::ScriptedDialogs dialogs;
    AlarmForm form = GetParam().form;
    EXPECT_EQ(CheckAlarmForm(form, kNow, dialogs), GetParam().box);
    ASSERT_EQ(dialogs.Texts(), Lines{GetParam().message});
    EXPECT_EQ(dialogs.Shown()[0].icon, GetParam().icon);
    EXPECT_EQ(dialogs.Shown()[0].buttons, MsgButtons::Ok);
}

constexpr MsgIcon kInfo = MsgIcon::Information;
constexpr MsgIcon kWarn = MsgIcon::Exclamation;

// "Nueva" opens with an empty date, and "Aceptar" at once asks for it.
INSTANTIATE_TEST_SUITE_P(
    Checks, RefusedAlarm,
    ::testing::Values(
        RefusalCase{"NuevaAcceptedAtOnce", Filled("", "10:30", kNunca, ""), kEnterDateMessage, kInfo, EditorBox::Fecha},
        RefusalCase{"BlankTime", Filled("20/03/2024", "  "), kEnterTimeMessage, kInfo, EditorBox::Hora},
        RefusalCase{"PastDayFromTheCalendar", Filled("10/03/2024", "10:30"), kTimePassedMessage, kWarn,
                    EditorBox::Hora},
        RefusalCase{"NoRepeatChoice", Filled("20/03/2024", "09:15", -1), kChooseCadaMessage, kInfo, EditorBox::Cada},
        RefusalCase{"BlankText", Filled("20/03/2024", "09:15", kUnDia, "   "), kEnterTextMessage, kInfo,
                    EditorBox::Texto},
        RefusalCase{"ShortFormNoDate", Filled("3112", "09:15"), kDateFormatMessage, kWarn, EditorBox::Fecha}),
    [](const auto& row) { return std::string(row.param.name); });

// The present minute is accepted to its last second; short forms and blanks are put in their
// stored form, and the text is left as typed.
TEST(AcceptedAlarm, PassesSilentlyWithDateAndTimeInTheirStoredForm) {
    test::ScriptedDialogs dialogs;
    const DateTime march_first = MakeDateTime(MakeDate(1, 3, 2024), 6, 0);
    for (const auto& [now, fecha, hora, stored] :
         std::vector<std::tuple<DateTime, const char*, const char*, const char*>>{
             {kNow + std::chrono::seconds{39}, "18/03/2024", "10:30", "18/03/2024 10:30"},
             {march_first, "150324", "745", "15/03/2024 07:45"},
             {march_first, " 15/03/2024 ", " 07:45 ", "15/03/2024 07:45"}}) {
        AlarmForm form = Filled(fecha, hora, 6, "!-Boda (1998) <150324>");
        EXPECT_EQ(CheckAlarmForm(form, now, dialogs), std::nullopt) << fecha << " " << hora;
        EXPECT_EQ(form.fecha + " " + form.hora, stored);
        EXPECT_EQ(form.texto, "!-Boda (1998) <150324>");
    }
    EXPECT_TRUE(dialogs.Shown().empty());
}

// Saving an alarm unchanged would launch it again at once: one whose time today has passed is
// refused like a new one, and one at the present minute is not.
TEST(UnchangedAlarm, IsRefusedOnceItsTimeHasPassed) {
    const EntryList alarms = ListOf({"18/03/2024 10:29 01 D 00 0 Fichar", "18/03/2024 10:30 01 D 00 0 Café"});
    test::ScriptedDialogs dialogs;
    AlarmForm passed = OpenAlarmForm(false, alarms, 1, kNoPresetDate, kNow);
    EXPECT_EQ(CheckAlarmForm(passed, kNow, dialogs), EditorBox::Hora);
    EXPECT_EQ(dialogs.Texts(), Lines{kTimePassedMessage});
    AlarmForm present = OpenAlarmForm(false, alarms, 2, kNoPresetDate, kNow);
    EXPECT_EQ(CheckAlarmForm(present, kNow, dialogs), std::nullopt);
    EXPECT_EQ(AlarmEntryFromForm(present), alarms[2]);
}

// ---- Saving ----------------------------------------------------------------------------------

struct EntryCase {
    int cada;
    const char* texto;
    const char* entry;
    int cada_back;  // the choice on reopening the entry
};

class AlarmEntry : public ::testing::TestWithParam<EntryCase> {};

TEST_P(AlarmEntry, FollowsTheChoiceAndTheMarksAndReopensAsTyped) {
    const EntryCase& c = GetParam();
    const std::string entry = AlarmEntryFromForm(Filled("20/03/2024", "09:15", c.cada, c.texto));
    EXPECT_EQ(entry, c.entry);
    const AlarmForm reopened = OpenAlarmForm(false, ListOf({entry}), 1, kNoPresetDate, kNow);
    EXPECT_EQ(reopened.cada, c.cada_back);
    std::string texto = c.texto;
    std::replace(texto.begin(), texto.end(), ',', ';');
    EXPECT_EQ(reopened.texto, texto);
}

// A choice outside the list is stored as "Nunca".
INSTANTIATE_TEST_SUITE_P(Choices, AlarmEntry,
                         ::testing::Values(EntryCase{0, "Dentista", "20/03/2024 09:15 00 D 14 0 Dentista", 0},
                                           EntryCase{1, "Fichar", "20/03/2024 09:15 01 D 00 0 Fichar", 1},
                                           EntryCase{3, "!Reunión", "20/03/2024 09:15 01 M 07 1 Reunión", 3},
                                           EntryCase{1, "Pan, leche, huevos",
                                                     "20/03/2024 09:15 01 D 00 0 Pan; leche; huevos", 1},
                                           EntryCase{12, "Raro", "20/03/2024 09:15 00 D 14 0 Raro", 0}));

TEST(RepetitionEntry, IsDateTimeAndTextWithoutCommas) {
    EXPECT_EQ(RepetitionEntryFromForm(Reminder("20/03/2024", "07:45", "Llamar, ya")), "20/03/2024 07:45 Llamar; ya");
}

// ---- Deleting --------------------------------------------------------------------------------

TEST(DeleteQuestions, AskWithCancelAsTheDefault) {
    test::ScriptedDialogs dialogs;
    dialogs.QueueAnswer(MsgAnswer::Ok);
    EXPECT_TRUE(ConfirmDeleteAlarm(dialogs));
    EXPECT_FALSE(ConfirmDeleteAlarm(dialogs));  // a plain Enter takes the default button
    EXPECT_FALSE(ConfirmDeleteRepetition(dialogs));
    EXPECT_EQ(dialogs.Texts(), (Lines{"¿Quieres borrar esta alarma?", "¿Quieres borrar esta alarma?",
                                      "¿Quieres borrar esta repetición?"}));
    for (const MessageBox& box : dialogs.Shown()) {
        EXPECT_EQ(box.icon, MsgIcon::Question);
        EXPECT_EQ(box.buttons, MsgButtons::OkCancel);
    }
}

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
    StoreAlarm(alarms, false, 7, "23/03/2024 09:00 00 D 14 0 Nuevo", run_log);  // a change whose alarm left the list
    EXPECT_EQ(Items(alarms), (Lines{"20/03/2024 09:45 02 A 14 0 Dentista", "21/03/2024 18:00 07 D 00 1 Yoga",
                                    "22/03/2024 09:00 01 M 07 1 Pagar; ya", "23/03/2024 09:00 00 D 14 0 Nuevo"}));
    EXPECT_EQ(log, (Lines{"NEW> 22/03/2024 09:00 01 M 07 1 Pagar; ya", "UPD> 20/03/2024 09:45 02 A 14 0 Dentista",
                          "DEL> 19/03/2024 08:00 01 D 00 0 Fichar", "NEW> 23/03/2024 09:00 00 D 14 0 Nuevo"}));
}

TEST_F(Editing, RepetitionsAreAddedChangedAndDeletedOnlyWhenTheyAreThere) {
    const EntryList before = repetitions;
    EXPECT_FALSE(OpenRepetitionEditor(repetitions, false, 2, kNoPresetDate, kNow, Closing(EditorAction::Cancel)));
    EXPECT_FALSE(OpenRepetitionEditor(repetitions, true, 0, "", kNow, Typing("", "10:30", "x")));
    EXPECT_EQ(repetitions, before);
    EXPECT_EQ(dialogs.Texts(), Lines{kEnterDateMessage});
    EXPECT_TRUE(OpenRepetitionEditor(repetitions, true, 0, "", kNow, Typing("210324", "9", "")));
    EXPECT_TRUE(
        OpenRepetitionEditor(repetitions, false, 2, kNoPresetDate, kNow, Typing("20/03/2024", "0815", "Dentista, ya")));
    EXPECT_TRUE(OpenRepetitionEditor(repetitions, false, 1, kNoPresetDate, kNow, Closing(EditorAction::Delete)));
    EXPECT_EQ(Items(repetitions), (Lines{"20/03/2024 08:15 Dentista; ya", "21/03/2024 09:00 "}));
}

}  // namespace
}  // namespace vt
