#include <QtTest>
#include <QtWidgets>

#include "platform/qt_deferred_icon_style.h"

using namespace Qt::StringLiterals;

// Every way Qt reads an icon must give the same pixels from a deferred icon as from the style's
// own, at plain and doubled pixel ratios and in every mode a button can be drawn in.
class TstDeferredIconStyle : public QObject {
    Q_OBJECT

    static QImage Blank(const QSize& size, qreal ratio) {
        QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        return image;
    }

    static QImage Painted(const QIcon& icon, const QSize& size, qreal ratio, QIcon::Mode mode) {
        QImage image = Blank(size, ratio);
        QPainter painter(&image);
        icon.paint(&painter, QRect(QPoint(0, 0), size), Qt::AlignCenter, mode);
        return image;
    }

    // The box as the screen would show it, drawn at the given pixel ratio.
    static QImage Rendered(QWidget& widget, qreal ratio) {
        QImage image = Blank(widget.size(), ratio);
        widget.render(&image);
        return image;
    }

private slots:
    // Every icon the style hands out, deferred or passed through.
    void iconsReadTheSameEveryWay_data() {
        QTest::addColumn<int>("which");
        const QMetaEnum pixmaps = QMetaEnum::fromType<QStyle::StandardPixmap>();
        for (int i = 0; i < pixmaps.keyCount(); ++i) {
            if (static_cast<QStyle::StandardPixmap>(pixmaps.value(i)) != QStyle::SP_CustomBase) {
                QTest::newRow(pixmaps.key(i)) << pixmaps.value(i);
            }
        }
    }
    void iconsReadTheSameEveryWay() {
        QFETCH(int, which);
        const auto pixmap = static_cast<QStyle::StandardPixmap>(which);
        vt::DeferredIconStyle style;
        const QIcon own = style.baseStyle()->standardIcon(pixmap);
        const QIcon deferred = style.standardIcon(pixmap);
        QCOMPARE(deferred.isNull(), own.isNull());
        QCOMPARE(deferred.availableSizes(), own.availableSizes());
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled, QIcon::Active, QIcon::Selected}) {
            for (const int side : {12, 16, 20, 32, 40}) {
                const QSize size(side, side);
                QCOMPARE(deferred.actualSize(size, mode), own.actualSize(size, mode));
                for (const qreal ratio : {1.0, 1.5, 2.0}) {
                    const QPixmap expected = own.pixmap(size, ratio, mode);
                    const QPixmap actual = deferred.pixmap(size, ratio, mode);
                    QCOMPARE(actual.devicePixelRatio(), expected.devicePixelRatio());
                    QCOMPARE(actual.toImage(), expected.toImage());
                    QCOMPARE(Painted(deferred, size, ratio, mode), Painted(own, size, ratio, mode));
                }
            }
        }
    }

    void aBoxLooksTheSame() {
        const auto box = [] {
            auto message = std::make_unique<QMessageBox>(QMessageBox::Question, u"VendrakoTimer"_s, u"¿Seguro?"_s,
                                                         QMessageBox::NoButton);
            message->addButton(QMessageBox::Yes)->setText(u"Sí"_s);
            message->addButton(QMessageBox::No)->setText(u"No"_s);
            message->addButton(QMessageBox::Cancel)->setText(u"Cancelar"_s);
            message->button(QMessageBox::No)->setEnabled(false);
            message->adjustSize();
            return message;
        };
        auto* deferred_style = new vt::DeferredIconStyle;
        QApplication::setStyle(QStyleFactory::create(deferred_style->baseStyle()->name()));
        auto plain = box();
        QApplication::setStyle(deferred_style);
        auto deferred = box();
        QCOMPARE(deferred->size(), plain->size());
        for (const qreal ratio : {1.0, 2.0}) {
            QCOMPARE(Rendered(*deferred, ratio), Rendered(*plain, ratio));
        }
    }
};

QTEST_MAIN(TstDeferredIconStyle)
#include "tst_deferred_icon_style.moc"
