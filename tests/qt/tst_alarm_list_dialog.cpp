// The alarm list's wiring: the raw lines in stored order, and which keys and clicks pick which
// alarm.
#include "agenda/alarm_list_dialog.h"
#include "qt_test_support.h"

using vt::FrmListaAlarmas;

namespace {
// Stored order, not the order of the times: the list never reformats or re-sorts.
const QStringList kLines{"19/03/2024 18:00 01 D 00 0 Fichar salida", "20/03/2024 09:15 00 D 14 0 Dentista, a las 9",
                         "20/03/2024 08:00 01 A 14 1 Cumpleaños (1990) <010324>"};

vt::EntryList Alarms(const QStringList& lines = kLines) {
    vt::EntryList list;
    for (const QString& line : lines) {
        list.Append(line.toStdString());
    }
    return list;
}
}  // namespace

class AlarmListDialogTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FrmListaAlarmas> m_dialog;

    void open(const vt::EntryList& alarms) {
        m_dialog = std::make_unique<FrmListaAlarmas>();
        m_dialog->load(alarms);
        QVERIFY(vt::test::ShowActive(*m_dialog));
    }
    QListWidget* list() const { return m_dialog->findChild<QListWidget*>(u"lstAlarma"_s); }

private slots:
    void cleanup() { m_dialog.reset(); }

    void showsTheStoredLinesFirstSelected() {
        open(Alarms());
        QCOMPARE(m_dialog->objectName() + u' ' + m_dialog->windowTitle(), u"frmListaAlarmas Lista de Alarmas"_s);
        QCOMPARE(vt::test::ItemTexts(*list()), kLines);
        QCOMPARE(list()->selectedItems(), QList<QListWidgetItem*>{list()->item(0)});
    }

    void keysPick_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("downs");  // Down arrows pressed first
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("chosen");
        QTest::newRow("Enter on the first line") << kLines << 0 << Qt::Key_Return << 1;
        QTest::newRow("keypad Enter past the last line") << kLines << 5 << Qt::Key_Enter << 3;
        QTest::newRow("Escape after moving") << kLines << 1 << Qt::Key_Escape << 0;
        QTest::newRow("Enter in an empty list") << QStringList{} << 0 << Qt::Key_Return << 0;
    }
    void keysPick() {
        QFETCH(QStringList, lines);
        QFETCH(int, downs);
        QFETCH(Qt::Key, key);
        QFETCH(int, chosen);
        open(Alarms(lines));
        QVERIFY(vt::test::FocusOn(list()));
        for (int i = 0; i < downs; ++i) {
            QTest::keyClick(list(), Qt::Key_Down);
        }

        QTest::keyClick(list(), key);

        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->chosen(), chosen);
    }

    void doubleClickPicksTheLine() {
        open(Alarms());
        const QPoint at = list()->visualItemRect(list()->item(1)).center();

        // A real double click is a click followed by the double-click event.
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, at);
        QVERIFY(m_dialog->isVisible());  // one click only moves the selection
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, at);

        QTRY_VERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->chosen(), 2);
    }

    void chooseReturnsThePick() {
        vt::test::WhenModal<FrmListaAlarmas>([](FrmListaAlarmas& dialog) {
            QWidget* lst = vt::test::Child(dialog, u"lstAlarma"_s);
            QTest::keyClick(lst, Qt::Key_Down);
            QTest::keyClick(lst, Qt::Key_Return);
        });

        QCOMPARE(FrmListaAlarmas::choose(nullptr, Alarms()), 2);
    }
};

QTEST_MAIN(AlarmListDialogTest)
#include "tst_alarm_list_dialog.moc"
