// The task summary: its events, the break rule, the totals and their 16-bit limit.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake_clock.h"
#include "tasks/task_summary.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

const std::string kBlanks(50, ' ');

DateTime At(int hour, int minute, int second = 0) {
    return MakeDateTime(MakeDate(2, 1, 2024), hour, minute, second);
}

// The part after "TOTALES: ", without the widening blanks.
std::string TotalsOf(const std::string& text) {
    const std::string head = "TOTALES: \r\n";
    const auto at = text.find(head);
    if (at == std::string::npos || text.size() < kBlanks.size()) {
        return "<no totals>";
    }
    return text.substr(at + head.size(), text.size() - kBlanks.size() - at - head.size());
}

TEST(TaskSummary, GivesTheWholeTextOfTheExampleDay) {
    test::TempAppFolder folder;
    folder.WriteFile("LOG/TAREAS.LOG",
                     "01/01/2024 09:00:00 Ayer\r\n02/01/2024 08:10:00 Correo\r\n02/01/2024 16:00:00 Informe\r\n");
    test::FakeClock clock(At(17, 30));

    const MessageBox box = ResumenTareas(folder.Paths(), clock, {"08:00", "14:00", "15:00"});

    EXPECT_EQ(box.text,
              "FICHAJES:\r\n08:00:00 [entrada]\r\n08:10:00 Correo\r\n14:00:00 [break]\r\n15:00:00 Correo\r\n"
              "16:00:00 Informe\r\n17:30:00 [final]\r\n\r\nTOTALES: \r\n[entrada] - 00:10:00\r\n"
              "Correo - 06:50:00\r\n[break] - 01:00:00\r\nInforme - 01:30:00\r\n" +
                  kBlanks);
    EXPECT_EQ(box.icon, MsgIcon::Information);
    EXPECT_EQ(box.buttons, MsgButtons::Ok);
    EXPECT_TRUE(box.title.empty());
}

struct SummaryCase {
    const char* name;
    ClockInTexts clock_ins;
    std::vector<std::string> lines;
    DateTime now;
    const char* totals;
    bool has_break;
};

class SummaryTotals : public testing::TestWithParam<SummaryCase> {};

TEST_P(SummaryTotals, AddUpAsTheDayWent) {
    const SummaryCase& c = GetParam();
    const MessageBox box = ResumenTareas(c.lines, c.clock_ins, c.now);
    EXPECT_EQ(box.icon, MsgIcon::Information);
    EXPECT_EQ(TotalsOf(box.text), c.totals);
    EXPECT_EQ(box.text.find("[break]") != std::string::npos, c.has_break);
    EXPECT_EQ(box.text.substr(box.text.size() - kBlanks.size()), kBlanks);
}

INSTANTIATE_TEST_SUITE_P(
    Days, SummaryTotals,
    testing::Values(
        SummaryCase{"TaskBeforeTheEntryLeavesTheEntryAtZero",
                    {"09:00", "", ""},
                    {"02/01/2024 08:30:00 Correo"},
                    At(10, 0),
                    "[entrada] - 00:00:00\r\nCorreo - 01:30:00\r\n",
                    false},
        SummaryCase{"SameNameTwiceIsSummedWhereItFirstAppears",
                    {"08:00", "", ""},
                    {"02/01/2024 08:00:00 A", "02/01/2024 09:00:00 B", "02/01/2024 10:00:00 A"},
                    At(11, 0),
                    "[entrada] - 00:00:00\r\nA - 02:00:00\r\nB - 01:00:00\r\n",
                    false},
        SummaryCase{"NamesDifferingInCaseStayApart",
                    {"08:00", "", ""},
                    {"02/01/2024 08:00:00 correo", "02/01/2024 09:00:00 Correo"},
                    At(10, 0),
                    "[entrada] - 00:00:00\r\ncorreo - 01:00:00\r\nCorreo - 01:00:00\r\n",
                    false},
        SummaryCase{"NoBreakWithoutAFirstExit",
                    {"08:00", "", "15:00"},
                    {"02/01/2024 08:30:00 A", "02/01/2024 16:00:00 B"},
                    At(17, 0),
                    "[entrada] - 00:30:00\r\nA - 07:30:00\r\nB - 01:00:00\r\n",
                    false},
        SummaryCase{"BreakLastsUntilTheNextTaskWithoutASecondEntry",
                    {"08:00", "14:00", ""},
                    {"02/01/2024 08:30:00 A", "02/01/2024 16:00:00 B"},
                    At(17, 0),
                    "[entrada] - 00:30:00\r\nA - 05:30:00\r\n[break] - 02:00:00\r\nB - 01:00:00\r\n",
                    true},
        SummaryCase{"WorkResumesOnTheTaskOpenBeforeTheBreakOnce",
                    {"08:00", "14:00", "15:00"},
                    {"02/01/2024 15:30:00 A", "02/01/2024 16:00:00 B"},
                    At(17, 0),
                    "[entrada] - 06:30:00\r\n[break] - 01:00:00\r\nA - 00:30:00\r\nB - 01:00:00\r\n",
                    true},
        SummaryCase{"JustUnderTenHoursFits", {"08:00", "", ""}, {}, At(17, 59, 59), "[entrada] - 09:59:59\r\n", false}),
    [](const testing::TestParamInfo<SummaryCase>& row) { return std::string(row.param.name); });

struct RefusedCase {
    const char* name;
    ClockInTexts clock_ins;
    std::vector<std::string> lines;
    DateTime now;
    const char* must_contain;
};

class RefusedSummary : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedSummary, ShowsOneExclamationAndNoSummary) {
    const RefusedCase& c = GetParam();
    const MessageBox box = ResumenTareas(c.lines, c.clock_ins, c.now);
    EXPECT_EQ(box.icon, MsgIcon::Exclamation);
    EXPECT_EQ(box.buttons, MsgButtons::Ok);
    EXPECT_NE(box.text.find(c.must_contain), std::string::npos) << box.text;
    EXPECT_EQ(box.text.find("TOTALES"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, RefusedSummary,
    testing::Values(RefusedCase{"EntryBeingTyped", {"8:00", "", ""}, {}, At(10, 0), kEntryTimeIncomplete.data()},
                    RefusedCase{
                        "TenHoursInOneSpan", {"08:00", "", ""}, {}, At(18, 0), "\"[entrada]\" suma 10 horas o más"},
                    RefusedCase{"TenHoursSummedFromTwoSpans",
                                {"07:00", "", ""},
                                {"02/01/2024 07:00:00 A", "02/01/2024 13:00:00 B", "02/01/2024 14:00:00 A"},
                                At(18, 0),
                                "\"A\" suma 10 horas o más"}),
    [](const testing::TestParamInfo<RefusedCase>& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace vt
