#include "platform/db/buffered_cursor.h"

namespace quilla {

BufferedRows::BufferedRows(Cursor& cursor)
    : m_columns(cursor.fields()->size())
{
    m_cells.reserve(m_columns); // most selects of a desk bring one row
    m_text.reserve(100);
    while (cursor.step()) {
        for (std::size_t column = 0; column < m_columns; ++column)
            keep(cursor.cell(int(column)));
        ++m_rows;
    }
}

void BufferedRows::keep(const Cell& cell)
{
    const bool text = cell.form == Cell::Form::Text || cell.form == Cell::Form::Decimal;
    m_cells.push_back({text ? qint64(m_text.size()) : cell.number, quint32(cell.text.size()), cell.form});
    if (text) m_text += cell.text;
}

Cell BufferedRows::cell(qsizetype row, int column) const
{
    const Stored& stored = m_cells[std::size_t(row) * m_columns + std::size_t(column)];
    Cell cell {stored.form, stored.number, {}};
    if (stored.length) cell.text = std::string_view(m_text).substr(std::size_t(stored.number), stored.length);
    return cell;
}

} // namespace quilla
