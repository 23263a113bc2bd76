#include "platform/core/caption.h"
#include "platform/db/decimal.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/grid/list_screen.h"

namespace quilla {

void showCount(const GridFill& fill, qsizetype count)
{
    if (fill.count)
        fill.count->setText(fill.countHasCaption ? QString::number(count) : recordCountText(count));
}

namespace {

/// An empty cell stays empty.
void showAsMoney(GridModel& cells, int col)
{
    for (int row = 1; row < cells.Rows(); ++row)
        if (const auto amount = Decimal::read(cells.TextMatrix(row, col)))
            cells.setTextMatrix(row, col, amount->fixed(2));
}

} // namespace

qsizetype fillGrid(FlexGrid& grid, Recordset& records, const GridFill& fill)
{
    const WaitCursor hourglass;
    qsizetype count = 0;
    {
        const GridModel::Filling filling(grid.cells());
        grid.cells().setFixedCols(GridFormat::parse(fill.format).hasMarker() ? 1 : 0);
        count = grid.bind(records);
        grid.setFormatString(fill.format);
        for (int col : fill.yesNo)
            grid.cells().yesNo(col);
        for (int col : fill.money)
            showAsMoney(grid.cells(), col);
    }
    if (!fill.widths.empty()) grid.setColWidths(fill.widths);
    showCount(fill, count);
    grid.selectKey(fill.key, fill.line);
    return count;
}

} // namespace quilla
