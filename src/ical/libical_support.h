#pragma once
// Small helpers over libical for the export and the import: ownership of components and
// strings, time zones by name, and the program's dates and times as libical times.

#include <libical/ical.h>

#include <memory>
#include <optional>
#include <string>

#include "store/dates.h"

namespace vt::ical {

struct ComponentFree {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using Component = std::unique_ptr<icalcomponent, ComponentFree>;

// The text of a component, owned.
std::string AsText(icalcomponent* component);

// A zone by its zoneinfo name: the UTC zone for "UTC" and its aliases, libical's built-in
// zone otherwise; nothing for "" or a name libical does not know.
icaltimezone* ZoneByName(const std::string& name);

// A floating libical time (no zone) holding a wall-clock moment, or a whole day.
icaltimetype WallTime(DateTime moment);
icaltimetype DayTime(Date date);

// The wall-clock moment of a libical time as it stands (its zone is not looked at); nothing
// for a time that is no real date.
std::optional<DateTime> MomentOf(const icaltimetype& time);

}  // namespace vt::ical
