#include "holdings/book_fields.h"

#include "holdings/built_in.h"
#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QRegularExpression>

namespace quilla {

namespace {

using Source = BookFields::Source;

Error fault(const QString& text)
{
    return Error(5, u"BookFields"_s, text);
}

QRegularExpressionMatch sourceMatch(const QString& text)
{
    static const QRegularExpression source(
        u"^\\s*([0-9A-Z]{3})(?:\\$([a-z0-9]+)(\\*?)|\\[(\\d+)-(\\d+)\\])((?:\\s*\"[^\"]*\"){0,2})(?=\\s|$)"_s);
    return source.match(text);
}

Source sourceOf(const QRegularExpressionMatch& match)
{
    Source source;
    source.tag = match.captured(1);
    source.codes = match.captured(2);
    source.all = !match.captured(3).isEmpty();
    if (!match.captured(4).isEmpty()) {
        source.from = match.captured(4).toInt();
        source.to = match.captured(5).toInt();
    }
    const QStringList quoted = match.captured(6).split(u'"');
    if (quoted.size() > 1) source.joiner = quoted[1];
    if (quoted.size() > 3) source.between = quoted[3];
    return source;
}

std::vector<Source> sourcesOf(QString text)
{
    std::vector<Source> sources;
    while (!text.trimmed().isEmpty()) {
        const QRegularExpressionMatch match = sourceMatch(text);
        if (!match.hasMatch()) return {};
        sources.push_back(sourceOf(match));
        text.remove(0, match.capturedEnd());
    }
    return sources;
}

/// The bars inside quotes are joiners.
QStringList alternativesOf(const QString& text)
{
    QStringList alternatives {QString()};
    bool quoted = false;
    for (const QChar c : text) {
        if (c == u'"') quoted = !quoted;
        if (c == u'|' && !quoted)
            alternatives.append(QString());
        else
            alternatives.last().append(c);
    }
    return alternatives;
}

/// The values that a source has in one field.
QStringList valuesIn(const MarcField& field, const Source& source)
{
    QStringList values;
    if (source.from >= 0) {
        const QString part = field.data.mid(source.from, source.to - source.from + 1).trimmed();
        return part.isEmpty() ? values : QStringList {part};
    }
    for (const MarcSubfield& subfield : field.subfields)
        if (source.codes.contains(subfield.code) && !subfield.text.isEmpty()) values.append(subfield.text);
    return values;
}

bool isMentioned(const MarcRecord& record, const BookFields::Rule& rule)
{
    return std::any_of(rule.begin(), rule.end(), [&](const std::vector<Source>& sources) {
        return std::any_of(
            sources.begin(), sources.end(), [&](const Source& source) { return record.has(source.tag); });
    });
}

/// The blanks and signs that lead over to the next part of a description: "红楼梦 /" is 红楼梦.
QString withoutPunctuation(QString text)
{
    static const QRegularExpression end(u"\\s*[/:;=,]$|\\s+$"_s);
    text.remove(end);
    return text;
}

/// Subjects and notes lose whole entries at the end, not a part of the last, to fit their columns.
void appendFitting(QString& text, const QString& more, const QString& between, int field)
{
    const qsizetype widest = field == TitleField::Terms ? 400 : field == TitleField::Notes ? 4000 : -1;
    const QString joined = text.isEmpty() ? more : text + between + more;
    if (widest < 0 || joined.size() <= widest || text.isEmpty()) text = joined;
}

bool marksPunctuation(const MarcRecord& record, BookFormat format)
{
    return format == BookFormat::Marc21 && record.leader.size() > 18 && record.leader[18] != u'c';
}

void tidyMarc21(TitleValues& title)
{
    for (QString& text : title)
        if (!text.isNull()) text = withoutPunctuation(text);
    QString& isbn = title[TitleField::Isbn];
    isbn.truncate(std::min(isbn.size(), isbn.indexOf(u' ') < 0 ? isbn.size() : isbn.indexOf(u' ')));
    for (const int field : {TitleField::Date, TitleField::Edition, TitleField::Size, TitleField::Author})
        if (title[std::size_t(field)].endsWith(u'.')) title[std::size_t(field)].chop(1);
}

} // namespace

BookFields::BookFields(const QString& text)
{
    QString section;
    int number = 0;
    for (const QString& raw : text.split(u'\n')) {
        ++number;
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) continue;
        try {
            if (line.startsWith(u'['))
                section = line.mid(1, line.size() - 2).toUpper();
            else
                readLine(line, section);
        } catch (const Error& error) {
            throw fault(u"字段对应表第 %1 行：%2"_s.arg(number).arg(error.text));
        }
    }
}

BookFields BookFields::builtIn()
{
    return BookFields(QString::fromUtf8(quilla::builtIn(u"fields.txt"_s)));
}

void BookFields::readLine(const QString& line, const QString& section)
{
    const QString name = line.section(u'=', 0, 0).trimmed();
    const QString text = line.section(u'=', 1).trimmed();
    if (!line.contains(u'=')) throw fault(u"应该是“字段 = 来源”。"_s);
    if (section == u"语种") {
        m_languages.insert(name, text);
        return;
    }
    if (section != u"CNMARC" && section != u"MARC21")
        throw fault(u"应该先有 [CNMARC]、[MARC21] 或 [语种]。"_s);
    Rules& rules = section == u"CNMARC" ? m_cnmarc : m_marc21;
    const auto title = findTitleField(name);
    const auto copy = findCopyField(name);
    if (!title && !copy) throw fault(u"没有这个字段：%1。"_s.arg(name));
    Rule& rule = title ? rules.title[std::size_t(*title)] : rules.copy[std::size_t(*copy)];
    rule.clear();
    if (text.isEmpty()) return;
    for (const QString& alternative : alternativesOf(text)) {
        rule.push_back(sourcesOf(alternative));
        if (rule.back().empty()) throw fault(u"看不懂的来源：%1"_s.arg(alternative.trimmed()));
    }
}

QString BookFields::value(const MarcRecord& record, const Rule& rule, int field) const
{
    for (const std::vector<Source>& sources : rule) {
        QString text;
        for (const Source& source : sources)
            for (const MarcField& candidate : record.fields) {
                if (candidate.tag != source.tag) continue;
                QStringList values = valuesIn(candidate, source);
                if (field == TitleField::Language)
                    for (QString& language : values)
                        language = m_languages.value(language, language);
                if (!values.isEmpty()) appendFitting(text, values.join(source.joiner), source.between, field);
                if (!source.all) break;
            }
        if (!text.isEmpty()) return text;
    }
    return isMentioned(record, rule) ? u""_s : QString();
}

void BookFields::apply(const MarcRecord& record, BookFormat format, BookRecord& book) const
{
    const Rules& rules = format == BookFormat::Cnmarc ? m_cnmarc : m_marc21;
    for (int field = 0; field < TitleField::Count; ++field)
        book.title[std::size_t(field)] = value(record, rules.title[std::size_t(field)], field);
    if (marksPunctuation(record, format)) tidyMarc21(book.title);
    takeCopies(record, rules, book);
}

void BookFields::takeCopies(const MarcRecord& record, const Rules& rules, BookRecord& book) const
{
    for (const std::vector<Source>& sources : rules.copy[CopyField::Barcode])
        for (const Source& source : sources)
            if (takeCopiesOf(record, rules, source, book)) return;
}

bool BookFields::takeCopiesOf(
    const MarcRecord& record, const Rules& rules, const Source& barcodes, BookRecord& book) const
{
    for (const MarcField& holding : record.fields) {
        if (holding.tag != barcodes.tag) continue;
        const QStringList codes = valuesIn(holding, barcodes);
        const std::size_t first = book.copies.size();
        book.copies.resize(first + std::size_t(codes.size()));
        for (qsizetype at = 0; at < codes.size(); ++at)
            book.copies[first + std::size_t(at)][CopyField::Barcode] = codes[at];
        for (int field = CopyField::Volume; field < CopyField::Count && !codes.isEmpty(); ++field) {
            QStringList values;
            for (const std::vector<Source>& sources : rules.copy[std::size_t(field)])
                for (const Source& source : sources)
                    if (values.isEmpty())
                        values = source.tag == holding.tag ? valuesIn(holding, source)
                                                           : QStringList {value(record, {{source}}, -1)};
            values.removeAll(QString());
            for (qsizetype at = 0; at < codes.size() && !values.isEmpty(); ++at)
                book.copies[first + std::size_t(at)][std::size_t(field)]
                    = values.size() == codes.size() ? values[at] : values.first();
        }
    }
    return !book.copies.empty();
}

QString BookFields::languageCode(const QString& name) const
{
    QStringList codes = m_languages.keys(name);
    codes.sort();
    return codes.isEmpty() ? name : codes.first();
}

} // namespace quilla
