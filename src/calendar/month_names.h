#pragma once
// Month names in capitals, as the calendars and the access pages print them. Basque is offered
// beside Spanish because the year calendars are printed in either language.

#include <string>
#include <string_view>

#include "store/dates.h"

namespace vt {

// Language "E" (euskera) gives the Basque name, any other value the Spanish one; abbreviated
// gives the three-letter form ("MAR"), otherwise the full name ("MARZO").
std::string MonthName(Date date, bool abbreviated, std::string_view language);
// The same by month number 1..12; any other number gives "".
std::string MonthName(int month, bool abbreviated, std::string_view language);

}  // namespace vt
