// The "hh:mm" box's key, focus and leave wiring. The completion rules themselves are the
// core's and are tested there; here only what the widget adds is checked.
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

#include "scripted_dialogs.h"
#include "shell/qt_time_box.h"
#include "store/entry_rules.h"

using vt::TimeBox;

class TimeBoxTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void leavingCompletesOrRefuses_data();
    void leavingCompletesOrRefuses();
    void refusalDoesNotCheckTheBoxPassedThrough();
    void onlyRealFocusMovesCheckTheBox_data();
    void onlyRealFocusMovesCheckTheBox();
    void enteringShowsTheDigitsSelected_data();
    void enteringShowsTheDigitsSelected();
    void keys_data();
    void keys();
    void pasteTakesOnlyDigits_data();
    void pasteTakesOnlyDigits();
    void escapeRestoresTheStoredValue_data();
    void escapeRestoresTheStoredValue();
    void validateChecksTheBox_data();
    void validateChecksTheBox();
    void keysReachTheDialogOrNot_data();
    void keysReachTheDialogOrNot();

private:
    void enterBox(Qt::FocusReason reason = Qt::TabFocusReason);

    std::unique_ptr<vt::test::ScriptedDialogs> m_dialogs;
    std::unique_ptr<QWidget> m_window;
    TimeBox* m_box = nullptr;
    QLineEdit* m_next = nullptr;
    TimeBox* m_second = nullptr;
};

namespace {
const QString kRefused = QString::fromUtf8(vt::kTimeFormatMessage);

// The offscreen platform activates windows when asked; without an active window nothing
// has the focus and no focus event is sent.
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

void TimeBoxTest::init() {
    m_dialogs = std::make_unique<vt::test::ScriptedDialogs>();
    m_window = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(m_window.get());
    // Tab order: the box, a plain line edit, a second time box.
    m_box = new TimeBox(*m_dialogs, m_window.get());
    m_next = new QLineEdit(m_window.get());
    m_second = new TimeBox(*m_dialogs, m_window.get());
    layout->addWidget(m_box);
    layout->addWidget(m_next);
    layout->addWidget(m_second);
    QVERIFY(ShowActive(*m_window));
    m_next->setFocus(Qt::OtherFocusReason);
    QTRY_VERIFY(m_next->hasFocus());
}

void TimeBoxTest::cleanup() {
    m_window.reset();
    m_dialogs.reset();
}

void TimeBoxTest::enterBox(Qt::FocusReason reason) {
    m_box->setFocus(reason);
    QTRY_VERIFY(m_box->hasFocus());
}

void TimeBoxTest::leavingCompletesOrRefuses_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("shown");

    QTest::newRow("one digit is the hour") << "7" << true << "07:00";
    QTest::newRow("two digits are the hour") << "08" << true << "08:00";
    QTest::newRow("three digits are h mm") << "745" << true << "07:45";
    QTest::newRow("four digits") << "0800" << true << "08:00";
    QTest::newRow("midnight") << "0" << true << "00:00";
    QTest::newRow("last minute of the day") << "2359" << true << "23:59";
    QTest::newRow("empty stays empty") << "" << true << "";
    QTest::newRow("hour 24") << "2400" << false << "2400";
    QTest::newRow("minute 60") << "1260" << false << "1260";
    QTest::newRow("two digits over 23") << "25" << false << "25";
}

void TimeBoxTest::leavingCompletesOrRefuses() {
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    QFETCH(QString, shown);
    m_box->setStoredValue(QStringLiteral("09:30"));
    QSignalSpy left(m_box, &TimeBox::timeLeft);

    enterBox();
    QTest::keyClicks(m_box, typed);
    QTest::keyClick(m_box, Qt::Key_Tab);
    QCoreApplication::processEvents();

    QCOMPARE(m_box->text(), shown);
    QCOMPARE(m_box->storedValue(), QStringLiteral("09:30"));
    if (accepted) {
        QVERIFY(m_dialogs->Shown().empty());
        QCOMPARE(left.count(), 1);
        QCOMPARE(left.at(0).at(0).toString(), shown);
        QCOMPARE(m_box->maxLength(), 5);
        QVERIFY(m_next->hasFocus());
    } else {
        QCOMPARE(Texts(*m_dialogs), QStringList{kRefused});
        QCOMPARE(m_dialogs->Shown().front().icon, vt::MsgIcon::Exclamation);
        QTRY_VERIFY(m_box->hasFocus());
        QCOMPARE(m_box->selectedText(), typed);
        QCOMPARE(m_box->maxLength(), 4);
        QCOMPARE(left.count(), 0);
    }
}

// When a refused box pulls the focus back, the box the user had moved on to loses it again.
// That box was not really left: no message, no timeLeft, and its time shown as before.
void TimeBoxTest::refusalDoesNotCheckTheBoxPassedThrough() {
    m_second->setText(QStringLiteral("08:00"));
    QSignalSpy firstLeft(m_box, &TimeBox::timeLeft);
    QSignalSpy secondLeft(m_second, &TimeBox::timeLeft);

    enterBox();
    QTest::keyClicks(m_box, QStringLiteral("2400"));
    m_second->setFocus(Qt::MouseFocusReason);

    QTRY_VERIFY(m_box->hasFocus());
    QCOMPARE(Texts(*m_dialogs), QStringList{kRefused});
    QCOMPARE(m_second->text(), QStringLiteral("08:00"));
    QCOMPARE(m_second->maxLength(), 5);
    QCOMPARE(secondLeft.count(), 0);
    QCOMPARE(firstLeft.count(), 0);
    QCOMPARE(m_box->selectedText(), QStringLiteral("2400"));
}

void TimeBoxTest::onlyRealFocusMovesCheckTheBox_data() {
    QTest::addColumn<Qt::FocusReason>("reason");
    QTest::addColumn<bool>("checked");

    QTest::newRow("tab") << Qt::TabFocusReason << true;
    QTest::newRow("backtab") << Qt::BacktabFocusReason << true;
    QTest::newRow("mouse") << Qt::MouseFocusReason << true;
    QTest::newRow("shortcut") << Qt::ShortcutFocusReason << true;
    QTest::newRow("other") << Qt::OtherFocusReason << true;
    QTest::newRow("window deactivated") << Qt::ActiveWindowFocusReason << false;
    QTest::newRow("popup opened") << Qt::PopupFocusReason << false;
    QTest::newRow("menu bar") << Qt::MenuBarFocusReason << false;
}

void TimeBoxTest::onlyRealFocusMovesCheckTheBox() {
    QFETCH(Qt::FocusReason, reason);
    QFETCH(bool, checked);
    QSignalSpy left(m_box, &TimeBox::timeLeft);
    enterBox();
    QTest::keyClicks(m_box, QStringLiteral("745"));

    QFocusEvent focusOut(QEvent::FocusOut, reason);
    QApplication::sendEvent(m_box, &focusOut);

    QCOMPARE(m_box->text(), checked ? QStringLiteral("07:45") : QStringLiteral("745"));
    QCOMPARE(left.count(), checked ? 1 : 0);
    QVERIFY(m_dialogs->Shown().empty());
}

void TimeBoxTest::enteringShowsTheDigitsSelected_data() {
    QTest::addColumn<QString>("how");

    QTest::newRow("tab") << "tab";
    QTest::newRow("backtab") << "backtab";
    QTest::newRow("mouse click") << "click";
}

void TimeBoxTest::enteringShowsTheDigitsSelected() {
    QFETCH(QString, how);
    m_box->setText(QStringLiteral("07:45"));

    if (how == QLatin1String("tab")) {
        // The last box of the window wraps round to the first.
        m_second->setFocus(Qt::OtherFocusReason);
        QTRY_VERIFY(m_second->hasFocus());
        QTest::keyClick(m_second, Qt::Key_Tab);
    } else if (how == QLatin1String("backtab")) {
        QTest::keyClick(m_next, Qt::Key_Backtab);
    } else {
        QTest::mouseClick(m_box, Qt::LeftButton, {}, QPoint(m_box->width() - 4, m_box->height() / 2));
    }

    QTRY_VERIFY(m_box->hasFocus());
    QCOMPARE(m_box->text(), QStringLiteral("0745"));
    QCOMPARE(m_box->maxLength(), 4);
    QTRY_COMPARE(m_box->selectedText(), QStringLiteral("0745"));
}

void TimeBoxTest::keys_data() {
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QTestEventList>("events");
    QTest::addColumn<QString>("text");

    QTestEventList digits;
    digits.addKeyClicks("0745");
    QTest::newRow("digits pass") << "" << digits << "0745";

    QTestEventList letters;
    letters.addKeyClicks("a1B2z");
    QTest::newRow("letters are discarded") << "" << letters << "12";

    QTestEventList colon;
    colon.addKeyClicks("07:4");
    QTest::newRow("colon is discarded") << "" << colon << "074";

    QTestEventList signs;
    signs.addKeyClicks("-1 2+.");
    QTest::newRow("signs and space are discarded") << "" << signs << "12";

    QTestEventList fifth;
    fifth.addKeyClicks("12345");
    QTest::newRow("no fifth digit") << "" << fifth << "1234";

    QTestEventList backspace;
    backspace.addKeyClicks("123");
    backspace.addKeyClick(Qt::Key_Backspace);
    QTest::newRow("backspace deletes") << "" << backspace << "12";

    QTestEventList homeDelete;
    homeDelete.addKeyClicks("1234");
    homeDelete.addKeyClick(Qt::Key_Home);
    homeDelete.addKeyClick(Qt::Key_Delete);
    QTest::newRow("home and delete work") << "" << homeDelete << "234";

    QTestEventList arrows;
    arrows.addKeyClicks("134");
    arrows.addKeyClick(Qt::Key_Left);
    arrows.addKeyClick(Qt::Key_Left);
    arrows.addKeyClicks("2");
    QTest::newRow("arrows work") << "" << arrows << "1234";

    QTestEventList replace;
    replace.addKeyClicks("9");
    QTest::newRow("a digit replaces the selected time") << "07:45" << replace << "9";

    QTestEventList letterOnSelection;
    letterOnSelection.addKeyClicks("x");
    QTest::newRow("a letter leaves the selected time") << "07:45" << letterOnSelection << "0745";
}

void TimeBoxTest::keys() {
    QFETCH(QString, shown);
    QFETCH(QTestEventList, events);
    QFETCH(QString, text);
    m_box->setText(shown);
    enterBox();

    events.simulate(m_box);

    QCOMPARE(m_box->text(), text);
    QVERIFY(m_dialogs->Shown().empty());
}

void TimeBoxTest::pasteTakesOnlyDigits_data() {
    QTest::addColumn<QString>("clipboard");
    QTest::addColumn<QString>("text");

    QTest::newRow("digits") << "0745"
                            << "0745";
    QTest::newRow("a time with colon") << "07:45"
                                       << "";
    QTest::newRow("letters") << "ab"
                             << "";
    QTest::newRow("a longer number is cut to four") << "123456"
                                                    << "1234";
}

// What comes in without a key press of its own must not bring anything but digits either.
void TimeBoxTest::pasteTakesOnlyDigits() {
    QFETCH(QString, clipboard);
    QFETCH(QString, text);
    QApplication::clipboard()->setText(clipboard);
    enterBox();

    QTest::keySequence(m_box, QKeySequence::Paste);

    QCOMPARE(m_box->text(), text);
}

void TimeBoxTest::escapeRestoresTheStoredValue_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("restored");

    QTest::newRow("typed over a stored time") << "07:45"
                                              << "07:45"
                                              << "9"
                                              << "0745";
    QTest::newRow("stored value wins over the shown one") << "12:00"
                                                          << "08:00"
                                                          << ""
                                                          << "1200";
    QTest::newRow("nothing stored") << ""
                                    << "08:00"
                                    << "15"
                                    << "";
}

void TimeBoxTest::escapeRestoresTheStoredValue() {
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    QFETCH(QString, typed);
    QFETCH(QString, restored);
    m_box->setStoredValue(stored);
    m_box->setText(shown);
    QSignalSpy left(m_box, &TimeBox::timeLeft);
    enterBox();
    QTest::keyClicks(m_box, typed);

    QTest::keyClick(m_box, Qt::Key_Escape);

    QCOMPARE(m_box->text(), restored);
    QCOMPARE(m_box->selectedText(), restored);
    QCOMPARE(m_box->maxLength(), 4);
    QVERIFY(m_box->hasFocus());
    QCOMPARE(m_box->storedValue(), stored);
    QCOMPARE(left.count(), 0);
    QVERIFY(m_dialogs->Shown().empty());
}

void TimeBoxTest::validateChecksTheBox_data() {
    QTest::addColumn<bool>("focused");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("shown");

    QTest::newRow("digits being typed") << true << "745" << true << "07:45";
    QTest::newRow("a time shown out of focus") << false << "07:45" << true << "07:45";
    QTest::newRow("empty") << false << "" << true << "";
    QTest::newRow("refused while typing") << true << "2400" << false << "2400";
    QTest::newRow("refused out of focus") << false << "1260" << false << "1260";
}

void TimeBoxTest::validateChecksTheBox() {
    QFETCH(bool, focused);
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(QString, shown);
    QSignalSpy left(m_box, &TimeBox::timeLeft);
    if (focused) {
        enterBox();
        QTest::keyClicks(m_box, text);
    } else {
        m_box->setText(text);
    }

    QCOMPARE(m_box->validate(), ok);

    QCOMPARE(m_box->text(), shown);
    QCOMPARE(left.count(), 0);
    if (ok) {
        QVERIFY(m_dialogs->Shown().empty());
    } else {
        QCOMPARE(Texts(*m_dialogs), QStringList{kRefused});
        QTRY_VERIFY(m_box->hasFocus());
        QCOMPARE(m_box->selectedText(), shown);
    }
}

// Enter must reach the dialog so that its default button ("Aceptar") works from a time box;
// Escape undoes the edit and stays in the box.
void TimeBoxTest::keysReachTheDialogOrNot_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("accepted");
    QTest::addColumn<int>("rejected");

    QTest::newRow("return") << Qt::Key_Return << 1 << 0;
    QTest::newRow("keypad enter") << Qt::Key_Enter << 1 << 0;
    QTest::newRow("escape") << Qt::Key_Escape << 0 << 0;
}

void TimeBoxTest::keysReachTheDialogOrNot() {
    QFETCH(Qt::Key, key);
    QFETCH(int, accepted);
    QFETCH(int, rejected);
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* box = new TimeBox(*m_dialogs, &dialog);
    auto* aceptar = new QPushButton(QStringLiteral("Aceptar"), &dialog);
    aceptar->setDefault(true);
    layout->addWidget(box);
    layout->addWidget(aceptar);
    QObject::connect(aceptar, &QPushButton::clicked, &dialog, &QDialog::accept);
    QSignalSpy acceptedSpy(&dialog, &QDialog::accepted);
    QSignalSpy rejectedSpy(&dialog, &QDialog::rejected);
    QVERIFY(ShowActive(dialog));
    box->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(box->hasFocus());
    QTest::keyClicks(box, QStringLiteral("8"));

    QTest::keyClick(box, key);

    QCOMPARE(acceptedSpy.count(), accepted);
    QCOMPARE(rejectedSpy.count(), rejected);
}

QTEST_MAIN(TimeBoxTest)
#include "tst_time_box.moc"
