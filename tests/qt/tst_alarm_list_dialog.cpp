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

private slots:
    void chooseReturnsThePick() {
        vt::test::WhenModal<FrmListaAlarmas>([](FrmListaAlarmas& dialog) {
            QWidget* lst = vt::test::Child(dialog, u"lstAlarma"_s);
            QTest::keyClick(lst, Qt::Key_Down);
            QTest::keyClick(lst, Qt::Key_Return);
            QCOMPARE(dialog.objectName() + u' ' + dialog.windowTitle(), u"frmListaAlarmas Lista de Alarmas"_s);
        });

        QCOMPARE(FrmListaAlarmas::choose(nullptr, Alarms()), 2);
    }
};

QTEST_MAIN(AlarmListDialogTest)
#include "tst_alarm_list_dialog.moc"
