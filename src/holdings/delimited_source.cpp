#include "holdings/book_lines.h"
#include "holdings/book_source.h"
#include "platform/core/error.h"
#include "platform/core/text.h"
#include "readers/delimited_text.h"
#include "readers/import_fields.h"

#include <QFile>
#include <QRegularExpression>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"ImportBooks"_s, text);
}

QString textOf(const QString& name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) throw fault(u"无法读取文件 %1：%2"_s.arg(name, file.errorString()));
    return decodedText(file.readAll());
}

/// Where a column of the file goes.
struct Column {
    int title = -1;
    int copy = -1;
};

/// A field of one copy alone may hold any of the marks.
QStringList listOf(const QString& text)
{
    QStringList items;
    for (const QString& item : text.split(betweenBarcodes()))
        items.append(item.trimmed());
    items.removeAll(QString());
    return items;
}

/// The values of a field for each of several copies: a list of the same length, or one text for all of them.
/// Empty when there is a list of another length. A comma may belong to a place or a price, so that a
/// semicolon alone makes a list for sure.
QStringList valuesOf(const QString& text, qsizetype copies)
{
    if (copies < 2) return {text};
    static const QRegularExpression semicolon(u"[;；]"_s);
    QStringList items = text.split(semicolon);
    for (QString& item : items)
        item = item.trimmed();
    while (items.size() > copies && items.last().isEmpty())
        items.removeLast();
    if (items.size() == copies) return items;
    if (items.size() > 1) return {};
    const QStringList byAnyMark = listOf(text);
    return byAnyMark.size() == copies ? byAnyMark : QStringList(copies, text);
}

class DelimitedSource final : public BookSource {
public:
    explicit DelimitedSource(const QString& file)
        : m_text(textOf(file))
        , m_reader(m_text)
    {
        TextRecord headings;
        if (!m_reader.next(headings)) throw fault(u"文件是空的。"_s);
        for (const QString& heading : headings.fields)
            m_columns.push_back(columnOf(heading));
        needName();
    }

    bool next(BookRecord& book) override
    {
        TextRecord line;
        do {
            if (!m_reader.next(line)) return false;
        } while (isReasonAlone(line));
        book = {};
        book.number = line.line;
        CopyValues copy;
        for (qsizetype at = 0; at < line.fields.size(); ++at)
            take(book, copy, at, line.fields[at].trimmed());
        addCopies(book, copy);
        return true;
    }

    qint64 done() const override { return m_reader.position(); }
    qint64 total() const override { return m_text.size(); }
    QStringList unknownHeadings() const override { return m_unknown; }
    bool hasLines() const override { return true; }

private:
    Column columnOf(const QString& heading)
    {
        const QString plain = heading.trimmed().section(u'(', 0, 0).section(u'（', 0, 0).trimmed();
        Column column;
        column.title = findTitleField(plain).value_or(-1);
        column.copy = findCopyField(plain).value_or(-1);
        const bool twice = std::any_of(m_columns.begin(), m_columns.end(), [&](const Column& other) {
            return (column.title >= 0 && other.title == column.title)
                || (column.copy >= 0 && other.copy == column.copy);
        });
        if (twice) throw fault(u"列标题“%1”与另一列是同一项内容，请只留一列。"_s.arg(heading));
        if (column.title < 0 && column.copy < 0 && plain != ReasonCaption && !plain.isEmpty())
            m_unknown.append(shortened(heading));
        return column;
    }

    /// A record too damaged to be read leaves only its reason in a file of refused ones.
    bool isReasonAlone(const TextRecord& line) const
    {
        for (qsizetype at = 0; at < line.fields.size(); ++at) {
            const bool ours = at >= qsizetype(m_columns.size()) || m_columns[std::size_t(at)].title >= 0
                || m_columns[std::size_t(at)].copy >= 0;
            if (ours && !line.fields[at].trimmed().isEmpty()) return false;
        }
        return true;
    }

    void needName() const
    {
        const bool named = std::any_of(m_columns.begin(), m_columns.end(),
            [](const Column& column) { return column.title == TitleField::Name; });
        if (!named)
            throw fault(
                u"缺少列标题“%1”。可用的列标题有：%2。"_s.arg(titleField(TitleField::Name).captions.first(),
                    u"正题名、责任者、ISBN、分类号、种次号、出版者、条形码、卷次、藏址、价格等"_s));
    }

    void take(BookRecord& book, CopyValues& copy, qsizetype at, const QString& text) const
    {
        if (at >= qsizetype(m_columns.size())) {
            if (!text.isEmpty()) book.fault = u"比列标题多出的内容：%1"_s.arg(shortened(text));
            return;
        }
        const Column column = m_columns[std::size_t(at)];
        // empty, but mentioned
        const QString value = text.isNull() ? u""_s : text;
        if (column.title >= 0) book.title[std::size_t(column.title)] = value;
        if (column.copy >= 0) copy[std::size_t(column.copy)] = value;
    }

    /// Several barcodes are several copies; as many volumes, places or prices belong to them one by one.
    static void addCopies(BookRecord& book, const CopyValues& line)
    {
        const QStringList barcodes = listOf(line[CopyField::Barcode]);
        book.copies.resize(std::size_t(barcodes.size()));
        for (int field = 0; field < CopyField::Count; ++field) {
            const QString& all = line[std::size_t(field)];
            QStringList values = field == CopyField::Barcode ? barcodes : valuesOf(all, barcodes.size());
            if (values.size() < barcodes.size()) {
                book.fault = u"条形码有 %1 个，%2应该一样多，或者只填一项：%3"_s.arg(barcodes.size())
                                 .arg(copyField(field).captions.first(), shortened(all));
                values = QStringList(barcodes.size(), all); // for whoever mends it
            }
            for (qsizetype at = 0; at < barcodes.size(); ++at)
                book.copies[std::size_t(at)][std::size_t(field)] = values[at];
        }
    }

    QString m_text;
    DelimitedReader m_reader;
    std::vector<Column> m_columns;
    QStringList m_unknown;
};

} // namespace

std::unique_ptr<BookSource> openDelimitedBooks(const QString& file)
{
    return std::make_unique<DelimitedSource>(file);
}

} // namespace quilla
