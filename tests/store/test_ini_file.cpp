#include "store/ini_file.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::string_literals;

// A megabyte of "x" with one other character at 1000, so that decoding runs over the value too.
std::string Mega(std::string_view mark) {
    std::string text(1 << 20, 'x');
    return text.replace(1000, 1, mark);
}

// A hand-edited file, one key asked for, and what the reader must answer: the value is read as
// decided, and again the same after the file is written back. Without the mark the bytes are
// Windows-1252 even when they happen to look like UTF-8.
TEST(HandEditedFile, ReadsAsDecidedBeforeAndAfterBeingWrittenBack) {
    // clang-format off
    const std::vector<std::tuple<const char*, std::string, const char*, const char*, bool, std::string>> cases{
        {"LfOnly", "[A]\nx=1\ny=2\n", "A", "y", true, "2"},
        {"CrOnly", "[A]\rx=1\ry=2\r", "A", "y", true, "2"},
        {"NoFinalLineEnd", "[A]\r\nx=last", "A", "x", true, "last"},
        {"Utf8Mark", "\xEF\xBB\xBF[A]\r\nx=Reuni\xC3\xB3n\r\n", "A", "x", true, "Reuni\u00F3n"},
        {"HighBytesAre1252", "[A]\nx=a\xF1o \x80\x81\xFF", "A", "x", true, "a\u00F1o \u20AC\xC2\x81\u00FF"},
        {"Utf8WithoutMark", "[A]\nx=\xC3\xB3", "A", "x", true, "\u00C3\u00B3"},
        {"Utf16LeMark", "\xFF\xFE[\0A\0]\0\n\0x\0=\0\xF3\0\x3D\xD8\x00\xDE"s, "A", "x", true, "\u00F3\U0001F600"},
        {"Utf16BeMark", "\xFE\xFF\0[\0A\0]\0\n\0x\0=\0\xF3\xD8\x3D\xDE\x00"s, "A", "x", true, "\u00F3\U0001F600"},
        {"Utf16LoneSurrogateOddByte", "\xFF\xFE[\0A\0]\0\n\0x\0=\0\x00\xD8" "a\0" "b"s, "A", "x", true, "\uFFFDa\uFFFD"},
        {"FirstDuplicateKeyWins", "[A]\nx=1\nX=2\n", "A", "x", true, "1"},
        {"FirstDuplicateSectionWins", "[A]\nx=1\n[B]\n[a]\nx=2\ny=3\n", "A", "x", true, "1"},
        {"SecondSectionNeverFound", "[A]\nx=1\n[B]\n[a]\nx=2\ny=3\n", "A", "y", false, ""},
        {"HeaderWithoutBracket", "[GEN ERAL\nx=1", "GEN ERAL", "x", true, "1"},
        {"HeaderWithTrailingText", "  [ A ] ; note\nx=1", "A", "x", true, "1"},
        {"TextBeforeTheFirstSection", "x=1\n[A]\ny=2", "A", "x", false, ""},
        {"BlanksTrimmed", "[A]\n \t x \t= \t v w \t\n", "A", "x", true, "v w"},
        {"QuotesDropped", "[A]\nx= \"  v  \" ", "A", "x", true, "  v  "},
        {"OnlyOnePairDropped", "[A]\nx='\"v\"'", "A", "x", true, "\"v\""},
        {"EmptyValueIsMissing", "[A]\nx=\"\"\n", "A", "x", false, ""},
        {"ValueEndsAtNul", "[A]\nx=ab\0cd\ny=2"s, "A", "x", true, "ab"},
        {"NulDoesNotHideTheNextLine", "[A]\nx=ab\0cd\ny=2"s, "A", "y", true, "2"},
        {"OneMegabyteValue", "[A]\r\nbig=" + Mega("\xE9") + "\r\n", "A", "big", true, Mega("\u00E9")}};
    // clang-format on
    for (const auto& [name, bytes, section, key, found, expected] : cases) {
        SCOPED_TRACE(name);
        const std::string once = IniDocument::Parse(bytes).Serialize();
        for (const IniDocument& doc : {IniDocument::Parse(bytes), IniDocument::Parse(once)}) {
            std::string value = "left over";
            EXPECT_EQ(doc.Read(section, key, value), found);
            EXPECT_EQ(value, expected);
        }
        EXPECT_EQ(IniDocument::Parse(once).Serialize(), once);
    }
}

}  // namespace
}  // namespace vt
