#include "agenda/alarm_list_dialog.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QResizeEvent>

namespace vt {

namespace {
constexpr int kInitialWidth = 520;
constexpr int kInitialHeight = 260;
}  // namespace

FrmListaAlarmas::FrmListaAlarmas(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmListaAlarmas"));
    setWindowTitle(QStringLiteral("Lista de Alarmas"));

    // No layout: the list keeps a fixed margin on every side, placed by hand on each resize.
    m_lstAlarma = new QListWidget(this);
    m_lstAlarma->setObjectName(QStringLiteral("lstAlarma"));
    m_lstAlarma->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(m_lstAlarma, &QListWidget::itemDoubleClicked, this, &FrmListaAlarmas::onDoubleClicked);
    // The dialog sees Enter and Escape before the list does.
    m_lstAlarma->installEventFilter(this);

    resize(kInitialWidth, kInitialHeight);
    placeList();
}

int FrmListaAlarmas::choose(QWidget* parent, const EntryList& alarms) {
    FrmListaAlarmas dialog(parent);
    dialog.load(alarms);
    dialog.exec();
    return dialog.chosen();
}

void FrmListaAlarmas::load(const EntryList& alarms) {
    m_chosen = 0;
    m_lstAlarma->clear();
    for (const std::string& entry : alarms) {
        m_lstAlarma->addItem(QString::fromStdString(entry));
    }
    if (m_lstAlarma->count() > 0) {
        m_lstAlarma->setCurrentRow(0);
    }
    placeList();
}

void FrmListaAlarmas::placeList() {
    m_lstAlarma->setGeometry(kMargin, kMargin, qMax(0, width() - 2 * kMargin), qMax(0, height() - 2 * kMargin));
}

void FrmListaAlarmas::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    placeList();
}

bool FrmListaAlarmas::handleDialogKey(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            pick();
            return true;
        case Qt::Key_Escape:
            m_chosen = 0;
            reject();
            return true;
        default:
            return false;
    }
}

bool FrmListaAlarmas::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && handleDialogKey(*static_cast<const QKeyEvent*>(event))) {
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void FrmListaAlarmas::keyPressEvent(QKeyEvent* event) {
    if (!handleDialogKey(*event)) {
        QDialog::keyPressEvent(event);
    }
}

void FrmListaAlarmas::pick() {
    // Enter on an empty list closes it too, having picked nothing.
    const QList<QListWidgetItem*> selected = m_lstAlarma->selectedItems();
    m_chosen = selected.isEmpty() ? 0 : m_lstAlarma->row(selected.front()) + 1;
    accept();
}

void FrmListaAlarmas::onDoubleClicked(QListWidgetItem* item) {
    m_lstAlarma->setCurrentItem(item);
    pick();
}

}  // namespace vt
