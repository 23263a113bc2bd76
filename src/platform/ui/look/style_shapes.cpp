#include "platform/ui/look/style_shapes.h"

#include <QPainter>

namespace quilla {

namespace {

constexpr int ChosenLine = 2;
constexpr qreal ArrowHeight = 4; // over a caption
constexpr qreal ArrowWidth = 7;

/// A pen between two pixels, so that no side is lost where a point is one and a half of them.
QRectF penRect(const QRect& rect)
{
    return QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
}

void paintEdge(QPainter& painter, const QRect& rect, const QColor& edge, const QBrush& face, qreal corner = 0)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(face);
    painter.drawRoundedRect(penRect(rect), corner, corner);
    painter.restore();
}

} // namespace

void paintGroupFrame(QPainter& painter, const QRect& rect, const Theme& theme)
{
    paintEdge(painter, rect, theme.line, Qt::NoBrush, FrameCorner);
}

void paintListFrame(QPainter& painter, const QStyleOption& option, const Theme& theme)
{
    const bool inUse = option.state.testFlag(QStyle::State_HasFocus);
    paintEdge(painter, option.rect, inUse ? theme.link : theme.border, Qt::NoBrush);
}

void paintHeaderSection(QPainter& painter, const QRect& rect, const Theme& theme)
{
    painter.fillRect(rect, theme.header);
    painter.setPen(theme.border);
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
    painter.setPen(theme.line);
    painter.drawLine(rect.topRight(), rect.bottomRight() - QPoint(0, 1));
}

void paintSortArrow(QPainter& painter, const QStyleOptionHeader& header, const Theme& theme)
{
    const QPointF top(header.rect.center().x(), header.rect.top() + 1);
    const qreal base = header.sortIndicator == QStyleOptionHeader::SortUp ? ArrowHeight : 0;
    painter.save();
    painter.setClipRect(header.rect); // the caption leaves nothing to paint on
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.link);
    painter.drawPolygon(QPolygonF({top + QPointF(-ArrowHeight, base), top + QPointF(ArrowHeight, base),
        top + QPointF(0, ArrowHeight - base)}));
    painter.restore();
}

void paintTab(QPainter& painter, const QStyleOptionTab& tab, const Theme& theme)
{
    const bool chosen = tab.state.testFlag(QStyle::State_Selected);
    const bool under = tab.state.testFlag(QStyle::State_MouseOver);
    const QRect rect = tab.rect.adjusted(0, 0, -1, 0);
    painter.save();
    if (chosen) { // reaches over the frame of the page
        painter.fillRect(rect, theme.page);
        painter.setPen(theme.border);
        painter.drawLine(rect.topLeft(), rect.bottomLeft());
        painter.drawLine(rect.topRight(), rect.bottomRight());
        painter.fillRect(rect.left(), rect.top(), rect.width(), ChosenLine, theme.link);
    } else if (under) {
        painter.fillRect(rect.adjusted(0, 3, 0, -3), theme.header);
    }
    painter.restore();
}

void paintTabPage(QPainter& painter, const QRect& page, const Theme& theme)
{
    paintEdge(painter, page, theme.border, theme.page);
}

void paintArrow(QPainter& painter, const QStyleOption& option, Qt::ArrowType direction)
{
    const qreal turn = direction == Qt::UpArrow ? 180
        : direction == Qt::LeftArrow            ? 90
        : direction == Qt::RightArrow           ? -90
                                                : 0;
    const auto group = option.state.testFlag(QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(option.palette.color(group, QPalette::ButtonText), 1.4));
    painter.translate(QRectF(option.rect).center());
    painter.rotate(turn);
    painter.drawPolyline(QPolygonF(
        {{-ArrowWidth / 2, -ArrowWidth / 4}, {0, ArrowWidth / 4}, {ArrowWidth / 2, -ArrowWidth / 4}}));
    painter.restore();
}

void paintProgress(QPainter& painter, const QStyleOptionProgressBar& bar, const Theme& theme)
{
    const qint64 whole = qint64(bar.maximum) - bar.minimum;
    const QRect room = bar.rect.adjusted(2, 2, -2, -2);
    const qint64 done = qint64(bar.progress) - bar.minimum; // below 0 before the work begins
    if (whole <= 0 || done <= 0) return;
    painter.fillRect(room.left(), room.top(), int(room.width() * done / whole), room.height(), theme.accent);
}

} // namespace quilla
