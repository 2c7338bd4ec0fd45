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
