#include "store/ini_file.h"

#include <gtest/gtest.h>

#include <string>

#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::string_literals;

// A megabyte of "x" with one other character at 1000, so that decoding runs over the value too.
std::string Mega(std::string_view mark) {
    std::string text(1 << 20, 'x');
    return text.replace(1000, 1, mark);
}

// A hand-edited file, one key asked for, and what the reader must answer.
struct ReadCase {
    const char* name;
    std::string bytes;
    const char* section;
    const char* key;
    bool found;
    std::string value;
};

class HandEditedFile : public ::testing::TestWithParam<ReadCase> {};

// The value is read as decided, and again the same after the file is written back.
TEST_P(HandEditedFile, ReadsAsDecidedBeforeAndAfterBeingWrittenBack) {
    const ReadCase& c = GetParam();
    const std::string once = IniDocument::Parse(c.bytes).Serialize();
    for (const IniDocument& doc : {IniDocument::Parse(c.bytes), IniDocument::Parse(once)}) {
        std::string value = "left over";
        EXPECT_EQ(doc.Read(c.section, c.key, value), c.found);
        EXPECT_EQ(value, c.value);
    }
    EXPECT_EQ(IniDocument::Parse(once).Serialize(), once);
}

// Without the mark the bytes are Windows-1252 even when they happen to look like UTF-8.
INSTANTIATE_TEST_SUITE_P(
    Table, HandEditedFile,
    ::testing::Values(
        ReadCase{"LfOnly", "[A]\nx=1\ny=2\n", "A", "y", true, "2"},
        ReadCase{"CrOnly", "[A]\rx=1\ry=2\r", "A", "y", true, "2"},
        ReadCase{"NoFinalLineEnd", "[A]\r\nx=last", "A", "x", true, "last"},
        ReadCase{"Utf8Mark", "\xEF\xBB\xBF[A]\r\nx=Reuni\xC3\xB3n\r\n", "A", "x", true, "Reuni\u00F3n"},
        ReadCase{"HighBytesAre1252", "[A]\nx=a\xF1o \x80\x81\xFF", "A", "x", true, "a\u00F1o \u20AC\xC2\x81\u00FF"},
        ReadCase{"Utf8WithoutMark", "[A]\nx=\xC3\xB3", "A", "x", true, "\u00C3\u00B3"},
        ReadCase{"FirstDuplicateKeyWins", "[A]\nx=1\nX=2\n", "A", "x", true, "1"},
        ReadCase{"FirstDuplicateSectionWins", "[A]\nx=1\n[B]\n[a]\nx=2\ny=3\n", "A", "x", true, "1"},
        ReadCase{"SecondSectionNeverFound", "[A]\nx=1\n[B]\n[a]\nx=2\ny=3\n", "A", "y", false, ""},
        ReadCase{"HeaderWithoutBracket", "[GEN ERAL\nx=1", "GEN ERAL", "x", true, "1"},
        ReadCase{"HeaderWithTrailingText", "  [ A ] ; note\nx=1", "A", "x", true, "1"},
        ReadCase{"TextBeforeTheFirstSection", "x=1\n[A]\ny=2", "A", "x", false, ""},
        ReadCase{"BlanksTrimmed", "[A]\n \t x \t= \t v w \t\n", "A", "x", true, "v w"},
        ReadCase{"QuotesDropped", "[A]\nx= \"  v  \" ", "A", "x", true, "  v  "},
        ReadCase{"OnlyOnePairDropped", "[A]\nx='\"v\"'", "A", "x", true, "\"v\""},
        ReadCase{"EmptyValueIsMissing", "[A]\nx=\"\"\n", "A", "x", false, ""},
        ReadCase{"ValueEndsAtNul", "[A]\nx=ab\0cd\ny=2"s, "A", "x", true, "ab"},
        ReadCase{"NulDoesNotHideTheNextLine", "[A]\nx=ab\0cd\ny=2"s, "A", "y", true, "2"},
        ReadCase{"OneMegabyteValue", "[A]\r\nbig=" + Mega("\xE9") + "\r\n", "A", "big", true, Mega("\u00E9")}),
    [](const auto& row) { return std::string(row.param.name); });

struct WriteCase {
    std::string before;
    const char* section;
    const char* key;
    std::string value;
    std::string after;
};

class IniDocumentWrite : public ::testing::TestWithParam<WriteCase> {};

TEST_P(IniDocumentWrite, ChangesOnlyWhatItMustAndEndsEveryLineWithCrLf) {
    IniDocument doc = IniDocument::Parse(GetParam().before);
    doc.Write(GetParam().section, GetParam().key, GetParam().value);
    EXPECT_EQ(doc.Serialize(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Table, IniDocumentWrite,
    ::testing::Values(WriteCase{"[A]\r\nk=1\r\nK=2\r\n", "a", "K", "9", "[A]\r\nK=9\r\nK=2\r\n"},
                      WriteCase{"[A]\r\nk=1\r\n\r\n[B]\r\nx=1\r\n", "A", "n", "2",
                                "[A]\r\nk=1\r\nn=2\r\n\r\n[B]\r\nx=1\r\n"},
                      WriteCase{"[A]\nk=1", "C", "z", "3", "[A]\r\nk=1\r\n\r\n[C]\r\nz=3\r\n"},
                      WriteCase{"", "C", "z", "3", "[C]\r\nz=3\r\n"},
                      WriteCase{"loose\r\n[A]\r\n; note\r\nk=1\r\nwords\r\n", "A", "k", "x",
                                "loose\r\n[A]\r\n; note\r\nk=x\r\nwords\r\n"},
                      WriteCase{"[A]\nx=1\n[A]\ny=2\n", "A", "y", "3", "[A]\r\nx=1\r\ny=3\r\n[A]\r\ny=2\r\n"},
                      WriteCase{"\xEF\xBB\xBF[A]\n", "A", "x", "\u65E5\u00F1", "\xEF\xBB\xBF[A]\r\nx=\u65E5\u00F1\r\n"},
                      WriteCase{"[A]\n", "A", "x", "\u65E5\u00F1", "[A]\r\nx=?\xF1\r\n"}));

// A written value reads back as written, except line breaks and NUL, which would split or cut
// the line; the key after it is still there.
TEST(ValueRoundTrip, ReadsBackWhatWasWrittenAndNeverSplitsTheLine) {
    for (const auto& [written, expected] :
         std::vector<std::pair<std::string, std::string>>{{" padded\t", " padded\t"},
                                                          {"''", "''"},
                                                          {"\"quoted\"", "\"quoted\""},
                                                          {"half\"", "half\""},
                                                          {"one\r\ntwo", "one  two"},
                                                          {"a\0b"s, "a b"}}) {
        IniDocument doc;
        doc.Write("A", "x", written);
        doc.Write("A", "after", "1");
        const IniDocument reparsed = IniDocument::Parse(doc.Serialize());
        std::string value;
        EXPECT_TRUE(reparsed.Read("A", "x", value));
        EXPECT_EQ(value, expected);
        EXPECT_TRUE(reparsed.Read("A", "after", value)) << expected;
    }
}

TEST(IniFileOnDisk, WritesCreateTheFileAndAFileThatCannotBeReadIsNeitherReadNorReplaced) {
    test::TempAppFolder folder;
    const std::string file = folder.Path("VendrakoTimer.ini");
    std::string value = "left over";
    EXPECT_FALSE(ReadIniValue(file, "GENERAL", "FECHA", value));
    EXPECT_EQ(value, "");
    WriteIniValue(file, "GENERAL", "FECHA", "15-03-24");
    WriteIniValue(file, "ACCESOS", "ULTIMO", "Reuni\u00F3n");
    EXPECT_EQ(folder.ReadFile("VendrakoTimer.ini"),
              "[GENERAL]\r\nFECHA=15-03-24\r\n\r\n[ACCESOS]\r\nULTIMO=Reuni\xF3n\r\n");
    EXPECT_TRUE(ReadIniValue(file, "accesos", "ultimo", value));
    EXPECT_EQ(value, "Reuni\u00F3n");

    const std::string folder_file = folder.Path("folder.ini");
    folder.WriteFile("folder.ini/inside", "keep");
    EXPECT_FALSE(ReadIniValue(folder_file, "GENERAL", "FECHA", value));
    EXPECT_EQ(value, "");
    WriteIniValue(folder_file, "GENERAL", "FECHA", "15-03-24");
    EXPECT_EQ(folder.ReadFile("folder.ini/inside"), "keep");
}

}  // namespace
}  // namespace vt
