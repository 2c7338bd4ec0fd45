#pragma once
#include <string>
#include <string_view>

namespace vt {

// The user's date settings as the desktop reports them.
class LocaleInfo {
public:
    virtual ~LocaleInfo() = default;
    // The short date pattern, e.g. "dd/MM/yyyy".
    virtual std::string ShortDateFormat() const = 0;
};

// Whether a short date pattern writes day, month and year in that order with "/" between
// them, whatever the number of digits: "d/M/yy" and "dd/MM/yyyy" both do.
bool IsDayMonthYearWithSlashes(std::string_view pattern);

// The short date format a desktop stands for, from the pattern of its time locale and the
// pattern of the usual locale of that locale's country ("" when it has none). The program
// writes its own zero-padded dates whatever the desktop says, so only the order matters:
// "dd/MM/yyyy" when the desktop writes day/month/year with "/", or when its own order is not
// month-first and its country writes dates that way (Basque in Spain); else its own pattern.
std::string DesktopShortDateFormat(std::string_view own_pattern, std::string_view country_pattern);

}  // namespace vt
