// The alarm editor's wiring: what it shows, which keys and buttons do what, where the focus goes
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
    QString text(const QString& box) const { return m_dialog->findChild<QLineEdit*>(box)->text(); }

private slots:
    void init() {
        m_dialogs = {};
        m_clock.Set(18, 3, 2024, 10, 30, 20);  // a Monday
    }
    void cleanup() { m_dialog.reset(); }

    void controlsAreNamedAndFilledFromTheForm() {
        open(AlarmForm{});
        QVERIFY(!control(u"cmdBorrar"_s)->isEnabled());
        open(kExisting);
        QCOMPARE(m_dialog->objectName() + u' ' + m_dialog->windowTitle(), u"frmAlarma Alarma"_s);
        QCOMPARE(
            vt::test::LabelTexts(*m_dialog),
            (QStringList{"Fecha:", "Hora:", "Repetir:", "Texto:", "Prioridad alta: \"!\" por delante.",
                         "No mostrar en el calendario: \"-\" por delante.",
                         "Los años de aniversarios con formato (9999)", "A partir de una fecha concreta <ddmmyy>"}));
        // The choices of "Repetir", then the buttons.
        auto* cada = m_dialog->findChild<QComboBox*>(u"cboCada"_s);
        QCOMPARE(vt::test::ItemTexts(*cada) + vt::test::ButtonRows(*m_dialog),
                 (QStringList{"Nunca", "1 Día", "1 Semana", "1 Mes", "3 Meses", "1 Año", "2 Años", "4 Años", "6 Años",
                              "cmdAceptar=Aceptar+", "cmdCancelar=Cancelar+", "cmdBorrar=Borrar+", "cmdHelp=Ayuda+"}));
        QCOMPARE(m_dialog->findChildren<QLabel*>().at(0)->buddy(), control(u"txtFecha"_s));
        QCOMPARE((QStringList{text(u"txtFecha"_s), text(u"txtHora"_s), text(u"txtTexto"_s)}),
                 (QStringList{"20/03/2024", "09:15", "!Reunión"}));
        QVERIFY(qobject_cast<vt::TimeBox*>(control(u"txtHora"_s)) != nullptr);
        QCOMPARE(cada->currentIndex(), 3);
        QVERIFY(control(u"txtFecha"_s)->hasFocus());
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
        QTest::newRow("Escape on a date that is no date")
            << u"txtFecha"_s << u"3112"_s << int(Qt::Key_Escape) << vt::MsgAnswer::Ok << int(EditorAction::Cancel);
        QTest::newRow("F1 in the text") << u"txtTexto"_s << QString() << int(Qt::Key_F1) << vt::MsgAnswer::Ok << -1;
        QTest::newRow("Ayuda") << u"cmdHelp"_s << QString() << 0 << vt::MsgAnswer::Ok << -1;
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
        QWidget* target = this->control(control);
        QVERIFY(FocusOn(target));
        QTest::keyClicks(target, typed);

        vt::test::ClickOrKey(target, key);
        QCoreApplication::processEvents();

        QCOMPARE(m_dialog->isVisible(), action < 0);
        QCOMPARE(int(m_dialog->action()), action < 0 ? int(EditorAction::Cancel) : action);
        QCOMPARE(m_dialogs.Shown().size(), key == Qt::Key_Escape ? size_t{0} : size_t{1});
        if (control != u"cmdBorrar"_s && key != Qt::Key_Escape) {
            QCOMPARE(m_dialogs.Shown()[0].text, vt::TextoAyuda("ALA"));
        }
    }

    // The modal entry point hands back what was saved.
    void editHandsBackTheSavedForm() {
        AlarmForm form{"18/03/2024", "10:30", 1, "Recoger a Lucía", true};
        vt::test::WhenModal<FrmAlarma>([](FrmAlarma& dialog) {
            QWidget* box = vt::test::Child(dialog, u"txtHora"_s);
            if (FocusOn(box)) {
                QTest::keyClicks(box, u"1800"_s);
                QTest::keyClick(box, Qt::Key_Return);
            }
        });

        QCOMPARE(FrmAlarma::edit(nullptr, m_dialogs, m_clock, form), EditorAction::Save);
        QCOMPARE(form.hora + ' ' + form.texto, std::string("18:00 Recoger a Lucía"));
    }
};

QTEST_MAIN(AlarmDialogTest)
#include "tst_alarm_dialog.moc"
