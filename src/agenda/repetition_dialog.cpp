#include "agenda/repetition_dialog.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
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

void AddRow(QGridLayout* rows, int row, const char* caption, QWidget* box, QWidget* parent) {
    auto* label = new QLabel(QString::fromUtf8(caption), parent);
    label->setBuddy(box);
    rows->addWidget(label, row, 0);
    rows->addWidget(box, row, 1);
}
}  // namespace

FrmRepeticion::FrmRepeticion(Dialogs& dialogs, const Clock& clock, QWidget* parent)
    : QDialog(parent), m_dialogs(dialogs), m_clock(clock) {
    setObjectName(QStringLiteral("frmRepeticion"));
    setWindowTitle(QStringLiteral("Repetición"));

    auto* layout = new QVBoxLayout(this);
    auto* rows = new QGridLayout;
    // Created in Tab order: date, time, text, then the buttons.
    m_txtFecha = new QLineEdit(this);
    m_txtFecha->setObjectName(QStringLiteral("txtFecha"));
    m_txtFecha->setMaxLength(kDateLength);
    AddRow(rows, 0, "Fecha:", m_txtFecha, this);
    m_txtHora = new TimeBox(dialogs, this);
    m_txtHora->setObjectName(QStringLiteral("txtHora"));
    AddRow(rows, 1, "Hora:", m_txtHora, this);
    m_txtTexto = new QLineEdit(this);
    m_txtTexto->setObjectName(QStringLiteral("txtTexto"));
    AddRow(rows, 2, "Texto:", m_txtTexto, this);
    layout->addLayout(rows);

    m_cmdAceptar = new QPushButton(QStringLiteral("Aceptar"), this);
    m_cmdAceptar->setObjectName(QStringLiteral("cmdAceptar"));
    m_cmdCancelar = new QPushButton(QStringLiteral("Cancelar"), this);
    m_cmdCancelar->setObjectName(QStringLiteral("cmdCancelar"));
    m_cmdBorrar = new QPushButton(QStringLiteral("Borrar"), this);
    m_cmdBorrar->setObjectName(QStringLiteral("cmdBorrar"));
    m_cmdHelp = new QPushButton(QStringLiteral("Ayuda"), this);
    m_cmdHelp->setObjectName(QStringLiteral("cmdHelp"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_cmdAceptar, m_cmdCancelar, m_cmdBorrar, m_cmdHelp}) {
        // Reached by Tab but not taken by a click: a click would first pull the focus out of
        // the box being typed, whose own check would then run before the button's.
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    layout->addLayout(buttons);

    connect(m_cmdAceptar, &QPushButton::clicked, this, &FrmRepeticion::onAceptar);
    connect(m_cmdCancelar, &QPushButton::clicked, this, &FrmRepeticion::reject);
    connect(m_cmdBorrar, &QPushButton::clicked, this, &FrmRepeticion::onBorrar);
    connect(m_cmdHelp, &QPushButton::clicked, this, &FrmRepeticion::onHelp);

    // The dialog sees the keys before its controls: Escape in the time box cancels the dialog
    // rather than undoing the box.
    for (QWidget* child : findChildren<QWidget*>()) {
        child->installEventFilter(this);
    }
    load(m_form);
}

EditorAction FrmRepeticion::edit(QWidget* parent, Dialogs& dialogs, const Clock& clock, RepetitionForm& form) {
    FrmRepeticion dialog(dialogs, clock, parent);
    dialog.load(form);
    dialog.exec();
    if (dialog.action() == EditorAction::Save) {
        form = dialog.form();
    }
    return dialog.action();
}

void FrmRepeticion::load(const RepetitionForm& form) {
    m_form = form;
    m_action = EditorAction::Cancel;
    m_txtFecha->setText(QString::fromStdString(form.fecha));
    m_txtHora->showStoredValue(QString::fromStdString(form.hora));
    m_txtTexto->setText(QString::fromStdString(form.texto));
    m_cmdBorrar->setEnabled(form.can_delete);
}

void FrmRepeticion::done(int result) {
    // Closing takes the focus from the box that held it; that is no leaving to check.
    m_closing = true;
    QDialog::done(result);
}

bool FrmRepeticion::handleDialogKey(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            onAceptar();
            return true;
        case Qt::Key_Escape:
            reject();
            return true;
        case Qt::Key_F1:
            onHelp();
            return true;
        default:
            return false;
    }
}

bool FrmRepeticion::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && handleDialogKey(*static_cast<const QKeyEvent*>(event))) {
        return true;
    }
    if (watched == m_txtFecha && event->type() == QEvent::FocusOut && !m_closing &&
        IsRealFocusMove(static_cast<const QFocusEvent*>(event)->reason())) {
        leaveDateBox();
    }
    return QDialog::eventFilter(watched, event);
}

void FrmRepeticion::keyPressEvent(QKeyEvent* event) {
    if (!handleDialogKey(*event)) {
        QDialog::keyPressEvent(event);
    }
}

void FrmRepeticion::leaveDateBox() {
    const QString converted = QString::fromStdString(ConvertDateBox(m_txtFecha->text().toStdString(), m_dialogs));
    // A refused short form stays as typed, to be corrected; "Aceptar" refuses it again.
    if (!converted.isEmpty()) {
        m_txtFecha->setText(converted);
    }
}

void FrmRepeticion::focusBox(EditorBox box) {
    QLineEdit* target = m_txtTexto;
    if (box == EditorBox::Fecha) {
        target = m_txtFecha;
    } else if (box == EditorBox::Hora) {
        target = m_txtHora;
    }
    target->setFocus(Qt::OtherFocusReason);
    target->selectAll();
}

void FrmRepeticion::onAceptar() {
    RepetitionForm typed = m_form;
    typed.fecha = m_txtFecha->text().toStdString();
    typed.hora = m_txtHora->text().toStdString();
    typed.texto = m_txtTexto->text().toStdString();
    const auto refused = CheckRepetitionForm(typed, m_clock.Now(), m_dialogs);
    // The short forms come back converted, refused or not, so that the boxes show what counts.
    m_txtFecha->setText(QString::fromStdString(typed.fecha));
    m_txtHora->showStoredValue(QString::fromStdString(typed.hora));
    if (refused) {
        focusBox(*refused);
        return;
    }
    m_form = typed;
    m_action = EditorAction::Save;
    accept();
}

void FrmRepeticion::onBorrar() {
    if (!m_cmdBorrar->isEnabled() || !ConfirmDeleteRepetition(m_dialogs)) {
        return;
    }
    m_action = EditorAction::Delete;
    accept();
}

void FrmRepeticion::onHelp() {
    m_dialogs.Show({TextoAyuda("REP"), MsgIcon::Information, MsgButtons::Ok, {}, {}});
}

}  // namespace vt
