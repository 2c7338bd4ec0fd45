#include "agenda/entry_editor_dialog.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "extras/help_texts.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "shell/qt_time_box.h"

namespace vt {

namespace {
constexpr int kDateLength = 10;  // "dd/mm/yyyy"

// The user moved on to another control. The window losing activation (a message box, another
// program) only borrows the focus: the date has not been left and must not be converted yet.
bool IsRealFocusMove(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::MouseFocusReason ||
           reason == Qt::ShortcutFocusReason || reason == Qt::OtherFocusReason;
}
}  // namespace

EntryEditorDialog::EntryEditorDialog(Dialogs& dialogs, const Clock& clock, const char* helpTopic,
                                     ConfirmDelete confirmDelete, QWidget* parent)
    : KeyFirstDialog(parent),
      m_dialogs(dialogs),
      m_clock(clock),
      m_helpTopic(helpTopic),
      m_confirmDelete(confirmDelete) {
    m_layout = new QVBoxLayout(this);
    m_rows = new QGridLayout;
    m_layout->addLayout(m_rows);

    m_txtFecha = new QLineEdit(this);
    m_txtFecha->setObjectName(QStringLiteral("txtFecha"));
    m_txtFecha->setMaxLength(kDateLength);
    addBoxRow("Fecha:", m_txtFecha);
    m_txtHora = new TimeBox(dialogs, this);
    m_txtHora->setObjectName(QStringLiteral("txtHora"));
    addBoxRow("Hora:", m_txtHora);
}

void EntryEditorDialog::addBoxRow(const char* caption, QWidget* box) {
    const int row = m_rows->count() / 2;  // a caption and a box a row
    auto* label = new QLabel(QString::fromUtf8(caption), this);
    label->setBuddy(box);
    m_rows->addWidget(label, row, 0);
    m_rows->addWidget(box, row, 1);
}

void EntryEditorDialog::addTextRow() {
    m_txtTexto = new QLineEdit(this);
    m_txtTexto->setObjectName(QStringLiteral("txtTexto"));
    addBoxRow("Texto:", m_txtTexto);
}

void EntryEditorDialog::finishWithButtons() {
    auto* cmdAceptar = new QPushButton(QStringLiteral("Aceptar"), this);
    cmdAceptar->setObjectName(QStringLiteral("cmdAceptar"));
    auto* cmdCancelar = new QPushButton(QStringLiteral("Cancelar"), this);
    cmdCancelar->setObjectName(QStringLiteral("cmdCancelar"));
    m_cmdBorrar = new QPushButton(QStringLiteral("Borrar"), this);
    m_cmdBorrar->setObjectName(QStringLiteral("cmdBorrar"));
    auto* cmdHelp = new QPushButton(QStringLiteral("Ayuda"), this);
    cmdHelp->setObjectName(QStringLiteral("cmdHelp"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {cmdAceptar, cmdCancelar, m_cmdBorrar, cmdHelp}) {
        // Reached by Tab but not taken by a click: a click would first pull the focus out of
        // the box being typed, whose own check would then run before the button's.
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    m_layout->addLayout(buttons);

    connect(cmdAceptar, &QPushButton::clicked, this, &EntryEditorDialog::onAceptar);
    connect(cmdCancelar, &QPushButton::clicked, this, &EntryEditorDialog::reject);
    connect(m_cmdBorrar, &QPushButton::clicked, this, &EntryEditorDialog::onBorrar);
    connect(cmdHelp, &QPushButton::clicked, this, &EntryEditorDialog::onHelp);
    watchChildKeys();
}

void EntryEditorDialog::showLoaded(const std::string& fecha, const std::string& hora, const std::string& texto,
                                   bool canDelete) {
    m_action = EditorAction::Cancel;
    m_txtFecha->setText(QString::fromStdString(fecha));
    m_txtHora->showStoredValue(QString::fromStdString(hora));
    m_txtTexto->setText(QString::fromStdString(texto));
    m_cmdBorrar->setEnabled(canDelete);
}

void EntryEditorDialog::copyBoxesTo(std::string& fecha, std::string& hora, std::string& texto) const {
    fecha = m_txtFecha->text().toStdString();
    hora = m_txtHora->text().toStdString();
    texto = m_txtTexto->text().toStdString();
}

void EntryEditorDialog::showChecked(const std::string& fecha, const std::string& hora) {
    m_txtFecha->setText(QString::fromStdString(fecha));
    m_txtHora->showStoredValue(QString::fromStdString(hora));
}

void EntryEditorDialog::done(int result) {
    // Closing takes the focus from the box that held it; that is no leaving to check.
    m_closing = true;
    KeyFirstDialog::done(result);
}

bool EntryEditorDialog::onHelpKey() {
    onHelp();
    return true;
}

bool EntryEditorDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_txtFecha && event->type() == QEvent::FocusOut && !m_closing &&
        IsRealFocusMove(static_cast<const QFocusEvent*>(event)->reason())) {
        leaveDateBox();
    }
    return KeyFirstDialog::eventFilter(watched, event);
}

void EntryEditorDialog::leaveDateBox() {
    const QString converted = QString::fromStdString(ConvertDateBox(m_txtFecha->text().toStdString(), m_dialogs));
    // A refused short form stays as typed, to be corrected; "Aceptar" refuses it again.
    if (!converted.isEmpty()) {
        m_txtFecha->setText(converted);
    }
}

void EntryEditorDialog::focusBox(EditorBox box) {
    QLineEdit* target = m_txtTexto;
    if (box == EditorBox::Fecha) {
        target = m_txtFecha;
    } else if (box == EditorBox::Hora) {
        // The time box selects its digits itself when it takes the focus.
        target = m_txtHora;
    }
    target->setFocus(Qt::OtherFocusReason);
    target->selectAll();
}

void EntryEditorDialog::onAceptar() {
    // The clock is read now, not when the dialog opened: the user may sit in it for minutes.
    if (const std::optional<EditorBox> refused = checkTypedForm(m_clock.Now())) {
        focusBox(*refused);
        return;
    }
    m_action = EditorAction::Save;
    accept();
}

void EntryEditorDialog::onBorrar() {
    if (!m_cmdBorrar->isEnabled() || !m_confirmDelete(m_dialogs)) {
        return;
    }
    m_action = EditorAction::Delete;
    accept();
}

void EntryEditorDialog::onHelp() {
    m_dialogs.Show({TextoAyuda(m_helpTopic), MsgIcon::Information, MsgButtons::Ok, {}, {}});
}

}  // namespace vt
