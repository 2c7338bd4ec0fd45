// The mark-task dialog's wiring: its controls, and which key in which box marks, saves, breaks
// a line or asks before dropping edits. The rules behind each answer are the core's.
#include "qt_test_support.h"
#include "recording_busy.h"
#include "tasks/mark_task_dialog.h"

using vt::FrmMarcar;

namespace {
const std::string kLog = "LOG/TAREAS.LOG";
const std::string kLines =
    "01/01/2024 08:00:00 Correo\r\n02/01/2024 08:30:00 informe\r\n02/01/2024 09:00:00 Informe\r\n";
}  // namespace

class MarkTaskDialogTest : public QObject {
    Q_OBJECT

    std::unique_ptr<vt::test::TempAppFolder> m_folder;
    vt::test::FakeClock m_clock{vt::MakeDateTime(vt::MakeDate(2, 1, 2024), 10, 15, 30)};
    std::unique_ptr<vt::test::ScriptedDialogs> m_dialogs;
    vt::test::RecordingBusy m_busy;
    std::unique_ptr<FrmMarcar> m_dialog;

    QString logOnDisk() const { return QString::fromStdString(m_folder->ReadFile(kLog)); }

private slots:
    void init() {
        m_folder = std::make_unique<vt::test::TempAppFolder>();
        m_folder->WriteFile(kLog, kLines);
        m_dialogs = std::make_unique<vt::test::ScriptedDialogs>();
        m_dialog = std::make_unique<FrmMarcar>(*m_dialogs, m_clock, m_busy, m_folder->Paths());
        QVERIFY(vt::test::ShowActive(*m_dialog));
    }
    void cleanup() {
        m_dialog.reset();
        m_folder.reset();
    }

    // Shift+Enter, Ctrl+Enter and Alt+Enter break the line; Enter asks to save; No keeps the
    // dialog and the edits; Yes writes them and the current task follows the log.
    void enterInTheLogSavesAndAModifiedEnterBreaksTheLine_data() {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("Shift+Enter") << Qt::KeyboardModifiers(Qt::ShiftModifier);
        QTest::newRow("Ctrl+Enter") << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("Alt+Enter") << Qt::KeyboardModifiers(Qt::AltModifier);
    }
    void enterInTheLogSavesAndAModifiedEnterBreaksTheLine() {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QPlainTextEdit* log = m_dialog->txtLog();
        QVERIFY(vt::test::FocusOn(log));
        log->moveCursor(QTextCursor::End);
        QTest::keyClicks(log, u"02/01/2024 10:00:00 Correo"_s);
        QTest::keyClick(log, Qt::Key_Return, modifiers);
        QTest::keyClicks(log, u"  02/01/2024 10:05:00 Llamadas  "_s);
        const QString edited = log->toPlainText();
        QVERIFY(edited.endsWith(u"Correo\n  02/01/2024 10:05:00 Llamadas  "_s));

        m_dialogs->QueueAnswer(vt::MsgAnswer::No);
        QTest::keyClick(log, Qt::Key_Return);
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(log->toPlainText(), edited);
        QCOMPARE(m_dialogs->Texts(), std::vector<std::string>{"¿Guardar los cambios en del Log?"});
        QCOMPARE(logOnDisk(), QString::fromStdString(kLines));

        m_dialogs->QueueAnswer(vt::MsgAnswer::Yes);
        QTest::keyClick(log, Qt::Key_Enter, Qt::KeypadModifier);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->tareaActual(), std::optional<std::string>("Llamadas"));
        QCOMPARE(logOnDisk(),
                 QString::fromStdString(kLines) + u"02/01/2024 10:00:00 Correo\r\n02/01/2024 10:05:00 Llamadas\r\n"_s);
    }

    void marcarReturnsTheMarkedTask() {
        m_dialog.reset();
        vt::test::WhenModal<FrmMarcar>([](FrmMarcar& dialog) {
            dialog.cboTarea()->setEditText(u"Correo"_s);
            QTest::keyClick(dialog.cboTarea(), Qt::Key_Return);
        });
        QCOMPARE(FrmMarcar::marcar(nullptr, *m_dialogs, m_clock, m_busy, m_folder->Paths()),
                 std::optional<std::string>("Correo"));
        vt::test::WhenModal<FrmMarcar>([](FrmMarcar& dialog) { QTest::keyClick(dialog.cboTarea(), Qt::Key_Escape); });
        QCOMPARE(FrmMarcar::marcar(nullptr, *m_dialogs, m_clock, m_busy, m_folder->Paths()), std::nullopt);
    }
};

QTEST_MAIN(MarkTaskDialogTest)
#include "tst_mark_task_dialog.moc"
