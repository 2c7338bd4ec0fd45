// Kills a process that saves the settings in a loop, at random moments, many times over. After
// every kill the settings file must load whole with one of the two contents the loop writes,
// every backup slot must hold a whole copy, the history must read whole and the run log must hold
// only whole lines.
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

#include "history/work_history.h"
#include "scripted_dialogs.h"
#include "store/settings_store.h"
#include "temp_app_folder.h"

extern char** environ;

namespace vt {
namespace {

using Clock = std::chrono::steady_clock;
constexpr int kBackupSlots = 25;
constexpr unsigned long kTimedSaves = 6;

unsigned long EnvNumber(const char* name, unsigned long fallback) {
    const char* text = std::getenv(name);
    return text == nullptr || *text == '\0' ? fallback : std::strtoul(text, nullptr, 10);
}

int Reap(pid_t pid) {
    int status = 0;
    return waitpid(pid, &status, 0) == pid ? status : -1;
}

// Starts save_loop in folder, numbering its saves from first and making saves of them (0: until
// killed), and returns its pid (-1 when it cannot start) once the loop says it is set up.
pid_t StartLoop(const test::TempAppFolder& folder, unsigned long first, unsigned long saves) {
    std::string args[] = {VT_SAVE_LOOP_PATH, folder.Folder(), folder.Paths().ExeBaseName, std::to_string(first),
                          std::to_string(saves)};
    char* argv[] = {args[0].data(), args[1].data(), args[2].data(), args[3].data(), args[4].data(), nullptr};
    int fds[2] = {-1, -1};
    EXPECT_EQ(pipe2(fds, O_CLOEXEC), 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fds[1], STDOUT_FILENO);
    pid_t pid = -1;
    EXPECT_EQ(posix_spawn(&pid, argv[0], &actions, nullptr, argv, environ), 0) << argv[0];
    posix_spawn_file_actions_destroy(&actions);
    close(fds[1]);
    char byte = 0;
    EXPECT_TRUE(pid > 0 && read(fds[0], &byte, 1) == 1) << "save_loop ended before it was set up";
    close(fds[0]);
    return pid;
}

// Lets the loop make its saves to the end; returns how long they took, in microseconds.
long RunSaves(const test::TempAppFolder& folder, unsigned long first, unsigned long saves) {
    const pid_t pid = StartLoop(folder, first, saves);
    const auto started = Clock::now();
    const int status = pid > 0 ? Reap(pid) : -1;
    EXPECT_TRUE(pid > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0) << "save_loop status " << status;
    return static_cast<long>(std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - started).count());
}

TEST(KillDuringSave, SettingsFileAndRunLogSurviveSigkillAtAnyMoment) {
    const unsigned long kills = std::max(500ul, EnvNumber("VT_CRASH_KILLS", 500));
    const unsigned long seed = EnvNumber("VT_CRASH_SEED", std::random_device{}());
    std::cout << "kills " << kills << ", seed " << seed << " (VT_CRASH_SEED=" << seed << " repeats this run)\n";
    RecordProperty("seed", std::to_string(seed));
    std::mt19937 random(static_cast<std::mt19937::result_type>(seed));

    // The two contents, as the loop itself writes them for an even and an odd save, each made in
    // a fresh folder.
    std::string contents[2];
    Settings values[2];
    for (unsigned long n = 0; n < 2; ++n) {
        test::TempAppFolder scratch;
        RunSaves(scratch, n, 1);
        contents[n] = scratch.ReadFile("VendrakoTimer.ini");
        test::ScriptedDialogs dialogs;
        ASSERT_TRUE(LoadSettingsFromBytes(contents[n], values[n], dialogs));
        ASSERT_TRUE(dialogs.Shown().empty());
        ASSERT_EQ(values[n].Alarms.Count(), 300 + static_cast<int>(n));
    }
    ASSERT_NE(contents[0], contents[1]);
    const auto whole = [&](const std::string& bytes) { return bytes == contents[0] || bytes == contents[1]; };

    test::TempAppFolder folder;
    const AppPaths& paths = folder.Paths();
    // Every name the saves may leave, a temporary beside any file they write.
    const std::regex expected_name(
        R"(Backup|LOG|LOG/TIMER\.LOG|(VendrakoTimer\.ini|Historico\.csv|Backup/VendrakoTimer_(\d{3})\.ini)(\.tmp)?)");
    // One whole line of the run log, CR LF cut off; "\xBA" is "º" in Windows-1252.
    const std::regex log_line(R"(\[\d{2}/\d{2}/\d{4} \d{2}:\d{2}:\d{2}\] Guardado n\xBA (\d+) con 30[01] alarmas)");
    // Bytes of the run log already found whole, its lines, and how many there were at the last kill.
    size_t log_checked = 0, log_lines = 0, saves_before = kTimedSaves;
    int seen[2] = {0, 0};  // how often the file held 300 alarms, and 301
    int left_temporary = 0, max_temporaries = 0, kills_after_a_save = 0, kills_without_a_whole_save = 0;
    // Start from a saved file, as the program does once it has run, and time those saves: the kills
    // must land both inside saves and after whole ones, so the delays span a few saves as long
    // as they take on this machine (the syncs make a save last from a millisecond on a quiet disk
    // to tens of them on a busy one). When the disk slows down during the run and many kills in a
    // row come before any save ends, the span doubles.
    const long save_us = RunSaves(folder, 1, kTimedSaves) / static_cast<long>(kTimedSaves);
    ASSERT_EQ(folder.ReadFile("VendrakoTimer.ini"), contents[0]);
    long longest_delay_us = std::clamp<long>(3 * save_us, 2'000, 500'000);
    const auto started = Clock::now();

    for (unsigned long kill_number = 1; kill_number <= kills; ++kill_number) {
        SCOPED_TRACE("kill " + std::to_string(kill_number) + " of seed " + std::to_string(seed));
        // Each run starts with the content the file does not hold yet, most of the time at least,
        // so a kill during a run's first save still has two contents to tear between.
        const pid_t pid = StartLoop(folder, kill_number, 0);
        ASSERT_GT(pid, 0) << "the loop did not start";
        std::this_thread::sleep_for(
            std::chrono::microseconds{std::uniform_int_distribution<long>(50, longest_delay_us)(random)});
        kill(pid, SIGKILL);
        const int status = Reap(pid);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
            << "the loop ended on its own, status " << status;

        // The settings file: whole, one of the two contents, and it loads without a word.
        const std::string bytes = folder.ReadFile("VendrakoTimer.ini");
        ASSERT_TRUE(whole(bytes)) << "missing or torn settings file, " << bytes.size() << " bytes";
        Settings loaded;
        test::ScriptedDialogs dialogs;
        ASSERT_TRUE(LoadSettings(paths.SettingsFile(), loaded, dialogs, DateTime{}));
        ASSERT_TRUE(dialogs.Shown().empty()) << dialogs.Texts().front();
        const int which = bytes == contents[0] ? 0 : 1;
        ASSERT_EQ(loaded, values[which]);
        ++seen[which];

        // Nothing but the expected files, every whole backup a whole copy; a temporary is no
        // damage but must not pile up.
        int temporaries = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(paths.AppFolder)) {
            const std::string name = entry.path().string().substr(paths.AppFolder.size());
            std::smatch match;
            ASSERT_TRUE(std::regex_match(name, match, expected_name)) << name;
            ASSERT_EQ(entry.is_directory(), name == "Backup" || name == "LOG") << name;
            temporaries += match[3].matched ? 1 : 0;
            if (match[2].matched) {
                ASSERT_TRUE(std::stoi(match[2]) >= 1 && std::stoi(match[2]) <= kBackupSlots) << name;
                ASSERT_TRUE(match[3].matched || whole(folder.ReadFile(name))) << "torn backup " << name;
            }
        }
        // At most one temporary per file a save writes: the settings file and each backup slot.
        ASSERT_LE(temporaries, 1 + kBackupSlots);
        max_temporaries = std::max(max_temporaries, temporaries);
        left_temporary += folder.Exists("VendrakoTimer.ini.tmp") ? 1 : 0;

        // The history: whole lines that all read, appended or rewritten.
        const std::string history_bytes = folder.ReadFile(kHistoryFileName);
        ASSERT_TRUE(history_bytes.ends_with("\r\n")) << "torn history line";
        const WorkHistory history = ParseHistory(history_bytes);
        ASSERT_TRUE(history.unreadable.empty()) << "bad history line: " << history.unreadable.front();

        // The run log: whole lines only, each ending with CR LF; each logged save's day is in
        // the history, recorded before the log line was written.
        const std::string log = folder.ReadFile("LOG/TIMER.LOG");
        ASSERT_GE(log.size(), log_checked);
        for (size_t end = log.find("\r\n", log_checked); end != std::string::npos;
             end = log.find("\r\n", log_checked)) {
            const std::string line = log.substr(log_checked, end - log_checked);
            std::smatch match;
            ASSERT_TRUE(std::regex_match(line, match, log_line)) << "bad run-log line: " << line;
            const Date day = AddDays(MakeDate(1, 1, 2024), std::stoi(match[1].str()) % 3000);
            ASSERT_NE(history.Find(day), nullptr) << "lost day " << FormatDate(day);
            log_checked = end + 2;
            ++log_lines;
        }
        ASSERT_EQ(log_checked, log.size()) << "torn run-log line: " << log.substr(log_checked);
        const bool after_a_save = log_lines > saves_before;
        saves_before = log_lines;
        kills_after_a_save += after_a_save ? 1 : 0;
        kills_without_a_whole_save = after_a_save ? 0 : kills_without_a_whole_save + 1;
        if (kills_without_a_whole_save == 40 && longest_delay_us < 2'000'000) {
            longest_delay_us *= 2;
            kills_without_a_whole_save = 0;
        }
    }

    std::cout << kills << " kills in " << std::chrono::duration<double>(Clock::now() - started).count() << " s; "
              << log_lines << " saves logged, " << kills_after_a_save << " kills came after a whole save; file held"
              << " 300 alarms " << seen[0] << " times, 301 alarms " << seen[1] << " times; settings temporary left by "
              << left_temporary << " kills; at most " << max_temporaries << " temporaries at once; a save took "
              << save_us << " us before the run, delays reached " << longest_delay_us << " us\n";
    // The kills must land inside saves, or the test proves nothing.
    EXPECT_GT(seen[0], 0);
    EXPECT_GT(seen[1], 0);
}

}  // namespace
}  // namespace vt
