#include "platform/ui/look/icons.h"

#include "platform/core/text.h"
#include "platform/ui/look/theme.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace quilla {

namespace {

constexpr qreal Canvas = 32; // every picture is drawn on 32 by 32 units

struct Ink {
    QColor line;
    QColor fill;
    QColor mark;
    QColor onMark;
};

using Drawing = void (*)(QPainter& painter, const Ink& ink);

void useLine(QPainter& painter, const QColor& colour, qreal width = 2)
{
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
}

void drawArrow(QPainter& painter, QPointF from, QPointF to)
{
    const qreal side = to.x() > from.x() ? -1 : 1;
    painter.drawLine(from, to);
    painter.drawPolyline(QPolygonF {to + QPointF(4 * side, -4), to, to + QPointF(4 * side, 4)});
}

void drawClosedBook(QPainter& painter, const Ink& ink, const QRectF& cover)
{
    useLine(painter, ink.line);
    painter.setBrush(ink.fill);
    painter.drawRoundedRect(cover, 2, 2);
    painter.setBrush(Qt::NoBrush);
    const qreal spine = cover.left() + 4;
    painter.drawLine(QPointF(spine, cover.top()), QPointF(spine, cover.bottom()));
    painter.drawLine(QPointF(spine + 4, cover.top() + 5), QPointF(cover.right() - 4, cover.top() + 5));
}

void drawLending(QPainter& painter, const Ink& ink)
{
    drawClosedBook(painter, ink, {7, 3, 18, 15});
    useLine(painter, ink.mark, 2.4);
    drawArrow(painter, {5, 22.5}, {27, 22.5});
    drawArrow(painter, {27, 28}, {5, 28});
}

void drawReader(QPainter& painter, const Ink& ink)
{
    useLine(painter, ink.line);
    painter.setBrush(ink.fill);
    painter.drawRoundedRect(QRectF(3, 6, 26, 20), 2.5, 2.5);
    painter.setBrush(ink.mark);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(11, 13), 3, 3);
    QPainterPath shoulders(QPointF(5.8, 22.5));
    shoulders.cubicTo(6, 15.8, 16, 15.8, 16.2, 22.5);
    painter.drawPath(shoulders);
    useLine(painter, ink.line);
    painter.drawLine(QPointF(19.5, 12), QPointF(25.5, 12));
    painter.drawLine(QPointF(19.5, 16.5), QPointF(25.5, 16.5));
    painter.drawLine(QPointF(19.5, 21), QPointF(23, 21));
}

void drawStatistics(QPainter& painter, const Ink& ink)
{
    useLine(painter, ink.line);
    painter.setBrush(ink.fill);
    painter.drawRect(QRectF(7, 17, 5, 10));
    painter.drawRect(QRectF(15, 12, 5, 15));
    painter.setBrush(ink.mark);
    painter.drawRect(QRectF(23, 6, 5, 21));
    painter.drawPolyline(QPolygonF {{3, 4}, {3, 28}, {30, 28}});
}

void drawFine(QPainter& painter, const Ink& ink)
{
    useLine(painter, ink.line);
    painter.setBrush(ink.fill);
    painter.drawEllipse(QPointF(16, 16), 12.5, 12.5);
    useLine(painter, ink.mark, 2.4);
    painter.drawPolyline(QPolygonF {{11, 8.5}, {16, 15}, {21, 8.5}});
    painter.drawLine(QPointF(16, 15), QPointF(16, 24));
    painter.drawLine(QPointF(11.5, 15.8), QPointF(20.5, 15.8));
    painter.drawLine(QPointF(11.5, 20), QPointF(20.5, 20));
}

void drawWithdrawal(QPainter& painter, const Ink& ink)
{
    drawClosedBook(painter, ink, {4, 4, 19, 23});
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink.mark);
    painter.drawEllipse(QPointF(23, 23), 7, 7);
    useLine(painter, ink.onMark, 2.4);
    painter.drawLine(QPointF(19.8, 23), QPointF(26.2, 23));
}

void drawParameters(QPainter& painter, const Ink& ink)
{
    const QPointF knobs[] {{11, 7.5}, {21, 16}, {13, 24.5}};
    for (const QPointF& knob : knobs) {
        useLine(painter, ink.line);
        painter.drawLine(QPointF(4, knob.y()), QPointF(28, knob.y()));
        painter.setBrush(&knob == &knobs[1] ? ink.mark : ink.fill);
        painter.drawEllipse(knob, 3.6, 3.6);
    }
}

void drawPassword(QPainter& painter, const Ink& ink)
{
    useLine(painter, ink.line);
    QPainterPath shackle(QPointF(10, 15));
    shackle.lineTo(10, 10);
    shackle.cubicTo(10, 2.2, 22, 2.2, 22, 10);
    shackle.lineTo(22, 15);
    painter.drawPath(shackle);
    painter.setBrush(ink.fill);
    painter.drawRoundedRect(QRectF(6, 14, 20, 14), 2.5, 2.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink.mark);
    painter.drawEllipse(QPointF(16, 19.5), 2.4, 2.4);
    painter.drawRoundedRect(QRectF(14.9, 20, 2.2, 4.6), 1, 1);
}

void drawQuit(QPainter& painter, const Ink& ink)
{
    useLine(painter, ink.line);
    painter.setBrush(ink.fill);
    painter.drawPolyline(QPolygonF {{19, 10}, {19, 4}, {5, 4}, {5, 28}, {19, 28}, {19, 22}});
    useLine(painter, ink.mark, 2.4);
    drawArrow(painter, {12.5, 16}, {29, 16});
}

void drawApplication(QPainter& painter, const Ink&)
{
    // The same on every desktop, since other programs show it too.
    const Theme light;
    painter.setPen(Qt::NoPen);
    painter.setBrush(light.accent);
    painter.drawRoundedRect(QRectF(1, 1, 30, 30), 6, 6);
    // four bamboo slips, bound by two cords
    painter.setBrush(light.accentText);
    for (int slip = 0; slip < 4; ++slip)
        painter.drawRoundedRect(QRectF(6.5 + slip * 5, 6, 4, 20), 1, 1);
    useLine(painter, light.accent, 1.4);
    for (const qreal cord : {11.5, 20.5})
        painter.drawLine(QPointF(5.5, cord), QPointF(26.5, cord));
}

void drawDisc(QPainter& painter, const QColor& colour)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QPointF(16, 16), 13, 13);
}

void drawStem(QPainter& painter, const Ink& ink, QPointF from, QPointF to, QPointF dot)
{
    useLine(painter, ink.onMark, 3);
    painter.drawLine(from, to);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink.onMark);
    painter.drawEllipse(dot, 1.9, 1.9);
}

void drawInformation(QPainter& painter, const Ink& ink)
{
    drawDisc(painter, ink.mark);
    drawStem(painter, ink, {16, 15}, {16, 22.5}, {16, 9.6});
}

void drawWarning(QPainter& painter, const Ink& ink)
{
    const QColor amber = Theme::current().warning;
    painter.setPen(QPen(amber, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(amber);
    painter.drawPolygon(QPolygonF {{16, 4.5}, {29, 27}, {3, 27}});
    drawStem(painter, ink, {16, 11.5}, {16, 18.5}, {16, 23.6});
}

void drawStop(QPainter& painter, const Ink& ink)
{
    drawDisc(painter, Theme::current().error);
    useLine(painter, ink.onMark, 3);
    painter.drawLine(QPointF(11.5, 11.5), QPointF(20.5, 20.5));
    painter.drawLine(QPointF(20.5, 11.5), QPointF(11.5, 20.5));
}

void drawQuestion(QPainter& painter, const Ink& ink)
{
    drawDisc(painter, ink.mark);
    QPainterPath hook(QPointF(12, 12.5));
    hook.cubicTo(12, 7, 20.5, 7, 20.5, 12.4);
    hook.cubicTo(20.5, 15.4, 16, 15.6, 16, 18.6);
    useLine(painter, ink.onMark, 2.8);
    painter.drawPath(hook);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink.onMark);
    painter.drawEllipse(QPointF(16, 23.2), 1.9, 1.9);
}

/// Points left for -1, right for 1.
template <int Side> void drawChevron(QPainter& painter, const Ink& ink)
{
    useLine(painter, ink.line, 3);
    painter.drawPolyline(QPolygonF {{16 - 4.5 * Side, 7}, {16 + 4.5 * Side, 16}, {16 - 4.5 * Side, 25}});
}

class DrawnIcon final : public QIconEngine {
public:
    explicit DrawnIcon(Drawing drawing)
        : m_drawing(drawing)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const Theme& theme = Theme::current();
        const bool dim = mode == QIcon::Disabled;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / Canvas, rect.height() / Canvas);
        m_drawing(*painter,
            {dim ? theme.disabledText : theme.text, dim ? theme.window : theme.restingSelection,
                dim ? theme.disabledText : theme.link, theme.surface});
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, {{}, size}, mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new DrawnIcon(m_drawing); }

private:
    Drawing m_drawing;
};

struct KeyedDrawing {
    QStringView key;
    Drawing drawing;
};

constexpr KeyedDrawing ToolbarDrawings[] {
    {u"JHBook", drawLending},
    {u"Reader", drawReader},
    {u"Tj", drawStatistics},
    {u"Fkcl", drawFine},
    {u"BookOut", drawWithdrawal},
    {u"Jycs", drawParameters},
    {u"Password", drawPassword},
    {u"Quit", drawQuit},
};

} // namespace

QIcon toolbarIcon(const QString& key)
{
    for (const KeyedDrawing& each : ToolbarDrawings)
        if (each.key == key) return QIcon(new DrawnIcon(each.drawing));
    return {};
}

QIcon messageIcon(Sign sign)
{
    constexpr Drawing drawings[] {drawInformation, drawWarning, drawStop, drawQuestion};
    return QIcon(new DrawnIcon(drawings[int(sign)]));
}

QIcon arrowIcon(Qt::ArrowType direction)
{
    return QIcon(new DrawnIcon(direction == Qt::LeftArrow ? drawChevron<-1> : drawChevron<1>));
}

QIcon applicationIcon()
{
    return QIcon(new DrawnIcon(drawApplication));
}

} // namespace quilla
