#include "ical/ics_export.h"

#include <cstdint>
#include <cstdio>
#include <map>

#include "agenda/char_positions.h"
#include "agenda/entries.h"
#include "agenda/launching.h"
#include "agenda/recurrence.h"
#include "agenda/text_marks.h"
#include "ical/ics_common.h"
#include "ical/libical_support.h"

namespace vt {

namespace {

using ical::Component;

std::string Hex64(std::string_view text) {
    // FNV-1a: the same text always gives the same UID, on every machine.
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char c : text) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ULL;
    }
    char buf[20];
    std::snprintf(buf, sizeof buf, "%016llx", static_cast<unsigned long long>(hash));
    return buf;
}

class Writer {
public:
    Writer(DateTime now, const std::string& zone_name) : zone_name_(zone_name), zone_(ical::ZoneByName(zone_name)) {
        calendar_.reset(icalcomponent_new(ICAL_VCALENDAR_COMPONENT));
        icalcomponent_add_property(calendar_.get(), icalproperty_new_prodid("-//VendrakoTimer//Agenda//ES"));
        icalcomponent_add_property(calendar_.get(), icalproperty_new_version("2.0"));
        icalcomponent_add_property(calendar_.get(), icalproperty_new_calscale("GREGORIAN"));
        stamp_ = ical::WallTime(now);
        if (zone_ != nullptr) {
            icaltimezone_convert_time(&stamp_, zone_, icaltimezone_get_utc_timezone());
        }
        stamp_.zone = icaltimezone_get_utc_timezone();
        if (Named()) {
            AddTimeZone(DateOf(now));
        }
    }

    // A new event with its UID: `key` is what stays the same while the alarm's date moves on,
    // and a second alarm with the same key gets the next number.
    icalcomponent* NewEvent(const std::string& key) {
        const int n = ++uid_uses_[key];
        const std::string uid = Hex64(key) + "-" + std::to_string(n) + "@vendrakotimer";
        icalcomponent* event = icalcomponent_new(ICAL_VEVENT_COMPONENT);
        icalcomponent_add_property(event, icalproperty_new_uid(uid.c_str()));
        icalcomponent_add_property(event, icalproperty_new_dtstamp(stamp_));
        icalcomponent_add_component(calendar_.get(), event);
        return event;
    }

    void AddStart(icalcomponent* event, DateTime moment) {
        icalproperty* start = icalproperty_new_dtstart(Value(moment));
        Zoned(start);
        icalcomponent_add_property(event, start);
    }

    void AddDate(icalcomponent* event, DateTime moment) {
        icaldatetimeperiodtype value{};
        value.time = Value(moment);
        value.period = icalperiodtype_null_period();
        icalproperty* rdate = icalproperty_new_rdate(value);
        Zoned(rdate);
        icalcomponent_add_property(event, rdate);
    }

    std::string Text() { return ical::AsText(calendar_.get()); }

private:
    bool Named() const { return zone_ != nullptr && zone_ != icaltimezone_get_utc_timezone(); }

    icaltimetype Value(DateTime moment) const {
        icaltimetype value = ical::WallTime(moment);
        if (zone_ == icaltimezone_get_utc_timezone()) {
            value.zone = zone_;
        }
        return value;
    }

    void Zoned(icalproperty* property) const {
        if (Named()) {
            icalproperty_add_parameter(property, icalparameter_new_tzid(zone_name_.c_str()));
        }
    }

    // The zone's rules from the year before the export on: the full history back to 1900
    // would triple the size of the file for nothing.
    void AddTimeZone(Date today) {
        Component zone{icalcomponent_new_clone(icaltimezone_get_component(zone_))};
        icaltimetype from = icaltime_null_time();
        from.year = static_cast<int>(today.year()) - 1;
        from.month = 1;
        from.day = 1;
        from.zone = icaltimezone_get_utc_timezone();
        icaltimezone_truncate_vtimezone(zone.get(), from, icaltime_null_time(), 0);
        // The plain zoneinfo name, as calendar programs write and look it up.
        if (icalproperty* tzid = icalcomponent_get_first_property(zone.get(), ICAL_TZID_PROPERTY)) {
            icalproperty_set_tzid(tzid, zone_name_.c_str());
        }
        icalcomponent_add_component(calendar_.get(), zone.release());
    }

    std::string zone_name_;
    icaltimezone* zone_;
    Component calendar_;
    icaltimetype stamp_{};
    std::map<std::string, int> uid_uses_;
};

void AddAlert(icalcomponent* event, const std::string& summary, int days_before) {
    icalcomponent* alert = icalcomponent_new(ICAL_VALARM_COMPONENT);
    icalcomponent_add_property(alert, icalproperty_new_action(ICAL_ACTION_DISPLAY));
    icalcomponent_add_property(alert, icalproperty_new_description(summary.c_str()));
    icaltriggertype trigger{};
    trigger.time = icaltime_null_time();
    trigger.duration = icaldurationtype_null_duration();
    if (days_before > 0) {
        trigger.duration.is_neg = 1;
        trigger.duration.days = static_cast<unsigned>(days_before);
    }
    icalcomponent_add_property(alert, icalproperty_new_trigger(trigger));
    icalcomponent_add_component(event, alert);
}

void AddX(icalcomponent* event, const char* name, const std::string& value) {
    icalproperty* property = icalproperty_new_x(value.c_str());
    icalproperty_set_x_name(property, name);
    icalcomponent_add_property(event, property);
}

// The RRULE that gives exactly the program's dates from `first` on, or "" when none does.
std::string ExactRule(int count, std::string_view unit, Date first) {
    const std::string interval = count > 1 ? ";INTERVAL=" + std::to_string(count) : "";
    if (unit == "D") {
        if (count == 1) {
            return "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR";
        }
        return count == 7 ? "FREQ=WEEKLY" : "FREQ=DAILY" + interval;
    }
    const unsigned day = static_cast<unsigned>(first.day());
    if (unit == "M") {
        // From the 29th on, the program's month step moves to a shorter day and stays there,
        // while the rule would skip the months that lack that day.
        return day <= 28 ? "FREQ=MONTHLY" + interval : "";
    }
    const bool leap_day = first.month() == std::chrono::February && day == 29;
    return leap_day ? "" : "FREQ=YEARLY" + interval;
}

// False when the alarm has no day on which the calendar would show it.
bool WriteAlarm(Writer& writer, const std::string& entry, Date today) {
    const int count = *AlarmCount(entry);
    const std::string unit = GetAlarmField(entry, 3);
    const int minutes = *AlarmTime(entry);
    const std::string text = GetAlarmField(entry, 6);
    const std::string summary = GetAlarmField(entry, 11);
    const Date horizon = AddYears(today, kExplicitDatesYears);

    const std::string rule_probe = count == 0 ? "" : ExactRule(count, unit, *AlarmDate(entry));
    // With a rule only the first date is needed; without one, every date up to the horizon.
    std::vector<Date> dates;
    if (count == 0 || !rule_probe.empty()) {
        const auto all = AlarmOccurrences(entry, *AlarmDate(entry), horizon);
        if (!all.empty()) {
            dates.push_back(all.front());
        } else if (count > 0) {
            // A start tag beyond the horizon: the series still begins there.
            const auto later = AlarmOccurrences(entry, *AlarmDate(entry), kOpenEnd);
            if (!later.empty()) {
                dates.push_back(later.front());
            }
        }
    } else {
        dates = AlarmOccurrences(entry, *AlarmDate(entry), horizon);
    }
    if (dates.empty()) {
        return false;
    }
    const auto at = [&](Date d) { return MakeDateTime(d, minutes / 60, minutes % 60); };

    icalcomponent* event =
        writer.NewEvent("ALA|" + GetAlarmField(entry, 2) + "|" + GetAlarmField(entry, 4) + unit + "|" + text);
    writer.AddStart(event, at(dates.front()));
    icalcomponent_add_property(event, icalproperty_new_summary(summary.c_str()));
    if (GetAlarmField(entry, 9) == "1") {
        icalcomponent_add_property(event, icalproperty_new_priority(1));
    }
    if (summary != text) {
        AddX(event, kTextProperty, text);
    }
    if (count > 0) {
        const std::string rule = ExactRule(count, unit, dates.front());
        if (!rule.empty()) {
            icalcomponent_add_property(event, icalproperty_new_rrule(icalrecurrencetype_from_string(rule.c_str())));
        } else {
            for (std::size_t i = 1; i < dates.size(); ++i) {
                writer.AddDate(event, at(dates[i]));
            }
            AddX(event, kRepeatProperty, GetAlarmField(entry, 4) + "|" + unit);
        }
    }
    AddAlert(event, summary, 0);
    if (const int notice = AlarmNoticeDays(entry).value_or(0); notice > 0) {
        AddAlert(event, summary, notice);
    }
    return true;
}

bool AlarmExportable(std::string_view entry) {
    const std::string unit = GetAlarmField(entry, 3);
    return AlarmReadable(entry) && (unit == "D" || unit == "M" || unit == "A") && AlarmCount(entry).value_or(-1) >= 0;
}

}  // namespace

IcsExport ExportAgendaToIcs(const Settings& settings, DateTime now, const std::string& zone) {
    IcsExport result;
    Writer writer(now, zone);
    const Date today = DateOf(now);
    for (const std::string& entry : settings.Alarms) {
        if (!AlarmExportable(entry)) {
            ++result.unreadable;
            continue;
        }
        if (CharMid(entry, 28, 1) == "-") {
            continue;  // kept off the calendar by its owner
        }
        if (WriteAlarm(writer, entry, today)) {
            ++result.alarms;
        }
    }
    for (const std::string& entry : settings.Repetitions) {
        const auto moment = RepetitionMoment(entry);
        if (!moment) {
            ++result.unreadable;
            continue;
        }
        const std::string text = GetRepetitionField(entry, 6);
        icalcomponent* event = writer.NewEvent("REP|" + entry);
        writer.AddStart(event, *moment);
        icalcomponent_add_property(event, icalproperty_new_summary(text.c_str()));
        AddX(event, kReminderProperty, "1");
        AddAlert(event, text, 0);
        ++result.reminders;
    }
    result.text = writer.Text();
    return result;
}

}  // namespace vt
