// The weekly schedule dialog's wiring: what it shows on opening, which keys and buttons accept
// or cancel it, and what "Aceptar" hands back. The time rules are the core's and TimeBox's; the
// modal entry point is exercised through the main window's "Configuración".
#include <array>

#include "qt_test_support.h"
#include "shell/config_dialog.h"

using vt::FrmConfig;
using vt::test::FocusOn;
using Week = std::array<std::string, 8>;

namespace {
const Week kHours{"", "08:00", "07:30", "06:00", "09:15", "05:00", "00:00", "23:59"};
// "X" is no mode the dialog knows: it shows unticked.
const Week kModes{"", "C", "P", "C", "P", "C", "P", "X"};
}  // namespace

class ConfigDialogTest : public QObject {
    Q_OBJECT

    vt::test::ScriptedDialogs m_dialogs;
    std::unique_ptr<FrmConfig> m_dialog;

private slots:
    void init() {
        m_dialogs = {};
        m_dialog = std::make_unique<FrmConfig>(m_dialogs);
        m_dialog->load(kHours, kModes);
        QVERIFY(vt::test::ShowActive(*m_dialog));
    }
    void cleanup() { m_dialog.reset(); }

    void rowsShowTheScheduleAndAreNamed() {
        QCOMPARE(m_dialog->objectName() + u' ' + m_dialog->windowTitle(), u"frmConfig Configuración"_s);
        QStringList rows;
        for (int row = 0; row < 7; ++row) {
            const auto* label = m_dialog->findChild<QLabel*>(u"lblDia(%1)"_s.arg(row));
            const auto* box = m_dialog->findChild<vt::TimeBox*>(u"txtHora(%1)"_s.arg(row));
            const auto* check = m_dialog->findChild<QCheckBox*>(u"chkContinua(%1)"_s.arg(row));
            QCOMPARE(label->buddy(), box);
            rows << label->text() + u' ' + box->storedValue() + u' ' + check->text() +
                        (check->isChecked() ? u" X"_s : QString());
        }
        QCOMPARE(rows, (QStringList{"Lunes: 08:00 Jornada continua X", "Martes: 07:30 Jornada continua",
                                    "Miércoles: 06:00 Jornada continua X", "Jueves: 09:15 Jornada continua",
                                    "Viernes: 05:00 Jornada continua X", "Sábado 00:00 Jornada continua",
                                    "Domingo 23:59 Jornada continua"}));
        // The first box has the focus, and with it its digits.
        QCOMPARE(m_dialog->txtHora(0)->text() + u' ' + m_dialog->txtHora(6)->text(), u"0800 23:59"_s);
        QCOMPARE(vt::test::ButtonRows(*m_dialog), (QStringList{"cmdAceptar=Aceptar+", "cmdCancelar=Cancelar+"}));
    }

    // Thursday's box is typed into first, so that a key reaching it instead of the dialog would
    // undo or keep the edit rather than close anything. "Aceptar" hands back every row.
    void keysAndButtonsActOnTheDialog_data() {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("key");  // 0 for a click
        QTest::addColumn<bool>("accepted");
        QTest::newRow("Return in a time box being typed") << u"txtHora(3)"_s << int(Qt::Key_Return) << true;
        QTest::newRow("Escape in a time box being typed") << u"txtHora(3)"_s << int(Qt::Key_Escape) << false;
        QTest::newRow("Return on a check box") << u"chkContinua(2)"_s << int(Qt::Key_Return) << true;
        QTest::newRow("Return on Cancelar") << u"cmdCancelar"_s << int(Qt::Key_Return) << true;
        QTest::newRow("Escape on Aceptar") << u"cmdAceptar"_s << int(Qt::Key_Escape) << false;
        QTest::newRow("click on Cancelar") << u"cmdCancelar"_s << 0 << false;
        QTest::newRow("click on Aceptar") << u"cmdAceptar"_s << 0 << true;
    }
    void keysAndButtonsActOnTheDialog() {
        QFETCH(QString, control);
        QFETCH(int, key);
        QFETCH(bool, accepted);
        // Every day flipped: what was "C" becomes "P", and the rest (the unknown "X" too) "C".
        for (int row = 0; row < 7; ++row) {
            m_dialog->chkContinua(row)->setChecked(!m_dialog->chkContinua(row)->isChecked());
        }
        QVERIFY(FocusOn(m_dialog->txtHora(3)));
        QTest::keyClicks(m_dialog->txtHora(3), u"745"_s);
        QWidget* target = vt::test::Child(*m_dialog, control);
        QVERIFY(FocusOn(target));

        vt::test::ClickOrKey(target, key);

        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->result(), accepted ? int(QDialog::Accepted) : int(QDialog::Rejected));
        const Week hours{"", "08:00", "07:30", "06:00", "07:45", "05:00", "00:00", "23:59"};
        QCOMPARE(m_dialog->dayHours(), accepted ? hours : kHours);
        QCOMPARE(m_dialog->dayModes(), accepted ? (Week{"", "P", "C", "P", "C", "P", "C", "C"}) : kModes);
        QVERIFY(m_dialogs.Shown().empty());
    }
};

QTEST_MAIN(ConfigDialogTest)
#include "tst_config_dialog.moc"
