// The weekly schedule dialog's wiring: what it shows on opening, which keys and buttons accept
// or cancel it, and what "Aceptar" hands back. The time rules are the core's and TimeBox's.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <array>
#include <memory>
#include <string>

#include "scripted_dialogs.h"
#include "shell/config_dialog.h"
#include "shell/qt_time_box.h"
#include "store/entry_rules.h"

using vt::FrmConfig;
using Week = std::array<std::string, 8>;

class ConfigDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTheScheduleItWasGiven();
    void rowsAndButtonsAreNamedAndCaptioned();
    void keysActOnTheDialog_data();
    void keysActOnTheDialog();
    void tickedMeansContinuous();
    void cancelarKeepsTheSchedule();
    void refusedSundayKeepsTheDialogOpen_data();
    void refusedSundayKeepsTheDialogOpen();
    void editChangesTheScheduleOnlyWhenAccepted_data();
    void editChangesTheScheduleOnlyWhenAccepted();

private:
    void enter(QWidget* control);

    std::unique_ptr<vt::test::ScriptedDialogs> m_dialogs;
    std::unique_ptr<FrmConfig> m_dialog;
};

namespace {
const Week kHours{"", "08:00", "07:30", "06:00", "09:15", "05:00", "00:00", "23:59"};
// "X" is no mode the dialog knows: it shows unticked.
const Week kModes{"", "C", "P", "C", "P", "C", "P", "X"};

bool ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

QStringList Texts(const vt::test::ScriptedDialogs& dialogs) {
    QStringList texts;
    for (const std::string& text : dialogs.Texts()) {
        texts << QString::fromStdString(text);
    }
    return texts;
}
}  // namespace

void ConfigDialogTest::init() {
    m_dialogs = std::make_unique<vt::test::ScriptedDialogs>();
    m_dialog = std::make_unique<FrmConfig>(*m_dialogs);
    m_dialog->load(kHours, kModes);
    QVERIFY(ShowActive(*m_dialog));
}

void ConfigDialogTest::cleanup() {
    m_dialog.reset();
    m_dialogs.reset();
}

void ConfigDialogTest::enter(QWidget* control) {
    control->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(control->hasFocus());
}

void ConfigDialogTest::showsTheScheduleItWasGiven() {
    for (int row = 0; row < 7; ++row) {
        const auto day = static_cast<size_t>(row + 1);
        const QString hours = QString::fromStdString(kHours[day]);
        // The first box has the focus, and with it its digits.
        const QString shown = row == 0 ? QString(hours).remove(QLatin1Char(':')) : hours;
        QCOMPARE(m_dialog->txtHora(row)->text(), shown);
        QCOMPARE(m_dialog->txtHora(row)->storedValue(), hours);
        QCOMPARE(m_dialog->chkContinua(row)->isChecked(), kModes[day] == "C");
    }
}

void ConfigDialogTest::rowsAndButtonsAreNamedAndCaptioned() {
    QCOMPARE(m_dialog->objectName(), QStringLiteral("frmConfig"));
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Configuración"));
    const QStringList labels{"Lunes:", "Martes:", "Miércoles:", "Jueves:", "Viernes:", "Sábado", "Domingo"};
    for (int row = 0; row < 7; ++row) {
        const auto* label = m_dialog->findChild<QLabel*>(QStringLiteral("lblDia(%1)").arg(row));
        QVERIFY(label != nullptr);
        QCOMPARE(label->text(), labels.at(row));
        QCOMPARE(label->buddy(), m_dialog->txtHora(row));
        QCOMPARE(m_dialog->findChild<vt::TimeBox*>(QStringLiteral("txtHora(%1)").arg(row)), m_dialog->txtHora(row));
        const auto* check = m_dialog->findChild<QCheckBox*>(QStringLiteral("chkContinua(%1)").arg(row));
        QCOMPARE(check, m_dialog->chkContinua(row));
        QCOMPARE(check->text(), QStringLiteral("Jornada continua"));
    }
    QCOMPARE(m_dialog->findChild<QPushButton*>(QStringLiteral("cmdAceptar"))->text(), QStringLiteral("Aceptar"));
    QCOMPARE(m_dialog->findChild<QPushButton*>(QStringLiteral("cmdCancelar"))->text(), QStringLiteral("Cancelar"));
}

void ConfigDialogTest::keysActOnTheDialog_data() {
    QTest::addColumn<QString>("focus");  // the control that holds the focus
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("Return in a time box being typed") << "txtHora(3)" << Qt::Key_Return << true;
    QTest::newRow("keypad Enter in a time box") << "txtHora(3)" << Qt::Key_Enter << true;
    QTest::newRow("Escape in a time box being typed") << "txtHora(3)" << Qt::Key_Escape << false;
    QTest::newRow("Return on a check box") << "chkContinua(2)" << Qt::Key_Return << true;
    QTest::newRow("Escape on a check box") << "chkContinua(2)" << Qt::Key_Escape << false;
    QTest::newRow("Return on Cancelar") << "cmdCancelar" << Qt::Key_Return << true;
    QTest::newRow("Escape on Aceptar") << "cmdAceptar" << Qt::Key_Escape << false;
}

void ConfigDialogTest::keysActOnTheDialog() {
    QFETCH(QString, focus);
    QFETCH(Qt::Key, key);
    QFETCH(bool, accepted);
    QSignalSpy acceptedSpy(m_dialog.get(), &QDialog::accepted);
    QSignalSpy rejectedSpy(m_dialog.get(), &QDialog::rejected);
    // Thursday's box is typed into first, so that a key reaching it instead of the dialog
    // would undo or keep the edit rather than close anything.
    enter(m_dialog->txtHora(3));
    QTest::keyClicks(m_dialog->txtHora(3), QStringLiteral("745"));
    auto* control = m_dialog->findChild<QWidget*>(focus);
    QVERIFY(control != nullptr);
    enter(control);

    QTest::keyClick(control, key);

    QCOMPARE(acceptedSpy.count(), accepted ? 1 : 0);
    QCOMPARE(rejectedSpy.count(), accepted ? 0 : 1);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->dayHours()[4], accepted ? std::string("07:45") : kHours[4]);
    QVERIFY(m_dialogs->Shown().empty());
}

void ConfigDialogTest::tickedMeansContinuous() {
    // Every day flipped: what was "C" becomes "P", and the rest (the unknown "X" too) "C".
    for (int row = 0; row < 7; ++row) {
        QCheckBox* check = m_dialog->chkContinua(row);
        check->setChecked(!check->isChecked());
    }

    QTest::mouseClick(m_dialog->findChild<QPushButton*>(QStringLiteral("cmdAceptar")), Qt::LeftButton);

    QCOMPARE(m_dialog->result(), int{QDialog::Accepted});
    QCOMPARE(m_dialog->dayModes(), (Week{"", "P", "C", "P", "C", "P", "C", "C"}));
    QCOMPARE(m_dialog->dayHours(), kHours);
}

void ConfigDialogTest::cancelarKeepsTheSchedule() {
    m_dialog->chkContinua(0)->setChecked(false);
    enter(m_dialog->txtHora(0));
    QTest::keyClicks(m_dialog->txtHora(0), QStringLiteral("1"));

    QTest::mouseClick(m_dialog->findChild<QPushButton*>(QStringLiteral("cmdCancelar")), Qt::LeftButton);

    QCOMPARE(m_dialog->result(), int{QDialog::Rejected});
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->dayHours(), kHours);
    QCOMPARE(m_dialog->dayModes(), kModes);
}

void ConfigDialogTest::refusedSundayKeepsTheDialogOpen_data() {
    QTest::addColumn<QString>("how");

    QTest::newRow("Enter") << "enter";
    QTest::newRow("click on Aceptar") << "click";
}

// The earlier rows are fine and one was even changed; the Sunday row's refusal keeps them all.
void ConfigDialogTest::refusedSundayKeepsTheDialogOpen() {
    QFETCH(QString, how);
    m_dialog->chkContinua(0)->setChecked(false);
    enter(m_dialog->txtHora(0));
    QTest::keyClicks(m_dialog->txtHora(0), QStringLiteral("7"));
    vt::TimeBox* sunday = m_dialog->txtHora(6);
    enter(sunday);
    QTest::keyClicks(sunday, QStringLiteral("2500"));
    QSignalSpy acceptedSpy(m_dialog.get(), &QDialog::accepted);

    if (how == QLatin1String("enter")) {
        QTest::keyClick(sunday, Qt::Key_Return);
    } else {
        QTest::mouseClick(m_dialog->findChild<QPushButton*>(QStringLiteral("cmdAceptar")), Qt::LeftButton);
    }
    QCoreApplication::processEvents();

    QVERIFY(m_dialog->isVisible());
    QCOMPARE(acceptedSpy.count(), 0);
    QCOMPARE(Texts(*m_dialogs), QStringList{QString::fromUtf8(vt::kTimeFormatMessage)});
    QTRY_VERIFY(sunday->hasFocus());
    QCOMPARE(sunday->text(), QStringLiteral("2500"));
    QCOMPARE(m_dialog->dayHours(), kHours);
    QCOMPARE(m_dialog->dayModes(), kModes);
}

void ConfigDialogTest::editChangesTheScheduleOnlyWhenAccepted_data() {
    QTest::addColumn<QString>("sunday");  // typed into the Sunday box before Enter
    QTest::addColumn<bool>("accepted");

    QTest::newRow("valid times are taken") << "630" << true;
    QTest::newRow("a refused Sunday takes nothing") << "2500" << false;
}

// The modal entry point: the arrays change only when the dialog was accepted.
void ConfigDialogTest::editChangesTheScheduleOnlyWhenAccepted() {
    QFETCH(QString, sunday);
    QFETCH(bool, accepted);
    m_dialog.reset();
    Week hours = kHours;
    Week modes = kModes;
    bool stillOpenAfterEnter = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<FrmConfig*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            return;  // edit() showed nothing; the checks below fail
        }
        dialog->chkContinua(1)->setChecked(true);
        vt::TimeBox* box = dialog->txtHora(6);
        // Keys typed before the box has the focus would land on its shown "23:59".
        box->setFocus(Qt::TabFocusReason);
        if (!QTest::qWaitFor([box] { return box->hasFocus(); })) {
            dialog->reject();
            return;
        }
        QTest::keyClicks(box, sunday);
        QTest::keyClick(box, Qt::Key_Return);
        stillOpenAfterEnter = dialog->isVisible();
        if (stillOpenAfterEnter) {
            QTest::keyClick(box, Qt::Key_Escape);
        }
    });

    const bool result = FrmConfig::edit(nullptr, *m_dialogs, hours, modes);

    QCOMPARE(result, accepted);
    QCOMPARE(stillOpenAfterEnter, !accepted);
    if (accepted) {
        QCOMPARE(hours, (Week{"", "08:00", "07:30", "06:00", "09:15", "05:00", "00:00", "06:30"}));
        QCOMPARE(modes, (Week{"", "C", "C", "C", "P", "C", "P", "P"}));
        QVERIFY(m_dialogs->Shown().empty());
    } else {
        QCOMPARE(hours, kHours);
        QCOMPARE(modes, kModes);
        QCOMPARE(Texts(*m_dialogs), QStringList{QString::fromUtf8(vt::kTimeFormatMessage)});
    }
}

QTEST_MAIN(ConfigDialogTest)
#include "tst_config_dialog.moc"
