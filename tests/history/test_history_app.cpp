// The work history as App keeps it: what the program sees of a day becomes its line, a day
// whose end was not seen waits for the user, and the balance adds the days up.
#include <gtest/gtest.h>

#include <sstream>

#include "app_harness.h"
#include "history/vendrako_command.h"
#include "store/text_file.h"

namespace vt {
namespace {

constexpr const char* kHeader = "Fecha;Entrada 1;Salida 1;Entrada 2;Salida;Jornada;Previsto;Ausencia\r\n";
constexpr const char* kSchedule =
    "[CONFIG]\r\nLUNES=08:00|P\r\nMARTES=08:00|P\r\nMIERCOLES=08:00|P\r\nJUEVES=08:00|C\r\n"
    "VIERNES=07:00|C\r\nSABADO=00:00|C\r\nDOMINGO=00:00|C\r\n";

class HistoryAppTest : public ::testing::Test, protected test::AppHarness {
protected:
    // A new run of the program at this moment; the last one ended however the test left it.
    void StartAt(int day, int month, int hour, int minute) {
        clock.Set(day, month, 2024, hour, minute);
        ASSERT_EQ(Start(), Outcome::Continue);
    }
    void WriteSettings(const std::string& general) {
        folder.WriteFile("VendrakoTimer.ini", "[GENERAL]\r\n" + general + kSchedule);
    }
    std::string HistoryFile() const { return folder.ReadFile("Historico.csv"); }
    BalanceSummary Balance(int day, int month) {
        return Summarize(app->History().History(), MakeDate(day, month, 2024), Today(clock));
    }
};

TEST_F(HistoryAppTest, ADayLeftOpenOverMidnightIsAskedForThenCompleted) {
    WriteSettings("FECHA=06-03-24\r\n");
    StartAt(7, 3, 8, 0);  // Thursday, continuous
    clock.Set(8, 3, 2024, 0, 30);
    app->Shutdown(false);  // past midnight the leaving time is not Thursday's
    StartAt(8, 3, 8, 10);
    EXPECT_EQ(app->History().OpenDays(), std::vector<Date>{MakeDate(7, 3, 2024)});
    EXPECT_EQ(Balance(7, 3).day.open, 1);
    EXPECT_EQ(Balance(7, 3).week.worked, 0) << "an open day is never guessed";

    dialogs.Forget();
    dialogs.QueueInput("1630");
    dialogs.QueueInput("16:30");
    app->OpenHistory();
    ASSERT_EQ(dialogs.Asked().size(), 2u);
    EXPECT_EQ(dialogs.Asked()[0].prompt, "La jornada del 07/03/2024 quedó abierta. Introduce la hora de salida:");
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"Formato no válido."});
    EXPECT_EQ(view.history_shown, 1);
    EXPECT_EQ(Balance(7, 3).day.Balance(), 30);
    // The user's edit is the one rewrite of the file: whole, in date order.
    EXPECT_EQ(HistoryFile(),
              std::string(kHeader) + "07/03/2024;08:00;;;16:30;C;08:00;\r\n08/03/2024;08:10;;;;C;07:00;\r\n");
    app->OpenHistory();
    EXPECT_EQ(dialogs.Asked().size(), 2u) << "nothing left to ask";
}

TEST_F(HistoryAppTest, PastDaysKeepTheirScheduleDaysOffRequireNothingAndMissedDaysCount) {
    WriteSettings("FECHA=01-03-24\r\n");
    StartAt(4, 3, 8, 0);  // Monday
    clock.Set(4, 3, 2024, 16, 0);
    app->Shutdown(false);
    StartAt(5, 3, 8, 0);
    view.edit_schedule = [](auto& hours, auto&) {
        hours[1] = "07:00";
        hours[2] = "06:00";
        return true;
    };
    app->OpenSchedule();
    EXPECT_EQ(app->History().History().Find(MakeDate(4, 3, 2024))->required, "08:00");
    EXPECT_EQ(app->History().History().Find(MakeDate(5, 3, 2024))->required, "06:00") << "today follows";

    HistoryDay tuesday = *app->History().History().Find(MakeDate(5, 3, 2024));
    tuesday.absence = "festivo";
    EXPECT_EQ(app->History().Edit(tuesday), std::nullopt);
    EXPECT_EQ(Balance(5, 3).day.required, 0);

    // Wednesday and Thursday the program never ran: each counts as a scheduled day not worked.
    StartAt(8, 3, 9, 0);
    EXPECT_EQ(app->History().History().Find(MakeDate(6, 3, 2024))->required, "08:00");
    const BalanceSummary week = Balance(8, 3);
    EXPECT_EQ(week.week.worked, 8 * 60);
    EXPECT_EQ(week.week.Balance(), -16 * 60);
    EXPECT_EQ(week.week.counted, 4);
}

TEST_F(HistoryAppTest, TotalsAcrossAMonthFromAFileWithOddLinesAndItsCsv) {
    const std::string prepared = std::string(kHeader) +
                                 "28/02/2024;08:00;;;16:30;C;08:00;\r\n"
                                 "29/02/2024;;;;;C;08:00;vacaciones\r\n"
                                 "01/03/2024;;;;;C;07:00;\r\n"
                                 "01/03/2024;08:00;25:00;;;C;07:00;\r\n"
                                 "01/03/2024;08:00;;;15:30;C;07:00;\r\n"
                                 "04/03/2024;08:00;13:00;;16:00;P;08:00;\r\n"
                                 "20/03/2024;08:00;;;16:00;C;08:00;\r\n";
    folder.WriteFile("Historico.csv", prepared);
    WriteSettings("FECHA=05-03-24\r\nENTRADA1=08:00\r\n");
    StartAt(5, 3, 9, 0);
    EXPECT_EQ(dialogs.Texts().front(),
              std::string("Estas líneas del histórico de jornadas (Historico.csv) no se pueden leer. Se "
                          "conservan tal como están, pero no cuentan en ningún saldo:\r\n\r\n"
                          "01/03/2024;08:00;25:00;;;C;07:00;"));
    EXPECT_EQ(HistoryFile(), prepared + "05/03/2024;08:00;;;;P;08:00;\r\n") << "only ever appended";

    // Monday 26/02 to Sunday 03/03: +0:30, a holiday, then the later line of 01/03 (+0:30).
    EXPECT_EQ(Balance(1, 3).week.worked, 8 * 60 + 30 + 7 * 60 + 30);
    EXPECT_EQ(Balance(1, 3).week.Balance(), 60);
    EXPECT_EQ(Balance(29, 2).month.Balance(), 30);
    // March: 04/03 waits for its return from the break, today is under way, 20/03 is a day
    // the clock was set back from and is shown apart.
    const BalanceSummary march = Balance(5, 3);
    EXPECT_EQ(march.month.Balance(), 30);
    EXPECT_EQ(march.month.open, 1);
    EXPECT_EQ(march.month.future, 1);
    EXPECT_EQ(march.all.Balance(), 60);
    EXPECT_EQ(KindOf(*app->History().History().Find(MakeDate(20, 3, 2024)), Today(clock)), DayKind::Future);

    ASSERT_EQ(app->History().Export(folder.Path("marzo.csv"), MakeDate(1, 3, 2024), MakeDate(31, 3, 2024)),
              std::nullopt);
    EXPECT_EQ(folder.ReadFile("marzo.csv"), ReadWholeFile(VT_TEST_DATA "history/marzo_2024.csv").bytes);
}

// `vendrako estado` reads the folder as it stands, while the program may be running, and
// writes nothing to it.
TEST_F(HistoryAppTest, TheStatusCommandPrintsTheDayAsALineAndAsJson) {
    folder.WriteFile("Historico.csv", std::string(kHeader) + "04/03/2024;08:00;;;16:30;P;08:00;\r\n" +
                                          "05/03/2024;;;;;P;08:00;festivo\r\n");
    WriteSettings(
        "FECHA=06-03-24\r\nENTRADA1=08:00\r\nSALIDA1=14:00\r\nENTRADA2=15:00\r\nNUM_ALARMAS=0\r\n"
        "[REPETICIONES]\r\nREP_001=06/03/2024 09:00 Ya pasado\r\nREP_002=07/03/2024 09:00 Llamar a Jos\xE9\r\n");
    const std::string settings = SettingsFile();
    const auto run = [&](std::vector<std::string> args, int status) {
        std::ostringstream out, err;
        args.insert(args.begin(), {"--carpeta", folder.Folder()});
        EXPECT_EQ(RunVendrakoCommand(args, "/nonexistent/", clock, out, err), status) << err.str();
        return out.str() + err.str();
    };
    clock.Set(6, 3, 2024, 16, 20);
    EXPECT_EQ(run({"estado"}, 0), "Salida 17:00 (quedan 0:40) | Semana +0:30 | Aviso 07/03/2024 09:00 Llamar a José\n");
    clock.Set(6, 3, 2024, 17, 15);
    EXPECT_EQ(run({"estado", "--json"}, 0),
              R"({"text":"Salida 17:00 (0:15 de más) | Semana +0:30 | Aviso 07/03/2024 09:00 Llamar a José",)"
              R"("tooltip":"Semana (sin hoy): +0:30\nMes: +0:30\nTotal: +0:30","class":"cumplida",)"
              R"("hora_salida":"17:00","minutos_restantes":-15,"saldo_semana_minutos":30,)"
              R"("proximo_aviso":{"momento":"07/03/2024 09:00","texto":"Llamar a José"}})"
              "\n");
    clock.Set(7, 3, 2024, 8, 0);
    EXPECT_EQ(run({"estado"}, 0), "Sin fichar hoy | Semana +0:30 | Aviso 07/03/2024 09:00 Llamar a José\n");
    EXPECT_EQ(SettingsFile(), settings);
    EXPECT_FALSE(folder.Exists("Backup"));

    EXPECT_EQ(run({"estado", "--carpeta", folder.Path("falta")}, 1).rfind("No se puede leer la carpeta de datos ", 0),
              0u);
    EXPECT_EQ(run({"resumen"}, 2).rfind("Uso: vendrako", 0), 0u);
}

}  // namespace
}  // namespace vt
