#pragma once
#include <string>

namespace vt {

// The user's date settings as the desktop reports them.
class LocaleInfo {
public:
    virtual ~LocaleInfo() = default;
    // The short date pattern, e.g. "dd/MM/yyyy".
    virtual std::string ShortDateFormat() const = 0;
};

}  // namespace vt
