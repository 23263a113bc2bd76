#pragma once

#include "platform/db/cursor.h"

#include <string>

namespace quilla {

/// The rows of another cursor, read to its end at once: sixteen bytes a field and one run of text.
class BufferedRows {
public:
    explicit BufferedRows(Cursor& cursor);

    qsizetype count() const { return m_rows; }
    Cell cell(qsizetype row, int column) const;

private:
    struct Stored {
        qint64 number; ///< of a text its place in `m_text`
        quint32 length;
        Cell::Form form;
    };

    void keep(const Cell& cell);

    std::size_t m_columns;
    std::vector<Stored> m_cells;
    std::string m_text;
    qsizetype m_rows = 0;
};

/// A cursor over rows that were read before.
class BufferedCursor final : public Cursor {
public:
    explicit BufferedCursor(Cursor& cursor)
        : m_fields(cursor.fields())
        , m_rows(cursor)
    {
    }

    Fields fields() const override { return m_fields; }
    bool step() override { return ++m_row < m_rows.count(); }
    Cell cell(int column) override { return m_rows.cell(m_row, column); }

private:
    Fields m_fields;
    BufferedRows m_rows;
    qsizetype m_row = -1;
};

} // namespace quilla
