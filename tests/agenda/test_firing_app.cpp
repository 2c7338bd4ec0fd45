// Reminders as App fires them: alarms launched at the refresh, due repetitions shown on the
// tick one at a time, the user's answer stored, and nothing shown over another dialog.
#include <gtest/gtest.h>

#include "entry_lists.h"
#include "fake_clock.h"
#include "fake_ports.h"
#include "scripted_dialogs.h"
#include "shell/app.h"
#include "store/cp1252.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

class FiringTest : public ::testing::Test {
protected:
    FiringTest() { clock.Set(6, 3, 2024, 8, 12); }  // Wednesday

    // A settings file for today with these repetitions and alarms.
    void WriteSettings(std::initializer_list<std::string> repetitions, std::initializer_list<std::string> alarms) {
        std::string text =
            "[GENERAL]\r\nFECHA=06-03-24\r\nENTRADA1=08:00\r\nNUM_ALARMAS=" + std::to_string(alarms.size()) +
            "\r\n[REPETICIONES]\r\n";
        int n = 0;
        for (const auto& entry : repetitions) {
            text += "REP_" + Key(++n) + "=" + entry + "\r\n";
        }
        text += "[ALARMAS]\r\n";
        n = 0;
        for (const auto& entry : alarms) {
            text += "ALA_" + Key(++n) + "=" + entry + "\r\n";
        }
        folder.WriteFile("VendrakoTimer.ini", Utf8ToCp1252(text));
    }
    static std::string Key(int n) {
        char buf[16];
        std::snprintf(buf, sizeof buf, "%03d", n);
        return buf;
    }
    Outcome Start() {
        app = std::make_unique<App>(AppPorts{clock, dialogs, locale, lock, folder.ExecutablePath()}, view, tray);
        return app->Start("DESA");
    }
    std::vector<std::string> Repetitions() const { return test::Items(app->State().settings.Repetitions); }
    std::vector<std::string> Alarms() const { return test::Items(app->State().settings.Alarms); }
    std::string File() const { return folder.ReadFile("VendrakoTimer.ini"); }

    test::TempAppFolder folder;
    test::FakeClock clock;
    test::ScriptedDialogs dialogs;
    test::FakeLocaleInfo locale;
    test::FakeInstanceLock lock;
    test::RecordingMainView view;
    test::RecordingTrayView tray;
    std::unique_ptr<App> app;
};

TEST_F(FiringTest, ANeverRepeatingAlarmFromYesterdayBecomesAReminderShownAtTheFirstTick) {
    WriteSettings({}, {"05/03/2024 10:00 00 D 14 0 Cita con el dentista"});
    ASSERT_EQ(Start(), Outcome::Continue);
    EXPECT_TRUE(Alarms().empty());
    EXPECT_EQ(Repetitions(), std::vector<std::string>{"05/03/2024 10:00 Cita con el dentista"});
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
    EXPECT_EQ(Repetitions(), std::vector<std::string>{"06/03/2024 08:27 Cita con el dentista"});
    EXPECT_EQ(app->State().RepeatTarget, "06/03/2024 08:27 Cita con el dentista");
    EXPECT_FALSE(app->State().RepetitionShowing);
    EXPECT_NE(File().find("REP_001=06/03/2024 08:27 Cita con el dentista\r\n"), std::string::npos);
    EXPECT_EQ(view.repetition_menu, Repetitions());
    EXPECT_EQ(tray.notifications, std::vector<std::string>{"Repetición: 05/03/2024 10:00  Cita con el dentista"});
}

TEST_F(FiringTest, EscapeBringsTheSameTextBackFiveMinutesLaterAndNuncaDropsIt) {
    WriteSettings({"06/03/2024 08:10 Llamar a Ana"}, {});
    ASSERT_EQ(Start(), Outcome::Continue);
    app->Tick();  // the script is empty: the fake answers as Escape does
    EXPECT_EQ(Repetitions(), std::vector<std::string>{"06/03/2024 08:17 Llamar a Ana"});
    clock.Set(6, 3, 2024, 8, 17, 59);
    view.repeat_answers = {std::nullopt};
    app->Tick();
    EXPECT_TRUE(Repetitions().empty());
    EXPECT_EQ(app->State().RepeatTarget, "");
    EXPECT_EQ(File().find("REP_001"), std::string::npos);
    EXPECT_EQ(view.prompts.size(), 2u);
}

TEST_F(FiringTest, ARemindersMinuteCountsNotItsSeconds) {
    WriteSettings({"06/03/2024 08:13 Reunión"}, {});
    ASSERT_EQ(Start(), Outcome::Continue);
    clock.Set(6, 3, 2024, 8, 12, 59);
    app->Tick();
    EXPECT_TRUE(view.prompts.empty());
    clock.Set(6, 3, 2024, 8, 13, 0);
    app->Tick();
    EXPECT_EQ(view.prompts.size(), 1u);
}

TEST_F(FiringTest, AfterASleepEveryDueReminderIsShownInTurnAtTheFirstTick) {
    WriteSettings({"06/03/2024 12:00 Comer", "06/03/2024 09:00 Correo", "07/03/2024 09:00 Mañana"}, {});
    ASSERT_EQ(Start(), Outcome::Continue);
    clock.Set(6, 3, 2024, 15, 0);  // the machine slept until three
    view.repeat_answers = {std::nullopt, std::nullopt};
    app->Tick();
    ASSERT_EQ(view.prompts.size(), 2u);
    EXPECT_EQ(view.prompts[0].text, "Correo");
    EXPECT_EQ(view.prompts[1].text, "Comer");
    EXPECT_EQ(Repetitions(), std::vector<std::string>{"07/03/2024 09:00 Mañana"});
}

TEST_F(FiringTest, ADueReminderWaitsWhileAnotherDialogIsOpen) {
    WriteSettings({"06/03/2024 08:00 Correo"}, {});
    ASSERT_EQ(Start(), Outcome::Continue);
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

TEST_F(FiringTest, ThePromptShowsAnniversaryYearsAndAnEmptyText) {
    WriteSettings({"06/03/2024 08:00 Cumpleaños de Luis (1970)", "06/03/2024 08:01 "}, {});
    ASSERT_EQ(Start(), Outcome::Continue);
    view.repeat_answers = {std::nullopt, std::nullopt};
    app->Tick();
    ASSERT_EQ(view.prompts.size(), 2u);
    EXPECT_EQ(view.prompts[0].text, "Cumpleaños de Luis (54)");
    EXPECT_EQ(view.prompts[1].text, "(Sin mensaje)");
}

TEST_F(FiringTest, AHandledReminderRunsTheScanThatTheDialogHeldUp) {
    WriteSettings({"06/03/2024 08:00 Correo"}, {});
    ASSERT_EQ(Start(), Outcome::Continue);
    int scans = 0;
    app->SetScanHook([&] { ++scans; });
    app->Tick();
    EXPECT_EQ(scans, 1);
}

TEST_F(FiringTest, LeavingAClockInBoxLaunchesTheAlarmsOfTheDay) {
    WriteSettings({}, {"06/03/2024 18:00 07 D 00 1 Gimnasio"});
    ASSERT_EQ(Start(), Outcome::Continue);
    // Launched at start already: today's reminder, and the weekly alarm moved on a week.
    EXPECT_EQ(Repetitions(), std::vector<std::string>{"06/03/2024 18:00 Gimnasio"});
    EXPECT_EQ(Alarms(), std::vector<std::string>{"13/03/2024 18:00 07 D 00 1 Gimnasio"});
    // The next day, while still running: nothing happens until a refresh.
    clock.Set(13, 3, 2024, 9, 0);
    view.repeat_answers = {std::nullopt};
    app->Tick();  // yesterday's reminder
    EXPECT_EQ(Alarms(), std::vector<std::string>{"13/03/2024 18:00 07 D 00 1 Gimnasio"});
    app->LeaveClockIn(1, "13:00");
    EXPECT_EQ(Alarms(), std::vector<std::string>{"20/03/2024 18:00 07 D 00 1 Gimnasio"});
    EXPECT_EQ(Repetitions(), std::vector<std::string>{"13/03/2024 18:00 Gimnasio"});
}

TEST_F(FiringTest, UnreadableEntriesAreNamedOnceAndKeptThroughSaves) {
    WriteSettings({"06/03/2024 25:99 Hora imposible", "06/03/2024 09:00 Bien"}, {"xx/03/2024 10:00 00 D 14 0 Roto"});
    ASSERT_EQ(Start(), Outcome::Continue);
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    const std::string& text = dialogs.Shown()[0].text;
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    // The key as loaded, and the entry itself: keys are renumbered by the saves that follow.
    EXPECT_NE(text.find("\r\nREP_001=06/03/2024 25:99 Hora imposible"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\nALA_001=xx/03/2024 10:00 00 D 14 0 Roto"), std::string::npos) << text;
    clock.Set(6, 3, 2024, 9, 0);
    view.repeat_answers = {std::nullopt};
    app->Tick();
    EXPECT_EQ(view.prompts.size(), 1u) << "only the readable reminder fires";
    EXPECT_NE(File().find("=06/03/2024 25:99 Hora imposible\r\n"), std::string::npos) << File();
    EXPECT_NE(File().find("ALA_001=xx/03/2024 10:00 00 D 14 0 Roto\r\n"), std::string::npos) << File();
    EXPECT_EQ(dialogs.Shown().size(), 1u) << "reported once, at start-up only";
}

}  // namespace
}  // namespace vt
