#pragma once
#include <string>
#include <string_view>

namespace vt {

// How near the departure is, as the tray icon shows it.
//  0 clock-ins inconsistent            6  exactly 10 minutes left
//  1 continuous day, no arrival yet    7  6 to 9 minutes left
//  2 split day, no arrival yet         8  exactly 5 minutes left
//  3 split day, no "Salida 1" yet      9  2 to 4 minutes left
//  4 split day, no "Entrada 2" yet     10 exactly 1 minute left
//  5 11 or more minutes left           11 departure reached or passed
inline constexpr int kStageInconsistent = 0;
inline constexpr int kStageDeparted = 11;

inline constexpr const char* kDepartureNotSet = "...";
inline constexpr const char* kDepartureErrorLabel = "(Error. Revisa los fichajes.)";
inline constexpr const char* kStatusNotSet = "Hora de salida no establecida.";
inline constexpr const char* kStatusError = "Error en configuración. Revise los fichajes.";
inline constexpr const char* kClockInErrorMessage =
    "Hay errores en los fichajes. Revisa que:\r\n"
    "\r\n"
    " - Todos los fichajes sean consecutivos.\r\n"
    " - No haya fichajes intermedios vacíos.";

// The day's clock-ins and what the schedule asks for them.
struct WorkdayInput {
    std::string_view today_hours;  // "hh:mm"
    std::string_view today_mode;   // "C" continuous, anything else split
    std::string_view entrada1;     // "hh:mm" or empty
    std::string_view salida1;
    std::string_view entrada2;
};

struct Departure {
    int stage = kStageInconsistent;
    bool consistent = false;
    std::string label;   // the departure label's caption
    std::string status;  // the one-line status text
};

// Minutes since midnight of an "hh:mm" text (what the departure arithmetic works on).
int ClockTextMinutes(std::string_view time_text);

// The departure time and warning stage at the given minute of the day.
Departure ComputeDeparture(const WorkdayInput& day, int now_minutes);

// The stage for the minutes left before the departure.
int StageForMinutesLeft(int minutes_left);

}  // namespace vt
