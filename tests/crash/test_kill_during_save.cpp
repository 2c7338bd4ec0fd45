// Kills a process that saves the settings in a loop, at random moments, many times over. After
// every kill the settings file must load whole with one of the two contents the loop writes,
// every backup slot must hold a whole copy, and the run log must hold only whole lines.
//
// VT_CRASH_KILLS raises the number of kills (never below 500); VT_CRASH_SEED repeats a run.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "history/work_history.h"
#include "scripted_dialogs.h"
#include "store/app_state.h"
#include "store/settings_store.h"
#include "store/text_file.h"
#include "temp_app_folder.h"

extern char** environ;

namespace vt {
namespace {

namespace fs = std::filesystem;

constexpr int kMinimumKills = 500;
constexpr int kBackupSlots = 25;

unsigned long EnvNumber(const char* name, unsigned long fallback) {
    const char* text = std::getenv(name);
    if (text == nullptr || *text == '\0') {
        return fallback;
    }
    return std::strtoul(text, nullptr, 10);
}

// A running save_loop whose standard output is a pipe the test reads.
struct Loop {
    pid_t pid = -1;
    int output = -1;
};

// The loop numbers its saves from first; saves is how many to make, 0 for "until killed".
Loop StartLoop(const test::TempAppFolder& folder, unsigned long first, unsigned long saves) {
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "pipe failed";
        return {};
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fds[1], STDOUT_FILENO);
    std::string program = VT_SAVE_LOOP_PATH;
    std::string folder_arg = folder.Folder();
    std::string base_arg = folder.Paths().ExeBaseName;
    std::string first_arg = std::to_string(first);
    std::string saves_arg = std::to_string(saves);
    std::vector<char*> argv{program.data(),   folder_arg.data(), base_arg.data(),
                            first_arg.data(), saves_arg.data(),  nullptr};
    Loop loop;
    const int error = posix_spawn(&loop.pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(fds[1]);
    if (error != 0) {
        ADD_FAILURE() << "posix_spawn " << program << " failed: " << error;
        close(fds[0]);
        return {};
    }
    loop.output = fds[0];
    return loop;
}

// Waits for the loop's "set up" byte; false when it ended before sending it.
bool WaitUntilRunning(const Loop& loop) {
    char byte = 0;
    ssize_t got = 0;
    do {
        got = read(loop.output, &byte, 1);
    } while (got < 0 && errno == EINTR);
    return got == 1;
}

int Reap(Loop& loop) {
    int status = 0;
    while (waitpid(loop.pid, &status, 0) < 0 && errno == EINTR) {
    }
    close(loop.output);
    loop = {};
    return status;
}

// Lets the loop make exactly one save, numbered number, and returns the settings file it left.
std::string SaveOnce(const test::TempAppFolder& folder, unsigned long number) {
    Loop loop = StartLoop(folder, number, 1);
    if (loop.pid < 0) {
        return {};
    }
    const int status = Reap(loop);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "save_loop status " << status;
    return folder.ReadFile(folder.Paths().ExeBaseName + ".ini");
}

// The settings file of one save numbered number, made in a fresh folder.
std::string FileOfSave(unsigned long number) {
    test::TempAppFolder folder;
    return SaveOnce(folder, number);
}

// How long one save takes here, from a run of a few uninterrupted saves in a folder of their own.
long MeasureSaveMicroseconds() {
    constexpr unsigned long kSaves = 6;
    test::TempAppFolder folder;
    Loop loop = StartLoop(folder, 0, kSaves);
    if (loop.pid < 0 || !WaitUntilRunning(loop)) {
        ADD_FAILURE() << "the loop did not start";
        return 0;
    }
    const auto started = std::chrono::steady_clock::now();
    const int status = Reap(loop);
    const auto took = std::chrono::steady_clock::now() - started;
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "save_loop status " << status;
    return static_cast<long>(std::chrono::duration_cast<std::chrono::microseconds>(took).count()) /
           static_cast<long>(kSaves);
}

Settings LoadOrFail(const std::string& bytes) {
    Settings settings;
    test::ScriptedDialogs dialogs;
    EXPECT_TRUE(LoadSettingsFromBytes(bytes, settings, dialogs));
    EXPECT_TRUE(dialogs.Shown().empty());
    return settings;
}

TEST(KillDuringSave, SettingsFileAndRunLogSurviveSigkillAtAnyMoment) {
    const unsigned long kills = std::max<unsigned long>(kMinimumKills, EnvNumber("VT_CRASH_KILLS", kMinimumKills));
    const unsigned long seed = EnvNumber("VT_CRASH_SEED", std::random_device{}());
    std::cout << "kills " << kills << ", seed " << seed << " (VT_CRASH_SEED=" << seed << " repeats this run)\n";
    RecordProperty("seed", std::to_string(seed));
    std::mt19937 random(static_cast<std::mt19937::result_type>(seed));

    // The two contents, as the loop itself writes them for an even and an odd save.
    const std::string old_bytes = FileOfSave(0);
    const std::string new_bytes = FileOfSave(1);
    ASSERT_NE(old_bytes, new_bytes);
    const Settings old_settings = LoadOrFail(old_bytes);
    const Settings new_settings = LoadOrFail(new_bytes);
    ASSERT_EQ(old_settings.Alarms.Count(), 300);
    ASSERT_EQ(new_settings.Alarms.Count(), 301);

    test::TempAppFolder folder;
    const AppPaths& paths = folder.Paths();
    const std::string settings_file = paths.SettingsFile();
    const std::string backup_prefix = paths.ExeBaseName + "_";
    const std::string history_file = paths.AppFolder + kHistoryFileName;
    // One whole line of the run log, CR LF cut off; "\xBA" is "º" in Windows-1252.
    const std::regex log_line(R"(\[\d{2}/\d{2}/\d{4} \d{2}:\d{2}:\d{2}\] Guardado n\xBA (\d+) con 30[01] alarmas)");

    size_t log_checked = 0;  // bytes of the run log already found whole
    size_t log_lines = 0;
    int left_temporary = 0;
    int max_temporaries = 0;
    int old_seen = 0;
    int new_seen = 0;
    // Start from a saved file, as the program does once it has run.
    ASSERT_EQ(SaveOnce(folder, 0), old_bytes);
    size_t saves_before = 1;
    int kills_after_a_save = 0;
    // The kills must land both inside saves and after whole ones, so the delays span a few saves
    // as long as they take on this machine: the syncs make a save last from a millisecond on a
    // quiet disk to tens of them on a busy one. When the disk slows down during the run and many
    // kills in a row come before any save ends, the span doubles.
    const long save_us = MeasureSaveMicroseconds();
    long longest_delay_us = std::clamp<long>(3 * save_us, 2'000, 500'000);
    int kills_without_a_whole_save = 0;
    constexpr int kWidenAfter = 40;
    const auto started = std::chrono::steady_clock::now();

    for (unsigned long kill_number = 1; kill_number <= kills; ++kill_number) {
        SCOPED_TRACE("kill " + std::to_string(kill_number) + " of seed " + std::to_string(seed));
        // Each run starts with the content the file does not hold yet, most of the time at least,
        // so a kill during a run's first save still has two contents to tear between.
        Loop loop = StartLoop(folder, kill_number, 0);
        ASSERT_GE(loop.pid, 0);
        const bool running = WaitUntilRunning(loop);
        if (running) {
            std::uniform_int_distribution<long> delay_us(50, longest_delay_us);
            std::this_thread::sleep_for(std::chrono::microseconds{delay_us(random)});
            kill(loop.pid, SIGKILL);
        }
        const int status = Reap(loop);
        ASSERT_TRUE(running && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
            << "the loop ended on its own, status " << status;

        // The settings file: whole, one of the two contents, and it loads without a word.
        const FileContents file = ReadWholeFile(settings_file);
        ASSERT_EQ(file.outcome, ReadOutcome::Read);
        ASSERT_TRUE(file.bytes == old_bytes || file.bytes == new_bytes)
            << "torn settings file, " << file.bytes.size() << " bytes";
        Settings loaded;
        test::ScriptedDialogs dialogs;
        ASSERT_TRUE(LoadSettings(settings_file, loaded, dialogs, DateTime{}));
        ASSERT_TRUE(dialogs.Shown().empty()) << dialogs.Texts().front();
        if (file.bytes == old_bytes) {
            ASSERT_EQ(loaded, old_settings);
            ++old_seen;
        } else {
            ASSERT_EQ(loaded, new_settings);
            ++new_seen;
        }

        // Nothing but the expected files; a temporary is no damage but must not pile up.
        int temporaries = 0;
        for (const auto& entry : fs::recursive_directory_iterator(paths.AppFolder)) {
            const std::string name = entry.path().filename().string();
            const std::string parent = entry.path().parent_path().filename().string();
            const bool temporary = name.ends_with(".tmp");
            temporaries += temporary ? 1 : 0;
            if (entry.is_directory()) {
                ASSERT_TRUE(name == "Backup" || name == "LOG") << entry.path();
            } else if (entry.path().parent_path().string() + "/" == paths.AppFolder) {
                ASSERT_TRUE(entry.path().string() == settings_file ||
                            entry.path().string() == TemporaryPathFor(settings_file) ||
                            entry.path().string() == history_file ||
                            entry.path().string() == TemporaryPathFor(history_file))
                    << entry.path();
            } else if (parent == "Backup") {
                const std::string slot = temporary ? name.substr(0, name.size() - 4) : name;
                ASSERT_TRUE(slot.starts_with(backup_prefix) && slot.ends_with(".ini")) << entry.path();
                const int number = std::atoi(slot.substr(backup_prefix.size(), 3).c_str());
                ASSERT_TRUE(number >= 1 && number <= kBackupSlots) << entry.path();
                if (!temporary) {
                    const std::string copy = folder.ReadFile("Backup/" + name);
                    ASSERT_TRUE(copy == old_bytes || copy == new_bytes) << "torn backup " << entry.path();
                }
            } else {
                ASSERT_EQ(entry.path().string(), paths.RunLogFile());
            }
        }
        // At most one temporary per file a save writes: the settings file and each backup slot.
        ASSERT_LE(temporaries, 1 + kBackupSlots);
        max_temporaries = std::max(max_temporaries, temporaries);
        left_temporary += folder.Exists(paths.ExeBaseName + ".ini.tmp") ? 1 : 0;

        // The history: whole lines that all read, appended or rewritten.
        const std::string history_bytes = folder.ReadFile(kHistoryFileName);
        ASSERT_TRUE(history_bytes.ends_with("\r\n")) << "torn history line";
        const WorkHistory history = ParseHistory(history_bytes);
        ASSERT_TRUE(history.unreadable.empty()) << "bad history line: " << history.unreadable.front();

        // The run log: whole lines only, each ending with CR LF; each logged save's day is in
        // the history, recorded before the log line was written.
        const std::string log = folder.ReadFile("LOG/TIMER.LOG");
        ASSERT_GE(log.size(), log_checked);
        size_t start = log_checked;
        for (size_t end = log.find("\r\n", start); end != std::string::npos; end = log.find("\r\n", start)) {
            const std::string line = log.substr(start, end - start);
            std::smatch match;
            ASSERT_TRUE(std::regex_match(line, match, log_line)) << "bad run-log line: " << line;
            const Date day = AddDays(MakeDate(1, 1, 2024), std::stoi(match[1].str()) % 3000);
            ASSERT_NE(history.Find(day), nullptr) << "lost day " << FormatDate(day);
            start = end + 2;
            ++log_lines;
        }
        ASSERT_EQ(start, log.size()) << "torn run-log line: " << log.substr(start);
        log_checked = start;
        const bool after_a_save = log_lines > saves_before;
        kills_after_a_save += after_a_save ? 1 : 0;
        saves_before = log_lines;
        kills_without_a_whole_save = after_a_save ? 0 : kills_without_a_whole_save + 1;
        if (kills_without_a_whole_save == kWidenAfter && longest_delay_us < 2'000'000) {
            longest_delay_us *= 2;
            kills_without_a_whole_save = 0;
        }
    }

    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::cout << kills << " kills in " << seconds << " s; " << log_lines << " saves logged, " << kills_after_a_save
              << " kills came after a whole save; file held 300 alarms " << old_seen << " times, 301 alarms "
              << new_seen << " times; settings temporary left by " << left_temporary << " kills; at most "
              << max_temporaries << " temporaries at once; a save took " << save_us
              << " us before the run, delays reached " << longest_delay_us << " us\n";
    // The kills must land inside saves, or the test proves nothing.
    EXPECT_GT(old_seen, 0);
    EXPECT_GT(new_seen, 0);
}

}  // namespace
}  // namespace vt
