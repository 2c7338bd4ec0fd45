// The yardstick for the program's start-up, memory and idle processor time: what any Qt Widgets
// program with a window of the same kind does to show it — a main window with a menu bar of
// five menus and some 45 widgets (labels, line edits, buttons), built by the same compiler with
// the same flags and Qt. What VendrakoTimer takes beyond this is its own work. With "--tick" it
// also runs an empty one-second timer, as the program's clock must, which shows what merely
// waking once a second costs on the machine at hand.
#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Bare window"));
    for (int m = 1; m <= 5; ++m) {
        QMenu* menu = window.menuBar()->addMenu(QStringLiteral("Menu %1").arg(m));
        for (int i = 1; i <= 4; ++i) {
            menu->addAction(QStringLiteral("Item %1").arg(i));
        }
    }
    auto* central = new QWidget(&window);
    auto* grid = new QGridLayout(central);
    for (int row = 0; row < 15; ++row) {
        grid->addWidget(new QLabel(QStringLiteral("Label %1").arg(row), central), row, 0);
        grid->addWidget(new QLineEdit(central), row, 1);
        grid->addWidget(new QPushButton(QStringLiteral("%1").arg(row), central), row, 2);
    }
    window.setCentralWidget(central);
    window.show();
    QTimer tick;
    if (QApplication::arguments().contains(QStringLiteral("--tick"))) {
        QObject::connect(&tick, &QTimer::timeout, &tick, [] {});
        tick.start(1000);
    }
    return QApplication::exec();
}
