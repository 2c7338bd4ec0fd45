#include "calendar/proximity_report.h"

#include <gtest/gtest.h>

#include <string>

#include "calendar_entries.h"

namespace vt {
namespace {

using test::AlarmOn;
using test::Entries;

// Monday 11 March 2024.
const Date kToday = MakeDate(11, 3, 2024);

std::string Report(const EntryList& alarms) {
    return ProximityReport(alarms, kToday);
}

// One alarm, some days from today, with its notice days: where it lands, if anywhere.
struct OneAlarm {
    const char* what;
    int days_ahead;
    int notice_days;
    const char* expected;  // nullptr: left out
};

class ProximityOneAlarm : public ::testing::TestWithParam<OneAlarm> {};

TEST_P(ProximityOneAlarm, LandsInItsGroup) {
    const OneAlarm& c = GetParam();
    const std::string report = Report(Entries({AlarmOn(AddDays(kToday, c.days_ahead), "T", c.notice_days)}));
    EXPECT_EQ(report, c.expected ? c.expected : kEmptyProximityReport) << c.what;
}

INSTANTIATE_TEST_SUITE_P(
    Groups, ProximityOneAlarm,
    ::testing::Values(OneAlarm{"today, no notice", 0, 0, "HOY:\r\n- T\r\n"},
                      OneAlarm{"tomorrow, one day's notice", 1, 1, "MAÑANA:\r\n- T\r\n"},
                      OneAlarm{"tomorrow, notice not reached", 1, 0, nullptr},
                      OneAlarm{"the day after", 2, 2, "Pasado mañana:\r\n- T\r\n"},
                      OneAlarm{"the day after, one day short of its notice", 2, 1, nullptr},
                      OneAlarm{"three days on", 3, 14, "Antes de una semana:\r\n- Jueves 14 : T\r\n"},
                      OneAlarm{"six days on", 6, 7, "Antes de una semana:\r\n- Domingo 17 : T\r\n"},
                      OneAlarm{"seven days on, seven days' notice", 7, 7, "Antes de 15 días:\r\n- Lunes 18 : T\r\n"},
                      OneAlarm{"seven days on, six days' notice", 7, 6, nullptr},
                      OneAlarm{"thirteen days on", 13, 14, "Antes de 15 días:\r\n- Domingo 24 : T\r\n"},
                      OneAlarm{"fourteen days on", 14, 14, nullptr},
                      OneAlarm{"twenty days on, thirty days' notice", 20, 30, nullptr},
                      OneAlarm{"past, in the week group, day without a leading zero", -5, 0,
                               "Antes de una semana:\r\n- Miércoles 6 : T\r\n"},
                      OneAlarm{"a month past", -30, 14, "Antes de una semana:\r\n- Sábado 10 : T\r\n"},
                      OneAlarm{"ninety-nine days' notice", 10, 99, "Antes de 15 días:\r\n- Jueves 21 : T\r\n"}));

TEST(ProximityReport, TheWorkedExampleByteForByte) {
    const EntryList alarms =
        Entries({AlarmOn(kToday, "Llamar a Ana", 0), AlarmOn(MakeDate(15, 3, 2024), "Entregar informe")});
    EXPECT_EQ(Report(alarms),
              "HOY:\r\n- Llamar a Ana\r\n\r\nAntes de una semana:\r\n- Viernes 15 : Entregar informe\r\n");
}

TEST(ProximityReport, AllGroupsInDateOrder) {
    const EntryList alarms =
        Entries({AlarmOn(kToday, "a"), AlarmOn(AddDays(kToday, 1), "b"), AlarmOn(AddDays(kToday, 2), "c"),
                 AlarmOn(AddDays(kToday, 4), "d"), AlarmOn(AddDays(kToday, 5), "e"), AlarmOn(AddDays(kToday, 9), "f")});
    EXPECT_EQ(Report(alarms),
              "HOY:\r\n- a\r\n\r\nMAÑANA:\r\n- b\r\n\r\nPasado mañana:\r\n- c\r\n"
              "\r\nAntes de una semana:\r\n- Viernes 15 : d\r\n- Sábado 16 : e\r\n"
              "\r\nAntes de 15 días:\r\n- Miércoles 20 : f\r\n");
}

TEST(ProximityReport, GroupsFollowTheListOrderWhenItIsNotInDateOrder) {
    const EntryList alarms = Entries(
        {AlarmOn(AddDays(kToday, 4), "semana 1"), AlarmOn(kToday, "hoy"), AlarmOn(AddDays(kToday, 5), "semana 2")});
    // The second week alarm follows the today line: no header is written twice.
    EXPECT_EQ(Report(alarms),
              "Antes de una semana:\r\n- Viernes 15 : semana 1\r\n\r\nHOY:\r\n- hoy\r\n- Sábado 16 : semana 2\r\n");
}

TEST(ProximityReport, TextsDropTheStartDateAndCountYearsForTheAlarmsYear) {
    const Date new_years_eve = MakeDate(31, 12, 2024);
    const EntryList alarms =
        Entries({AlarmOn(MakeDate(2, 1, 2025), "Boda (1998) <010124>"), AlarmOn(new_years_eve, "Curso (2000)")});
    // The anniversary counts up to the alarm's own year, not today's.
    EXPECT_EQ(ProximityReport(alarms, new_years_eve), "Pasado mañana:\r\n- Boda (27)\r\n\r\nHOY:\r\n- Curso (24)\r\n");
}

TEST(ProximityReport, CalendarMarkAndPriorityDoNotChangeTheText) {
    // Priority and the "-" calendar mark concern the calendar only; the report lists the text as stored.
    const EntryList alarms = Entries({AlarmOn(kToday, "-Oculta", 0, "1")});
    EXPECT_EQ(Report(alarms), "HOY:\r\n- -Oculta\r\n");
}

TEST(ProximityReport, AlarmsThatDoNotReadAreLeftOut) {
    const EntryList alarms =
        Entries({"31/02/2024 09:00 00 D 14 0 fecha imposible", "11/03/2024 09:00 00 D 7x 0 aviso",
                 "11/03/2024 09:00 00 D  7 0 aviso con blanco", "", "basura", AlarmOn(kToday, "buena")});
    EXPECT_EQ(Report(alarms), "HOY:\r\n- buena\r\n");
}

TEST(ProximityReport, EmptyWhenNothingIsNear) {
    EXPECT_EQ(Report(EntryList{}), "(Informe de proximidad vacío)");
    EXPECT_EQ(Report(Entries({AlarmOn(AddDays(kToday, 30), "lejos", 14), AlarmOn(AddDays(kToday, 3), "pronto", 0)})),
              "(Informe de proximidad vacío)");
}

}  // namespace
}  // namespace vt

namespace vt {
namespace {

TEST(ProximityReportStartDate, AnAlarmWhoseStartDateIsStillToComeIsLeftOut) {
    const Date today = MakeDate(11, 3, 2024);
    const EntryList alarms =
        test::Entries({test::AlarmOn(today, "Antes <150324>"), test::AlarmOn(today, "Ya <110324>")});
    EXPECT_EQ(ProximityReport(alarms, today), "HOY:\r\n- Ya\r\n");
}

}  // namespace
}  // namespace vt
