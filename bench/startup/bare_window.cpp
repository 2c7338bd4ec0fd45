// The yardstick for the program's start-up and memory: the least a Qt Widgets program does to
// show a main window, built by the same compiler with the same flags and Qt.
#include <QApplication>
#include <QLabel>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Bare window"));
    window.setCentralWidget(new QLabel(QStringLiteral("Bare window"), &window));
    window.show();
    return QApplication::exec();
}
