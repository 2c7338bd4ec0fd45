#include "store/settings_store.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using Texts = std::vector<std::string>;
const std::string kFile = "VendrakoTimer.ini";

class SettingsStoreTest : public ::testing::Test {
protected:
    bool Load(const std::string& bytes) { return LoadSettingsFromBytes(bytes, settings_, dialogs_); }
    bool Save(const Settings& settings) { return SaveSettings(folder_.Paths(), settings, busy_, dialogs_); }

    test::TempAppFolder folder_;
    test::ScriptedDialogs dialogs_;
    test::RecordingBusy busy_;
    Settings settings_;
};

// ---- loading -------------------------------------------------------------------------------

// Taken by position, so "7:30|P" gives the hours "7:30|"; five characters, not five bytes (ñ and
// ú take two each); no line keeps the defaults; the neighbour is read on its own.
TEST_F(SettingsStoreTest, WeekdayValuesAreTakenByPosition) {
    const auto monday_and_tuesday = [this](const std::string& line) {
        EXPECT_TRUE(Load("[CONFIG]\r\n" + line + "\r\nMARTES=06:00|P\r\n")) << line;
        EXPECT_EQ(settings_.DayMode[7], "C") << line;
        return settings_.DayHours[1] + " " + settings_.DayMode[1] + ", " + settings_.DayHours[2];
    };
    EXPECT_EQ(monday_and_tuesday("LUNES=07:30|P"), "07:30 P, 06:00");
    EXPECT_EQ(monday_and_tuesday("LUNES=7:30|P"), "7:30| P, 06:00");
    EXPECT_EQ(monday_and_tuesday(""), "08:00 C, 06:00");
    EXPECT_EQ(monday_and_tuesday("LUNES=X"), "X X, 06:00");
    EXPECT_EQ(monday_and_tuesday("LUNES=09:15|C extra"), "09:15 a, 06:00");
    EXPECT_EQ(monday_and_tuesday(Utf8ToCp1252("LUNES=ñandú|Ñ")), "ñandú Ñ, 06:00");
}

TEST_F(SettingsStoreTest, GeneralValuesAndTheLastScanAreRead) {
    ASSERT_TRUE(Load("[GENERAL]\r\nFECHA=15-03-24\r\nENTRADA2=15:02\r\n[ACCESOS]\r\nULTIMO=14/03/2024 18:05:09\r\n"));
    EXPECT_EQ(settings_.WorkDate + " " + settings_.Entrada2, "15-03-24 15:02");
    EXPECT_EQ(settings_.UltimoAcceso, MakeDateTime(MakeDate(14, 3, 2024), 18, 5, 9));
    // A missing or impossible last scan reads as "never".
    for (const char* file : {"[GENERAL]\r\nFECHA=15-03-24\r\n", "[ACCESOS]\r\nULTIMO=31/02/2024 10:00:00\r\n"}) {
        ASSERT_TRUE(Load(file));
        EXPECT_EQ(FormatDateTime(settings_.UltimoAcceso), "01/01/1901 00:00:00") << file;
    }
}

TEST_F(SettingsStoreTest, GapsCloseUpAndTheSaveRenumbers) {
    // Number order, not file order; the first of two equal keys counts; only three digits from
    // 001 to 998 are entry keys.
    ASSERT_TRUE(
        Load("[REPETICIONES]\r\nREP_010=diez\r\nREP_001=uno\r\nREP_002=\r\nrep_005=cinco\r\nREP_001=otra\r\n"
             "REP_000=cero\r\nREP_05=corta\r\nREP_0005=larga\r\nREPX005=otra clave\r\n"
             "[GENERAL]\r\nNUM_ALARMAS=1\r\n[ALARMAS]\r\nALA_999=never\r\nALA_998=last\r\nALA_1000=no\r\n"));
    EXPECT_NE(SettingsFileText(settings_).find("[REPETICIONES]\r\nREP_001=uno\r\nREP_002=cinco\r\nREP_003=diez\r\n\r\n"
                                               "[ALARMAS]\r\nALA_001=last\r\n\r\n"),
              std::string::npos);
}

TEST_F(SettingsStoreTest, AMissingFileGivesTheDefaultsAndAnUnreadableOneStopsTheProgramUntouched) {
    settings_.Alarms.Append("old");
    ASSERT_TRUE(LoadSettings(folder_.Path(kFile), settings_, dialogs_));
    EXPECT_EQ(settings_, Settings{});
    EXPECT_TRUE(dialogs_.Shown().empty());

    folder_.WriteFile(kFile + "/inside", "keep");  // a folder in the file's place
    settings_.WorkDate = "untouched";
    EXPECT_FALSE(LoadSettings(folder_.Path(kFile), settings_, dialogs_));
    ASSERT_EQ(dialogs_.Texts(),
              Texts{"No se ha podido leer el archivo de configuraci\u00F3n:\r\n" + folder_.Path(kFile) +
                    "\r\n\r\nEl programa se cerrar\u00E1 sin tocar ning\u00FAn archivo."});
    EXPECT_EQ(dialogs_.Shown()[0].icon, MsgIcon::Critical);
    EXPECT_EQ(settings_.WorkDate, "untouched");
    EXPECT_EQ(folder_.ReadFile(kFile + "/inside"), "keep");
}

// A count that does not match the alarms found refuses the file with the message, and the
// refused file changes nothing in memory; no count line means 0.
class AlarmCount : public SettingsStoreTest,
                   public ::testing::WithParamInterface<std::tuple<std::string_view, int, bool>> {};

TEST_P(AlarmCount, MustMatchTheAlarmsFound) {
    const auto [count_line, alarms, loads] = GetParam();
    std::string file = "[GENERAL]\r\n" + std::string(count_line) + "\r\n[ALARMAS]\r\n";
    for (int i = 1; i <= alarms; ++i) {
        file += "ALA_00" + std::to_string(i) + "=alarma\r\n";
    }
    settings_.WorkDate = "untouched";
    EXPECT_EQ(Load(file), loads);
    EXPECT_EQ(settings_.WorkDate, loads ? "" : "untouched");
    EXPECT_EQ(settings_.Alarms.Count(), loads ? alarms : 0);
    ASSERT_EQ(dialogs_.Texts(),
              Texts(loads ? 0 : 1,
                    "Se han detectado discrepancias en el INI.\r\n\r\nEl n\u00FAmero de alarmas no es el correcto."));
    if (!loads) {
        EXPECT_EQ(dialogs_.Shown()[0].icon, MsgIcon::Critical);
    }
}

// 65538 would wrap to 2 in 16 bits; it is out of range.
INSTANTIATE_TEST_SUITE_P(
    Table, AlarmCount,
    ::testing::Values(std::tuple{"NUM_ALARMAS=2", 2, true}, std::tuple{"NUM_ALARMAS=3", 2, false},
                      std::tuple{"NUM_ALARMAS=1", 2, false}, std::tuple{"", 0, true}, std::tuple{"", 1, false},
                      std::tuple{"NUM_ALARMAS = 02 ", 2, true}, std::tuple{"NUM_ALARMAS=+2", 2, true},
                      std::tuple{"NUM_ALARMAS=dos", 2, false}, std::tuple{"NUM_ALARMAS=2.0", 2, false},
                      std::tuple{"NUM_ALARMAS=65538", 2, false}, std::tuple{"NUM_ALARMAS=-2", 2, false}));

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
    ASSERT_TRUE(Save(SmallSettings()));
    EXPECT_EQ(folder_.ReadFile(kFile),
              "[GENERAL]\r\nFECHA=15-03-24\r\nENTRADA1=07:58\r\nSALIDA1=\r\nENTRADA2=\r\nNUM_ALARMAS=2\r\n\r\n"
              "[CONFIG]\r\nLUNES=07:30|P\r\nMARTES=08:00|C\r\nMIERCOLES=08:00|C\r\nJUEVES=08:00|C\r\n"
              "VIERNES=08:00|C\r\nSABADO=00:00|C\r\nDOMINGO=08:00|C\r\n\r\n"
              "[REPETICIONES]\r\nREP_001=15/03/2024 09:30 Reuni\xF3n de equipo\r\n\r\n"
              "[ALARMAS]\r\nALA_001=20/03/2024 10:00 M\xE9"
              "dico;0;0;0\r\n"
              "ALA_002=01/04/2024 08:00 Cumplea\xF1os de Ana (1990) <010324>;1;0;2\r\n\r\n"
              "[ACCESOS]\r\nULTIMO=14/03/2024 18:05:00\r\n");
    EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
    EXPECT_TRUE(dialogs_.Shown().empty());
    // Empty lists still write their sections.
    EXPECT_NE(SettingsFileText(Settings{})
                  .find("DOMINGO=08:00|C\r\n\r\n[REPETICIONES]\r\n\r\n[ALARMAS]\r\n\r\n"
                        "[ACCESOS]\r\nULTIMO=01/01/1901 00:00:00\r\n"),
              std::string::npos);
}

TEST_F(SettingsStoreTest, ASaveKeepsWhatItLoadedAndDropsUnknownKeys) {
    folder_.WriteFile(kFile,
                      "; hand notes\r\n[GENERAL]\r\nFECHA=15-03-24\r\nOTRA=x\r\nNUM_ALARMAS=1\r\n[EXTRA]\r\nK=v\r\n"
                      "[ALARMAS]\r\nALA_004=  \" padded \"  \r\n");
    ASSERT_EQ(::chmod(folder_.Path(kFile).c_str(), 0444), 0);  // read-only is replaced all the same
    ASSERT_TRUE(LoadSettings(folder_.Path(kFile), settings_, dialogs_));
    const Settings loaded = settings_;
    ASSERT_EQ(loaded.Alarms.Count(), 1);
    EXPECT_EQ(loaded.Alarms[1], " padded ");
    ASSERT_TRUE(Save(settings_));
    EXPECT_EQ(folder_.ReadFile(kFile), Utf8ToCp1252(SettingsFileText(loaded)));
    ASSERT_TRUE(LoadSettings(folder_.Path(kFile), settings_, dialogs_));
    EXPECT_EQ(settings_, loaded);
}

// ---- saves that fail -----------------------------------------------------------------------

// Settings whose file takes well over the 4 KB that the full disk below lets through.
Settings BigSettings() {
    Settings s = SmallSettings();
    s.Alarms.Append("15/03/2024 09:30 Reuni\u00F3n " + std::string(10000, 'x'));
    return s;
}

class FailedSave : public SettingsStoreTest {
protected:
    void PutPrevious(const std::string& bytes) {
        previous_ = bytes;
        folder_.WriteFile(kFile, bytes);
    }
    // Saves under a file-size limit of 4 KB, as a full disk would stop a write half-way; SIGXFSZ
    // is ignored meanwhile so that the write fails with an error instead of killing the test.
    bool SaveOnAFullDisk(const Settings& settings) {
        rlimit saved{};
        getrlimit(RLIMIT_FSIZE, &saved);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit lowered{4096, saved.rlim_max};
        setrlimit(RLIMIT_FSIZE, &lowered);
        const bool saved_ok = Save(settings);
        setrlimit(RLIMIT_FSIZE, &saved);
        std::signal(SIGXFSZ, handler);
        return saved_ok;
    }

    // The user was told, the old file is intact, and nothing half-written lies anywhere.
    void ExpectRefusedAndUntouched() {
        EXPECT_EQ(dialogs_.Texts(),
                  Texts{"No se ha podido guardar la configuraci\u00F3n en:\r\n" + folder_.Path(kFile) +
                        "\r\n\r\nEl archivo anterior se conserva sin cambios."});
        EXPECT_EQ(dialogs_.Shown()[0].icon, MsgIcon::Exclamation);
        EXPECT_EQ(busy_.calls, (std::vector<bool>{true, false}));
        if (!previous_.empty()) {
            EXPECT_EQ(folder_.ReadFile(kFile), previous_);
        }
        EXPECT_FALSE(PathExists(TemporaryPathFor(folder_.Path(kFile))));
        std::error_code ec;  // every file in the backup folder is a whole copy of the previous file
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path("Backup"), ec)) {
            EXPECT_EQ(folder_.ReadFile("Backup/" + entry.path().filename().string()), previous_) << entry.path();
        }
    }

    std::string previous_;
};

TEST_F(FailedSave, WhenTheSettingsFileCannotBeRead) {
    folder_.WriteFile(kFile + "/inside", "keep");
    EXPECT_FALSE(Save(SmallSettings()));
    ExpectRefusedAndUntouched();
    EXPECT_EQ(folder_.ReadFile(kFile + "/inside"), "keep");
}

TEST_F(FailedSave, WhenTheNewFileCannotReplaceTheOld) {
    PutPrevious("[GENERAL]\r\nFECHA=01-01-24\r\n");
    const std::string temporary = TemporaryPathFor(folder_.Path(kFile));
    std::filesystem::create_directories(temporary + "/inside");
    EXPECT_FALSE(Save(SmallSettings()));
    EXPECT_TRUE(std::filesystem::exists(temporary + "/inside"));
    std::filesystem::remove_all(temporary);  // not ours; cleared only to check that nothing else was left
    ExpectRefusedAndUntouched();
    EXPECT_TRUE(folder_.Exists("Backup/VendrakoTimer_001.ini"));  // the copy came first and is whole
}

TEST_F(FailedSave, WhenTheDiskFillsWhileTheNewFileIsWritten) {
    PutPrevious("[GENERAL]\r\nFECHA=01-01-24\r\nNUM_ALARMAS=0\r\n");
    EXPECT_FALSE(SaveOnAFullDisk(BigSettings()));
    ExpectRefusedAndUntouched();
    EXPECT_TRUE(folder_.Exists("Backup/VendrakoTimer_001.ini"));
}

TEST_F(FailedSave, WhenTheDiskFillsWhileTheBackupCopyIsWritten) {
    PutPrevious(Utf8ToCp1252(SettingsFileText(BigSettings())));
    EXPECT_FALSE(SaveOnAFullDisk(SmallSettings()));
    ExpectRefusedAndUntouched();
    EXPECT_FALSE(folder_.Exists("Backup/VendrakoTimer_001.ini"));
}

}  // namespace
}  // namespace vt
