#pragma once
// The record of working days: one line per day in a ";"-separated text file that a person can
// read and a spreadsheet can open, and the flexitime balance computed from it.
//
//   Fecha;Entrada 1;Salida 1;Entrada 2;Salida;Jornada;Previsto;Ausencia
//   06/03/2024;08:00;14:00;15:00;17:40;P;08:00;
//
// "Jornada" is "C" (continuous) or "P" (split) and "Previsto" the required time, both as the
// weekly schedule stood that day, so a later change of schedule never touches a past day.
// "Ausencia" is empty or one of "festivo", "vacaciones", "baja": such a day requires nothing.
// A day with no "Entrada 1" and no absence is a scheduled day on which the user never clocked in.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/dates.h"

namespace vt {

inline constexpr const char* kHistoryFileName = "Historico.csv";
inline constexpr const char* kHistoryHeader = "Fecha;Entrada 1;Salida 1;Entrada 2;Salida;Jornada;Previsto;Ausencia";
// The absences the user can mark, in the order the window offers them; "" is none.
inline constexpr const char* kAbsenceKinds[] = {"", "festivo", "vacaciones", "baja"};

struct HistoryDay {
    Date date{};
    std::string entrada1;  // "hh:mm" or empty
    std::string salida1;
    std::string entrada2;
    std::string salida;  // the time the user left; empty while the day is open
    std::string mode = "C";
    std::string required = "08:00";
    std::string absence;

    friend bool operator==(const HistoryDay&, const HistoryDay&) = default;
};

enum class DayKind {
    Closed,      // every time known: counts
    Absence,     // marked festivo / vacaciones / baja: requires nothing
    NoClockIn,   // scheduled, never clocked in: requires its time, nothing worked
    Open,        // a past day whose end was not seen (or a break with no return): counts nothing yet
    InProgress,  // today, not left yet
    Future,      // a date after today (the clock was set back): counts nothing
};

// What a history file holds once read: the days by date (a date given twice keeps its later
// line) and the lines that do not read, byte for byte.
struct WorkHistory {
    std::vector<HistoryDay> days;
    std::vector<std::string> unreadable;

    const HistoryDay* Find(Date date) const;
    // Puts the day in its place, replacing the one of the same date.
    void Put(HistoryDay day);
};

// Parses the file's bytes (Windows-1252). The header line is skipped wherever it stands.
WorkHistory ParseHistory(std::string_view bytes);
// One day as a line (UTF-8, without line end); the reading of a line, or nothing.
std::string HistoryLine(const HistoryDay& day);
std::optional<HistoryDay> ParseHistoryLine(std::string_view line);
// The whole file as a user's edit rewrites it (Windows-1252, CR LF): the header, the days in
// date order, then the lines that did not read, kept as they were.
std::string HistoryFileBytes(const WorkHistory& history);

// Why a day's times cannot stand, or nothing: each time "hh:mm" or empty, none earlier than the
// one before it, no time after an empty one except the leaving time after "Salida 1".
std::optional<std::string> HistoryDayProblem(const HistoryDay& day);

DayKind KindOf(const HistoryDay& day, Date today);
// Minutes worked on a day whose times are all known; nothing while it is open.
std::optional<int> WorkedMinutes(const HistoryDay& day);
// Minutes the day requires: zero on an absence.
int RequiredMinutes(const HistoryDay& day);

struct Totals {
    int worked = 0;
    int required = 0;
    int counted = 0;  // days in the totals
    int open = 0;     // past days waiting for their end
    int future = 0;   // days after today
    int Balance() const { return worked - required; }
};

// The totals of the days from..to (both included).
Totals SumDays(const WorkHistory& history, Date from, Date to, Date today);
Date WeekStart(Date date);  // the Monday of its week
Date MonthStart(Date date);
Date MonthEnd(Date date);

struct BalanceSummary {
    Totals day;
    Totals week;
    Totals month;
    Totals all;
};
// The day's, its week's (Monday to Sunday), its month's and every record's totals.
BalanceSummary Summarize(const WorkHistory& history, Date date, Date today);

// "8:40", "-0:20", "+1:05" (sign only when asked, or when negative).
std::string FormatMinutes(int minutes, bool signed_plus = false);

// The shown days as CSV for a Spanish spreadsheet (";" separator, comma decimals, times as
// hh:mm) with a total row; Windows-1252, CR LF.
std::string HistoryCsv(const WorkHistory& history, Date from, Date to, Date today);

}  // namespace vt
