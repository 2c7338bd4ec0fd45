// The history window's wiring: the month as a table under its chart, the navigation, and an
// edited cell going through the recorder's check ("Formato no válido.") into the file.
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include "fake_clock.h"
#include "history/history_recorder.h"
#include "history/history_window.h"
#include "history/qt_history_chart.h"
#include "qt_test_support.h"
#include "scripted_dialogs.h"
#include "temp_app_folder.h"

class HistoryWindowTest : public QObject {
    Q_OBJECT

private slots:
    void showsTheMonthAndChecksAnEditedCell() {
        vt::test::TempAppFolder folder;
        folder.WriteFile("Historico.csv",
                         "Fecha;Entrada 1;Salida 1;Entrada 2;Salida;Jornada;Previsto;Ausencia\r\n"
                         "04/03/2024;08:00;14:00;15:00;17:40;P;08:00;\r\n"
                         "05/03/2024;08:00;;;;C;08:00;\r\n");
        vt::test::FakeClock clock(vt::MakeDateTime(vt::MakeDate(6, 3, 2024), 9, 0));
        vt::test::ScriptedDialogs dialogs;
        vt::AppState state;
        vt::HistoryRecorder recorder(state, clock, dialogs);
        recorder.StartDay(folder.Path("Historico.csv"));
        vt::HistoryWindow window(recorder, dialogs);
        QVERIFY(vt::test::ShowActive(window));

        QTableWidget* table = window.table();
        QCOMPARE(table->rowCount(), 31);
        QStringList monday;
        for (int c = 0; c < table->columnCount(); ++c) {
            monday << table->item(3, c)->text();
        }
        QCOMPARE(monday, (QStringList{"04/03/2024", "Lunes", "08:00", "14:00", "15:00", "17:40", "8:40", "08:00",
                                      "+0:40", ""}));
        QCOMPARE(table->item(4, vt::kColWorked)->text(), u"abierta"_s);
        // Monday: 8:40 worked of 8:00, the month's balance +0:40 from then on.
        const auto& days = window.chart()->days();
        QCOMPARE(days.size(), 31u);
        QCOMPARE(days[3].worked * 60, 520.0);
        QCOMPARE(days[3].required * 60, 480.0);
        QCOMPARE(days[3].running * 60, 40.0);

        // A malformed time is refused with the clock-in boxes' words and the cell comes back.
        table->item(4, vt::kColSalida)->setText(u"1630"_s);
        QCOMPARE(dialogs.Texts(), std::vector<std::string>{"Formato no válido."});
        QCOMPARE(table->item(4, vt::kColSalida)->text(), u""_s);
        table->item(4, vt::kColSalida)->setText(u"16:30"_s);
        QCOMPARE(table->item(4, vt::kColBalance)->text(), u"+0:30"_s);
        QVERIFY(folder.ReadFile("Historico.csv").find("05/03/2024;08:00;;;16:30;C;08:00;\r\n") != std::string::npos);
        QVERIFY(window.totals()->text().startsWith(u"Mes: trabajado 17:10, previsto 16:00, saldo +1:10"_s));

        window.findChild<QPushButton*>(u"cmdMes2"_s)->click();
        QCOMPARE(table->rowCount(), 30);
        QCOMPARE(table->item(0, vt::kColDay)->text(), u"01/04/2024"_s);
    }
};

QTEST_MAIN(HistoryWindowTest)
#include "tst_history_window.moc"
