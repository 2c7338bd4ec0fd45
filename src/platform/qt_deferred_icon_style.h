#pragma once

#include <QProxyStyle>

namespace vt {

// The application's own style, drawing exactly as the desktop's. Qt's styles build the icons
// of dialog buttons and of the menu bar's overflow button by decoding every size of their
// pictures (16, 32 and 128 pixels) at once, when the button is made: before the first message
// box can reach the screen, and for an overflow button that the main window's menu bar never
// needs. Here those icons are decoded the first time one is drawn or measured, from the same
// style, so that nothing on the screen changes. Meant for the style's built-in pictures, which
// are never empty: a desktop icon theme could leave one empty, and a button sized for an icon
// would then keep a gap where none is drawn.
class DeferredIconStyle final : public QProxyStyle {
public:
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
};

}  // namespace vt
