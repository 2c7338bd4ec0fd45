// The "hh:mm" box's key, focus and leave wiring. The completion rules themselves are the core's
// and are tested there; here only what the widget adds is checked.
#include "qt_test_support.h"

using vt::TimeBox;
using vt::test::FocusOn;

class TimeBoxTest : public QObject {
    Q_OBJECT

    vt::test::ScriptedDialogs m_dialogs;
    std::unique_ptr<QDialog> m_window;
    // Tab order: the box, a plain line edit, a second time box, the default button "Aceptar".
    TimeBox* m_box = nullptr;
    QLineEdit* m_next = nullptr;
    TimeBox* m_second = nullptr;

private slots:
    void init() {
        m_dialogs = {};
        m_window = std::make_unique<QDialog>();
        auto* layout = new QVBoxLayout(m_window.get());
        layout->addWidget(m_box = new TimeBox(m_dialogs, m_window.get()));
        layout->addWidget(m_next = new QLineEdit(m_window.get()));
        layout->addWidget(m_second = new TimeBox(m_dialogs, m_window.get()));
        auto* aceptar = new QPushButton(u"Aceptar"_s, m_window.get());
        aceptar->setDefault(true);
        layout->addWidget(aceptar);
        connect(aceptar, &QPushButton::clicked, m_window.get(), &QDialog::accept);
        QVERIFY(vt::test::ShowActive(*m_window));
        m_next->setFocus(Qt::OtherFocusReason);
        QTRY_VERIFY(m_next->hasFocus());
    }
    void cleanup() { m_window.reset(); }

    void leavingCompletesOrRefuses_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("shown");
        QTest::newRow("three digits are h mm") << u"745"_s << true << u"07:45"_s;
        QTest::newRow("hour 24") << u"2400"_s << false << u"2400"_s;
    }
    void leavingCompletesOrRefuses() {
        QFETCH(QString, typed);
        QFETCH(bool, accepted);
        QFETCH(QString, shown);
        m_box->setStoredValue(u"09:30"_s);
        QSignalSpy left(m_box, &TimeBox::timeLeft);
        QVERIFY(FocusOn(m_box));

        QTest::keyClicks(m_box, typed);
        QTest::keyClick(m_box, Qt::Key_Tab);
        QCoreApplication::processEvents();

        QCOMPARE(m_box->text(), shown);
        // Only the owner knows whether the time was taken.
        QCOMPARE(m_box->storedValue(), u"09:30"_s);
        QCOMPARE(left.count(), accepted ? 1 : 0);
        QCOMPARE(m_dialogs.Shown().size(), accepted ? size_t{0} : size_t{1});
        if (accepted) {
            QCOMPARE(left.at(0).at(0).toString(), shown);
            QVERIFY(m_next->hasFocus());
        } else {
            QTRY_VERIFY(m_box->hasFocus());
            QCOMPARE(m_box->selectedText(), typed);
        }
    }

    // When a refused box pulls the focus back, the box the user had moved on to loses it again.
    // That box was not really left: no message, no timeLeft, and its time shown as before.
    void refusalDoesNotCheckTheBoxPassedThrough() {
        m_second->setText(u"08:00"_s);
        QSignalSpy secondLeft(m_second, &TimeBox::timeLeft);
        QVERIFY(FocusOn(m_box));
        QTest::keyClicks(m_box, u"2400"_s);

        m_second->setFocus(Qt::MouseFocusReason);

        QTRY_VERIFY(m_box->hasFocus());
        QCOMPARE(m_dialogs.Shown().size(), size_t{1});
        QCOMPARE(m_second->text(), u"08:00"_s);
        QCOMPARE(secondLeft.count(), 0);
    }

    void onlyRealFocusMovesCheckTheBox_data() {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::addColumn<bool>("checked");
        QTest::newRow("tab") << Qt::TabFocusReason << true;
        QTest::newRow("mouse") << Qt::MouseFocusReason << true;
        QTest::newRow("window deactivated") << Qt::ActiveWindowFocusReason << false;
        QTest::newRow("popup opened") << Qt::PopupFocusReason << false;
        QTest::newRow("menu bar") << Qt::MenuBarFocusReason << false;
    }
    void onlyRealFocusMovesCheckTheBox() {
        QFETCH(Qt::FocusReason, reason);
        QFETCH(bool, checked);
        QSignalSpy left(m_box, &TimeBox::timeLeft);
        QVERIFY(FocusOn(m_box));
        QTest::keyClicks(m_box, u"745"_s);

        QFocusEvent focusOut(QEvent::FocusOut, reason);
        QApplication::sendEvent(m_box, &focusOut);

        QCOMPARE(m_box->text(), checked ? u"07:45"_s : u"745"_s);
        QCOMPARE(left.count(), checked ? 1 : 0);
    }

    // A click as well as Tab shows the digits selected, ready to be typed over.
    void aClickShowsTheDigitsSelected() {
        m_box->setText(u"07:45"_s);

        QTest::mouseClick(m_box, Qt::LeftButton, {}, QPoint(m_box->width() - 4, m_box->height() / 2));

        QTRY_VERIFY(m_box->hasFocus());
        QCOMPARE(m_box->text(), u"0745"_s);
        QTRY_COMPARE(m_box->selectedText(), u"0745"_s);
    }

    // Typed or pasted, nothing but four digits gets in; Backspace keeps working.
    void onlyDigitsGetIn_data() {
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("typed");  // "\b" is Backspace
        QTest::addColumn<QString>("text");
        QTest::newRow("letters, colon, signs and space are discarded") << QString() << u"a1B:2- z"_s << u"12"_s;
        QTest::newRow("no fifth digit") << QString() << u"12345\b"_s << u"123"_s;
        QTest::newRow("a letter leaves the selected time") << u"07:45"_s << u"x"_s << u"0745"_s;
    }
    void onlyDigitsGetIn() {
        QFETCH(QString, shown);
        QFETCH(QString, typed);
        QFETCH(QString, text);
        QApplication::clipboard()->setText(u"07:45"_s);
        m_box->setText(shown);
        QVERIFY(FocusOn(m_box));

        QTest::keyClick(m_box, Qt::Key_V, Qt::ControlModifier);  // a time with its colon
        QTest::keyClicks(m_box, typed);

        QCOMPARE(m_box->text(), text);
        QVERIFY(m_dialogs.Shown().empty());
    }

    void escapeRestoresTheStoredValue() {
        m_box->setStoredValue(u"12:00"_s);
        m_box->setText(u"08:00"_s);
        QSignalSpy left(m_box, &TimeBox::timeLeft);
        QVERIFY(FocusOn(m_box));
        QTest::keyClicks(m_box, u"9"_s);

        QTest::keyClick(m_box, Qt::Key_Escape);

        QCOMPARE(m_box->text(), u"1200"_s);
        QCOMPARE(m_box->selectedText(), u"1200"_s);
        QVERIFY(m_box->hasFocus());
        QCOMPARE(left.count(), 0);
    }

    // Enter must reach the dialog so that its default button ("Aceptar") works from a time box;
    // Escape undoes the edit and stays in the box.
    void enterReachesTheDialogAndEscapeDoesNot_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("return") << Qt::Key_Return << true;
        QTest::newRow("keypad enter") << Qt::Key_Enter << true;
        QTest::newRow("escape") << Qt::Key_Escape << false;
    }
    void enterReachesTheDialogAndEscapeDoesNot() {
        QFETCH(Qt::Key, key);
        QFETCH(bool, accepted);
        QVERIFY(FocusOn(m_box));
        QTest::keyClicks(m_box, u"8"_s);

        QTest::keyClick(m_box, key);

        QCOMPARE(m_window->result(), accepted ? int(QDialog::Accepted) : int(QDialog::Rejected));
        QCOMPARE(m_window->isVisible(), !accepted);
    }
};

QTEST_MAIN(TimeBoxTest)
#include "tst_time_box.moc"
