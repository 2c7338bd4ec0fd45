// The repeat-later dialog's wiring: what it shows, which button or key gives which answer, and
// that ask() hands that answer back. When a reminder comes back is the core's arithmetic.
#include "agenda/repeat_dialog.h"
#include "qt_test_support.h"

using vt::FrmRepetir;

namespace {
const vt::RepeatPrompt kPrompt{"15/03/2024 10:00", "Llamar a Ana & <b>Luis</b> (54)"};
}  // namespace

class RepeatDialogTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FrmRepetir> m_dialog;

private slots:
    void init() {
        m_dialog = std::make_unique<FrmRepetir>(kPrompt);
        QVERIFY(vt::test::ShowActive(*m_dialog));
    }
    void cleanup() { m_dialog.reset(); }

    void controlsAreNamedAndCaptioned() {
        QCOMPARE(m_dialog->objectName() + u' ' + m_dialog->windowTitle(), u"frmRepetir Repetición"_s);
        QVERIFY(m_dialog->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        const QStringList labels{"5 Minutos", "10 Minutos", "15 Minutos", "30 Minutos", "1 Hora",
                                 "2 Horas",   "4 Horas",    "6 Horas",    "1 Día",      "1 Semana"};
        QStringList buttons{"cmdOk=Aceptar+", "cmdNunca=Nunca+"};
        for (int i = 0; i < labels.size(); ++i) {
            buttons << u"cmdTiempo(%1)="_s.arg(i) + labels.at(i) + u'+';
        }
        QCOMPARE(vt::test::ItemTexts(*m_dialog->findChild<QComboBox*>(u"cboTiempo"_s)), labels);
        QCOMPARE(vt::test::ButtonRows(*m_dialog), buttons);
        // The due moment and the text are shown as given, markup and "&" included.
        auto* when = m_dialog->findChild<QLabel*>(u"lblFecha"_s);
        QCOMPARE(when->text(), u"15/03/2024 10:00"_s);
        QCOMPARE(when->textFormat(), Qt::PlainText);
        auto* text = m_dialog->findChild<QPlainTextEdit*>(u"txtTexto"_s);
        QCOMPARE(text->toPlainText(), u"Llamar a Ana & <b>Luis</b> (54)"_s);
        QVERIFY(text->isReadOnly());
        // The focus starts on what Enter and Escape stand for.
        QCOMPARE(QApplication::focusWidget(), m_dialog->cmdTiempo(0));
    }

    // With "1 Hora" in the list: a delay button chooses itself, "Aceptar" the list's delay, and
    // only "Nunca" (-1) drops the reminder. The dialog sees Enter and Escape before its controls:
    // both are "5 Minutos" wherever the focus is, and so is the close button. Space presses.
    void answers_data() {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("key");  // 0 for a click, -1 for the close button
        QTest::addColumn<int>("answer");
        QTest::newRow("click 15 Minutos") << u"cmdTiempo(2)"_s << 0 << 2;
        QTest::newRow("click 1 Semana") << u"cmdTiempo(9)"_s << 0 << 9;
        QTest::newRow("click Aceptar") << u"cmdOk"_s << 0 << 4;
        QTest::newRow("click Nunca") << u"cmdNunca"_s << 0 << -1;
        QTest::newRow("Space on 6 Horas") << u"cmdTiempo(7)"_s << int(Qt::Key_Space) << 7;
        QTest::newRow("Space on Nunca") << u"cmdNunca"_s << int(Qt::Key_Space) << -1;
        QTest::newRow("Escape on Nunca") << u"cmdNunca"_s << int(Qt::Key_Escape) << 0;
        QTest::newRow("Return on Nunca") << u"cmdNunca"_s << int(Qt::Key_Return) << 0;
        QTest::newRow("Return on Aceptar") << u"cmdOk"_s << int(Qt::Key_Return) << 0;
        QTest::newRow("keypad Enter on 4 Horas") << u"cmdTiempo(6)"_s << int(Qt::Key_Enter) << 0;
        QTest::newRow("Escape in the list") << u"cboTiempo"_s << int(Qt::Key_Escape) << 0;
        QTest::newRow("Return in the text") << u"txtTexto"_s << int(Qt::Key_Return) << 0;
        QTest::newRow("close button") << u"cmdOk"_s << -1 << 0;
    }
    void answers() {
        QFETCH(QString, control);
        QFETCH(int, key);
        QFETCH(int, answer);
        m_dialog->cboTiempo()->setCurrentIndex(4);
        QWidget* target = vt::test::Child(*m_dialog, control);

        if (key == 0) {
            QTest::mouseClick(target, Qt::LeftButton);
        } else if (key == -1) {
            QVERIFY(m_dialog->close());
        } else {
            QVERIFY(vt::test::FocusOn(target));
            QTest::keyClick(target, Qt::Key(key), key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
        }

        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->choice().value_or(-1), answer);
        QCOMPARE(m_dialog->cboTiempo()->currentIndex(), answer < 0 ? 4 : answer);
    }

    // As the program asks: modal over the main window hidden in the tray, active and on top.
    void askShowsTheDialogAndReturnsTheAnswer() {
        m_dialog.reset();
        QWidget hidden;
        bool activeOnTop = false;
        vt::test::WhenModal<FrmRepetir>([&activeOnTop](FrmRepetir& dialog) {
            activeOnTop =
                QTest::qWaitForWindowActive(&dialog) && dialog.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
            QTest::mouseClick(dialog.cmdTiempo(2), Qt::LeftButton);
        });

        QCOMPARE(FrmRepetir::ask(&hidden, kPrompt), std::optional<int>(2));
        QVERIFY(activeOnTop);
        QVERIFY(!hidden.isVisible());
    }
};

QTEST_MAIN(RepeatDialogTest)
#include "tst_repeat_dialog.moc"
