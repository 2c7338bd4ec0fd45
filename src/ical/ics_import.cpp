#include "ical/ics_import.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <set>

#include "agenda/alarm_editor.h"
#include "agenda/entries.h"
#include "agenda/recurrence.h"
#include "agenda/text_marks.h"
#include "ical/ics_common.h"
#include "ical/libical_support.h"
#include "platform/stream_dialogs.h"
#include "store/cp1252.h"

namespace vt {

namespace {

using ical::Component;

constexpr std::size_t kMaxTextChars = 250;
// Steps through one repetition rule before its next occurrence is given up as not found: a
// rule that is decades old and repeats every minute must not hold the program. The rule is
// walked from its start: libical's jump to a later start misplaces the instances of some rules.
constexpr int kMaxRuleSteps = 50000;
constexpr std::size_t kListedLines = 20;

bool StartsLine(std::string_view text, std::size_t at) {
    return at == 0 || text[at - 1] == '\n' || text[at - 1] == '\r';
}

// The last place `word` starts a line, ignoring letter case; npos when it never does.
std::size_t LastLineStarting(std::string_view text, std::string_view word) {
    for (std::size_t at = text.size(); at-- > 0;) {
        if (StartsLine(text, at) && text.size() - at >= word.size() &&
            std::equal(word.begin(), word.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                       [](char a, char b) { return std::toupper(static_cast<unsigned char>(a)) == b; })) {
            return at;
        }
    }
    return std::string_view::npos;
}

// A file cut short: what comes after its last whole event is dropped and the calendar closed,
// so that libical reads every event that arrived whole. True when an event was cut.
bool CloseCutFile(std::string& text) {
    std::string_view view = text;
    while (!view.empty() && std::isspace(static_cast<unsigned char>(view.back()))) {
        view.remove_suffix(1);
    }
    const std::size_t last_end = LastLineStarting(view, "END:VCALENDAR");
    if (last_end != std::string_view::npos && view.size() - last_end == std::strlen("END:VCALENDAR")) {
        return false;
    }
    const std::size_t event_end = LastLineStarting(text, "END:VEVENT");
    const std::size_t event_begin = LastLineStarting(text, "BEGIN:VEVENT");
    std::size_t keep = text.size();
    if (event_end != std::string::npos) {
        keep = text.find('\n', event_end);
        keep = keep == std::string::npos ? text.size() : keep + 1;
    } else if (event_begin != std::string::npos) {
        keep = event_begin;
    }
    const bool cut_event =
        event_begin != std::string::npos && (event_end == std::string::npos || event_begin > event_end);
    text.resize(keep);
    text += "\r\nEND:VCALENDAR\r\n";
    return cut_event;
}

// Text as one line of Windows-1252: breaks and other control characters become blanks,
// characters the file cannot hold "?". `changed` says whether any character was lost.
std::string CleanText(std::string_view raw, bool& lost, bool& cut) {
    std::string text;
    std::size_t chars = 0;
    for (std::size_t pos = 0; pos < raw.size();) {
        const Utf8Char c = DecodeUtf8At(raw, pos);
        const std::string_view bytes = raw.substr(pos, c.length);
        pos += c.length;
        if (chars == kMaxTextChars) {
            cut = true;
            break;
        }
        ++chars;
        if (!c.valid) {
            text += '?';
            lost = true;
        } else if (c.code < 0x20 || c.code == 0x7f || (c.code >= 0x80 && c.code < 0xa0)) {
            text += ' ';
        } else if (c.code >= 0x80 && Utf8ToCp1252(bytes) == "?") {
            text += '?';
            lost = true;
        } else {
            text += bytes;
        }
    }
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string XValue(icalcomponent* event, std::string_view name) {
    for (icalproperty* p = icalcomponent_get_first_property(event, ICAL_X_PROPERTY); p != nullptr;
         p = icalcomponent_get_next_property(event, ICAL_X_PROPERTY)) {
        const char* x_name = icalproperty_get_x_name(p);
        if (x_name != nullptr && name == x_name) {
            const char* value = icalproperty_get_x(p);
            return value == nullptr ? std::string{} : value;
        }
    }
    return {};
}

bool HasX(icalcomponent* event, std::string_view name) {
    for (icalproperty* p = icalcomponent_get_first_property(event, ICAL_X_PROPERTY); p != nullptr;
         p = icalcomponent_get_next_property(event, ICAL_X_PROPERTY)) {
        const char* x_name = icalproperty_get_x_name(p);
        if (x_name != nullptr && name == x_name) {
            return true;
        }
    }
    return false;
}

int Months(Date d) {
    return static_cast<int>(d.year()) * 12 + static_cast<int>(static_cast<unsigned>(d.month())) - 1;
}

// The stored date of a choice's alarm: its first occurrence from the present minute on, by
// the program's own rule. Choices that never drift are moved by whole cycles first, so that
// an event that began decades ago costs no more than one that begins today.
std::optional<Date> NextChoiceDate(Date first, int count, const std::string& unit, int minutes, DateTime now,
                                   bool drifts) {
    const Date today = DateOf(now);
    Date walk = first;
    if (!drifts && walk < today) {
        if (unit == "D") {
            const int cycle = 7 * count;
            const int behind = static_cast<int>((std::chrono::sys_days{today} - std::chrono::sys_days{walk}).count());
            walk = AddDays(walk, behind / cycle * cycle);
        } else if (unit == "M") {
            walk = AddMonths(walk, (Months(today) - Months(walk)) / count * count);
        } else {
            walk = AddYears(walk, (static_cast<int>(today.year()) - static_cast<int>(walk.year())) / count * count);
        }
    }
    StreamDialogs silent;
    const bool time_passed = minutes < MinutesOfDay(now);
    return NextOccurrence(walk, count, unit, today, kOpenEnd, 1, time_passed, today, silent);
}

bool ListEmpty(const short* values) {
    return values[0] == ICAL_RECURRENCE_ARRAY_MAX;
}

std::vector<short> ListOf(const short* values, std::size_t size) {
    std::vector<short> list;
    for (std::size_t i = 0; i < size && values[i] != ICAL_RECURRENCE_ARRAY_MAX; ++i) {
        list.push_back(values[i]);
    }
    return list;
}

int IcalWeekday(Date d) {
    return WeekdayMonday1(d) % 7 + 1;  // libical counts Sunday as 1
}

// The choice code ("01|D") an RRULE is exactly, from an event that starts on `first`; "" when
// it is none of them.
std::string ChoiceOfRule(const icalrecurrencetype& rule, Date first) {
    if (rule.count != 0 || !icaltime_is_null_time(rule.until) || rule.rscale != nullptr || !ListEmpty(rule.by_second) ||
        !ListEmpty(rule.by_minute) || !ListEmpty(rule.by_hour) || !ListEmpty(rule.by_year_day) ||
        !ListEmpty(rule.by_week_no) || !ListEmpty(rule.by_set_pos)) {
        return {};
    }
    const auto days = ListOf(rule.by_day, ICAL_BY_DAY_SIZE);
    const auto month_days = ListOf(rule.by_month_day, ICAL_BY_MONTHDAY_SIZE);
    const auto months = ListOf(rule.by_month, ICAL_BY_MONTH_SIZE);
    const int day = static_cast<int>(static_cast<unsigned>(first.day()));
    const int month = static_cast<int>(static_cast<unsigned>(first.month()));
    const bool weekday = WeekdayMonday1(first) <= 5;
    std::set<int> day_set;
    for (const short d : days) {
        if (icalrecurrencetype_day_position(d) != 0) {
            return {};
        }
        day_set.insert(icalrecurrencetype_day_day_of_week(d));
    }
    const std::set<int> working{2, 3, 4, 5, 6};
    const bool only_first_day = days.empty() || day_set == std::set<int>{IcalWeekday(first)};
    const bool same_month_day = month_days.empty() || (month_days.size() == 1 && month_days[0] == day);
    const bool same_month = months.empty() || (months.size() == 1 && months[0] == month);
    switch (rule.freq) {
        case ICAL_DAILY_RECURRENCE:
            if (rule.interval == 1 && day_set == working && month_days.empty() && months.empty() && weekday) {
                return "01|D";
            }
            return rule.interval == 7 && days.empty() && month_days.empty() && months.empty() ? "07|D" : "";
        case ICAL_WEEKLY_RECURRENCE:
            if (rule.interval != 1 || !month_days.empty() || !months.empty()) {
                return {};
            }
            if (day_set == working && weekday) {
                return "01|D";
            }
            return only_first_day ? "07|D" : "";
        case ICAL_MONTHLY_RECURRENCE:
            if ((rule.interval != 1 && rule.interval != 3) || !days.empty() || !months.empty() || !same_month_day ||
                day > 28) {
                return {};
            }
            return rule.interval == 1 ? "01|M" : "03|M";
        case ICAL_YEARLY_RECURRENCE: {
            const bool interval_ok =
                rule.interval == 1 || rule.interval == 2 || rule.interval == 4 || rule.interval == 6;
            if (!interval_ok || !days.empty() || !same_month || !same_month_day || (month == 2 && day == 29)) {
                return {};
            }
            return "0" + std::to_string(rule.interval) + "|A";
        }
        default:
            return {};
    }
}

bool IsChoiceCode(std::string_view code) {
    return std::any_of(kCadaChoices.begin(), kCadaChoices.end(),
                       [&](const CadaChoice& c) { return c.code == code && code != "00|D"; });
}

int DefaultNoticeDays(int count, std::string_view unit) {
    if (count == 0) {
        return 14;
    }
    return unit == "M" ? 7 : (unit == "A" ? 14 : 0);
}

class Planner {
public:
    Planner(const Settings& agenda, DateTime now, const std::string& zone, IcsImportPlan& plan)
        : now_(now), local_(ical::ZoneByName(zone)), local_name_(zone), plan_(plan) {
        for (const std::string& entry : agenda.Alarms) {
            alarm_keys_.insert(AlarmKey(entry));
        }
        for (const std::string& entry : agenda.Repetitions) {
            reminder_keys_.insert(entry);
        }
        alarm_room_ = std::max<std::ptrdiff_t>(0, kMaxAgendaEntries - agenda.Alarms.Count());
        reminder_room_ = std::max<std::ptrdiff_t>(0, kMaxAgendaEntries - agenda.Repetitions.Count());
    }

    void Calendar(icalcomponent* calendar) {
        for (icalcomponent* event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT);
             event != nullptr; event = icalcomponent_get_next_component(calendar, ICAL_VEVENT_COMPONENT)) {
            Event(calendar, event);
        }
    }

private:
    static std::string AlarmKey(std::string_view entry) {
        return std::string(entry.substr(0, 16)) + "|" + GetAlarmField(entry, 6);
    }

    // The zone of a time, or false when its TZID is known nowhere. A floating time or a date
    // gives nullptr: it is taken as local wall-clock time.
    bool ZoneOf(icalcomponent* calendar, icalproperty* property, const icaltimetype& time, icaltimezone*& zone) {
        zone = nullptr;
        if (time.is_date) {
            return true;
        }
        if (icaltime_is_utc(time)) {
            zone = icaltimezone_get_utc_timezone();
            return true;
        }
        icalparameter* tzid = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
        const char* name = tzid == nullptr ? nullptr : icalparameter_get_tzid(tzid);
        if (name == nullptr || *name == '\0') {
            return true;
        }
        zone = icalcomponent_get_timezone(calendar, name);
        // Some programs write a path in front of the zoneinfo name ("/mozilla.org/.../Europe/Madrid").
        for (std::string_view rest = name; zone == nullptr && !rest.empty();) {
            zone = ical::ZoneByName(std::string(rest));
            const auto slash = rest.find('/', 1);
            rest = slash == std::string_view::npos ? std::string_view{} : rest.substr(slash + (rest[0] == '/' ? 0 : 1));
            if (!rest.empty() && rest[0] == '/') {
                rest.remove_prefix(1);
            }
        }
        return zone != nullptr;
    }

    // The user's own zone, whether from the system or from the file's VTIMEZONE of that name.
    bool IsLocal(icaltimezone* zone) const {
        if (zone == local_) {
            return true;
        }
        const char* tzid = icaltimezone_get_tzid(zone);
        const char* location = icaltimezone_get_location(zone);
        return !local_name_.empty() &&
               ((tzid != nullptr && local_name_ == tzid) || (location != nullptr && local_name_ == location));
    }

    // A time of the event as the program's local wall-clock moment.
    std::optional<DateTime> Local(icaltimetype time, icaltimezone* zone) const {
        if (zone != nullptr && local_ != nullptr && zone != local_) {
            icaltimezone_convert_time(&time, zone, local_);
        }
        return ical::MomentOf(time);
    }

    // Now in the event's own zone, to compare its instances with.
    icaltimetype NowIn(icaltimezone* zone, bool date_only) const {
        icaltimetype now = ical::WallTime(now_);
        if (date_only) {
            now.hour = now.minute = now.second = 0;
            now.is_date = 0;
            return now;
        }
        if (zone != nullptr && local_ != nullptr && zone != local_) {
            icaltimezone_convert_time(&now, local_, zone);
        }
        now.second = 0;
        return now;
    }

    static bool SameMoment(const icaltimetype& a, const icaltimetype& b) {
        if (a.is_date || b.is_date) {
            return a.year == b.year && a.month == b.month && a.day == b.day;
        }
        return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour && a.minute == b.minute &&
               a.second == b.second;
    }

    static int Compare(icaltimetype a, icaltimetype b) {
        a.zone = b.zone = nullptr;
        a.is_date = b.is_date = 0;
        return icaltime_compare(a, b);
    }

    struct Instances {
        std::vector<icaltimetype> extra;     // RDATE
        std::vector<icaltimetype> excluded;  // EXDATE
        bool has_rule = false;
        int rules = 0;
        icalrecurrencetype rule{};
    };

    bool Excluded(const Instances& set, const icaltimetype& time) const {
        return std::any_of(set.excluded.begin(), set.excluded.end(),
                           [&](const icaltimetype& ex) { return SameMoment(ex, time); });
    }

    // The first instance at or after `from`, or the null time when there is none; nothing
    // when the rule could not be followed that far.
    std::optional<icaltimetype> FirstFrom(const icaltimetype& start, const Instances& set, const icaltimetype& from) {
        std::optional<icaltimetype> best;
        const auto consider = [&](const icaltimetype& t) {
            if (Compare(t, from) >= 0 && !Excluded(set, t) && (!best || Compare(t, *best) < 0)) {
                best = t;
            }
        };
        consider(start);
        for (const icaltimetype& t : set.extra) {
            consider(t);
        }
        if (set.has_rule) {
            icalrecur_iterator* it = icalrecur_iterator_new(set.rule, LateStart(set.rule, start, from));
            if (it == nullptr) {
                return std::nullopt;
            }
            bool found = false;
            for (int step = 0; step < kMaxRuleSteps; ++step) {
                const icaltimetype t = icalrecur_iterator_next(it);
                if (icaltime_is_null_time(t)) {
                    found = true;
                    break;
                }
                if (best && Compare(t, *best) >= 0) {
                    found = true;
                    break;
                }
                if (Compare(t, from) >= 0 && !Excluded(set, t)) {
                    consider(t);
                    found = true;
                    break;
                }
            }
            icalrecur_iterator_free(it);
            if (!found) {
                return std::nullopt;
            }
        }
        return best ? *best : icaltime_null_time();
    }

    // A start for the rule's walk shortly before `from`, whole cycles of the rule after the
    // event's own start, so that a rule years old costs no more than a new one: libical's steps
    // are slow, and its own jump misplaces instances. Only rules whose instances repeat exactly
    // after a fixed number of seconds (a week at most, or their interval) move; the moved start
    // stays before `from`, so that libical's habit of giving the start itself as an instance
    // cannot add one that the rule does not have.
    static icaltimetype LateStart(const icalrecurrencetype& rule, const icaltimetype& start, const icaltimetype& from) {
        long long unit = 0;
        switch (rule.freq) {
            case ICAL_SECONDLY_RECURRENCE:
                unit = 1;
                break;
            case ICAL_MINUTELY_RECURRENCE:
                unit = 60;
                break;
            case ICAL_HOURLY_RECURRENCE:
                unit = 3600;
                break;
            case ICAL_DAILY_RECURRENCE:
                unit = 86400;
                break;
            case ICAL_WEEKLY_RECURRENCE:
                unit = 7 * 86400;
                break;
            default:
                return start;
        }
        if (rule.count != 0 || rule.interval < 1 || !ListEmpty(rule.by_month) || !ListEmpty(rule.by_month_day) ||
            !ListEmpty(rule.by_year_day) || !ListEmpty(rule.by_week_no) || !ListEmpty(rule.by_set_pos)) {
            return start;
        }
        const long long period = unit * rule.interval;
        constexpr long long kWeek = 7 * 86400;
        const long long cycle = period / std::gcd(period, kWeek) * kWeek;
        icaltimetype a = start;
        icaltimetype b = from;
        a.zone = b.zone = nullptr;
        a.is_date = b.is_date = 0;
        const long long gap =
            static_cast<long long>(icaltime_as_timet(b)) - static_cast<long long>(icaltime_as_timet(a));
        const long long cycles = (gap - 1) / cycle - 1;
        if (cycles <= 0) {
            return start;
        }
        icaltimetype late = start;
        icaltime_adjust(&late, static_cast<int>(cycles * cycle / 86400), 0, 0,
                        static_cast<int>(cycles * cycle % 86400));
        return late;
    }

    void Unreadable(const std::string& what) { plan_.unreadable.push_back(what); }

    void Event(icalcomponent* calendar, icalcomponent* event) {
        const char* raw_summary = icalcomponent_get_summary(event);
        bool lost = false;
        bool cut = false;
        std::string text = CleanText(raw_summary == nullptr ? "" : raw_summary, lost, cut);
        const std::string named = text.empty() ? "un evento sin título" : "«" + text + "»";

        icalproperty* start_property = icalcomponent_get_first_property(event, ICAL_DTSTART_PROPERTY);
        if (start_property == nullptr) {
            Unreadable(named + ": no tiene fecha.");
            return;
        }
        const icaltimetype start = icalproperty_get_dtstart(start_property);
        icaltimezone* zone = nullptr;
        if (icaltime_is_null_time(start) || !ical::MomentOf(start)) {
            Unreadable(named + ": su fecha no se puede leer.");
            return;
        }
        if (!ZoneOf(calendar, start_property, start, zone)) {
            const char* tzid =
                icalparameter_get_tzid(icalproperty_get_first_parameter(start_property, ICAL_TZID_PARAMETER));
            Unreadable(named + ": zona horaria desconocida (" + std::string(tzid == nullptr ? "" : tzid) + ").");
            return;
        }
        if (text.empty()) {
            text = "(Sin título)";
        }

        Instances set;
        for (icalproperty* p = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY); p != nullptr;
             p = icalcomponent_get_next_property(event, ICAL_RRULE_PROPERTY)) {
            set.rule = icalproperty_get_rrule(p);
            set.has_rule = true;
            ++set.rules;
        }
        if (set.rules > 1 || (set.has_rule && set.rule.freq == ICAL_NO_RECURRENCE)) {
            Unreadable(named + ": su repetición no se entiende.");
            return;
        }
        for (icalproperty* p = icalcomponent_get_first_property(event, ICAL_RDATE_PROPERTY); p != nullptr;
             p = icalcomponent_get_next_property(event, ICAL_RDATE_PROPERTY)) {
            const icaldatetimeperiodtype value = icalproperty_get_rdate(p);
            set.extra.push_back(icaltime_is_null_time(value.time) ? value.period.start : value.time);
        }
        for (icalproperty* p = icalcomponent_get_first_property(event, ICAL_EXDATE_PROPERTY); p != nullptr;
             p = icalcomponent_get_next_property(event, ICAL_EXDATE_PROPERTY)) {
            set.excluded.push_back(icalproperty_get_exdate(p));
        }
        const bool repeats = set.has_rule || !set.extra.empty();

        const auto local_start = Local(start, zone);
        if (!local_start) {
            Unreadable(named + ": su fecha no se puede leer.");
            return;
        }
        const int minutes = MinutesOfDay(*local_start);
        const std::string time_text = FormatTimeOfDay(minutes);

        if (HasX(event, kReminderProperty) && !repeats) {
            AddReminder(BuildRepetitionEntry(FormatDate(DateOf(*local_start)), time_text, text));
            return;
        }

        // What the stored text was, when the summary is that text without its start tag.
        if (const std::string stored = XValue(event, kTextProperty); !stored.empty()) {
            bool stored_lost = false;
            bool stored_cut = false;
            const std::string clean = CleanText(stored, stored_lost, stored_cut);
            if (!stored_lost && !stored_cut && SplitStartDateTag(clean).text == text) {
                text = clean;
            }
        }

        std::string priority = "0";
        if (icalproperty* p = icalcomponent_get_first_property(event, ICAL_PRIORITY_PROPERTY)) {
            const int value = icalproperty_get_priority(p);
            priority = value >= 1 && value <= 4 ? "1" : "0";
        }
        const std::optional<int> notice = NoticeDays(event);

        // A local time of its own in the user's zone (or none at all) keeps each date as it is;
        // in another zone the dates of a series may fall differently, so it is not a choice.
        const bool local_dates = zone == nullptr || start.is_date || IsLocal(zone);
        const Date first = DateOf(*local_start);
        std::string code;
        if (repeats && local_dates) {
            code = Choice(event, start, set, first, minutes);
        }

        if (!code.empty()) {
            const int count = std::stoi(code.substr(0, 2));
            const std::string unit = code.substr(3);
            const bool drifts = set.extra.size() > 0;
            const auto date = NextChoiceDate(first, count, unit, minutes, now_, drifts);
            if (!date) {
                ++plan_.past;
                return;
            }
            // Exceptions and extra dates still to come are more than the choice can say.
            const icaltimetype from = ical::WallTime(MakeDateTime(*date, minutes / 60, minutes % 60));
            const bool future_changes =
                std::any_of(set.excluded.begin(), set.excluded.end(),
                            [&](const icaltimetype& t) { return Compare(t, from) >= 0; }) ||
                (set.has_rule && std::any_of(set.extra.begin(), set.extra.end(),
                                             [&](const icaltimetype& t) { return Compare(t, from) >= 0; }));
            if (!future_changes) {
                AddAlarm(BuildAlarmEntry(FormatDate(*date), time_text, count, unit,
                                         notice.value_or(DefaultNoticeDays(count, unit)), priority, text),
                         lost, cut);
                return;
            }
        }

        const auto next = FirstFrom(start, set, NowIn(zone, start.is_date));
        if (!next) {
            Unreadable(named + ": no se ha podido calcular su próxima fecha.");
            return;
        }
        if (icaltime_is_null_time(*next)) {
            ++plan_.past;
            return;
        }
        const auto moment = Local(*next, zone);
        if (!moment) {
            Unreadable(named + ": su fecha no se puede leer.");
            return;
        }
        const std::string entry = BuildAlarmEntry(FormatDate(DateOf(*moment)), FormatTime(*moment), 0, "D",
                                                  notice.value_or(DefaultNoticeDays(0, "D")), priority, text);
        if (repeats && AddAlarm(entry, lost, cut)) {
            plan_.simplified.push_back(
                GetAlarmField(entry, 7) + " " + text +
                ": se repite de una forma que el programa no tiene; se añade solo su próxima fecha.");
        } else if (!repeats) {
            AddAlarm(entry, lost, cut);
        }
    }

    // The choice of a repeating event, or "" when it is none exactly.
    std::string Choice(icalcomponent* event, const icaltimetype& start, const Instances& set, Date first,
                       int minutes) const {
        if (set.has_rule) {
            return ChoiceOfRule(set.rule, first);
        }
        // Dates written one by one: a series of this program's, when they are exactly the
        // dates its rule gives from the first one on.
        const std::string code = XValue(event, kRepeatProperty);
        if (!IsChoiceCode(code)) {
            return {};
        }
        std::vector<Date> dates{first};
        for (const icaltimetype& t : set.extra) {
            if (t.is_date != start.is_date || (!t.is_date && (t.hour * 60 + t.minute != minutes || t.second != 0))) {
                return {};
            }
            if (!Excluded(set, t)) {
                const auto moment = ical::MomentOf(t);
                if (!moment) {
                    return {};
                }
                dates.push_back(DateOf(*moment));
            }
        }
        std::sort(dates.begin(), dates.end());
        const std::string probe = BuildAlarmEntry(FormatDate(first), FormatTimeOfDay(minutes),
                                                  std::stoi(code.substr(0, 2)), code.substr(3), 0, "0", "x");
        return AlarmOccurrences(probe, first, dates.back()) == dates ? code : "";
    }

    // Days of the earliest alarm that rings a whole number of days before the start.
    static std::optional<int> NoticeDays(icalcomponent* event) {
        std::optional<int> days;
        for (icalcomponent* alert = icalcomponent_get_first_component(event, ICAL_VALARM_COMPONENT); alert != nullptr;
             alert = icalcomponent_get_next_component(event, ICAL_VALARM_COMPONENT)) {
            icalproperty* p = icalcomponent_get_first_property(alert, ICAL_TRIGGER_PROPERTY);
            if (p == nullptr || icalproperty_get_first_parameter(p, ICAL_RELATED_PARAMETER) != nullptr) {
                continue;
            }
            const icaltriggertype trigger = icalproperty_get_trigger(p);
            const icaldurationtype& d = trigger.duration;
            if (!icaltime_is_null_time(trigger.time) || !d.is_neg || d.hours != 0 || d.minutes != 0 || d.seconds != 0) {
                continue;
            }
            const long long total = static_cast<long long>(d.weeks) * 7 + d.days;
            if (total >= 1 && total <= 99) {
                days = std::max(days.value_or(0), static_cast<int>(total));
            }
        }
        return days;
    }

    bool AddAlarm(const std::string& entry, bool lost, bool cut) {
        if (!alarm_keys_.insert(AlarmKey(entry)).second) {
            ++plan_.duplicates;
            return false;
        }
        if (alarm_room_ == 0) {
            ++plan_.over_limit;
            return false;
        }
        --alarm_room_;
        plan_.alarms.push_back(entry);
        if (lost || cut) {
            plan_.simplified.push_back(GetAlarmField(entry, 7) + " " + GetAlarmField(entry, 6) +
                                       (lost ? ": caracteres que no caben cambiados por «?»." : ": texto recortado."));
        }
        return true;
    }

    void AddReminder(const std::string& entry) {
        if (!reminder_keys_.insert(entry).second) {
            ++plan_.duplicates;
        } else if (reminder_room_ == 0) {
            ++plan_.over_limit;
        } else {
            --reminder_room_;
            plan_.reminders.push_back(entry);
        }
    }

    DateTime now_;
    icaltimezone* local_;
    std::string local_name_;
    IcsImportPlan& plan_;
    std::set<std::string> alarm_keys_;
    std::set<std::string> reminder_keys_;
    std::ptrdiff_t alarm_room_ = 0;
    std::ptrdiff_t reminder_room_ = 0;
};

void AppendList(std::string& text, const std::string& heading, const std::vector<std::string>& lines) {
    if (lines.empty()) {
        return;
    }
    text += "\r\n\r\n" + heading;
    for (std::size_t i = 0; i < lines.size() && i < kListedLines; ++i) {
        text += "\r\n" + lines[i];
    }
    if (lines.size() > kListedLines) {
        text += "\r\n... y " + std::to_string(lines.size() - kListedLines) + " más.";
    }
}

}  // namespace

IcsImportPlan PlanIcsImport(std::string_view text, const Settings& agenda, DateTime now, const std::string& zone) {
    IcsImportPlan plan;
    std::string copy(text.substr(0, std::min(text.find('\0'), text.size())));
    if (copy.rfind("\xEF\xBB\xBF", 0) == 0) {
        copy.erase(0, 3);
    }
    if (LastLineStarting(copy, "BEGIN:VCALENDAR") == std::string::npos) {
        return plan;
    }
    const bool cut_event = CloseCutFile(copy);
    Component root{icalparser_parse_string(copy.c_str())};
    if (!root) {
        return plan;
    }
    std::vector<icalcomponent*> calendars;
    if (icalcomponent_isa(root.get()) == ICAL_VCALENDAR_COMPONENT) {
        calendars.push_back(root.get());
    } else {
        for (icalcomponent* c = icalcomponent_get_first_component(root.get(), ICAL_VCALENDAR_COMPONENT); c != nullptr;
             c = icalcomponent_get_next_component(root.get(), ICAL_VCALENDAR_COMPONENT)) {
            calendars.push_back(c);
        }
    }
    if (calendars.empty()) {
        return plan;
    }
    plan.calendar = true;
    Planner planner(agenda, now, zone, plan);
    for (icalcomponent* calendar : calendars) {
        planner.Calendar(calendar);
    }
    if (cut_event) {
        plan.unreadable.push_back("El último evento: el fichero se corta en medio de él.");
    }
    return plan;
}

bool ImportAddsNothing(const IcsImportPlan& plan) {
    return plan.alarms.empty() && plan.reminders.empty();
}

std::string ImportQuestion(const IcsImportPlan& plan) {
    std::string text;
    if (ImportAddsNothing(plan)) {
        text = "No hay nada que añadir a la agenda.";
    } else {
        text = "Se añadirán " + std::to_string(plan.alarms.size()) + " alarmas";
        if (!plan.reminders.empty()) {
            text += " y " + std::to_string(plan.reminders.size()) + " recordatorios";
        }
        text += ".";
    }
    AppendList(text, "Simplificadas:", plan.simplified);
    AppendList(text, "No se han podido leer y no se añaden:", plan.unreadable);
    if (plan.duplicates > 0) {
        text += "\r\n\r\nYa estaban en la agenda: " + std::to_string(plan.duplicates) + ".";
    }
    if (plan.past > 0) {
        text += "\r\n\r\nYa pasados, no se añaden: " + std::to_string(plan.past) + ".";
    }
    if (plan.over_limit > 0) {
        text += "\r\n\r\nNo caben en la agenda (como mucho " + std::to_string(kMaxAgendaEntries) +
                " entradas), no se añaden: " + std::to_string(plan.over_limit) + ".";
    }
    return text;
}

void ApplyIcsImport(const IcsImportPlan& plan, Settings& agenda, const RunLog& run_log) {
    for (const std::string& entry : plan.alarms) {
        StoreAlarm(agenda.Alarms, true, 0, entry, run_log);
    }
    for (const std::string& entry : plan.reminders) {
        AppendRepetition(agenda.Repetitions, entry);
    }
}

}  // namespace vt
