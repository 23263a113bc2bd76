#pragma once

#include "platform/core/text.h"

#include <QStringList>

namespace quilla {

/// The texts of a column below its caption, parted by blanks.
template <typename Grid> QString columnOf(const Grid& grid, int col)
{
    QStringList texts;
    for (int row = 1; row < grid.Rows(); ++row)
        texts.append(grid.TextMatrix(row, col));
    return texts.join(u' ');
}

/// The texts of a line, parted by "|".
template <typename Grid> QString lineOf(const Grid& grid, int row)
{
    QStringList texts;
    for (int col = 0; col < grid.Cols(); ++col)
        texts.append(grid.TextMatrix(row, col));
    return texts.join(u'|');
}

/// All lines, parted by blanks.
template <typename Grid> QString linesOf(const Grid& grid)
{
    QStringList lines;
    for (int row = 1; row < grid.Rows(); ++row)
        lines.append(lineOf(grid, row));
    return lines.join(u' ');
}

} // namespace quilla
