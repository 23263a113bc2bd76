#pragma once

#include "platform/grid/grid_widths.h"
#include "platform/ui/form/form.h"
#include "platform/ui/grid/flex_grid.h"

#include <QLabel>
#include <QPushButton>

namespace quilla {

/// How a screen shows a result set in its grid.
struct GridFill {
    QString format {}; ///< put back after the data is bound, so it replaces the field names
    std::vector<int> yesNo {}; ///< columns shown as 是 and 否
    std::vector<int> money {}; ///< columns shown with two decimals, whatever the engine gave
    std::vector<int> widths {}; ///< in twips, empty where captions or `gridFix` decide
    QLabel* count = nullptr; ///< the count label
    bool countHasCaption = false; ///< the label shows the number alone, its caption stands beside it
    QString key {}; ///< the line to select, by its first column
    int line = 1; ///< the line to select where the key is empty or not found
};

/// Copies the result into the grid, shows its count, sets format and widths, rewrites yes/no cells and
/// selects the remembered line. A result without rows leaves one empty line. The number of rows.
qsizetype fillGrid(FlexGrid& grid, Recordset& records, const GridFill& fill);
/// Shows a count in the label of `fill`, in the form that it asks for.
void showCount(const GridFill& fill, qsizetype count);

/// The frame of a screen around one list: its size, its grid, which has the focus at first, and the way out.
/// The count label is the screen's own. The widths of the columns come from the captions, from what the
/// screen sets, or from a rule by which they share the grid at every size.
class ListScreen : public QWidget {
    Q_OBJECT

public:
    FlexGrid Grid1;

    /// Shares the width among the columns where the screen has a rule for it; runs after every fill and on
    /// every resize.
    void gridFix();

    QSize sizeHint() const override;

protected:
    ListScreen(const QString& name, const QString& title);
    /// The columns share the width by this rule, which must outlive the screen.
    void shareWidth(const WidthRule& rule) { m_rule = &rule; }
    /// For a screen that wants more room than lists usually have; in twips.
    void setUsualSize(int width, int height) { m_usualSize = {width, height}; }
    /// Builds the screen and gives it its size; for the end of the screen's own constructor.
    void arrange(const Piece& content);
    /// The grid above, the count and the command buttons below.
    void arrange(const Piece& count, const std::vector<std::reference_wrapper<QPushButton>>& buttons);

    void resizeEvent(QResizeEvent* event) override;

private:
    const WidthRule* m_rule = nullptr;
    QSize m_usualSize {11530, 6570}; ///< twips
};

} // namespace quilla
