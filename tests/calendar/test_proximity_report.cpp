#include "calendar/proximity_report.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "calendar_entries.h"

namespace vt {
namespace {

using test::AlarmOn;
using test::ListOf;

// Monday 11 March 2024.
const Date kToday = MakeDate(11, 3, 2024);

std::string Report(const EntryList& alarms) {
    return ProximityReport(alarms, kToday);
}

// One alarm, some days from today, with its notice days: where it lands, if anywhere.
TEST(ProximityReport, OneAlarmLandsInItsGroup) {
    const char* const empty = "(Informe de proximidad vacío)";
    for (const auto& [what, days_ahead, notice_days, expected] :
         std::vector<std::tuple<const char*, int, int, const char*>>{
             {"today, no notice", 0, 0, "HOY:\r\n- T\r\n"},
             {"tomorrow, one day's notice", 1, 1, "MAÑANA:\r\n- T\r\n"},
             {"tomorrow, notice not reached", 1, 0, empty},
             {"the day after, one day short of its notice", 2, 1, empty},
             {"six days on", 6, 7, "Antes de una semana:\r\n- Domingo 17 : T\r\n"},
             {"thirteen days on", 13, 14, "Antes de 15 días:\r\n- Domingo 24 : T\r\n"},
             {"a month past", -30, 14, "Antes de una semana:\r\n- Sábado 10 : T\r\n"},
             {"seven days on, seven days' notice", 7, 7, "Antes de 15 días:\r\n- Lunes 18 : T\r\n"},
             {"seven days on, six days' notice", 7, 6, empty},
             {"fourteen days on", 14, 14, empty},
             {"thirty days on", 30, 14, empty},
             {"past, in the week group, day without a leading zero", -5, 0,
              "Antes de una semana:\r\n- Miércoles 6 : T\r\n"},
         }) {
        EXPECT_EQ(Report(ListOf({AlarmOn(AddDays(kToday, days_ahead), "T", notice_days)})), expected) << what;
    }
}

// Today's alarm is there even without notice days; a blank line comes between groups.
TEST(ProximityReport, AllGroupsInDateOrder) {
    const EntryList alarms =
        ListOf({AlarmOn(kToday, "a", 0), AlarmOn(AddDays(kToday, 1), "b"), AlarmOn(AddDays(kToday, 2), "c"),
                AlarmOn(AddDays(kToday, 4), "d"), AlarmOn(AddDays(kToday, 5), "e"), AlarmOn(AddDays(kToday, 9), "f")});
    EXPECT_EQ(Report(alarms),
              "HOY:\r\n- a\r\n\r\nMAÑANA:\r\n- b\r\n\r\nPasado mañana:\r\n- c\r\n"
              "\r\nAntes de una semana:\r\n- Viernes 15 : d\r\n- Sábado 16 : e\r\n"
              "\r\nAntes de 15 días:\r\n- Miércoles 20 : f\r\n");
}

TEST(ProximityReport, TextsDropTheStartDateAndCountYearsForTheAlarmsYear) {
    const Date new_years_eve = MakeDate(31, 12, 2024);
    // The "-" calendar mark and the priority concern the calendar only: the text is listed as stored.
    const EntryList alarms = ListOf(
        {AlarmOn(MakeDate(2, 1, 2025), "Boda (1998) <010124>"), AlarmOn(new_years_eve, "-Curso (2000)", 0, "1")});
    EXPECT_EQ(ProximityReport(alarms, new_years_eve), "Pasado mañana:\r\n- Boda (27)\r\n\r\nHOY:\r\n- -Curso (24)\r\n");
}

TEST(ProximityReport, LeavesOutAlarmsThatDoNotReadOrHaveNotStarted) {
    const EntryList alarms = ListOf({"31/02/2024 09:00 00 D 14 0 fecha imposible", "11/03/2024 09:00 00 D 7x 0 aviso",
                                     "11/03/2024 09:00 00 D  7 0 aviso con blanco", "", "basura",
                                     AlarmOn(kToday, "Antes <150324>"), AlarmOn(kToday, "Ya <110324>")});
    EXPECT_EQ(Report(alarms), "HOY:\r\n- Ya\r\n");
}

TEST(ProximityReport, GroupsFollowTheListOrderWhenItIsNotInDateOrder) {
    const EntryList alarms = ListOf(
        {AlarmOn(AddDays(kToday, 4), "semana 1"), AlarmOn(kToday, "hoy"), AlarmOn(AddDays(kToday, 5), "semana 2")});
    // The second week alarm follows the today line: no header is written twice.
    EXPECT_EQ(Report(alarms),
              "Antes de una semana:\r\n- Viernes 15 : semana 1\r\n\r\nHOY:\r\n- hoy\r\n- Sábado 16 : semana 2\r\n");
}

}  // namespace
}  // namespace vt
