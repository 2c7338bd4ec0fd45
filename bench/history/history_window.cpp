// The history window opened on a full month with ten years behind it: made, filled, its chart
// laid out and painted once, on the offscreen platform.
// Target: 100 ms or less.
#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "fake_clock.h"
#include "history/history_recorder.h"
#include "history/history_window.h"
#include "scripted_dialogs.h"
#include "temp_app_folder.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    vt::test::TempAppFolder folder;
    std::string bytes = std::string(vt::kHistoryHeader) + "\r\n";
    for (vt::Date d = vt::MakeDate(1, 1, 2016); d <= vt::MakeDate(31, 12, 2025); d = vt::AddDays(d, 1)) {
        if (vt::WeekdayMonday1(d) <= 5) {
            const std::string leave = "17:" + std::to_string(10 + static_cast<unsigned>(d.day()) % 50);
            bytes += vt::HistoryLine({d, "08:00", "14:00", "15:00", leave, "P", "08:00", ""}) + "\r\n";
        }
    }
    folder.WriteFile(vt::kHistoryFileName, bytes);
    vt::test::FakeClock clock(vt::MakeDateTime(vt::MakeDate(31, 12, 2025), 18, 0));
    vt::test::ScriptedDialogs dialogs;
    vt::AppState state;
    std::vector<double> runs;
    for (int run = 0; run < 15; ++run) {
        QElapsedTimer timer;
        timer.start();
        vt::HistoryRecorder recorder(state, clock, dialogs);
        recorder.StartDay(folder.Path(vt::kHistoryFileName));
        vt::HistoryWindow window(recorder, dialogs);
        window.show();
        QApplication::processEvents();
        const QPixmap shot = window.grab();  // one whole paint
        runs.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        if (shot.isNull()) {
            return 1;
        }
    }
    std::sort(runs.begin(), runs.end());
    std::printf("history window, 10 years, a full month: first %.1f ms, median %.1f ms, worst %.1f ms\n", runs.front(),
                runs[runs.size() / 2], runs.back());
    return 0;
}
