// The task summary: its events, the break rule, the totals and their 16-bit limit.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "fake_clock.h"
#include "tasks/task_summary.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using ::testing::HasSubstr;

const std::string kBlanks(50, ' ');

DateTime At(int hour, int minute, int second = 0) {
    return MakeDateTime(MakeDate(2, 1, 2024), hour, minute, second);
}

struct SummaryCase {
    const char* name;
    ClockInTexts clock_ins;
    std::vector<std::string> lines;
    DateTime now;
    std::string expected;  // the totals; for a refused summary, a part of its message
    bool refused;
};

// A day whose log lines are today's "hh:mm:ss name" items.
SummaryCase Day(const char* name, ClockInTexts clock_ins, std::initializer_list<std::string> items, DateTime now,
                std::string_view expected, bool refused = false) {
    SummaryCase c{name, std::move(clock_ins), {}, now, std::string(expected), refused};
    for (const std::string& item : items) {
        c.lines.push_back("02/01/2024 " + item);
    }
    return c;
}

// A summary is the information box with the totals after "TOTALES: " and the widening blanks;
// a refused one is one exclamation and no totals.
TEST(Summary, AddsUpAsTheDayWentOrIsRefused) {
    // clang-format off
    const std::vector<SummaryCase> cases{
        Day("TaskBeforeTheEntryLeavesTheEntryAtZero", {"09:00", "", ""}, {"08:30:00 Correo"}, At(10, 0),
            "[entrada] - 00:00:00\r\nCorreo - 01:30:00\r\n"),
        Day("SameNameTwiceIsSummedWhereItFirstAppears", {"08:00", "", ""}, {"08:00:00 A", "09:00:00 B", "10:00:00 A"},
            At(11, 0), "[entrada] - 00:00:00\r\nA - 02:00:00\r\nB - 01:00:00\r\n"),
        Day("NamesDifferingInCaseStayApart", {"08:00", "", ""}, {"08:00:00 correo", "09:00:00 Correo"}, At(10, 0),
            "[entrada] - 00:00:00\r\ncorreo - 01:00:00\r\nCorreo - 01:00:00\r\n"),
        Day("NoBreakWithoutAFirstExit", {"08:00", "", "15:00"}, {"08:30:00 A", "16:00:00 B"}, At(17, 0),
            "[entrada] - 00:30:00\r\nA - 07:30:00\r\nB - 01:00:00\r\n"),
        Day("BreakLastsUntilTheNextTaskWithoutASecondEntry", {"08:00", "14:00", ""}, {"08:30:00 A", "16:00:00 B"},
            At(17, 0), "[entrada] - 00:30:00\r\nA - 05:30:00\r\n[break] - 02:00:00\r\nB - 01:00:00\r\n"),
        // Compared as text: a task marked at the very minute of the exit is not after it.
        Day("TaskExactlyAtTheExitIsNotAfterIt", {"08:00", "14:00", "15:00"}, {"08:30:00 A", "14:00:00 B"}, At(16, 0),
            "[entrada] - 00:30:00\r\nA - 05:30:00\r\nB - 02:00:00\r\n"),
        Day("WorkResumesOnTheTaskOpenBeforeTheBreakOnce", {"08:00", "14:00", "15:00"}, {"15:30:00 A", "16:00:00 B"},
            At(17, 0), "[entrada] - 06:30:00\r\n[break] - 01:00:00\r\nA - 00:30:00\r\nB - 01:00:00\r\n"),
        Day("NoTaskAfterTheExitCountsTheBreakToTheRunningTask", {"08:00", "14:00", "15:00"}, {"08:30:00 A"}, At(17, 0),
            "[entrada] - 00:30:00\r\nA - 08:30:00\r\n"),
        // From 23:00 to 00:30 the end comes before the start: the span counts nothing.
        {"ASpanAcrossMidnightCountsNothing", {"23:00", "", ""}, {}, MakeDateTime(MakeDate(3, 1, 2024), 0, 30), "[entrada] - 00:00:00\r\n", false},
        Day("JustUnderTenHoursFits", {"08:00", "", ""}, {}, At(17, 59, 59), "[entrada] - 09:59:59\r\n"),
        Day("EntryEmpty", {"", "", ""}, {}, At(10, 0), kEntryTimeIncomplete, true),
        Day("EntryBeingTyped", {"8:00", "", ""}, {}, At(10, 0), kEntryTimeIncomplete, true),
        Day("TenHoursInOneSpan", {"08:00", "", ""}, {}, At(18, 0), "\"[entrada]\" suma 10 horas o más", true),
        Day("TenHoursSummedFromTwoSpans", {"07:00", "", ""}, {"07:00:00 A", "13:00:00 B", "14:00:00 A"}, At(18, 0),
            "\"A\" suma 10 horas o más", true)};
    // clang-format on
    for (const SummaryCase& c : cases) {
        SCOPED_TRACE(c.name);
        const MessageBox box = ResumenTareas(c.lines, c.clock_ins, c.now);
        EXPECT_EQ(box.buttons, MsgButtons::Ok);
        if (c.refused) {
            EXPECT_EQ(box.icon, MsgIcon::Exclamation);
            EXPECT_THAT(box.text, HasSubstr(c.expected));
            EXPECT_THAT(box.text, testing::Not(HasSubstr("TOTALES")));
            continue;
        }
        EXPECT_EQ(box.icon, MsgIcon::Information);
        const auto at = box.text.find("TOTALES: \r\n");
        ASSERT_NE(at, std::string::npos) << box.text;
        EXPECT_EQ(box.text.substr(at + 11), c.expected + kBlanks);
    }
}

}  // namespace
}  // namespace vt
