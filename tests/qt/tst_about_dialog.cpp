#include <QtTest>
#include <QtWidgets>
#include <string>
#include <vector>

#include "extras/about_dialog.h"
#include "platform/shell_open.h"

namespace {

class RecordingShell : public vt::ShellOpen {
public:
    bool Open(const std::string& target, const std::string& working_folder) override {
        opened.push_back(target + " | " + working_folder);
        return true;
    }
    std::vector<std::string> opened;
};

}  // namespace

class TstAboutDialog : public QObject {
    Q_OBJECT

private slots:
    void anyKeyCloses_data() {
        QTest::addColumn<int>("key");
        QTest::newRow("letter") << int(Qt::Key_A);
        QTest::newRow("space") << int(Qt::Key_Space);
        QTest::newRow("escape") << int(Qt::Key_Escape);
        QTest::newRow("enter") << int(Qt::Key_Return);
        QTest::newRow("f1") << int(Qt::Key_F1);
    }
    void anyKeyCloses() {
        QFETCH(int, key);
        RecordingShell shell;
        vt::FormVendrako form(shell, "/opt/vt/");
        form.fShow();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QTest::keyClick(&form, Qt::Key(key));
        QVERIFY(!form.isVisible());
        QVERIFY(shell.opened.empty());
    }

    void isBorderlessWithItsControls() {
        RecordingShell shell;
        vt::FormVendrako form(shell, "/opt/vt/");
        QCOMPARE(form.objectName(), QStringLiteral("FormVendrako"));
        QVERIFY(form.windowFlags().testFlag(Qt::FramelessWindowHint));
        for (const char* name : {"imgLogo", "lblMas", "lblMail", "lblURL", "Line1", "Line2"}) {
            QVERIFY2(form.findChild<QWidget*>(QString::fromLatin1(name)) != nullptr, name);
        }
        QVERIFY(!form.findChild<QLabel*>(QStringLiteral("imgLogo"))->pixmap().isNull());
    }

    void addressesOpenAndKeepTheBox() {
        RecordingShell shell;
        vt::FormVendrako form(shell, "/opt/vt/");
        form.fShow();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        auto* mail = form.findChild<QLabel*>(QStringLiteral("lblMail"));
        auto* url = form.findChild<QLabel*>(QStringLiteral("lblURL"));
        QTest::mouseClick(mail, Qt::LeftButton);
        QTest::mouseClick(url, Qt::LeftButton);
        QCOMPARE(shell.opened.size(), size_t(2));
        QCOMPARE(QString::fromStdString(shell.opened[0]),
                 QStringLiteral("mailto:") + mail->text() + QStringLiteral(" | /opt/vt/"));
        QCOMPARE(QString::fromStdString(shell.opened[1]),
                 QStringLiteral("http://") + url->text() + QStringLiteral(" | /opt/vt/"));
        QVERIFY(form.isVisible());
    }

    void logoClickCloses() {
        RecordingShell shell;
        vt::FormVendrako form(shell, "/opt/vt/");
        form.fShow();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QTest::mouseClick(form.findChild<QLabel*>(QStringLiteral("imgLogo")), Qt::LeftButton);
        QVERIFY(!form.isVisible());
    }

    void hoverUnderlinesOneAddress() {
        RecordingShell shell;
        vt::FormVendrako form(shell, "/opt/vt/");
        form.fShow();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        auto* mail = form.findChild<QLabel*>(QStringLiteral("lblMail"));
        auto* url = form.findChild<QLabel*>(QStringLiteral("lblURL"));
        QMouseEvent overMail(QEvent::MouseMove, QPointF(2, 2), mail->mapToGlobal(QPointF(2, 2)), Qt::NoButton,
                             Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(mail, &overMail);
        QVERIFY(mail->font().underline());
        QVERIFY(!url->font().underline());
        QMouseEvent overUrl(QEvent::MouseMove, QPointF(2, 2), url->mapToGlobal(QPointF(2, 2)), Qt::NoButton,
                            Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(url, &overUrl);
        QVERIFY(!mail->font().underline());
        QVERIFY(url->font().underline());
        QMouseEvent overForm(QEvent::MouseMove, QPointF(1, 1), form.mapToGlobal(QPointF(1, 1)), Qt::NoButton,
                             Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&form, &overForm);
        QVERIFY(!mail->font().underline());
        QVERIFY(!url->font().underline());
    }

    void placedInsideTheScreen_data() {
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("y");
        QTest::addColumn<QPoint>("placed");
        QTest::newRow("inside") << 100 << 200 << QPoint(100, 200);
        QTest::newRow("past the right") << 900 << 10 << QPoint(1024 - 300, 10);
        QTest::newRow("past the bottom") << 10 << 700 << QPoint(10, 768 - 150);
        QTest::newRow("before the corner") << -40 << -5 << QPoint(0, 0);
    }
    void placedInsideTheScreen() {
        QFETCH(int, x);
        QFETCH(int, y);
        QFETCH(QPoint, placed);
        QCOMPARE(vt::FormVendrako::PositionInside(QRect(0, 0, 1024, 768), QSize(300, 150), x, y), placed);
    }
};

QTEST_MAIN(TstAboutDialog)
#include "tst_about_dialog.moc"
