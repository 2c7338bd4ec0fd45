#include "platform/qt_deferred_icon_style.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPicture>
#include <QPointer>

namespace vt {

namespace {

// Stands for one of the style's icons until it is needed, then answers as that icon's own
// engine would. That engine is out of reach, so each question goes through the icon, with the
// device pixel ratio that the icon itself would apply taken back out. A copy made before the
// first use shares nothing and decodes on its own when it is used.
class DeferredIconEngine final : public QIconEngine {
public:
    DeferredIconEngine(const QStyle* style, QStyle::StandardPixmap which) : style_(style), which_(which) {}

    // The picture of the rectangle's size in the device's pixels, stretched over it.
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const QPaintDevice* device = painter->device();
        const qreal ratio = device != nullptr ? device->devicePixelRatio() : qApp->devicePixelRatio();
        painter->drawPixmap(rect, ratio > 1.0 ? scaledPixmap(rect.size() * ratio, mode, state, ratio)
                                              : pixmap(rect.size(), mode, state));
    }
    // At a ratio of 1 the icon asks its engine for exactly this size.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return Icon().pixmap(size, 1.0, mode, state);
    }
    // The size comes in device pixels, and the icon multiplies by the scale again.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
        return Icon().pixmap(size / scale, scale, mode, state);
    }
    // The icon's own answer is scaled by the screen's ratio. Painting it into a rectangle of
    // exactly this size, from the top left, asks its engine for this size without that scaling,
    // and the place the picture goes is the size the engine chose.
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPicture placed;
        QPainter painter(&placed);
        Icon().paint(&painter, QRect(QPoint(0, 0), size), Qt::AlignLeft | Qt::AlignTop, mode, state);
        painter.end();
        return placed.boundingRect().size();
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
        return Icon().availableSizes(mode, state);
    }
    QString iconName() override { return Icon().name(); }
    // Asked by every button as it works out its size; the style's own pictures are never empty.
    bool isNull() override { return false; }
    QIconEngine* clone() const override { return new DeferredIconEngine(*this); }

private:
    const QIcon& Icon() {
        // Decoded once: the style's own pictures are never empty.
        if (icon_.isNull()) {
            // Should the application's style have been replaced since, the new one draws it.
            const QStyle* style = style_ != nullptr ? style_.data() : QApplication::style();
            icon_ = style->standardIcon(which_);
        }
        return icon_;
    }

    QPointer<const QStyle> style_;
    QStyle::StandardPixmap which_;
    QIcon icon_;
};

bool IsDeferred(QStyle::StandardPixmap which) {
    switch (which) {
        case QStyle::SP_DialogOkButton:
        case QStyle::SP_DialogCancelButton:
        case QStyle::SP_DialogYesButton:
        case QStyle::SP_DialogNoButton:
        case QStyle::SP_DialogHelpButton:
        case QStyle::SP_DialogOpenButton:
        case QStyle::SP_DialogSaveButton:
        case QStyle::SP_DialogCloseButton:
        case QStyle::SP_DialogApplyButton:
        case QStyle::SP_DialogResetButton:
        case QStyle::SP_DialogDiscardButton:
        case QStyle::SP_ToolBarHorizontalExtensionButton:
        case QStyle::SP_ToolBarVerticalExtensionButton:
            return true;
        default:
            return false;
    }
}

}  // namespace

QIcon DeferredIconStyle::standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const {
    // An option could carry a direction or a state that the picture depends on; the dialog
    // buttons and the menu bar pass none. The application's direction, which the picture then
    // follows, does not change while the program runs.
    if (option == nullptr && IsDeferred(which)) {
        return QIcon(new DeferredIconEngine(baseStyle(), which));
    }
    return QProxyStyle::standardIcon(which, option, widget);
}

}  // namespace vt
