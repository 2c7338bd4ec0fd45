// Feeds arbitrary text to the typed-entry rules and the date readers: none may crash, and
// whatever they accept must read back to itself.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "store/dates.h"
#include "store/entry_rules.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    if (const auto time = vt::CompleteTimeEntry(text); time && !time->empty()) {
        if (vt::CompleteTimeEntry(vt::TimeBoxEditText(*time)) != time) {
            std::abort();
        }
    }
    if (const auto date = vt::ConvertDdmmyy(text)) {
        if (!vt::ParseDate(*date)) {
            std::abort();
        }
    }
    if (const auto date = vt::ParseDate(text)) {
        if (vt::ParseDate(vt::FormatDate(*date)) != date) {
            std::abort();
        }
    }
    if (const auto date = vt::ParseWorkDate(text)) {
        (void)vt::FormatWorkDate(*date);
    }
    if (const auto minutes = vt::ParseTimeOfDay(text)) {
        if (vt::ParseTimeOfDay(vt::FormatTimeOfDay(*minutes)) != minutes) {
            std::abort();
        }
    }
    if (const auto moment = vt::ParseDateTime(text)) {
        if (vt::ParseDateTime(vt::FormatDateTime(*moment)) != moment) {
            std::abort();
        }
    }
    return 0;
}
