// The alarm list's wiring: the raw lines in stored order, the margin kept on resize, and which
// keys and clicks pick which alarm.
#include <QApplication>
#include <QListWidget>
#include <QTest>
#include <QTimer>
#include <initializer_list>
#include <memory>

#include "agenda/alarm_list_dialog.h"

using vt::FrmListaAlarmas;

class AlarmListDialogTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();

    void showsTheStoredLinesFirstSelected();
    void anEmptyListPicksNothing();
    void keysPick_data();
    void keysPick();
    void doubleClickPicksTheLine_data();
    void doubleClickPicksTheLine();
    void listKeepsItsMarginOnResize_data();
    void listKeepsItsMarginOnResize();
    void chooseReturnsThePick_data();
    void chooseReturnsThePick();

private:
    void open(const vt::EntryList& alarms);
    QListWidget* list() const { return m_dialog->findChild<QListWidget*>(QStringLiteral("lstAlarma")); }

    std::unique_ptr<FrmListaAlarmas> m_dialog;
};

namespace {
vt::EntryList ListOf(std::initializer_list<const char*> entries) {
    vt::EntryList list;
    for (const char* entry : entries) {
        list.Append(entry);
    }
    return list;
}

// Stored order, not the order of the times: the list never reformats or re-sorts.
const vt::EntryList kAlarms =
    ListOf({"19/03/2024 18:00 01 D 00 0 Fichar salida", "20/03/2024 09:15 00 D 14 0 Dentista, a las 9",
            "20/03/2024 08:00 01 A 14 1 Cumpleaños (1990) <010324>"});

bool ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

QRect InsideMargin(const QWidget& window) {
    const int m = FrmListaAlarmas::kMargin;
    return {m, m, window.width() - 2 * m, window.height() - 2 * m};
}
}  // namespace

void AlarmListDialogTest::cleanup() {
    m_dialog.reset();
}

void AlarmListDialogTest::open(const vt::EntryList& alarms) {
    m_dialog = std::make_unique<FrmListaAlarmas>();
    m_dialog->load(alarms);
    QVERIFY(ShowActive(*m_dialog));
}

void AlarmListDialogTest::showsTheStoredLinesFirstSelected() {
    open(kAlarms);
    QCOMPARE(m_dialog->objectName(), QStringLiteral("frmListaAlarmas"));
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Lista de Alarmas"));
    QVERIFY(list() != nullptr);
    QStringList lines;
    for (int i = 0; i < list()->count(); ++i) {
        lines << list()->item(i)->text();
    }
    QStringList stored;
    for (const std::string& entry : kAlarms) {
        stored << QString::fromStdString(entry);
    }
    QCOMPARE(lines, stored);
    QCOMPARE(list()->selectedItems().size(), 1);
    QCOMPARE(list()->row(list()->selectedItems().front()), 0);
    QCOMPARE(m_dialog->chosen(), 0);
}

void AlarmListDialogTest::anEmptyListPicksNothing() {
    open(vt::EntryList{});
    QCOMPARE(list()->count(), 0);
    QVERIFY(list()->selectedItems().isEmpty());

    QTest::keyClick(list(), Qt::Key_Return);

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->chosen(), 0);
}

void AlarmListDialogTest::keysPick_data() {
    QTest::addColumn<int>("downs");  // Down arrows pressed first
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("chosen");

    QTest::newRow("Enter on the first line") << 0 << Qt::Key_Return << 1;
    QTest::newRow("keypad Enter on the third") << 2 << Qt::Key_Enter << 3;
    QTest::newRow("past the last line stays on it") << 5 << Qt::Key_Return << 3;
    QTest::newRow("Escape after moving") << 1 << Qt::Key_Escape << 0;
}

void AlarmListDialogTest::keysPick() {
    QFETCH(int, downs);
    QFETCH(Qt::Key, key);
    QFETCH(int, chosen);
    open(kAlarms);
    list()->setFocus();
    QTRY_VERIFY(list()->hasFocus());
    for (int i = 0; i < downs; ++i) {
        QTest::keyClick(list(), Qt::Key_Down);
    }

    QTest::keyClick(list(), key);

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->chosen(), chosen);
}

void AlarmListDialogTest::doubleClickPicksTheLine_data() {
    QTest::addColumn<int>("row");
    QTest::newRow("second line") << 1;
    QTest::newRow("third line") << 2;
}

void AlarmListDialogTest::doubleClickPicksTheLine() {
    QFETCH(int, row);
    open(kAlarms);
    const QPoint at = list()->visualItemRect(list()->item(row)).center();

    // A real double click is a click followed by the double-click event; sent alone, the
    // double-click event would find no press on the line and pick nothing.
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, at);
    QVERIFY(m_dialog->isVisible());  // one click only moves the selection
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, at);

    QTRY_VERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->chosen(), row + 1);
}

void AlarmListDialogTest::listKeepsItsMarginOnResize_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("smaller") << QSize(300, 150);
    QTest::newRow("larger") << QSize(800, 500);
}

void AlarmListDialogTest::listKeepsItsMarginOnResize() {
    QFETCH(QSize, size);
    open(kAlarms);
    QCOMPARE(list()->geometry(), InsideMargin(*m_dialog));

    m_dialog->resize(size);

    QTRY_COMPARE(m_dialog->size(), size);
    QCOMPARE(list()->geometry(), QRect(4, 4, size.width() - 8, size.height() - 8));
}

void AlarmListDialogTest::chooseReturnsThePick_data() {
    QTest::addColumn<bool>("empty");
    QTest::addColumn<int>("chosen");
    QTest::newRow("second alarm") << false << 2;
    QTest::newRow("no alarms") << true << 0;
}

void AlarmListDialogTest::chooseReturnsThePick() {
    QFETCH(bool, empty);
    QFETCH(int, chosen);
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<FrmListaAlarmas*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            return;  // choose() showed nothing; the check below fails
        }
        auto* lst = dialog->findChild<QListWidget*>(QStringLiteral("lstAlarma"));
        QTest::keyClick(lst, Qt::Key_Down);
        QTest::keyClick(lst, Qt::Key_Return);
        if (dialog->isVisible()) {
            dialog->reject();
        }
    });

    QCOMPARE(FrmListaAlarmas::choose(nullptr, empty ? vt::EntryList{} : kAlarms), chosen);
}

QTEST_MAIN(AlarmListDialogTest)
#include "tst_alarm_list_dialog.moc"
