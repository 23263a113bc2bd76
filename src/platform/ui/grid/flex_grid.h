#pragma once

#include "platform/grid/grid_model.h"
#include "platform/ui/grid/grid_columns.h"
#include "platform/ui/grid/typed_search.h"

#include <QTableView>

#include <map>

namespace quilla {

/// By which column the operator sorts a grid, and which way; no column for none.
struct GridOrder {
    int col = -1;
    Qt::SortOrder direction = Qt::AscendingOrder;
};

/// A result grid: lines of text under captions, a whole line selected at a time.
///
/// Rows count from the captions, which are row 0; the current line is `Row`. Only what is visible is
/// painted.
class FlexGrid : public QTableView {
    Q_OBJECT

public:
    explicit FlexGrid(QWidget* parent = nullptr);

    GridModel& cells() { return m_model; }
    const GridModel& cells() const { return m_model; }

    int Rows() const { return m_model.Rows(); }
    void setRows(int rows) { m_model.setRows(rows); }
    int Cols() const { return m_model.Cols(); }
    void setCols(int cols) { m_model.setCols(cols); }
    QString TextMatrix(int row, int col) const { return m_model.TextMatrix(row, col); }
    void setTextMatrix(int row, int col, const QString& text) { m_model.setTextMatrix(row, col, text); }
    const QString& FormatString() const { return m_model.FormatString(); }
    /// Captions, alignment, and the width of every column that was given none. A first section that is
    /// empty or only "^" makes the first column the row marker.
    void setFormatString(const QString& format);
    /// Copies a result set; see `GridModel::bind`.
    qsizetype bind(Recordset& records) { return m_model.bind(records); }

    /// The current line, 0 when there is none.
    int Row() const;
    /// Makes a line current and selects it whole; a row outside the grid changes nothing.
    void setRow(int row);
    int Col() const;
    void setCol(int col);
    /// The line at the other end of the selection: `Row` when one line is selected.
    int RowSel() const;
    int ColSel() const { return Cols() - 1; }
    /// The text of the current line's cell in `col`; empty without a current line.
    QString current(int col) const { return TextMatrix(Row(), col); }
    /// Selects the line with that key in its first bound column; else `fallback` where the grid has such
    /// a line; else leaves the selection.
    void selectKey(const QString& key, int fallback = 1);

    /// Width in twips: as set, else what the caption with its blanks asks for. 0 hides a column.
    int ColWidth(int col) const { return m_columns.width(col); }
    void setColWidth(int col, int twips) { m_columns.setWidth(col, twips); }
    void setColWidths(const std::vector<int>& twips) { m_columns.setWidths(twips); }
    /// The width in twips that the texts of a column need, judged by a thousand lines at most.
    int contentTwips(int col) const;
    /// Takes the operator's widths from the settings and keeps them there from now on. `name` (such as
    /// "DzglFrm.Grid1") must differ from that of every other grid.
    void rememberWidths(SettingsStore& settings, const QString& name) { m_columns.remember(settings, name); }

    /// Sets the grid up anew: empty, with `rows` rows (captions included), its captions and widths, the
    /// first line current.
    void setUp(int rows, const QString& format, const std::vector<int>& twips = {});
    /// Sorts the lines by these columns and selects the current line anew.
    void sortRows(int firstCol, int lastCol);
    /// Whether a click on a caption sorts the lines by its column, a second one the other way round. What is
    /// typed then looks in that column first. Filled or sorted anew by the program, the grid is in no such
    /// order.
    void setSortsByCaption(bool sorts);
    GridOrder order() const { return m_order; }
    /// As a click on the caption does; the same record stays current.
    void sortBy(const GridOrder& order);
    /// The line under the mouse becomes current without a click, as in a pick list.
    void setFollowsPointer(bool follows);
    /// Whether the right button makes the line under it current; it does by default.
    void setRightButtonChooses(bool chooses) { m_rightButtonChooses = chooses; }

    /// Marks a line by the colour of its text and by a sign before the text in `col`, until the grid is
    /// filled anew.
    void markLine(int row, int col) { m_marks[row] = col; }
    /// The column of the line's sign; -1 for a line without a mark.
    int markOf(int row) const;

    /// What stands in the grid while its first line is empty.
    void setHint(const QString& hint) { m_hint = hint; }

    void keyboardSearch(const QString& text) override;

Q_SIGNALS:
    void rowClicked(int row);
    /// Another line became current, by the operator or by the program.
    void rowChanged(int row);
    /// Enter or a double click: what a list takes for "edit".
    void rowOpened(int row);
    void rightReleased(int row, QPoint globalPosition);
    void deletePressed();
    void insertPressed();
    void findPressed(); ///< Ctrl+F
    void blankPressed();
    void escapePressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event) const override;

private:
    void setUpHeader();
    void sortByCaption(int col);
    void showOrder(const GridOrder& order);
    void keepPlaceOverResets();
    bool handlesKey(const QKeyEvent& event);
    std::vector<int> columnsOfSearch() const;
    void measureLines();

    GridModel m_model;
    GridColumns m_columns {*this, m_model};
    TypedSearch m_search;
    QString m_hint;
    GridOrder m_order;
    std::map<int, int> m_marks; ///< columns of the signs, by line
    int m_rowOverReset = 1;
    bool m_rightButtonChooses = true;
};

} // namespace quilla
