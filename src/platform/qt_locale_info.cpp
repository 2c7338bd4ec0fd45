#include "platform/qt_locale_info.h"

#include <QLocale>

namespace vt {

std::string QtLocaleInfo::ShortDateFormat() const {
    // Asked anew every second on purpose: the check exists to notice a change of the
    // desktop's format while the program runs. QLocale::system() shares Qt's cached system
    // locale data, so this costs a few small string copies.
    return QLocale::system().dateFormat(QLocale::ShortFormat).toStdString();
}

}  // namespace vt
