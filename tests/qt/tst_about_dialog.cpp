// The About box's wiring: any key closes it; the two addresses open through the shell.
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
        QTest::newRow("escape") << int(Qt::Key_Escape);
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
};

QTEST_MAIN(TstAboutDialog)
#include "tst_about_dialog.moc"
