// Reminders as App fires them: alarms launched at the refresh, due repetitions shown on the
// tick one at a time, the user's answer stored, and nothing shown over another dialog.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "app_harness.h"
#include "entry_lists.h"
#include "store/cp1252.h"

namespace vt {
namespace {

using Lines = std::vector<std::string>;

class FiringTest : public ::testing::Test, protected test::AppHarness {
protected:
    FiringTest() { clock.Set(6, 3, 2024, 8, 12); }  // Wednesday

    // Starts on a settings file for today with these repetitions and alarms.
    void StartWith(const Lines& repetitions, const Lines& alarms) {
        std::string text =
            "[GENERAL]\r\nFECHA=06-03-24\r\nENTRADA1=08:00\r\nNUM_ALARMAS=" + std::to_string(alarms.size()) +
            "\r\n[REPETICIONES]\r\n";
        const auto add = [&text](const char* prefix, size_t n, const std::string& entry) {
            char key[16];
            std::snprintf(key, sizeof key, "%s%03zu=", prefix, n + 1);
            text += key + entry + "\r\n";
        };
        for (size_t n = 0; n < repetitions.size(); ++n) {
            add("REP_", n, repetitions[n]);
        }
        text += "[ALARMAS]\r\n";
        for (size_t n = 0; n < alarms.size(); ++n) {
            add("ALA_", n, alarms[n]);
        }
        folder.WriteFile("VendrakoTimer.ini", Utf8ToCp1252(text));
        ASSERT_EQ(Start(), Outcome::Continue);
    }
    bool FileHas(const std::string& text) const { return SettingsFile().find(text) != std::string::npos; }
    Lines Repetitions() const { return test::Items(app->State().settings.Repetitions); }
    Lines Alarms() const { return test::Items(app->State().settings.Alarms); }
};

TEST_F(FiringTest, ANeverRepeatingAlarmFromYesterdayBecomesAReminderShownAtTheFirstTick) {
    StartWith({}, {"05/03/2024 10:00 00 D 14 0 Cita con el dentista"});
    EXPECT_TRUE(Alarms().empty());
    EXPECT_EQ(Repetitions(), Lines{"05/03/2024 10:00 Cita con el dentista"});
    EXPECT_EQ(folder.ReadFile("LOG/TIMER.LOG"),
              "[06/03/2024 08:12:00] REP> 05/03/2024 10:00 00 D 14 0 Cita con el dentista\r\n");
    EXPECT_EQ(view.repetition_menu, Repetitions());
    EXPECT_TRUE(view.prompts.empty()) << "nothing is shown before the first tick";

    view.on_repeat_prompt = [&] { EXPECT_TRUE(app->State().RepetitionShowing); };
    view.repeat_answers = {2};  // "15 Minutos"
    clock.AdvanceSeconds(30);
    app->Tick();
    ASSERT_EQ(view.prompts.size(), 1u);
    EXPECT_EQ(view.prompts[0].when, "05/03/2024 10:00");
    EXPECT_EQ(view.prompts[0].text, "Cita con el dentista");
    EXPECT_EQ(Repetitions(), Lines{"06/03/2024 08:27 Cita con el dentista"});
    EXPECT_FALSE(app->State().RepetitionShowing);
    EXPECT_NE(SettingsFile().find("REP_001=06/03/2024 08:27 Cita con el dentista\r\n"), std::string::npos);
    EXPECT_EQ(view.repetition_menu, Repetitions());
    EXPECT_EQ(tray.notifications, Lines{"Repetición: 05/03/2024 10:00  Cita con el dentista"});
}

TEST_F(FiringTest, EscapeBringsTheSameTextBackFiveMinutesLaterAndNuncaDropsIt) {
    StartWith({"06/03/2024 08:10 Llamar a Ana"}, {});
    int scans = 0;
    app->SetScanHook([&] { ++scans; });
    app->Tick();  // the script is empty: the fake answers as Escape does
    EXPECT_EQ(Repetitions(), Lines{"06/03/2024 08:17 Llamar a Ana"});
    EXPECT_EQ(scans, 1) << "a handled reminder runs the scan the dialog held up";
    clock.Set(6, 3, 2024, 8, 17, 59);
    view.repeat_answers = {std::nullopt};
    app->Tick();
    EXPECT_TRUE(Repetitions().empty());
    EXPECT_EQ(SettingsFile().find("REP_001"), std::string::npos);
    EXPECT_EQ(view.prompts.size(), 2u);
}

TEST_F(FiringTest, AfterASleepEveryDueReminderIsShownInTurnAtTheFirstTick) {
    StartWith({"06/03/2024 12:00 Comer", "06/03/2024 09:00 Correo", "07/03/2024 09:00 Mañana",
               "06/03/2024 08:00 Cumpleaños de Luis (1970)", "06/03/2024 08:01 "},
              {});
    clock.Set(6, 3, 2024, 15, 0);  // the machine slept until three
    view.repeat_answers = {std::nullopt, std::nullopt, std::nullopt, std::nullopt};
    app->Tick();
    ASSERT_EQ(view.prompts.size(), 4u);
    EXPECT_EQ(view.prompts[0].text, "Cumpleaños de Luis (54)");
    EXPECT_EQ(view.prompts[1].text, "(Sin mensaje)");
    EXPECT_EQ(view.prompts[2].text, "Correo");
    EXPECT_EQ(view.prompts[3].text, "Comer");
    EXPECT_EQ(Repetitions(), Lines{"07/03/2024 09:00 Mañana"});
}

// The session ends while the repeat-later dialog is open: closed so, the dialog says "5 Minutos"
// or nothing, and neither is the user's answer. The reminder stays, in memory and on disk.
TEST_F(FiringTest, WhenTheSessionEndsOverTheRepeatLaterDialogTheReminderStays) {
    for (const std::optional<int> closed_as : {std::optional<int>{0}, std::optional<int>{}}) {
        StartWith({"06/03/2024 08:10 Llamar a Ana"}, {});
        const std::string before = SettingsFile();
        int scans = 0;
        app->SetScanHook([&] { ++scans; });
        view.on_repeat_prompt = [&] { app->EndSession(); };
        view.repeat_answers = {closed_as};
        app->Tick();
        EXPECT_EQ(view.prompts.size(), 1u);
        EXPECT_EQ(Repetitions(), Lines{"06/03/2024 08:10 Llamar a Ana"});
        EXPECT_EQ(SettingsFile(), before);
        EXPECT_EQ(scans, 0);
        view.prompts.clear();
    }
}

TEST_F(FiringTest, ADueReminderWaitsWhileAnotherDialogIsOpen) {
    StartWith({"06/03/2024 08:00 Correo"}, {});
    view.modal_open = true;
    app->Tick();
    app->Tick();
    EXPECT_TRUE(view.prompts.empty());
    EXPECT_TRUE(app->State().RepetitionShowing) << "the tray keeps blinking its question mark";
    EXPECT_EQ(Repetitions().size(), 1u);
    view.modal_open = false;
    view.repeat_answers = {std::nullopt};
    app->Tick();
    EXPECT_EQ(view.prompts.size(), 1u);
    EXPECT_FALSE(app->State().RepetitionShowing);
}

TEST_F(FiringTest, LeavingAClockInBoxLaunchesTheAlarmsOfTheDay) {
    StartWith({}, {"06/03/2024 18:00 07 D 00 1 Gimnasio"});
    // Launched at start already: today's reminder, and the weekly alarm moved on a week.
    EXPECT_EQ(Repetitions(), Lines{"06/03/2024 18:00 Gimnasio"});
    EXPECT_EQ(Alarms(), Lines{"13/03/2024 18:00 07 D 00 1 Gimnasio"});
    // The next week, while still running: nothing happens until a refresh.
    clock.Set(13, 3, 2024, 9, 0);
    view.repeat_answers = {std::nullopt};
    app->Tick();  // last week's reminder
    EXPECT_EQ(Alarms(), Lines{"13/03/2024 18:00 07 D 00 1 Gimnasio"});
    app->LeaveClockIn(1, "13:00");
    EXPECT_EQ(Alarms(), Lines{"20/03/2024 18:00 07 D 00 1 Gimnasio"});
    EXPECT_EQ(Repetitions(), Lines{"13/03/2024 18:00 Gimnasio"});
}

TEST_F(FiringTest, UnreadableEntriesAreNamedOnceAndKeptThroughSaves) {
    StartWith({"06/03/2024 25:99 Hora imposible", "06/03/2024 09:00 Bien"}, {"xx/03/2024 10:00 00 D 14 0 Roto"});
    // Whatever else start-up shows, the report is the box that names the broken alarm.
    const auto report = std::find_if(dialogs.Shown().begin(), dialogs.Shown().end(), [](const MessageBox& box) {
        return box.text.find("ALA_001=") != std::string::npos;
    });
    ASSERT_NE(report, dialogs.Shown().end());
    const std::string text = report->text;
    EXPECT_EQ(report->icon, MsgIcon::Exclamation);
    const size_t shown_at_start = dialogs.Shown().size();
    // The key as loaded, and the entry itself: keys are renumbered by the saves that follow.
    EXPECT_NE(text.find("\r\nREP_001=06/03/2024 25:99 Hora imposible"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\nALA_001=xx/03/2024 10:00 00 D 14 0 Roto"), std::string::npos) << text;
    clock.Set(6, 3, 2024, 9, 0);
    view.repeat_answers = {std::nullopt};
    app->Tick();
    EXPECT_EQ(view.prompts.size(), 1u) << "only the readable reminder fires";
    EXPECT_NE(SettingsFile().find("=06/03/2024 25:99 Hora imposible\r\n"), std::string::npos);
    EXPECT_NE(SettingsFile().find("ALA_001=xx/03/2024 10:00 00 D 14 0 Roto\r\n"), std::string::npos);
    EXPECT_EQ(dialogs.Shown().size(), shown_at_start) << "reported once, at start-up only";
}

// With 998 reminders, the most the file holds, a due alarm waits in the alarms, told once, and
// fires as soon as a reminder leaves; a reminder put off for later replaces itself and fits.
TEST_F(FiringTest, WithFullRemindersADueAlarmWaitsAndFiresAsSoonAsThereIsRoom) {
    const std::string full =
        "La lista de repeticiones está llena (caben 998). Las alarmas que tocan ahora avisarán en cuanto borres "
        "alguna repetición.";
    const auto told = [&] {
        const Lines texts = dialogs.Texts();
        return std::count(texts.begin(), texts.end(), full);
    };
    Lines reminders{"06/03/2024 08:00 Correo", "06/03/2024 08:05 Pan"};
    reminders.resize(998, "09/03/2024 10:00 Compra");
    const Lines alarms{"05/03/2024 10:00 01 D 00 0 Diario", "06/03/2024 07:00 00 D 14 0 Fichar"};
    StartWith(reminders, alarms);
    for (int load = 0; load < 2; ++load) {  // and the same once the saved file is loaded again
        EXPECT_EQ(Alarms(), alarms);
        EXPECT_EQ(Repetitions().size(), 998u);
        EXPECT_EQ(told(), 1);
        EXPECT_TRUE(FileHas("NUM_ALARMAS=2\r\n"));
        EXPECT_TRUE(FileHas("ALA_002=06/03/2024 07:00 00 D 14 0 Fichar\r\n"));
        EXPECT_TRUE(FileHas("REP_998=09/03/2024 10:00 Compra\r\n\r\n[ALARMAS]"));
        EXPECT_FALSE(folder.Exists("LOG/TIMER.LOG"));
        app.reset();
        dialogs.Forget();
        ASSERT_EQ(Start(), Outcome::Continue);
    }
    app->LeaveClockIn(1, "13:00");
    EXPECT_EQ(told(), 1) << "told once";

    // Correo put off, Pan dropped: Fichar takes the place and fires at once. Diario owes a
    // reminder for yesterday and one for today, and waits for a second place.
    view.repeat_answers = {2, std::nullopt, std::nullopt};
    app->Tick();
    ASSERT_EQ(view.prompts.size(), 3u);
    EXPECT_EQ(view.prompts[2].text, "Fichar");
    EXPECT_EQ(Alarms(), Lines{"05/03/2024 10:00 01 D 00 0 Diario"});
    EXPECT_EQ(Repetitions().size(), 997u);
    clock.Set(6, 3, 2024, 8, 27);
    view.repeat_answers = {std::nullopt, std::nullopt};
    app->Tick();  // Correo again, dropped: both of Diario's reminders fit, yesterday's is due
    ASSERT_EQ(view.prompts.size(), 5u);
    EXPECT_EQ(view.prompts[4].when, "05/03/2024 10:00");
    EXPECT_EQ(Alarms(), Lines{"07/03/2024 10:00 01 D 00 0 Diario"});
    EXPECT_EQ(Repetitions().front(), "06/03/2024 10:00 Diario");
    EXPECT_EQ(folder.ReadFile("LOG/TIMER.LOG"),
              "[06/03/2024 08:12:00] REP> 06/03/2024 07:00 00 D 14 0 Fichar\r\n"
              "[06/03/2024 08:27:00] REP> 05/03/2024 10:00 01 D 00 0 Diario\r\n");
    EXPECT_EQ(told(), 1);
    const Lines kept = Repetitions();
    app.reset();
    ASSERT_EQ(Start(), Outcome::Continue);
    EXPECT_EQ(Repetitions(), kept);
    EXPECT_EQ(Alarms(), Lines{"07/03/2024 10:00 01 D 00 0 Diario"});
}

}  // namespace
}  // namespace vt
