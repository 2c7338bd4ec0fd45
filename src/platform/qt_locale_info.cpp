#include "platform/qt_locale_info.h"

#include <QLocale>
#include <QtGlobal>

namespace vt {

namespace {

// The locale the desktop's dates follow, named as the C library would choose it.
QLocale TimeLocale() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const QString name = qEnvironmentVariable(variable);
        if (!name.isEmpty()) {
            return QLocale(name);
        }
    }
    return QLocale::c();
}

// The short date pattern of the usual locale of the time locale's country; "" without one.
QString CountryPattern() {
    const QLocale::Territory territory = TimeLocale().territory();
    if (territory == QLocale::AnyTerritory) {
        return {};
    }
    return QLocale(QLocale::AnyLanguage, territory).dateFormat(QLocale::ShortFormat);
}

}  // namespace

std::string QtLocaleInfo::ShortDateFormat() const {
    // Asked anew every second on purpose: the check exists to notice a change of the
    // desktop's format while the program runs. QLocale::system() shares Qt's cached system
    // locale data, so this costs a few small string copies; the rest only follows a change.
    const QString pattern = QLocale::system().dateFormat(QLocale::ShortFormat);
    if (!m_read || pattern != m_lastPattern) {
        m_lastFormat = DesktopShortDateFormat(pattern.toStdString(), CountryPattern().toStdString());
        m_lastPattern = pattern;
        m_read = true;
    }
    return m_lastFormat;
}

}  // namespace vt
