#include "shell/qt_key_first_dialog.h"

#include <QKeyEvent>

namespace vt {

KeyFirstDialog::KeyFirstDialog(QWidget* parent) : QDialog(parent) {}

void KeyFirstDialog::watchChildKeys() {
    for (QWidget* child : findChildren<QWidget*>()) {
        child->installEventFilter(this);
    }
}

bool KeyFirstDialog::handleDialogKey(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            onEnterKey();
            return true;
        case Qt::Key_Escape:
            reject();
            return true;
        case Qt::Key_F1:
            return onHelpKey();
        default:
            return false;
    }
}

bool KeyFirstDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        // The list of an open combo box is a window of its own and keeps its keys: there Enter
        // picks the item and Escape closes the list.
        const auto* widget = qobject_cast<const QWidget*>(watched);
        if (widget != nullptr && widget->window() == this && handleDialogKey(*static_cast<const QKeyEvent*>(event))) {
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void KeyFirstDialog::keyPressEvent(QKeyEvent* event) {
    if (!handleDialogKey(*event)) {
        QDialog::keyPressEvent(event);
    }
}

}  // namespace vt
