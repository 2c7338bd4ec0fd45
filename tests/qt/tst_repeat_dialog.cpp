// The repeat-later dialog's wiring: what it shows, which button or key gives which answer, and
// that ask() hands that answer back. When a reminder comes back is the core's arithmetic.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "agenda/repeat_dialog.h"

using vt::FrmRepetir;

namespace {
const vt::RepeatPrompt kPrompt{"15/03/2024 10:00", "Llamar a Ana & <b>Luis</b> (54)"};

const QStringList kLabels{"5 Minutos", "10 Minutos", "15 Minutos", "30 Minutos", "1 Hora",
                          "2 Horas",   "4 Horas",    "6 Horas",    "1 Día",      "1 Semana"};

bool ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

// -1 stands for "no answer" (Nunca) in the tables.
int AsNumber(const std::optional<int>& choice) {
    return choice.value_or(-1);
}
}  // namespace

class RepeatDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void controlsAreNamedAndCaptioned();
    void showsTheDueMomentAndTextAsGiven();
    void aceptarTakesTheSelectedChoice_data();
    void aceptarTakesTheSelectedChoice();
    void eachDelayButtonChoosesItselfAtOnce_data();
    void eachDelayButtonChoosesItselfAtOnce();
    void nuncaDropsTheReminder();
    void keysMeanFiveMinutesWhereverTheFocusIs_data();
    void keysMeanFiveMinutesWhereverTheFocusIs();
    void spacePressesTheFocusedButton_data();
    void spacePressesTheFocusedButton();
    void closingTheWindowMeansFiveMinutes();
    void askShowsTheDialogAndReturnsTheAnswer_data();
    void askShowsTheDialogAndReturnsTheAnswer();

private:
    // The dialog opened as the program opens it, through ask(), and `act` run on it once it is
    // up and active. Whether `act` closed it is kept in m_closedByAct.
    std::optional<int> askAndDo(QWidget* parent, const std::function<void(FrmRepetir&)>& act);
    void focusOn(QWidget* control);

    std::unique_ptr<FrmRepetir> m_dialog;
    bool m_closedByAct = false;
    bool m_wasActive = false;
    bool m_wasOnTop = false;
};

void RepeatDialogTest::init() {
    m_dialog = std::make_unique<FrmRepetir>(kPrompt);
    QVERIFY(ShowActive(*m_dialog));
}

void RepeatDialogTest::cleanup() {
    m_dialog.reset();
}

void RepeatDialogTest::focusOn(QWidget* control) {
    control->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(control->hasFocus());
}

std::optional<int> RepeatDialogTest::askAndDo(QWidget* parent, const std::function<void(FrmRepetir&)>& act) {
    m_closedByAct = false;
    m_wasActive = false;
    m_wasOnTop = false;
    QTimer::singleShot(0, [this, act] {
        auto* dialog = qobject_cast<FrmRepetir*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            return;  // nothing to answer: m_closedByAct stays false and the test fails
        }
        m_wasActive = QTest::qWaitForWindowActive(dialog);
        m_wasOnTop = dialog->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
        act(*dialog);
        m_closedByAct = !dialog->isVisible();
        if (!m_closedByAct) {
            dialog->done(QDialog::Accepted);  // only so that the test goes on to fail
        }
    });
    return FrmRepetir::ask(parent, kPrompt);
}

void RepeatDialogTest::controlsAreNamedAndCaptioned() {
    QCOMPARE(m_dialog->objectName(), QStringLiteral("frmRepetir"));
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Repetición"));

    auto* combo = m_dialog->findChild<QComboBox*>(QStringLiteral("cboTiempo"));
    QCOMPARE(combo, m_dialog->cboTiempo());
    QStringList listed;
    for (int i = 0; i < combo->count(); ++i) {
        listed << combo->itemText(i);
    }
    QCOMPARE(listed, kLabels);
    QCOMPARE(combo->currentIndex(), 0);

    QStringList captions;
    for (int i = 0; i < 10; ++i) {
        auto* button = m_dialog->findChild<QPushButton*>(QStringLiteral("cmdTiempo(%1)").arg(i));
        QVERIFY(button != nullptr);
        QCOMPARE(button, m_dialog->cmdTiempo(i));
        captions << button->text();
    }
    QCOMPARE(captions, kLabels);
    QCOMPARE(m_dialog->findChild<QPushButton*>(QStringLiteral("cmdOk"))->text(), QStringLiteral("Aceptar"));
    QCOMPARE(m_dialog->findChild<QPushButton*>(QStringLiteral("cmdNunca"))->text(), QStringLiteral("Nunca"));
    // Enter and Escape are the delay buttons' "5 Minutos", where the focus starts.
    QCOMPARE(QApplication::focusWidget(), m_dialog->cmdTiempo(0));
    QVERIFY(m_dialog->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

// The text comes worked out ("(Sin mensaje)", anniversary years) and is shown as it is, markup
// and "&" included.
void RepeatDialogTest::showsTheDueMomentAndTextAsGiven() {
    auto* when = m_dialog->findChild<QLabel*>(QStringLiteral("lblFecha"));
    QVERIFY(when != nullptr);
    QCOMPARE(when->text(), QStringLiteral("15/03/2024 10:00"));
    QCOMPARE(when->textFormat(), Qt::PlainText);
    auto* text = m_dialog->findChild<QPlainTextEdit*>(QStringLiteral("txtTexto"));
    QCOMPARE(text, m_dialog->txtTexto());
    QCOMPARE(text->toPlainText(), QStringLiteral("Llamar a Ana & <b>Luis</b> (54)"));
    QVERIFY(text->isReadOnly());
}

void RepeatDialogTest::aceptarTakesTheSelectedChoice_data() {
    QTest::addColumn<int>("selected");

    QTest::newRow("left at 5 Minutos") << 0;
    QTest::newRow("30 Minutos") << 3;
    QTest::newRow("1 Semana") << 9;
}

void RepeatDialogTest::aceptarTakesTheSelectedChoice() {
    QFETCH(int, selected);
    m_dialog->cboTiempo()->setCurrentIndex(selected);

    QTest::mouseClick(m_dialog->cmdOk(), Qt::LeftButton);

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    QCOMPARE(AsNumber(m_dialog->choice()), selected);
}

void RepeatDialogTest::eachDelayButtonChoosesItselfAtOnce_data() {
    QTest::addColumn<int>("button");

    for (int i = 0; i < 10; ++i) {
        QTest::newRow(qPrintable(kLabels.at(i))) << i;
    }
}

void RepeatDialogTest::eachDelayButtonChoosesItselfAtOnce() {
    QFETCH(int, button);
    // Whatever the list showed before, the button's own delay is taken.
    m_dialog->cboTiempo()->setCurrentIndex(button == 4 ? 7 : 4);

    QTest::mouseClick(m_dialog->cmdTiempo(button), Qt::LeftButton);

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(AsNumber(m_dialog->choice()), button);
    QCOMPARE(m_dialog->cboTiempo()->currentIndex(), button);
}

void RepeatDialogTest::nuncaDropsTheReminder() {
    m_dialog->cboTiempo()->setCurrentIndex(5);

    QTest::mouseClick(m_dialog->cmdNunca(), Qt::LeftButton);

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->choice(), std::nullopt);
}

// The dialog sees the keys before its controls: Escape never drops a reminder, and Enter is
// "5 Minutos" also on a focused delay button, on "Aceptar" with another delay selected, and on
// "Nunca".
void RepeatDialogTest::keysMeanFiveMinutesWhereverTheFocusIs_data() {
    QTest::addColumn<QString>("focus");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");

    const QStringList places{"cmdTiempo(0)", "cboTiempo", "cmdTiempo(6)", "cmdOk", "cmdNunca", "txtTexto"};
    for (const QString& place : places) {
        QTest::newRow(qPrintable(place + QStringLiteral(", Escape"))) << place << int(Qt::Key_Escape) << 0;
        QTest::newRow(qPrintable(place + QStringLiteral(", Return"))) << place << int(Qt::Key_Return) << 0;
        QTest::newRow(qPrintable(place + QStringLiteral(", keypad Enter")))
            << place << int(Qt::Key_Enter) << int(Qt::KeypadModifier);
    }
}

void RepeatDialogTest::keysMeanFiveMinutesWhereverTheFocusIs() {
    QFETCH(QString, focus);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    m_dialog->cboTiempo()->setCurrentIndex(3);
    auto* control = m_dialog->findChild<QWidget*>(focus);
    QVERIFY(control != nullptr);
    focusOn(control);

    QTest::keyClick(control, static_cast<Qt::Key>(key), static_cast<Qt::KeyboardModifiers>(modifiers));

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(AsNumber(m_dialog->choice()), 0);
    QCOMPARE(m_dialog->cboTiempo()->currentIndex(), 0);
}

// Space is the ordinary way to press the focused button, and it still is.
void RepeatDialogTest::spacePressesTheFocusedButton_data() {
    QTest::addColumn<QString>("focus");
    QTest::addColumn<int>("choice");

    QTest::newRow("6 Horas") << "cmdTiempo(7)" << 7;
    QTest::newRow("Aceptar with 1 Hora selected") << "cmdOk" << 4;
    QTest::newRow("Nunca") << "cmdNunca" << -1;
}

void RepeatDialogTest::spacePressesTheFocusedButton() {
    QFETCH(QString, focus);
    QFETCH(int, choice);
    m_dialog->cboTiempo()->setCurrentIndex(4);
    auto* button = m_dialog->findChild<QPushButton*>(focus);
    focusOn(button);

    QTest::keyClick(button, Qt::Key_Space);

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(AsNumber(m_dialog->choice()), choice);
}

// The title bar's close button is Escape, not "Nunca", whatever the list shows.
void RepeatDialogTest::closingTheWindowMeansFiveMinutes() {
    m_dialog->cboTiempo()->setCurrentIndex(8);

    QVERIFY(m_dialog->close());

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(AsNumber(m_dialog->choice()), 0);
}

void RepeatDialogTest::askShowsTheDialogAndReturnsTheAnswer_data() {
    QTest::addColumn<QString>("parent");  // "none", "shown", "hidden" (the main window in the tray)
    QTest::addColumn<QString>("action");
    QTest::addColumn<int>("answer");

    for (const QString& parent : {QStringLiteral("none"), QStringLiteral("shown"), QStringLiteral("hidden")}) {
        QTest::newRow(qPrintable(parent + QStringLiteral(", 15 Minutos")))
            << parent << QStringLiteral("cmdTiempo(2)") << 2;
        QTest::newRow(qPrintable(parent + QStringLiteral(", Nunca"))) << parent << QStringLiteral("cmdNunca") << -1;
        QTest::newRow(qPrintable(parent + QStringLiteral(", Escape"))) << parent << QStringLiteral("Escape") << 0;
        QTest::newRow(qPrintable(parent + QStringLiteral(", close button"))) << parent << QStringLiteral("close") << 0;
    }
}

void RepeatDialogTest::askShowsTheDialogAndReturnsTheAnswer() {
    QFETCH(QString, parent);
    QFETCH(QString, action);
    QFETCH(int, answer);
    m_dialog.reset();
    QWidget window;
    if (parent == QLatin1String("shown")) {
        QVERIFY(ShowActive(window));
    }
    QString shownWhen;

    const std::optional<int> chosen =
        askAndDo(parent == QLatin1String("none") ? nullptr : &window, [&](FrmRepetir& dialog) {
            shownWhen = dialog.lblFecha()->text();
            if (action == QLatin1String("Escape")) {
                QTest::keyClick(dialog.focusWidget() != nullptr ? dialog.focusWidget() : &dialog, Qt::Key_Escape);
            } else if (action == QLatin1String("close")) {
                dialog.close();
            } else {
                QTest::mouseClick(dialog.findChild<QPushButton*>(action), Qt::LeftButton);
            }
        });

    QVERIFY(m_closedByAct);
    QVERIFY(m_wasActive);
    QVERIFY(m_wasOnTop);
    QCOMPARE(shownWhen, QStringLiteral("15/03/2024 10:00"));
    QCOMPARE(AsNumber(chosen), answer);
    QCOMPARE(window.isVisible(), parent == QLatin1String("shown"));
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

QTEST_MAIN(RepeatDialogTest)
#include "tst_repeat_dialog.moc"
