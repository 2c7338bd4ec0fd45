#include "platform/qt_shell_open.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QString>
#include <QUrl>

namespace vt {

namespace {

// "recent:///" and its kin: letters, then letters, digits, "+", "-" or ".", then ":". Two
// letters at least, so that a Windows drive letter ("C:") never passes for a scheme.
bool StartsWithScheme(const QString& text) {
    const qsizetype colon = text.indexOf(QLatin1Char(':'));
    if (colon < 2 || !text.at(0).isLetter()) {
        return false;
    }
    for (qsizetype i = 1; i < colon; ++i) {
        const QChar c = text.at(i);
        if (!c.isLetterOrNumber() && c != QLatin1Char('+') && c != QLatin1Char('-') && c != QLatin1Char('.')) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool QtShellOpen::Open(const std::string& target, const std::string& /*working_folder*/) {
    const QString text = QString::fromStdString(target);
    // A path becomes a file URL built from the path, so that "#" or "%" in a file name are
    // taken as characters of the name, not as URL syntax.
    const QUrl url =
        StartsWithScheme(text) ? QUrl(text, QUrl::StrictMode) : QUrl::fromLocalFile(QFileInfo(text).absoluteFilePath());
    if (!url.isValid()) {
        return false;
    }
    return QDesktopServices::openUrl(url);
}

}  // namespace vt
