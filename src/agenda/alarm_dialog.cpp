#include "agenda/alarm_dialog.h"

#include <QComboBox>
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

constexpr std::array<const char*, 4> kHelpLabels{
    "Prioridad alta: \"!\" por delante.",
    "No mostrar en el calendario: \"-\" por delante.",
    "Los años de aniversarios con formato (9999)",
    "A partir de una fecha concreta <ddmmyy>",
};

// The user moved on to another control. The window losing activation (a message box, another
// program) only borrows the focus: the date has not been left and must not be converted yet.
bool IsRealFocusMove(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::MouseFocusReason ||
           reason == Qt::ShortcutFocusReason || reason == Qt::OtherFocusReason;
}

QLabel* AddRow(QGridLayout* rows, int row, const char* caption, QWidget* box, QWidget* parent) {
    auto* label = new QLabel(QString::fromUtf8(caption), parent);
    label->setBuddy(box);
    rows->addWidget(label, row, 0);
    rows->addWidget(box, row, 1);
    return label;
}
}  // namespace

FrmAlarma::FrmAlarma(Dialogs& dialogs, const Clock& clock, QWidget* parent)
    : QDialog(parent), m_dialogs(dialogs), m_clock(clock) {
    setObjectName(QStringLiteral("frmAlarma"));
    setWindowTitle(QStringLiteral("Alarma"));

    auto* layout = new QVBoxLayout(this);
    auto* rows = new QGridLayout;
    // Created in Tab order: date, time, repeat, text, then the buttons.
    m_txtFecha = new QLineEdit(this);
    m_txtFecha->setObjectName(QStringLiteral("txtFecha"));
    m_txtFecha->setMaxLength(kDateLength);
    AddRow(rows, 0, "Fecha:", m_txtFecha, this);
    m_txtHora = new TimeBox(dialogs, this);
    m_txtHora->setObjectName(QStringLiteral("txtHora"));
    AddRow(rows, 1, "Hora:", m_txtHora, this);
    m_cboCada = new QComboBox(this);
    m_cboCada->setObjectName(QStringLiteral("cboCada"));
    for (const CadaChoice& choice : kCadaChoices) {
        m_cboCada->addItem(QString::fromUtf8(choice.label.data(), static_cast<qsizetype>(choice.label.size())));
    }
    AddRow(rows, 2, "Repetir:", m_cboCada, this);
    m_txtTexto = new QLineEdit(this);
    m_txtTexto->setObjectName(QStringLiteral("txtTexto"));
    AddRow(rows, 3, "Texto:", m_txtTexto, this);
    layout->addLayout(rows);

    for (size_t i = 0; i < kHelpLabels.size(); ++i) {
        auto* help = new QLabel(QString::fromUtf8(kHelpLabels[i]), this);
        help->setObjectName(QStringLiteral("lblAyuda(%1)").arg(i));
        layout->addWidget(help);
    }

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

    connect(m_cmdAceptar, &QPushButton::clicked, this, &FrmAlarma::onAceptar);
    connect(m_cmdCancelar, &QPushButton::clicked, this, &FrmAlarma::reject);
    connect(m_cmdBorrar, &QPushButton::clicked, this, &FrmAlarma::onBorrar);
    connect(m_cmdHelp, &QPushButton::clicked, this, &FrmAlarma::onHelp);

    // The dialog sees the keys before its controls: Escape in the time box cancels the dialog
    // rather than undoing the box, and Enter in the list of choices accepts.
    for (QWidget* child : findChildren<QWidget*>()) {
        child->installEventFilter(this);
    }
    load(m_form);
}

EditorAction FrmAlarma::edit(QWidget* parent, Dialogs& dialogs, const Clock& clock, AlarmForm& form) {
    FrmAlarma dialog(dialogs, clock, parent);
    dialog.load(form);
    dialog.exec();
    if (dialog.action() == EditorAction::Save) {
        form = dialog.form();
    }
    return dialog.action();
}

void FrmAlarma::load(const AlarmForm& form) {
    m_form = form;
    m_action = EditorAction::Cancel;
    m_txtFecha->setText(QString::fromStdString(form.fecha));
    m_txtHora->showStoredValue(QString::fromStdString(form.hora));
    m_cboCada->setCurrentIndex(form.cada);
    m_txtTexto->setText(QString::fromStdString(form.texto));
    m_cmdBorrar->setEnabled(form.can_delete);
}

void FrmAlarma::done(int result) {
    // Closing takes the focus from the box that held it; that is no leaving to check.
    m_closing = true;
    QDialog::done(result);
}

bool FrmAlarma::handleDialogKey(const QKeyEvent& key) {
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

bool FrmAlarma::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && handleDialogKey(*static_cast<const QKeyEvent*>(event))) {
        return true;
    }
    if (watched == m_txtFecha && event->type() == QEvent::FocusOut && !m_closing &&
        IsRealFocusMove(static_cast<const QFocusEvent*>(event)->reason())) {
        leaveDateBox();
    }
    return QDialog::eventFilter(watched, event);
}

void FrmAlarma::keyPressEvent(QKeyEvent* event) {
    if (!handleDialogKey(*event)) {
        QDialog::keyPressEvent(event);
    }
}

void FrmAlarma::leaveDateBox() {
    const QString converted = QString::fromStdString(ConvertDateBox(m_txtFecha->text().toStdString(), m_dialogs));
    // A refused short form stays as typed, to be corrected; "Aceptar" refuses it again.
    if (!converted.isEmpty()) {
        m_txtFecha->setText(converted);
    }
}

void FrmAlarma::focusBox(EditorBox box) {
    switch (box) {
        case EditorBox::Fecha:
            m_txtFecha->setFocus(Qt::OtherFocusReason);
            m_txtFecha->selectAll();
            break;
        case EditorBox::Hora:
            // The time box selects its digits itself when it takes the focus.
            m_txtHora->setFocus(Qt::OtherFocusReason);
            m_txtHora->selectAll();
            break;
        case EditorBox::Cada:
            m_cboCada->setFocus(Qt::OtherFocusReason);
            break;
        case EditorBox::Texto:
            m_txtTexto->setFocus(Qt::OtherFocusReason);
            m_txtTexto->selectAll();
            break;
    }
}

void FrmAlarma::onAceptar() {
    AlarmForm typed = m_form;
    typed.fecha = m_txtFecha->text().toStdString();
    typed.hora = m_txtHora->text().toStdString();
    typed.cada = m_cboCada->currentIndex();
    typed.texto = m_txtTexto->text().toStdString();
    const auto refused = CheckAlarmForm(typed, m_clock.Now(), m_dialogs);
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

void FrmAlarma::onBorrar() {
    if (!m_cmdBorrar->isEnabled() || !ConfirmDeleteAlarm(m_dialogs)) {
        return;
    }
    m_action = EditorAction::Delete;
    accept();
}

void FrmAlarma::onHelp() {
    m_dialogs.Show({TextoAyuda("ALA"), MsgIcon::Information, MsgButtons::Ok, {}, {}});
}

}  // namespace vt
