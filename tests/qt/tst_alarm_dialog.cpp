// The alarm editor's wiring: which keys and buttons do what, where the focus goes
// after a refusal and what "Aceptar" hands back. The checks and their messages are the core's.
#include "agenda/alarm_dialog.h"
#include "agenda/alarm_editor.h"
#include "extras/help_texts.h"
#include "qt_test_support.h"

using vt::AlarmForm;
using vt::EditorAction;
using vt::FrmAlarma;
using vt::test::FocusOn;

Q_DECLARE_METATYPE(vt::AlarmForm)

namespace {
const AlarmForm kExisting{"20/03/2024", "09:15", 3, "!Reunión", true};
}  // namespace

class AlarmDialogTest : public QObject {
    Q_OBJECT

    vt::test::ScriptedDialogs m_dialogs;
    vt::test::FakeClock m_clock;
    std::unique_ptr<FrmAlarma> m_dialog;

    void open(const AlarmForm& form) {
        m_dialog = std::make_unique<FrmAlarma>(m_dialogs, m_clock);
        m_dialog->load(form);
        QVERIFY(vt::test::ShowActive(*m_dialog));
    }
    QWidget* control(const QString& name) const { return vt::test::Child(*m_dialog, name); }

private slots:
    void init() {
        m_dialogs = {};
        m_clock.Set(18, 3, 2024, 10, 30, 20);  // a Monday
    }
    void cleanup() { m_dialog.reset(); }

    void enterAcceptsWhatWasTyped() {
        open(AlarmForm{});
        QTest::keyClicks(control(u"txtFecha"_s), u"200324"_s);
        m_dialog->findChild<QComboBox*>(u"cboCada"_s)->setCurrentIndex(6);
        QVERIFY(FocusOn(control(u"txtTexto"_s)));
        QTest::keyClicks(control(u"txtTexto"_s), u"!Aniversario, boda"_s);
        QVERIFY(FocusOn(control(u"txtHora"_s)));
        QTest::keyClicks(control(u"txtHora"_s), u"745"_s);

        // Enter from the time box still being typed: the short forms are converted on accepting.
        QTest::keyClick(control(u"txtHora"_s), Qt::Key_Return);

        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(m_dialog->action(), EditorAction::Save);
        const AlarmForm& taken = m_dialog->form();
        QCOMPARE((QStringList{QString::fromStdString(taken.fecha), QString::fromStdString(taken.hora),
                              QString::number(taken.cada), QString::fromStdString(taken.texto)}),
                 (QStringList{"20/03/2024", "07:45", "6", "!Aniversario, boda"}));
        QVERIFY(m_dialogs.Shown().empty());
    }

    // The dialog sees Escape and F1 before its controls; closing is no leaving of the box, so
    // nothing is checked on the way out. "Borrar" asks first.
    void keysAndButtons_data() {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("key");  // 0 for a click
        QTest::addColumn<vt::MsgAnswer>("answer");
        QTest::addColumn<int>("action");  // -1: still open
        QTest::newRow("Escape on a time that is no time")
            << u"txtHora"_s << u"2500"_s << int(Qt::Key_Escape) << vt::MsgAnswer::Ok << int(EditorAction::Cancel);
        QTest::newRow("F1 in the text") << u"txtTexto"_s << QString() << int(Qt::Key_F1) << vt::MsgAnswer::Ok << -1;
        QTest::newRow("Borrar, OK") << u"cmdBorrar"_s << QString() << 0 << vt::MsgAnswer::Ok
                                    << int(EditorAction::Delete);
        QTest::newRow("Borrar, Cancel") << u"cmdBorrar"_s << QString() << 0 << vt::MsgAnswer::Cancel << -1;
    }
    void keysAndButtons() {
        QFETCH(QString, control);
        QFETCH(QString, typed);
        QFETCH(int, key);
        QFETCH(vt::MsgAnswer, answer);
        QFETCH(int, action);
        open(kExisting);
        m_dialogs.QueueAnswer(answer);
        QVERIFY(FocusOn(this->control(control)));
        QTest::keyClicks(this->control(control), typed);

        if (key == 0) {
            QTest::mouseClick(this->control(control), Qt::LeftButton);
        } else {
            QTest::keyClick(this->control(control), Qt::Key(key));
        }
        QCoreApplication::processEvents();

        QCOMPARE(m_dialog->isVisible(), action < 0);
        QCOMPARE(int(m_dialog->action()), action < 0 ? int(EditorAction::Cancel) : action);
        QCOMPARE(m_dialogs.Shown().size(), key == Qt::Key_Escape ? size_t{0} : size_t{1});
        if (control != u"cmdBorrar"_s && key != Qt::Key_Escape) {
            QCOMPARE(m_dialogs.Shown()[0].text, vt::TextoAyuda("ALA"));
        }
    }

    // Enter is pressed in another box than the one refused, so that the focus has to move. The
    // time is checked against the clock when Enter is pressed, not when the dialog opened.
    void refusalFocusesItsBox_data() {
        QTest::addColumn<AlarmForm>("form");
        QTest::addColumn<int>("minutesLater");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("focus");
        QTest::newRow("empty date") << AlarmForm{"", "10:30", 0, "X", false} << 0 << u"txtTexto"_s << u"txtFecha"_s;
        QTest::newRow("time passed since opening")
            << AlarmForm{"18/03/2024", "10:31", 0, "X", false} << 2 << u"txtTexto"_s << u"txtHora"_s;
    }
    void refusalFocusesItsBox() {
        QFETCH(AlarmForm, form);
        QFETCH(int, minutesLater);
        QFETCH(QString, from);
        QFETCH(QString, focus);
        open(form);
        m_clock.AdvanceMinutes(minutesLater);
        QVERIFY(FocusOn(control(from)));

        QTest::keyClick(control(from), Qt::Key_Return);

        QVERIFY(m_dialog->isVisible());
        QCOMPARE(m_dialogs.Shown().size(), size_t{1});
        QTRY_VERIFY(control(focus)->hasFocus());
        QCOMPARE(m_dialog->action(), EditorAction::Cancel);
    }
};

QTEST_MAIN(AlarmDialogTest)
#include "tst_alarm_dialog.moc"
