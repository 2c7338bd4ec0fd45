#include "calendar/month_names.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

struct MonthRow {
    int month;
    const char* spanish;
    const char* spanish_short;
    const char* basque;
    const char* basque_short;
};

class MonthNames : public ::testing::TestWithParam<MonthRow> {};

TEST_P(MonthNames, BothLanguagesFullAndShort) {
    const MonthRow& row = GetParam();
    const Date date = MakeDate(15, row.month, 2024);
    EXPECT_EQ(MonthName(date, false, "C"), row.spanish);
    EXPECT_EQ(MonthName(date, true, "C"), row.spanish_short);
    EXPECT_EQ(MonthName(date, false, "E"), row.basque);
    EXPECT_EQ(MonthName(date, true, "E"), row.basque_short);
    EXPECT_EQ(MonthName(row.month, true, "C"), row.spanish_short);
    EXPECT_EQ(MonthName(row.month, false, "E"), row.basque);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MonthNames,
    ::testing::Values(MonthRow{1, "ENERO", "ENE", "URTARRILA", "URT"}, MonthRow{2, "FEBRERO", "FEB", "OTSAILA", "OTS"},
                      MonthRow{3, "MARZO", "MAR", "MARTXOA", "MAR"}, MonthRow{4, "ABRIL", "ABR", "APIRILA", "API"},
                      MonthRow{5, "MAYO", "MAY", "MAIATZA", "MAI"}, MonthRow{6, "JUNIO", "JUN", "EKAINA", "EKA"},
                      MonthRow{7, "JULIO", "JUL", "UZTAILA", "UZT"}, MonthRow{8, "AGOSTO", "AGO", "ABUZTUA", "ABU"},
                      MonthRow{9, "SEPTIEMBRE", "SEP", "IRAILA", "IRA"}, MonthRow{10, "OCTUBRE", "OCT", "URRIA", "URR"},
                      MonthRow{11, "NOVIEMBRE", "NOV", "AZAROA", "AZA"},
                      MonthRow{12, "DICIEMBRE", "DIC", "ABENDUA", "ABE"}));

TEST(MonthNameLanguage, OnlyACapitalEIsBasque) {
    const Date may = MakeDate(1, 5, 2024);
    EXPECT_EQ(MonthName(may, false, "E"), "MAIATZA");
    for (const char* other : {"C", "", "e", "EU", "S"}) {
        EXPECT_EQ(MonthName(may, false, other), "MAYO") << "language \"" << other << "\"";
    }
}

TEST(MonthNameLanguage, NoNameOutsideTheTwelveMonths) {
    EXPECT_EQ(MonthName(0, false, "C"), "");
    EXPECT_EQ(MonthName(13, true, "E"), "");
    EXPECT_EQ(MonthName(-1, true, "C"), "");
}

}  // namespace
}  // namespace vt
