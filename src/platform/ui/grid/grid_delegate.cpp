#include "platform/ui/grid/grid_delegate.h"

#include "platform/ui/grid/flex_grid.h"
#include "platform/ui/look/theme.h"

#include <QPainter>

namespace quilla {

namespace {

void paintMarker(QPainter& painter, const QRect& cell, bool current)
{
    const Theme& theme = Theme::current();
    painter.fillRect(cell, theme.header);
    if (!current) return;
    const QPointF centre = QRectF(cell).center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.link);
    painter.drawPolygon(
        QPolygonF {centre + QPointF(-3, -5), centre + QPointF(4, 0), centre + QPointF(-3, 5)});
    painter.restore();
}

} // namespace

GridDelegate::GridDelegate(FlexGrid& grid)
    : QStyledItemDelegate(&grid)
    , m_grid(grid)
{
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~QStyle::State_HasFocus;
    const int mark = m_grid.markOf(index.row() + 1);
    if (mark < 0) return;
    option->palette.setColor(QPalette::Text, Theme::current().error);
    option->palette.setColor(QPalette::Inactive, QPalette::HighlightedText, Theme::current().error);
    if (index.column() != mark) return;
    option->text.prepend(u'！');
    option->font.setBold(true); // the line that has the focus shows no colour but its own
}

void GridDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (index.column() < m_grid.cells().FixedCols())
        return paintMarker(*painter, option.rect, index.row() + 1 == m_grid.Row());
    QStyledItemDelegate::paint(painter, option, index);
}

} // namespace quilla
