#include "platform/db/buffered_cursor.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <bit>
#include <cstring>

namespace quilla {

static_assert(std::endian::native == std::endian::little, "numbers are kept without their empty high bytes");

namespace {

// A field begins with a byte that holds its form and, above that, the number of bytes that follow. A text too
// long for it has its length in four bytes more.
constexpr int FormBits = 3;
constexpr quint8 FormMask = (1 << FormBits) - 1;
constexpr std::size_t LongText = 0xFF >> FormBits;

constexpr std::size_t MostInMemory = std::size_t(4) << 20;
constexpr qint64 WindowSize = 64 << 10;

/// Small numbers of either sign become small numbers without one.
quint64 folded(qint64 number)
{
    return (quint64(number) << 1) ^ quint64(number >> 63);
}

qint64 unfolded(quint64 number)
{
    return qint64(number >> 1) ^ -qint64(number & 1);
}

bool isText(Cell::Form form)
{
    return form == Cell::Form::Text || form == Cell::Form::Decimal;
}

/// Reads one field and moves behind it.
Cell take(const char*& next)
{
    const auto head = quint8(*next++);
    Cell cell {Cell::Form(head & FormMask), 0, {}};
    std::size_t size = head >> FormBits;
    if (isText(cell.form)) {
        if (size == LongText) {
            quint32 length = 0;
            std::memcpy(&length, next, sizeof length);
            next += sizeof length;
            size = length;
        }
        cell.text = {next, size};
    } else {
        quint64 number = 0;
        std::memcpy(&number, next, size);
        cell.number = unfolded(number);
    }
    next += size;
    return cell;
}

} // namespace

BufferedRows::BufferedRows(Cursor& cursor)
{
    const auto columns = int(cursor.fields()->size());
    m_begins.reserve(2); // most selects of a desk bring one row
    m_bytes.reserve(100);
    m_begins.push_back(0);
    while (cursor.step()) {
        for (int column = 0; column < columns; ++column)
            keep(cursor.cell(column));
        m_begins.push_back(m_inFile + qint64(m_bytes.size()));
        ++m_rows;
        if (m_bytes.size() >= MostInMemory) moveToFile();
    }
}

void BufferedRows::keep(const Cell& cell)
{
    if (isText(cell.form)) return keepText(quint8(cell.form), cell.text);
    keepNumber(quint8(cell.form), cell.number);
}

void BufferedRows::keepText(quint8 form, std::string_view text)
{
    const std::size_t inHead = std::min(text.size(), LongText);
    m_bytes.push_back(char(form | inHead << FormBits));
    if (inHead == LongText) {
        const auto length = quint32(text.size());
        m_bytes.append(reinterpret_cast<const char*>(&length), sizeof length);
    }
    m_bytes.append(text);
}

void BufferedRows::keepNumber(quint8 form, qint64 number)
{
    const quint64 bits = folded(number);
    const auto size = std::size_t(std::bit_width(bits) + 7) / 8;
    m_bytes.push_back(char(form | size << FormBits));
    m_bytes.append(reinterpret_cast<const char*>(&bits), size);
}

/// When no file can be had, or its disk is full, the rows stay in memory.
void BufferedRows::moveToFile()
{
    if (!m_file) {
        m_file = std::make_unique<QTemporaryFile>();
        if (!m_file->open()) m_file->close();
    }
    const auto size = qint64(m_bytes.size());
    if (!m_file->isOpen() || !m_file->seek(m_inFile) || m_file->write(m_bytes.data(), size) != size
        || !m_file->flush())
        return;
    m_inFile += size;
    m_bytes.clear();
}

Cell BufferedRows::cell(qsizetype row, int column) const
{
    if (row != m_reading.row || column < m_reading.column) m_reading = {row, 0, bytesOf(row)};
    for (; m_reading.column < column; ++m_reading.column)
        take(m_reading.next);
    ++m_reading.column;
    return take(m_reading.next);
}

const char* BufferedRows::bytesOf(qsizetype row) const
{
    const qint64 begin = m_begins[std::size_t(row)];
    if (begin >= m_inFile) return m_bytes.data() + (begin - m_inFile);
    return bytesFromFile(begin, m_begins[std::size_t(row) + 1] - begin);
}

const char* BufferedRows::bytesFromFile(qint64 begin, qint64 length) const
{
    const qint64 at = begin - m_window.begin;
    if (at >= 0 && at + length <= qint64(m_window.bytes.size())) return m_window.bytes.data() + at;
    const qint64 size = std::min(std::max(length, WindowSize), m_inFile - begin);
    m_window = {begin, std::move(m_window.bytes)};
    m_window.bytes.resize(std::size_t(size));
    if (!m_file->seek(begin) || m_file->read(m_window.bytes.data(), size) != size)
        throw Error(ErrorNumber::CannotOpen, u"Recordset"_s,
            u"无法读取临时文件，请检查临时文件夹所在的磁盘：%1"_s.arg(m_file->errorString()));
    return m_window.bytes.data();
}

} // namespace quilla
