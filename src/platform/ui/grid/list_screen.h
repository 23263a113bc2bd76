#pragma once

#include "platform/grid/grid_widths.h"
#include "platform/ui/grid/flex_grid.h"

#include <QLabel>
#include <QPushButton>

namespace quilla {

/// How a screen shows a result set in its grid.
struct GridFill {
    QString format {}; ///< put back after the data is bound, so it replaces the field names
    std::vector<int> yesNo {}; ///< columns shown as 是 and 否
    std::vector<int> widths {}; ///< in twips, empty where captions or `gridFix` decide
    QLabel* count = nullptr; ///< the count label
    bool countHasCaption = false; ///< the label shows the number alone, its caption stands beside it
    QString key {}; ///< the line to select, by its first column
    int line = 1; ///< the line to select where the key is empty or not found
};

/// Copies the result into the grid, shows its count, sets format and widths, rewrites yes/no cells and
/// selects the remembered line. A result without rows leaves one empty line. The number of rows.
qsizetype fillGrid(FlexGrid& grid, Recordset& records, const GridFill& fill);
/// Shows a count as `GridFill` tells.
void showCount(const GridFill& fill, qsizetype count);

/// The frame of a list screen: the grid above, count label and command buttons below; the columns share
/// the width by the screen's rule at every size.
class ListScreen : public QWidget {
    Q_OBJECT

public:
    FlexGrid Grid1;
    QLabel lCounts;

    /// Shares the width among the columns; runs after every fill and on every resize.
    void gridFix();

    QSize sizeHint() const override;

protected:
    /// `rule` must outlive the screen.
    ListScreen(const QString& name, const QString& title, const WidthRule& rule);
    /// Puts the parts in their places and gives the screen its size; for the end of the screen's own
    /// constructor.
    void arrange(const std::vector<std::reference_wrapper<QPushButton>>& buttons);

    void resizeEvent(QResizeEvent* event) override;

private:
    const WidthRule& m_rule;
};

} // namespace quilla
