#pragma once
#include <QDialog>
#include <string>

class QLabel;

namespace vt {

class ShellOpen;

// The About box: the logo, a credit line, a mail address and the web address. Borderless; a
// click anywhere but on the two addresses, or any key, closes it.
class FormVendrako : public QDialog {
    Q_OBJECT

public:
    // working_folder: the executable's folder, where a program started for an address runs.
    FormVendrako(ShellOpen& shell, std::string working_folder, QWidget* parent = nullptr);

    // Shows the box modally in the middle of the screen, as "Acerca de ..." does.
    static void ShowModal(ShellOpen& shell, const std::string& working_folder, QWidget* parent = nullptr);

    // Centred on the screen, then shown (not modal).
    void fShow();
    // Top left corner at (x, y), moved back inside the screen where the box would leave it.
    void fShowPosicionado(qint16 x, qint16 y);

    // Where fShowPosicionado puts a box of that size inside the screen's rectangle.
    static QPoint PositionInside(const QRect& screen, const QSize& box, int x, int y);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void underline(QLabel* label, bool on);
    void centre();
    QRect screenRect() const;

    ShellOpen& m_shell;
    std::string m_workingFolder;
    QLabel* m_imgLogo = nullptr;
    QLabel* m_lblMas = nullptr;
    QLabel* m_lblMail = nullptr;
    QLabel* m_lblURL = nullptr;
};

}  // namespace vt
