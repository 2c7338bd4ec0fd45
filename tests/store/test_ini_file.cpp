#include "store/ini_file.h"

#include <gtest/gtest.h>

#include <string>

#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::string_literals;

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

TEST_P(HandEditedFile, ReadsAsDecided) {
    const ReadCase& c = GetParam();
    const IniDocument doc = IniDocument::Parse(c.bytes);
    std::string value = "left over";
    EXPECT_EQ(doc.Read(c.section, c.key, value), c.found);
    EXPECT_EQ(value, c.value);
}

TEST_P(HandEditedFile, ReadsTheSameAfterBeingWrittenBack) {
    const ReadCase& c = GetParam();
    const std::string once = IniDocument::Parse(c.bytes).Serialize();
    const IniDocument again = IniDocument::Parse(once);
    std::string value;
    EXPECT_EQ(again.Read(c.section, c.key, value), c.found);
    EXPECT_EQ(value, c.value);
    EXPECT_EQ(again.Serialize(), once);
}

INSTANTIATE_TEST_SUITE_P(
    Table, HandEditedFile,
    ::testing::Values(ReadCase{"CrLf", "[GENERAL]\r\nFECHA=15-03-24\r\n", "GENERAL", "FECHA", true, "15-03-24"},
                      ReadCase{"LfOnly", "[A]\nx=1\ny=2\n", "A", "y", true, "2"},
                      ReadCase{"CrOnly", "[A]\rx=1\ry=2\r", "A", "y", true, "2"},
                      ReadCase{"CrBeforeCrLf", "[A]\r\r\nx=1", "A", "x", true, "1"},
                      ReadCase{"NoFinalLineEnd", "[A]\r\nx=last", "A", "x", true, "last"},
                      ReadCase{"Utf8Mark", "\xEF\xBB\xBF[A]\r\nx=Reuni\xC3\xB3n\r\n", "A", "x", true, "Reuni\u00F3n"},
                      ReadCase{"Utf8MarkWithA1252Byte", "\xEF\xBB\xBF[A]\nx=a\xF1o", "A", "x", true, "a\u00F1o"},
                      ReadCase{"HighBytesAre1252", "[A]\nx=a\xF1o \x80\x81\xFF", "A", "x", true,
                               "a\u00F1o \u20AC\xC2\x81\u00FF"},
                      // Without the mark the bytes are Windows-1252 even when they happen to look like UTF-8.
                      ReadCase{"Utf8WithoutMark", "[A]\nx=\xC3\xB3", "A", "x", true, "\u00C3\u00B3"},
                      ReadCase{"FirstDuplicateKeyWins", "[A]\nx=1\nX=2\n", "A", "x", true, "1"},
                      ReadCase{"FirstDuplicateSectionWins", "[A]\nx=1\n[B]\n[a]\nx=2\ny=3\n", "A", "x", true, "1"},
                      ReadCase{"SecondSectionNeverFound", "[A]\nx=1\n[B]\n[a]\nx=2\ny=3\n", "A", "y", false, ""},
                      ReadCase{"HeaderWithoutBracket", "[GEN ERAL\nx=1", "GEN ERAL", "x", true, "1"},
                      ReadCase{"HeaderWithTrailingText", "  [ A ] ; note\nx=1", "A", "x", true, "1"},
                      ReadCase{"TextBeforeTheFirstSection", "x=1\n[A]\ny=2", "A", "x", false, ""},
                      ReadCase{"NoSectionIsNeverFound", "x=1\n[A]\n", "", "x", false, ""},
                      ReadCase{"CaseIgnored", "[general]\nfecha=1", "GENERAL", "FECHA", true, "1"},
                      ReadCase{"BlanksTrimmed", "[A]\n \t x \t= \t v w \t\n", "A", "x", true, "v w"},
                      ReadCase{"DoubleQuotesDropped", "[A]\nx= \"  v  \" ", "A", "x", true, "  v  "},
                      ReadCase{"SingleQuotesDropped", "[A]\nx='v'", "A", "x", true, "v"},
                      ReadCase{"OnlyOnePairDropped", "[A]\nx=\"\"v\"\"", "A", "x", true, "\"v\""},
                      ReadCase{"MismatchedQuotesKept", "[A]\nx=\"v'", "A", "x", true, "\"v'"},
                      ReadCase{"LoneQuoteKept", "[A]\nx=\"", "A", "x", true, "\""},
                      ReadCase{"EmptyValueIsMissing", "[A]\nx=\n", "A", "x", false, ""},
                      ReadCase{"EmptyQuotesAreMissing", "[A]\nx=\"\"\n", "A", "x", false, ""},
                      ReadCase{"LineWithoutEqualsIsNoKey", "[A]\njust words\n", "A", "just words", false, ""},
                      ReadCase{"EqualsInTheValue", "[A]\nx=a=b", "A", "x", true, "a=b"},
                      ReadCase{"ValueEndsAtNul", "[A]\nx=ab\0cd\ny=2"s, "A", "x", true, "ab"},
                      ReadCase{"NulDoesNotHideTheNextLine", "[A]\nx=ab\0cd\ny=2"s, "A", "y", true, "2"},
                      ReadCase{"EmptyFile", "", "A", "x", false, ""},
                      ReadCase{"OnlyTheMark", "\xEF\xBB\xBF", "A", "x", false, ""},
                      ReadCase{"EmptySectionName", "[]\nx=1", "", "x", false, ""},
                      ReadCase{"EmptyKeyName", "[A]\n=1", "A", "", false, ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(IniDocumentRead, ReadsAOneMegabyteValueWhole) {
    std::string value(1 << 20, 'x');
    value[1000] = '\xE9';  // one non-ASCII byte, so decoding runs over the value too
    const IniDocument doc = IniDocument::Parse("[A]\r\nbig=" + value + "\r\nafter=1\r\n");
    std::string read;
    ASSERT_TRUE(doc.Read("A", "big", read));
    EXPECT_EQ(read.size(), value.size() + 1);  // the é takes two bytes in UTF-8
    EXPECT_EQ(read.substr(read.size() - 3), "xxx");
    EXPECT_TRUE(doc.Read("A", "after", read));
}

class IniDocumentWrite : public ::testing::Test {
protected:
    static std::string Written(std::string_view bytes, std::string_view section, std::string_view key,
                               std::string_view value) {
        IniDocument doc = IniDocument::Parse(bytes);
        doc.Write(section, key, value);
        return doc.Serialize();
    }
};

TEST_F(IniDocumentWrite, ReplacesOnlyTheFirstOccurrence) {
    EXPECT_EQ(Written("[A]\r\nk=1\r\nK=2\r\n", "a", "K", "9"), "[A]\r\nK=9\r\nK=2\r\n");
}

TEST_F(IniDocumentWrite, AddsANewKeyAfterTheLastLineOfItsSection) {
    EXPECT_EQ(Written("[A]\r\nk=1\r\n\r\n[B]\r\nx=1\r\n", "A", "n", "2"), "[A]\r\nk=1\r\nn=2\r\n\r\n[B]\r\nx=1\r\n");
}

TEST_F(IniDocumentWrite, AddsANewSectionAfterOneEmptyLineAndEndsEveryLineWithCrLf) {
    EXPECT_EQ(Written("[A]\nk=1", "C", "z", "3"), "[A]\r\nk=1\r\n\r\n[C]\r\nz=3\r\n");
    EXPECT_EQ(Written("", "C", "z", "3"), "[C]\r\nz=3\r\n");
}

TEST_F(IniDocumentWrite, KeepsEveryLineItDoesNotTouch) {
    const std::string file = "loose line\r\n[A]\r\n; note\r\nk=1\r\nplain words\r\nk=2\r\n[B]\r\n";
    EXPECT_EQ(Written(file, "A", "k", "x"), "loose line\r\n[A]\r\n; note\r\nk=x\r\nplain words\r\nk=2\r\n[B]\r\n");
}

TEST_F(IniDocumentWrite, GoesToTheFirstOfTwoSectionsWithTheSameName) {
    IniDocument doc = IniDocument::Parse("[A]\nx=1\n[A]\ny=2\n");
    doc.Write("A", "y", "3");
    std::string value;
    EXPECT_TRUE(doc.Read("A", "y", value));
    EXPECT_EQ(value, "3");
    EXPECT_EQ(doc.Serialize(), "[A]\r\nx=1\r\ny=3\r\n[A]\r\ny=2\r\n");
}

TEST_F(IniDocumentWrite, KeepsAUtf8FileUtf8AndWritesOtherFilesAs1252) {
    EXPECT_EQ(Written("\xEF\xBB\xBF[A]\n", "A", "x", "\u65E5\u00F1"), "\xEF\xBB\xBF[A]\r\nx=\u65E5\u00F1\r\n");
    EXPECT_EQ(Written("[A]\n", "A", "x", "\u65E5\u00F1"), "[A]\r\nx=?\xF1\r\n");
}

class ValueRoundTrip : public ::testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(ValueRoundTrip, ReadsBackWhatWasWritten) {
    const auto& [written, expected] = GetParam();
    IniDocument doc;
    doc.Write("A", "x", written);
    std::string direct;
    std::string reparsed;
    doc.Read("A", "x", direct);
    IniDocument::Parse(doc.Serialize()).Read("A", "x", reparsed);
    EXPECT_EQ(direct, expected);
    EXPECT_EQ(reparsed, expected);
    // The next key is still there: a value never swallows or adds a line.
    doc.Write("A", "after", "1");
    EXPECT_TRUE(IniDocument::Parse(doc.Serialize()).Read("A", "after", reparsed));
}

INSTANTIATE_TEST_SUITE_P(Table, ValueRoundTrip,
                         ::testing::Values(std::pair{"plain"s, "plain"s}, std::pair{" padded\t"s, " padded\t"s},
                                           std::pair{"''"s, "''"s}, std::pair{"\"quoted\""s, "\"quoted\""s},
                                           std::pair{"half\""s, "half\""s}, std::pair{"'"s, "'"s},
                                           std::pair{"a=b"s, "a=b"s},
                                           // Line breaks and NUL would split or cut the line.
                                           std::pair{"one\r\ntwo"s, "one  two"s}, std::pair{"a\0b"s, "a b"s}));

class IniFileOnDisk : public ::testing::Test {
protected:
    test::TempAppFolder folder_;
    std::string file_ = folder_.Path("VendrakoTimer.ini");
};

TEST_F(IniFileOnDisk, FirstWriteCreatesTheFileAndTheSection) {
    WriteIniValue(file_, "GENERAL", "FECHA", "15-03-24");
    WriteIniValue(file_, "GENERAL", "ENTRADA1", "07:58");
    WriteIniValue(file_, "ACCESOS", "ULTIMO", "Reuni\u00F3n");
    EXPECT_EQ(folder_.ReadFile("VendrakoTimer.ini"),
              "[GENERAL]\r\nFECHA=15-03-24\r\nENTRADA1=07:58\r\n\r\n[ACCESOS]\r\nULTIMO=Reuni\xF3n\r\n");
    std::string value;
    EXPECT_TRUE(ReadIniValue(file_, "accesos", "ultimo", value));
    EXPECT_EQ(value, "Reuni\u00F3n");
    EXPECT_FALSE(folder_.Exists("VendrakoTimer.ini.tmp"));
}

TEST_F(IniFileOnDisk, AMissingFileReadsAsAnEmptyValue) {
    std::string value = "left over";
    EXPECT_FALSE(ReadIniValue(file_, "GENERAL", "FECHA", value));
    EXPECT_EQ(value, "");
}

TEST_F(IniFileOnDisk, AFileThatCannotBeReadIsNeitherReadNorReplaced) {
    folder_.WriteFile("VendrakoTimer.ini/inside", "keep");
    std::string value = "left over";
    EXPECT_FALSE(ReadIniValue(file_, "GENERAL", "FECHA", value));
    EXPECT_EQ(value, "");
    WriteIniValue(file_, "GENERAL", "FECHA", "15-03-24");
    EXPECT_EQ(folder_.ReadFile("VendrakoTimer.ini/inside"), "keep");
    EXPECT_FALSE(folder_.Exists("VendrakoTimer.ini.tmp"));
}

}  // namespace
}  // namespace vt
