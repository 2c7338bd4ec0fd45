#pragma once
#include <QDialog>

#include "store/entry_list.h"

class QListWidget;
class QListWidgetItem;

namespace vt {

// Every alarm as stored, frmListaAlarmas, to pick one for the editor. The lines are the raw
// entries in stored order (by date, once sorted), so line i is alarm i.
class FrmListaAlarmas : public QDialog {
    Q_OBJECT

public:
    // The list is placed this far from every edge, 60 twips at 15 twips to the pixel.
    static constexpr int kMargin = 4;

    explicit FrmListaAlarmas(QWidget* parent = nullptr);

    // Shows the list modally; the index (1-based) of the alarm picked, 0 when none was.
    static int choose(QWidget* parent, const EntryList& alarms);

    void load(const EntryList& alarms);
    // The alarm picked, 0 until one is.
    int chosen() const { return m_chosen; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool handleDialogKey(const QKeyEvent& key);
    void placeList();
    void pick();
    void onDoubleClicked(QListWidgetItem* item);

    QListWidget* m_lstAlarma = nullptr;
    int m_chosen = 0;
};

}  // namespace vt
