#include "holdings/marc_parser.h"

#include "holdings/marc_text.h"
#include "platform/core/text.h"

#include <yaz/marcdisp.h>

namespace quilla {

namespace {

constexpr qsizetype LeaderLength = 24;
constexpr qsizetype EntryLength = 12;

/// The parts of the leader that every record of both formats has alike; many programs leave them blank.
QByteArray withFixedLeader(QByteArray bytes)
{
    return bytes.replace(10, 2, "22").replace(20, 3, "450");
}

bool isTag(QByteArrayView tag)
{
    return std::all_of(
        tag.begin(), tag.end(), [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); });
}

/// The tags that the directory names, none when it is no directory.
std::vector<QByteArray> tagsOf(const QByteArray& bytes)
{
    std::vector<QByteArray> tags;
    const qsizetype end = bytes.indexOf(FieldEnd, LeaderLength);
    if (end < 0 || (end - LeaderLength) % EntryLength != 0) return {};
    for (qsizetype at = LeaderLength; at < end; at += EntryLength) {
        tags.push_back(bytes.sliced(at, 3));
        if (!isTag(tags.back())) return {};
    }
    return tags;
}

/// The fields by their end marks, whatever the lengths say: programs that change the code page of a file
/// often forget them. Empty when the end marks do not fit the directory.
std::vector<RawMarcField> fieldsByMarks(const QByteArray& bytes)
{
    const std::vector<QByteArray> tags = tagsOf(bytes);
    std::vector<RawMarcField> fields;
    qsizetype at = bytes.indexOf(FieldEnd, LeaderLength) + 1;
    for (const QByteArray& tag : tags) {
        const qsizetype end = bytes.indexOf(FieldEnd, at);
        if (end < 0) return {};
        fields.emplace_back(tag, bytes.sliced(at, end - at));
        at = end + 1;
    }
    return at == bytes.size() - 1 ? fields : std::vector<RawMarcField>();
}

/// Characters that nobody sees take no place in a library; the marks that part subfields are gone before.
QString cleaned(QStringView text)
{
    QString clean;
    clean.reserve(text.size());
    bool combining = false;
    for (const QChar c : text) {
        const bool control = (c < u' ' && c != u'\n' && c != u'\t') || (c >= u'\u007f' && c <= u'\u009f');
        if (!control) clean += c;
        combining = combining || (c >= u'\u0300' && c <= u'\u036f');
    }
    return (combining ? clean.normalized(QString::NormalizationForm_C) : clean).trimmed();
}

/// "245 10", then mark, code, blank and text for each subfield; "001 text" for a control field.
MarcField fieldOf(QStringView line)
{
    MarcField field;
    field.tag = line.first(std::min<qsizetype>(3, line.size())).toString();
    const QList<QStringView> parts = line.split(QLatin1Char(SubfieldMark));
    // positions count in control fields, so their blanks stay
    if (parts.size() == 1) field.data = line.mid(4).toString();
    for (qsizetype at = 1; at < parts.size(); ++at)
        if (!parts[at].isEmpty()) field.subfields.push_back({parts[at][0], cleaned(parts[at].mid(2))});
    return field;
}

} // namespace

struct MarcParser::Private {
    explicit Private(CodePage codePage)
        : text(codePage)
    {
        const char subfield[] {SubfieldMark, '\0'};
        const char field[] {FieldEnd, '\0'};
        yaz_marc_subfield_str(marc, subfield);
        yaz_marc_endline_str(marc, field);
    }
    ~Private()
    {
        wrbuf_destroy(lines);
        yaz_marc_destroy(marc);
    }

    /// False when the library finds anything wrong; its remarks stand in brackets among the lines.
    bool takesApart(const QByteArray& bytes)
    {
        wrbuf_rewind(lines);
        if (yaz_marc_read_iso2709(marc, bytes.constData(), int(bytes.size())) != bytes.size()) return false;
        yaz_marc_write_line(marc, lines);
        const QByteArrayView written(wrbuf_buf(lines), qsizetype(wrbuf_len(lines)));
        return !written.startsWith('(') && written.indexOf("\x1e(") < 0;
    }

    std::optional<MarcRecord> refuse(const QString& reason)
    {
        fault = reason;
        return {};
    }

    std::optional<MarcRecord> decoded(bool unicode)
    {
        // the library ends the leader with a line break of its own
        const QByteArray written(wrbuf_buf(lines), qsizetype(wrbuf_len(lines)));
        const auto fields = text.decoded(written.mid(LeaderLength + 1), unicode);
        if (!fields) return refuse(u"编码无法识别，或与指定的不符"_s);
        MarcRecord record;
        record.leader = QString::fromLatin1(written.first(LeaderLength));
        for (const QStringView line : QStringView(*fields).split(QLatin1Char(FieldEnd), Qt::SkipEmptyParts))
            record.fields.push_back(fieldOf(line));
        return record;
    }

    yaz_marc_t marc = yaz_marc_create();
    WRBUF lines = wrbuf_alloc();
    MarcText text;
    QString fault;
    bool repaired = false;
};

MarcParser::MarcParser(CodePage codePage)
    : d(std::make_unique<Private>(codePage))
{
}

MarcParser::~MarcParser() = default;

const QString& MarcParser::fault() const
{
    return d->fault;
}

bool MarcParser::repaired() const
{
    return d->repaired;
}

std::optional<MarcRecord> MarcParser::read(const QByteArray& bytes)
{
    d->repaired = false;
    if (bytes.size() > LongestMarcRecord) return d->refuse(u"记录太长，没有结束标志"_s);
    if (bytes.size() <= LeaderLength + 1) return d->refuse(u"记录不完整"_s);
    if (bytes.back() != RecordEnd) return d->refuse(u"记录不完整，没有结束标志"_s);
    if (bytes[LeaderLength] == FieldEnd) return d->refuse(u"记录的目次区是空的"_s);
    QByteArray whole = withFixedLeader(bytes);
    if (bytes.first(5).toInt() != bytes.size() || !d->takesApart(whole)) {
        whole = marcBytes(whole.first(LeaderLength), fieldsByMarks(whole));
        d->repaired = true;
        if (whole.size() <= LeaderLength + 2 || !d->takesApart(whole))
            return d->refuse(u"记录的长度或目次区有误，无法修复"_s);
    }
    return d->decoded(whole[9] == 'a');
}

BookFormat formatOf(const MarcRecord& record)
{
    if (record.has(u"245")) return BookFormat::Marc21;
    return record.has(u"200") ? BookFormat::Cnmarc : BookFormat::Unknown;
}

} // namespace quilla
