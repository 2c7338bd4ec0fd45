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
