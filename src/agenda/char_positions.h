#pragma once
// Agenda entries are read by fixed character positions, and a text may hold accented letters,
// which take more than one byte in memory. These helpers turn character positions into byte
// ranges without copying; counting follows store/cp1252.h (a byte that starts no valid UTF-8
// sequence counts as one character).

#include <cstddef>
#include <span>
#include <string_view>

namespace vt {

inline constexpr std::size_t kToTheEnd = static_cast<std::size_t>(-1);

// The characters first..first+count-1 (1-based) of text, as a view into it. Shorter or empty
// when the text is shorter; count kToTheEnd takes everything from first on.
std::string_view CharMid(std::string_view text, std::size_t first, std::size_t count = kToTheEnd);

// Where characters 1, 2, ... offsets.size() of text begin, as byte offsets (the end of the text
// for those past it), in one walk: CharMid(text, k, n) is the text from offsets[k - 1] to
// offsets[k - 1 + n].
void CharOffsets(std::string_view text, std::span<std::size_t> offsets);

// The text without blanks (spaces only, not tabs) at either end.
std::string_view TrimBlanks(std::string_view text);

}  // namespace vt
