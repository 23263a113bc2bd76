#pragma once

#include "platform/db/cursor.h"

#include <QTemporaryFile>

#include <string>

namespace quilla {

/// The rows of another cursor, read to its end at once.
///
/// A row is one run of bytes, so that a list takes little more than its texts. Of a long one only the last
/// part stays in memory; the rest lies in a temporary file without a name, which nobody else can open and
/// which is gone when the program ends, however it ends.
class BufferedRows {
public:
    explicit BufferedRows(Cursor& cursor);

    qsizetype count() const { return m_rows; }
    /// Its text is valid until a cell of another row is asked for.
    Cell cell(qsizetype row, int column) const;

private:
    /// A part of the rows' bytes that was read back from the file.
    struct Window {
        qint64 begin = 0;
        std::string bytes;
    };
    /// The field that is read next; the fields of a row are usually asked for from left to right.
    struct Reading {
        qsizetype row = -1;
        int column = 0;
        const char* next = nullptr;
    };

    void keep(const Cell& cell);
    void keepText(quint8 form, std::string_view text);
    void keepNumber(quint8 form, qint64 number);
    void moveToFile();
    const char* bytesOf(qsizetype row) const;
    const char* bytesFromFile(qint64 begin, qint64 length) const;

    std::vector<qint64> m_begins; ///< of each row, and the end of the last one
    std::string m_bytes; ///< of the rows that did not go to the file
    qint64 m_inFile = 0; ///< bytes before the first of `m_bytes`
    std::unique_ptr<QTemporaryFile> m_file;
    qsizetype m_rows = 0;
    mutable Window m_window;
    mutable Reading m_reading;
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
