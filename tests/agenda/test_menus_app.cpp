// The agenda's menu items as App runs them: each editor opened on the right form, and after a
// change the follow-up the item owes (reminders launched, menu rebuilt, settings saved, scan).
#include <gtest/gtest.h>

#include <cstdio>

#include "app_harness.h"
#include "entry_lists.h"

namespace vt {
namespace {

class AgendaMenusTest : public ::testing::Test, public test::AppHarness {
protected:
    AgendaMenusTest() {
        clock.Set(6, 3, 2024, 8, 12);
        folder.WriteFile("VendrakoTimer.ini",
                         "[GENERAL]\r\nFECHA=06-03-24\r\nENTRADA1=08:00\r\nNUM_ALARMAS=1\r\n"
                         "[REPETICIONES]\r\nREP_001=07/03/2024 09:00 Llamar a Ana\r\n"
                         "[ALARMAS]\r\nALA_001=20/03/2024 10:00 01 M 07 0 Factura\r\n");
        EXPECT_EQ(Start(), Outcome::Continue);
        app->SetScanHook([this] { ++scans; });
        dialogs.Forget();  // the proximity report of the start
    }
    std::vector<std::string> Alarms() const { return test::Items(app->State().settings.Alarms); }
    std::vector<std::string> Repetitions() const { return test::Items(app->State().settings.Repetitions); }

    int scans = 0;
};

TEST_F(AgendaMenusTest, ANewAlarmForLaterTodayBecomesAReminderAtOnceAndIsSaved) {
    view.edit_alarm = [&](AlarmForm& form) {
        EXPECT_FALSE(app->State().ClockInBoxesActive) << "the clock-in boxes rest while the editor is open";
        form.fecha = "06/03/2024";
        form.hora = "17:30";
        form.texto = "Recoger el coche";
        return EditorAction::Save;
    };
    app->NewAlarm("");
    ASSERT_EQ(view.alarm_forms.size(), 1u);
    EXPECT_EQ(view.alarm_forms[0].fecha, "") << "the menu item leaves the date to the user";
    EXPECT_EQ(Alarms(), std::vector<std::string>{"20/03/2024 10:00 01 M 07 0 Factura"})
        << "a never-repeating alarm for today leaves the list as a reminder";
    EXPECT_EQ(Repetitions(),
              (std::vector<std::string>{"06/03/2024 17:30 Recoger el coche", "07/03/2024 09:00 Llamar a Ana"}));
    EXPECT_EQ(view.repetition_menu, Repetitions());
    EXPECT_NE(SettingsFile().find("REP_001=06/03/2024 17:30 Recoger el coche\r\n"), std::string::npos);
    EXPECT_EQ(folder.ReadFile("LOG/TIMER.LOG"),
              "[06/03/2024 08:12:00] NEW> 06/03/2024 17:30 00 D 14 0 Recoger el coche\r\n"
              "[06/03/2024 08:12:00] REP> 06/03/2024 17:30 00 D 14 0 Recoger el coche\r\n");
    EXPECT_EQ(scans, 1);
    EXPECT_TRUE(app->State().ClockInBoxesActive);
}

// Cancelled editors, and an alarm list left without a pick, change and save nothing. The
// calendar's day is the new entry's date.
TEST_F(AgendaMenusTest, ACancelledEditorOrNoPickChangesAndSavesNothing) {
    const std::string before = SettingsFile();
    app->NewAlarm("12/03/2024");
    app->NewRepetition("12/03/2024");
    app->OpenRepetition(1);
    app->ShowAllAlarms();
    ASSERT_EQ(view.alarm_forms.size(), 1u) << "nothing picked from the list opens no editor";
    EXPECT_EQ(view.alarm_forms[0].fecha + " " + view.alarm_forms[0].hora, "12/03/2024 08:12");
    EXPECT_EQ(view.repetition_forms.at(0).fecha, "12/03/2024");
    EXPECT_EQ(SettingsFile(), before);
    EXPECT_EQ(scans, 0);
    EXPECT_FALSE(folder.Exists("LOG/TIMER.LOG"));
    EXPECT_TRUE(app->State().ClockInBoxesActive);
}

// Moved to the present minute, the reminder is saved without a run-log line and fires at the
// next tick.
TEST_F(AgendaMenusTest, AListedReminderOpensInChangeModeAndSavesWithoutALogLine) {
    view.edit_repetition = [](RepetitionForm& form) {
        form.fecha = "06/03/2024";
        form.hora = "08:12";
        return EditorAction::Save;
    };
    app->OpenRepetition(1);
    ASSERT_EQ(view.repetition_forms.size(), 1u);
    EXPECT_EQ(view.repetition_forms[0].texto, "Llamar a Ana");
    EXPECT_TRUE(view.repetition_forms[0].can_delete);
    EXPECT_EQ(Repetitions(), std::vector<std::string>{"06/03/2024 08:12 Llamar a Ana"});
    EXPECT_NE(SettingsFile().find("REP_001=06/03/2024 08:12 Llamar a Ana\r\n"), std::string::npos);
    EXPECT_FALSE(folder.Exists("LOG/TIMER.LOG"));
    EXPECT_EQ(scans, 1);
    view.repeat_answers = {std::nullopt};
    app->Tick();
    ASSERT_EQ(view.prompts.size(), 1u);
    EXPECT_EQ(view.prompts[0].text, "Llamar a Ana");
}

TEST_F(AgendaMenusTest, TheAlarmListOpensThePickedAlarmAndLogsItsDeletion) {
    view.chosen_alarm = 1;
    dialogs.QueueAnswer(MsgAnswer::Ok);
    view.edit_alarm = [&](AlarmForm& form) {
        EXPECT_EQ(form.texto, "Factura");
        return ConfirmDeleteAlarm(dialogs) ? EditorAction::Delete : EditorAction::Cancel;
    };
    app->ShowAllAlarms();
    EXPECT_EQ(view.listed_alarms, std::vector<std::string>{"20/03/2024 10:00 01 M 07 0 Factura"});
    EXPECT_TRUE(Alarms().empty());
    EXPECT_EQ(folder.ReadFile("LOG/TIMER.LOG"), "[06/03/2024 08:12:00] DEL> 20/03/2024 10:00 01 M 07 0 Factura\r\n");
    EXPECT_NE(SettingsFile().find("NUM_ALARMAS=0\r\n"), std::string::npos);
}

TEST_F(AgendaMenusTest, CalendarEntriesOpenTheirEditorAndAnUnknownKindSaysSo) {
    app->OpenDayEntry("ALA", 1);
    app->OpenDayEntry("REP", 1);
    EXPECT_EQ(view.alarm_forms.size(), 1u);
    EXPECT_EQ(view.repetition_forms.size(), 1u);
    const std::string before = SettingsFile();
    app->OpenDayEntry("XYZ", 1);
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"Algo va mal"});
    EXPECT_EQ(SettingsFile(), before);
}

// 998 alarms and 998 reminders are the most the file holds: every way of adding one more is
// refused before its editor opens, and once one is deleted there is room again.
TEST_F(AgendaMenusTest, AFullAgendaRefusesTheNextEntryAndNothingGoesPast998) {
    std::string text = "[GENERAL]\r\nFECHA=06-03-24\r\nENTRADA1=08:00\r\nNUM_ALARMAS=998\r\n[REPETICIONES]\r\n";
    std::string alarms = "[ALARMAS]\r\n";
    for (int n = 1; n <= 998; ++n) {
        char number[16];
        std::snprintf(number, sizeof number, "_%03d=", n);
        text += "REP" + std::string(number) + "20/03/2024 10:00 Llamar\r\n";
        alarms += "ALA" + std::string(number) + "20/03/2024 10:00 01 M 07 0 Factura\r\n";
    }
    folder.WriteFile("VendrakoTimer.ini", text + alarms);
    app.reset();
    ASSERT_EQ(Start(), Outcome::Continue);
    app->SetScanHook([this] { ++scans; });
    dialogs.Forget();
    const std::string before = SettingsFile();
    view.edit_alarm = [](AlarmForm& form) {
        form = AlarmForm{"21/03/2024", "10:00", 0, "Otra", false};
        return EditorAction::Save;
    };
    view.edit_repetition = [](RepetitionForm& form) {
        form = RepetitionForm{"21/03/2024", "10:00", "Otra", false};
        return EditorAction::Save;
    };
    app->NewAlarm("");
    app->NewRepetition("");
    for (const auto kind : {DayMenuChoice::Kind::AddAlarm, DayMenuChoice::Kind::AddRepetition}) {
        view.day_menu_choice = DayMenuChoice{kind, 0};
        app->ClickDay(20);
    }
    const std::string alarms_full = "La agenda está llena: caben 998 alarmas. Borra alguna antes de añadir otra.";
    const std::string reminders_full =
        "La agenda está llena: caben 998 repeticiones. Borra alguna antes de añadir otra.";
    EXPECT_EQ(dialogs.Texts(), (std::vector<std::string>{alarms_full, reminders_full, alarms_full, reminders_full}));
    EXPECT_TRUE(view.alarm_forms.empty());
    EXPECT_TRUE(view.repetition_forms.empty());
    EXPECT_TRUE(SettingsFile() == before) << "nothing saved";
    EXPECT_EQ(scans, 0);

    // One deleted makes room for one.
    const auto edit_alarm = view.edit_alarm;
    view.edit_alarm = [](AlarmForm&) { return EditorAction::Delete; };
    app->OpenDayEntry("ALA", 1);
    view.edit_alarm = edit_alarm;
    app->NewAlarm("");
    app->NewAlarm("");
    EXPECT_EQ(view.alarm_forms.size(), 2u);
    EXPECT_EQ(dialogs.Texts().back(), alarms_full);
    EXPECT_EQ(Alarms().back(), "21/03/2024 10:00 00 D 14 0 Otra");
    EXPECT_NE(SettingsFile().find("NUM_ALARMAS=998\r\n"), std::string::npos);
    EXPECT_NE(SettingsFile().find("ALA_998=21/03/2024 10:00 00 D 14 0 Otra\r\n"), std::string::npos);
    app.reset();
    EXPECT_EQ(Start(), Outcome::Continue) << "the file reads back whole";
    EXPECT_EQ(Alarms().size(), 998u);
}

// "Importar de iCalendar…" adds only on "Aceptar", after the list of what was simplified, and
// then follows up as after any new alarm; "Exportar a iCalendar…" writes the agenda back out.
TEST_F(AgendaMenusTest, TheICalendarItemsImportOnAcceptAndExport) {
    folder.WriteFile("cal.ics",
                     "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:1\r\nDTSTART:20240311T093000\r\n"
                     "RRULE:FREQ=WEEKLY\r\nSUMMARY:Equipo\r\nEND:VEVENT\r\nBEGIN:VEVENT\r\nUID:2\r\n"
                     "DTSTART:20240301T070000\r\nRRULE:FREQ=DAILY\r\nSUMMARY:Pastilla\r\nEND:VEVENT\r\n"
                     "END:VCALENDAR\r\n");
    view.ics_file = folder.Path("cal.ics");
    dialogs.QueueAnswer(MsgAnswer::Cancel);
    app->ImportIcs();
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Texts()[0],
              "Se añadirán 2 alarmas.\r\n\r\nSimplificadas:\r\n07/03/2024 07:00 Pastilla: se repite de una forma "
              "que el programa no tiene; se añade solo su próxima fecha.");
    EXPECT_EQ(dialogs.Shown()[0].buttons, MsgButtons::OkCancel);
    EXPECT_EQ(Alarms().size(), 1u) << "Cancelar adds nothing";

    dialogs.QueueAnswer(MsgAnswer::Ok);
    app->ImportIcs();
    EXPECT_EQ(Alarms(),
              (std::vector<std::string>{"07/03/2024 07:00 00 D 14 0 Pastilla", "11/03/2024 09:30 07 D 00 0 Equipo",
                                        "20/03/2024 10:00 01 M 07 0 Factura"}));
    EXPECT_NE(SettingsFile().find("ALA_002=11/03/2024 09:30 07 D 00 0 Equipo\r\n"), std::string::npos);
    EXPECT_NE(folder.ReadFile("LOG/TIMER.LOG").find("NEW> 11/03/2024 09:30 07 D 00 0 Equipo\r\n"), std::string::npos);
    EXPECT_EQ(scans, 1);

    dialogs.Forget();
    app->ImportIcs();
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"No hay nada que añadir a la agenda.\r\n\r\nYa estaban en la "
                                                        "agenda: 2."});

    view.ics_file = folder.Path("agenda.ics");
    dialogs.Forget();
    app->ExportIcs();
    EXPECT_EQ(dialogs.Texts(),
              std::vector<std::string>{"Exportados a " + folder.Path("agenda.ics") + ": 3 alarmas y 1 recordatorio."});
    EXPECT_NE(folder.ReadFile("agenda.ics").find("SUMMARY:Equipo\r\nRRULE:FREQ=WEEKLY\r\n"), std::string::npos);
    EXPECT_EQ(view.ics_choosers, (std::vector<bool>{false, false, false, true}));

    view.ics_file = folder.Path("no-existe.ics");
    dialogs.Forget();
    app->ImportIcs();
    EXPECT_EQ(dialogs.Texts(),
              std::vector<std::string>{"No se ha podido leer " + folder.Path("no-existe.ics") + " (no existe)."});
}

}  // namespace
}  // namespace vt
