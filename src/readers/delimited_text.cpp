#include "readers/delimited_text.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QStringDecoder>

namespace quilla {

namespace {

constexpr QChar Quote = u'"';

Error fault(const QString& text)
{
    return Error(5, u"DelimitedText"_s, text);
}

std::optional<QString> decodedBy(QStringDecoder decoder, const QByteArray& bytes)
{
    if (!decoder.isValid()) return {};
    QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r';
}

/// Delimiters inside quotes do not count. Of equals the comma.
QChar delimiterOf(QStringView text)
{
    constexpr QStringView Candidates = u",;\t";
    int counts[3] {};
    bool quoted = false;
    for (const QChar c : text) {
        if (c == Quote) quoted = !quoted;
        if (!quoted && isLineBreak(c)) break;
        if (const auto found = Candidates.indexOf(c); !quoted && found >= 0) ++counts[found];
    }
    return Candidates[std::max_element(counts, counts + 3) - counts];
}

bool isBlank(const TextRecord& record)
{
    return std::all_of(record.fields.begin(), record.fields.end(),
        [](const QString& field) { return field.trimmed().isEmpty(); });
}

/// By the first bytes of the archive or compound file that it is. No text begins so.
void refuseWorkbook(const QByteArray& bytes)
{
    if (bytes.startsWith("PK\x03\x04") || bytes.startsWith("\xd0\xcf\x11\xe0"))
        throw fault(
            u"这是电子表格的工作簿（如 .xlsx），不是 CSV 文件。请在表格软件里另存为 CSV，再导入那个文件。"_s);
}

} // namespace

QString decodedText(const QByteArray& bytes)
{
    refuseWorkbook(bytes);
    using Flag = QStringConverter::Flag;
    if (const auto marked = QStringConverter::encodingForData(bytes)) {
        if (const auto text = decodedBy(QStringDecoder(*marked, Flag::Stateless), bytes)) return *text;
    } else {
        if (const auto text = decodedBy(QStringDecoder(QStringDecoder::Utf8, Flag::Stateless), bytes))
            return *text;
        if (const auto text = decodedBy(QStringDecoder("GB18030", Flag::Stateless), bytes)) return *text;
    }
    throw fault(u"文件的编码不是 UTF-8、UTF-16 或 GB18030。"_s);
}

DelimitedReader::DelimitedReader(QStringView text)
    : m_text(text)
    , m_delimiter(delimiterOf(text))
{
}

bool DelimitedReader::next(TextRecord& read)
{
    while (!atEnd()) {
        read = record();
        if (!isBlank(read)) return true;
    }
    return false;
}

TextRecord DelimitedReader::record()
{
    TextRecord read {m_line, {field()}};
    while (!atEnd() && m_text[m_at] == m_delimiter) {
        ++m_at;
        read.fields.append(field());
    }
    lineBreak();
    return read;
}

/// Text after a closing quote belongs to the field.
QString DelimitedReader::field()
{
    QString text;
    if (!atEnd() && m_text[m_at] == Quote) text = quotedPart();
    const qsizetype from = m_at;
    while (!atEnd() && m_text[m_at] != m_delimiter && !isLineBreak(m_text[m_at]))
        ++m_at;
    return text.append(m_text.sliced(from, m_at - from));
}

QString DelimitedReader::quotedPart()
{
    const int begun = m_line;
    QString text;
    while (++m_at < m_text.size()) {
        const QChar c = m_text[m_at];
        const bool doubledQuote = c == Quote && m_text.sliced(m_at).startsWith(u"\"\"");
        if (c == Quote && !doubledQuote) {
            ++m_at;
            return text;
        }
        if (doubledQuote) ++m_at;
        text += isLineBreak(c) ? u'\n' : c;
        if (isLineBreak(c)) ++m_line;
        if (m_text.sliced(m_at).startsWith(u"\r\n")) ++m_at;
    }
    throw fault(u"第 %1 行的引号没有结束。"_s.arg(begun));
}

void DelimitedReader::lineBreak()
{
    if (atEnd()) return;
    m_at += m_text.sliced(m_at).startsWith(u"\r\n") ? 2 : 1;
    ++m_line;
}

DelimitedText readDelimited(QStringView text)
{
    DelimitedReader reader(text);
    DelimitedText read {reader.delimiter(), {}};
    for (TextRecord record; reader.next(record);)
        read.records.push_back(record);
    return read;
}

QString delimitedLine(const QStringList& fields, QChar delimiter)
{
    QStringList written;
    for (QString field : fields) {
        const bool plain = std::none_of(field.begin(), field.end(),
            [&](QChar c) { return c == delimiter || c == Quote || isLineBreak(c); });
        written.append(plain ? field : Quote + field.replace(u'"', u"\"\""_s) + Quote);
    }
    return written.join(delimiter) + u"\r\n"_s;
}

} // namespace quilla
