// The alarm editor's wiring: what it shows, which keys and buttons do what, where the focus goes
// after a refusal and what "Aceptar" hands back. The checks themselves are the core's.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <memory>

#include "agenda/alarm_dialog.h"
#include "agenda/alarm_editor.h"
#include "extras/help_texts.h"
#include "fake_clock.h"
#include "scripted_dialogs.h"
#include "shell/qt_time_box.h"
#include "store/entry_rules.h"

using vt::AlarmForm;
using vt::EditorAction;
using vt::FrmAlarma;

class AlarmDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void controlsAreNamedAndCaptioned();
    void opensOnTheForm_data();
    void opensOnTheForm();
    void enterAcceptsWhatWasTyped();
    void escapeCancelsWhateverIsTyped_data();
    void escapeCancelsWhateverIsTyped();
    void f1ShowsTheHelpAndStaysOpen();
    void leavingTheDateConvertsIt_data();
    void leavingTheDateConvertsIt();
    void refusalFocusesItsBox_data();
    void refusalFocusesItsBox();
    void theClockIsReadOnAccept();
    void borrarAsksFirst_data();
    void borrarAsksFirst();
    void editHandsBackOnlyASavedForm_data();
    void editHandsBackOnlyASavedForm();

private:
    void open(const AlarmForm& form);
    template <typename T>
    T* control(const char* name) const;
    void enter(QWidget* box);

    std::unique_ptr<vt::test::ScriptedDialogs> m_dialogs;
    std::unique_ptr<vt::test::FakeClock> m_clock;
    std::unique_ptr<FrmAlarma> m_dialog;
};

namespace {
// Monday 18/03/2024 at 10:30:20.
vt::DateTime Now() {
    return vt::MakeDateTime(vt::MakeDate(18, 3, 2024), 10, 30, 20);
}

AlarmForm Form(const char* fecha, const char* hora, int cada, const char* texto, bool can_delete) {
    AlarmForm form;
    form.fecha = fecha;
    form.hora = hora;
    form.cada = cada;
    form.texto = texto;
    form.can_delete = can_delete;
    return form;
}

const AlarmForm kNew = Form("", "10:30", 0, "", false);
const AlarmForm kExisting = Form("20/03/2024", "09:15", 3, "!Reunión", true);

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

void AlarmDialogTest::init() {
    m_dialogs = std::make_unique<vt::test::ScriptedDialogs>();
    m_clock = std::make_unique<vt::test::FakeClock>(Now());
}

void AlarmDialogTest::cleanup() {
    m_dialog.reset();
    m_clock.reset();
    m_dialogs.reset();
}

void AlarmDialogTest::open(const AlarmForm& form) {
    m_dialog = std::make_unique<FrmAlarma>(*m_dialogs, *m_clock);
    m_dialog->load(form);
    QVERIFY(ShowActive(*m_dialog));
}

template <typename T>
T* AlarmDialogTest::control(const char* name) const {
    return m_dialog->findChild<T*>(QString::fromLatin1(name));
}

void AlarmDialogTest::enter(QWidget* box) {
    box->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(box->hasFocus());
}

void AlarmDialogTest::controlsAreNamedAndCaptioned() {
    open(kNew);
    QCOMPARE(m_dialog->objectName(), QStringLiteral("frmAlarma"));
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Alarma"));

    QStringList labels;
    for (const QLabel* label : m_dialog->findChildren<QLabel*>()) {
        labels << label->text();
    }
    const QStringList expected{"Fecha:",
                               "Hora:",
                               "Repetir:",
                               "Texto:",
                               Q("Prioridad alta: \"!\" por delante."),
                               Q("No mostrar en el calendario: \"-\" por delante."),
                               Q("Los años de aniversarios con formato (9999)"),
                               Q("A partir de una fecha concreta <ddmmyy>")};
    QCOMPARE(labels, expected);
    QCOMPARE(m_dialog->findChildren<QLabel*>().at(0)->buddy(), control<QLineEdit>("txtFecha"));

    QVERIFY(control<QLineEdit>("txtFecha") != nullptr);
    QVERIFY(control<vt::TimeBox>("txtHora") != nullptr);
    QVERIFY(control<QLineEdit>("txtTexto") != nullptr);
    auto* cada = control<QComboBox>("cboCada");
    QVERIFY(cada != nullptr);
    QStringList choices;
    for (int i = 0; i < cada->count(); ++i) {
        choices << cada->itemText(i);
    }
    QCOMPARE(choices, (QStringList{"Nunca", Q("1 Día"), "1 Semana", "1 Mes", "3 Meses", Q("1 Año"), Q("2 Años"),
                                   Q("4 Años"), Q("6 Años")}));
    QCOMPARE(control<QPushButton>("cmdAceptar")->text(), QStringLiteral("Aceptar"));
    QCOMPARE(control<QPushButton>("cmdCancelar")->text(), QStringLiteral("Cancelar"));
    QCOMPARE(control<QPushButton>("cmdBorrar")->text(), QStringLiteral("Borrar"));
    QCOMPARE(control<QPushButton>("cmdHelp")->text(), QStringLiteral("Ayuda"));
}

void AlarmDialogTest::opensOnTheForm_data() {
    QTest::addColumn<bool>("existing");
    QTest::newRow("new alarm") << false;
    QTest::newRow("existing alarm") << true;
}

void AlarmDialogTest::opensOnTheForm() {
    QFETCH(bool, existing);
    const AlarmForm& form = existing ? kExisting : kNew;
    open(form);
    QCOMPARE(control<QLineEdit>("txtFecha")->text(), QString::fromStdString(form.fecha));
    QCOMPARE(control<vt::TimeBox>("txtHora")->text(), QString::fromStdString(form.hora));
    QCOMPARE(control<QComboBox>("cboCada")->currentIndex(), form.cada);
    QCOMPARE(control<QLineEdit>("txtTexto")->text(), QString::fromStdString(form.texto));
    QCOMPARE(control<QPushButton>("cmdBorrar")->isEnabled(), existing);
    QVERIFY(control<QLineEdit>("txtFecha")->hasFocus());
}

void AlarmDialogTest::enterAcceptsWhatWasTyped() {
    open(kNew);
    QSignalSpy accepted(m_dialog.get(), &QDialog::accepted);
    QTest::keyClicks(control<QLineEdit>("txtFecha"), QStringLiteral("200324"));
    enter(control<vt::TimeBox>("txtHora"));
    QTest::keyClicks(control<vt::TimeBox>("txtHora"), QStringLiteral("745"));
    control<QComboBox>("cboCada")->setCurrentIndex(6);
    enter(control<QLineEdit>("txtTexto"));
    QTest::keyClicks(control<QLineEdit>("txtTexto"), Q("!Aniversario, boda"));
    enter(control<vt::TimeBox>("txtHora"));

    // Enter from the time box still being typed: the short forms are converted on accepting.
    QTest::keyClick(control<vt::TimeBox>("txtHora"), Qt::Key_Return);

    QCOMPARE(accepted.count(), 1);
    QCOMPARE(m_dialog->action(), EditorAction::Save);
    const AlarmForm& taken = m_dialog->form();
    QCOMPARE(taken.fecha, std::string("20/03/2024"));
    QCOMPARE(taken.hora, std::string("07:45"));
    QCOMPARE(taken.cada, 6);
    QCOMPARE(taken.texto, std::string("!Aniversario, boda"));
    QCOMPARE(Texts(*m_dialogs), QStringList{});
}

void AlarmDialogTest::escapeCancelsWhateverIsTyped_data() {
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("typed");
    QTest::newRow("a time that is no time") << "txtHora"
                                            << "2500";
    QTest::newRow("a short date that is no date") << "txtFecha"
                                                  << "3112";
    QTest::newRow("text") << "txtTexto"
                          << "Otra cosa";
    QTest::newRow("in the choices") << "cboCada"
                                    << "";
}

void AlarmDialogTest::escapeCancelsWhateverIsTyped() {
    QFETCH(QString, box);
    QFETCH(QString, typed);
    open(kExisting);
    QSignalSpy rejected(m_dialog.get(), &QDialog::rejected);
    auto* widget = m_dialog->findChild<QWidget*>(box);
    enter(widget);
    QTest::keyClicks(widget, typed);

    QTest::keyClick(widget, Qt::Key_Escape);

    QCOMPARE(rejected.count(), 1);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->action(), EditorAction::Cancel);
    QCOMPARE(m_dialog->form().texto, kExisting.texto);
    // Closing is no leaving of the box: nothing is checked on the way out.
    QCoreApplication::processEvents();
    QCOMPARE(Texts(*m_dialogs), QStringList{});
}

void AlarmDialogTest::f1ShowsTheHelpAndStaysOpen() {
    open(kExisting);
    enter(control<QLineEdit>("txtTexto"));

    QTest::keyClick(control<QLineEdit>("txtTexto"), Qt::Key_F1);

    QVERIFY(m_dialog->isVisible());
    QCOMPARE(m_dialogs->Shown().size(), size_t{1});
    QCOMPARE(m_dialogs->Shown()[0].text, vt::TextoAyuda("ALA"));
    QCOMPARE(m_dialogs->Shown()[0].icon, vt::MsgIcon::Information);
    QTest::mouseClick(control<QPushButton>("cmdHelp"), Qt::LeftButton);
    QCOMPARE(m_dialogs->Shown().size(), size_t{2});
    QCOMPARE(m_dialogs->Shown()[1].text, vt::TextoAyuda("ALA"));
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(control<QLineEdit>("txtTexto")->text(), Q("!Reunión"));
}

void AlarmDialogTest::leavingTheDateConvertsIt_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("ddmmyy") << "150324"
                            << "15/03/2024" << QStringList{};
    QTest::newRow("ddmmyyyy") << "15032024"
                              << "15/03/2024" << QStringList{};
    QTest::newRow("slashes are left alone") << "31/02/2024"
                                            << "31/02/2024" << QStringList{};
    QTest::newRow("refused, kept to be corrected") << "3112"
                                                   << "3112" << QStringList{QString::fromUtf8(vt::kDateFormatMessage)};
}

void AlarmDialogTest::leavingTheDateConvertsIt() {
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(QStringList, messages);
    open(kNew);
    QTest::keyClicks(control<QLineEdit>("txtFecha"), typed);

    QTest::keyClick(control<QLineEdit>("txtFecha"), Qt::Key_Tab);

    QTRY_VERIFY(control<vt::TimeBox>("txtHora")->hasFocus());
    QCOMPARE(control<QLineEdit>("txtFecha")->text(), shown);
    QCOMPARE(Texts(*m_dialogs), messages);
    QVERIFY(m_dialog->isVisible());
}

void AlarmDialogTest::refusalFocusesItsBox_data() {
    QTest::addColumn<QString>("fecha");
    QTest::addColumn<QString>("hora");
    QTest::addColumn<int>("cada");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("focus");

    QTest::addColumn<QString>("from");  // where Enter is pressed

    QTest::newRow("empty date") << ""
                                << "10:30" << 0 << "X" << Q(vt::kEnterDateMessage) << "txtFecha"
                                << "txtTexto";
    // Pressed in the date box itself: leaving it would already have refused the date.
    QTest::newRow("no date") << "3112"
                             << "10:30" << 0 << "X" << Q(vt::kDateFormatMessage) << "txtFecha"
                             << "txtFecha";
    QTest::newRow("empty time") << "20/03/2024"
                                << "" << 0 << "X" << Q(vt::kEnterTimeMessage) << "txtHora"
                                << "txtTexto";
    QTest::newRow("past day") << "10/03/2024"
                              << "10:30" << 0 << "X" << Q(vt::kTimePassedMessage) << "txtHora"
                              << "txtTexto";
    QTest::newRow("no choice") << "20/03/2024"
                               << "10:30" << -1 << "X" << Q(vt::kChooseCadaMessage) << "cboCada"
                               << "txtTexto";
    QTest::newRow("empty text") << "20/03/2024"
                                << "10:30" << 0 << "" << Q(vt::kEnterTextMessage) << "txtTexto"
                                << "txtFecha";
}

// Enter is mostly pressed in another box than the one refused, so that the focus has to move.
void AlarmDialogTest::refusalFocusesItsBox() {
    QFETCH(QString, fecha);
    QFETCH(QString, hora);
    QFETCH(int, cada);
    QFETCH(QString, texto);
    QFETCH(QString, message);
    QFETCH(QString, focus);
    QFETCH(QString, from);
    open(Form(fecha.toUtf8().constData(), hora.toUtf8().constData(), cada, texto.toUtf8().constData(), false));
    auto* pressed = m_dialog->findChild<QWidget*>(from);
    enter(pressed);
    QSignalSpy accepted(m_dialog.get(), &QDialog::accepted);

    QTest::keyClick(pressed, Qt::Key_Return);

    QCOMPARE(accepted.count(), 0);
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(Texts(*m_dialogs), QStringList{message});
    QTRY_VERIFY(m_dialog->findChild<QWidget*>(focus)->hasFocus());
    QCOMPARE(m_dialog->action(), EditorAction::Cancel);
}

void AlarmDialogTest::theClockIsReadOnAccept() {
    open(Form("18/03/2024", "10:31", 0, "Café", false));
    QTest::keyClick(control<QLineEdit>("txtFecha"), Qt::Key_Return);
    QCOMPARE(m_dialog->action(), EditorAction::Save);

    open(Form("18/03/2024", "10:31", 0, "Café", false));
    m_clock->AdvanceMinutes(1);  // 10:31:20, the minute itself
    QTest::keyClick(control<QLineEdit>("txtFecha"), Qt::Key_Return);
    QCOMPARE(m_dialog->action(), EditorAction::Save);

    open(Form("18/03/2024", "10:31", 0, "Café", false));
    m_clock->AdvanceMinutes(1);  // 10:32:20, one minute too late
    QTest::keyClick(control<QLineEdit>("txtFecha"), Qt::Key_Return);
    QCOMPARE(m_dialog->action(), EditorAction::Cancel);
    QCOMPARE(Texts(*m_dialogs), QStringList{Q(vt::kTimePassedMessage)});
    QTRY_VERIFY(control<vt::TimeBox>("txtHora")->hasFocus());
}

void AlarmDialogTest::borrarAsksFirst_data() {
    QTest::addColumn<vt::MsgAnswer>("answer");
    QTest::newRow("OK deletes") << vt::MsgAnswer::Ok;
    QTest::newRow("Cancel keeps") << vt::MsgAnswer::Cancel;
}

void AlarmDialogTest::borrarAsksFirst() {
    QFETCH(vt::MsgAnswer, answer);
    open(kExisting);
    m_dialogs->QueueAnswer(answer);

    QTest::mouseClick(control<QPushButton>("cmdBorrar"), Qt::LeftButton);

    const bool deleted = answer == vt::MsgAnswer::Ok;
    QCOMPARE(Texts(*m_dialogs), QStringList{Q(vt::kDeleteAlarmQuestion)});
    QCOMPARE(m_dialogs->Shown()[0].default_answer, std::optional{vt::MsgAnswer::Cancel});
    QCOMPARE(m_dialog->isVisible(), !deleted);
    QCOMPARE(m_dialog->action(), deleted ? EditorAction::Delete : EditorAction::Cancel);
}

void AlarmDialogTest::editHandsBackOnlyASavedForm_data() {
    QTest::addColumn<QString>("time");  // typed into the time box before Enter
    QTest::addColumn<int>("action");

    QTest::newRow("accepted") << "1800" << int(EditorAction::Save);
    QTest::newRow("refused, then Escape") << "900" << int(EditorAction::Cancel);
}

// The modal entry point: the form changes only when the dialog saved it.
void AlarmDialogTest::editHandsBackOnlyASavedForm() {
    QFETCH(QString, time);
    QFETCH(int, action);
    AlarmForm form = Form("18/03/2024", "10:30", 1, "Recoger a Lucía", true);
    const AlarmForm before = form;
    bool stillOpenAfterEnter = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<FrmAlarma*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            return;  // edit() showed nothing; the checks below fail
        }
        auto* box = dialog->findChild<vt::TimeBox*>(QStringLiteral("txtHora"));
        box->setFocus(Qt::TabFocusReason);
        if (!QTest::qWaitFor([box] { return box->hasFocus(); })) {
            dialog->reject();
            return;
        }
        QTest::keyClicks(box, time);
        QTest::keyClick(box, Qt::Key_Return);
        stillOpenAfterEnter = dialog->isVisible();
        if (stillOpenAfterEnter) {
            QTest::keyClick(box, Qt::Key_Escape);
        }
    });

    const EditorAction result = FrmAlarma::edit(nullptr, *m_dialogs, *m_clock, form);

    QCOMPARE(int(result), action);
    if (result == EditorAction::Save) {
        QVERIFY(!stillOpenAfterEnter);
        QCOMPARE(form.hora, std::string("18:00"));
        QCOMPARE(form.texto, before.texto);
        QCOMPARE(form.cada, before.cada);
        QVERIFY(m_dialogs->Shown().empty());
    } else {
        QVERIFY(stillOpenAfterEnter);
        QCOMPARE(form.hora, before.hora);
        QCOMPARE(Texts(*m_dialogs), QStringList{Q(vt::kTimePassedMessage)});
    }
}

QTEST_MAIN(AlarmDialogTest)
#include "tst_alarm_dialog.moc"
