#include "workday/clock_ins.h"

#include "workday/departure.h"

namespace vt {

std::optional<std::string> ClockInsProblem(std::string_view entrada1, std::string_view salida1,
                                           std::string_view entrada2) {
    const std::string_view pairs[2][2] = {{entrada1, salida1}, {salida1, entrada2}};
    for (const auto& pair : pairs) {
        const std::string_view first = pair[0];
        const std::string_view second = pair[1];
        if (!second.empty() && first.empty()) {
            return kEmptyIntermediateClockIn;
        }
        if (!first.empty() && !second.empty() && ClockTextMinutes(second) < ClockTextMinutes(first)) {
            return kClockInsNotConsecutive;
        }
    }
    return std::nullopt;
}

}  // namespace vt
