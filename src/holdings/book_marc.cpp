#include "holdings/book_marc.h"

#include "holdings/marc_parser.h"
#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QStringEncoder>

#include <span>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"ExportBooks"_s, text);
}

/// Where a field goes; those of one tag follow each other.
struct Place {
    int field;
    const char* tag;
    char code;
};

constexpr Place CnmarcPlaces[] {{TitleField::Isbn, "010", 'a'}, {TitleField::Language, "101", 'a'},
    {TitleField::Name, "200", 'a'}, {TitleField::Author, "200", 'f'}, {TitleField::Edition, "205", 'a'},
    {TitleField::Place, "210", 'a'}, {TitleField::Publisher, "210", 'c'}, {TitleField::Date, "210", 'd'},
    {TitleField::Pages, "215", 'a'}, {TitleField::Size, "215", 'd'}, {TitleField::Series, "225", 'a'},
    {TitleField::SeriesAuthor, "225", 'f'}, {TitleField::Notes, "300", 'a'}, {TitleField::Terms, "606", 'a'},
    {TitleField::Class, "690", 'a'}, {TitleField::Number, "905", 'e'}, {TitleField::Mark, "905", 'k'},
    {TitleField::AuthorCode, "905", 'j'}};

constexpr Place Marc21Places[] {{TitleField::Isbn, "020", 'a'}, {TitleField::Language, "041", 'a'},
    {TitleField::Class, "084", 'a'}, {TitleField::Name, "245", 'a'}, {TitleField::Author, "245", 'c'},
    {TitleField::Edition, "250", 'a'}, {TitleField::Place, "264", 'a'}, {TitleField::Publisher, "264", 'b'},
    {TitleField::Date, "264", 'c'}, {TitleField::Pages, "300", 'a'}, {TitleField::Size, "300", 'c'},
    {TitleField::Series, "490", 'a'}, {TitleField::Notes, "500", 'a'}, {TitleField::Terms, "650", 'a'},
    {TitleField::Number, "852", 'i'}, {TitleField::Mark, "998", 'd'}, {TitleField::AuthorCode, "998", 'e'},
    {TitleField::SeriesAuthor, "998", 'f'}};

/// Fields that the formats have no place for; they stand even when they are empty, so that what was left
/// empty stays so.
constexpr Place OwnPlaces[] {{TitleField::Cataloguer, "998", 'a'}, {TitleField::Catalogued, "998", 'b'},
    {TitleField::Kind, "998", 'c'}};

/// In the order of `CopyField`.
constexpr char CnmarcCopy[] {'b', 'v', 'c', 'p', 't'};
constexpr char Marc21Copy[] {'p', '3', 'c', '9', '7'};

class MarcBuilder {
public:
    MarcBuilder(BookFormat format, CodePage codePage, const BookFields& fields)
        : m_cnmarc(format == BookFormat::Cnmarc)
        , m_utf8(codePage != CodePage::Gb18030)
        , m_fields(fields)
        , m_encoder(m_utf8 ? QStringEncoder(QStringEncoder::Utf8) : QStringEncoder("GB18030"))
    {
    }

    QByteArray record(const TitleValues& title, std::vector<CopyValues>::const_iterator from,
        std::vector<CopyValues>::const_iterator to)
    {
        m_raw.clear();
        for (const Place& place :
            m_cnmarc ? std::span<const Place>(CnmarcPlaces) : std::span<const Place>(Marc21Places))
            put(place, title[std::size_t(place.field)]);
        for (const Place& place : OwnPlaces)
            put(place, title[std::size_t(place.field)]);
        if (m_raw.back().first != "998") add("998", 'a', u"");
        for (auto copy = from; copy != to; ++copy)
            putCopy(*copy);
        std::stable_sort(m_raw.begin(), m_raw.end(),
            [](const RawMarcField& left, const RawMarcField& right) { return left.first < right.first; });
        const QByteArray bytes = marcBytes(leader(), m_raw);
        if (bytes.isEmpty())
            throw fault(
                u"“%1”的内容超过了 MARC 记录的长度，请用 --format csv 导出。"_s.arg(title[TitleField::Name]));
        return bytes;
    }

private:
    QByteArray leader() const
    {
        // the punctuation between the parts of a description is not in the texts
        return m_cnmarc ? QByteArray("00000nam0 2200000   450 ")
                        : QByteArray("00000nam ") + (m_utf8 ? 'a' : ' ') + "2200000 c 4500";
    }

    void put(const Place& place, const QString& text)
    {
        if (text.isEmpty()) return;
        if (place.field != TitleField::Language) return add(place.tag, place.code, text);
        for (const QString& language : text.split(u'、'))
            add(place.tag, place.code, m_fields.languageCode(language));
    }

    void putCopy(const CopyValues& copy)
    {
        const char* codes = m_cnmarc ? CnmarcCopy : Marc21Copy;
        m_raw.emplace_back(m_cnmarc ? "905" : "852", "  ");
        for (int field = 0; field < CopyField::Count; ++field)
            if (!copy[std::size_t(field)].isEmpty()) append(codes[field], copy[std::size_t(field)]);
    }

    void add(const QByteArray& tag, char code, QStringView text)
    {
        if (m_raw.empty() || m_raw.back().first != tag)
            m_raw.emplace_back(tag, tag == "200" || tag == "245" ? "1 " : "  ");
        append(code, text);
    }

    void append(char code, QStringView text)
    {
        m_raw.back().second += SubfieldMark;
        m_raw.back().second += code;
        m_raw.back().second += QByteArray(m_encoder.encode(text));
        if (m_encoder.hasError()) throw fault(u"这个编码没有“%1”里的字。"_s.arg(text));
    }

    bool m_cnmarc;
    bool m_utf8;
    const BookFields& m_fields;
    QStringEncoder m_encoder;
    std::vector<RawMarcField> m_raw;
};

} // namespace

QByteArray marcOf(const BookRecord& book, BookFormat format, CodePage codePage, const BookFields& fields)
{
    constexpr std::ptrdiff_t most = 400; // copies a record: far below the longest one
    MarcBuilder builder(format, codePage, fields);
    QByteArray bytes;
    auto from = book.copies.begin();
    do {
        const auto to = from + std::min(most, book.copies.end() - from);
        bytes += builder.record(book.title, from, to);
        from = to;
    } while (from != book.copies.end());
    return bytes;
}

} // namespace quilla
