#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace vt {

inline constexpr const char* kEmptyIntermediateClockIn = "No puede haber fichajes intermedios vacíos.";
inline constexpr const char* kClockInsNotConsecutive = "Las horas deben ser consecutivas.";

// Checks that the three clock-ins ("Entrada 1", "Salida 1", "Entrada 2") follow each other:
// no filled one after an empty one, and none earlier than the one before it (equal is fine).
// Returns the reason when they do not.
std::optional<std::string> ClockInsProblem(std::string_view entrada1, std::string_view salida1,
                                           std::string_view entrada2);

}  // namespace vt
