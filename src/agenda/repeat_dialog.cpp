#include "agenda/repeat_dialog.h"

#include <QComboBox>
#include <QFont>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "agenda/launching.h"

namespace vt {

namespace {
static_assert(FrmRepetir::kChoices == kRepeatChoices.size());

// Two rows of five: the minutes over the hours and days.
constexpr int kButtonColumns = 5;
// Enough for a few lines of a reminder's text without making the dialog large.
constexpr int kTextLines = 4;

QString LabelOf(size_t index) {
    const std::string_view label = kRepeatChoices.at(index).label;
    return QString::fromUtf8(label.data(), static_cast<qsizetype>(label.size()));
}
}  // namespace

FrmRepetir::FrmRepetir(const RepeatPrompt& prompt, QWidget* parent) : KeyFirstDialog(parent) {
    setObjectName(QStringLiteral("frmRepetir"));
    setWindowTitle(QStringLiteral("Repetición"));
    // A reminder comes due while the user works in other programs; it stays above them until
    // it has an answer.
    setWindowFlag(Qt::WindowStaysOnTopHint);

    auto* layout = new QVBoxLayout(this);

    m_lblFecha = new QLabel(this);
    m_lblFecha->setObjectName(QStringLiteral("lblFecha"));
    m_lblFecha->setTextFormat(Qt::PlainText);
    QFont bold = m_lblFecha->font();
    bold.setBold(true);
    m_lblFecha->setFont(bold);
    m_lblFecha->setText(QString::fromStdString(prompt.when));
    layout->addWidget(m_lblFecha);

    m_txtTexto = new QPlainTextEdit(this);
    m_txtTexto->setObjectName(QStringLiteral("txtTexto"));
    m_txtTexto->setReadOnly(true);
    // Tab moves on through the dialog instead of being typed into a box that takes no typing.
    m_txtTexto->setTabChangesFocus(true);
    m_txtTexto->setPlainText(QString::fromStdString(prompt.text));
    const int lineHeight = m_txtTexto->fontMetrics().lineSpacing();
    m_txtTexto->setFixedHeight(lineHeight * kTextLines + 2 * (m_txtTexto->frameWidth() + 4));
    layout->addWidget(m_txtTexto);

    auto* pick = new QHBoxLayout;
    m_cboTiempo = new QComboBox(this);
    m_cboTiempo->setObjectName(QStringLiteral("cboTiempo"));
    for (size_t i = 0; i < kChoices; ++i) {
        m_cboTiempo->addItem(LabelOf(i));
    }
    m_cboTiempo->setCurrentIndex(0);
    m_cmdOk = new QPushButton(QStringLiteral("Aceptar"), this);
    m_cmdOk->setObjectName(QStringLiteral("cmdOk"));
    m_cmdNunca = new QPushButton(QStringLiteral("Nunca"), this);
    m_cmdNunca->setObjectName(QStringLiteral("cmdNunca"));
    pick->addWidget(m_cboTiempo, 1);
    pick->addWidget(m_cmdOk);
    pick->addWidget(m_cmdNunca);
    layout->addLayout(pick);

    auto* grid = new QGridLayout;
    for (size_t i = 0; i < kChoices; ++i) {
        const int index = static_cast<int>(i);
        auto* button = new QPushButton(LabelOf(i), this);
        button->setObjectName(QStringLiteral("cmdTiempo(%1)").arg(index));
        grid->addWidget(button, index / kButtonColumns, index % kButtonColumns);
        connect(button, &QPushButton::clicked, this, [this, index] { choose(index); });
        m_cmdTiempo[i] = button;
    }
    layout->addLayout(grid);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    // Enter belongs to the dialog ("5 Minutos"); no button is drawn as the one Enter presses.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }

    connect(m_cmdOk, &QPushButton::clicked, this, [this] { choose(m_cboTiempo->currentIndex()); });
    connect(m_cmdNunca, &QPushButton::clicked, this, &FrmRepetir::dropReminder);

    watchChildKeys();
    // The focus starts on the button that Enter and Escape stand for.
    m_cmdTiempo[0]->setFocus(Qt::OtherFocusReason);
}

std::optional<int> FrmRepetir::ask(QWidget* parent, const RepeatPrompt& prompt) {
    FrmRepetir dialog(prompt, parent);
    dialog.exec();
    return dialog.choice();
}

void FrmRepetir::choose(int index) {
    m_cboTiempo->setCurrentIndex(index);
    m_choice = index;
    accept();
}

void FrmRepetir::dropReminder() {
    m_choice.reset();
    QDialog::done(QDialog::Rejected);
}

void FrmRepetir::reject() {
    choose(0);
}

void FrmRepetir::showEvent(QShowEvent* event) {
    KeyFirstDialog::showEvent(event);
    comeForward();
    // Once more after the window system has put the window on the screen: a request made
    // before that is ignored by some desktops, and the main window may be hidden in the tray,
    // so nothing else brings the dialog to the user's attention.
    QTimer::singleShot(0, this, &FrmRepetir::comeForward);
}

void FrmRepetir::comeForward() {
    if (!isVisible()) {
        return;
    }
    raise();
    activateWindow();
}

}  // namespace vt
