// The recent-files scan with a long list (10,000 recent files, far more than a desktop keeps),
// read from memory so that the figure is the scan's own work: filtering, sorting through the
// growable list, and writing the pages.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "accesslog/recent_scan.h"
#include "fake_clock.h"
#include "platform/recent_files.h"
#include "scripted_dialogs.h"
#include "store/busy.h"
#include "temp_app_folder.h"

namespace {

constexpr int kFiles = 10000;
const vt::DateTime kLastScan = vt::MakeDateTime(vt::MakeDate(10, 3, 2024), 8, 0);

// Times spread over the five days after the last scan, in no order (the desktop lists files by
// name, not by time), with long paths like real ones.
class MemoryRecentFiles : public vt::RecentFiles {
public:
    MemoryRecentFiles() {
        for (int i = 0; i < kFiles; ++i) {
            const auto offset = std::chrono::seconds{(static_cast<long long>(i) * 7919) % (5 * 86400)};
            listing_.files.push_back({"documento_" + std::to_string(i) + ".odt",
                                      "/home/usuario/Documentos/Proyectos/Expediente " + std::to_string(i % 97) +
                                          "/documento_" + std::to_string(i) + ".odt",
                                      {},
                                      kLastScan + offset,
                                      false});
        }
    }
    vt::RecentListing List() override { return listing_; }

private:
    vt::RecentListing listing_;
};

class NoBusy : public vt::Busy {
public:
    void SetBusy(bool) override {}
};

void RunScans(benchmark::State& state, vt::DateTime last_scan) {
    vt::test::TempAppFolder folder;
    vt::test::FakeClock clock(vt::MakeDateTime(vt::MakeDate(15, 3, 2024), 9, 0));
    vt::test::ScriptedDialogs dialogs;
    NoBusy busy;
    MemoryRecentFiles recent;
    vt::Settings settings;
    for (auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove_all(folder.Path("LOG"));
        settings.UltimoAcceso = last_scan;
        state.ResumeTiming();
        benchmark::DoNotOptimize(vt::TratarArchivosRecientes(folder.Paths(), settings, clock, dialogs, busy, recent));
    }
}

// Target: 300 ms or less. Every file is new: 10,000 entries sorted and appended.
void BM_Scan_10000New(benchmark::State& state) {
    RunScans(state, kLastScan);
}
BENCHMARK(BM_Scan_10000New)->Unit(benchmark::kMillisecond);

// Target: 20 ms or less. The same list one scan later, on the same day: nothing is new.
void BM_Scan_10000NoneNew(benchmark::State& state) {
    RunScans(state, vt::MakeDateTime(vt::MakeDate(15, 3, 2024), 8, 30));
}
BENCHMARK(BM_Scan_10000NoneNew)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
