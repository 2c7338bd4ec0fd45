#include "extras/help_texts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "agenda/alarm_editor.h"

namespace vt {
namespace {

// One paragraph a line: every break is "\r\n", none is doubled or left at either end, and no
// line holds a stray "\r" or "\n" of its own or starts or ends with a blank.
TEST(HelpText, IsParagraphsJoinedByCrLf) {
    for (const char* topic : {"ALA", "REP"}) {
        const std::string text = TextoAyuda(topic);
        int lines = 0;
        for (size_t start = 0, end = 0; end != std::string::npos; start = end + 2, ++lines) {
            end = text.find("\r\n", start);
            const std::string line = text.substr(start, end == std::string::npos ? end : end - start);
            ASSERT_FALSE(line.empty()) << topic << " line " << lines;
            EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
            EXPECT_NE(line.front(), ' ') << line;
            EXPECT_NE(line.back(), ' ') << line;
        }
        EXPECT_GT(lines, 3) << topic;
    }
}

}  // namespace
}  // namespace vt
