#pragma once
// Building entry lists in one line and reading them back as plain vectors, so that a test
// compares a whole list at once and a failure shows every entry.

#include <initializer_list>
#include <string>
#include <vector>

#include "store/entry_list.h"

namespace vt::test {

inline EntryList ListOf(std::initializer_list<std::string> entries) {
    EntryList list;
    for (const auto& entry : entries) {
        list.Append(entry);
    }
    return list;
}

inline std::vector<std::string> Items(const EntryList& list) {
    return {list.begin(), list.end()};
}

}  // namespace vt::test
