#pragma once

#include <vector>

namespace quilla {

/// The height of the row of captions, in twips.
inline constexpr int CaptionHeight = 350;

/// A run of columns that share one width rule: `units` times the unit, plus `twips`, plus what the grid
/// has left where the column takes the rest.
struct ColumnShare {
    int first;
    int last;
    int units;
    int twips;
    bool takesRest;
};

/// How a list screen shares its grid's width among the columns, in twips (15 a pixel at 96 dpi).
struct WidthRule {
    int spareSmall; ///< kept free while all lines fit
    int spareLarge; ///< kept free beside a vertical scroll bar
    int parts; ///< the unit is the free width divided by this; 0 for no unit
    std::vector<ColumnShare> columns;
};

/// What the rule is measured against; heights and width in twips, `rows` counts the caption row.
struct GridExtent {
    int width;
    int height;
    int rowHeight;
    int rows;
};

/// Whether the grid will show a vertical scroll bar: a grid that holds exactly as many lines as fit
/// counts as full already.
bool needsScrollBar(const GridExtent& extent);

/// The widths of all columns of the rule. A column that takes the rest stays wide enough to be read
/// when the grid is very narrow.
std::vector<int> gridFix(const WidthRule& rule, const GridExtent& extent);

/// The widths in pixels that columns get in a grid `available` pixels wide: never below `least`, which is
/// what their captions need; a width of 0 stays hidden. What is left over is shared out in proportion;
/// where the wanted widths fit and only the captions' needs overflow, the roomier columns give way.
std::vector<int> layColumns(const std::vector<int>& wanted, const std::vector<int>& least, int available);

} // namespace quilla
