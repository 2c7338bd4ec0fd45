// Prints the short date format the program reads from the desktop, so that the run script
// can tell whether the program will accept the environment.
#include <QCoreApplication>
#include <cstdio>

#include "platform/qt_locale_info.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::printf("%s\n", vt::QtLocaleInfo().ShortDateFormat().c_str());
    return 0;
}
