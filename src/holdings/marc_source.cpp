#include "holdings/book_source.h"
#include "holdings/marc_parser.h"
#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QFile>
#include <QFileInfo>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"ImportBooks"_s, text);
}

void openFile(QFile& file)
{
    const QString name = file.fileName();
    if (QFileInfo(name).isDir()) throw fault(u"%1 是文件夹，不是文件。"_s.arg(name));
    if (!file.exists()) throw fault(u"没有文件 %1。"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly)) throw fault(u"无法读取文件 %1：%2"_s.arg(name, file.errorString()));
}

bool isBetweenRecords(char byte)
{
    return byte == '\n' || byte == '\r' || byte == ' ' || byte == '\0' || byte == '\x1a';
}

/// Cuts a file into records by their end marks, in a bounded buffer: the lengths are not to be trusted.
class RecordCutter {
public:
    explicit RecordCutter(QFile& file)
        : m_file(file)
    {
    }

    /// With its end mark where there is one. Of a record that is far too long only the beginning is kept.
    QByteArray next()
    {
        QByteArray record;
        for (;;) {
            if (m_at >= m_buffer.size() && !refill()) break;
            while (record.isEmpty() && m_at < m_buffer.size() && isBetweenRecords(m_buffer[m_at]))
                ++m_at;
            const qsizetype end = m_buffer.indexOf(RecordEnd, m_at);
            const qsizetype to = end < 0 ? m_buffer.size() : end + 1;
            if (record.size() <= LongestMarcRecord) record += m_buffer.sliced(m_at, to - m_at);
            m_at = to;
            if (end >= 0) break;
        }
        return record;
    }

    qint64 done() const { return m_file.pos() - (m_buffer.size() - m_at); }

private:
    bool refill()
    {
        constexpr qint64 step = 1 << 18;
        m_buffer = m_file.read(step);
        m_at = 0;
        return !m_buffer.isEmpty();
    }

    QFile& m_file;
    QByteArray m_buffer;
    qsizetype m_at = 0;
};

/// Behind a record that was cut the next one stands whole: it begins where a length reaches to the end.
QByteArray takeLastRecord(QByteArray& bytes)
{
    constexpr qsizetype shortest = 40;
    for (qsizetype at = bytes.size() - shortest; at > 0 && bytes.size() <= 2 * LongestMarcRecord; --at) {
        bool isNumber = false;
        const QByteArray length = bytes.sliced(at, 5);
        if (length[0] < '0' || length[0] > '9') continue;
        if (length.toInt(&isNumber) != bytes.size() - at || !isNumber) continue;
        const QByteArray last = bytes.sliced(at);
        bytes.truncate(at);
        return last;
    }
    return {};
}

class MarcSource final : public BookSource {
public:
    MarcSource(const QString& file, BookFormat format, CodePage codePage, const BookFields& fields)
        : m_file(file)
        , m_cutter(m_file)
        , m_parser(codePage)
        , m_format(format)
        , m_fields(fields)
    {
        openFile(m_file);
        constexpr char mark[] = "\xef\xbb\xbf"; // some editors put it before UTF-8 of any kind
        if (m_file.peek(std::size(mark) - 1) == mark) m_file.skip(std::size(mark) - 1);
    }

    bool next(BookRecord& book) override
    {
        QByteArray bytes = m_next.isEmpty() ? m_cutter.next() : std::exchange(m_next, {});
        if (bytes.isEmpty()) return false;
        book = {};
        book.number = ++m_number;
        auto record = m_parser.read(bytes);
        if (!record) m_next = takeLastRecord(bytes);
        book.repaired = record && m_parser.repaired();
        if (!record)
            refuse(book, bytes, m_parser.fault());
        else
            fill(book, bytes, *record);
        return true;
    }

    qint64 done() const override { return m_cutter.done(); }
    qint64 total() const override { return m_file.size(); }

private:
    void fill(BookRecord& book, const QByteArray& bytes, const MarcRecord& record) const
    {
        const BookFormat format = m_format == BookFormat::Unknown ? formatOf(record) : m_format;
        if (format == BookFormat::Unknown)
            refuse(book, bytes, u"没有题名字段（CNMARC 的 200 或 MARC21 的 245）"_s);
        else
            m_fields.apply(record, format, book);
    }

    static void refuse(BookRecord& book, const QByteArray& bytes, const QString& reason)
    {
        book.fault = reason;
        book.raw = bytes;
    }

    QFile m_file;
    RecordCutter m_cutter;
    MarcParser m_parser;
    BookFormat m_format;
    const BookFields& m_fields;
    QByteArray m_next; ///< a whole record that was found behind one without an end
    int m_number = 0;
};

/// Whether a file begins with a length, as every record does; a heading begins with no number. A record
/// whose beginning is damaged still has the marks between its fields.
bool looksLikeMarc(const QByteArray& beginning)
{
    return beginning.contains(FieldEnd) || beginning.contains(RecordEnd);
}

} // namespace

std::unique_ptr<BookSource> openMarcBooks(
    const QString& file, BookFormat format, CodePage codePage, const BookFields& fields)
{
    return std::make_unique<MarcSource>(file, format, codePage, fields);
}

std::unique_ptr<BookSource> openBooks(
    const QString& file, BookFormat format, CodePage codePage, const BookFields& fields)
{
    if (format == BookFormat::Csv || format == BookFormat::Tsv) return openDelimitedBooks(file);
    QFile opened(file);
    openFile(opened);
    if (opened.size() == 0) throw fault(u"文件是空的。"_s);
    if (format == BookFormat::Unknown && !looksLikeMarc(opened.read(LongestMarcRecord)))
        return openDelimitedBooks(file);
    return openMarcBooks(file, format, codePage, fields);
}

} // namespace quilla
