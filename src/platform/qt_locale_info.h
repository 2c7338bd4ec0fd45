#pragma once
#include <QString>
#include <string>

#include "platform/locale_info.h"

namespace vt {

// The desktop's short date format as Qt reads it (LC_ALL, else LC_TIME, else LANG on Linux),
// judged by DesktopShortDateFormat with the usual format of the locale's country.
class QtLocaleInfo : public LocaleInfo {
public:
    std::string ShortDateFormat() const override;

private:
    // The last pattern read and what it stood for: the country's format is looked up only
    // when the desktop's pattern changes.
    mutable QString m_lastPattern;
    mutable std::string m_lastFormat;
    mutable bool m_read = false;
};

}  // namespace vt
