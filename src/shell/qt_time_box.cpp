#include "shell/qt_time_box.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QTimer>
#include <QValidator>

#include "platform/dialogs.h"
#include "store/entry_rules.h"

namespace vt {

namespace {
constexpr int kShownLength = 5;   // "hh:mm"
constexpr int kEditedLength = 4;  // "hhmm"

// Up to four digits. Written out rather than as a regular expression, which would compile and
// start its matcher for each of the program's many time boxes while the first window is built.
class EditDigitsValidator : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& input, int& /*pos*/) const override {
        if (input.size() > kEditedLength) {
            return Invalid;
        }
        for (const QChar c : input) {
            if (c < QLatin1Char('0') || c > QLatin1Char('9')) {
                return Invalid;
            }
        }
        return Acceptable;
    }
};

bool IsRealFocusMove(Qt::FocusReason reason) {
    // A real move to another control. The window losing activation, a context menu or the
    // menu bar taking the keyboard only borrow the focus for a while: the user has not left
    // the box and must not be stopped by a message about a half-typed time.
    switch (reason) {
        case Qt::TabFocusReason:
        case Qt::BacktabFocusReason:
        case Qt::MouseFocusReason:
        case Qt::ShortcutFocusReason:
        case Qt::OtherFocusReason:
            return true;
        default:
            return false;
    }
}
}  // namespace

TimeBox::TimeBox(Dialogs& dialogs, QWidget* parent) : QLineEdit(parent), m_dialogs(dialogs) {
    setMaxLength(kShownLength);
    // Typed keys are filtered in keyPressEvent; this catches what arrives without a key
    // press (paste, drag and drop), so that the box holds only digits while edited. Texts
    // set by the program ("07:45") are not subject to it.
    setValidator(new EditDigitsValidator(this));
}

void TimeBox::showEditText(const QString& text) {
    // Text first: lowering the maximum length would cut "07:45" to "07:4".
    setText(QString::fromStdString(TimeBoxEditText(text.toStdString())));
    setMaxLength(kEditedLength);
    selectAll();
}

void TimeBox::showCompleted(const QString& text) {
    setMaxLength(kShownLength);
    setText(text);
}

void TimeBox::showStoredValue(const QString& value) {
    m_storedValue = value;
    if (maxLength() == kEditedLength) {
        showEditText(value);
    } else {
        showCompleted(value);
    }
}

void TimeBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (!IsRealFocusMove(event->reason()) && maxLength() == kEditedLength) {
        // Coming back from a borrowed focus (another window, a menu): the edit goes on where
        // it was, caret and selection included.
        return;
    }
    showEditText(text());
    if (event->reason() == Qt::MouseFocusReason) {
        // The click that gave the focus goes on to place the caret, which would drop the
        // selection; select again once it is done, as a Tab into the box does.
        QTimer::singleShot(0, this, &QLineEdit::selectAll);
    }
}

void TimeBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (!IsRealFocusMove(event->reason())) {
        return;
    }
    // Focus is being pulled back into a box whose time was just refused. This box has not
    // really been left by the user, who was only passing through: no check and no message,
    // just its time shown again as it was before the focus came in.
    const auto* next = qobject_cast<const TimeBox*>(QApplication::focusWidget());
    if (next != nullptr && next != this && next->isTakingFocusBack()) {
        if (auto completed = CompleteTimeEntry(text().toStdString())) {
            showCompleted(QString::fromStdString(*completed));
        }
        return;
    }
    if (validate()) {
        emit timeLeft(text());
    }
}

bool TimeBox::validate() {
    const std::string typed = TimeBoxEditText(text().toStdString());
    std::optional<std::string> completed;
    if (typed.empty() && m_required) {
        m_dialogs.Warn(kTimeFormatMessage);
    } else {
        completed = ValidateTimeEntry(typed, m_dialogs);
    }
    if (!completed) {
        takeFocusBack();
        return false;
    }
    showCompleted(QString::fromStdString(*completed));
    return true;
}

void TimeBox::takeFocusBack() {
    selectAll();
    // Deferred: when called from focusOutEvent the focus change that is under way would
    // otherwise finish after us and win.
    QTimer::singleShot(0, this, [this] {
        m_takingFocusBack = true;
        setFocus(Qt::OtherFocusReason);
        m_takingFocusBack = false;
        selectAll();
    });
}

void TimeBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        // Undo the edit: back to the value last accepted.
        showEditText(m_storedValue);
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Backspace) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const QString typed = event->text();
    // Keys that type nothing (arrows, Home, Delete, Enter) and shortcuts (Ctrl+C, Ctrl+V;
    // what a pasted text may bring is the validator's affair) keep their usual meaning;
    // Enter in particular goes on to the dialog's default button.
    const bool shortcut = (event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier)) != 0;
    if (shortcut || typed.isEmpty() || !typed.front().isPrint()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (typed.size() == 1 && IsTimeBoxKey(typed.front().unicode())) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    event->accept();
}

}  // namespace vt
