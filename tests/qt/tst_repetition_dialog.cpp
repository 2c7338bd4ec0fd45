// The repetition editor's wiring: its controls, keys, the focus after a refusal and what
// "Aceptar" hands back. The checks themselves are the core's.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <memory>

#include "agenda/repetition_dialog.h"
#include "agenda/repetition_editor.h"
#include "extras/help_texts.h"
#include "fake_clock.h"
#include "scripted_dialogs.h"
#include "shell/qt_time_box.h"
#include "store/entry_rules.h"

using vt::EditorAction;
using vt::FrmRepeticion;
using vt::RepetitionForm;

class RepetitionDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void controlsAreNamedAndCaptioned();
    void opensOnTheForm_data();
    void opensOnTheForm();
    void enterAcceptsAnEmptyText();
    void keys_data();
    void keys();
    void refusalFocusesItsBox_data();
    void refusalFocusesItsBox();
    void borrarAsksFirst_data();
    void borrarAsksFirst();
    void editHandsBackOnlyASavedForm_data();
    void editHandsBackOnlyASavedForm();

private:
    void open(const RepetitionForm& form);
    template <typename T>
    T* control(const char* name) const;
    void enter(QWidget* box);

    std::unique_ptr<vt::test::ScriptedDialogs> m_dialogs;
    std::unique_ptr<vt::test::FakeClock> m_clock;
    std::unique_ptr<FrmRepeticion> m_dialog;
};

namespace {
RepetitionForm Form(const char* fecha, const char* hora, const char* texto, bool can_delete) {
    RepetitionForm form;
    form.fecha = fecha;
    form.hora = hora;
    form.texto = texto;
    form.can_delete = can_delete;
    return form;
}

const RepetitionForm kNew = Form("", "10:30", "", false);
const RepetitionForm kExisting = Form("20/03/2024", "09:15", "Llamar a José", true);

bool ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

QStringList Texts(const vt::test::ScriptedDialogs& dialogs) {
    QStringList texts;
    for (const std::string& text : dialogs.Texts()) {
        texts << QString::fromStdString(text);
    }
    return texts;
}

QString Q(const char* text) {
    return QString::fromUtf8(text);
}
}  // namespace

void RepetitionDialogTest::init() {
    m_dialogs = std::make_unique<vt::test::ScriptedDialogs>();
    // Monday 18/03/2024 at 10:30:20.
    m_clock = std::make_unique<vt::test::FakeClock>();
    m_clock->Set(18, 3, 2024, 10, 30, 20);
}

void RepetitionDialogTest::cleanup() {
    m_dialog.reset();
    m_clock.reset();
    m_dialogs.reset();
}

void RepetitionDialogTest::open(const RepetitionForm& form) {
    m_dialog = std::make_unique<FrmRepeticion>(*m_dialogs, *m_clock);
    m_dialog->load(form);
    QVERIFY(ShowActive(*m_dialog));
}

template <typename T>
T* RepetitionDialogTest::control(const char* name) const {
    return m_dialog->findChild<T*>(QString::fromLatin1(name));
}

void RepetitionDialogTest::enter(QWidget* box) {
    box->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(box->hasFocus());
}

void RepetitionDialogTest::controlsAreNamedAndCaptioned() {
    open(kNew);
    QCOMPARE(m_dialog->objectName(), QStringLiteral("frmRepeticion"));
    QCOMPARE(m_dialog->windowTitle(), Q("Repetición"));
    QStringList labels;
    for (const QLabel* label : m_dialog->findChildren<QLabel*>()) {
        labels << label->text();
    }
    QCOMPARE(labels, (QStringList{"Fecha:", "Hora:", "Texto:"}));
    QVERIFY(control<QLineEdit>("txtFecha") != nullptr);
    QVERIFY(control<vt::TimeBox>("txtHora") != nullptr);
    QVERIFY(control<QLineEdit>("txtTexto") != nullptr);
    QCOMPARE(control<QPushButton>("cmdAceptar")->text(), QStringLiteral("Aceptar"));
    QCOMPARE(control<QPushButton>("cmdCancelar")->text(), QStringLiteral("Cancelar"));
    QCOMPARE(control<QPushButton>("cmdBorrar")->text(), QStringLiteral("Borrar"));
    QCOMPARE(control<QPushButton>("cmdHelp")->text(), QStringLiteral("Ayuda"));
}

void RepetitionDialogTest::opensOnTheForm_data() {
    QTest::addColumn<bool>("existing");
    QTest::newRow("new repetition") << false;
    QTest::newRow("existing repetition") << true;
}

void RepetitionDialogTest::opensOnTheForm() {
    QFETCH(bool, existing);
    const RepetitionForm& form = existing ? kExisting : kNew;
    open(form);
    QCOMPARE(control<QLineEdit>("txtFecha")->text(), QString::fromStdString(form.fecha));
    QCOMPARE(control<vt::TimeBox>("txtHora")->text(), QString::fromStdString(form.hora));
    QCOMPARE(control<QLineEdit>("txtTexto")->text(), QString::fromStdString(form.texto));
    QCOMPARE(control<QPushButton>("cmdBorrar")->isEnabled(), existing);
}

void RepetitionDialogTest::enterAcceptsAnEmptyText() {
    open(kNew);
    QTest::keyClicks(control<QLineEdit>("txtFecha"), QStringLiteral("180324"));
    enter(control<vt::TimeBox>("txtHora"));
    QTest::keyClicks(control<vt::TimeBox>("txtHora"), QStringLiteral("1030"));

    QTest::keyClick(control<vt::TimeBox>("txtHora"), Qt::Key_Enter);

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->action(), EditorAction::Save);
    QCOMPARE(m_dialog->form().fecha, std::string("18/03/2024"));
    QCOMPARE(m_dialog->form().hora, std::string("10:30"));
    QCOMPARE(m_dialog->form().texto, std::string());
    QCOMPARE(Texts(*m_dialogs), QStringList{});
}

void RepetitionDialogTest::keys_data() {
    QTest::addColumn<QString>("focus");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("open");  // still open afterwards
    QTest::addColumn<int>("action");

    QTest::newRow("Escape in the time box") << "txtHora" << Qt::Key_Escape << false << int(EditorAction::Cancel);
    QTest::newRow("Escape in the text") << "txtTexto" << Qt::Key_Escape << false << int(EditorAction::Cancel);
    QTest::newRow("Return on Cancelar") << "cmdCancelar" << Qt::Key_Return << false << int(EditorAction::Save);
    QTest::newRow("F1 in the date") << "txtFecha" << Qt::Key_F1 << true << int(EditorAction::Cancel);
    QTest::newRow("F1 in the time box") << "txtHora" << Qt::Key_F1 << true << int(EditorAction::Cancel);
}

void RepetitionDialogTest::keys() {
    QFETCH(QString, focus);
    QFETCH(Qt::Key, key);
    QFETCH(bool, open);
    QFETCH(int, action);
    this->open(kExisting);
    auto* widget = m_dialog->findChild<QWidget*>(focus);
    enter(widget);

    QTest::keyClick(widget, key);

    QCOMPARE(m_dialog->isVisible(), open);
    QCOMPARE(int(m_dialog->action()), action);
    if (key == Qt::Key_F1) {
        QCOMPARE(m_dialogs->Shown().size(), size_t{1});
        QCOMPARE(m_dialogs->Shown()[0].text, vt::TextoAyuda("REP"));
        QCOMPARE(m_dialogs->Shown()[0].icon, vt::MsgIcon::Information);
    } else {
        QCOMPARE(Texts(*m_dialogs), QStringList{});
    }
}

void RepetitionDialogTest::refusalFocusesItsBox_data() {
    QTest::addColumn<QString>("fecha");
    QTest::addColumn<QString>("hora");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("focus");

    QTest::newRow("empty date") << ""
                                << "10:30" << Q(vt::kEnterDateMessage) << "txtFecha";
    QTest::newRow("no real day") << "30/02/2024"
                                 << "10:30" << Q(vt::kDateFormatMessage) << "txtFecha";
    QTest::newRow("empty time") << "20/03/2024"
                                << "" << Q(vt::kEnterTimeMessage) << "txtHora";
    QTest::newRow("a minute ago") << "18/03/2024"
                                  << "10:29" << Q(vt::kTimePassedMessage) << "txtHora";
}

void RepetitionDialogTest::refusalFocusesItsBox() {
    QFETCH(QString, fecha);
    QFETCH(QString, hora);
    QFETCH(QString, message);
    QFETCH(QString, focus);
    open(Form(fecha.toUtf8().constData(), hora.toUtf8().constData(), "", false));
    enter(control<QLineEdit>("txtTexto"));

    QTest::keyClick(control<QLineEdit>("txtTexto"), Qt::Key_Return);

    QVERIFY(m_dialog->isVisible());
    QCOMPARE(Texts(*m_dialogs), QStringList{message});
    QTRY_VERIFY(m_dialog->findChild<QWidget*>(focus)->hasFocus());
    QCOMPARE(m_dialog->action(), EditorAction::Cancel);
}

void RepetitionDialogTest::borrarAsksFirst_data() {
    QTest::addColumn<bool>("ok");
    QTest::newRow("OK deletes") << true;
    QTest::newRow("Cancel keeps") << false;
}

void RepetitionDialogTest::borrarAsksFirst() {
    QFETCH(bool, ok);
    open(kExisting);
    m_dialogs->QueueAnswer(ok ? vt::MsgAnswer::Ok : vt::MsgAnswer::Cancel);

    QTest::mouseClick(control<QPushButton>("cmdBorrar"), Qt::LeftButton);

    QCOMPARE(Texts(*m_dialogs), QStringList{Q(vt::kDeleteRepetitionQuestion)});
    QCOMPARE(m_dialog->isVisible(), !ok);
    QCOMPARE(m_dialog->action(), ok ? EditorAction::Delete : EditorAction::Cancel);
}

void RepetitionDialogTest::editHandsBackOnlyASavedForm_data() {
    QTest::addColumn<QString>("text");  // typed over the text before Enter or Escape
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Enter saves") << "Pan, leche" << Qt::Key_Return;
    QTest::newRow("Escape keeps the form") << "Pan, leche" << Qt::Key_Escape;
}

void RepetitionDialogTest::editHandsBackOnlyASavedForm() {
    QFETCH(QString, text);
    QFETCH(Qt::Key, key);
    RepetitionForm form = kExisting;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<FrmRepeticion*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            return;  // edit() showed nothing; the checks below fail
        }
        auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("txtTexto"));
        box->setFocus(Qt::TabFocusReason);
        if (!QTest::qWaitFor([box] { return box->hasFocus(); })) {
            dialog->reject();
            return;
        }
        // Typed over the old text, whichever way the focus arrived.
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, key);
        if (dialog->isVisible()) {
            dialog->reject();  // the check below then fails for Enter
        }
    });

    const EditorAction result = FrmRepeticion::edit(nullptr, *m_dialogs, *m_clock, form);

    const bool saved = key == Qt::Key_Return;
    QCOMPARE(result, saved ? EditorAction::Save : EditorAction::Cancel);
    QCOMPARE(form.texto, saved ? text.toStdString() : kExisting.texto);
    QCOMPARE(form.fecha, kExisting.fecha);
    QCOMPARE(form.hora, kExisting.hora);
}

QTEST_MAIN(RepetitionDialogTest)
#include "tst_repetition_dialog.moc"
