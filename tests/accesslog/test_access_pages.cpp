#include "accesslog/access_pages.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace vt {
namespace {

std::size_t Count(const std::string& text, const std::string& what) {
    std::size_t n = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
        ++n;
    }
    return n;
}

// One link per day of the month, up to the month's last day.
TEST(AccessPage, TheHeadLinksEveryDayOfTheMonth) {
    for (const auto& [date, days] : {std::pair{MakeDate(15, 2, 2024), 29}, std::pair{MakeDate(30, 4, 2024), 30},
                                     std::pair{MakeDate(1, 3, 2024), 31}}) {
        const std::string head = EscribirCabeceraLog(date);
        EXPECT_EQ(Count(head, "<a href='#DIA"), static_cast<std::size_t>(days)) << days;
        EXPECT_NE(head.find("<a href='#DIA" + std::to_string(days) + "'>"), std::string::npos) << days;
    }
}

// February 2015 begins on a Sunday: every Sunday's link is followed by "- -", the rest by "|".
TEST(AccessPage, HeadOfAMonthByteForByte) {
    std::string expected =
        "<html><head><title>FEBRERO 2015</title></head>\r\n"
        "<body style='font-family: Arial; font-size: 14px' vlink='#0000FF' alink='#0000FF' link='#0000FF'>\r\n"
        "<p>\r\n<b>FEBRERO 2015</b>\r\n</p>\r\n<p>\r\n";
    for (int day = 1; day <= 28; ++day) {
        const std::string dd = (day < 10 ? "0" : "") + std::to_string(day);
        expected += "<a href='#DIA" + dd + "'>" + dd + "</a> " + (day % 7 == 1 ? "- -" : "|") + " \r\n";
    }
    expected += "</p>\r\n";
    EXPECT_EQ(EscribirCabeceraLog(MakeDate(20, 2, 2015)), expected);
}

}  // namespace
}  // namespace vt
