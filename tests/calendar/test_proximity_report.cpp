#include "calendar/proximity_report.h"

#include <gtest/gtest.h>

#include <string>

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
struct OneAlarm {
    const char* what;
    int days_ahead;
    int notice_days;
    const char* expected;  // nullptr: left out
};

class ProximityOneAlarm : public ::testing::TestWithParam<OneAlarm> {};

TEST_P(ProximityOneAlarm, LandsInItsGroup) {
    const OneAlarm& c = GetParam();
    const std::string report = Report(ListOf({AlarmOn(AddDays(kToday, c.days_ahead), "T", c.notice_days)}));
    EXPECT_EQ(report, c.expected ? c.expected : kEmptyProximityReport) << c.what;
}

INSTANTIATE_TEST_SUITE_P(Groups, ProximityOneAlarm,
                         ::testing::Values(OneAlarm{"tomorrow, notice not reached", 1, 0, nullptr},
                                           OneAlarm{"seven days on, seven days' notice", 7, 7,
                                                    "Antes de 15 días:\r\n- Lunes 18 : T\r\n"},
                                           OneAlarm{"seven days on, six days' notice", 7, 6, nullptr},
                                           OneAlarm{"fourteen days on", 14, 14, nullptr},
                                           OneAlarm{"past, in the week group, day without a leading zero", -5, 0,
                                                    "Antes de una semana:\r\n- Miércoles 6 : T\r\n"}));

TEST(ProximityReport, TheWorkedExampleByteForByte) {
    const EntryList alarms =
        ListOf({AlarmOn(kToday, "Llamar a Ana", 0), AlarmOn(MakeDate(15, 3, 2024), "Entregar informe")});
    EXPECT_EQ(Report(alarms),
              "HOY:\r\n- Llamar a Ana\r\n\r\nAntes de una semana:\r\n- Viernes 15 : Entregar informe\r\n");
}

TEST(ProximityReport, AllGroupsInDateOrder) {
    const EntryList alarms =
        ListOf({AlarmOn(kToday, "a"), AlarmOn(AddDays(kToday, 1), "b"), AlarmOn(AddDays(kToday, 2), "c"),
                AlarmOn(AddDays(kToday, 4), "d"), AlarmOn(AddDays(kToday, 5), "e"), AlarmOn(AddDays(kToday, 9), "f")});
    EXPECT_EQ(Report(alarms),
              "HOY:\r\n- a\r\n\r\nMAÑANA:\r\n- b\r\n\r\nPasado mañana:\r\n- c\r\n"
              "\r\nAntes de una semana:\r\n- Viernes 15 : d\r\n- Sábado 16 : e\r\n"
              "\r\nAntes de 15 días:\r\n- Miércoles 20 : f\r\n");
}

TEST(ProximityReport, GroupsFollowTheListOrderWhenItIsNotInDateOrder) {
    const EntryList alarms = ListOf(
        {AlarmOn(AddDays(kToday, 4), "semana 1"), AlarmOn(kToday, "hoy"), AlarmOn(AddDays(kToday, 5), "semana 2")});
    // The second week alarm follows the today line: no header is written twice.
    EXPECT_EQ(Report(alarms),
              "Antes de una semana:\r\n- Viernes 15 : semana 1\r\n\r\nHOY:\r\n- hoy\r\n- Sábado 16 : semana 2\r\n");
}

TEST(ProximityReport, EmptyWhenNothingIsNear) {
    EXPECT_EQ(Report(ListOf({AlarmOn(AddDays(kToday, 30), "lejos", 14)})), "(Informe de proximidad vacío)");
}

}  // namespace
}  // namespace vt
