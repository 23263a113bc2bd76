#include "platform/grid/grid_model.h"

namespace quilla {

GridModel::GridModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

GridModel::Filling::Filling(GridModel& model)
    : m_model(model)
{
    if (m_model.m_filling++ == 0) m_model.beginResetModel();
}

GridModel::Filling::~Filling()
{
    if (--m_model.m_filling != 0) return;
    m_model.endResetModel();
    Q_EMIT m_model.captionsChanged();
}

bool GridModel::holds(int row, int col) const
{
    return row >= 0 && row <= m_lines && col >= 0 && col < Cols();
}

void GridModel::appendLines(int count)
{
    m_lines += count;
    m_cells.resize(std::size_t(m_lines) * m_captions.size());
}

void GridModel::setRows(int rows)
{
    const int lines = std::max(rows, 1) - 1;
    if (lines == m_lines) return;
    const bool quiet = m_filling > 0;
    if (lines > m_lines) {
        if (!quiet) beginInsertRows({}, m_lines, lines - 1);
        appendLines(lines - m_lines);
        if (!quiet) endInsertRows();
        return;
    }
    if (!quiet) beginRemoveRows({}, lines, m_lines - 1);
    m_lines = lines;
    m_cells.resize(std::size_t(m_lines) * m_captions.size());
    m_rowData.resize(std::min(m_rowData.size(), std::size_t(m_lines)));
    if (!quiet) endRemoveRows();
}

void GridModel::setCols(int cols)
{
    if (cols == Cols() || cols < 0) return;
    const Filling filling(*this);
    resizeColumns(cols);
}

void GridModel::resizeColumns(int cols)
{
    std::vector<QString> cells(std::size_t(m_lines) * std::size_t(cols));
    const int kept = std::min(cols, Cols());
    for (int row = 1; row <= m_lines; ++row)
        for (int col = 0; col < kept; ++col)
            cells[std::size_t(row - 1) * std::size_t(cols) + std::size_t(col)]
                = std::move(m_cells[cell(row, col)]);
    m_cells = std::move(cells);
    m_captions.resize(std::size_t(cols));
    m_aligns.resize(std::size_t(cols), CellAlign::Default);
    m_kinds.resize(std::size_t(cols), sql::Kind::Unknown);
}

void GridModel::setFixedCols(int count)
{
    m_fixedCols = std::max(count, 0);
}

QString GridModel::TextMatrix(int row, int col) const
{
    if (!holds(row, col)) return {};
    return row == 0 ? m_captions[std::size_t(col)] : m_cells[cell(row, col)];
}

void GridModel::setTextMatrix(int row, int col, const QString& text)
{
    if (!holds(row, col)) return;
    if (row == 0) {
        m_captions[std::size_t(col)] = text;
        if (m_filling == 0) Q_EMIT headerDataChanged(Qt::Horizontal, col, col);
        return;
    }
    m_cells[cell(row, col)] = text;
    if (m_filling == 0) Q_EMIT dataChanged(index(row - 1, col), index(row - 1, col));
}

qint64 GridModel::RowData(int row) const
{
    const auto line = std::size_t(row - 1);
    return row >= 1 && line < m_rowData.size() ? m_rowData[line] : 0;
}

void GridModel::setRowData(int row, qint64 data)
{
    if (row < 1 || row > m_lines) return;
    if (m_rowData.size() < std::size_t(row)) m_rowData.resize(std::size_t(row));
    m_rowData[std::size_t(row - 1)] = data;
}

void GridModel::setFormatString(const QString& text)
{
    const Filling filling(*this);
    m_formatString = text;
    m_centredCaption = -1;
    const GridFormat format = GridFormat::parse(text);
    if (int(format.columns.size()) > Cols()) resizeColumns(int(format.columns.size()));
    for (std::size_t col = 0; col < format.columns.size(); ++col) {
        m_captions[col] = format.columns[col].caption;
        m_aligns[col] = format.columns[col].align;
    }
}

void GridModel::centreCaption(int col)
{
    m_centredCaption = col;
    if (m_filling == 0 && holds(0, col)) Q_EMIT headerDataChanged(Qt::Horizontal, col, col);
}

void GridModel::Clear()
{
    const Filling filling(*this);
    std::fill(m_cells.begin(), m_cells.end(), QString());
    std::fill(m_captions.begin(), m_captions.end(), QString());
    m_rowData.clear();
}

void GridModel::yesNo(int col)
{
    if (!holds(0, col)) return;
    for (int row = 1; row <= m_lines; ++row) {
        QString& text = m_cells[cell(row, col)];
        if (!text.isEmpty()) text = text == u"True" ? u"是"_s : u"否"_s;
    }
    if (m_filling == 0 && m_lines > 0) Q_EMIT dataChanged(index(0, col), index(m_lines - 1, col));
}

bool GridModel::isEmptyList() const
{
    return m_lines == 0 || TextMatrix(1, m_fixedCols).isEmpty();
}

int GridModel::addRow(const QStringList& cells)
{
    if (m_lines != 1 || !isEmptyList()) setRows(Rows() + 1);
    for (int i = 0; i < cells.size(); ++i)
        setTextMatrix(m_lines, m_fixedCols + i, cells[i]);
    return m_lines;
}

void GridModel::removeRow(int row)
{
    if (row < 1 || row > m_lines) return;
    if (m_lines == 1) {
        for (int col = 0; col < Cols(); ++col)
            setTextMatrix(1, col, {});
        m_rowData.clear();
        return;
    }
    if (m_filling == 0) beginRemoveRows({}, row - 1, row - 1);
    m_cells.erase(m_cells.begin() + cell(row, 0), m_cells.begin() + cell(row + 1, 0));
    if (std::size_t(row) <= m_rowData.size()) m_rowData.erase(m_rowData.begin() + (row - 1));
    --m_lines;
    if (m_filling == 0) endRemoveRows();
}

int GridModel::findRow(const QString& text, int col) const
{
    if (text.isEmpty() || !holds(0, col)) return 0;
    for (int row = 1; row <= m_lines; ++row)
        if (sameText(m_cells[cell(row, col)], text)) return row;
    return 0;
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_lines;
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Cols();
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const QString& text = m_cells[cell(index.row() + 1, index.column())];
    if (role == Qt::DisplayRole) return text;
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(alignmentOf(index.column(), text));
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= Cols()) return {};
    if (role == Qt::DisplayRole) return trimBlanks(m_captions[std::size_t(section)]);
    if (role != Qt::TextAlignmentRole) return {};
    return QVariant::fromValue(section == m_centredCaption ? Qt::AlignCenter : alignmentOf(section, {}));
}

Qt::Alignment GridModel::alignmentOf(int col, const QString& text) const
{
    const CellAlign align = m_aligns[std::size_t(col)];
    if (align == CellAlign::Center) return Qt::AlignCenter;
    if (align == CellAlign::Left) return Qt::AlignLeft | Qt::AlignVCenter;
    if (align == CellAlign::Right) return Qt::AlignRight | Qt::AlignVCenter;
    const sql::Kind kind = m_kinds[std::size_t(col)];
    bool number = kind == sql::Kind::Integer || kind == sql::Kind::Decimal;
    if (kind == sql::Kind::Unknown) text.toDouble(&number);
    return (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

} // namespace quilla
