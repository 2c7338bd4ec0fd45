#include "platform/qt_clock.h"

#include <QDateTime>

namespace vt {

DateTime QtClock::Now() const {
    // Read date and time from one QDateTime so that a tick at midnight cannot pair
    // yesterday's date with today's time.
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    return MakeDateTime(MakeDate(date.day(), date.month(), date.year()), time.hour(), time.minute(), time.second());
}

}  // namespace vt
