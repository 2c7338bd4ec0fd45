#pragma once
// The growable list that the access scan, the task log and the task summary collect into.

#include <string>
#include <string_view>
#include <vector>

namespace vt {

// Adds item to list, whose slot 0 is never used (items live in 1..size-1; an empty vector is
// taken as a list with only that slot).
// - duplicates_allowed = false: nothing happens when an item equal to it ignoring case is there.
// - sorted = false: the item goes at the end.
// - sorted = true: the item goes before the first item greater than it, so after its equals,
//   which thus keep their arrival order. With ignore_case both sides are compared upper-cased,
//   otherwise as plain text (UTF-8 bytes, which is code-point order).
// A sorted list must only ever grow through this function with the same switches: the place is
// then found by binary search, which gives the same index as a scan from the start.
void AgregarALista(std::vector<std::string>& list, std::string_view item, bool sorted, bool duplicates_allowed,
                   bool ignore_case);

// The upper case the list compares with: ASCII letters and the letters of Windows-1252 that
// have a capital (á → Á, ñ → Ñ, ÿ → Ÿ, š → Š, ž → Ž, œ → Œ); everything else unchanged.
std::string UpperCaseForList(std::string_view text);

}  // namespace vt
