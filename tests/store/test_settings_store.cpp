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
#include "store/settings_read_ahead.h"
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
    s.Entrada2 = " 8\r\n";  // would not read back as itself unquoted, nor in one line
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
              "[GENERAL]\r\nFECHA=15-03-24\r\nENTRADA1=07:58\r\nSALIDA1=\r\nENTRADA2=\" 8  \"\r\nNUM_ALARMAS=2\r\n\r\n"
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

// Settings read ahead are taken once, and only for the bytes that were parsed: a file changed
// since is read as it is now, with its message.
TEST_F(SettingsStoreTest, ReadAheadIsTakenOnlyForTheBytesItParsed) {
    const std::string file = folder_.Paths().SettingsFile();
    const std::string bytes = Utf8ToCp1252(SettingsFileText(SmallSettings()));
    folder_.WriteFile(kFile, bytes);
    ASSERT_TRUE(Load(bytes));
    SettingsReadAhead ahead(file);
    EXPECT_FALSE(ahead.Take(file, bytes + "\r\n"));
    ahead.ParseAhead(file, bytes);
    EXPECT_FALSE(ahead.Take(file + ".old", bytes));
    ahead.ParseAhead(file, bytes);
    EXPECT_EQ(ahead.Take(file, bytes), settings_);
    EXPECT_FALSE(ahead.Take(file, bytes));

    SettingsReadAhead stale(file);
    folder_.WriteFile(kFile, "[GENERAL]\r\nNUM_ALARMAS=1\r\n");
    EXPECT_FALSE(LoadSettings(file, settings_, dialogs_, MakeDateTime(MakeDate(1, 3, 2024), 9, 0), &stale));
    EXPECT_EQ(dialogs_.Texts().size(), 1u);
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
