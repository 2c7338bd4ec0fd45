#include "workday/workday.h"

#include <array>

#include "platform/dialogs.h"
#include "workday/departure.h"

namespace vt {

std::string WeekdayName(Date date) {
    static const std::array<const char*, 8> names{"",       "Lunes",   "Martes", "Miércoles",
                                                  "Jueves", "Viernes", "Sábado", "Domingo"};
    return names[static_cast<size_t>(WeekdayMonday1(date))];
}

void TakeDaySchedule(AppState& state, Date date) {
    const auto day = static_cast<size_t>(WeekdayMonday1(date));
    state.TodayHours = state.settings.DayHours[day];
    state.TodayMode = state.settings.DayMode[day];
}

const std::string& StoredTime(const Settings& settings, int index) {
    switch (index) {
        case 0:
            return settings.Entrada1;
        case 1:
            return settings.Salida1;
        default:
            return settings.Entrada2;
    }
}

void StoreTime(Settings& settings, int index, std::string time) {
    switch (index) {
        case 0:
            settings.Entrada1 = std::move(time);
            break;
        case 1:
            settings.Salida1 = std::move(time);
            break;
        default:
            settings.Entrada2 = std::move(time);
            break;
    }
}

void SettleWorkDate(AppState& state, DateTime now) {
    Settings& s = state.settings;
    const Date today = DateOf(now);
    if (s.WorkDate.empty()) {
        const Date yesterday = AddDays(today, -1);
        s.WorkDate = FormatWorkDate(yesterday);
        TakeDaySchedule(state, yesterday);
    }
    const auto work_date = ParseWorkDate(s.WorkDate);
    if (state.TodayHours.empty() && work_date) {
        TakeDaySchedule(state, *work_date);
    }
    if (!work_date || *work_date < today) {
        s.WorkDate = FormatWorkDate(today);
        TakeDaySchedule(state, today);
        s.Entrada1 = FormatTime(now);
        s.Salida1.clear();
        s.Entrada2.clear();
    }
}

std::vector<std::string> UnreadableClockIns(const Settings& settings) {
    static constexpr std::array<const char*, 3> kKeys{"ENTRADA1", "SALIDA1", "ENTRADA2"};
    std::vector<std::string> unreadable;
    for (int index = 0; index < 3; ++index) {
        const std::string& time = StoredTime(settings, index);
        if (!time.empty() && !ParseTimeOfDay(time)) {
            unreadable.push_back(std::string(kKeys[static_cast<size_t>(index)]) + "=" + time);
        }
    }
    return unreadable;
}

bool IsStorableClockIn(std::string_view text) {
    return text.empty() || text.size() == 5;
}

void UpdateDeparture(AppState& state, int now_minutes, Dialogs& dialogs) {
    const Settings& s = state.settings;
    const Departure d =
        ComputeDeparture({state.TodayHours, state.TodayMode, s.Entrada1, s.Salida1, s.Entrada2}, now_minutes);
    if (!d.consistent && !state.ClockInErrorReported) {
        dialogs.Warn(kClockInErrorMessage);
    }
    // Once the times are in order again, breaking them again is told again.
    state.ClockInErrorReported = !d.consistent;
    state.DepartureStage = d.stage;
    state.DepartureLabel = d.label;
    state.StatusText = d.status;
}

void ApplyScheduleToToday(AppState& state, Dialogs& dialogs) {
    if (const auto work_date = ParseWorkDate(state.settings.WorkDate)) {
        TakeDaySchedule(state, *work_date);
    }
    if (state.TodayMode != "C") {
        return;
    }
    Settings& s = state.settings;
    if (!s.Salida1.empty() || !s.Entrada2.empty()) {
        // Asked whether the mode really changed or not: a continuous day has no afternoon.
        dialogs.Inform("Has cambiado a jornada continua.\r\nSe borrarán los fichajes de la tarde.");
    }
    s.Salida1.clear();
    s.Entrada2.clear();
}

}  // namespace vt
