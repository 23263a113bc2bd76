#include "holdings/export_books_ops.h"

#include "holdings/book_lines.h"
#include "holdings/book_marc.h"
#include "platform/core/dates.h"
#include "platform/core/text.h"

#include <QStringEncoder>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"ExportBooks"_s, text);
}

template <typename Info> QString columnsOf(int count, const Info& info)
{
    QStringList columns;
    for (int field = 0; field < count; ++field)
        columns.append(info(field).column);
    return columns.join(u',');
}

QString textOf(const Value& value)
{
    return value.kind() == sql::Kind::Date ? isoDate(value.moment()) : value.text();
}

struct Numbered {
    qint64 zskid;
    BookRecord book;
};

/// The next titles after one, without their copies.
std::vector<Numbered> titlesAfter(Connection& connection, qint64 last)
{
    std::vector<Numbered> titles;
    Recordset row = connection.open(u"select top 1000 zskid,%1 from zsk where zskid>%2 order by zskid"_s.arg(
        columnsOf(TitleField::Count, titleField), QString::number(last)));
    for (; !row.eof(); row.next()) {
        titles.push_back({row.field(0).integer().value_or(0), {}});
        TitleValues& title = titles.back().book.title;
        for (int field = 0; field < TitleField::Count; ++field)
            title[std::size_t(field)] = textOf(row.field(field + 1));
    }
    return titles;
}

void addCopies(Connection& connection, std::vector<Numbered>& titles)
{
    Recordset row = connection.open(
        u"select zskid,%1 from sck where zskid between %2 and %3 order by zskid,sckid"_s.arg(
            columnsOf(CopyField::Count, copyField), QString::number(titles.front().zskid),
            QString::number(titles.back().zskid)));
    auto title = titles.begin();
    for (; !row.eof(); row.next()) {
        const qint64 zskid = row.field(0).integer().value_or(0);
        while (title != titles.end() && title->zskid < zskid)
            ++title;
        if (title == titles.end() || title->zskid != zskid) continue;
        CopyValues& copy = title->book.copies.emplace_back();
        for (int field = 0; field < CopyField::Count; ++field)
            copy[std::size_t(field)] = textOf(row.field(field + 1));
    }
}

/// Writes books in the form that was chosen.
class BookWriter {
public:
    BookWriter(QIODevice& file, const BookExportOptions& options)
        : m_file(file)
        , m_options(options)
        , m_delimiter(options.format == BookFormat::Tsv ? u'\t' : u',')
        , m_encoder(options.codePage == CodePage::Gb18030 ? QStringEncoder("GB18030")
                                                          : QStringEncoder(QStringEncoder::Utf8))
    {
        if (options.codePage == CodePage::Marc8) throw fault(u"导出的编码是 utf-8 或 gb18030。"_s);
        if (isMarc()) return;
        // the mark lets spreadsheets know that it is UTF-8
        if (options.codePage != CodePage::Gb18030) write("\xef\xbb\xbf");
        write(m_encoder.encode(bookHeadings(m_delimiter)));
    }

    void write(const BookRecord& book)
    {
        if (isMarc())
            write(marcOf(book, m_options.format, m_options.codePage, m_fields));
        else
            writeLines(book);
    }

private:
    /// An import would take such a barcode for several.
    void writeLines(const BookRecord& book)
    {
        for (const CopyValues& copy : book.copies)
            if (copy[CopyField::Barcode].contains(betweenBarcodes()))
                throw fault(
                    u"条形码“%1”里有分号、逗号或换行，再导入时会成为几个条形码。请用 --format cnmarc 导出。"_s
                        .arg(copy[CopyField::Barcode]));
        write(m_encoder.encode(bookLines(book, m_delimiter)));
    }

    bool isMarc() const
    {
        return m_options.format == BookFormat::Cnmarc || m_options.format == BookFormat::Marc21;
    }

    void write(const QByteArray& bytes)
    {
        if (m_file.write(bytes) != bytes.size()) throw fault(u"无法写入文件：%1"_s.arg(m_file.errorString()));
    }

    QIODevice& m_file;
    const BookExportOptions m_options;
    const QChar m_delimiter;
    QStringEncoder m_encoder;
    const BookFields m_fields = BookFields::builtIn();
};

} // namespace

BookExportReport exportBooks(
    Connection& connection, QIODevice& file, const BookExportOptions& options, Progress& progress)
{
    BookExportReport report;
    BookWriter writer(file, options);
    progress.begin();
    progress.setTotal(connection.open(u"select count(*) from zsk").field(0).integer().value_or(0));
    qint64 last = 0;
    for (;;) {
        std::vector<Numbered> titles = titlesAfter(connection, last);
        if (titles.empty()) break;
        addCopies(connection, titles);
        for (const Numbered& title : titles) {
            writer.write(title.book);
            ++report.titles;
            report.copies += int(title.book.copies.size());
        }
        last = titles.back().zskid;
        progress.setDone(report.titles);
    }
    progress.end();
    return report;
}

} // namespace quilla
