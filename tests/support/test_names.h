#pragma once

#include <string>
#include <string_view>

namespace vt::test {

// A text as a test name: letters and digits kept, every run of anything else one '_', none at
// either end. ctest and --gtest_filter take such a name as it is, with nothing to quote.
inline std::string TestName(std::string_view text) {
    std::string name;
    for (const char c : text) {
        const bool kept = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (kept) {
            name += c;
        } else if (!name.empty() && name.back() != '_') {
            name += '_';
        }
    }
    if (!name.empty() && name.back() == '_') {
        name.pop_back();
    }
    return name;
}

}  // namespace vt::test
