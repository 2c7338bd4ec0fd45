#include "tasks/mark_task_dialog.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTextCursor>
#include <QVBoxLayout>

#include "platform/dialogs.h"
#include "tasks/mark_task.h"
#include "tasks/task_log.h"

namespace vt {

namespace {
// Wide enough for a day of marks without wrapping the usual lines.
constexpr int kLogColumns = 60;
constexpr int kLogLines = 15;

bool IsEnter(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}
}  // namespace

FrmMarcar::FrmMarcar(Dialogs& dialogs, const Clock& clock, Busy& busy, const AppPaths& paths, QWidget* parent)
    : KeyFirstDialog(parent), m_dialogs(dialogs), m_clock(clock), m_busy(busy), m_paths(paths) {
    setObjectName(QStringLiteral("frmMarcar"));
    setWindowTitle(QStringLiteral("Tareas"));

    auto* layout = new QVBoxLayout(this);

    m_cboTarea = new QComboBox(this);
    m_cboTarea->setObjectName(QStringLiteral("cboTarea"));
    m_cboTarea->setEditable(true);
    // The typed name is marked as it stands; the list must not grow with it or complete it
    // into another task's name.
    m_cboTarea->setInsertPolicy(QComboBox::NoInsert);
    m_cboTarea->setCompleter(nullptr);
    layout->addWidget(m_cboTarea);

    auto* order = new QHBoxLayout;
    m_optUltimoUso = new QRadioButton(QStringLiteral("Por último uso."), this);
    m_optUltimoUso->setObjectName(QStringLiteral("optOrden(0)"));
    m_optNombre = new QRadioButton(QStringLiteral("Por nombre."), this);
    m_optNombre->setObjectName(QStringLiteral("optOrden(1)"));
    order->addWidget(m_optUltimoUso);
    order->addWidget(m_optNombre);
    order->addStretch(1);
    layout->addLayout(order);

    m_txtLog = new QPlainTextEdit(this);
    m_txtLog->setObjectName(QStringLiteral("txtLog"));
    m_txtLog->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_txtLog->setTabChangesFocus(true);
    const QFontMetrics metrics = m_txtLog->fontMetrics();
    m_txtLog->setMinimumSize(metrics.averageCharWidth() * kLogColumns, metrics.lineSpacing() * kLogLines);
    layout->addWidget(m_txtLog, 1);

    m_optUltimoUso->setChecked(true);
    fillTaskList();
    m_txtLog->setPlainText(QString::fromStdString(LogEditorText(ReadTaskLog(m_paths))));
    // Connected after loading, so that the loading itself leaves the log unchanged.
    connect(m_txtLog, &QPlainTextEdit::textChanged, this, [this] { m_logChanged = true; });
    connect(m_optUltimoUso, &QRadioButton::clicked, this, &FrmMarcar::fillTaskList);
    connect(m_optNombre, &QRadioButton::clicked, this, &FrmMarcar::fillTaskList);

    watchChildKeys();
    m_cboTarea->setFocus(Qt::OtherFocusReason);
}

std::optional<std::string> FrmMarcar::marcar(QWidget* parent, Dialogs& dialogs, const Clock& clock, Busy& busy,
                                             const AppPaths& paths) {
    FrmMarcar dialog(dialogs, clock, busy, paths, parent);
    dialog.exec();
    return dialog.tareaActual();
}

void FrmMarcar::fillTaskList() {
    const TaskOrder order = m_optNombre->isChecked() ? TaskOrder::ByName : TaskOrder::LastUse;
    m_cboTarea->clear();
    QStringList items;
    for (const std::string& name : TaskListItems(ReadTaskLog(m_paths), order)) {
        items << QString::fromStdString(name);
    }
    m_cboTarea->addItems(items);
    m_cboTarea->setEditText(QString());
}

void FrmMarcar::onEnterKey() {
    QWidget* focus = focusWidget();
    if (focus == m_txtLog) {
        saveLog();
    } else if (focus == m_cboTarea || (focus != nullptr && m_cboTarea->isAncestorOf(focus))) {
        markTask();
    }
}

bool FrmMarcar::eventFilter(QObject* watched, QEvent* event) {
    // Shift+Enter in the log is a new line, as in any editor, and so are Ctrl+Enter and
    // Alt+Enter, which other editors use for it; the dialog keeps the plain Enter (the keypad's
    // too). A plain block break, so the text reads back with "\n" and no line separators.
    if (watched == m_txtLog && event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<const QKeyEvent*>(event);
        if (IsEnter(key) && (key.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier))) {
            m_txtLog->textCursor().insertBlock();
            m_txtLog->ensureCursorVisible();
            return true;
        }
    }
    return KeyFirstDialog::eventFilter(watched, event);
}

void FrmMarcar::markTask() {
    if (auto marked = MarcarTarea(m_paths, m_clock, m_dialogs, m_busy, m_cboTarea->currentText().toStdString())) {
        m_tareaActual = std::move(marked);
        accept();
    }
}

void FrmMarcar::saveLog() {
    const LogSave save =
        GuardarLog(m_paths, m_clock, m_dialogs, m_busy, m_txtLog->toPlainText().toStdString(), m_logChanged);
    if (save.tarea_actual) {
        m_tareaActual = save.tarea_actual;
    }
    if (save.close) {
        accept();
    }
}

void FrmMarcar::reject() {
    if (CancelarLog(m_dialogs, m_logChanged)) {
        QDialog::reject();
    }
}

}  // namespace vt
