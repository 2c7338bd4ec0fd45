#pragma once
#include "platform/locale_info.h"

namespace vt {

// The short date pattern of the desktop's locale, as Qt reads it (LC_TIME on Linux).
class QtLocaleInfo : public LocaleInfo {
public:
    std::string ShortDateFormat() const override;
};

}  // namespace vt
