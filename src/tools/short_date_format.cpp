// Prints the short date pattern of the user's locale as Qt sees it, so that the run script
// can tell whether the program will accept the environment.
#include <QCoreApplication>
#include <QLocale>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::printf("%s\n", qPrintable(QLocale::system().dateFormat(QLocale::ShortFormat)));
    return 0;
}
