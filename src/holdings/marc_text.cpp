#include "holdings/marc_text.h"

#include "holdings/marc_parser.h"

#include <yaz/yaz-iconv.h>

namespace quilla {

namespace {

bool isMark(char byte)
{
    return byte == FieldEnd || byte == SubfieldMark;
}

bool isHigh(char byte)
{
    return quint8(byte) >= 0xa1;
}

/// Chinese comes in pairs of high bytes; a letter with an accent is one high byte before a plain one.
bool looksChinese(const QByteArray& bytes)
{
    qsizetype pairs = 0;
    qsizetype accents = 0;
    for (qsizetype at = 0; at + 1 < bytes.size(); ++at) {
        if (!isHigh(bytes[at])) continue;
        isHigh(bytes[at + 1]) ? ++pairs : ++accents;
        ++at;
    }
    return pairs >= accents;
}

bool isPlain(const QByteArray& bytes)
{
    return std::none_of(bytes.begin(), bytes.end(), [](char byte) { return quint8(byte) >= 0x80; });
}

} // namespace

struct MarcText::Marc8 {
    ~Marc8()
    {
        if (handle) yaz_iconv_close(handle);
    }
    yaz_iconv_t handle = yaz_iconv_open("UTF-8", "MARC8");
};

MarcText::MarcText(CodePage codePage)
    : m_codePage(codePage)
    , m_gb18030("GB18030", QStringConverter::Flag::Stateless)
    , m_marc8(std::make_unique<Marc8>())
{
}

MarcText::~MarcText() = default;

std::vector<CodePage> MarcText::candidates(const QByteArray& bytes, bool unicode)
{
    if (unicode) return {CodePage::Utf8, CodePage::Gb18030};
    if (bytes.contains('\x1b')) return {CodePage::Marc8, CodePage::Utf8};
    if (isPlain(bytes)) return {CodePage::Utf8};
    if (looksChinese(bytes)) return {CodePage::Utf8, CodePage::Gb18030, CodePage::Marc8};
    return {CodePage::Utf8, CodePage::Marc8, CodePage::Gb18030};
}

std::optional<QString> MarcText::decoded(const QByteArray& bytes, bool unicode)
{
    if (m_codePage != CodePage::Unknown) return by(m_codePage, bytes);
    for (const CodePage codePage : candidates(bytes, unicode))
        if (auto text = by(codePage, bytes)) return text;
    return {};
}

std::optional<QString> MarcText::by(CodePage codePage, const QByteArray& bytes)
{
    if (codePage == CodePage::Marc8) return byMarc8(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    QStringDecoder& decoder = codePage == CodePage::Gb18030 ? m_gb18030 : utf8;
    decoder.resetState();
    QString text = decoder(bytes);
    if (decoder.hasError() || text.contains(QChar::ReplacementCharacter)) return {};
    return text;
}

/// Each subfield by itself: one that does not go back to the plain letters must not spoil the next.
std::optional<QString> MarcText::byMarc8(const QByteArray& bytes)
{
    QByteArray text;
    for (qsizetype from = 0; from < bytes.size();) {
        qsizetype to = from;
        while (to < bytes.size() && !isMark(bytes[to]))
            ++to;
        QByteArray piece = bytes.sliced(from, to - from);
        QByteArray out(piece.size() * 6 + 16, '\0');
        char* in = piece.data();
        char* target = out.data();
        std::size_t inLeft = std::size_t(piece.size());
        std::size_t outLeft = std::size_t(out.size());
        yaz_iconv(m_marc8->handle, nullptr, nullptr, nullptr, nullptr);
        if (yaz_iconv(m_marc8->handle, &in, &inLeft, &target, &outLeft) == std::size_t(-1)) return {};
        yaz_iconv(m_marc8->handle, nullptr, nullptr, &target, &outLeft);
        text.append(out.constData(), out.size() - qsizetype(outLeft));
        if (to < bytes.size()) text.append(bytes[to]);
        from = to + 1;
    }
    return by(CodePage::Utf8, text);
}

} // namespace quilla
