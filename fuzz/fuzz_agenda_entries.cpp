// Feeds arbitrary text to the agenda as if a settings file had been edited by hand: every field
// reader, the start-date tag, the anniversary rule, the searches and the refresh must survive
// it, and what they return must keep their promises.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "agenda/char_positions.h"
#include "agenda/entries.h"
#include "agenda/launching.h"
#include "agenda/recurrence.h"
#include "agenda/text_marks.h"
#include "platform/dialogs.h"

namespace {

class SilentDialogs : public vt::Dialogs {
public:
    vt::MsgAnswer ShowBox(const vt::MessageBox& box) override {
        if (box.text != "MAL!") {
            std::abort();  // the agenda's pure core has no other message
        }
        return vt::MsgAnswer::Ok;
    }
    std::optional<std::string> AskText(const vt::InputBox&) override { return std::nullopt; }
};

// Names the broken promise before stopping, so a crash report says which one it was.
void CheckAt(bool condition, int line) {
    if (!condition) {
        std::fprintf(stderr, "broken promise at line %d\n", line);
        std::abort();
    }
}
#define Check(condition) CheckAt((condition), __LINE__)

// Long searches are fine but slow to fuzz: only dates within two centuries of the range are
// searched, which still covers every rule.
bool Near(vt::Date date) {
    const int year = static_cast<int>(date.year());
    return year >= 1900 && year <= 2100;
}

std::string Replaced(std::string_view text) {
    std::string out(text);
    std::replace(out.begin(), out.end(), ',', ';');
    return out;
}

void CheckOneEntry(std::string_view entry, const std::uint8_t* params, SilentDialogs& dialogs) {
    for (int field = -1; field <= 12; ++field) {
        Check(vt::GetAlarmField(entry, field).size() <= entry.size());
        Check(vt::GetRepetitionField(entry, field).size() <= entry.size());
    }

    const std::string text = vt::GetAlarmField(entry, 6);
    const vt::StartDateTag tag = vt::SplitStartDateTag(text);
    Check(tag.start.has_value() == !tag.date_field.empty());
    if (tag.start) {
        Check(tag.date_field.size() == 8);
        Check(vt::AlarmActiveOn(*tag.start, entry));
        Check(!vt::AlarmActiveOn(vt::AddDays(*tag.start, -1), entry));
    } else if (vt::AlarmStartDate(entry)) {
        std::abort();
    }
    const int year = 1 + (params[0] * 256 + params[1]) % 9999;
    const std::string shown = vt::AnniversaryText(text, year);
    if (text.find('(') == std::string::npos) {
        Check(shown == text);
    }

    // Rebuilding an entry from its own fields gives the same fields back (the blanks between
    // them are not read, so a hand edit there is the one thing a rebuild changes).
    if (vt::AlarmReadable(entry)) {
        const std::string rebuilt = vt::BuildAlarmEntry(vt::GetAlarmField(entry, 1), vt::GetAlarmField(entry, 2),
                                                        *vt::AlarmCount(entry), vt::GetAlarmField(entry, 3),
                                                        *vt::AlarmNoticeDays(entry), vt::GetAlarmField(entry, 9), text);
        for (const int field : {1, 2, 3, 4, 5}) {
            Check(vt::GetAlarmField(rebuilt, field) == vt::GetAlarmField(entry, field));
        }
        if (!vt::GetAlarmField(entry, 9).empty()) {
            Check(vt::GetAlarmField(rebuilt, 9) == vt::GetAlarmField(entry, 9));
            Check(vt::GetAlarmField(rebuilt, 6) == Replaced(text));
        }
    }

    // The search keeps its promises whatever the entry says.
    const auto date = vt::AlarmDate(entry);
    const auto count = vt::AlarmCount(entry);
    if (date && count && Near(*date)) {
        const vt::Date today = vt::AddDays(vt::MakeDate(1, 1, 2000), params[2] * 40);
        const vt::Date from = vt::AddDays(today, params[3] % 64 - 32);
        const vt::Date to = params[4] % 8 == 0 ? vt::kOpenEnd : vt::AddDays(from, params[4] * 3 - 100);
        const int step = params[5] % 2 == 0 ? 1 : -1;
        const bool skip_today = params[5] & 2;
        const std::string unit = vt::GetAlarmField(entry, 3);
        vt::Date walked = *date;
        const auto found = vt::NextOccurrence(walked, *count, unit, from, to, step, skip_today, today, dialogs);
        if (found) {
            Check(*found == walked);
            Check(from <= *found && *found <= to);
            Check(!(skip_today && *found == today));
            Check(!(unit == "D" && *count == 1 && vt::WeekdayMonday1(*found) >= 6));
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 8) {
        return 0;
    }
    const std::uint8_t* params = data;
    const std::string_view body(reinterpret_cast<const char*>(data + 8), size - 8);
    SilentDialogs dialogs;

    // Each line is one entry, as the settings file gives them.
    vt::EntryList alarms;
    vt::EntryList repetitions;
    std::size_t start = 0;
    while (start <= body.size()) {
        std::size_t end = body.find('\n', start);
        if (end == std::string_view::npos) {
            end = body.size();
        }
        const std::string_view line = body.substr(start, end - start);
        CheckOneEntry(line, params, dialogs);
        const auto date = vt::AlarmDate(line);
        if (!date || Near(*date)) {
            alarms.Append(std::string(line));
        }
        repetitions.Append(std::string(line));
        start = end + 1;
    }

    // Sorting keeps every entry and puts those whose date reads first, in order.
    vt::EntryList sorted = repetitions;
    vt::SortRepetitions(sorted);
    Check(sorted.Count() == repetitions.Count());
    for (int i = 2; i <= sorted.Count(); ++i) {
        const auto before = vt::RepetitionMoment(sorted[i - 1]);
        const auto after = vt::RepetitionMoment(sorted[i]);
        Check(!after || (before && *before <= *after));
    }
    const vt::DateTime now = vt::MakeDateTime(vt::AddDays(vt::MakeDate(1, 1, 2000), params[6] * 40), params[7] % 24,
                                              params[7] % 60, params[6] % 60);
    const int due = vt::FindDueRepetition(repetitions, now);
    Check(due >= 0 && due <= repetitions.Count());
    if (due > 0) {
        Check(vt::RepetitionMoment(repetitions[due]).has_value());
    }
    const std::string target = vt::RepeatLaterTarget(now, params[7] % 12 - 1);
    const auto back = vt::RepetitionMoment(target);
    Check(back && *back > now - std::chrono::minutes{1});

    // A whole refresh: nothing is lost but what it removes on purpose.
    const vt::Date today = vt::DateOf(now);
    const int before = alarms.Count();
    int lines = 0;
    vt::AdvanceAlarmDates(alarms, repetitions, today, dialogs, [&lines](const std::string& line) {
        Check(line.rfind("REP> ", 0) == 0);
        ++lines;
    });
    Check(alarms.Count() <= before && alarms.Count() >= before - lines);
    for (int i = 2; i <= alarms.Count(); ++i) {
        const auto earlier = vt::AlarmDate(alarms[i - 1]);
        const auto later = vt::AlarmDate(alarms[i]);
        Check(!later || (earlier && *earlier <= *later));
    }
    return 0;
}
