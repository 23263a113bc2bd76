// The order of the lines: as the program wants it, or as the operator does by a click on a caption.

#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/grid/flex_grid.h"

#include <QHeaderView>

namespace quilla {

void FlexGrid::sortRows(int firstCol, int lastCol)
{
    const int row = Row();
    m_model.sortRows(firstCol, lastCol);
    showOrder({});
    setRow(row);
}

void FlexGrid::setSortsByCaption(bool sorts)
{
    horizontalHeader()->setSectionsClickable(sorts);
    if (sorts)
        connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &FlexGrid::sortByCaption,
            Qt::UniqueConnection);
}

void FlexGrid::sortByCaption(int col)
{
    const bool again = m_order.col == col && m_order.direction == Qt::AscendingOrder;
    sortBy({col, again ? Qt::DescendingOrder : Qt::AscendingOrder});
}

void FlexGrid::sortBy(const GridOrder& order)
{
    if (order.col < m_model.FixedCols() || order.col >= Cols() || m_model.isEmptyList()) return;
    const WaitCursor hourglass;
    const QString key = current(m_model.FixedCols());
    const int col = Col();
    m_model.sortRows(order.col, order.col, order.direction);
    showOrder(order);
    selectKey(key);
    setCol(col);
}

/// The arrow points up where the lines ascend; Qt's own one points down then.
void FlexGrid::showOrder(const GridOrder& order)
{
    m_order = order;
    const bool ascends = order.direction == Qt::AscendingOrder;
    horizontalHeader()->setSortIndicatorShown(order.col >= 0);
    horizontalHeader()->setSortIndicator(order.col, ascends ? Qt::DescendingOrder : Qt::AscendingOrder);
}

} // namespace quilla
