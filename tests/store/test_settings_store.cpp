#include "store/settings_store.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "scripted_dialogs.h"
#include "store/busy.h"
#include "store/cp1252.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::string_literals;

class RecordingBusy : public Busy {
public:
    void SetBusy(bool on) override { calls.push_back(on); }
    std::vector<bool> calls;
};

const std::string kFile = "VendrakoTimer.ini";

class SettingsStoreTest : public ::testing::Test {
protected:
    bool Load(const std::string& bytes) {
        folder_.WriteFile(kFile, bytes);
        return LoadSettings(folder_.Path(kFile), settings_, dialogs_);
    }

    test::TempAppFolder folder_;
    test::ScriptedDialogs dialogs_;
    RecordingBusy busy_;
    Settings settings_;
};

// ---- loading -------------------------------------------------------------------------------

struct WeekdayCase {
    const char* name;
    std::string line;  // the LUNES line, or "" for none
    std::string hours;
    std::string mode;
};

class WeekdayValues : public SettingsStoreTest, public ::testing::WithParamInterface<WeekdayCase> {};

TEST_P(WeekdayValues, AreTakenByPosition) {
    ASSERT_TRUE(Load("[CONFIG]\r\n" + GetParam().line + "\r\nMARTES=06:00|P\r\n"));
    EXPECT_EQ(settings_.DayHours[1], GetParam().hours);
    EXPECT_EQ(settings_.DayMode[1], GetParam().mode);
    EXPECT_EQ(settings_.DayHours[2], "06:00");  // the neighbour is read on its own
    EXPECT_EQ(settings_.DayHours[7], "08:00");
    EXPECT_EQ(settings_.DayMode[7], "C");
}

INSTANTIATE_TEST_SUITE_P(Table, WeekdayValues,
                         ::testing::Values(WeekdayCase{"Regular", "LUNES=07:30|P", "07:30", "P"},
                                           WeekdayCase{"ShortHour", "LUNES=7:30|P", "7:30|", "P"},
                                           WeekdayCase{"Empty", "LUNES=", "08:00", "C"},
                                           WeekdayCase{"Missing", "", "08:00", "C"},
                                           WeekdayCase{"OneCharacter", "LUNES=X", "X", "X"},
                                           WeekdayCase{"TrailingText", "LUNES=09:15|C extra", "09:15", "a"},
                                           // Five characters, not five bytes: ñ and ú take two each.
                                           WeekdayCase{"NonAscii",
                                                       "LUNES=\xF1"
                                                       "and\xFA|\xD1",
                                                       "\u00F1and\u00FA", "\u00D1"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(SettingsStoreTest, GeneralValuesAndTheLastScanAreRead) {
    ASSERT_TRUE(
        Load("[GENERAL]\r\nFECHA=15-03-24\r\nENTRADA1=07:58\r\nSALIDA1=\r\nENTRADA2=15:02\r\n"
             "[ACCESOS]\r\nULTIMO=14/03/2024 18:05:09\r\n"));
    EXPECT_EQ(settings_.WorkDate, "15-03-24");
    EXPECT_EQ(settings_.Entrada1, "07:58");
    EXPECT_EQ(settings_.Salida1, "");
    EXPECT_EQ(settings_.Entrada2, "15:02");
    EXPECT_EQ(settings_.UltimoAcceso, MakeDateTime(MakeDate(14, 3, 2024), 18, 5, 9));
}

TEST_F(SettingsStoreTest, AMissingOrUnreadableLastScanMeansNever) {
    ASSERT_TRUE(Load("[GENERAL]\r\nFECHA=15-03-24\r\n"));
    EXPECT_EQ(settings_.UltimoAcceso, NeverScanned());
    EXPECT_EQ(FormatDateTime(settings_.UltimoAcceso), "01/01/1901 00:00:00");
    ASSERT_TRUE(Load("[ACCESOS]\r\nULTIMO=31/02/2024 10:00:00\r\n"));
    EXPECT_EQ(settings_.UltimoAcceso, NeverScanned());
}

TEST_F(SettingsStoreTest, GapsCloseUpAndTheSaveRenumbers) {
    // Number order, not file order; the first of two equal keys counts; only three digits from
    // 001 are entry keys.
    ASSERT_TRUE(
        Load("[REPETICIONES]\r\nREP_010=diez\r\nREP_001=uno\r\nREP_002=\r\nrep_005=cinco\r\nREP_001=otra\r\n"
             "REP_000=cero\r\nREP_05=corta\r\nREP_0005=larga\r\nREPX005=otra clave\r\n"));
    ASSERT_EQ(settings_.Repetitions.Count(), 3);
    EXPECT_EQ(settings_.Repetitions[1], "uno");
    EXPECT_EQ(settings_.Repetitions[2], "cinco");
    EXPECT_EQ(settings_.Repetitions[3], "diez");
    const std::string text = SettingsFileText(settings_);
    EXPECT_NE(text.find("[REPETICIONES]\r\nREP_001=uno\r\nREP_002=cinco\r\nREP_003=diez\r\n\r\n[ALARMAS]"),
              std::string::npos)
        << text;
}

TEST_F(SettingsStoreTest, KeysBeyond998AreNeverRead) {
    ASSERT_TRUE(Load("[GENERAL]\r\nNUM_ALARMAS=1\r\n[ALARMAS]\r\nALA_999=never\r\nALA_998=last\r\nALA_1000=no\r\n"));
    ASSERT_EQ(settings_.Alarms.Count(), 1);
    EXPECT_EQ(settings_.Alarms[1], "last");
}

TEST_F(SettingsStoreTest, AMissingFileGivesTheDefaults) {
    settings_.WorkDate = "01-01-24";
    settings_.Alarms.Append("old");
    ASSERT_TRUE(LoadSettings(folder_.Path(kFile), settings_, dialogs_));
    EXPECT_EQ(settings_, Settings{});
    EXPECT_TRUE(dialogs_.Shown().empty());
}

struct CountCase {
    const char* name;
    std::string count_line;  // "" for no NUM_ALARMAS line
    int alarms;
    bool loads;
};

class AlarmCount : public SettingsStoreTest, public ::testing::WithParamInterface<CountCase> {};

TEST_P(AlarmCount, MustMatchTheAlarmsFound) {
    std::string file = "[GENERAL]\r\n" + GetParam().count_line + "\r\n[ALARMAS]\r\n";
    for (int i = 1; i <= GetParam().alarms; ++i) {
        file += "ALA_00" + std::to_string(i) + "=alarma\r\n";
    }
    settings_.WorkDate = "untouched";
    EXPECT_EQ(Load(file), GetParam().loads);
    if (GetParam().loads) {
        EXPECT_TRUE(dialogs_.Shown().empty());
        EXPECT_EQ(settings_.Alarms.Count(), GetParam().alarms);
        return;
    }
    ASSERT_EQ(dialogs_.Shown().size(), 1u);
    const MessageBox& box = dialogs_.Shown()[0];
    EXPECT_EQ(box.text,
              "Se han detectado discrepancias en el INI.\r\n\r\nEl n\u00FAmero de alarmas no es el correcto.");
    EXPECT_EQ(box.title, "ATENCI\u00D3N!");
    EXPECT_EQ(box.icon, MsgIcon::Critical);
    EXPECT_EQ(box.buttons, MsgButtons::Ok);
    EXPECT_EQ(settings_.WorkDate, "untouched");  // a refused file changes nothing in memory
}

INSTANTIATE_TEST_SUITE_P(Table, AlarmCount,
                         ::testing::Values(CountCase{"Matches", "NUM_ALARMAS=2", 2, true},
                                           CountCase{"TooMany", "NUM_ALARMAS=3", 2, false},
                                           CountCase{"TooFew", "NUM_ALARMAS=1", 2, false},
                                           CountCase{"MissingWithNoAlarms", "", 0, true},
                                           CountCase{"EmptyWithNoAlarms", "NUM_ALARMAS=", 0, true},
                                           CountCase{"MissingWithAlarms", "", 1, false},
                                           CountCase{"LeadingZeroAndBlanks", "NUM_ALARMAS = 02 ", 2, true},
                                           CountCase{"PlusSign", "NUM_ALARMAS=+2", 2, true},
                                           CountCase{"NotANumber", "NUM_ALARMAS=dos", 2, false},
                                           CountCase{"Decimal", "NUM_ALARMAS=2.0", 2, false},
                                           // 65538 would wrap to 2 in 16 bits; it is out of range.
                                           CountCase{"OutOf16Bits", "NUM_ALARMAS=65538", 2, false},
                                           CountCase{"Negative", "NUM_ALARMAS=-2", 2, false}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(SettingsStoreTest, AFileThatCannotBeReadStopsTheProgramUntouched) {
    folder_.WriteFile(kFile + "/inside", "keep");  // a folder in the file's place
    settings_.WorkDate = "untouched";
    EXPECT_FALSE(LoadSettings(folder_.Path(kFile), settings_, dialogs_));
    ASSERT_EQ(dialogs_.Shown().size(), 1u);
    const MessageBox& box = dialogs_.Shown()[0];
    EXPECT_EQ(box.text, "No se ha podido leer el archivo de configuraci\u00F3n:\r\n" + folder_.Path(kFile) +
                            "\r\n\r\nEl programa se cerrar\u00E1 sin tocar ning\u00FAn archivo.");
    EXPECT_EQ(box.title, "ATENCI\u00D3N!");
    EXPECT_EQ(box.icon, MsgIcon::Critical);
    EXPECT_EQ(settings_.WorkDate, "untouched");
    EXPECT_EQ(folder_.ReadFile(kFile + "/inside"), "keep");
}

// ---- saving --------------------------------------------------------------------------------

Settings SmallSettings() {
    Settings s;
    s.WorkDate = "15-03-24";
    s.Entrada1 = "07:58";
    s.DayHours[1] = "07:30";
    s.DayMode[1] = "P";
    s.DayHours[6] = "00:00";
    s.Repetitions.Append("15/03/2024 09:30 Reuni\u00F3n de equipo");
    s.Alarms.Append("20/03/2024 10:00 M\u00E9dico;0;0;0");
    s.Alarms.Append("01/04/2024 08:00 Cumplea\u00F1os de Ana (1990) <010324>;1;0;2");
    s.UltimoAcceso = MakeDateTime(MakeDate(14, 3, 2024), 18, 5, 0);
    return s;
}

TEST_F(SettingsStoreTest, TheSavedFileIsExactlyThis) {
    ASSERT_TRUE(SaveSettings(folder_.Paths(), SmallSettings(), busy_, dialogs_));
    EXPECT_EQ(folder_.ReadFile(kFile),
              "[GENERAL]\r\n"
              "FECHA=15-03-24\r\n"
              "ENTRADA1=07:58\r\n"
              "SALIDA1=\r\n"
              "ENTRADA2=\r\n"
              "NUM_ALARMAS=2\r\n"
              "\r\n"
              "[CONFIG]\r\n"
              "LUNES=07:30|P\r\n"
              "MARTES=08:00|C\r\n"
              "MIERCOLES=08:00|C\r\n"
              "JUEVES=08:00|C\r\n"
              "VIERNES=08:00|C\r\n"
              "SABADO=00:00|C\r\n"
              "DOMINGO=08:00|C\r\n"
              "\r\n"
              "[REPETICIONES]\r\n"
              "REP_001=15/03/2024 09:30 Reuni\xF3n de equipo\r\n"
              "\r\n"
              "[ALARMAS]\r\n"
              "ALA_001=20/03/2024 10:00 M\xE9"
              "dico;0;0;0\r\n"
              "ALA_002=01/04/2024 08:00 Cumplea\xF1os de Ana (1990) <010324>;1;0;2\r\n"
              "\r\n"
              "[ACCESOS]\r\n"
              "ULTIMO=14/03/2024 18:05:00\r\n");
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
    EXPECT_TRUE(dialogs_.Shown().empty());
}

TEST_F(SettingsStoreTest, EmptyListsStillWriteTheirSections) {
    const std::string text = SettingsFileText(Settings{});
    EXPECT_NE(text.find("NUM_ALARMAS=0\r\n\r\n[CONFIG]"), std::string::npos);
    EXPECT_NE(text.find("DOMINGO=08:00|C\r\n\r\n[REPETICIONES]\r\n\r\n[ALARMAS]\r\n\r\n[ACCESOS]\r\n"
                        "ULTIMO=01/01/1901 00:00:00\r\n"),
              std::string::npos)
        << text;
}

TEST_F(SettingsStoreTest, ASaveKeepsWhatItLoadedAndDropsUnknownKeys) {
    ASSERT_TRUE(
        Load("; hand notes\r\n[GENERAL]\r\nFECHA=15-03-24\r\nOTRA=x\r\nNUM_ALARMAS=1\r\n[EXTRA]\r\nK=v\r\n"
             "[ALARMAS]\r\nALA_004=  \" padded \"  \r\n"));
    const Settings loaded = settings_;
    ASSERT_EQ(loaded.Alarms[1], " padded ");
    ASSERT_TRUE(SaveSettings(folder_.Paths(), settings_, busy_, dialogs_));
    const std::string saved = folder_.ReadFile(kFile);
    EXPECT_EQ(saved, Utf8ToCp1252(SettingsFileText(loaded)));
    EXPECT_EQ(saved.find("OTRA"), std::string::npos);
    EXPECT_EQ(saved.find("EXTRA"), std::string::npos);
    EXPECT_EQ(saved.find("hand notes"), std::string::npos);
    ASSERT_TRUE(LoadSettings(folder_.Path(kFile), settings_, dialogs_));
    EXPECT_EQ(settings_, loaded);
}

TEST_F(SettingsStoreTest, AReadOnlyFileIsStillReplaced) {
    folder_.WriteFile(kFile, "[GENERAL]\r\nFECHA=01-01-24\r\n");
    ASSERT_EQ(::chmod(folder_.Path(kFile).c_str(), 0444), 0);
    ASSERT_TRUE(SaveSettings(folder_.Paths(), SmallSettings(), busy_, dialogs_));
    EXPECT_EQ(folder_.ReadFile(kFile), Utf8ToCp1252(SettingsFileText(SmallSettings())));
}

// ---- saves that fail -----------------------------------------------------------------------

// Lowers the file-size limit the kernel enforces, as a full disk would stop a write half-way;
// SIGXFSZ is ignored meanwhile so the write fails with an error instead of killing the test.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &saved_);
        saved_handler_ = std::signal(SIGXFSZ, SIG_IGN);
        rlimit lowered = saved_;
        lowered.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &lowered);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &saved_);
        std::signal(SIGXFSZ, saved_handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit saved_{};
    void (*saved_handler_)(int) = nullptr;
};

Settings SettingsWithAlarms(int count) {
    Settings s = SmallSettings();
    s.Alarms.Clear();
    for (int i = 0; i < count; ++i) {
        s.Alarms.Append("15/03/2024 09:30 Reuni\u00F3n de equipo;sala 2 (1990) <010324> n\u00BA " + std::to_string(i));
    }
    return s;
}

class FailedSave : public SettingsStoreTest {
protected:
    // The previous file, which every failed save must leave as it was.
    void PutPrevious(const std::string& bytes) {
        previous_ = bytes;
        folder_.WriteFile(kFile, bytes);
    }

    // The user was told, the old file is intact, and nothing half-written lies anywhere.
    void ExpectRefusedAndUntouched() {
        ASSERT_EQ(dialogs_.Shown().size(), 1u);
        const MessageBox& box = dialogs_.Shown()[0];
        EXPECT_EQ(box.text, "No se ha podido guardar la configuraci\u00F3n en:\r\n" + folder_.Path(kFile) +
                                "\r\n\r\nEl archivo anterior se conserva sin cambios.");
        EXPECT_EQ(box.icon, MsgIcon::Exclamation);
        EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
        if (!previous_.empty()) {
            EXPECT_EQ(folder_.ReadFile(kFile), previous_);
        }
        EXPECT_FALSE(PathExists(TemporaryPathFor(folder_.Path(kFile))));
        namespace fs = std::filesystem;
        std::error_code ec;
        for (const auto& entry : fs::directory_iterator(folder_.Path("Backup"), ec)) {
            EXPECT_EQ(entry.path().extension(), ".ini") << "stray file " << entry.path();
            EXPECT_EQ(folder_.ReadFile("Backup/" + entry.path().filename().string()), previous_)
                << "broken backup copy " << entry.path();
        }
    }

    std::string previous_;
};

TEST_F(FailedSave, WhenTheSettingsPathIsAFolder) {
    folder_.WriteFile(kFile + "/inside", "keep");
    EXPECT_FALSE(SaveSettings(folder_.Paths(), SmallSettings(), busy_, dialogs_));
    ExpectRefusedAndUntouched();
    EXPECT_EQ(folder_.ReadFile(kFile + "/inside"), "keep");
}

TEST_F(FailedSave, WhenAFolderStandsWhereTheTemporaryGoes) {
    PutPrevious("[GENERAL]\r\nFECHA=01-01-24\r\n");
    const std::string temporary = TemporaryPathFor(folder_.Path(kFile));
    std::filesystem::create_directories(temporary + "/inside");
    EXPECT_FALSE(SaveSettings(folder_.Paths(), SmallSettings(), busy_, dialogs_));
    EXPECT_TRUE(std::filesystem::exists(temporary + "/inside"));
    std::filesystem::remove_all(temporary);  // not ours; cleared only to check that nothing else was left
    ExpectRefusedAndUntouched();
    EXPECT_TRUE(folder_.Exists("Backup/VendrakoTimer_001.ini"));  // the copy came first and is whole
}

TEST_F(FailedSave, TheAtomicWriteNeverReplacesAFolderWithContent) {
    folder_.WriteFile("target/inside", "keep");
    EXPECT_TRUE(WriteFileAtomically(folder_.Path("target"), "new bytes"));
    EXPECT_EQ(folder_.ReadFile("target/inside"), "keep");
    EXPECT_FALSE(PathExists(TemporaryPathFor(folder_.Path("target"))));
}

TEST_F(FailedSave, WhenTheBackupFolderCannotBeMade) {
    PutPrevious("[GENERAL]\r\nFECHA=01-01-24\r\n");
    folder_.WriteFile("Backup", "a file in the folder's place");
    EXPECT_FALSE(SaveSettings(folder_.Paths(), SmallSettings(), busy_, dialogs_));
    ExpectRefusedAndUntouched();
    EXPECT_EQ(folder_.ReadFile("Backup"), "a file in the folder's place");
}

TEST_F(FailedSave, WhenTheDiskFillsWhileTheNewFileIsWritten) {
    PutPrevious("[GENERAL]\r\nFECHA=01-01-24\r\nNUM_ALARMAS=0\r\n");
    const Settings big = SettingsWithAlarms(200);
    ASSERT_GT(SettingsFileText(big).size(), 8192u);
    bool saved = true;
    {
        FileSizeLimit limit(4096);
        saved = SaveSettings(folder_.Paths(), big, busy_, dialogs_);
    }
    EXPECT_FALSE(saved);
    ExpectRefusedAndUntouched();
    EXPECT_TRUE(folder_.Exists("Backup/VendrakoTimer_001.ini"));
}

TEST_F(FailedSave, WhenTheDiskFillsWhileTheBackupCopyIsWritten) {
    PutPrevious(Utf8ToCp1252(SettingsFileText(SettingsWithAlarms(200))));
    ASSERT_GT(previous_.size(), 8192u);
    bool saved = true;
    {
        FileSizeLimit limit(4096);
        saved = SaveSettings(folder_.Paths(), SmallSettings(), busy_, dialogs_);
    }
    EXPECT_FALSE(saved);
    ExpectRefusedAndUntouched();
    EXPECT_FALSE(folder_.Exists("Backup/VendrakoTimer_001.ini"));
}

}  // namespace
}  // namespace vt
