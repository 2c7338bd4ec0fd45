// The repetition editor's wiring: its controls, keys, the focus after a refusal and what
// "Aceptar" hands back. The checks and their messages are the core's.
#include "agenda/repetition_dialog.h"
#include "agenda/repetition_editor.h"
#include "extras/help_texts.h"
#include "qt_test_support.h"

using vt::EditorAction;
using vt::FrmRepeticion;
using vt::RepetitionForm;
using vt::test::FocusOn;

namespace {
const RepetitionForm kExisting{"20/03/2024", "09:15", "Llamar a José", true};
}  // namespace

class RepetitionDialogTest : public QObject {
    Q_OBJECT

    vt::test::ScriptedDialogs m_dialogs;
    vt::test::FakeClock m_clock;
    std::unique_ptr<FrmRepeticion> m_dialog;

    void open(const RepetitionForm& form) {
        m_dialog = std::make_unique<FrmRepeticion>(m_dialogs, m_clock);
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
        open(RepetitionForm{});
        QVERIFY(!control(u"cmdBorrar"_s)->isEnabled());
        open(kExisting);
        QCOMPARE(m_dialog->objectName() + u' ' + m_dialog->windowTitle(), u"frmRepeticion Repetición"_s);
        QCOMPARE(vt::test::LabelTexts(*m_dialog) + vt::test::ButtonRows(*m_dialog),
                 (QStringList{"Fecha:", "Hora:", "Texto:", "cmdAceptar=Aceptar+", "cmdCancelar=Cancelar+",
                              "cmdBorrar=Borrar+", "cmdHelp=Ayuda+"}));
        QVERIFY(qobject_cast<vt::TimeBox*>(control(u"txtHora"_s)) != nullptr);
        QCOMPARE((QStringList{text(u"txtFecha"_s), text(u"txtHora"_s), text(u"txtTexto"_s)}),
                 (QStringList{"20/03/2024", "09:15", "Llamar a José"}));
    }

    void enterAcceptsAnEmptyText() {
        open(RepetitionForm{});
        QTest::keyClicks(control(u"txtFecha"_s), u"180324"_s);
        QVERIFY(FocusOn(control(u"txtHora"_s)));
        QTest::keyClicks(control(u"txtHora"_s), u"1030"_s);

        QTest::keyClick(control(u"txtHora"_s), Qt::Key_Enter);

        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->action(), EditorAction::Save);
        const RepetitionForm& taken = m_dialog->form();
        QCOMPARE((std::vector{taken.fecha, taken.hora, taken.texto}),
                 (std::vector<std::string>{"18/03/2024", "10:30", ""}));
        QVERIFY(m_dialogs.Shown().empty());
    }

    // The dialog sees Enter, Escape and F1 before its controls; "Borrar" asks first.
    void keysAndButtons_data() {
        QTest::addColumn<QString>("focus");
        QTest::addColumn<int>("key");  // 0 for a click
        QTest::addColumn<vt::MsgAnswer>("answer");
        QTest::addColumn<int>("action");  // -1: still open
        QTest::newRow("Escape in the time box")
            << u"txtHora"_s << int(Qt::Key_Escape) << vt::MsgAnswer::Ok << int(EditorAction::Cancel);
        QTest::newRow("Return on Cancelar")
            << u"cmdCancelar"_s << int(Qt::Key_Return) << vt::MsgAnswer::Ok << int(EditorAction::Save);
        QTest::newRow("F1 in the time box") << u"txtHora"_s << int(Qt::Key_F1) << vt::MsgAnswer::Ok << -1;
        QTest::newRow("Borrar, OK") << u"cmdBorrar"_s << 0 << vt::MsgAnswer::Ok << int(EditorAction::Delete);
        QTest::newRow("Borrar, Cancel") << u"cmdBorrar"_s << 0 << vt::MsgAnswer::Cancel << -1;
    }
    void keysAndButtons() {
        QFETCH(QString, focus);
        QFETCH(int, key);
        QFETCH(vt::MsgAnswer, answer);
        QFETCH(int, action);
        open(kExisting);
        m_dialogs.QueueAnswer(answer);
        QVERIFY(FocusOn(control(focus)));

        vt::test::ClickOrKey(control(focus), key);

        QCOMPARE(m_dialog->isVisible(), action < 0);
        QCOMPARE(int(m_dialog->action()), action < 0 ? int(EditorAction::Cancel) : action);
        QCOMPARE(m_dialogs.Shown().size(), key == 0 || key == Qt::Key_F1 ? size_t{1} : size_t{0});
        if (key == Qt::Key_F1) {
            QCOMPARE(m_dialogs.Shown()[0].text, vt::TextoAyuda("REP"));
        }
    }

    // A refusal puts the focus in the box refused, here from the text.
    void refusalFocusesItsBox() {
        open(RepetitionForm{"18/03/2024", "10:29", "", false});
        QVERIFY(FocusOn(control(u"txtTexto"_s)));

        QTest::keyClick(control(u"txtTexto"_s), Qt::Key_Return);

        QVERIFY(m_dialog->isVisible());
        QCOMPARE(m_dialogs.Shown().size(), size_t{1});
        QTRY_VERIFY(control(u"txtHora"_s)->hasFocus());
        QCOMPARE(m_dialog->action(), EditorAction::Cancel);
    }

    // The modal entry point hands back what was saved.
    void editHandsBackTheSavedForm() {
        RepetitionForm form = kExisting;
        vt::test::WhenModal<FrmRepeticion>([](FrmRepeticion& dialog) {
            auto* box = dialog.findChild<QLineEdit*>(u"txtTexto"_s);
            if (FocusOn(box)) {
                box->selectAll();
                QTest::keyClicks(box, u"Pan, leche"_s);
                QTest::keyClick(box, Qt::Key_Return);
            }
        });

        QCOMPARE(FrmRepeticion::edit(nullptr, m_dialogs, m_clock, form), EditorAction::Save);
        QCOMPARE(form.texto + ' ' + form.hora, "Pan, leche " + kExisting.hora);
    }
};

QTEST_MAIN(RepetitionDialogTest)
#include "tst_repetition_dialog.moc"
