#include <QtTest>
#include <QtWidgets>
#include <memory>
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

    RecordingShell m_shell;
    std::unique_ptr<vt::FormVendrako> m_form;

    void showForm() {
        m_form->fShow();
        QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
    }

private slots:
    void init() {
        m_shell.opened.clear();
        m_form = std::make_unique<vt::FormVendrako>(m_shell, "/opt/vt/");
    }
    void cleanup() { m_form.reset(); }

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
        showForm();
        QTest::keyClick(m_form.get(), Qt::Key(key));
        QVERIFY(!m_form->isVisible());
        QVERIFY(m_shell.opened.empty());
    }

    void placedInsideTheScreen_data() {
        QTest::addColumn<QPoint>("asked");
        QTest::addColumn<QPoint>("placed");
        QTest::newRow("inside") << QPoint(100, 200) << QPoint(100, 200);
        QTest::newRow("past the right") << QPoint(900, 10) << QPoint(1024 - 300, 10);
        QTest::newRow("past the bottom") << QPoint(10, 700) << QPoint(10, 768 - 150);
        QTest::newRow("before the corner") << QPoint(-40, -5) << QPoint(0, 0);
    }
    void placedInsideTheScreen() {
        QFETCH(QPoint, asked);
        QFETCH(QPoint, placed);
        QCOMPARE(vt::FormVendrako::PositionInside(QRect(0, 0, 1024, 768), QSize(300, 150), asked.x(), asked.y()),
                 placed);
    }
};

QTEST_MAIN(TstAboutDialog)
#include "tst_about_dialog.moc"
