#include "agenda/alarm_editor.h"

#include <gtest/gtest.h>

#include "agenda/entries.h"
#include "agenda/launching.h"
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
constexpr int kDosAnos = 6;

// ---- Opening -------------------------------------------------------------------------------

struct AddCase {
    const char* name;
    const char* preset;
    const char* fecha;
};

class OpeningToAdd : public ::testing::TestWithParam<AddCase> {};

TEST_P(OpeningToAdd, StartsOnThePresetAtThePresentTimeNeverRepeating) {
    const EntryList alarms = ListOf({"20/03/2024 09:15 00 D 14 0 Dentista"});
    const AlarmForm form = OpenAlarmForm(true, alarms, 1, GetParam().preset, kNow);
    EXPECT_EQ(form.fecha, GetParam().fecha);
    EXPECT_EQ(form.hora, "10:30");
    EXPECT_EQ(form.cada, kNunca);
    EXPECT_EQ(form.texto, "");
    EXPECT_FALSE(form.can_delete);
}

INSTANTIATE_TEST_SUITE_P(Presets, OpeningToAdd,
                         ::testing::Values(AddCase{"FromTheMenu", "", ""},
                                           AddCase{"NoPresetMeansToday", kNoPresetDate, "18/03/2024"},
                                           AddCase{"ClickedDay", "25/12/2024", "25/12/2024"},
                                           AddCase{"PastClickedDayIsKept", "10/03/2024", "10/03/2024"}),
                         [](const auto& row) { return std::string(row.param.name); });

struct ChangeCase {
    const char* name;
    const char* entry;
    int cada;
    const char* texto;
};

class OpeningToChange : public ::testing::TestWithParam<ChangeCase> {};

TEST_P(OpeningToChange, PutsTheFieldsBack) {
    // The alarm is the second one, so that the index is really followed.
    const EntryList alarms = ListOf({"01/03/2024 08:00 00 D 14 0 Otra", GetParam().entry});
    const AlarmForm form = OpenAlarmForm(false, alarms, 2, kNoPresetDate, kNow);
    EXPECT_EQ(form.fecha, "20/03/2024");
    EXPECT_EQ(form.hora, "09:15");
    EXPECT_EQ(form.cada, GetParam().cada);
    EXPECT_EQ(form.texto, GetParam().texto);
    EXPECT_TRUE(form.can_delete);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, OpeningToChange,
    ::testing::Values(ChangeCase{"Nunca", "20/03/2024 09:15 00 D 14 0 Dentista", 0, "Dentista"},
                      ChangeCase{"Weekly", "20/03/2024 09:15 07 D 00 0 Informe", 2, "Informe"},
                      ChangeCase{"MonthlyWithPriority", "20/03/2024 09:15 01 M 07 1 Reunión", 3, "!Reunión"},
                      ChangeCase{"EveryThreeMonths", "20/03/2024 09:15 03 M 07 0 IVA", 4, "IVA"},
                      ChangeCase{"EverySixYears", "20/03/2024 09:15 06 A 14 0 Carné", 8, "Carné"},
                      // Any flag but "0" is a priority, a hand-edited "2" too.
                      ChangeCase{"OddFlagCountsAsPriority", "20/03/2024 09:15 01 A 14 2 Boda (1998)", 5,
                                 "!Boda (1998)"},
                      ChangeCase{"CommaComesBackAsSemicolon", "20/03/2024 09:15 01 D 00 0 Pan; leche", 1, "Pan; leche"},
                      // Five days is no choice of the list: nothing is selected.
                      ChangeCase{"CodeOfNoChoice", "20/03/2024 09:15 05 D 00 0 Raro", -1, "Raro"},
                      ChangeCase{"UnknownUnit", "20/03/2024 09:15 01 X 00 0 Raro", -1, "Raro"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(OpeningToChangeOutsideTheList, OpensEmptyWithNothingToDelete) {
    const EntryList alarms = ListOf({"20/03/2024 09:15 00 D 14 0 Dentista"});
    for (const int index : {0, 2, -1}) {
        const AlarmForm form = OpenAlarmForm(false, alarms, index, kNoPresetDate, kNow);
        EXPECT_EQ(form.fecha, "") << index;
        EXPECT_EQ(form.texto, "") << index;
        EXPECT_EQ(form.cada, -1) << index;
        EXPECT_FALSE(form.can_delete) << index;
    }
}

// ---- Leaving the date box --------------------------------------------------------------------

struct DateBoxCase {
    const char* typed;
    const char* shown;
    bool refused;
};

class LeavingTheDateBox : public ::testing::TestWithParam<DateBoxCase> {};

TEST_P(LeavingTheDateBox, ConvertsShortFormsOnly) {
    test::ScriptedDialogs dialogs;
    EXPECT_EQ(ConvertDateBox(GetParam().typed, dialogs), GetParam().shown);
    if (GetParam().refused) {
        ASSERT_EQ(dialogs.Shown().size(), 1u);
        EXPECT_EQ(dialogs.Shown()[0].text, kDateFormatMessage);
        EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    } else {
        EXPECT_TRUE(dialogs.Shown().empty());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, LeavingTheDateBox,
    ::testing::Values(DateBoxCase{"150324", "15/03/2024", false}, DateBoxCase{"15032024", "15/03/2024", false},
                      DateBoxCase{" 150324 ", "15/03/2024", false}, DateBoxCase{"010150", "01/01/2050", false},
                      DateBoxCase{"010151", "01/01/1951", false},
                      // With "/" the box is the user's: not even a wrong day is touched.
                      DateBoxCase{"15/03/2024", "15/03/2024", false}, DateBoxCase{"31/02/2024", "31/02/2024", false},
                      DateBoxCase{"", "", false}, DateBoxCase{"3112", "", true}, DateBoxCase{"310224", "", true},
                      DateBoxCase{"15-03-24", "", true}));

// ---- Accepting -------------------------------------------------------------------------------

AlarmForm Filled(std::string fecha, std::string hora, int cada = kNunca, std::string texto = "Dentista") {
    AlarmForm form;
    form.fecha = std::move(fecha);
    form.hora = std::move(hora);
    form.cada = cada;
    form.texto = std::move(texto);
    return form;
}

struct RefusalCase {
    const char* name;
    AlarmForm form;
    const char* message;
    MsgIcon icon;
    EditorBox box;
};

class RefusedForm : public ::testing::TestWithParam<RefusalCase> {};

TEST_P(RefusedForm, ShowsOneMessageAndNamesTheBox) {
    test::ScriptedDialogs dialogs;
    AlarmForm form = GetParam().form;
    EXPECT_EQ(CheckAlarmForm(form, kNow, dialogs), GetParam().box);
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].text, GetParam().message);
    EXPECT_EQ(dialogs.Shown()[0].icon, GetParam().icon);
    EXPECT_EQ(dialogs.Shown()[0].buttons, MsgButtons::Ok);
}

const char* const kInvalidDate = kDateFormatMessage;
const char* const kInvalidTime = kTimeFormatMessage;

INSTANTIATE_TEST_SUITE_P(
    Checks, RefusedForm,
    ::testing::Values(
        RefusalCase{"NuevaAcceptedAtOnce", Filled("", "10:30", kNunca, ""), kEnterDateMessage, MsgIcon::Information,
                    EditorBox::Fecha},
        RefusalCase{"BlankDate", Filled("   ", "10:30"), kEnterDateMessage, MsgIcon::Information, EditorBox::Fecha},
        RefusalCase{"EmptyTime", Filled("20/03/2024", ""), kEnterTimeMessage, MsgIcon::Information, EditorBox::Hora},
        RefusalCase{"BlankTime", Filled("20/03/2024", "  "), kEnterTimeMessage, MsgIcon::Information, EditorBox::Hora},
        RefusalCase{"PastDayFromTheCalendar", Filled("10/03/2024", "10:30"), kTimePassedMessage, MsgIcon::Exclamation,
                    EditorBox::Hora},
        RefusalCase{"PreviousMinuteToday", Filled("18/03/2024", "10:29"), kTimePassedMessage, MsgIcon::Exclamation,
                    EditorBox::Hora},
        RefusalCase{"ShortFormsOfThePast", Filled("180324", "1029"), kTimePassedMessage, MsgIcon::Exclamation,
                    EditorBox::Hora},
        RefusalCase{"NoRepeatChoice", Filled("20/03/2024", "09:15", -1), kChooseCadaMessage, MsgIcon::Information,
                    EditorBox::Cada},
        RefusalCase{"RepeatChoicePastTheList", Filled("20/03/2024", "09:15", 9), kChooseCadaMessage,
                    MsgIcon::Information, EditorBox::Cada},
        RefusalCase{"EmptyText", Filled("20/03/2024", "09:15", kUnDia, ""), kEnterTextMessage, MsgIcon::Information,
                    EditorBox::Texto},
        RefusalCase{"BlankText", Filled("20/03/2024", "09:15", kUnDia, "   "), kEnterTextMessage, MsgIcon::Information,
                    EditorBox::Texto},
        RefusalCase{"OnlyThePriorityMark", Filled("20/03/2024", "09:15", kUnDia, "!"), kEnterTextMessage,
                    MsgIcon::Information, EditorBox::Texto},
        RefusalCase{"ShortFormNoDate", Filled("3112", "09:15"), kInvalidDate, MsgIcon::Exclamation, EditorBox::Fecha},
        RefusalCase{"ShortFormNoRealDay", Filled("300224", "09:15"), kInvalidDate, MsgIcon::Exclamation,
                    EditorBox::Fecha},
        RefusalCase{"SlashedNoRealDay", Filled("31/02/2024", "09:15"), kInvalidDate, MsgIcon::Exclamation,
                    EditorBox::Fecha},
        RefusalCase{"TwoDigitYearWithSlashes", Filled("20/03/24", "09:15"), kInvalidDate, MsgIcon::Exclamation,
                    EditorBox::Fecha},
        RefusalCase{"DigitsNoTime", Filled("20/03/2024", "2400"), kInvalidTime, MsgIcon::Exclamation, EditorBox::Hora},
        RefusalCase{"MinutePastTheHour", Filled("20/03/2024", "1260"), kInvalidTime, MsgIcon::Exclamation,
                    EditorBox::Hora},
        RefusalCase{"HandEditedTime", Filled("20/03/2024", "25:00"), kInvalidTime, MsgIcon::Exclamation,
                    EditorBox::Hora},
        // Only the first failure speaks, in the order of the checks.
        RefusalCase{"EverythingMissing", Filled("", "", -1, ""), kEnterDateMessage, MsgIcon::Information,
                    EditorBox::Fecha},
        RefusalCase{"BadDateBeforeBadTime", Filled("3112", "2400"), kInvalidDate, MsgIcon::Exclamation,
                    EditorBox::Fecha},
        RefusalCase{"PastBeforeNoChoice", Filled("17/03/2024", "23:59", -1, ""), kTimePassedMessage,
                    MsgIcon::Exclamation, EditorBox::Hora}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(RefusedForm, KeepsWhatCouldNotBeReadAndConvertsWhatCould) {
    test::ScriptedDialogs dialogs;
    AlarmForm bad_date = Filled("3112", "745");
    CheckAlarmForm(bad_date, kNow, dialogs);
    EXPECT_EQ(bad_date.fecha, "3112");

    AlarmForm no_text = Filled("200324", "745", kUnDia, "");
    EXPECT_EQ(CheckAlarmForm(no_text, kNow, dialogs), EditorBox::Texto);
    EXPECT_EQ(no_text.fecha, "20/03/2024");
    EXPECT_EQ(no_text.hora, "07:45");
}

struct AcceptCase {
    const char* name;
    DateTime now;
    AlarmForm form;
    const char* fecha;
    const char* hora;
};

class AcceptedForm : public ::testing::TestWithParam<AcceptCase> {};

TEST_P(AcceptedForm, PassesSilentlyWithDateAndTimeInTheirStoredForm) {
    test::ScriptedDialogs dialogs;
    AlarmForm form = GetParam().form;
    EXPECT_EQ(CheckAlarmForm(form, GetParam().now, dialogs), std::nullopt);
    EXPECT_TRUE(dialogs.Shown().empty());
    EXPECT_EQ(form.fecha, GetParam().fecha);
    EXPECT_EQ(form.hora, GetParam().hora);
    EXPECT_EQ(form.cada, GetParam().form.cada);
    EXPECT_EQ(form.texto, GetParam().form.texto);
}

const DateTime kMarchFirst = MakeDateTime(MakeDate(1, 3, 2024), 6, 0);

INSTANTIATE_TEST_SUITE_P(
    Checks, AcceptedForm,
    ::testing::Values(
        AcceptCase{"PresentMinute", kNow, Filled("18/03/2024", "10:30"), "18/03/2024", "10:30"},
        AcceptCase{"PresentMinuteAtItsLastSecond", kNow + std::chrono::seconds{39}, Filled("18/03/2024", "10:30"),
                   "18/03/2024", "10:30"},
        AcceptCase{"LaterToday", kNow, Filled("18/03/2024", "23:59"), "18/03/2024", "23:59"},
        AcceptCase{"ShortForms", kMarchFirst, Filled("150324", "745"), "15/03/2024", "07:45"},
        AcceptCase{"EightDigitDateAndHoursOnly", kMarchFirst, Filled("15032024", "7"), "15/03/2024", "07:00"},
        AcceptCase{"TwoDigitsAreHours", kMarchFirst, Filled("150324", "08"), "15/03/2024", "08:00"},
        AcceptCase{"FocusedTimeBoxDigits", kMarchFirst, Filled("15/03/2024", "0745"), "15/03/2024", "07:45"},
        AcceptCase{"OneDigitDayAndMonth", kMarchFirst, Filled("5/4/2024", "7:05"), "05/04/2024", "07:05"},
        AcceptCase{"Blanks", kMarchFirst, Filled(" 15/03/2024 ", " 07:45 "), "15/03/2024", "07:45"},
        AcceptCase{"TextWithMarks", kMarchFirst, Filled("15/03/2024", "07:45", kDosAnos, "!-Boda (1998) <150324>"),
                   "15/03/2024", "07:45"}),
    [](const auto& row) { return std::string(row.param.name); });

// Saving an alarm unchanged would launch it again at once: one whose time today has passed is
// refused like a new one, and one at the present minute is not.
TEST(UnchangedAlarm, IsRefusedOnceItsTimeHasPassed) {
    const EntryList alarms = ListOf({"18/03/2024 10:29 01 D 00 0 Fichar", "18/03/2024 10:30 01 D 00 0 Café"});
    test::ScriptedDialogs dialogs;

    AlarmForm passed = OpenAlarmForm(false, alarms, 1, kNoPresetDate, kNow);
    EXPECT_EQ(CheckAlarmForm(passed, kNow, dialogs), EditorBox::Hora);
    EXPECT_EQ(dialogs.Texts(), Lines{kTimePassedMessage});

    dialogs.Forget();
    AlarmForm present = OpenAlarmForm(false, alarms, 2, kNoPresetDate, kNow);
    EXPECT_EQ(CheckAlarmForm(present, kNow, dialogs), std::nullopt);
    EXPECT_TRUE(dialogs.Shown().empty());
    EXPECT_EQ(AlarmEntryFromForm(present), alarms[2]);
}

// ---- Saving ----------------------------------------------------------------------------------

struct EntryCase {
    const char* name;
    int cada;
    const char* texto;
    const char* entry;
};

class EntryFromForm : public ::testing::TestWithParam<EntryCase> {};

TEST_P(EntryFromForm, FollowsTheChoiceAndTheMarks) {
    EXPECT_EQ(AlarmEntryFromForm(Filled("20/03/2024", "09:15", GetParam().cada, GetParam().texto)), GetParam().entry);
}

INSTANTIATE_TEST_SUITE_P(
    Choices, EntryFromForm,
    ::testing::Values(EntryCase{"Nunca", 0, "Dentista", "20/03/2024 09:15 00 D 14 0 Dentista"},
                      EntryCase{"UnDia", 1, "Fichar", "20/03/2024 09:15 01 D 00 0 Fichar"},
                      EntryCase{"UnaSemana", 2, "Informe", "20/03/2024 09:15 07 D 00 0 Informe"},
                      EntryCase{"UnMes", 3, "Factura", "20/03/2024 09:15 01 M 07 0 Factura"},
                      EntryCase{"TresMeses", 4, "IVA", "20/03/2024 09:15 03 M 07 0 IVA"},
                      EntryCase{"UnAno", 5, "Santo", "20/03/2024 09:15 01 A 14 0 Santo"},
                      EntryCase{"DosAnos", 6, "Revisión", "20/03/2024 09:15 02 A 14 0 Revisión"},
                      EntryCase{"CuatroAnos", 7, "Elecciones", "20/03/2024 09:15 04 A 14 0 Elecciones"},
                      EntryCase{"SeisAnos", 8, "Carné", "20/03/2024 09:15 06 A 14 0 Carné"},
                      EntryCase{"Priority", 0, "!Reunión", "20/03/2024 09:15 00 D 14 1 Reunión"},
                      EntryCase{"OnlyTheFirstMarkIsTaken", 0, "!!Doble", "20/03/2024 09:15 00 D 14 1 !Doble"},
                      EntryCase{"MarkAfterABlankIsText", 0, " !No", "20/03/2024 09:15 00 D 14 0  !No"},
                      EntryCase{"CommaBecomesSemicolon", 1, "Pan, leche", "20/03/2024 09:15 01 D 00 0 Pan; leche"},
                      EntryCase{"OtherMarksKept", 5, "-Boda (1998) <150324>",
                                "20/03/2024 09:15 01 A 14 0 -Boda (1998) <150324>"},
                      EntryCase{"ChoiceOutsideTheListIsNunca", 12, "Raro", "20/03/2024 09:15 00 D 14 0 Raro"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PriorityMark, IsStoredAsTheFlagAndComesBackOnReopening) {
    const EntryList alarms = ListOf({AlarmEntryFromForm(Filled("20/03/2024", "09:15", kUnMes, "!Reunión"))});
    EXPECT_EQ(GetAlarmField(alarms, 1, 9), "1");
    EXPECT_EQ(GetAlarmField(alarms, 1, 6), "Reunión");
    EXPECT_EQ(GetAlarmField(alarms, 1, 5), "07");
    const AlarmForm reopened = OpenAlarmForm(false, alarms, 1, kNoPresetDate, kNow);
    EXPECT_EQ(reopened.texto, "!Reunión");
    EXPECT_EQ(reopened.cada, kUnMes);
}

TEST(CommaInTheText, ComesBackAsSemicolon) {
    const EntryList alarms = ListOf({AlarmEntryFromForm(Filled("20/03/2024", "09:15", kNunca, "Pan, leche, huevos"))});
    EXPECT_EQ(OpenAlarmForm(false, alarms, 1, kNoPresetDate, kNow).texto, "Pan; leche; huevos");
}

// ---- Deleting --------------------------------------------------------------------------------

TEST(DeleteQuestion, AsksWithCancelAsTheDefault) {
    test::ScriptedDialogs dialogs;
    dialogs.QueueAnswer(MsgAnswer::Ok);
    dialogs.QueueAnswer(MsgAnswer::Cancel);
    EXPECT_TRUE(ConfirmDeleteAlarm(dialogs));
    EXPECT_FALSE(ConfirmDeleteAlarm(dialogs));
    // A plain Enter takes the default button.
    EXPECT_FALSE(ConfirmDeleteAlarm(dialogs));
    ASSERT_EQ(dialogs.Shown().size(), 3u);
    for (const MessageBox& box : dialogs.Shown()) {
        EXPECT_EQ(box.text, "¿Quieres borrar esta alarma?");
        EXPECT_EQ(box.icon, MsgIcon::Question);
        EXPECT_EQ(box.buttons, MsgButtons::OkCancel);
        EXPECT_EQ(box.default_answer, MsgAnswer::Cancel);
    }
}

// ---- Storing, logging and the whole editor ----------------------------------------------------

class AlarmEditing : public ::testing::Test {
protected:
    EntryList alarms = ListOf({"19/03/2024 08:00 01 D 00 0 Fichar", "20/03/2024 09:15 00 D 14 0 Dentista",
                               "21/03/2024 18:00 07 D 00 1 Yoga"});
    Lines log;
    RunLog run_log = [this](const std::string& line) { log.push_back(line); };
    test::ScriptedDialogs dialogs;

    // Stands in for the dialog: types into the boxes and accepts, as "Aceptar" does.
    AlarmFormView Typing(std::string fecha, std::string hora, int cada, std::string texto) {
        return [=, this](AlarmForm& form) {
            form.fecha = fecha;
            form.hora = hora;
            form.cada = cada;
            form.texto = texto;
            return CheckAlarmForm(form, kNow, dialogs) ? EditorAction::Cancel : EditorAction::Save;
        };
    }
    static AlarmFormView Closing(EditorAction action) {
        return [action](AlarmForm&) { return action; };
    }
};

TEST_F(AlarmEditing, AddingAppendsAndLogsNew) {
    EXPECT_TRUE(OpenAlarmEditor(alarms, true, 0, "", kNow, run_log, Typing("220324", "9", kUnMes, "!Pagar, ya")));
    EXPECT_EQ(alarms.Count(), 4);
    EXPECT_EQ(alarms[4], "22/03/2024 09:00 01 M 07 1 Pagar; ya");
    EXPECT_EQ(log, Lines{"NEW> 22/03/2024 09:00 01 M 07 1 Pagar; ya"});
}

TEST_F(AlarmEditing, ChangingReplacesInPlaceAndLogsUpd) {
    EXPECT_TRUE(OpenAlarmEditor(alarms, false, 2, kNoPresetDate, kNow, run_log,
                                Typing("20/03/2024", "09:45", kDosAnos, "Dentista")));
    EXPECT_EQ(Items(alarms), (Lines{"19/03/2024 08:00 01 D 00 0 Fichar", "20/03/2024 09:45 02 A 14 0 Dentista",
                                    "21/03/2024 18:00 07 D 00 1 Yoga"}));
    EXPECT_EQ(log, Lines{"UPD> 20/03/2024 09:45 02 A 14 0 Dentista"});
}

TEST_F(AlarmEditing, SavingUnchangedKeepsThePriority) {
    AlarmForm seen;
    EXPECT_TRUE(OpenAlarmEditor(alarms, false, 3, kNoPresetDate, kNow, run_log, [&](AlarmForm& form) {
        seen = form;
        return CheckAlarmForm(form, kNow, dialogs) ? EditorAction::Cancel : EditorAction::Save;
    }));
    EXPECT_EQ(seen.texto, "!Yoga");
    EXPECT_EQ(alarms[3], "21/03/2024 18:00 07 D 00 1 Yoga");
    EXPECT_EQ(log, Lines{"UPD> 21/03/2024 18:00 07 D 00 1 Yoga"});
}

TEST_F(AlarmEditing, CancellingOrARefusedFormChangesNothing) {
    const EntryList before = alarms;
    EXPECT_FALSE(OpenAlarmEditor(alarms, true, 0, "", kNow, run_log, Closing(EditorAction::Cancel)));
    EXPECT_FALSE(OpenAlarmEditor(alarms, false, 1, kNoPresetDate, kNow, run_log, Closing(EditorAction::Cancel)));
    EXPECT_FALSE(OpenAlarmEditor(alarms, true, 0, "10/03/2024", kNow, run_log, Typing("10/03/2024", "12:00", 0, "X")));
    EXPECT_EQ(alarms, before);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(dialogs.Texts(), Lines{kTimePassedMessage});
}

TEST_F(AlarmEditing, DeletingRemovesAndLogsTheRemovedEntry) {
    EXPECT_TRUE(OpenAlarmEditor(alarms, false, 2, kNoPresetDate, kNow, run_log, Closing(EditorAction::Delete)));
    EXPECT_EQ(Items(alarms), (Lines{"19/03/2024 08:00 01 D 00 0 Fichar", "21/03/2024 18:00 07 D 00 1 Yoga"}));
    EXPECT_EQ(log, Lines{"DEL> 20/03/2024 09:15 00 D 14 0 Dentista"});
}

TEST_F(AlarmEditing, NothingToDeleteOutsideTheListOrInAddMode) {
    const EntryList before = alarms;
    EXPECT_FALSE(DeleteAlarm(alarms, 0, run_log));
    EXPECT_FALSE(DeleteAlarm(alarms, 4, run_log));
    EXPECT_FALSE(OpenAlarmEditor(alarms, true, 1, "", kNow, run_log, Closing(EditorAction::Delete)));
    EXPECT_EQ(alarms, before);
    EXPECT_TRUE(log.empty());
}

TEST_F(AlarmEditing, AChangedAlarmThatLeftTheListIsAppendedNotLost) {
    StoreAlarm(alarms, false, 7, "22/03/2024 09:00 00 D 14 0 Nuevo", run_log);
    EXPECT_EQ(alarms.Count(), 4);
    EXPECT_EQ(alarms[4], "22/03/2024 09:00 00 D 14 0 Nuevo");
    EXPECT_EQ(log, Lines{"NEW> 22/03/2024 09:00 00 D 14 0 Nuevo"});
}

// What the caller does after a change: the alarm for later today becomes a reminder at once and,
// never repeating, leaves the list.
TEST_F(AlarmEditing, AnAlarmForLaterTodayBecomesAReminderAtOnce) {
    EntryList repetitions;
    ASSERT_TRUE(OpenAlarmEditor(alarms, true, 0, kNoPresetDate, kNow, run_log,
                                Typing("18/03/2024", "1800", kNunca, "Recoger a Lucía")));
    AdvanceAlarmDates(alarms, repetitions, DateOf(kNow), dialogs, run_log);
    EXPECT_EQ(Items(repetitions), Lines{"18/03/2024 18:00 Recoger a Lucía"});
    EXPECT_EQ(Items(alarms), (Lines{"19/03/2024 08:00 01 D 00 0 Fichar", "20/03/2024 09:15 00 D 14 0 Dentista",
                                    "21/03/2024 18:00 07 D 00 1 Yoga"}));
    EXPECT_EQ(log, (Lines{"NEW> 18/03/2024 18:00 00 D 14 0 Recoger a Lucía",
                          "REP> 18/03/2024 18:00 00 D 14 0 Recoger a Lucía"}));
}

}  // namespace
}  // namespace vt
