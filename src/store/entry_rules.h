#pragma once
// The rules shared by every entry box: "hh:mm" time boxes and dates typed as "ddmmyy".

#include <optional>
#include <string>
#include <string_view>

namespace vt {

class Dialogs;

inline constexpr const char* kTimeFormatMessage = "Formato no válido.";
inline constexpr const char* kDateFormatMessage = "Formato no válido (ddmmyy).";

// What a time box holds while it has the focus: its text without any ":" ("07:45" -> "0745").
std::string TimeBoxEditText(std::string_view shown);

// Completes the digits typed in a time box to "hh:mm": "7" -> "07:00", "08" -> "08:00",
// "745" -> "07:45", "0745" -> "07:45". An empty text stays empty (returned as ""). Anything
// that is not 1 to 4 digits, or no valid time of day, gives nothing.
std::optional<std::string> CompleteTimeEntry(std::string_view typed);

// The same, showing "Formato no válido." when the text is refused.
std::optional<std::string> ValidateTimeEntry(std::string_view typed, Dialogs& dialogs);

// Keys a time box lets through while it has the focus: the digits and Backspace.
bool IsTimeBoxKey(char32_t key);

// "ddmmyy" or "ddmmyyyy" -> "dd/mm/yyyy"; nothing when the text is not such a date.
std::optional<std::string> ConvertDdmmyy(std::string_view typed);

// The same, showing "Formato no válido (ddmmyy)." and returning "" when refused.
std::string ParseDdmmyy(std::string_view typed, Dialogs& dialogs);

}  // namespace vt
