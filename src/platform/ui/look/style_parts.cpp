#include "platform/ui/look/style_parts.h"

#include <QPainter>
#include <QStyle>

namespace quilla {

namespace {

constexpr int ShortestHandle = 28;
constexpr int HandleInset = 3;
constexpr int TitleButton = 30; // wide; as high as the bar

QRect handleRect(const QStyleOptionSlider& bar)
{
    const bool flat = bar.orientation == Qt::Horizontal;
    const int length = flat ? bar.rect.width() : bar.rect.height();
    const int range = bar.maximum - bar.minimum;
    if (range <= 0) return {};
    const int natural = int(qint64(bar.pageStep) * length / (qint64(range) + bar.pageStep));
    const int handle = std::clamp(natural, std::min(ShortestHandle, length), length);
    const int start = QStyle::sliderPositionFromValue(
        bar.minimum, bar.maximum, bar.sliderPosition, length - handle, bar.upsideDown);
    return flat ? QRect(start, 0, handle, bar.rect.height()) : QRect(0, start, bar.rect.width(), handle);
}

/// Which button stands there now, counted from the right edge; -1 for none.
int placeOf(const QStyleOptionTitleBar& bar, QStyle::SubControl part)
{
    const bool maximized = bar.titleBarState & Qt::WindowMaximized;
    const bool minimized = bar.titleBarState & Qt::WindowMinimized;
    switch (part) {
    case QStyle::SC_TitleBarCloseButton:
        return bar.titleBarFlags & Qt::WindowSystemMenuHint ? 0 : -1;
    case QStyle::SC_TitleBarMaxButton:
        return bar.titleBarFlags & Qt::WindowMaximizeButtonHint && !maximized ? 1 : -1;
    case QStyle::SC_TitleBarMinButton:
        return bar.titleBarFlags & Qt::WindowMinimizeButtonHint && !minimized ? 2 : -1;
    case QStyle::SC_TitleBarNormalButton:
        return maximized ? 1 : minimized ? 2 : -1;
    default:
        return -1;
    }
}

void paintGlyph(QPainter& painter, QStyle::SubControl part, const QPointF& centre)
{
    const QRectF box(centre - QPointF(4.5, 4.5), QSizeF(9, 9));
    switch (part) {
    case QStyle::SC_TitleBarCloseButton:
        painter.drawLine(box.topLeft(), box.bottomRight());
        painter.drawLine(box.topRight(), box.bottomLeft());
        break;
    case QStyle::SC_TitleBarMaxButton:
        painter.drawRect(box);
        break;
    case QStyle::SC_TitleBarNormalButton:
        painter.drawRect(box.adjusted(0, 2.5, -2.5, 0));
        painter.drawPolyline(
            QPolygonF {box.topLeft() + QPointF(2.5, 0), box.topRight(), box.bottomRight() - QPointF(0, 2.5)});
        break;
    default:
        painter.drawLine(box.bottomLeft(), box.bottomRight());
    }
}

struct WindowButton {
    QStyle::SubControl glyph;
    QRect rect; ///< empty when it is not there
    QColor ink;
};

/// The one under the pointer has a face.
void paintWindowButton(QPainter& painter, const QStyleOptionComplex& bar, QStyle::SubControl part,
    const WindowButton& button, const Theme& theme)
{
    if (button.rect.isEmpty()) return;
    const bool under = bar.activeSubControls.testFlag(part) && bar.state.testFlag(QStyle::State_MouseOver);
    const bool closes = button.glyph == QStyle::SC_TitleBarCloseButton;
    if (under) painter.fillRect(button.rect, closes ? theme.error : theme.mutedText);
    painter.setPen(QPen(under ? theme.surface : button.ink, 1.4));
    painter.setBrush(Qt::NoBrush);
    paintGlyph(painter, button.glyph, QRectF(button.rect).center());
}

/// The square of a check box or the circle of a choice, in the room that it is given.
QRectF indicatorFrame(const QStyleOption& option)
{
    const int side = std::min({option.rect.width(), option.rect.height(), 15});
    const QRect box = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(side, side), option.rect);
    return QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5);
}

/// Sets pen and brush for the frame, and returns the colour of the sign in it.
QColor useIndicator(QPainter& painter, const QStyleOption& option, const Theme& theme)
{
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(enabled ? theme.border : theme.line, 1));
    painter.setBrush(enabled ? theme.surface : theme.window);
    return enabled ? theme.text : theme.mutedText;
}

} // namespace

void paintCheck(QPainter& painter, const QStyleOption& option, const Theme& theme)
{
    const QRectF frame = indicatorFrame(option);
    const QPointF centre = frame.center();
    painter.save();
    const QColor ink = useIndicator(painter, option, theme);
    painter.drawRoundedRect(frame, 2, 2);
    painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    if (option.state.testFlag(QStyle::State_NoChange))
        painter.drawLine(centre - QPointF(3, 0), centre + QPointF(3, 0));
    else if (option.state.testFlag(QStyle::State_On))
        painter.drawPolyline(
            QPolygonF({centre + QPointF(-3.5, 0), centre + QPointF(-1, 2.5), centre + QPointF(3.5, -3)}));
    painter.restore();
}

void paintRadio(QPainter& painter, const QStyleOption& option, const Theme& theme)
{
    const QRectF frame = indicatorFrame(option);
    painter.save();
    const QColor ink = useIndicator(painter, option, theme);
    painter.drawEllipse(frame);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    if (option.state.testFlag(QStyle::State_On)) painter.drawEllipse(frame.center(), 3.5, 3.5);
    painter.restore();
}

QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part)
{
    const QRect handle = handleRect(bar);
    const bool flat = bar.orientation == Qt::Horizontal;
    QRect rest = bar.rect;
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return bar.rect;
    case QStyle::SC_ScrollBarSlider:
        return handle;
    case QStyle::SC_ScrollBarSubPage:
        flat ? rest.setRight(handle.left() - 1) : rest.setBottom(handle.top() - 1);
        return rest;
    case QStyle::SC_ScrollBarAddPage:
        flat ? rest.setLeft(handle.right() + 1) : rest.setTop(handle.bottom() + 1);
        return rest;
    default:
        return {};
    }
}

void paintScrollBar(QPainter& painter, const QStyleOptionSlider& bar, const Theme& theme)
{
    painter.fillRect(bar.rect, theme.window);
    const QRect handle = handleRect(bar);
    if (handle.isEmpty()) return;
    const bool held
        = bar.state.testFlag(QStyle::State_Sunken) && bar.activeSubControls == QStyle::SC_ScrollBarSlider;
    const bool under = bar.state.testFlag(QStyle::State_MouseOver);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(held ? theme.accent : under ? theme.mutedText : theme.disabledText);
    const QRectF grip = QRectF(handle).adjusted(HandleInset, HandleInset, -HandleInset, -HandleInset);
    const qreal round = std::min(grip.width(), grip.height()) / 2;
    painter.drawRoundedRect(grip, round, round);
    painter.restore();
}

QRect titleBarPart(const QStyleOptionTitleBar& bar, QStyle::SubControl part)
{
    const QRect all = bar.rect;
    if (part == QStyle::SC_TitleBarSysMenu) return {all.left() + 6, all.center().y() - 7, 16, 16};
    if (part == QStyle::SC_TitleBarLabel) return all.adjusted(28, 0, -3 * TitleButton, 0);
    const int place = placeOf(bar, part);
    if (place < 0) return {};
    return {all.right() + 1 - (place + 1) * TitleButton, all.top(), TitleButton, all.height()};
}

void paintTitleBar(QPainter& painter, const QStyleOptionTitleBar& bar, const Theme& theme)
{
    const bool active = bar.titleBarState & QStyle::State_Active;
    const QColor ink = active ? theme.accentText : theme.mutedText;
    painter.save();
    painter.fillRect(bar.rect, active ? theme.titleBar : theme.header);
    bar.icon.paint(&painter, titleBarPart(bar, QStyle::SC_TitleBarSysMenu));
    painter.setPen(ink);
    const QRect label = titleBarPart(bar, QStyle::SC_TitleBarLabel);
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        bar.fontMetrics.elidedText(bar.text, Qt::ElideRight, label.width()));
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto part : {QStyle::SC_TitleBarMinButton, QStyle::SC_TitleBarMaxButton,
             QStyle::SC_TitleBarNormalButton, QStyle::SC_TitleBarCloseButton})
        paintWindowButton(painter, bar, part, {part, titleBarPart(bar, part), ink}, theme);
    painter.restore();
}

QSize windowButtonsSize()
{
    return {3 * TitleButton, 24};
}

QRect windowButtonPart(const QStyleOptionComplex& bar, QStyle::SubControl part)
{
    const int place = part == QStyle::SC_MdiCloseButton ? 0 : part == QStyle::SC_MdiNormalButton ? 1 : 2;
    return {bar.rect.right() + 1 - (place + 1) * TitleButton, bar.rect.top(), TitleButton, bar.rect.height()};
}

void paintWindowButtons(QPainter& painter, const QStyleOptionComplex& bar, const Theme& theme)
{
    constexpr std::pair<QStyle::SubControl, QStyle::SubControl> buttons[] {
        {QStyle::SC_MdiMinButton, QStyle::SC_TitleBarMinButton},
        {QStyle::SC_MdiNormalButton, QStyle::SC_TitleBarNormalButton},
        {QStyle::SC_MdiCloseButton, QStyle::SC_TitleBarCloseButton},
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto& [part, glyph] : buttons)
        paintWindowButton(painter, bar, part, {glyph, windowButtonPart(bar, part), theme.text}, theme);
    painter.restore();
}

} // namespace quilla
