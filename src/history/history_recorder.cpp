#include "history/history_recorder.h"

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/cp1252.h"
#include "store/error_text.h"
#include "store/text_file.h"

namespace vt {

namespace {

constexpr const char* kHistoryTitle = "Histórico de jornadas";

// The schedule's hours as the history stores them; hours that do not read require nothing.
std::string StoredHours(const std::string& hours) {
    const auto minutes = ParseTimeOfDay(hours);
    return minutes ? FormatTimeOfDay(*minutes) : "00:00";
}

bool SameClockIns(const HistoryDay& a, const HistoryDay& b) {
    return a.entrada1 == b.entrada1 && a.salida1 == b.salida1 && a.entrada2 == b.entrada2;
}

}  // namespace

HistoryRecorder::HistoryRecorder(AppState& state, Clock& clock, Dialogs& dialogs)
    : state_(state), clock_(clock), dialogs_(dialogs) {}

Date HistoryRecorder::Today() const {
    return vt::Today(clock_);
}

HistoryDay HistoryRecorder::DayFromSettings(Date date, const std::string& hours, const std::string& mode) const {
    const Settings& s = state_.settings;
    HistoryDay day{date, s.Entrada1, s.Salida1, s.Entrada2, "", mode == "C" ? "C" : "P", StoredHours(hours), ""};
    if (const HistoryDay* recorded = history_.Find(date)) {
        day.absence = recorded->absence;
        // The same clock-ins keep the leaving time already seen.
        if (SameClockIns(*recorded, day)) {
            day.salida = recorded->salida;
        }
    }
    return day;
}

void HistoryRecorder::StartDay(const std::string& history_file) {
    path_ = history_file;
    const FileContents file = ReadWholeFile(path_);
    if (file.outcome == ReadOutcome::Unreadable) {
        usable_ = false;
        dialogs_.Warn("No se puede leer el histórico de jornadas (" + ErrorText(file.error) +
                      "). Las jornadas de esta sesión no se registrarán.");
        return;
    }
    usable_ = true;
    history_ = ParseHistory(file.bytes);
    if (!history_.unreadable.empty()) {
        std::string text = std::string("Estas líneas del histórico de jornadas (") + kHistoryFileName +
                           ") no se pueden leer. Se conservan tal como están, pero no cuentan en ningún saldo:\r\n";
        for (const std::string& line : history_.unreadable) {
            text += "\r\n" + Cp1252ToUtf8(line);
        }
        dialogs_.Warn(text);
    }

    const Settings& s = state_.settings;
    const auto last = ParseWorkDate(s.WorkDate);
    const Date today = Today();
    if (!last || *last >= today) {
        return;
    }
    std::vector<HistoryDay> days;
    const auto weekday = [&](Date date) { return static_cast<size_t>(WeekdayMonday1(date)); };
    // The last work day as the schedule stood then: its own record says how, if it has one.
    const HistoryDay* recorded = history_.Find(*last);
    HistoryDay last_day = recorded != nullptr
                              ? DayFromSettings(*last, recorded->required, recorded->mode)
                              : DayFromSettings(*last, s.DayHours[weekday(*last)], s.DayMode[weekday(*last)]);
    if (recorded != nullptr || !last_day.entrada1.empty()) {
        days.push_back(last_day);
    }
    // Scheduled days in between with no start of the program: only once there is a history.
    const auto gap = (std::chrono::sys_days{today} - std::chrono::sys_days{*last}).count() - 1;
    if (!history_.days.empty() && gap <= kMostDaysFilled) {
        for (Date d = AddDays(*last, 1); d < today; d = AddDays(d, 1)) {
            const std::string hours = StoredHours(s.DayHours[weekday(d)]);
            if (history_.Find(d) == nullptr && hours != "00:00") {
                days.push_back({d, "", "", "", "", s.DayMode[weekday(d)] == "C" ? "C" : "P", hours, ""});
            }
        }
    }
    Record(days, true);
}

void HistoryRecorder::RecordClockIns() {
    const auto date = ParseWorkDate(state_.settings.WorkDate);
    if (!date) {
        return;
    }
    const HistoryDay day = DayFromSettings(*date, state_.TodayHours, state_.TodayMode);
    // A day never clocked in has nothing to record until it is.
    if (day.entrada1.empty() && history_.Find(*date) == nullptr) {
        return;
    }
    Record({day}, true);
}

void HistoryRecorder::RecordLeaving() {
    const auto date = ParseWorkDate(state_.settings.WorkDate);
    const DateTime now = clock_.Now();
    // Past midnight the leaving was not seen on its day: the day stays open.
    if (!date || *date != DateOf(now) || state_.settings.Entrada1.empty()) {
        return;
    }
    HistoryDay day = DayFromSettings(*date, state_.TodayHours, state_.TodayMode);
    day.salida = FormatTime(now);
    // Leaving "before" the last clock-in (a time typed ahead) is no leaving time at all.
    if (HistoryDayProblem(day)) {
        day.salida.clear();
    }
    Record({day}, false);
}

void HistoryRecorder::Record(const std::vector<HistoryDay>& days, bool report_errors) {
    if (!usable_ || path_.empty()) {
        return;
    }
    std::string text;
    std::vector<HistoryDay> changed;
    for (const HistoryDay& day : days) {
        const HistoryDay* recorded = history_.Find(day.date);
        // Clock-ins that do not follow each other are not recorded: the main window already
        // says so, and the line would not read back.
        if ((recorded != nullptr && *recorded == day) || HistoryDayProblem(day)) {
            continue;
        }
        text += HistoryLine(day) + "\r\n";
        changed.push_back(day);
    }
    if (changed.empty()) {
        return;
    }
    if (!PathExists(path_)) {
        text = std::string(kHistoryHeader) + "\r\n" + text;
    }
    if (const std::error_code error = AppendToFile(path_, Utf8ToCp1252(text))) {
        if (report_errors) {
            dialogs_.Warn("No se ha podido guardar la jornada en el histórico (" + ErrorText(error) + ").");
        }
        return;
    }
    for (HistoryDay& day : changed) {
        history_.Put(std::move(day));
    }
}

std::vector<Date> HistoryRecorder::OpenDays() const {
    std::vector<Date> open;
    const Date today = Today();
    for (const HistoryDay& day : history_.days) {
        if (KindOf(day, today) == DayKind::Open) {
            open.push_back(day.date);
        }
    }
    return open;
}

std::optional<std::string> HistoryRecorder::Edit(const HistoryDay& day) {
    if (auto problem = HistoryDayProblem(day)) {
        return problem;
    }
    if (!usable_) {
        return "No se puede leer el histórico de jornadas.";
    }
    WorkHistory edited = history_;
    edited.Put(day);
    if (const std::error_code error = WriteFileAtomically(path_, Utf8ToCp1252(HistoryFileBytes(edited)))) {
        return "No se ha podido guardar el histórico (" + ErrorText(error) + ").";
    }
    history_ = std::move(edited);
    return std::nullopt;
}

void HistoryRecorder::AskToCompleteOpenDays() {
    const Date today = Today();
    for (const Date date : OpenDays()) {
        // A break with no return asks for the return first, then the leaving time.
        while (KindOf(*history_.Find(date), today) == DayKind::Open) {
            HistoryDay day = *history_.Find(date);
            const bool no_return = !day.salida1.empty() && day.entrada2.empty();
            const std::optional<std::string> answer = dialogs_.Ask(
                {"La jornada del " + FormatDate(date) + " quedó abierta. " +
                     (no_return ? "Introduce la hora de vuelta (Entrada 2):" : "Introduce la hora de salida:"),
                 kHistoryTitle, ""});
            if (!answer) {
                break;
            }
            (no_return ? day.entrada2 : day.salida) = *answer;
            if (const std::optional<std::string> problem = Edit(day)) {
                dialogs_.Warn(*problem);
            }
        }
    }
}

std::optional<std::string> HistoryRecorder::Export(const std::string& path, Date from, Date to) const {
    if (const std::error_code error = WriteFileAtomically(path, HistoryCsv(history_, from, to, Today()))) {
        return "No se ha podido exportar (" + ErrorText(error) + ").";
    }
    return std::nullopt;
}

}  // namespace vt
