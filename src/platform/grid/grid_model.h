#pragma once

#include "platform/grid/grid_format.h"
#include "platform/sql/schema.h"

#include <QAbstractTableModel>

namespace quilla {

class Recordset;

/// The cells of a grid: a flat vector of texts under one fixed row of captions.
///
/// `Rows` counts the caption row, which is row 0; data lines begin at 1. For Qt's views the captions are
/// the horizontal header and the lines are rows from 0. A cell outside the grid reads as empty and
/// ignores a write.
class GridModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit GridModel(QObject* parent = nullptr);

    int Rows() const { return m_lines + 1; }
    /// At least 1. New lines are empty, lines that fall away are lost.
    void setRows(int rows);
    int Cols() const { return int(m_captions.size()); }
    void setCols(int cols);
    /// The columns at the left that no field is bound to: the row marker.
    int FixedCols() const { return m_fixedCols; }
    void setFixedCols(int count);

    QString TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString& text);
    /// A number that a line carries unseen, such as its record's key; 0 until set.
    qint64 RowData(int row) const;
    void setRowData(int row, qint64 data);

    const QString& FormatString() const { return m_formatString; }
    /// Captions and alignment by section; more sections than columns add columns, surplus columns keep
    /// the caption they have.
    void setFormatString(const QString& format);
    /// Centres one caption over cells that stand otherwise, until the next format.
    void centreCaption(int col);

    /// Empties every cell and caption; size and alignment stay.
    void Clear();
    /// Copies rows, columns and field names, dates as yyyy-mm-dd. A result without rows leaves one
    /// empty line and the captions as they are. The number of rows copied.
    qsizetype bind(Recordset& records);
    /// Turns the non-empty cells of a boolean column into 是 for "True" and 否 for anything else.
    void yesNo(int col);

    /// Appends a line; the one empty line of an empty list is filled instead. The line's row.
    int addRow(const QStringList& cells);
    /// Takes a line out; the only one is emptied instead.
    void removeRow(int row);
    /// Whether no line holds a key in its first bound column, which is what an empty list looks like.
    bool isEmptyList() const;
    /// The first line with that text in `col`, compared as the database compares; 0 when there is none.
    int findRow(const QString& text, int col) const;
    /// Orders the lines by the columns `first` to `last`, leftmost first: a column of numbers by value, any
    /// other as text. Lines that are alike keep their order, whatever the direction.
    void sortRows(int first, int last, Qt::SortOrder direction = Qt::AscendingOrder);

    /// While one lives, the model says nothing to its views; its end is one reset. For filling cell by
    /// cell.
    class Filling {
    public:
        explicit Filling(GridModel& model);
        ~Filling();
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;

    private:
        GridModel& m_model;
    };

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// Captions or columns are other ones now: widths that came from captions are to be made anew.
    void captionsChanged();

private:
    bool holds(int row, int col) const;
    qsizetype cell(int row, int col) const { return qsizetype(row - 1) * Cols() + col; }
    Qt::Alignment alignmentOf(int col, const QString& text) const;
    void appendLines(int count);
    void resizeColumns(int cols);
    void takeFieldNames(const Recordset& records);
    qsizetype copyRows(Recordset& records);
    void takeOrder(const std::vector<int>& order);

    std::vector<QString> m_captions;
    std::vector<CellAlign> m_aligns;
    std::vector<sql::Kind> m_kinds;
    std::vector<QString> m_cells;
    std::vector<qint64> m_rowData; ///< as long as the last line that was given one
    QString m_formatString;
    int m_lines = 1;
    int m_fixedCols = 0;
    int m_centredCaption = -1;
    int m_filling = 0;
};

} // namespace quilla
