// The yardstick for the program's start-up, memory and idle processor time: the least a Qt
// Widgets program does to show a main window, built by the same compiler with the same flags
// and Qt. With "--tick" it also runs an empty one-second timer, as the program's clock must,
// which shows what merely waking once a second costs on the machine at hand.
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Bare window"));
    window.setCentralWidget(new QLabel(QStringLiteral("Bare window"), &window));
    window.show();
    QTimer tick;
    if (QApplication::arguments().contains(QStringLiteral("--tick"))) {
        QObject::connect(&tick, &QTimer::timeout, &tick, [] {});
        tick.start(1000);
    }
    return QApplication::exec();
}
