#include "store/settings_store.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using namespace std::string_literals;

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
    ASSERT_TRUE(LoadSettings(folder_.Path(kFile), settings_, dialogs_, DateTime{}));
    EXPECT_EQ(settings_, Settings{});
    EXPECT_TRUE(dialogs_.Shown().empty());

    folder_.WriteFile(kFile + "/inside", "keep");  // a folder in the file's place
    settings_.WorkDate = "untouched";
    EXPECT_FALSE(LoadSettings(folder_.Path(kFile), settings_, dialogs_, DateTime{}));
    ASSERT_EQ(dialogs_.Texts(),
              Texts{"No se ha podido leer el archivo de configuraci\u00F3n:\r\n" + folder_.Path(kFile) +
                    "\r\n\r\nEl programa se cerrar\u00E1 sin tocar ning\u00FAn archivo."});
    EXPECT_EQ(dialogs_.Shown()[0].icon, MsgIcon::Critical);
    EXPECT_EQ(settings_.WorkDate, "untouched");
    EXPECT_EQ(folder_.ReadFile(kFile + "/inside"), "keep");
}

std::string Utf16(std::u16string_view text, bool little_endian, bool mark) {
    std::string bytes;
    for (const char16_t unit : mark ? u"\uFEFF" + std::u16string(text) : std::u16string(text)) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += little_endian ? std::string{low, high} : std::string{high, low};
    }
    return bytes;
}

// Notepad's "Unicode" files read as the UTF-8 ones do (characters beyond Windows-1252 are kept in
// memory); a file with something in it but no section of the program's is put aside under a name
// that says so, and the program goes on with the defaults.
TEST(DamagedSettingsFile, IsPutAsideAndUnicodeFilesAreRead) {
    const std::u16string text = u"[REPETICIONES]\r\nREP_001=15/03/2024 09:30 Reuni\u00F3n \U0001F600\r\n";
    // clang-format off
    const std::vector<std::tuple<const char*, std::string, bool>> cases{
        {"Utf8Mark", "\xEF\xBB\xBF[REPETICIONES]\r\nREP_001=15/03/2024 09:30 Reuni\xC3\xB3n \xF0\x9F\x98\x80\r\n", false},
        {"Utf16LeMark", Utf16(text, true, true), false},
        {"Utf16BeMark", Utf16(text, false, true), false},
        {"Utf16LeWithoutMark", Utf16(text, true, false), true},
        {"Garbage", "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x01\xF4[\x08\x06"s, true},
        {"Zeros", std::string(300, '\0'), true},
        {"BlankLinesOnly", " \r\n\t\r\n", false}};
    // clang-format on
    const DateTime now = MakeDateTime(MakeDate(15, 3, 2024), 9, 30, 5);
    for (const auto& [name, bytes, damaged] : cases) {
        SCOPED_TRACE(name);
        test::TempAppFolder folder;
        test::ScriptedDialogs dialogs;
        Settings settings;
        folder.WriteFile(kFile, bytes);
        ASSERT_TRUE(LoadSettings(folder.Path(kFile), settings, dialogs, now));
        const std::string copy = kFile + ".da\u00F1ado-20240315-093005";
        EXPECT_EQ(folder.Exists(copy), damaged);
        EXPECT_EQ(folder.ReadFile(kFile), bytes);
        if (damaged) {
            EXPECT_EQ(folder.ReadFile(copy), bytes);
            EXPECT_EQ(settings, Settings{});
            EXPECT_EQ(dialogs.Texts(),
                      Texts{"El archivo de configuraci\u00F3n no se puede leer (est\u00E1 da\u00F1ado o no es de "
                            "texto):\r\n" +
                            folder.Path(kFile) + "\r\n\r\nSe ha apartado una copia en:\r\n" + folder.Path(copy) +
                            "\r\n\r\nEl programa empieza con una configuraci\u00F3n nueva."});
        } else {
            EXPECT_TRUE(dialogs.Shown().empty());
            EXPECT_EQ(settings.Repetitions.Count(), name == "BlankLinesOnly"s ? 0 : 1);
            if (settings.Repetitions.Count() == 1) {
                EXPECT_EQ(settings.Repetitions[1], "15/03/2024 09:30 Reuni\u00F3n \U0001F600");
            }
        }
    }

    // A second damaged file within the same second keeps the first copy; a copy that cannot be
    // made at all stops the program before anything is written.
    test::TempAppFolder folder;
    test::ScriptedDialogs dialogs;
    Settings settings;
    folder.WriteFile(kFile + ".da\u00F1ado-20240315-093005", "first");
    folder.WriteFile(kFile, "\x01\x02");
    ASSERT_TRUE(LoadSettings(folder.Path(kFile), settings, dialogs, now));
    EXPECT_EQ(folder.ReadFile(kFile + ".da\u00F1ado-20240315-093005"), "first");
    EXPECT_EQ(folder.ReadFile(kFile + ".da\u00F1ado-20240315-093005-2"), "\x01\x02");
    std::filesystem::permissions(folder.Folder(), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::remove);
    dialogs.Forget();
    bool loaded = true;
    ASSERT_TRUE(test::WithPermissionsEnforced(
        [&] { loaded = LoadSettings(folder.Path(kFile), settings, dialogs, now + std::chrono::seconds{1}); }));
    EXPECT_FALSE(loaded);
    EXPECT_EQ(
        dialogs.Texts(),
        Texts{"El archivo de configuraci\u00F3n est\u00E1 da\u00F1ado y no se ha podido apartar una copia en:\r\n" +
              folder.Path(kFile + ".da\u00F1ado-20240315-093006") +
              " (permiso denegado).\r\n\r\nEl programa se cerrar\u00E1 sin tocar ning\u00FAn archivo."});
    EXPECT_EQ(folder.ReadFile(kFile), "\x01\x02");
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
    ASSERT_TRUE(LoadSettings(folder_.Path(kFile), settings_, dialogs_, DateTime{}));
    const Settings loaded = settings_;
    ASSERT_EQ(loaded.Alarms.Count(), 1);
    EXPECT_EQ(loaded.Alarms[1], " padded ");
    ASSERT_TRUE(Save(settings_));
    EXPECT_EQ(folder_.ReadFile(kFile), Utf8ToCp1252(SettingsFileText(loaded)));
    ASSERT_TRUE(LoadSettings(folder_.Path(kFile), settings_, dialogs_, DateTime{}));
    EXPECT_EQ(settings_, loaded);
}

// ---- saves that fail -----------------------------------------------------------------------

// Settings whose file takes well over the 4 KB that the full disk below lets through.
Settings BigSettings() {
    Settings s = SmallSettings();
    s.Alarms.Append("15/03/2024 09:30 Reuni\u00F3n " + std::string(10000, 'x'));
    return s;
}

// Runs body under a file-size limit of 4 KB, as a full disk would stop a write half-way; SIGXFSZ
// is ignored meanwhile so that the write fails with an error instead of killing the test.
void OnAFullDisk(const std::function<void()>& body) {
    rlimit saved{};
    getrlimit(RLIMIT_FSIZE, &saved);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit lowered{4096, saved.rlim_max};
    setrlimit(RLIMIT_FSIZE, &lowered);
    body();
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, handler);
}

class FailedSave : public SettingsStoreTest {
protected:
    void PutPrevious(const std::string& bytes) {
        previous_ = bytes;
        folder_.WriteFile(kFile, bytes);
    }
    bool SaveOnAFullDisk(const Settings& settings) {
        bool saved = false;
        OnAFullDisk([&] { saved = Save(settings); });
        return saved;
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

// A backup that cannot be made never stops the save: the new file is written, the user hears why
// the copies fail, and nothing partial is left in the backup folder.
TEST(BackupThatFails, NeverStopsTheSave) {
    enum class Shape { FileInItsPlace, ReadOnlyFolder, DiskFull };
    for (const auto& [shape, cause] :
         std::vector<std::pair<Shape, std::string>>{{Shape::FileInItsPlace, "no es una carpeta"},
                                                    {Shape::ReadOnlyFolder, "permiso denegado"},
                                                    {Shape::DiskFull, "archivo demasiado grande"}}) {
        SCOPED_TRACE(cause);
        test::TempAppFolder folder;
        test::ScriptedDialogs dialogs;
        test::RecordingBusy busy;
        // Only a big previous file meets the full disk in its copy; the small new one still fits.
        folder.WriteFile(kFile, shape == Shape::DiskFull ? Utf8ToCp1252(SettingsFileText(BigSettings())) : "[A]\r\n");
        if (shape == Shape::FileInItsPlace) {
            folder.WriteFile("Backup", "not a folder");
        } else if (shape == Shape::ReadOnlyFolder) {
            std::filesystem::create_directory(folder.Path("Backup"));
            std::filesystem::permissions(folder.Path("Backup"), std::filesystem::perms::owner_write,
                                         std::filesystem::perm_options::remove);
        }
        bool saved = false;
        const auto save = [&] { saved = SaveSettings(folder.Paths(), SmallSettings(), busy, dialogs); };
        if (shape == Shape::DiskFull) {
            OnAFullDisk(save);
        } else {
            ASSERT_TRUE(test::WithPermissionsEnforced(save));
        }
        EXPECT_TRUE(saved);
        EXPECT_EQ(folder.ReadFile(kFile), Utf8ToCp1252(SettingsFileText(SmallSettings())));
        EXPECT_EQ(dialogs.Texts(), Texts{"No se pueden hacer copias de seguridad en " + folder.Path("Backup") + " (" +
                                         cause + ").\r\n\r\nLos cambios se siguen guardando."});
        EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
        if (shape != Shape::FileInItsPlace) {
            EXPECT_TRUE(std::filesystem::is_empty(folder.Path("Backup")));
        }
    }
}

}  // namespace
}  // namespace vt
