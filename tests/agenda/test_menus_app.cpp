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
    EXPECT_GT(view.repetition_menu_changes, 0) << "the repetitions menu lists the new reminder";
    EXPECT_NE(SettingsFile().find("REP_001=06/03/2024 17:30 Recoger el coche\r\n"), std::string::npos);
    EXPECT_EQ(folder.ReadFile("LOG/TIMER.LOG"),
              "[06/03/2024 08:12:00] NEW> 06/03/2024 17:30 00 D 14 0 Recoger el coche\r\n"
              "[06/03/2024 08:12:00] REP> 06/03/2024 17:30 00 D 14 0 Recoger el coche\r\n");
    EXPECT_EQ(scans, 1);
    EXPECT_TRUE(app->State().ClockInBoxesActive);
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
