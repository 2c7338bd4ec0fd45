#include "platform/qt_dialogs.h"

#include <QApplication>
#include <QDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "shell/app.h"

namespace vt {

namespace {

// The program's texts use the Windows line break; Qt's labels break on "\n" alone.
QString ToScreenText(const std::string& text) {
    return QString::fromStdString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

QString TitleOrDefault(const std::string& title) {
    return QString::fromStdString(title.empty() ? std::string(kAppTitle) : title);
}

QMessageBox::Icon ToQtIcon(MsgIcon icon) {
    switch (icon) {
        case MsgIcon::Critical:
            return QMessageBox::Critical;
        case MsgIcon::Question:
            return QMessageBox::Question;
        case MsgIcon::Exclamation:
            return QMessageBox::Warning;
        case MsgIcon::Information:
            return QMessageBox::Information;
        case MsgIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

struct ButtonChoice {
    MsgAnswer answer;
    QMessageBox::StandardButton button;
    const char* caption;
};

constexpr ButtonChoice kOk{MsgAnswer::Ok, QMessageBox::Ok, "Aceptar"};
constexpr ButtonChoice kCancel{MsgAnswer::Cancel, QMessageBox::Cancel, "Cancelar"};
constexpr ButtonChoice kYes{MsgAnswer::Yes, QMessageBox::Yes, "Sí"};
constexpr ButtonChoice kNo{MsgAnswer::No, QMessageBox::No, "No"};

QList<ButtonChoice> ButtonsOf(MsgButtons buttons) {
    switch (buttons) {
        case MsgButtons::OkCancel:
            return {kOk, kCancel};
        case MsgButtons::YesNo:
            return {kYes, kNo};
        case MsgButtons::YesNoCancel:
            return {kYes, kNo, kCancel};
        case MsgButtons::Ok:
            break;
    }
    return {kOk};
}

}  // namespace

MsgAnswer QtDialogs::ShowBox(const MessageBox& box) {
    QMessageBox message(ToQtIcon(box.icon), TitleOrDefault(box.title), ToScreenText(box.text), QMessageBox::NoButton,
                        QApplication::activeWindow());
    // The texts carry what the user typed and what files hold; a "<b>" in them is shown, not
    // obeyed.
    message.setTextFormat(Qt::PlainText);
    const QList<ButtonChoice> choices = ButtonsOf(box.buttons);
    for (const ButtonChoice& choice : choices) {
        message.addButton(choice.button)->setText(QString::fromUtf8(choice.caption));
    }
    const MsgAnswer default_answer = box.default_answer.value_or(choices.front().answer);
    const MsgAnswer escape_answer = CloseAnswer(box.buttons);
    for (const ButtonChoice& choice : choices) {
        if (choice.answer == default_answer) {
            message.setDefaultButton(choice.button);
        }
        if (choice.answer == escape_answer) {
            message.setEscapeButton(choice.button);
        }
    }

    const auto clicked = static_cast<QMessageBox::StandardButton>(message.exec());
    for (const ButtonChoice& choice : choices) {
        if (choice.button == clicked) {
            return choice.answer;
        }
    }
    return escape_answer;
}

std::optional<std::string> QtDialogs::AskText(const InputBox& box) {
    QInputDialog input(QApplication::activeWindow());
    input.setWindowTitle(TitleOrDefault(box.title));
    input.setLabelText(ToScreenText(box.prompt));
    // The dialog has no switch of its own for the prompt's format; its one label is the prompt.
    for (QLabel* label : input.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    input.setTextValue(QString::fromStdString(box.initial));
    input.setOkButtonText(QStringLiteral("Aceptar"));
    input.setCancelButtonText(QStringLiteral("Cancelar"));
    if (input.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return input.textValue().toStdString();
}

void QtDialogs::CloseOpenDialogs() {
    // Closed as cancelled, past any dialog's own idea of what Escape means ("5 Minutos" in
    // the repeat-later dialog, a question in the task log): each exec() returns, and whoever
    // opened it sees that the session is ending.
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QDialog*>(window); dialog != nullptr && dialog->isVisible()) {
            dialog->done(QDialog::Rejected);
        }
    }
}

}  // namespace vt
