#pragma once

#include "platform/ui/look/theme.h"

#include <QProxyStyle>
#include <QStyleOption>

namespace quilla {

/// The look of the program: flat faces, thin borders, a focus ring of two pixels. Everything that is not
/// drawn here is Fusion's.
class QuillaStyle final : public QProxyStyle {
    Q_OBJECT

public:
    explicit QuillaStyle(const Theme& theme);

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* data) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
        const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
        const QWidget* widget) const override;
    QRect subElementRect(
        SubElement element, const QStyleOption* option, const QWidget* widget) const override;
    QIcon standardIcon(
        StandardPixmap standard, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
        const QWidget* widget) const override;

private:
    /// `edge` is the colour of the frame where no ring of the focus takes its place.
    void drawBox(
        QPainter* painter, const QRect& rect, const QColor& face, const QColor& edge, bool ring) const;
    void drawComboBox(QPainter* painter, const QStyleOptionComboBox& list) const;
    void drawButtonFace(QPainter* painter, const QStyleOption* option) const;
    void drawTabLabel(QPainter* painter, const QStyleOptionTab& tab, const QWidget* widget) const;
    void drawFocusRing(QPainter* painter, const QStyleOption* option, const QWidget* widget) const;
    QRect groupPart(const QStyleOptionGroupBox& group, SubControl part) const;
    void drawHeader(QPainter* painter, const QStyleOptionHeader& header, const QWidget* widget) const;

    Theme m_theme;
};

} // namespace quilla
