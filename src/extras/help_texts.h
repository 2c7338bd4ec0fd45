#pragma once
// The help texts of the agenda. The help page prints them in its "Alarmas" section, and the
// alarm and repetition editors show them when F1 or their help button is pressed, so both say
// the same thing.

#include <string>
#include <string_view>

namespace vt {

// The help of a topic: "ALA" (alarms) or "REP" (repetitions and the repeat-later dialog), one
// paragraph a line, lines joined with "\r\n" as a message box and the help page both want them.
// mode 1 is the only form the texts exist in; "" for any other mode or for a topic that has no
// text.
std::string TextoAyuda(std::string_view topic, int mode = 1);

}  // namespace vt
